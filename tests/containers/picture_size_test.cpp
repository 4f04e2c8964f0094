#include "containers/picture_size.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(PictureSize, FitsIntoTheRoomAndKeepsItsShape) {
  const struct {
    const char* what;
    Size<Pixels> picture;
    int dpi;
    Size<Twips> room;
    Size<Twips> size;
  } cases[] = {
      {"as it is", {{100}, {50}}, 96, {{9000}, {9000}}, {{1620}, {870}}},
      {"fewer twips at a higher density", {{200}, {100}}, 192, {{9000}, {9000}}, {{1620}, {870}}},
      {"too wide", {{1000}, {500}}, 96, {{3120}, {9000}}, {{3120}, {1620}}},
      {"too high", {{500}, {1000}}, 96, {{9000}, {3120}}, {{1620}, {3120}}},
      {"a line", {{10000}, {1}}, 96, {{3120}, {3120}}, {{3120}, {240}}},
      {"a dot", {{1}, {1}}, 96, {{3120}, {3120}}, {{240}, {240}}},
      {"no room", {{100}, {100}}, 96, {{0}, {-50}}, {{240}, {240}}},
      {"no picture", {{0}, {100}}, 96, {{3120}, {3120}}, {{240}, {240}}},
  };
  for (const auto& c : cases) {
    const Size<Twips> size = newPictureSize(c.picture, Density{c.dpi}, c.room);
    EXPECT_NEAR(size.width.value, c.size.width.value, 2) << c.what;
    EXPECT_NEAR(size.height.value, c.size.height.value, 2) << c.what;
  }
}

}  // namespace
}  // namespace varnowick
