#include "ui/win/bar/foreground_return.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/win32/handles.h"

namespace varnowick {
namespace {

// A click on the tray icon brings the taskbar in front; nobody types there.
constexpr std::wstring_view kTaskbars[] = {L"Shell_TrayWnd", L"Shell_SecondaryTrayWnd",
                                           L"NotifyIconOverflowWindow",
                                           L"TopLevelWindowForOverflowXamlIsland"};

DWORD processOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

bool isTaskbar(HWND window) {
  wchar_t name[64] = {};
  const int length = GetClassNameW(window, name, 64);
  const std::wstring_view text(name, static_cast<std::size_t>(std::max(0, length)));
  return std::find(std::begin(kTaskbars), std::end(kTaskbars), text) != std::end(kTaskbars);
}

// Windows of other desktops and apps that sleep are there and cannot be seen.
bool isCloaked(HWND window) {
  using Attribute = HRESULT(WINAPI*)(HWND, DWORD, void*, DWORD);
  static const SystemLibrary dwm(L"dwmapi.dll");
  static const auto attribute = dwm.bind<Attribute>("DwmGetWindowAttribute");
  constexpr DWORD kCloaked = 14;  // DWMWA_CLOAKED
  DWORD cloaked = 0;
  return attribute != nullptr && SUCCEEDED(attribute(window, kCloaked, &cloaked, sizeof cloaked)) &&
         cloaked != 0;
}

// Without a window manager a window that leaves the screen may leave the keyboard to
// nobody, also after it has been given back.
bool isNobody(HWND front) { return front == nullptr || front == GetDesktopWindow(); }

bool takesKeys(HWND window) {
  return IsWindow(window) && IsWindowVisible(window) && !IsIconic(window);
}

// The window that the user was most likely at: the highest one of others that a
// switch between programs would offer.
HWND highestOfOthers(HWND from) {
  for (HWND w = GetWindow(from, GW_HWNDFIRST); w != nullptr; w = GetWindow(w, GW_HWNDNEXT)) {
    const LONG ex = GetWindowLongW(w, GWL_EXSTYLE);
    constexpr LONG kNoSwitching = WS_EX_TOOLWINDOW | 0x08000000;  // WS_EX_NOACTIVATE
    if ((ex & kNoSwitching) == 0 && takesKeys(w) && IsWindowEnabled(w) &&
        processOf(w) != GetCurrentProcessId() && !isCloaked(w))
      return w;
  }
  return nullptr;
}

}  // namespace

void ForegroundReturn::look() {
  const HWND front = GetForegroundWindow();
  if (isNobody(front) || isTaskbar(front)) return;
  const DWORD process = processOf(front);
  ours_ = process == GetCurrentProcessId();
  if (ours_) return;
  former_ = front;
  formerProcess_ = process;
}

HWND ForegroundReturn::receiver() const {
  if (!takesKeys(former_) || processOf(former_) != formerProcess_) return highestOfOthers(bar_);
  // It may have a dialog of its own open.
  const HWND popup = GetLastActivePopup(former_);
  return popup != nullptr && takesKeys(popup) ? popup : former_;
}

void ForegroundReturn::giveBack() {
  const bool starting = starting_;
  starting_ = false;
  const HWND front = GetForegroundWindow();
  if (front != bar_ && !(ours_ && isNobody(front))) return;
  if (starting) AllowSetForegroundWindow(ASFW_ANY);
  if (const HWND to = receiver(); to != nullptr) SetForegroundWindow(to);
}

}  // namespace varnowick
