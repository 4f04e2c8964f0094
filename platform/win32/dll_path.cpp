#include "platform/win32/dll_path.h"

#include <windows.h>

namespace varnowick {
namespace {

using SetDllDirectoryFunction = BOOL(WINAPI*)(LPCWSTR);

// Of the thread that starts programs; starts nest where one lets messages through.
int g_starts = 0;
bool g_inherited = false;  // the setting that started programs inherit is in force

template <class Function>
Function ofKernel(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

bool leaveOutCurrentFolder(bool out) {
  // Windows XP SP1 and later; before that the current folder cannot be left out.
  static const auto setDllDirectory = ofKernel<SetDllDirectoryFunction>("SetDllDirectoryW");
  return setDllDirectory != nullptr && setDllDirectory(out ? L"" : nullptr);
}

}  // namespace

void keepLibrariesToTheSystem() {
  // Not the program's folder, which whoever may write there could fill.
  constexpr DWORD kSystemFolder = 0x00000800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  const auto setDefault = ofKernel<BOOL(WINAPI*)(DWORD)>("SetDefaultDllDirectories");
  if (setDefault != nullptr && setDefault(kSystemFolder)) return;
  g_inherited = leaveOutCurrentFolder(true);
}

OwnDllPathForChildren::OwnDllPathForChildren() {
  if (g_inherited && g_starts++ == 0) leaveOutCurrentFolder(false);
}

OwnDllPathForChildren::~OwnDllPathForChildren() {
  if (g_inherited && --g_starts == 0) leaveOutCurrentFolder(true);
}

}  // namespace varnowick
