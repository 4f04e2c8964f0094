#include "ui/scene/jump_row.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_text_measure.h"
#include "tests/fakes/recording_canvas.h"

namespace varnowick {
namespace {

constexpr PixelRect kRow{{0}, {0}, {300}, {28}};

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

TEST(JumpRow, MatchedLettersCanBeReadAndToldApart) {
  const SystemColours system{rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 255), rgb(0, 0, 0),
                             rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 0)};
  Settings light;
  light.background = rgb(250, 250, 250);
  light.foreground = rgb(20, 20, 20);
  for (const Palette& palette :
       {makePalette({}), makePalette(light), makeHighContrastPalette({}, system)}) {
    EXPECT_GE(contrast(palette.text, jumpListGround(palette)), 4.5F);
    EXPECT_GE(contrast(palette.text, jumpFieldGround(palette)), 4.5F);
    JumpRow row;
    row.caption = L"ab";
    row.matched = {0};
    RecordingCanvas canvas;
    FakeTextMeasure measure;
    paintJumpRow(canvas, measure, kRow, row, palette, Density{});
    const auto* matched = canvas.findText("a");
    const auto* other = canvas.findText("b");
    ASSERT_TRUE(matched != nullptr && other != nullptr);
    EXPECT_NE(matched->detail.substr(1), other->detail.substr(1));
  }
}

TEST(JumpRow, ALongCaptionLeavesRoomForThePlace) {
  JumpRow row;
  row.caption = std::wstring(300, L'c');
  row.matched = {0, 2, 299};
  row.place = std::wstring(300, L'p');
  texts(row, makePalette({}));
}

}  // namespace
}  // namespace varnowick
