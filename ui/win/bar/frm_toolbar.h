// The floating toolbar: a small window beside the expanded bar with its toolbar
// buttons, easy to hit with a mouse that comes from the middle of the screen. It
// never takes the focus: the keyboard has keys and menus for its commands.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "ui/scene/toolbar_scene.h"
#include "ui/win/toolkit/balloon_tooltip.h"
#include "ui/win/toolkit/scene_accessible.h"
#include "ui/win/toolkit/scene_view.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class frmToolbar final : public Window {
 public:
  struct Callbacks {
    std::function<void(Command)> clicked;
    std::function<void(POINT screen)> menu;
  };
  struct State {
    bool on = false;  // the user wants it
    PixelRect bar;    // on the screen
    ScreenEdge edge = ScreenEdge::None;
    PixelRect work;  // of the bar's monitor
    ToolbarLook look;
    Density density;
  };
  // Where it stands; nowhere when it is off, or has no room.
  static std::optional<PixelRect> placeOf(const State& state);
  // Images and fonts are borrowed and must outlive the toolbar.
  frmToolbar(ImageSource& images, GdiFonts& fonts, Callbacks callbacks);
  ~frmToolbar() override;

  // The window that it stands above. Its own is made when it is first shown.
  void attach(HWND owner) { owner_ = owner; }
  void setPalette(const Palette& palette) { view_.setPalette(palette); }
  // Shows, moves or hides it as the state says.
  void update(const State& state);
  void hide();
  bool shown() const;
  void invalidate() { view_.invalidate(); }
  const Scene& scene() const { return scene_; }
  const SceneView& view() const { return view_; }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool makeWindow();
  void clicked(NodeId node);

  Callbacks callbacks_;
  HWND owner_ = nullptr;
  Scene scene_;
  SceneView view_;
  SceneAccessible items_;
  AccessibleServer accessible_;
  BalloonTooltip tooltip_;
};

}  // namespace varnowick
