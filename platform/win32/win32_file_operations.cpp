#include "platform/win32/win32_file_operations.h"

#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/win32_error.h"
#include "platform/win32/win32_files.h"

namespace varnowick {
namespace {

// Newer than some headers: asks before something is deleted for good because the
// bin cannot take it.
constexpr FILEOP_FLAGS kWantNukeWarning = 0x4000;
// What the shell reads of a path; it would cut a longer one.
constexpr std::size_t kMostShellPath = MAX_PATH - 1;

std::wstring shellErrorText(int code) {
  // Codes of the shell's own, some with numbers of older system errors.
  constexpr int kFirstOwn = 0x71, kLastOwn = 0x88;
  switch (code) {
    case 0x74:
      return L"A whole drive cannot be handled.";
    case 0x78:
      return L"Access is denied.";
    case 0x79:
    case 0x81:
      return L"The path is too long.";
    case 0x7C:
    case 0x402:
      return L"The file is not there any more.";
    case 0x7D:
      return L"A folder cannot be copied or moved into itself.";
    case 0x7E:
    case 0x80:
      return L"There is a file or folder of that name already.";
    default:
      break;
  }
  if (code >= kFirstOwn && code <= kLastOwn) return L"The files cannot be handled.";
  return systemErrorText(static_cast<DWORD>(code));
}

// The shell ends its lists at an empty name, and takes wildcards for what they mean.
bool mayGoToShell(const std::wstring& path) {
  return path.size() >= 3 && path.size() <= kMostShellPath &&
         path.find_first_of(std::wstring_view(L"*?\"<>|\0", 7)) == std::wstring::npos &&
         (path[1] == L':' || (path[0] == L'\\' && path[1] == L'\\'));
}

bool isFolder(const std::wstring& path) {
  return hasFolderAttribute(GetFileAttributesW(path.c_str()));
}

FileOperationResult rename(const FileOperation& operation) {
  FileOperationResult result{operation, false, {}};
  const std::wstring from = pathForSystem(operation.from.front());
  const std::wstring to = pathForSystem(operation.to);
  // Without the flag to replace: another file of that name stays.
  if (!MoveFileExW(from.c_str(), to.c_str(), 0)) result.error = systemErrorText(GetLastError());
  return result;
}

UINT functionOf(FileAction action) {
  switch (action) {
    case FileAction::Copy:
      return FO_COPY;
    case FileAction::Move:
      return FO_MOVE;
    default:
      return FO_DELETE;
  }
}

// The window that owns what the shell shows: unseen, in the middle of the screen
// where the program's window is, and in front like that one.
class OwnerForShell {
 public:
  explicit OwnerForShell(HWND beside) {
    MONITORINFO about{};
    about.cbSize = sizeof about;
    const HMONITOR monitor = MonitorFromWindow(beside, MONITOR_DEFAULTTOPRIMARY);
    if (!GetMonitorInfoW(monitor, &about)) about.rcWork = {0, 0, 640, 480};
    const RECT& work = about.rcWork;
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"STATIC", L"Varnowick", WS_POPUP,
                              (work.left + work.right) / 2, (work.top + work.bottom) / 2, 0, 0,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  OwnerForShell(const OwnerForShell&) = delete;
  OwnerForShell& operator=(const OwnerForShell&) = delete;
  ~OwnerForShell() {
    if (window_ != nullptr) DestroyWindow(window_);
  }
  HWND get() const { return window_; }

 private:
  HWND window_ = nullptr;
};

// Whether the shell has opened it in the course of an operation. What it asks may belong
// to its progress window.
bool belongsTo(HWND window, const std::vector<HWND>& shellOwners) {
  for (HWND owner = window; owner != nullptr; owner = GetWindow(owner, GW_OWNER))
    if (std::find(shellOwners.begin(), shellOwners.end(), owner) != shellOwners.end()) return true;
  return false;
}

struct QuestionSearch {
  std::vector<HWND> shellOwners;
  HWND found = nullptr;
};

// A dialog that waits for an answer has disabled the window that it belongs to; a
// window that only shows progress has not.
BOOL CALLBACK lookForQuestion(HWND window, LPARAM context) {
  auto& search = *reinterpret_cast<QuestionSearch*>(context);
  const HWND owner = GetWindow(window, GW_OWNER);
  if (owner == nullptr || IsWindowEnabled(owner) || !IsWindowEnabled(window) ||
      !IsWindowVisible(window) || !belongsTo(owner, search.shellOwners))
    return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

FileOperationResult carryOut(const FileOperation& operation, HWND window) {
  FileOperationResult result{operation, false, {}};
  if (operation.action == FileAction::None || operation.from.empty()) return result;
  if (operation.action == FileAction::Rename) return rename(operation);

  const bool deletes = operation.action == FileAction::Recycle;
  bool allowed = deletes || mayGoToShell(operation.to);
  for (const std::wstring& path : operation.from) allowed = allowed && mayGoToShell(path);
  if (!allowed) result.error = systemErrorText(ERROR_INVALID_NAME);
  // The shell would make a folder that has gone meanwhile, or a file of its name.
  else if (!deletes && !isFolder(operation.to))
    result.error = systemErrorText(ERROR_PATH_NOT_FOUND);
  if (!result.error.empty()) return result;
  std::wstring from;
  for (const std::wstring& path : operation.from) {
    // What has gone meanwhile must not keep the others from being handled.
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
      result.error = systemErrorText(GetLastError());
    else
      from += path + L'\0';
  }
  if (from.empty()) return result;
  const std::wstring to = operation.to + L'\0';

  SHFILEOPSTRUCTW shell{};
  shell.hwnd = window;
  shell.wFunc = functionOf(operation.action);
  shell.pFrom = from.c_str();
  shell.pTo = deletes ? nullptr : to.c_str();
  int flags = FOF_NOCONFIRMMKDIR;
  // The program has asked already, in its own words.
  if (deletes) flags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | kWantNukeWarning;
  if (!deletes) flags |= FOF_ALLOWUNDO;
  if (operation.renameOnCollision) flags |= FOF_RENAMEONCOLLISION;
  shell.fFlags = static_cast<FILEOP_FLAGS>(flags);
  const int code = SHFileOperationW(&shell);
  result.cancelled = shell.fAnyOperationsAborted || code == ERROR_CANCELLED || code == 0x75;
  if (code != 0 && !result.cancelled) result.error = shellErrorText(code);
  return result;
}

// What the workers and the object both hold.
struct Win32FileOperations::Shared {
  CriticalSection lock;  // around everything below
  int running = 0;
  std::vector<HWND> shellOwners;  // of what the shell shows for each operation

  void count(int change) {
    const Lock locked(lock);
    running += change;
  }
};

struct Win32FileOperations::ShellOwnerEntry {
  ShellOwnerEntry(Shared& about, HWND window) : shared(about), owner(window) {
    const Lock locked(shared.lock);
    shared.shellOwners.push_back(owner);
  }
  ~ShellOwnerEntry() {
    const Lock locked(shared.lock);
    std::erase(shared.shellOwners, owner);
  }
  Shared& shared;
  HWND owner;
};

Win32FileOperations::Win32FileOperations(Doorbell& doorbell, HWND beside,
                                         std::function<void()> news)
    : beside_(beside), shared_(std::make_shared<Shared>()), results_(doorbell, std::move(news)) {}

int Win32FileOperations::start(FileOperation operation) {
  if (operation.action == FileAction::None || operation.from.empty()) return 0;
  const int number = ++lastNumber_;
  shared_->count(1);
  const auto end = [shared = shared_, ended = results_.sender(),
                    number](FileOperationResult result) {
    result.number = number;
    shared->count(-1);
    ended.send(std::move(result));
  };
  // It is not stopped: the shell ends what it has begun.
  const Worker worker =
      Worker::start([shared = shared_, operation, beside = beside_, end](const Stop&) {
        FileOperationResult result{operation, false, L"Not enough memory."};
        try {
          const ComApartment com;
          const OwnerForShell window(beside);
          const ShellOwnerEntry entry(*shared, window.get());
          result = carryOut(operation, window.get());
        } catch (const std::exception&) {
        }
        end(std::move(result));
      });
  if (!worker) end({operation, false, systemErrorText(ERROR_NOT_ENOUGH_MEMORY)});
  return number;
}

std::vector<FileOperationResult> Win32FileOperations::take() { return results_.take(); }

bool Win32FileOperations::busy() {
  const Lock locked(shared_->lock);
  return shared_->running > 0;
}

HWND Win32FileOperations::question() const {
  QuestionSearch search;
  {
    // Not held while windows are asked: their threads may want it.
    const Lock locked(shared_->lock);
    search.shellOwners = shared_->shellOwners;
  }
  if (!search.shellOwners.empty()) EnumWindows(&lookForQuestion, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace varnowick
