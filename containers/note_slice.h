// Which part of a long note is in the editor. A text control takes its time with
// megabytes, above all with lines that never end; so it gets a part that it can take
// at once, and another when the caret comes near its end. Knows no control.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varnowick {

// What an editor takes without being felt.
inline constexpr std::size_t kMostEdited = 60'000;  // units of text
inline constexpr std::size_t kMostEditedLines = 2'000;

struct NoteSlice {
  std::size_t start = 0;
  std::size_t end = 0;
  std::size_t size() const { return end - start; }
  bool contains(std::size_t offset) const { return offset >= start && offset <= end; }
  bool operator==(const NoteSlice&) const = default;
};

// The whole text when it is short enough, else a part around the offset, which is
// never near an end of it that is not the text's; it begins and ends between lines
// where lines are not longer than itself, and never within a letter or a line break.
NoteSlice sliceAround(std::wstring_view text, std::size_t offset);

// True when the caret has come so near an end of the slice that there is more to be
// shown. `length` is that of the slice as it has been edited.
bool wantsAnotherSlice(const NoteSlice& slice, std::size_t textLength, std::size_t caret,
                       std::size_t length);

// The whole text with what the slice has become.
std::wstring withSlice(std::wstring_view text, const NoteSlice& slice, std::wstring_view edited);

// Every line break as CR LF, and what would end a text for the system (a zero) as the
// sign for what cannot be shown.
std::wstring editableText(std::wstring_view text);

// Text controls that count a line break as one: from offsets in a text whose breaks
// are all CR LF to theirs, and back.
std::size_t withoutBreakUnits(std::wstring_view text, std::size_t offset);
std::size_t withBreakUnits(std::wstring_view text, std::size_t position);

}  // namespace varnowick
