#include "containers/folder_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "containers/folder_path.h"
#include "shortcuts/natural_order.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::uint64_t kTypingMilliseconds = 1000;

wchar_t lowered(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool beginsWith(const std::wstring& name, const std::wstring& start) {
  return name.size() >= start.size() &&
         sameIgnoringCase(std::wstring_view(name).substr(0, start.size()), start);
}

}  // namespace

bool entryLess(const FolderEntry& a, const FolderEntry& b) {
  if (a.isFolder != b.isFolder) return a.isFolder;
  if (naturalLess(a.name, b.name)) return true;
  // Names that read alike, such as "1" and "01", still need an order.
  return !naturalLess(b.name, a.name) && a.name < b.name;
}

void sortEntries(std::vector<FolderEntry>& entries) {
  std::sort(entries.begin(), entries.end(), entryLess);
}

std::wstring FolderView::message() const {
  const std::wstring shown = shownName(path_.substr(0, 1000));
  switch (state_) {
    case FolderState::Loading:
      return L"Loading...";
    case FolderState::Ready:
      return entries_.empty() ? L"This folder is empty" : L"";
    case FolderState::Missing:
      return L"Folder not found: " + shown;
    case FolderState::Denied:
      return L"Folder cannot be opened: " + shown + (reason_.empty() ? L"" : L"\r\n" + reason_);
    case FolderState::NotAFolder:
      return L"This is a file and not a folder: " + shown;
  }
  return {};
}

const FolderEntry* FolderView::entry(int row) const {
  return row >= 0 && row < count() ? &entries_[static_cast<std::size_t>(row)] : nullptr;
}

std::wstring FolderView::pathOf(int row) const {
  const FolderEntry* found = entry(row);
  if (found == nullptr) return {};
  const bool root = !path_.empty() && path_.back() == L'\\';
  return path_ + (root ? L"" : L"\\") + found->name;
}

int FolderView::rowOf(const std::wstring& name) const {
  const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const FolderEntry& entry) {
    return sameIgnoringCase(entry.name, name);
  });
  return at == entries_.end() ? -1 : static_cast<int>(at - entries_.begin());
}

bool FolderView::apply(FolderListing listing) {
  if (listing.state != FolderState::Ready) listing.entries.clear();
  if (!std::is_sorted(listing.entries.begin(), listing.entries.end(), entryLess))
    sortEntries(listing.entries);
  takesFiles_ = listing.takesFiles;
  if (listing.state == state_ && listing.reason == reason_ && listing.entries == entries_)
    return false;
  const std::vector<FolderEntry> old = std::exchange(entries_, std::move(listing.entries));
  const std::vector<char> oldSelected = std::exchange(selected_, {});
  selected_.resize(entries_.size());
  state_ = listing.state;
  reason_ = std::move(listing.reason);
  // Both are in the same order, so one walk through both finds what has stayed. A
  // row that has gone hands its place to the next one.
  int current = -1, anchor = -1, top = 0;
  selectedCount_ = 0;
  std::size_t now = 0;
  for (std::size_t was = 0; was < old.size(); ++was) {
    while (now < entries_.size() && entryLess(entries_[now], old[was])) ++now;
    const bool stays = now < entries_.size() && entries_[now] == old[was];
    const int place = static_cast<int>(now);
    if (static_cast<int>(was) == current_) current = std::min(place, count() - 1);
    if (static_cast<int>(was) == anchor_) anchor = std::min(place, count() - 1);
    if (static_cast<int>(was) == top_) top = place;
    if (stays && oldSelected[was] != 0) setSelected(place, true);
  }
  current_ = current;
  anchor_ = anchor;
  // A list that shows its beginning goes on showing it.
  top_ = top_ == 0 ? 0 : top;
  clampScroll();
  return true;
}

bool FolderView::isSelected(int row) const {
  return row >= 0 && row < count() && selected_[static_cast<std::size_t>(row)] != 0;
}

void FolderView::setSelected(int row, bool selected) {
  if (row < 0 || row >= count() || isSelected(row) == selected) return;
  selected_[static_cast<std::size_t>(row)] = selected ? 1 : 0;
  selectedCount_ += selected ? 1 : -1;
}

void FolderView::selectNone() {
  std::fill(selected_.begin(), selected_.end(), 0);
  selectedCount_ = 0;
}

void FolderView::selectAll() {
  std::fill(selected_.begin(), selected_.end(), 1);
  selectedCount_ = count();
  if (current_ < 0 && count() > 0) current_ = anchor_ = 0;
}

void FolderView::selectRange(int from, int to) {
  selectNone();
  for (int row = std::min(from, to); row <= std::max(from, to); ++row) setSelected(row, true);
}

void FolderView::selectOnly(int row) {
  if (entry(row) == nullptr) return;
  selectRange(row, row);
  current_ = anchor_ = row;
  show(row);
}

std::vector<std::wstring> FolderView::selectedPaths() const {
  std::vector<std::wstring> paths;
  for (int row = 0; row < count(); ++row)
    if (isSelected(row)) paths.push_back(pathOf(row));
  return paths;
}

void FolderView::press(int row, Modifiers held) {
  keptForDrag_ = false;
  if (entry(row) == nullptr) {
    if (!held.ctrl && !held.shift) selectNone();
    return;
  }
  if (held.shift) {
    selectRange(anchor_ < 0 ? row : anchor_, row);
    if (anchor_ < 0) anchor_ = row;
  } else if (held.ctrl) {
    setSelected(row, !isSelected(row));
    anchor_ = row;
  } else {
    keptForDrag_ = isSelected(row);
    if (!keptForDrag_) selectRange(row, row);
    anchor_ = row;
  }
  current_ = row;
}

void FolderView::release(int row, Modifiers held, bool dragged) {
  if (std::exchange(keptForDrag_, false) && !held.ctrl && !held.shift && !dragged &&
      entry(row) != nullptr)
    selectRange(row, row);
}

bool FolderView::move(ListMove move, Modifiers held) {
  if (count() == 0) return false;
  const int step =
      move == ListMove::PageUp || move == ListMove::PageDown ? std::max(1, page_ - 1) : 1;
  int to = 0;
  if (move == ListMove::End)
    to = count() - 1;
  else if (move == ListMove::Up || move == ListMove::PageUp)
    to = std::max(0, current_ - step);
  else if (move != ListMove::Home && current_ >= 0)
    to = std::min(count() - 1, current_ + step);
  const bool moved = to != current_ || !(held.ctrl || isSelected(to));
  if (held.shift) {
    if (anchor_ < 0) anchor_ = std::max(0, current_);
    selectRange(anchor_, to);
  } else if (!held.ctrl) {
    selectRange(to, to);
    anchor_ = to;
  }
  current_ = to;
  show(to);
  return moved;
}

void FolderView::toggleCurrent() {
  setSelected(current_, !isSelected(current_));
  if (current_ >= 0) anchor_ = current_;
}

bool FolderView::typed(wchar_t letter, std::uint64_t milliseconds) {
  if (typed_.empty() || milliseconds - typedAt_ > kTypingMilliseconds) typed_.clear();
  typedAt_ = milliseconds;
  typed_ += letter;
  const bool repeated = std::all_of(typed_.begin(), typed_.end(), [&](wchar_t c) {
    return lowered(c) == lowered(typed_.front());
  });
  // Names like "aardvark" are found by their whole beginning all the same.
  for (const bool whole : {true, false}) {
    if (!whole && (!repeated || typed_.size() == 1)) break;
    const std::wstring start = whole ? typed_ : typed_.substr(0, 1);
    // More letters may still mean the row that the first ones have found.
    const int from = whole && typed_.size() > 1 ? std::max(0, current_) : current_ + 1;
    for (int i = 0; i < count(); ++i) {
      const int row = (from + i) % count();
      if (!beginsWith(entry(row)->name, start)) continue;
      selectOnly(row);
      return true;
    }
  }
  return false;
}

void FolderView::setRoom(Twips height, Twips rowHeight) {
  rowHeight_ = rowHeight > 0_tw ? rowHeight : 330_tw;
  const float rows = std::clamp(height.value / rowHeight_.value, 0.0F, 10'000.0F);
  // A hair of the last row that is missing by rounding alone does not count.
  page_ = std::max(1, static_cast<int>(rows + 0.05F));
  shownRows_ = std::max(1, static_cast<int>(std::ceil(rows - 0.05F)));
  clampScroll();
}

void FolderView::clampScroll() { top_ = std::clamp(top_, 0, std::max(0, count() - page_)); }

int FolderView::bottom() const { return std::min(count(), top_ + shownRows_); }

bool FolderView::scrollBy(int rows) {
  const int before = top_;
  top_ += std::clamp(rows, -count(), count());
  clampScroll();
  return top_ != before;
}

void FolderView::show(int row) {
  if (row < top_) top_ = row;
  if (row >= top_ + page_) top_ = row - page_ + 1;
  clampScroll();
}

int FolderView::rowAt(Twips y) const {
  if (y < 0_tw) return -1;
  const float down = std::floor(y.value / rowHeight_.value);
  if (!(down < static_cast<float>(shownRows_))) return -1;
  const int row = top_ + static_cast<int>(down);
  return row < count() ? row : -1;
}

FolderView::Thumb FolderView::thumb() const {
  if (count() <= page_) return {};
  const float all = static_cast<float>(count());
  const float length = std::max(0.05F, static_cast<float>(page_) / all);
  const float way = static_cast<float>(top_) / static_cast<float>(count() - page_);
  return {way * (1 - length), length};
}

}  // namespace varnowick
