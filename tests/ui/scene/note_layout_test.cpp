#include "ui/scene/note_layout.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/fakes/fake_text_measure.h"

namespace varnowick {
namespace {

// Every letter is 6 pixels wide and every line 14 high.
TextStyle style() {
  TextStyle s;
  s.points = 9;
  return s;
}

class NoteLayoutTest : public testing::Test {
 protected:
  static NoteLayout layOut(const std::wstring& text, int letters) {
    static FakeTextMeasure measure;
    return {text, Pixels{letters * 6},
            std::make_shared<LetterWidths>(&measure, style(), Density{})};
  }
  static std::vector<std::wstring> lines(const std::wstring& text, int letters) {
    const NoteLayout layout = layOut(text, letters);
    std::vector<std::wstring> result;
    for (std::size_t i = 0; i < layout.lines(); ++i) result.emplace_back(layout.line(text, i));
    return result;
  }
};

TEST_F(NoteLayoutTest, BreaksLines) {
  using Lines = std::vector<std::wstring>;
  const struct {
    const char* what;
    const wchar_t* text;
    Lines lines;
  } cases[] = {
      {"nothing", L"", {L""}},
      {"between words", L"one two three", {L"one two ", L"three"}},
      {"blanks hang over the end", L"onetwothree   four", {L"onetwoth", L"ree   ", L"four"}},
      {"a word too long", L"abcdefghijklmnopqrs", {L"abcdefgh", L"ijklmnop", L"qrs"}},
      {"line ends of all kinds", L"a\r\nb\nc\rd\r\n", {L"a", L"b", L"c", L"d", L""}},
      {"empty lines", L"\r\n\r\nx", {L"", L"", L"x"}},
      {"a carriage return too many", L"a\r\r\nb", {L"a", L"", L"b"}},
      {"not after a hyphen", L"well-off 1-800", {L"well-off ", L"1-800"}},
      {"exactly as wide", L"12345678\n12345678 9", {L"12345678", L"12345678 ", L"9"}},
      {"a pair stays together",
       L"1234567\xD83D\xDE00\xD83D\xDE00",
       {L"1234567\xD83D\xDE00", L"\xD83D\xDE00"}},
      {"a closing mark stays",
       L"\x65E5\x65E5\x65E5\x65E5\x65E5\x65E5\x65E5\x65E5\x3002\x65E5",
       {L"\x65E5\x65E5\x65E5\x65E5\x65E5\x65E5\x65E5", L"\x65E5\x3002\x65E5"}},
  };
  for (const auto& c : cases) EXPECT_EQ(lines(c.text, 8), c.lines) << c.what;
}

TEST_F(NoteLayoutTest, KnowsWhereLinksAre) {
  const std::wstring text = L"see http://a.example/bcdefghijklmnop now\r\n\twww.example.org";
  const NoteLayout layout = layOut(text, 24);
  ASSERT_EQ(layout.links().size(), 2U);
  struct Case {
    int x, y;
    int link;
    std::size_t offset;
  };
  // "see " / "http://a.example/bcdefgh" / "ijklmnop now" / tab and the other one.
  ASSERT_EQ(layout.lines(), 4U);
  const int line = layout.lineHeight().value;
  const Case cases[] = {{5, 0, -1, 1},          {1, line, 0, 4},
                        {200, line, -1, 28},    {7, 2 * line + 1, 0, 29},
                        {60, 2 * line, -1, 38}, {20, 3 * line, -1, 42},
                        {60, 3 * line, 1, 45},  {60, 9 * line, -1, 45},
                        {60, -5, -1, 4},        {-40, 2 * line, -1, 28}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.x) + "," + std::to_string(c.y));
    const NoteHit hit = layout.hit(text, {{c.x}, {c.y}});
    EXPECT_EQ(hit.link, c.link);
    EXPECT_EQ(hit.offset, c.offset);
  }
  const std::vector<NoteRun> tail = layout.runs(text, 2);
  ASSERT_EQ(tail.size(), 2U);
  EXPECT_EQ(tail[0].link, 0) << "a link goes on in the next line";
  EXPECT_EQ(tail[1].left, tail[0].left + tail[0].width);
}

TEST_F(NoteLayoutTest, LeavesTurningRoundToThePlatform) {
  const std::wstring text = L"\x05D0\x05D1 http://example.org";
  const NoteLayout layout = layOut(text, 40);
  const auto runs = layout.runs(text, 0);
  ASSERT_EQ(runs.size(), 1U);
  EXPECT_EQ(runs[0].link, -1);
  EXPECT_EQ(runs[0].width, layout.width()) << "it begins at the right";
}

TEST_F(NoteLayoutTest, SurvivesAnyTextAndWidth) {
  const std::wstring patterns[] = {L"\n",       L"a ",     L"a",       L"\t",
                                   L"\x0301",   L"\xDC00", L"\xD800",  L"http://",
                                   L"www.a.b ", L"\r\n\r", L"\x05D0 ", L"\x65E5"};
  for (const std::wstring& pattern : patterns) {
    std::wstring text;
    while (text.size() < 100'000) text += pattern;
    for (const int letters : {-5, 0, 1, 30, 1'000'000}) {
      const NoteLayout layout = layOut(text, letters);
      std::size_t letter = 0;
      for (std::size_t i = 0; i < layout.lines(); i += 97) {
        letter += layout.line(text, i).size();
        layout.runs(text, i);
      }
      EXPECT_LE(letter, text.size());
      EXPECT_LE(layout.hit(text, {{1 << 30}, {1 << 30}}).offset, text.size());
      // A layout that has outlived its text touches nothing of the new one.
      EXPECT_TRUE(layout.line(L"short", layout.lines() - 1).empty());
    }
  }
}

TEST_F(NoteLayoutTest, MeasuresEachLetterOnce) {
  FakeTextMeasure measure;
  const auto widths = std::make_shared<LetterWidths>(&measure, style(), Density{});
  const int before = measure.measured;
  std::wstring text;
  for (int i = 0; i < 10'000; ++i) text += L"abc \x65E5\x672C\n";
  NoteLayout(text, Pixels{100}, widths);
  EXPECT_EQ(measure.measured - before, 4);
}

}  // namespace
}  // namespace varnowick
