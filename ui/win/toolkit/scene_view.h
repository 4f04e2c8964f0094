// A scene on a window: back buffer, painting, invalidation, and mouse messages
// turned into hover, press, click and drag of nodes. Shared by every window that
// shows a scene; it decides nothing about what a click means.
#pragma once

#include <windows.h>

#include "ui/scene/palette.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/back_buffer.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/image_source.h"

namespace varnowick {

class SceneView {
 public:
  // All are borrowed and must outlive the view.
  SceneView(const Scene& scene, ImageSource& images, GdiFonts& fonts)
      : scene_(scene), input_(scene), images_(images), fonts_(fonts) {}

  void attach(HWND window, Density density);
  void setDensity(Density density) { density_ = density; }
  Density density() const { return density_; }
  void setPalette(Palette palette);
  const Palette& palette() const { return palette_; }
  InputState& input() { return input_; }
  const InputState& input() const { return input_; }

  // Answers WM_PAINT.
  void paint();
  void invalidate();
  void invalidate(NodeId node);

  // Client pixels to twips of the window, and a node's place in client pixels.
  Point<Twips> toScene(POINT client) const;
  PixelRect toClient(NodeId node) const;

  // Hover and press states repaint themselves.
  void mouseMoved(POINT client);
  void mouseLeft();
  // The node pressed, or none.
  NodeId mousePressed(POINT client);
  // The node that was clicked, or none.
  NodeId mouseReleased(POINT client);
  void captureLost();
  void focusNext(bool backwards);
  void focusTowards(Point<int> direction);
  void focus(NodeId node);
  // Shows what has the focus, until the mouse is used again.
  void keyUsed();

 private:
  // Repaints what the step changed: the nodes hovered, pressed or focused before
  // it and after it.
  template <class Step>
  auto repainting(Step&& step);

  const Scene& scene_;
  InputState input_;
  ImageSource& images_;
  GdiFonts& fonts_;
  Palette palette_;
  BackBuffer buffer_;
  HWND window_ = nullptr;
  Density density_;
};

}  // namespace varnowick
