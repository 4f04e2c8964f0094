#include "core/units.h"

#include <limits>

namespace varnowick {

int roundHalfToEven(double value) {
  if (std::isnan(value)) return 0;
  const double floor = std::floor(value);
  const double rest = value - floor;
  double rounded = floor;
  if (rest > 0.5 || (rest == 0.5 && std::fmod(floor, 2.0) != 0.0)) rounded += 1.0;
  if (rounded >= static_cast<double>(std::numeric_limits<int>::max()))
    return std::numeric_limits<int>::max();
  if (rounded <= static_cast<double>(std::numeric_limits<int>::min()))
    return std::numeric_limits<int>::min();
  return static_cast<int>(rounded);
}

}  // namespace varnowick
