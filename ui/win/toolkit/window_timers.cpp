#include "ui/win/toolkit/window_timers.h"

#include <algorithm>

#include "platform/win32/multimedia.h"

namespace varnowick {
namespace {

// Beyond the numbers that others give to timers of the same window.
constexpr UINT_PTR kFirst = 0x1000;
constexpr UINT_PTR kLast = 0xFFFF;
constexpr UINT kFineTimer = 1;  // ms

bool beginFineTimer() {
  const auto begin = Multimedia::get().timeBeginPeriod;
  return begin != nullptr && begin(kFineTimer) == TIMERR_NOERROR;
}

void endFineTimer() {
  if (const auto end = Multimedia::get().timeEndPeriod; end != nullptr) end(kFineTimer);
}

}  // namespace

WindowTimers::~WindowTimers() {
  if (fine_) endFineTimer();
}

void WindowTimers::start(TimerId id, int interval) {
  stop(id);
  if (interval <= 0) interval = timerRow(id).interval;
  last_ = last_ < kFirst || last_ >= kLast ? kFirst : last_ + 1;
  if (SetTimer(window_, last_, static_cast<UINT>(interval), nullptr) == 0) return;
  running_[static_cast<std::size_t>(id)] = last_;
  keepFine();
}

void WindowTimers::stop(TimerId id) {
  UINT_PTR& systemId = running_[static_cast<std::size_t>(id)];
  if (systemId == 0) return;
  KillTimer(window_, systemId);
  systemId = 0;
  keepFine();
}

void WindowTimers::stopAll() {
  for (const TimerRow& row : kTimers) stop(row.id);
}

void WindowTimers::apply(std::span<const TimerAction> actions) {
  for (const TimerAction& action : actions)
    action.start ? start(action.id, action.interval) : stop(action.id);
}

std::optional<TimerId> WindowTimers::due(UINT_PTR systemId) {
  const auto found = std::find(running_.begin(), running_.end(), systemId);
  if (systemId == 0 || found == running_.end()) return std::nullopt;
  const auto id = static_cast<TimerId>(found - running_.begin());
  if (timerRow(id).oneShot) stop(id);
  return id;
}

void WindowTimers::keepFine() {
  const bool wanted = std::any_of(kTimers.begin(), kTimers.end(), [this](const TimerRow& row) {
    return row.fine && systemIdOf(row.id) != 0;
  });
  if (wanted && !fine_) {
    fine_ = beginFineTimer();
  } else if (!wanted && fine_) {
    endFineTimer();
    fine_ = false;
  }
}

}  // namespace varnowick
