#include "ui/win/dialogs/browse.h"

#include <commdlg.h>
#include <shlobj.h>

#include <array>
#include <vector>

#include "platform/win32/common_controls.h"
#include "platform/win32/handles.h"
#include "platform/win32/win32_system.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::size_t kMostPath = 32'768;

// Found when first needed: loading the library with the program would delay every
// start.
struct CommonDialogs {
  decltype(&::GetOpenFileNameW) getOpenFileName = nullptr;  // nullptr where it is missing
  decltype(&::ChooseColorW) chooseColor = nullptr;

  static const CommonDialogs& get() {
    CommonControls::get();
    // Never freed: what the user has installed into these dialogs may still run.
    static const CommonDialogs* const functions = new CommonDialogs;
    return *functions;
  }

 private:
  CommonDialogs() : library_(L"comdlg32.dll") {
    library_.bind("GetOpenFileNameW", getOpenFileName);
    library_.bind("ChooseColorW", chooseColor);
  }
  SystemLibrary library_;
};

std::wstring currentFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return folder;
}

// The dialog for files changes the current folder as the user walks, whatever it
// has been told.
class CurrentFolderGuard {
 public:
  CurrentFolderGuard() : folder_(currentFolder()) {}
  CurrentFolderGuard(const CurrentFolderGuard&) = delete;
  CurrentFolderGuard& operator=(const CurrentFolderGuard&) = delete;
  ~CurrentFolderGuard() {
    if (!folder_.empty()) SetCurrentDirectoryW(folder_.c_str());
  }

 private:
  std::wstring folder_;
};

bool isFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The folder to begin in, without asking a server for it; empty for none.
std::wstring startFolder(const std::wstring& start) {
  const std::wstring path = ResolveRelativePath(start, Win32System().programFolder());
  if (path.size() < 3 || path[1] != L':' || path[2] != L'\\') return {};
  if (isFolder(path)) return path;
  std::wstring folder = FolderOfPath(path);
  return isFolder(folder) ? folder : std::wstring();
}

int CALLBACK selectStart(HWND dialog, UINT message, LPARAM, LPARAM folder) {
  const auto* text = reinterpret_cast<const wchar_t*>(folder);
  if (message == BFFM_INITIALIZED && *text != 0)
    SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

}  // namespace

std::optional<std::wstring> browseForFile(HWND owner, const FileChoice& choice,
                                          const std::wstring& start) {
  const CurrentFolderGuard guard;
  const std::wstring folder = startFolder(start);
  std::vector<wchar_t> path(kMostPath, L'\0');
  OPENFILENAMEW open{};
  open.lStructSize = sizeof open;
  open.hwndOwner = owner;
  open.lpstrFilter = choice.filter;
  open.lpstrFile = path.data();
  open.nMaxFile = static_cast<DWORD>(path.size());
  open.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  open.lpstrTitle = choice.title;
  open.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY |
               OFN_NOCHANGEDIR | OFN_NODEREFERENCELINKS | OFN_DONTADDTORECENT;
  const auto show = CommonDialogs::get().getOpenFileName;
  if (show == nullptr || !show(&open) || path[0] == 0) return std::nullopt;
  return std::wstring(path.data());
}

std::optional<std::wstring> browseForFolder(HWND owner, const wchar_t* title,
                                            const std::wstring& start) {
  const ComApartment apartment;  // the newer style asks for one
  const CurrentFolderGuard guard;
  const std::wstring folder = startFolder(start);
  std::array<wchar_t, MAX_PATH + 1> path{};
  BROWSEINFOW browse{};
  browse.hwndOwner = owner;
  browse.pszDisplayName = path.data();
  browse.lpszTitle = title;
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  browse.lpfn = &selectStart;
  browse.lParam = reinterpret_cast<LPARAM>(folder.c_str());
  CommonControls::get();
  const LPITEMIDLIST chosen = SHBrowseForFolderW(&browse);
  if (chosen == nullptr) return std::nullopt;
  path[0] = 0;
  const bool found = SHGetPathFromIDListW(chosen, path.data()) && path[0] != 0;
  CoTaskMemFree(chosen);
  return found ? std::optional(std::wstring(path.data())) : std::nullopt;
}

std::optional<COLORREF> chooseColour(HWND owner, COLORREF start) {
  // The user's own colours last as long as the program runs.
  static std::array<COLORREF, 16> own = [] {
    std::array<COLORREF, 16> white{};
    white.fill(RGB(255, 255, 255));
    return white;
  }();
  CHOOSECOLORW choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = owner;
  choose.rgbResult = start;
  choose.lpCustColors = own.data();
  choose.Flags = CC_RGBINIT | CC_ANYCOLOR | CC_FULLOPEN;
  const auto show = CommonDialogs::get().chooseColor;
  if (show == nullptr || !show(&choose)) return std::nullopt;
  return choose.rgbResult;
}

}  // namespace varnowick
