// The timers of a detached container's window as one table: name, interval and
// whether they run from the start. Knows nothing of how a timer is made.
#pragma once

#include <array>
#include <cstddef>

namespace varnowick {

enum class DetachedTimerId { TimerHide, TimerFadeOut };

struct DetachedTimerRow {
  DetachedTimerId id;
  const wchar_t* name;
  int interval;  // milliseconds; the system may tick later, never earlier
  bool running;  // from the moment the window is there
};

inline constexpr std::array<DetachedTimerRow, 2> kDetachedTimers{{
    {DetachedTimerId::TimerHide, L"TimerHide", 1000, true},
    {DetachedTimerId::TimerFadeOut, L"TimerFadeOut", 1, false},
}};

constexpr const DetachedTimerRow& timerRow(DetachedTimerId id) {
  return kDetachedTimers[static_cast<std::size_t>(id)];
}

consteval bool detachedTimersStandAtTheirIds() {
  for (std::size_t i = 0; i < kDetachedTimers.size(); ++i)
    if (kDetachedTimers[i].id != static_cast<DetachedTimerId>(i)) return false;
  return true;
}
static_assert(detachedTimersStandAtTheirIds());

struct DetachedTimerAction {
  DetachedTimerId id;
  bool start;  // false: stop
  bool operator==(const DetachedTimerAction&) const = default;
};

}  // namespace varnowick
