// The timers of the program's windows as one table. Rules ask for timers by id; only
// a window knows how a timer is made.
#pragma once

#include <array>
#include <cstddef>

namespace varnowick {

enum class TimerId {
  // Of the main window
  TimerShow,
  TimerSlide,
  TimerHide,
  TimerLook,
  TimeLock,
  TimerExpandContainer,
  TimerDontShrink,
  TimerSuspendShrink,
  TimerSuspendAutoExpand,
  TimerTileClick,
  TimerSave,
  TimerUndoLine,
  // Of a detached container's
  DetachedTimerHide,
  TimerFadeOut,
  // Of both
  TimerDblClickLabelDelay,
  TimerExpandUnfoldOnDrag
};

struct TimerRow {
  TimerId id;
  const wchar_t* name;
  int interval;  // milliseconds; the system may tick later, never earlier
  bool oneShot;  // true: the first tick is the last
  // A finer clock for as long as it runs, which costs the machine energy.
  bool fine = false;
};

inline constexpr std::array<TimerRow, 16> kTimers{{
    {TimerId::TimerShow, L"TimerShow", 250, false},
    {TimerId::TimerSlide, L"TimerSlide", 5, false, true},
    {TimerId::TimerHide, L"TimerHide", 1000, false},
    // Who has the keyboard, and whether a program fills the screen: also while
    // auto-collapse is suspended.
    {TimerId::TimerLook, L"TimerLook", 1000, false},
    // How long the caption tells of locking or unlocking.
    {TimerId::TimeLock, L"TimeLock", 1500, true},
    // The mouse rests on a shrunk container.
    {TimerId::TimerExpandContainer, L"TimerExpandContainer", 100, true},
    // How long after an expansion, a keep-open action and a click on a body
    // containers neither shrink back nor expand by themselves.
    {TimerId::TimerDontShrink, L"TimerDontShrink", 20, true},
    {TimerId::TimerSuspendShrink, L"TimerSuspendShrink", 2000, true},
    {TimerId::TimerSuspendAutoExpand, L"TimerSuspendAutoExpand", 500, true},
    // A click on a tile that has just opened by itself was meant to open it.
    {TimerId::TimerTileClick, L"TimerTileClick", 500, true},
    // Until folding and shrinking are written.
    {TimerId::TimerSave, L"TimerSave", 400, true},
    // How long a removal offers to be taken back.
    {TimerId::TimerUndoLine, L"TimerUndoLine", 8000, true},
    {TimerId::DetachedTimerHide, L"TimerHide", 1000, false},
    {TimerId::TimerFadeOut, L"TimerFadeOut", 1, false},
    {TimerId::TimerDblClickLabelDelay, L"TimerDblClickLabelDelay", 500, true},
    // What is being dragged rests on a folded or shrunk container, or on a tab.
    {TimerId::TimerExpandUnfoldOnDrag, L"TimerExpandUnfoldOnDrag", 500, true},
}};

constexpr const TimerRow& timerRow(TimerId id) { return kTimers[static_cast<std::size_t>(id)]; }

consteval bool timersStandAtTheirIds() {
  for (std::size_t i = 0; i < kTimers.size(); ++i)
    if (kTimers[i].id != static_cast<TimerId>(i)) return false;
  return true;
}
static_assert(timersStandAtTheirIds());

struct TimerAction {
  TimerId id;
  bool start;        // false: stop. Starting a running timer begins its interval anew.
  int interval = 0;  // milliseconds; 0: that of the table
  bool operator==(const TimerAction&) const = default;
};

}  // namespace varnowick
