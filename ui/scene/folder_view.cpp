#include "ui/scene/folder_view.h"

#include <algorithm>
#include <utility>

#include "containers/folder_path.h"
#include "shortcuts/natural_order.h"
#include "shortcuts/paths.h"

namespace varnowick {

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
  return has(row) ? &entries_[static_cast<std::size_t>(row)] : nullptr;
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
  state_ = listing.state;
  reason_ = std::move(listing.reason);
  // Both are in the same order, so one walk through both finds what has stayed.
  std::size_t now = 0;
  replace(static_cast<int>(entries_.size()), [&](int row) {
    const FolderEntry& was = old[static_cast<std::size_t>(row)];
    while (now < entries_.size() && entryLess(entries_[now], was)) ++now;
    return NewPlace{static_cast<int>(now), now < entries_.size() && entries_[now] == was};
  });
  return true;
}

std::vector<std::wstring> FolderView::selectedPaths() const {
  std::vector<std::wstring> paths;
  for (int row = 0; row < count(); ++row)
    if (isSelected(row)) paths.push_back(pathOf(row));
  return paths;
}

bool FolderView::typed(wchar_t letter, std::uint64_t milliseconds) {
  return ListModel::typed(letter, milliseconds,
                          [this](int row) -> std::wstring_view { return entry(row)->name; });
}

}  // namespace varnowick
