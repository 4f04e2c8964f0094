#include "ui/win/toolkit/balloon_tooltip.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>

#include "platform/win32/common_controls.h"

namespace varnowick {
namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kUsualDelay = 400;     // ms
constexpr UINT kWatchInterval = 200;  // ms
constexpr int kTolerance = 3;         // pixels; a hand is never quite still
constexpr int kWidth = 340;           // pixels at 96 dots per inch
constexpr UINT_PTR kTool = 1;

UINT hoverDelay() {
  UINT delay = kUsualDelay;
  if (!SystemParametersInfoW(SPI_GETMOUSEHOVERTIME, 0, &delay, 0)) return kUsualDelay;
  return std::clamp(delay, 50U, 5000U);
}

bool atRest(POINT a, POINT b) {
  return std::abs(a.x - b.x) <= kTolerance && std::abs(a.y - b.y) <= kTolerance;
}

TTTOOLINFOW toolOf(HWND window) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = window;
  tool.uId = kTool;
  return tool;
}

}  // namespace

BalloonTooltip::~BalloonTooltip() {
  if (tooltip_ != nullptr && IsWindow(tooltip_)) DestroyWindow(tooltip_);
  destroy();
}

bool BalloonTooltip::makeTimer() {
  if (handle() != nullptr) return true;
  Create options;
  options.className = L"VarnowickTooltipTimer";
  options.owner = HWND_MESSAGE;
  return create(options);
}

bool BalloonTooltip::makeTooltip() {
  if (tooltip_ != nullptr && IsWindow(tooltip_)) return true;
  CommonControls::get();
  tooltip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                             WS_POPUP | TTS_BALLOON | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0,
                             owner_, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (tooltip_ == nullptr) return false;
  TTTOOLINFOW tool = toolOf(handle());
  wchar_t none[] = L"";
  tool.lpszText = none;
  SendMessageW(tooltip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  const HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
  ReleaseDC(nullptr, dc);
  // Any width makes the tooltip break lines at all.
  SendMessageW(tooltip_, TTM_SETMAXTIPWIDTH, 0, MulDiv(kWidth, dpi, 96));
  return true;
}

void BalloonTooltip::hover(NodeId node) {
  POINT cursor{};
  GetCursorPos(&cursor);
  if (node == node_ && atRest(cursor, rest_)) return;
  take();
  node_ = node;
  rest_ = cursor;
  if (node.none())
    stopWaiting();
  else if (makeTimer())
    await(hoverDelay());
}

void BalloonTooltip::hide() {
  take();
  stopWaiting();
  GetCursorPos(&rest_);
}

void BalloonTooltip::take() {
  if (!shown_) return;
  shown_ = false;
  TTTOOLINFOW tool = toolOf(handle());
  SendMessageW(tooltip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void BalloonTooltip::stopWaiting() {
  if (handle() != nullptr) KillTimer(handle(), kTimer);
}

void BalloonTooltip::await(UINT milliseconds) { SetTimer(handle(), kTimer, milliseconds, nullptr); }

void BalloonTooltip::show() {
  Content content = content_(node_);
  std::wstring& text = content.text.text;
  if (text.empty() || content.screen.empty() || !makeTooltip()) return stopWaiting();
  TTTOOLINFOW tool = toolOf(handle());
  // Not as the control's own title, for which not every system makes room.
  if (!content.text.title.empty()) text = content.text.title + L"\r\n" + text;
  tool.lpszText = text.data();
  SendMessageW(tooltip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  // The stem points to the middle of what is wide, and from below.
  const PixelRect& r = content.screen;
  const int x = std::clamp(static_cast<int>(rest_.x), r.left.value, r.right().value - 1);
  const int y = r.bottom().value - std::min(r.height.value / 4, 8);
  SendMessageW(tooltip_, TTM_TRACKPOSITION, 0, MAKELPARAM(x, y));
  SendMessageW(tooltip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  shown_ = true;
  // The message that the mouse has left can be late, or never come.
  await(kWatchInterval);
}

LRESULT BalloonTooltip::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_TIMER) return Window::handleMessage(message, wParam, lParam);
  POINT cursor{};
  GetCursorPos(&cursor);
  const bool resting = atRest(cursor, rest_);
  if (shown_ && !resting) hide();
  if (!shown_ && !resting) stopWaiting();
  if (!shown_ && resting) show();
  return 0;
}

}  // namespace varnowick
