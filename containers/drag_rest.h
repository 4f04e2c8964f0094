// The wait for something that is dragged to come to rest. Knows the cursor; the timer
// is the caller's.
#pragma once

#include <cstdlib>
#include <optional>

#include "core/units.h"

namespace varnowick {

class DragRest {
 public:
  // True when the wait begins, or begins anew: a drag that has come to rest elsewhere
  // sends no more moves.
  bool over(Point<Pixels> cursor) {
    if (at_ && restsAt(*at_, cursor)) return false;
    at_ = cursor;
    return true;
  }
  void leave() { at_.reset(); }
  // At the end of the wait, which is over then.
  bool rested(Point<Pixels> cursor) {
    const bool result = at_ && restsAt(*at_, cursor);
    at_.reset();
    return result;
  }

 private:
  static bool restsAt(Point<Pixels> a, Point<Pixels> b) {
    constexpr long long kTolerance = 10;
    const auto apart = [](Pixels one, Pixels other) {
      return std::llabs(static_cast<long long>(one.value) - other.value);
    };
    return apart(a.x, b.x) <= kTolerance && apart(a.y, b.y) <= kTolerance;
  }

  std::optional<Point<Pixels>> at_;
};

}  // namespace varnowick
