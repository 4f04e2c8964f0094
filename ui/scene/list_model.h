// A list as the user meets it, whatever its rows show: which of them are selected,
// which one keys act on, how far it is scrolled, what typing finds. Rows may be of
// different heights. Knows neither scene nor pixels nor where the rows come from.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/key.h"
#include "core/units.h"

namespace varnowick {

enum class ListMove { Up, Down, PageUp, PageDown, Home, End };

class ListModel {
 public:
  int count() const { return static_cast<int>(selected_.size()); }
  bool has(int row) const { return row >= 0 && row < count(); }

  // Where a row of before is among the new ones. One that has gone hands its place to
  // the row that stands there now, but not that it was selected.
  struct NewPlace {
    int row = 0;
    bool stays = false;
  };
  // Other rows from now on, in the same order as far as they stay. Selection, current
  // row and scrolling are kept by it; all rows have the usual height until they are
  // measured anew.
  void replace(int count, const std::function<NewPlace(int)>& placeOf);

  bool isSelected(int row) const;
  int selectedCount() const { return selectedCount_; }
  // The row that keys act on; -1 for none.
  int current() const { return current_; }
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
  // A letter: the next row whose text begins with what was typed within a second. The
  // same letter again and again goes through the rows that begin with it. False when
  // there is none.
  bool typed(wchar_t letter, std::uint64_t milliseconds,
             const std::function<std::wstring_view(int)>& textOf);

  // What the list has to show its rows in, and the height of a row that is not measured.
  void setRoom(Twips height, Twips rowHeight);
  // One height for each row; of another number of rows they are not taken.
  void setHeights(const std::vector<Twips>& heights);
  Twips heightOf(int row) const;
  // From the list's upper edge; negative for what is scrolled away.
  Twips offsetOf(int row) const;
  // The first row of which something is seen, and one past the last.
  int top() const;
  int bottom() const;
  // By rows, and through a row that is higher than the list in parts. False when it is
  // at the end already.
  bool scrollBy(int rows);
  void show(int row);
  // The row at a height below the list's upper edge; -1 beside all rows.
  int rowAt(Twips y) const;
  bool scrolls() const;
  // Where the thumb lies and how long it is, as shares of the list's height; a
  // length of 1 when everything is seen.
  struct Thumb {
    float start = 0;
    float length = 1;
  };
  Thumb thumb() const;

 private:
  double startOf(int row) const;
  double total() const { return startOf(count()); }
  double furthest() const;
  int rowAtStart(double position) const;
  void setSelected(int row, bool selected);
  void selectRange(int from, int to);
  void scrollTo(double position);

  std::vector<char> selected_;  // by row
  int selectedCount_ = 0;
  int current_ = -1;
  int anchor_ = -1;
  bool keptForDrag_ = false;
  // Sums of floats would lose twips in a long list.
  std::vector<double> starts_;  // where each row begins, and the last ends; empty: all alike
  double rowHeight_ = 330;
  double room_ = 330;
  double position_ = 0;  // of the list's upper edge among the rows
  std::wstring typed_;
  std::uint64_t typedAt_ = 0;
};

}  // namespace varnowick
