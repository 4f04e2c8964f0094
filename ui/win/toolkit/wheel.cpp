#include "ui/win/toolkit/wheel.h"

#include <windowsx.h>

namespace varnowick {

void routeWheel(MSG& message) {
  if (message.message != WM_MOUSEWHEEL || GetCapture() != nullptr) return;
  const HWND under = WindowFromPoint({GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)});
  if (under != nullptr && GetWindowThreadProcessId(under, nullptr) == GetCurrentThreadId())
    message.hwnd = under;
}

}  // namespace varnowick
