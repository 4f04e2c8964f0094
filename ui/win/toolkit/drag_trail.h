// What a drag that this program has begun passes over: the windows below hear of it as
// they hear of drags from other programs.
#pragma once

#include <windows.h>

#include <functional>

namespace varnowick {

// What something that is dragged may rest on: a window of the program, or the tab of
// one that is hidden.
class DragStop {
 public:
  virtual ~DragStop() = default;
  virtual void draggedOver(POINT screen) = 0;
  // The drag has gone elsewhere or is over.
  virtual void dragLeft() = 0;
};

class DragTrail {
 public:
  // Null for windows on which nothing can rest.
  using Find = std::function<DragStop*(HWND)>;
  explicit DragTrail(Find find) : find_(std::move(find)) {}

  // The window of the program that takes part in drags at that point; null for none.
  static HWND windowAt(POINT screen) { return GetAncestor(WindowFromPoint(screen), GA_ROOT); }
  // True when it is over something.
  bool moveTo(POINT screen);
  // The drop, or the cancel.
  void end() { pass(nullptr); }

 private:
  void pass(HWND to);

  Find find_;
  HWND over_ = nullptr;  // asked for anew each time: it may have gone
};

}  // namespace varnowick
