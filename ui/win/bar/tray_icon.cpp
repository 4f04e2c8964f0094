#include "ui/win/bar/tray_icon.h"

#include <shellapi.h>

#include <cwchar>

#include "ui/win/toolkit/resource.h"

namespace varnowick {
namespace {

constexpr UINT_PTR kBalloonTimer = 1;
// Shells that do not tell when a balloon has gone: after this it has.
constexpr UINT kLongestBalloon = 30000;  // ms
constexpr UINT kBalloonTime = 10000;     // ms

UINT taskbarCreated() {
  static const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
  return message;
}

// A program that runs with more rights than the taskbar does not hear it unless
// its window says so (Windows 7 and later). Vista can only open the whole process
// to a message.
void admitTaskbarMessages(HWND window) {
  constexpr DWORD kAllow = 1;
  const SystemLibrary user(L"user32.dll");
  using AllowWindow = BOOL(WINAPI*)(HWND, UINT, DWORD, void*);
  if (const auto allow = user.bind<AllowWindow>("ChangeWindowMessageFilterEx"); allow != nullptr) {
    allow(window, taskbarCreated(), kAllow, nullptr);
    allow(window, TrayIcon::kMessage, kAllow, nullptr);
    return;
  }
  using AllowProcess = BOOL(WINAPI*)(UINT, DWORD);
  if (const auto allow = user.bind<AllowProcess>("ChangeWindowMessageFilter"); allow != nullptr) {
    allow(taskbarCreated(), kAllow);
    allow(TrayIcon::kMessage, kAllow);
  }
}

template <std::size_t N>
void copyText(wchar_t (&into)[N], const std::wstring& text) {
  std::size_t length = text.copy(into, N - 1);
  // Half a character pair must not be left at the end.
  if (length > 0 && IS_HIGH_SURROGATE(into[length - 1])) --length;
  into[length] = L'\0';
}

NOTIFYICONDATAW dataFor(HWND window) {
  NOTIFYICONDATAW data{};
  // The full structure is newer than Windows 2000, which would reject it.
  data.cbSize = NOTIFYICONDATAW_V2_SIZE;
  data.hWnd = window;
  data.uID = TrayIcon::kIconId;
  return data;
}

// Windows 7 and later know where an icon is; elsewhere the notification area has
// to do.
bool iconRect(HWND window, RECT& rect) {
  struct Identifier {
    DWORD cbSize;
    HWND hWnd;
    UINT uID;
    GUID guidItem;
  };
  using GetRect = HRESULT(WINAPI*)(const Identifier*, RECT*);
  const SystemLibrary shell(L"shell32.dll");
  if (const auto getRect = shell.bind<GetRect>("Shell_NotifyIconGetRect"); getRect != nullptr) {
    const Identifier id{sizeof id, window, TrayIcon::kIconId, {}};
    if (SUCCEEDED(getRect(&id, &rect))) return true;
  }
  const HWND taskbar = FindWindowW(L"Shell_TrayWnd", nullptr);
  const HWND area = FindWindowExW(taskbar, nullptr, L"TrayNotifyWnd", nullptr);
  return area != nullptr && GetWindowRect(area, &rect);
}

}  // namespace

TrayIcon::~TrayIcon() { destroy(); }

void TrayIcon::show(bool on) {
  wanted_ = on;
  update();
}

void TrayIcon::setTooltip(const std::wstring& text) {
  tooltip_ = text;
  if (!present_) return;
  NOTIFYICONDATAW data = dataFor(handle());
  data.uFlags = NIF_TIP;
  copyText(data.szTip, tooltip_);
  Shell_NotifyIconW(NIM_MODIFY, &data);
}

bool TrayIcon::balloon(const std::wstring& title, const std::wstring& text, bool warning) {
  if (text.empty()) return false;  // an empty text would take a balloon away
  balloonShown_ = true;
  update();
  NOTIFYICONDATAW data = dataFor(handle());
  data.uFlags = NIF_INFO;
  copyText(data.szInfoTitle, title);
  copyText(data.szInfo, text);
  data.uTimeout = kBalloonTime;
  data.dwInfoFlags = warning ? NIIF_WARNING : NIIF_INFO;
  if (!present_ || !Shell_NotifyIconW(NIM_MODIFY, &data)) {
    balloonGone();
    return false;
  }
  SetTimer(handle(), kBalloonTimer, kLongestBalloon, nullptr);
  return true;
}

void TrayIcon::balloonGone() {
  balloonShown_ = false;
  KillTimer(handle(), kBalloonTimer);
  update();
}

// Not a message-only window: those do not hear that the taskbar has been created.
bool TrayIcon::ready() {
  if (handle() != nullptr) return true;
  Create options;
  options.className = L"VarnowickTray";
  options.exStyle = WS_EX_TOOLWINDOW;
  if (!create(options)) return false;
  admitTaskbarMessages(handle());
  icon_.reset(static_cast<HICON>(
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VARNOWICK), IMAGE_ICON,
                 GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), 0)));
  return true;
}

void TrayIcon::update() {
  const bool on = wanted_ || balloonShown_;
  if (on == present_) return;
  if (on)
    add();
  else
    remove();
}

bool TrayIcon::add() {
  if (!ready()) return false;
  NOTIFYICONDATAW data = dataFor(handle());
  data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  data.uCallbackMessage = kMessage;
  data.hIcon = icon_ ? icon_.get() : LoadIconW(nullptr, IDI_APPLICATION);
  copyText(data.szTip, tooltip_);
  // A busy shell may say no although it has taken the icon.
  present_ = Shell_NotifyIconW(NIM_ADD, &data) || Shell_NotifyIconW(NIM_MODIFY, &data);
  if (!present_) return false;
  NOTIFYICONDATAW version = dataFor(handle());
  version.uVersion = NOTIFYICON_VERSION;
  events_.setVersion3(Shell_NotifyIconW(NIM_SETVERSION, &version) != FALSE);
  return true;
}

void TrayIcon::remove() {
  NOTIFYICONDATAW data = dataFor(handle());
  Shell_NotifyIconW(NIM_DELETE, &data);
  present_ = false;
}

POINT TrayIcon::iconPoint() const {
  RECT r{};
  POINT at{};
  if (iconRect(handle(), r))
    at = {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
  else
    GetCursorPos(&at);
  return at;
}

void TrayIcon::onIcon(UINT event) {
  switch (events_.decide(event, static_cast<unsigned>(GetMessageTime()))) {
    case TrayAction::Click:
      if (callbacks_.clicked) callbacks_.clicked();
      return;
    case TrayAction::MenuAtCursor: {
      POINT at{};
      GetCursorPos(&at);
      if (callbacks_.menu) callbacks_.menu(at);
      return;
    }
    case TrayAction::MenuAtIcon:
      if (callbacks_.menu) callbacks_.menu(iconPoint());
      return;
    case TrayAction::BalloonClick:
      balloonGone();
      if (callbacks_.balloonClicked) callbacks_.balloonClicked();
      return;
    case TrayAction::BalloonGone:
      return balloonGone();
    case TrayAction::None:
      return;
  }
}

LRESULT TrayIcon::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMessage:
      onIcon(static_cast<UINT>(lParam));
      return 0;
    case WM_TIMER:
      balloonGone();
      return 0;
    case WM_DESTROY:
      if (present_) remove();
      return 0;
    default:
      if (message == taskbarCreated()) {
        present_ = false;  // the new taskbar knows nothing of it
        update();
        return 0;
      }
      return Window::handleMessage(message, wParam, lParam);
  }
}

}  // namespace varnowick
