#include "ui/scene/signs.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_canvas.h"

namespace varnowick {
namespace {

struct Pens : RecordingCanvas {
  struct Line {
    std::vector<FinePoint> points;
    float width;
  };
  std::vector<Line> lines;
  void stroke(std::span<const FinePoint> points, float width, Colour) override {
    lines.push_back({{points.begin(), points.end()}, width});
  }
};

Pens drawn(Sign sign, int dpi, ScreenEdge edge = ScreenEdge::Left) {
  Pens canvas;
  drawSign(canvas, sign, {{0}, {0}, {dpi / 4}, {dpi / 4}}, {dpi}, {}, edge);
  return canvas;
}

// A line that runs along the pixels covers whole ones: its borders lie between two.
TEST(Signs, StraightLinesAreSharpAtEveryDensity) {
  for (const int dpi : {96, 120, 144, 192})
    for (int sign = 0; sign <= static_cast<int>(Sign::Lens); ++sign) {
      const Pens canvas = drawn(static_cast<Sign>(sign), dpi);
      EXPECT_FALSE(canvas.lines.empty() && canvas.calls.empty()) << sign;
      for (const Pens::Line& line : canvas.lines) {
        if (line.points.size() > 5) continue;  // an arc
        for (std::size_t i = 1; i < line.points.size(); ++i) {
          const FinePoint a = line.points[i - 1], b = line.points[i];
          if (a.x != b.x && a.y != b.y) continue;
          const float border = (a.y == b.y ? a.y : a.x) - line.width / 2;
          EXPECT_EQ(border, std::floor(border)) << dpi << ' ' << sign;
        }
      }
    }
}

TEST(Signs, TheDockingArrowPointsToItsEdge) {
  // Its tip is the middle of the three points of its head.
  const auto tip = [](ScreenEdge edge) { return drawn(Sign::Dock, 96, edge).lines.back().points; };
  struct Case {
    ScreenEdge edge;
    float dx, dy;
  };
  for (const Case& c : {Case{ScreenEdge::Left, -1, 0},
                        {ScreenEdge::Right, 1, 0},
                        {ScreenEdge::Top, 0, -1},
                        {ScreenEdge::Bottom, 0, 1}}) {
    const std::vector<FinePoint> head = tip(c.edge);
    ASSERT_EQ(head.size(), 3U);
    for (const std::size_t side : {0U, 2U}) {
      const float along = (head[1].x - head[side].x) * c.dx + (head[1].y - head[side].y) * c.dy;
      EXPECT_GT(along, 0) << static_cast<int>(c.edge);
    }
  }
}

}  // namespace
}  // namespace varnowick
