// What a folder container shows of its folder: the entries in order, which of them
// are selected, which one keys act on, and how far the list is scrolled. A new
// listing keeps all of that by name. Knows neither disk nor scene nor pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/key.h"
#include "core/units.h"
#include "platform/folder_source.h"

namespace varnowick {

// Folders first, names in natural order. A total order: no two names are alike.
bool entryLess(const FolderEntry& a, const FolderEntry& b);
void sortEntries(std::vector<FolderEntry>& entries);

enum class ListMove { Up, Down, PageUp, PageDown, Home, End };

class FolderView {
 public:
  explicit FolderView(std::wstring path = {}) : path_(std::move(path)) {}

  // A full path; empty when the container's text does not come to one.
  const std::wstring& path() const { return path_; }
  FolderState state() const { return state_; }
  // Whether files can be put into the folder, as far as is known.
  bool takesFiles() const {
    return state_ == FolderState::Loading || (state_ == FolderState::Ready && takesFiles_);
  }
  // What stands in the list instead of entries; empty when there are some.
  std::wstring message() const;
  const std::vector<FolderEntry>& entries() const { return entries_; }
  int count() const { return static_cast<int>(entries_.size()); }
  // Null for a row that is not there.
  const FolderEntry* entry(int row) const;
  std::wstring pathOf(int row) const;
  int rowOf(const std::wstring& name) const;  // -1 when there is none

  // Takes a listing in; what is not in order is put in order first. False when
  // nothing has changed. When the folder goes, the selection goes with it.
  bool apply(FolderListing listing);

  bool isSelected(int row) const;
  int selectedCount() const { return selectedCount_; }
  // The row that keys act on; -1 for none.
  int current() const { return current_; }
  std::vector<std::wstring> selectedPaths() const;
  // A press without keys selects the row alone, unless it is selected already: then
  // a drag of all may follow, and the release decides. Ctrl adds or takes away,
  // Shift selects from where the last selection began.
  void press(int row, Modifiers held);
  void release(int row, Modifiers held, bool dragged);
  void selectAll();
  void selectNone();
  // The row alone, and in sight.
  void selectOnly(int row);
  // Ctrl moves without selecting, Shift selects on the way. False when there is
  // nowhere to go.
  bool move(ListMove move, Modifiers held);
  // Selects or unselects the current row.
  void toggleCurrent();
  // A letter: the next name that begins with what was typed within a second. The
  // same letter again and again goes through the names that begin with it. False
  // when there is none.
  bool typed(wchar_t letter, std::uint64_t milliseconds);

  // The rows that fit in whole; at least one.
  void setRoom(Twips height, Twips rowHeight);
  int top() const { return top_; }
  // One past the last row of which something is seen.
  int bottom() const;
  // Scrolls by rows; false when it is at the end already.
  bool scrollBy(int rows);
  void show(int row);
  // The row at a height below the list's upper edge; -1 below the last one.
  int rowAt(Twips y) const;
  // Where the thumb lies and how long it is, as shares of the list's height; a
  // length of 1 when everything is seen.
  struct Thumb {
    float start = 0;
    float length = 1;
  };
  Thumb thumb() const;

 private:
  void setSelected(int row, bool selected);
  void selectRange(int from, int to);
  void clampScroll();

  std::wstring path_;
  FolderState state_ = FolderState::Loading;
  std::wstring reason_;
  bool takesFiles_ = true;
  std::vector<FolderEntry> entries_;
  std::vector<char> selected_;  // by row
  int selectedCount_ = 0;
  int current_ = -1;
  int anchor_ = -1;
  bool keptForDrag_ = false;
  int top_ = 0;
  int page_ = 1;
  int shownRows_ = 1;
  Twips rowHeight_{330};
  std::wstring typed_;
  std::uint64_t typedAt_ = 0;
};

}  // namespace varnowick
