#include "containers/folder_operations.h"

#include <algorithm>
#include <array>

#include "containers/folder_path.h"
#include "shortcuts/paths.h"
#include "shortcuts/selection.h"

namespace varnowick {
namespace {

// What the shell's file operations take; beyond it they fail, or worse, cut.
constexpr std::size_t kMostShellPath = 259;
constexpr std::size_t kMostName = 255;

std::wstring quoted(const std::wstring& path) {
  return L"\"" + shownName(path.substr(0, 400)) + L"\"";
}

// Why the shell must not be handed this path; empty when it may.
std::wstring shellFault(const std::wstring& path) {
  if (!isPlainFullPath(path)) return L"This is not the path of a file: " + quoted(path);
  if (path.size() > kMostShellPath)
    return L"The path is too long for copying, moving and deleting:\r\n\r\n" + quoted(path);
  // The shell leaves the end of such a name out, and would act on another file.
  const std::wstring name = nameOf(path);
  if (!name.empty() && (name.back() == L' ' || name.back() == L'.'))
    return L"A name that ends in a blank or a dot cannot be handled: " + quoted(name);
  return {};
}

// Why the folder cannot take the file; empty when it can.
std::wstring transferFault(const std::wstring& from, const std::wstring& folder) {
  if (std::wstring fault = shellFault(from); !fault.empty()) return fault;
  if (parentOf(from).empty()) return L"A whole drive cannot be copied or moved: " + quoted(from);
  if (isInOrBelow(folder, from))
    return L"The folder " + quoted(nameOf(from)) +
           L" cannot be put into itself or into a folder that lies in it.";
  return {};
}

bool isDeviceName(std::wstring_view name) {
  std::wstring_view stem = name.substr(0, name.find(L'.'));
  while (!stem.empty() && stem.back() == L' ') stem.remove_suffix(1);
  for (const wchar_t* device : {L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$", L"CLOCK$"})
    if (sameIgnoringCase(stem, device)) return true;
  if (stem.size() != 4 || (!sameIgnoringCase(stem.substr(0, 3), L"COM") &&
                           !sameIgnoringCase(stem.substr(0, 3), L"LPT")))
    return false;
  // The raised digits count as well.
  const wchar_t digit = stem[3];
  return (digit >= L'1' && digit <= L'9') || digit == 0xB9 || digit == 0xB2 || digit == 0xB3;
}

}  // namespace

FileAction transferAction(const std::vector<std::wstring>& from, const std::wstring& folder,
                          const TransferWish& wish) {
  if (from.empty() || wish.alt || (wish.ctrl && wish.shift)) return FileAction::None;
  const auto onVolume = [&](const std::wstring& path) {
    return sameIgnoringCase(volumeOf(path), volumeOf(folder));
  };
  const bool moves = wish.shift || (!wish.ctrl && std::all_of(from.begin(), from.end(), onVolume));
  if (moves && wish.moveAllowed) return FileAction::Move;
  if (moves && wish.shift) return FileAction::None;
  return wish.copyAllowed ? FileAction::Copy : FileAction::None;
}

TransferPlan planTransfer(FileAction action, const std::vector<std::wstring>& from,
                          const std::wstring& folder, bool locked) {
  TransferPlan plan;
  if (action != FileAction::Copy && action != FileAction::Move) return plan;
  if (locked) {
    plan.message = kLockedMessage;
    return plan;
  }
  FileOperation into{action, {}, folder};
  FileOperation beside{action, {}, folder, true};
  if (!from.empty()) plan.message = shellFault(folder);
  for (const std::wstring& path : from) {
    if (plan.message.empty()) plan.message = transferFault(path, folder);
    (samePath(parentOf(path), folder) ? beside : into).from.push_back(path);
  }
  if (!plan.message.empty()) return plan;
  if (!into.from.empty()) plan.operations.push_back(std::move(into));
  if (!beside.from.empty() && action == FileAction::Copy)
    plan.operations.push_back(std::move(beside));
  return plan;
}

std::wstring nameFault(std::wstring_view name) {
  constexpr std::wstring_view kReserved = L"\\/:*?\"<>|";
  if (name.empty()) return L"A file needs a name.";
  if (name.size() > kMostName) return L"The name is too long.";
  if (name.find_first_of(kReserved) != std::wstring_view::npos)
    return L"A name cannot contain any of these characters:\r\n\r\n\\ / : * ? \" < > |";
  if (std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; }))
    return L"A name cannot contain tabs and line breaks.";
  if (name.back() == L'.' || name.back() == L' ') return L"A name cannot end in a dot or a blank.";
  if (isDeviceName(name))
    return quoted(std::wstring(name)) + L" is the name of a device. Please choose another name.";
  return {};
}

RenamePlan planRename(const std::wstring& path, std::wstring_view newName, bool locked) {
  RenamePlan plan;
  while (!newName.empty() && newName.front() == L' ') newName.remove_prefix(1);
  while (!newName.empty() && newName.back() == L' ') newName.remove_suffix(1);
  // An empty box is a change of mind.
  if (newName.empty() || newName == nameOf(path)) return plan;
  plan.message = locked ? kLockedMessage : nameFault(newName);
  const std::wstring folder = parentOf(path);
  if (plan.message.empty() && folder.empty()) plan.message = L"This cannot be renamed.";
  if (plan.message.empty())
    plan.operation =
        FileOperation{FileAction::Rename, {path}, pathIn(folder, std::wstring(newName))};
  return plan;
}

RecyclePlan planRecycle(const std::vector<std::wstring>& paths, const Settings& settings) {
  RecyclePlan plan;
  if (paths.empty()) return plan;
  if (settings.locked) plan.message = kLockedMessage;
  for (const std::wstring& path : paths) {
    if (plan.message.empty()) plan.message = shellFault(path);
    if (plan.message.empty() && parentOf(path).empty())
      plan.message = L"A whole drive cannot be deleted: " + quoted(path);
  }
  if (!plan.message.empty()) return plan;
  plan.operation = FileOperation{FileAction::Recycle, paths};
  if (!settings.confirmDelete) return plan;
  std::vector<std::wstring> names;
  for (const std::wstring& path : paths) names.push_back(nameOf(path));
  plan.question = std::wstring(kDeleteSelectedQuestion) + L"\r\n\r\n" + namesForQuestion(names) +
                  L"\r\nTo the Recycle Bin: " + countOf(paths.size(), L"file") + L".";
  return plan;
}

std::wstring failureMessage(const FileOperationResult& result) {
  if (result.error.empty() || result.cancelled) return {};
  const auto about = [&](const wchar_t* one, const wchar_t* many) {
    const std::vector<std::wstring>& from = result.operation.from;
    return from.size() == 1 ? quoted(nameOf(from.front())) + one : std::wstring(many);
  };
  std::wstring what;
  switch (result.operation.action) {
    case FileAction::Copy:
      what = about(L" cannot be copied.", L"Not all files could be copied.");
      break;
    case FileAction::Move:
      what = about(L" cannot be moved.", L"Not all files could be moved.");
      break;
    case FileAction::Recycle:
      what = about(L" cannot be deleted.", L"Not all files could be deleted.");
      break;
    case FileAction::Rename:
      what = about(L" cannot be renamed.", L"");
      break;
    case FileAction::None:
      return {};
  }
  return what + L"\r\n\r\n" + result.error;
}

}  // namespace varnowick
