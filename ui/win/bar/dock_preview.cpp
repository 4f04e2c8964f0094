#include "ui/win/bar/dock_preview.h"

#include "platform/win32/handles.h"

namespace varnowick {
namespace {

constexpr BYTE kOpacity = 110;  // of 255

}  // namespace

void DockPreview::show(HWND bar, const std::optional<PixelRect>& place, Colour colour) {
  if (!place) {
    shown_ = {};
    destroy();
    return;
  }
  if (handle() == nullptr) {
    Create options;
    options.className = L"VarnowickDockPreview";
    options.exStyle =
        WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE;
    if (!create(options)) return;
    SetLayeredWindowAttributes(handle(), 0, kOpacity, LWA_ALPHA);
  }
  if (*place == shown_) return;
  shown_ = *place;
  colour_ = colour;
  SetWindowPos(handle(), bar, shown_.left.value, shown_.top.value, shown_.width.value,
               shown_.height.value, SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
  InvalidateRect(handle(), nullptr, FALSE);
}

LRESULT DockPreview::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    case WM_PAINT: {
      const PaintDc dc(handle());
      RECT client{};
      GetClientRect(handle(), &client);
      const BrushHandle brush(CreateSolidBrush(static_cast<COLORREF>(colour_.bgr)));
      FillRect(dc.get(), &client, brush.get());
      return 0;
    }
    default:
      return Window::handleMessage(message, wParam, lParam);
  }
}

}  // namespace varnowick
