#include "tests/e2e/harness/screen.h"

#include <vector>

#include "core/units.h"
#include "platform/win32/handles.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {

int screenDpi() {
  const WindowDc screen(nullptr);
  return GetDeviceCaps(screen.get(), LOGPIXELSX);
}

int toPixels(double twips) { return roundHalfToEven(twips * screenDpi() / 1440.0); }
double toTwips(int pixels) { return pixels * 1440.0 / screenDpi(); }

RECT rectOf(HWND window) {
  RECT rect{};
  if (!GetWindowRect(window, &rect)) failWithLastError(L"GetWindowRect");
  return rect;
}

int opacityOf(HWND window) {
  COLORREF key = 0;
  BYTE alpha = 0;
  DWORD flags = 0;
  if (!GetLayeredWindowAttributes(window, &key, &alpha, &flags)) failWithLastError(L"the opacity");
  return (flags & LWA_ALPHA) != 0 ? alpha : 255;
}

std::set<COLORREF> coloursIn(const RECT& rect) {
  const int width = rect.right - rect.left;
  const int height = rect.bottom - rect.top;
  const WindowDc screen(nullptr);
  const MemoryDc memory(CreateCompatibleDC(screen.get()));
  const BitmapHandle bitmap(CreateCompatibleBitmap(screen.get(), width, height));
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  std::vector<DWORD> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  {
    const SelectionGuard selected(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, width, height, screen.get(), rect.left, rect.top, SRCCOPY);
  }
  GetDIBits(memory.get(), bitmap.get(), 0, static_cast<UINT>(height), pixels.data(), &info,
            DIB_RGB_COLORS);
  std::set<COLORREF> colours;
  // Blue comes first there.
  for (std::size_t i = 0; i < pixels.size(); i += 3)
    colours.insert(RGB(pixels[i] >> 16 & 0xFF, pixels[i] >> 8 & 0xFF, pixels[i] & 0xFF));
  return colours;
}

}  // namespace varnowick::e2e
