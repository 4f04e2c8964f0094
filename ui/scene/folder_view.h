// What a folder container shows of its folder: the entries in order as the rows of a
// list. A new listing keeps selection and scrolling by name. Knows neither disk nor
// scene nor pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/folder_source.h"
#include "ui/scene/list_model.h"

namespace varnowick {

// Folders first, names in natural order. A total order: no two names are alike.
bool entryLess(const FolderEntry& a, const FolderEntry& b);
void sortEntries(std::vector<FolderEntry>& entries);

class FolderView : public ListModel {
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
  // Null for a row that is not there.
  const FolderEntry* entry(int row) const;
  std::wstring pathOf(int row) const;
  int rowOf(const std::wstring& name) const;  // -1 when there is none
  std::vector<std::wstring> selectedPaths() const;
  // As ListModel has it, by name.
  bool typed(wchar_t letter, std::uint64_t milliseconds);

  // Takes a listing in; what is not in order is put in order first. False when
  // nothing has changed. When the folder goes, the selection goes with it.
  bool apply(FolderListing listing);

 private:
  std::wstring path_;
  FolderState state_ = FolderState::Loading;
  std::wstring reason_;
  bool takesFiles_ = true;
  std::vector<FolderEntry> entries_;
};

}  // namespace varnowick
