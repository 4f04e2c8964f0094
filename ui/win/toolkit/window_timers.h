// The timers of a window. Each start takes a number of its own, so that a tick which
// was under way when its timer was stopped or started anew is not taken for another.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <span>

#include "platform/timers.h"

namespace varnowick {

class WindowTimers {
 public:
  WindowTimers() = default;
  ~WindowTimers();
  WindowTimers(const WindowTimers&) = delete;
  WindowTimers& operator=(const WindowTimers&) = delete;

  void attach(HWND window) { window_ = window; }
  // In milliseconds; 0: the interval of the table. A timer that runs begins anew.
  void start(TimerId id, int interval = 0);
  void stop(TimerId id);
  void stopAll();
  // In their order.
  void apply(std::span<const TimerAction> actions);
  // Which timer a WM_TIMER is the tick of, by its wParam; none for a stale one and for
  // what is not ours. Ends a timer whose first tick is its last.
  std::optional<TimerId> due(UINT_PTR systemId);
  // 0 while it does not run.
  UINT_PTR systemIdOf(TimerId id) const { return running_[static_cast<std::size_t>(id)]; }

 private:
  void keepFine();

  HWND window_ = nullptr;
  std::array<UINT_PTR, kTimers.size()> running_{};  // 0: not
  UINT_PTR last_ = 0;
  bool fine_ = false;
};

}  // namespace varnowick
