#include "ui/win/full_screen.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace varnowick {
namespace {

// Windows of the shell that cover monitors: the desktop and its wallpaper, the
// taskbars, the task switchers of several systems.
constexpr std::wstring_view kShellClasses[] = {L"Progman",
                                               L"WorkerW",
                                               L"Shell_TrayWnd",
                                               L"Shell_SecondaryTrayWnd",
                                               L"TaskSwitcherWnd",
                                               L"MultitaskingViewFrame",
                                               L"XamlExplorerHostIslandWindow",
                                               L"ForegroundStaging",
                                               L"Windows.UI.Core.CoreWindow"};

bool isShell(HWND window) {
  if (window == GetShellWindow() || window == GetDesktopWindow()) return true;
  wchar_t name[64] = {};
  const int length = GetClassNameW(window, name, 64);
  const std::wstring_view text(name, static_cast<std::size_t>(std::max(0, length)));
  return std::find(std::begin(kShellClasses), std::end(kShellClasses), text) !=
         std::end(kShellClasses);
}

}  // namespace

ForegroundState foregroundState(HWND window) {
  ForegroundState state;
  RECT r{};
  if (window == nullptr || !GetWindowRect(window, &r)) return state;
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  state.exists = true;
  state.visible = IsWindowVisible(window) && !IsIconic(window);
  state.shell = isShell(window);
  state.ours = process == GetCurrentProcessId();
  state.captioned = (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
  state.maximised = IsZoomed(window) != FALSE;
  state.rect = {{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
  return state;
}

bool fullScreenProgramOn(const PixelRect& monitorBounds) {
  return fullScreenOn(foregroundState(GetForegroundWindow()), monitorBounds);
}

}  // namespace varnowick
