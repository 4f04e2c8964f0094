// What a drop, a paste, a new name or a delete means for files: which operation on
// what, or the message that refuses it. Nothing is carried out here.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/settings.h"
#include "platform/file_operations.h"

namespace varnowick {

// The effects that a source of a drag allows, or that keys ask for.
struct TransferWish {
  bool copyAllowed = true;
  bool moveAllowed = true;
  bool ctrl = false;
  bool shift = false;
  bool alt = false;
};

// As the Explorer does it: Ctrl copies, Shift moves, without keys files move within
// a drive and are copied between drives. None when the source allows neither, or
// when a link is asked for, which a folder container does not make.
FileAction transferAction(const std::vector<std::wstring>& from, const std::wstring& folder,
                          const TransferWish& wish);

struct TransferPlan {
  std::vector<FileOperation> operations{};  // in this order; none when nothing is to be done
  std::wstring message{};                   // for the user, when something is refused
};
// Files that lie in the folder already stay there when they are to be moved, and
// are copied under another name. The message refuses the whole transfer.
TransferPlan planTransfer(FileAction action, const std::vector<std::wstring>& from,
                          const std::wstring& folder, bool locked);

// The operation for a new name typed by the user, who may have added blanks.
// Neither operation nor message when the name stays as it is.
struct RenamePlan {
  std::optional<FileOperation> operation{};
  std::wstring message{};
};
RenamePlan planRename(const std::wstring& path, std::wstring_view newName, bool locked);
// The message that refuses a name for a file or folder; empty for a good one.
std::wstring nameFault(std::wstring_view name);

struct RecyclePlan {
  std::optional<FileOperation> operation{};
  std::wstring question{};  // to be asked first; empty for none
  std::wstring message{};
};
RecyclePlan planRecycle(const std::vector<std::wstring>& paths, const Settings& settings);

// What is said when an operation has failed.
std::wstring failureMessage(const FileOperationResult& result);

}  // namespace varnowick
