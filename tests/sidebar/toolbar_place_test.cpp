#include "sidebar/toolbar_place.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr PixelRect rect(int left, int top, int width, int height) {
  return {{left}, {top}, {width}, {height}};
}

TEST(ToolbarPlace, TouchesTheBarsOuterSideWithinItsMonitor) {
  struct Row {
    const char* what;
    PixelRect bar;
    ScreenEdge edge;
    PixelRect work;
    std::optional<PixelRect> expected;
  };
  constexpr PixelRect kWork = rect(0, 0, 1280, 760);
  const Row rows[] = {
      {"left", rect(-13, 0, 300, 760), ScreenEdge::Left, kWork, rect(287, 0, 40, 160)},
      {"right", rect(993, 0, 300, 760), ScreenEdge::Right, kWork, rect(953, 0, 40, 160)},
      {"top", rect(200, -7, 500, 200), ScreenEdge::Top, kWork, rect(540, 193, 160, 40)},
      {"bottom", rect(200, 573, 500, 200), ScreenEdge::Bottom, kWork, rect(540, 533, 160, 40)},
      {"floating", rect(400, 300, 300, 300), ScreenEdge::None, kWork, rect(700, 300, 40, 160)},
      {"floating at the right", rect(960, 300, 300, 300), ScreenEdge::None, kWork,
       rect(920, 300, 40, 160)},
      {"starts above", rect(-13, -100, 300, 900), ScreenEdge::Left, kWork, rect(287, 0, 40, 160)},
      {"begins low", rect(-13, 700, 300, 60), ScreenEdge::Left, kWork, rect(287, 600, 40, 160)},
      {"top, from the left", rect(-50, -7, 100, 200), ScreenEdge::Top, kWork,
       rect(0, 193, 160, 40)},
      {"second monitor", rect(2004, 0, 300, 700), ScreenEdge::Right, rect(1280, 0, 1024, 768),
       rect(1964, 0, 40, 160)},
      {"as wide as the screen", rect(-13, 0, 1290, 760), ScreenEdge::Left, kWork, std::nullopt},
      {"as wide, floating", rect(0, 0, 1280, 760), ScreenEdge::None, kWork, std::nullopt},
      {"as high as the screen", rect(0, -7, 500, 760), ScreenEdge::Top, kWork, std::nullopt},
  };
  for (const Row& row : rows) {
    const bool column = toolbarIsColumn(row.edge);
    const Size<Pixels> size = column ? Size<Pixels>{{40}, {160}} : Size<Pixels>{{160}, {40}};
    EXPECT_EQ(toolbarPlace(row.bar, row.edge, row.work, size), row.expected) << row.what;
  }
}

}  // namespace
}  // namespace varnowick
