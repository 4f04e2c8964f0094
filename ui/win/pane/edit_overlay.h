// A text control laid over a node of a scene, so that what is painted there can be
// edited in place: a frame window with the control in it, which follows its node
// and ends when that goes out of sight. What is edited, and what becomes of it, is
// told by the classes derived from it.
#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/handles.h"
#include "ui/scene/palette.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class EditOverlay : public Window {
 public:
  ~EditOverlay() override;

  // The window whose child the overlay becomes when it is first needed.
  void attach(HWND owner, Density density);
  void setDensity(Density density);
  void setPalette(const Palette& palette);

  // True from begin() until the editing has ended: the owner must stay open.
  bool active() const { return active_; }
  bool hasFocus() const;
  // What is being edited; none while nothing is.
  NodeId node() const { return active_ ? node_ : NodeId{}; }
  // The text control; nullptr before the overlay has first been used.
  HWND control() const { return control_; }
  std::wstring text() const;

  // Ends the editing and takes what was typed, or drops it. Harmless when nothing
  // is being edited.
  void accept() { end(true); }
  void cancel() { end(false); }
  // After the scene has been laid out, scrolled, or its window sized: follows the
  // node, and ends when that has gone or is out of sight.
  void arrange();

  // A handler of the control, or of an end of the editing, is under way: what it leads to
  // may close the window around it, which must not be freed meanwhile.
  bool handling() const { return handlers_ > 0; }

 protected:
  // Scene and fonts are borrowed and must outlive the overlay.
  EditOverlay(const Scene& scene, GdiFonts& fonts) : scene_(scene), fonts_(fonts) {}

  // Shows the control over the node with the focus in it. False when the node is
  // out of sight or the system refuses the windows; then nothing has begun.
  bool show(NodeId node, const std::wstring& text, const TextStyle& style,
            const std::wstring& accessibleName);

  // Makes the control as a child of handle().
  virtual HWND makeControl() = 0;
  // Where the control's frame lies in the owner's client area.
  virtual PixelRect frameRect(const PixelRect& nodeRect) const = 0;
  // Where the control lies in the frame.
  virtual PixelRect controlRect(Size<Pixels> frame) const = 0;
  virtual Colour ground(const Palette& palette) const = 0;
  virtual Colour ink(const Palette& palette) const = 0;
  // True when the key has been dealt with.
  virtual bool keyDown(int key) = 0;
  // Characters that the control is not to see.
  virtual bool refuses(wchar_t) const { return false; }
  virtual void fontSet() {}
  virtual void textChanged() {}
  virtual void selectAll() { SendMessageW(control_, EM_SETSEL, 0, -1); }
  // The editing is about to end; the control is as the user left it.
  virtual void ending() {}
  // The node has gone: by default what was typed goes with it.
  virtual void vanished() { cancel(); }
  // The editing is over, and the overlay out of sight.
  virtual void ended(bool accepted, std::wstring text) = 0;

  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  virtual LRESULT onControl(UINT message, WPARAM wParam, LPARAM lParam);

  const Palette& palette() const { return palette_; }
  Density density() const { return density_; }
  const Scene& scene() const { return scene_; }
  HWND owner() const { return owner_; }
  int scaled(int pixels) const { return MulDiv(pixels, density_.dpi, 96); }
  Pixels lineHeight() const;
  void end(bool accepted);
  int& handlers() { return handlers_; }

 private:
  static LRESULT CALLBACK controlProcedure(HWND control, UINT message, WPARAM wParam,
                                           LPARAM lParam);
  bool makeWindows();
  void makeFont();
  bool place();
  void clipTo(const PixelRect& frame, const PixelRect& node, const PixelRect& seen);

  const Scene& scene_;
  GdiFonts& fonts_;
  HWND owner_ = nullptr;
  Density density_;
  Palette palette_;
  TextStyle style_;
  FontHandle font_;
  BrushHandle groundBrush_;
  HWND label_ = nullptr;
  HWND control_ = nullptr;
  WNDPROC controlBase_ = nullptr;
  bool clipped_ = false;
  NodeId node_;
  bool active_ = false;
  int handlers_ = 0;
};

}  // namespace varnowick
