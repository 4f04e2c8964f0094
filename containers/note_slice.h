// Which part of a long note is in the editor. A text control takes its time with
// megabytes, above all with lines that never end; so it gets a part that it can take
// at once, and another when the caret comes near its end. What the user selects and
// changes is the text, of which the control shows a part. Knows no control.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varnowick {

// What an editor takes without being felt.
inline constexpr std::size_t kMostEdited = 20'000;  // units of text
inline constexpr std::size_t kMostEditedLines = 1'000;

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

// Every line break as CR LF, and what would end a text for the system (a zero) as the
// sign for what cannot be shown.
std::wstring editableText(std::wstring_view text);

// One replacement that makes `after` of `before`; of all that would, the one that ends
// where the caret is, in the units of `after`.
struct NoteChange {
  std::size_t start = 0;
  std::size_t end = 0;  // in the former text
  std::wstring_view by;
  bool none() const { return start == end && by.empty(); }
};
NoteChange changeBetween(std::wstring_view before, std::wstring_view after, std::size_t caret);

// What is selected, in offsets of the whole text. The caret is the end that moves.
struct NoteSelection {
  std::size_t anchor = 0;
  std::size_t caret = 0;
  std::size_t start() const { return anchor < caret ? anchor : caret; }
  std::size_t end() const { return anchor < caret ? caret : anchor; }
  bool empty() const { return anchor == caret; }
  bool within(const NoteSlice& slice) const {
    return slice.contains(anchor) && slice.contains(caret);
  }
  bool operator==(const NoteSelection&) const = default;
};

// The selection after the control has changed what it shows of it, from `shown` to `now`
// (offsets of the whole text, start and end). An end that lies outside the slice is
// shown at the edge, and stays where it is unless the edge was left. `extends`: the
// other end is kept, as with Shift.
NoteSelection selectionAfter(const NoteSelection& selection, const NoteSlice& slice,
                             const NoteSlice& shown, const NoteSlice& now, bool extends);

}  // namespace varnowick
