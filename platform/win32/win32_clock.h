// The system's tick counter and its local time.
#pragma once

#include "platform/clock.h"

namespace varnowick {

class Win32Clock : public Clock {
 public:
  std::uint64_t milliseconds() override;
  LocalTime now() override;

 private:
  std::uint32_t lastTicks_ = 0;
  std::uint64_t wraps_ = 0;
};

}  // namespace varnowick
