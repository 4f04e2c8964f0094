#include "platform/win32/win32_clock.h"

#include <windows.h>

namespace varnowick {

std::uint64_t Win32Clock::milliseconds() {
  // The counter of 32 bits starts over every 49.7 days, and a sidebar may well
  // run that long. It is asked far more often than that.
  const std::uint32_t ticks = GetTickCount();
  if (ticks < lastTicks_) ++wraps_;
  lastTicks_ = ticks;
  return (wraps_ << 32) | ticks;
}

LocalTime Win32Clock::now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

}  // namespace varnowick
