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
  for (const std::wstring& pattern : patterns)
    for (const std::size_t size : {15'000U, 1'000'000U}) {
      const std::wstring text = repeated(pattern, size);
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

TEST(NoteSlice, EveryLineBreakBecomesOfOneKind) {
  using namespace std::string_literals;
  EXPECT_EQ(editableText(L"a\nb\rc\r\nd\r\r\n\0e"s),
            L"a\r\nb\r\nc\r\nd\r\n\r\n\xFFFD"
            L"e");
}

TEST(NoteSlice, FindsWhatHasBeenTyped) {
  const struct {
    const wchar_t *before, *after;
    std::size_t caret, start, end;
    const wchar_t* by;
  } cases[] = {{L"", L"", 0, 0, 0, L""},
               {L"aaa", L"aaaa", 2, 1, 1, L"a"},
               {L"aaaa", L"aaa", 1, 1, 2, L""},
               {L"abc", L"axyc", 3, 1, 2, L"xy"},
               {L"abc", L"", 0, 0, 3, L""},
               {L"ab", L"aXYab", 3, 0, 0, L"aXY"},
               {L"abcd", L"xbcy", 9, 0, 4, L"xbcy"}};
  for (const auto& c : cases) {
    const NoteChange change = changeBetween(c.before, c.after, c.caret);
    EXPECT_EQ(change.start, c.start) << c.after;
    EXPECT_EQ(change.end, c.end) << c.after;
    EXPECT_EQ(change.by, c.by);
  }
}

TEST(NoteSlice, WhatIsSelectedReachesBeyondWhatIsShown) {
  const NoteSlice slice{100, 200};
  const struct {
    const char* what;
    NoteSelection before;
    NoteSlice shown, now;
    bool extends;
    NoteSelection after;
  } cases[] = {
      {"nothing has moved", {0, 500}, {100, 200}, {100, 200}, false, {0, 500}},
      {"the caret moves on", {0, 150}, {100, 150}, {100, 160}, true, {0, 160}},
      {"back to the edge", {0, 150}, {100, 150}, {100, 100}, true, {0, 100}},
      {"backwards", {900, 150}, {150, 200}, {140, 200}, true, {900, 140}},
      {"a click elsewhere", {0, 150}, {100, 150}, {120, 120}, false, {120, 120}},
      {"a click at the edge", {0, 150}, {100, 150}, {100, 100}, false, {100, 100}},
      {"past the anchor", {150, 160}, {150, 160}, {120, 150}, true, {150, 120}},
      {"a word", {150, 150}, {150, 150}, {110, 115}, true, {110, 115}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(selectionAfter(c.before, slice, c.shown, c.now, c.extends), c.after) << c.what;
}

}  // namespace
}  // namespace varnowick
