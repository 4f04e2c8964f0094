#include "ui/scene/jump_row.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_text_measure.h"
#include "tests/fakes/recording_canvas.h"

namespace varnowick {
namespace {

constexpr PixelRect kRow{{0}, {0}, {300}, {28}};
const SystemColours kSystem{rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 255), rgb(0, 0, 0),
                            rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 0)};

std::vector<std::string> texts(const JumpRow& row, const Palette& palette) {
  RecordingCanvas canvas;
  FakeTextMeasure measure;
  paintJumpRow(canvas, measure, kRow, row, palette, Density{});
  std::vector<std::string> found;
  for (const auto& call : canvas.calls) {
    EXPECT_EQ(call.rect.intersect(kRow), call.rect) << call.verb << " stays in its row";
    if (call.verb == "text") found.push_back(call.detail.substr(0, call.detail.find(' ')));
  }
  return found;
}

TEST(JumpRow, EveryLetterIsDrawnOnceWhateverIsMatched) {
  const Palette palette = makePalette({});
  struct Row {
    std::vector<std::size_t> matched;
    std::vector<std::string> expected;
  };
  const Row rows[] = {{{}, {"Firefox"}},
                      {{0, 1}, {"Fi", "refox"}},
                      {{0, 4}, {"F", "ire", "f", "ox"}},
                      {{6}, {"Firefo", "x"}},
                      {{0, 1, 2, 3, 4, 5, 6}, {"Firefox"}},
                      // The caption has changed since it was matched.
                      {{5, 6, 7, 90}, {"Firef", "ox"}},
                      {{4, 2}, {"Fire", "f", "ox"}}};
  for (const Row& r : rows) {
    JumpRow row;
    row.caption = L"Firefox";
    row.matched = r.matched;
    EXPECT_EQ(texts(row, palette), r.expected);
  }
}

TEST(JumpRow, ALongCaptionLeavesRoomForThePlace) {
  JumpRow row;
  row.caption = std::wstring(300, L'c');
  row.matched = {0, 2, 299};
  row.place = std::wstring(300, L'p');
  texts(row, makePalette({}));
}

TEST(JumpRow, LooksLikeThis) {
  FakeTextMeasure measure;
  std::string all;
  for (const bool highContrast : {false, true}) {
    const Palette palette = highContrast ? makeHighContrastPalette({}, kSystem) : makePalette({});
    std::string former;
    const auto add = [&](const char* what, const auto& paint) {
      RecordingCanvas canvas;
      paint(canvas);
      const std::string now = canvas.written({"fill", "box", "text", "image", "stroke"});
      all += RecordingCanvas::added(what, former, now);
      former = now;
    };
    JumpRow row{L"Mail", {1}, {ImageRef::Source::Asset, L"icon"}, L"Work"};
    const auto paintRow = [&](Canvas& canvas) {
      paintJumpRow(canvas, measure, {{4}, {40}, {300}, {28}}, row, palette, {});
    };
    add("row", paintRow);
    row.hovered = true;
    add("hovered", paintRow);
    row.selected = true;
    add("selected", paintRow);
    for (const bool focused : {false, true})
      add(focused ? "focused" : "panel", [&](Canvas& canvas) {
        paintJumpPanel(canvas, measure, {{0}, {0}, {308}, {200}}, {{8}, {8}, {292}, {28}},
                       {{300}, {60}, {3}, {30}}, L"3 of 9", focused, palette, {});
      });
  }
  EXPECT_EQ(all, R"(row: fill 4,40 300x28 #212730; image 12,46 16x16 icon;
  text 272,40 24x28 Work #9fa5ad 8pt right midway; text 36,40 7x28 M #ebf0f6 9.5pt midway;
  text 43,40 7x28 a bold #76b6e6 9.5pt midway; text 50,40 214x28 il #ebf0f6 9.5pt midway
hovered: box 4,41 300x26 #353b44 r5
selected: box 4,41 300x26 #2d475e in #4fa3e0 r5; text 272,40 24x28 Work #ebf0f6 8pt right midway
panel: fill 0,0 308x200 #212730; fill 0,198 308x2 #11151b; box 8,8 292x28 #2c323a in #494f56 r5;
  stroke 19,17 9x9 #9fa5ad; stroke 26,24 5x5 #9fa5ad;
  text 252,8 42x28 3 of 9 #9fa5ad 8pt right midway; box 300,60 3x30 #5e636b r2
focused: box 8,8 292x28 #2c323a in #4fa3e0 r5
row: fill 4,40 300x28 #000000; image 12,46 16x16 icon;
  text 272,40 24x28 Work #00ff00 8pt right midway; text 36,40 7x28 M #ffffff 9.5pt midway;
  text 43,40 7x28 a bold #ffffff 9.5pt underlined midway;
  text 50,40 214x28 il #ffffff 9.5pt midway
hovered: box 4,41 300x26 #000000 in #00ffff r5
selected: box 4,41 300x26 #00ffff r5; text 272,40 24x28 Work #000000 8pt right midway;
  text 36,40 7x28 M #000000 9.5pt midway; text 43,40 7x28 a bold #000000 9.5pt underlined midway;
  text 50,40 214x28 il #000000 9.5pt midway
panel: fill 0,0 308x200 #000000; fill 0,198 308x2 #ffffff; box 8,8 292x28 #000000 in #ffffff r5;
  stroke 19,17 9x9 #00ff00; stroke 26,24 5x5 #00ff00;
  text 252,8 42x28 3 of 9 #00ff00 8pt right midway; box 300,60 3x30 #ffffff r2
focused: box 8,8 292x28 #000000 in #00ffff r5
)");
}

}  // namespace
}  // namespace varnowick
