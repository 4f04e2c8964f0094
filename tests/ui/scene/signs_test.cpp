#include "ui/scene/signs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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

using Picture = std::array<std::string, 13>;

// The pixels of the usual density that the pen's middle passes through.
Picture pictureOf(Sign sign, ScreenEdge edge) {
  Picture picture;
  picture.fill(std::string(13, '.'));
  constexpr int kLeast = 6;  // of the sign in its rectangle of 24
  const auto mark = [&](double x, double y, char c) {
    // A little to the side, where rounding might fall on either.
    const int column = static_cast<int>(std::floor(x + 0.13)) - kLeast;
    const int row = static_cast<int>(std::floor(y + 0.13)) - kLeast;
    if (column >= 0 && row >= 0 && column < 13 && row < 13)
      picture[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = c;
    else
      ADD_FAILURE() << "too large";
  };
  const Pens canvas = drawn(sign, 96, edge);
  for (const auto& call : canvas.calls)
    for (int y = call.rect.top.value; y < call.rect.bottom().value; ++y)
      for (int x = call.rect.left.value; x < call.rect.right().value; ++x) mark(x, y, '#');
  for (const Pens::Line& line : canvas.lines) {
    if (line.points.size() == 1)
      mark(line.points[0].x, line.points[0].y, line.width > 3 && line.width < 4 ? 'o' : '?');
    for (std::size_t i = 1; i < line.points.size(); ++i)
      for (float share = 0; share < 1.01F; share += 0.02F) {
        const FinePoint a = line.points[i - 1], b = line.points[i];
        mark(a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share, '#');
      }
  }
  return picture;
}

// In the order of their names, those that point to the left; then what points to the
// right, up and down.
TEST(Signs, LookLikeThis) {
  std::vector<Picture> pictures;
  for (int sign = 0; sign <= static_cast<int>(Sign::Lens); ++sign)
    pictures.push_back(pictureOf(static_cast<Sign>(sign), ScreenEdge::Left));
  for (const ScreenEdge edge : {ScreenEdge::Right, ScreenEdge::Top, ScreenEdge::Bottom})
    pictures.push_back(pictureOf(Sign::Dock, edge));
  pictures.push_back(pictureOf(Sign::Detach, ScreenEdge::Right));
  std::string all;
  for (std::size_t first = 0; first < pictures.size(); first += 7)
    for (std::size_t line = 0; line < 13; ++line) {
      for (std::size_t i = first; i < std::min(first + 7, pictures.size()); ++i)
        all += " " + pictures[i][line];
      all += "\n";
    }
  EXPECT_EQ(
      all,
      R"( ............. ............. ............. ............. ............. ............. .............
 .#........... .###########. .####........ .....####.... .....####.... #............ .............
 ..#.......... .###########. ....###...... ....##..##... ....##..##... #......#..... ......#......
 ...#......#.. ............. ......###.... ...##....#... ...##....#... #.....##..... ......#......
 ....#.....#.. ............. ........##... ...#.....#... ...#.....#... #....##...... ......#......
 .....#....#.. .###########. .###.....#... ...#......... ...#.....#... #...##....... ......#......
 ......#...#.. .###########. ...###...##.. ..#########.. ..#########.. #..########## ..#########..
 .......#..#.. ............. .....##...#.. ..#########.. ..#########.. #...#........ ......#......
 ........#.#.. ............. ......##..##. ..#########.. ..#########.. #....#....... ......#......
 .........##.. .###########. .......#...#. ..#########.. ..#########.. #.....#...... ......#......
 ...########.. .###########. ..o....#...#. ..#########.. ..#########.. #......#..... ......#......
 ............. ............. .......#...#. ..#########.. ..#########.. #............ .............
 ............. ............. ............. ............. ............. ............. .............
 ............. ............. ............. ............. ............. ............. .............
 ............. ............. ............. ............. ............. ............. .............
 .#######o###. .###########. ..#########.. ......#####.. ..........#.. ............. .............
 ............. ............. ..#.......#.. ..####...##.. ..####...##.. ............. ......#......
 ............. ............. ..#.......#.. ..#.....###.. ..#..#..##... ............. ......#......
 ............. ............. ..#.......#.. ..#....##.#.. ..#..#.##.... ............. ......#......
 .##o########. .###########. ..#.......#.. ..#...##..#.. ..#..###..... ............. ...#######...
 ............. ............. ..#.##....#.. ..#..##..#... ..#..#####... ............. ......#......
 ............. ............. ..#.##....#.. ..#......#... ..#......#... ............. ......#......
 ............. ............. ..#.......#.. ..#......#... ..#......#... ..#########.. ......#......
 .######o####. .###########. ..#########.. ..########... ..########... ............. .............
 ............. ............. ............. ............. ............. ............. .............
 ............. ............. ............. ............. ............. ............. .............
 ............. ............. ............. .###########. ......#...... .............
 ............. ....####..... ............# ............. ......#...... .............
 ............. ..###..##.... .....#......# ............. ......#...... ..#####......
 ............. ..#.....##... ......#.....# ......#...... ......#...... ..##...####..
 ............. .##......#... .......#....# .....###..... ......#...... ..#.#.....#..
 ............. .#.......#... ........#...# ....###.#.... ..#...#...#.. ..#..#....#..
 ...#######... .#.......#... ##########..# ...##.#..#... ...#..#..##.. ..#...#...#..
 ............. .##.....##... ........##..# ..##..#...#.. ....#.#.##... ...#...#..#..
 ............. ..##...##.... .......##...# ......#...... .....####.... ...#......#..
 ............. ...#####.#... ......##....# ......#...... ......##..... ...#......#..
 ............. ..........#.. .....##.....# ......#...... ............. ...########..
 ............. ...........#. ............# ......#...... ............. .............
 ............. ............# ............. ......#...... .###########. .............
)");
}

}  // namespace
}  // namespace varnowick
