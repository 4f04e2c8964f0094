#pragma once

#include <cstdint>

namespace varnowick {

struct LocalTime {
  int year = 1601, month = 1, day = 1, hour = 0, minute = 0, second = 0;
  bool operator==(const LocalTime&) const = default;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // Counts up from an arbitrary start; never goes back.
  virtual std::uint64_t milliseconds() = 0;
  virtual LocalTime now() = 0;
};

}  // namespace varnowick
