#include "containers/note_slice.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr std::size_t kNear = 1'000;  // units from the end of a slice
constexpr std::size_t kLongestWord = 2'000;
constexpr std::size_t kMostHardEdited = 6'000;

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

// True without many lines, and without words so long that some controls break them in
// a time that grows with their square.
bool isEasy(std::wstring_view text) {
  std::size_t lines = 0;
  std::size_t word = 0;
  for (const wchar_t c : text) {
    if (c == L'\n' && ++lines > kMostEditedLines) return false;
    word = c <= L' ' ? 0 : word + 1;
    if (word > kLongestWord) return false;
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

std::wstring withSlice(std::wstring_view text, const NoteSlice& slice, std::wstring_view edited) {
  const std::size_t start = std::min(slice.start, text.size());
  const std::size_t end = std::clamp(slice.end, start, text.size());
  std::wstring result;
  result.reserve(start + edited.size() + text.size() - end);
  result += text.substr(0, start);
  result += edited;
  result += text.substr(end);
  return result;
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

std::size_t withoutBreakUnits(std::wstring_view text, std::size_t offset) {
  const std::wstring_view before = text.substr(0, offset);
  return before.size() - static_cast<std::size_t>(std::count(before.begin(), before.end(), L'\n'));
}

std::size_t withBreakUnits(std::wstring_view text, std::size_t position) {
  std::size_t at = 0;
  for (; at < text.size() && position > 0; ++at)
    if (text[at] != L'\n') --position;
  return at < text.size() && at > 0 && text[at - 1] == L'\r' ? at + 1 : at;
}

}  // namespace varnowick
