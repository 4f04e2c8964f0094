#include "ui/win/toolkit/full_screen.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/win32/handles.h"

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

// Windows Vista and later know; before, such a window counts as an ordinary one.
bool systemSaysFull() {
  using Query = HRESULT(WINAPI*)(int*);
  static const SystemLibrary shell(L"shell32.dll");
  static const auto query = shell.bind<Query>("SHQueryUserNotificationState");
  enum : int { kBusy = 2, kDirect3dFullScreen = 3, kPresentation = 4 };
  int state = 0;
  return query != nullptr && SUCCEEDED(query(&state)) && state >= kBusy && state <= kPresentation;
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
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  state.captioned = (style & WS_CAPTION) == WS_CAPTION;
  state.sizable = (style & (WS_THICKFRAME | WS_MAXIMIZEBOX)) != 0;
  state.topmost = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  state.maximised = IsZoomed(window) != FALSE;
  state.rect = {{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
  RECT client{};
  POINT origin{};
  if (GetClientRect(window, &client) && ClientToScreen(window, &origin))
    state.client = {{origin.x}, {origin.y}, {client.right}, {client.bottom}};
  return state;
}

HWND fullScreenProgramOn(const MonitorArea& monitor) {
  const HWND front = GetForegroundWindow();
  const FullScreen answer = fullScreenOn(foregroundState(front), monitor);
  const bool full =
      answer == FullScreen::Yes || (answer == FullScreen::AskSystem && systemSaysFull());
  return full ? front : nullptr;
}

HWND fullScreenProgramAt(const PixelRect& place, Monitors& monitors) {
  const Monitor* best = nullptr;
  long long most = 0;
  const std::vector<Monitor> all = monitors.all();
  for (const Monitor& m : all) {
    const PixelRect shown = m.bounds.intersect(place);
    const long long area = static_cast<long long>(shown.width.value) * shown.height.value;
    if (best != nullptr && area <= most) continue;
    best = &m;
    most = area;
  }
  return best == nullptr ? nullptr : fullScreenProgramOn({best->bounds, best->work});
}

void standBehind(HWND window, HWND program) {
  const bool topmost = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  // A window that is put after one that is not topmost is topmost no more.
  if (program != nullptr ? !topmost : topmost) return;
  SetWindowPos(window, program != nullptr ? program : HWND_TOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

}  // namespace varnowick
