#include "ui/win/toolkit/drag_trail.h"

namespace varnowick {

void DragTrail::pass(HWND to) {
  if (to == over_) return;
  DragStop* left = find_(over_);
  over_ = to;
  if (left != nullptr) left->dragLeft();
}

bool DragTrail::moveTo(POINT screen) {
  pass(windowAt(screen));
  DragStop* stop = find_(over_);
  if (stop != nullptr) stop->draggedOver(screen);
  return stop != nullptr;
}

}  // namespace varnowick
