#include "platform/win32/win32_system.h"

#include <windows.h>
// These rely on it.
#include <shlobj.h>

#include "platform/win32/handles.h"

namespace varnowick {

namespace {

std::wstring withoutTrailingSlash(std::wstring folder) {
  while (folder.size() > 3 && folder.back() == L'\\') folder.pop_back();
  return folder;
}

}  // namespace

int Win32System::majorVersion() {
  // GetVersionEx tells newer systems' numbers only to programs that claim to know
  // them; the other function always tells the truth, but came later.
  OSVERSIONINFOW info{};
  info.dwOSVersionInfoSize = sizeof info;
  const SystemLibrary ntdll(L"ntdll.dll");
  LONG(WINAPI * rtlGetVersion)(OSVERSIONINFOW*) = nullptr;
  if (ntdll.bind("RtlGetVersion", rtlGetVersion) && rtlGetVersion(&info) == 0) {
    return static_cast<int>(info.dwMajorVersion);
  }
  if (!GetVersionExW(&info)) return 0;
  return static_cast<int>(info.dwMajorVersion);
}

std::wstring Win32System::programFolder() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      break;
    }
    if (path.size() > 0x8000) return {};
    path.resize(path.size() * 2);
  }
  const std::size_t slash = path.find_last_of(L'\\');
  return slash == std::wstring::npos ? std::wstring()
                                     : withoutTrailingSlash(path.substr(0, slash + 1));
}

std::wstring Win32System::applicationDataFolder() {
  wchar_t folder[MAX_PATH + 1] = {};
  if (SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder) == S_OK ||
      SHGetSpecialFolderPathW(nullptr, folder, CSIDL_APPDATA, TRUE)) {
    return withoutTrailingSlash(folder);
  }
  return {};
}

std::wstring Win32System::systemFolder() {
  wchar_t folder[MAX_PATH + 1] = {};
  const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
  return length == 0 || length > MAX_PATH ? std::wstring() : withoutTrailingSlash({folder, length});
}

std::wstring expandEnvironment(const std::wstring& text) {
  const DWORD length = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
  if (length == 0) return text;
  std::wstring expanded(length, L'\0');
  ExpandEnvironmentStringsW(text.c_str(), expanded.data(), length);
  expanded.resize(length - 1);
  return expanded;
}

}  // namespace varnowick
