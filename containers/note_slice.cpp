#include "containers/note_slice.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr std::size_t kNear = 1'000;  // units from the end of a slice
constexpr std::size_t kLongestParagraph = 3'000;
constexpr std::size_t kMostHardEdited = 4'000;

bool isSecondUnit(wchar_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// The nearest place at or before the offset that is within neither a letter nor a
// line break.
std::size_t between(std::wstring_view text, std::size_t offset) {
  if (offset == 0 || offset >= text.size()) return std::min(offset, text.size());
  const bool inBreak = text[offset - 1] == L'\r' && text[offset] == L'\n';
  return inBreak || isSecondUnit(text[offset]) ? offset - 1 : offset;
}

// Walks from the offset, at most so many units and lines, and answers the furthest
// start of a line; in a line that is longer than that, simply the furthest place.
std::size_t furthestBack(std::wstring_view text, std::size_t from, std::size_t units,
                         std::size_t lines) {
  std::size_t best = from;
  std::size_t at = from;
  for (std::size_t walked = 0; at > 0 && walked < units; ++walked) {
    --at;
    if (text[at] != L'\n') continue;
    if (best == from || at + 1 < best) best = at + 1;
    if (lines-- == 0) return best;
  }
  if (at == 0) return 0;
  return from - best > units / 2 ? best : between(text, at);
}

std::size_t furthestForward(std::wstring_view text, std::size_t from, std::size_t units,
                            std::size_t lines) {
  std::size_t best = from;
  std::size_t at = from;
  for (std::size_t walked = 0; at < text.size() && walked < units; ++walked) {
    if (text[at++] != L'\n') continue;
    best = at;
    if (lines-- == 0) return best;
  }
  if (at == text.size()) return at;
  return best - from > units / 2 ? best : between(text, at);
}

// True without many lines, and without paragraphs so long that some controls break them
// in a time that grows with their square.
bool isEasy(std::wstring_view text) {
  std::size_t lines = 0;
  std::size_t paragraph = 0;
  for (const wchar_t c : text) {
    ++paragraph;
    if (c == L'\n') {
      paragraph = 0;
      if (++lines > kMostEditedLines) return false;
    }
    if (paragraph > kLongestParagraph) return false;
  }
  return true;
}

}  // namespace

NoteSlice sliceAround(std::wstring_view text, std::size_t offset) {
  if (text.size() <= kMostEdited && isEasy(text)) return {0, text.size()};
  offset = between(text, offset);
  const auto around = [&](std::size_t units) {
    return NoteSlice{furthestBack(text, offset, units / 2, kMostEditedLines / 2 - 1),
                     furthestForward(text, offset, units / 2, kMostEditedLines / 2 - 1)};
  };
  const NoteSlice slice = around(kMostEdited);
  return isEasy(text.substr(slice.start, slice.size())) ? slice : around(kMostHardEdited);
}

bool wantsAnotherSlice(const NoteSlice& slice, std::size_t textLength, std::size_t caret,
                       std::size_t length) {
  const std::size_t near = std::min(kNear, length / 8);
  if (length > 2 * kMostEdited) return true;
  return (slice.start > 0 && caret <= near) || (slice.end < textLength && caret + near >= length);
}

std::wstring editableText(std::wstring_view text) {
  std::wstring result;
  result.reserve(text.size() + text.size() / 16);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'\r' || c == L'\n') {
      result += L"\r\n";
      if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
    } else {
      result += c == 0 ? L'\xFFFD' : c;
    }
  }
  return result;
}

NoteChange changeBetween(std::wstring_view before, std::wstring_view after, std::size_t caret) {
  const std::size_t common = std::min(before.size(), after.size());
  caret = std::min(caret, after.size());
  // What follows the caret has not been touched, if that can be.
  std::size_t same = 0;
  while (same < std::min(common, after.size() - caret) &&
         before[before.size() - 1 - same] == after[after.size() - 1 - same])
    ++same;
  std::size_t start = 0;
  while (start < common - same && before[start] == after[start]) ++start;
  while (same < common - start &&
         before[before.size() - 1 - same] == after[after.size() - 1 - same])
    ++same;
  return {start, before.size() - same, after.substr(start, after.size() - same - start)};
}

NoteSelection selectionAfter(const NoteSelection& selection, const NoteSlice& slice,
                             const NoteSlice& shown, const NoteSlice& now, bool extends) {
  if (shown == now) return selection;
  if (now.size() == 0 && !extends) return {now.start, now.start};
  const bool forwards = selection.anchor <= selection.caret;
  const std::size_t start =
      now.start == shown.start && selection.start() < slice.start ? selection.start() : now.start;
  const std::size_t end =
      now.end == shown.end && selection.end() > slice.end ? selection.end() : now.end;
  // The end that has moved has the caret.
  if (now.start != shown.start && now.end == shown.end) return {end, start};
  if (now.start == shown.start && now.end != shown.end) return {start, end};
  // Both have: past the anchor, or by a new selection.
  if (extends && now.end == shown.start) return {end, start};
  if (extends && now.start == shown.end) return {start, end};
  return forwards ? NoteSelection{start, end} : NoteSelection{end, start};
}

}  // namespace varnowick
