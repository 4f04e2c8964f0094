#include "containers/note_slice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace varnowick {
namespace {

std::wstring repeated(const std::wstring& pattern, std::size_t size) {
  std::wstring text;
  text.reserve(size + pattern.size());
  while (text.size() < size) text += pattern;
  return text;
}

TEST(NoteSlice, AShortNoteIsEditedWhole) {
  EXPECT_EQ(sliceAround(L"", 0), (NoteSlice{0, 0}));
  EXPECT_EQ(sliceAround(L"a\r\nb", 99), (NoteSlice{0, 4}));
  EXPECT_FALSE(wantsAnotherSlice({0, 4}, 4, 0, 4));
  EXPECT_FALSE(wantsAnotherSlice({0, 4}, 4, 4, 4));
}

TEST(NoteSlice, HoldsTheCaretAndNothingInHalves) {
  const std::wstring patterns[] = {L"A line of usual length, as people write them.\r\n", L"\r\n",
                                   L"no end ", L"\xD83D\xDE00",
                                   std::wstring(50'000, L'x') + L"\r\n"};
  for (const std::wstring& pattern : patterns) {
    const std::wstring text = repeated(pattern, 1'000'000);
    for (const std::size_t offset :
         {std::size_t{0}, std::size_t{1}, text.size() / 2 + 1, text.size() - 1, text.size()}) {
      const NoteSlice slice = sliceAround(text, offset);
      SCOPED_TRACE(offset);
      EXPECT_LE(slice.size(), kMostEdited + 2);
      const std::wstring part = text.substr(slice.start, slice.size());
      EXPECT_LE(static_cast<std::size_t>(std::count(part.begin(), part.end(), L'\n')),
                kMostEditedLines + 2);
      const std::size_t caret = offset - std::min(slice.start, offset);
      EXPECT_LE(caret, part.size() + 1);
      EXPECT_FALSE(wantsAnotherSlice(slice, text.size(), caret, part.size()))
          << "it would never stop changing";
      for (const std::size_t edge : {slice.start, slice.end}) {
        if (edge == 0 || edge == text.size()) continue;
        EXPECT_FALSE(text[edge - 1] == L'\r' && text[edge] == L'\n');
        EXPECT_FALSE(text[edge] >= 0xDC00 && text[edge] <= 0xDFFF);
      }
    }
  }
}

TEST(NoteSlice, WalkingThroughALongNoteReachesItsEnd) {
  const std::wstring text = repeated(L"A line of usual length.\r\n", 1'000'000);
  std::size_t caret = 0;
  int slices = 0;
  for (; caret < text.size() && slices < 1000; ++slices) {
    const NoteSlice slice = sliceAround(text, caret);
    while (caret < text.size() &&
           !wantsAnotherSlice(slice, text.size(), caret - slice.start, slice.size()))
      caret += 50;
  }
  EXPECT_GE(caret, text.size());
  EXPECT_LT(slices, 100);
}

TEST(NoteSlice, CountsBreaksAsTheControlDoes) {
  const std::wstring text = L"a\r\n\r\nbc\r\n";
  const std::size_t offsets[] = {0, 1, 3, 5, 6, 7, 9};
  for (std::size_t i = 0; i < std::size(offsets); ++i) {
    EXPECT_EQ(withoutBreakUnits(text, offsets[i]), i);
    EXPECT_EQ(withBreakUnits(text, i), offsets[i]);
  }
  EXPECT_EQ(withBreakUnits(text, 99), text.size());
}

TEST(NoteSlice, TheRestIsKept) {
  EXPECT_EQ(withSlice(L"abcdef", {2, 4}, L"XYZ"), L"abXYZef");
  EXPECT_EQ(withSlice(L"abc", {0, 3}, L""), L"");
  EXPECT_EQ(withSlice(L"abc", {5, 9}, L"d"), L"abcd");
  using namespace std::string_literals;
  EXPECT_EQ(editableText(L"a\nb\rc\r\nd\r\r\n\0e"s),
            L"a\r\nb\r\nc\r\nd\r\n\r\n\xFFFD"
            L"e");
}

}  // namespace
}  // namespace varnowick
