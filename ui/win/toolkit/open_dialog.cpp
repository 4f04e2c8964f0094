#include "ui/win/toolkit/open_dialog.h"

#include <cwchar>

namespace varnowick {
namespace {

constexpr const wchar_t* kDialogClass = L"#32770";

// Windows come from the top of the screen downwards; one that waits for another
// dialog is disabled.
BOOL CALLBACK lookAt(HWND window, LPARAM found) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  if (std::wcscmp(name, kDialogClass) != 0) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

HWND waitingDialog() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &lookAt, reinterpret_cast<LPARAM>(&found));
  if (found != nullptr) return found;
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (!GetGUIThreadInfo(GetCurrentThreadId(), &info)) return nullptr;
  return (info.flags & GUI_INMENUMODE) != 0 ? info.hwndMenuOwner : nullptr;
}

}  // namespace varnowick
