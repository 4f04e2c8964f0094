// The tab of a detached container: a small window at a screen edge with the
// container's name, never in focus. It draws, tells of the mouse and can be dragged
// along the edges; when it is there, and what a click does, is decided elsewhere.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "containers/tab_place.h"
#include "ui/scene/palette.h"
#include "ui/win/toolkit/accessible.h"
#include "ui/win/toolkit/back_buffer.h"
#include "ui/win/toolkit/drag_trail.h"
#include "ui/win/toolkit/drop_target.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

inline constexpr const wchar_t* kTabWindowClass = L"VarnowickTab";

class frmContainerLabel final : public Window, public DragStop, private AccessibleProvider {
 public:
  struct Callbacks {
    std::function<void()> clicked;
    std::function<void()> touched;  // the mouse, or something dragged, is on it
    std::function<void()> left;
    std::function<void(POINT screen)> draggedOver{};
    std::function<void()> dragLeft{};
    std::function<void(POINT screen)> menu;
    // Where the tab would stand with the pointer at a point of the screen.
    std::function<TabPlace(Point<Pixels> screen)> dragged;
    std::function<void(const TabPlace&)> dropped;
  };
  struct Look {
    std::wstring name;
    Palette palette;  // inContainer
    Density density;
  };
  // The fonts are borrowed and must outlive the tab.
  frmContainerLabel(GdiFonts& fonts, Callbacks callbacks);
  ~frmContainerLabel() override;

  // Creates the window, hidden. False when the system refuses it.
  bool attach();
  void setLook(Look look);
  // Shows it there without taking the focus from anyone.
  void showAt(const TabPlace& place);
  void hide();
  bool shown() const { return handle() != nullptr && IsWindowVisible(handle()); }
  bool handling() const { return handlers_ > 0; }
  bool dragging() const { return dragFrom_.has_value() && moved_; }
  // Nothing can be dropped here; the window that comes takes it.
  void draggedOver(POINT screen) override;
  void dragLeft() override;
  ScreenEdge LabelLocation() const { return place_.LabelLocation; }
  const TwipsRect& rect() const { return place_.rect; }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paint();
  void move(const TabPlace& place);
  void roundCorners(Size<Pixels> size);
  void onMouseMove();
  POINT toScreen(LPARAM client) const;
  void onRelease(POINT screen);
  void cancelDrag();
  void setHot(bool hot);

  // AccessibleProvider: the window itself is the button.
  std::vector<long> children(long) override { return {}; }
  bool info(long item, AccessibleInfo& out) override;
  bool doDefaultAction(long item) override;
  long itemAt(Point<Pixels>) override { return kAccessibleWindow; }
  long focusedItem() override { return -1; }

  GdiFonts& fonts_;
  Callbacks callbacks_;
  Look look_;
  TabPlace place_;
  BackBuffer buffer_;
  AccessibleServer accessible_;
  DropTarget dropTarget_;
  int handlers_ = 0;
  bool hot_ = false;
  bool tracking_ = false;
  bool moved_ = false;             // the press has become a drag
  std::optional<POINT> dragFrom_;  // the cursor at the press
  POINT grip_{};                   // of the cursor from the middle of the tab, at the press
  TabPlace placeBeforeDrag_;
};

}  // namespace varnowick
