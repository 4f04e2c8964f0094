// The text of a note while it is edited, with everything that was done to it: what
// any text control would forget as soon as another text is put into it. Knows no
// control and no selection.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace varnowick {

// As much text as a history keeps, and as many changes; of the rest the oldest go.
inline constexpr std::size_t kMostHistory = 16'000'000;
inline constexpr std::size_t kMostChanges = 20'000;
// A note takes no more by typing and pasting.
inline constexpr std::size_t kMostNoteText = 16'000'000;

class NoteText {
 public:
  // Another text, of which nothing has been changed yet.
  void open(std::wstring text);
  const std::wstring& text() const { return text_; }

  // The units from `start` to `end` become `by`. What is typed or deleted letter by
  // letter, one beside the other, is one change. False when that would be too long.
  bool replace(std::size_t start, std::size_t end, std::wstring_view by);
  // What comes next is a change of its own.
  void endRun() { joins_ = false; }

  bool canUndo() const { return done_ > 0; }
  bool canRedo() const { return done_ < changes_.size(); }
  // Where the text has changed, and the caret belongs; none when there was nothing to
  // undo.
  std::optional<std::size_t> undo();
  std::optional<std::size_t> redo();

 private:
  struct Change {
    std::size_t start = 0;
    std::wstring removed;
    std::wstring inserted;
    std::size_t size() const { return removed.size() + inserted.size(); }
  };
  bool join(const Change& change);
  void forgetOldest();

  std::wstring text_;
  std::deque<Change> changes_;
  std::size_t done_ = 0;  // so many of them are in the text; the others were undone
  std::size_t kept_ = 0;  // units in all of them
  bool joins_ = false;
};

}  // namespace varnowick
