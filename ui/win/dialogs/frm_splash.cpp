#include "ui/win/dialogs/frm_splash.h"

#include "platform/msg_box.h"
#include "ui/win/toolkit/resource.h"

namespace varnowick {
namespace {

constexpr int kWidth = 360;  // pixels at 96 dots per inch
constexpr int kHeight = 120;
constexpr DWORD kDelay = 200;  // ms

int scaled(int pixels) {
  const HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSY);
  ReleaseDC(nullptr, dc);
  return MulDiv(pixels, dpi, 96);
}

void drawLine(HDC dc, const std::wstring& text, RECT rect, int height, int weight,
              COLORREF colour) {
  const HFONT font = CreateFontW(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                 OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                 DEFAULT_PITCH | FF_SWISS, L"MS Shell Dlg 2");
  const HGDIOBJ before = SelectObject(dc, font);
  SetTextColor(dc, colour);
  DrawTextW(dc, text.c_str(), -1, &rect, DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  SelectObject(dc, before);
  DeleteObject(font);
}

}  // namespace

bool frmSplash::makeWindow() {
  const int width = scaled(kWidth);
  const int height = scaled(kHeight);
  const int left = (GetSystemMetrics(SM_CXSCREEN) - width) / 2;
  const int top = (GetSystemMetrics(SM_CYSCREEN) - height) / 2;
  Create options;
  options.className = L"VarnowickSplash";
  options.title = kProgramTitle;
  options.exStyle = WS_EX_TOOLWINDOW;
  options.rect = {left, top, left + width, top + height};
  return create(options);
}

void frmSplash::progress(const std::wstring& text) {
  text_ = text;
  if (GetTickCount() - openedAt_ < kDelay) return;
  if (handle() == nullptr && !makeWindow()) return;
  ShowWindow(handle(), SW_SHOWNA);
  InvalidateRect(handle(), nullptr, FALSE);
  UpdateWindow(handle());
}

LRESULT frmSplash::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      PAINTSTRUCT ps{};
      paint(BeginPaint(handle(), &ps));
      EndPaint(handle(), &ps);
      return 0;
    }
    default:
      return Window::handleMessage(message, wParam, lParam);
  }
}

void frmSplash::paint(HDC dc) {
  RECT client{};
  GetClientRect(handle(), &client);
  const HBRUSH back = CreateSolidBrush(RGB(34, 42, 54));
  FillRect(dc, &client, back);
  DeleteObject(back);
  const HBRUSH border = CreateSolidBrush(RGB(79, 163, 224));
  FrameRect(dc, &client, border);
  DeleteObject(border);
  const int iconSize = scaled(48);
  const int margin = scaled(24);
  const auto icon =
      static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VARNOWICK),
                                    IMAGE_ICON, iconSize, iconSize, 0));
  if (icon != nullptr) {
    DrawIconEx(dc, margin, margin, icon, iconSize, iconSize, 0, nullptr, DI_NORMAL);
    DestroyIcon(icon);
  }
  SetBkMode(dc, TRANSPARENT);
  const int textLeft = margin + iconSize + scaled(16);
  const RECT titleRect{textLeft, margin + scaled(6), client.right - margin, client.bottom};
  drawLine(dc, kProgramTitle, titleRect, scaled(28), FW_SEMIBOLD, RGB(235, 240, 246));
  const RECT textRect{margin, client.bottom - scaled(32), client.right - margin, client.bottom};
  drawLine(dc, text_, textRect, scaled(12), FW_NORMAL, RGB(160, 176, 192));
}

}  // namespace varnowick
