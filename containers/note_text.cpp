#include "containers/note_text.h"

#include <algorithm>
#include <utility>

namespace varnowick {

void NoteText::open(std::wstring text) {
  text_ = std::move(text);
  changes_.clear();
  done_ = kept_ = 0;
  joins_ = false;
}

bool NoteText::replace(std::size_t start, std::size_t end, std::wstring_view by) {
  start = std::min(start, text_.size());
  end = std::clamp(end, start, text_.size());
  if (text_.size() - (end - start) + by.size() > std::max(kMostNoteText, text_.size()))
    return false;
  Change change{start, text_.substr(start, end - start), std::wstring(by)};
  if (change.size() == 0) return true;
  text_.replace(start, end - start, by);
  while (canRedo()) {
    kept_ -= changes_.back().size();
    changes_.pop_back();
  }
  kept_ += change.size();
  // A letter, or a line break.
  const bool small = change.size() <= 2;
  if (!small || !joins_ || !join(change)) {
    changes_.push_back(std::move(change));
    ++done_;
    forgetOldest();
  }
  joins_ = small;
  return true;
}

// One letter more of what is being typed or deleted. A line break ends what is typed:
// lines are undone one by one.
bool NoteText::join(const Change& change) {
  if (changes_.empty()) return false;
  Change& last = changes_.back();
  if (change.removed.empty()) {
    if (change.start != last.start + last.inserted.size() || last.inserted.empty()) return false;
    if (last.inserted.back() == L'\n') return false;
    last.inserted += change.inserted;
    return true;
  }
  if (!change.inserted.empty() || !last.inserted.empty()) return false;
  if (change.start + change.removed.size() == last.start) {
    last.start = change.start;
    last.removed.insert(0, change.removed);
    return true;
  }
  if (change.start != last.start) return false;
  last.removed += change.removed;
  return true;
}

// The newest stays, however long it is.
void NoteText::forgetOldest() {
  while (changes_.size() > 1 && (kept_ > kMostHistory || changes_.size() > kMostChanges)) {
    kept_ -= changes_.front().size();
    changes_.pop_front();
    --done_;
  }
}

std::optional<std::size_t> NoteText::undo() {
  if (!canUndo()) return std::nullopt;
  const Change& change = changes_[--done_];
  text_.replace(change.start, change.inserted.size(), change.removed);
  joins_ = false;
  return change.start + change.removed.size();
}

std::optional<std::size_t> NoteText::redo() {
  if (!canRedo()) return std::nullopt;
  const Change& change = changes_[done_++];
  text_.replace(change.start, change.removed.size(), change.inserted);
  joins_ = false;
  return change.start + change.inserted.size();
}

}  // namespace varnowick
