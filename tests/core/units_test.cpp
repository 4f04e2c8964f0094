#include "core/units.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(Units, NeighboursStayNeighboursInPixels) {
  for (const int dpi : {96, 120, 144, 192}) {
    const TwipsRect left{{7}, {0}, {1000}, {100}};
    const TwipsRect right{left.right(), {0}, {333}, {100}};
    EXPECT_EQ(toPixels(left, {dpi}).right(), toPixels(right, {dpi}).left) << dpi;
  }
}

}  // namespace
}  // namespace varnowick
