#include "core/units.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnowick {
namespace {

TEST(Units, RoundHalfToEven) {
  const struct {
    double value;
    int rounded;
  } cases[] = {{0.5, 0},
               {1.5, 2},
               {2.5, 2},
               {-0.5, 0},
               {-1.5, -2},
               {2.500001, 3},
               {-2.7, -3},
               {1e300, std::numeric_limits<int>::max()},
               {-1e300, std::numeric_limits<int>::min()},
               {std::numeric_limits<double>::quiet_NaN(), 0}};
  for (const auto& c : cases) EXPECT_EQ(roundHalfToEven(c.value), c.rounded) << c.value;
}

TEST(Units, NeighboursStayNeighboursInPixels) {
  for (const int dpi : {96, 120, 144, 192}) {
    const TwipsRect left{{7}, {0}, {1000}, {100}};
    const TwipsRect right{left.right(), {0}, {333}, {100}};
    EXPECT_EQ(toPixels(left, {dpi}).right(), toPixels(right, {dpi}).left) << dpi;
  }
}

}  // namespace
}  // namespace varnowick
