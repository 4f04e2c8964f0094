#include "platform/win32/win32_screen.h"

#include <windows.h>

#include <algorithm>

#include "platform/win32/callback.h"
#include "platform/win32/handles.h"

namespace varnowick {

namespace {

PixelRect fromRect(const RECT& r) {
  return {{static_cast<int>(r.left)},
          {static_cast<int>(r.top)},
          {static_cast<int>(r.right - r.left)},
          {static_cast<int>(r.bottom - r.top)}};
}

BOOL CALLBACK addMonitor(HMONITOR handle, HDC, RECT*, LPARAM target) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(handle, &info)) return TRUE;
  return guardedCallback(TRUE, [&] {
    reinterpret_cast<std::vector<Monitor>*>(target)->push_back(
        {fromRect(info.rcMonitor), fromRect(info.rcWork),
         (info.dwFlags & MONITORINFOF_PRIMARY) != 0});
    return TRUE;
  });
}

Monitor primaryFromMetrics() {
  const PixelRect bounds{{}, {}, {GetSystemMetrics(SM_CXSCREEN)}, {GetSystemMetrics(SM_CYSCREEN)}};
  RECT work{};
  const bool known = SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0) != 0;
  return {bounds, known ? fromRect(work) : bounds, true};
}

}  // namespace

Point<Pixels> Win32Cursor::position() {
  // It cannot be read while the desktop is locked; it then stays where it was.
  POINT at{};
  if (GetCursorPos(&at)) last_ = {{static_cast<int>(at.x)}, {static_cast<int>(at.y)}};
  return last_;
}

bool Win32Cursor::leftButtonDown() {
  const int button = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
  return (GetAsyncKeyState(button) & 0x8000) != 0;
}

std::vector<Monitor> Win32Monitors::all() {
  std::vector<Monitor> monitors;
  EnumDisplayMonitors(nullptr, nullptr, addMonitor, reinterpret_cast<LPARAM>(&monitors));
  std::stable_partition(monitors.begin(), monitors.end(),
                        [](const Monitor& m) { return m.primary; });
  if (monitors.empty()) monitors.push_back(primaryFromMetrics());
  return monitors;
}

PixelRect Win32Monitors::virtualScreen() {
  return {{GetSystemMetrics(SM_XVIRTUALSCREEN)},
          {GetSystemMetrics(SM_YVIRTUALSCREEN)},
          {GetSystemMetrics(SM_CXVIRTUALSCREEN)},
          {GetSystemMetrics(SM_CYVIRTUALSCREEN)}};
}

Density Win32Monitors::density() {
  if (dpi_ == 0) {
    const WindowDc screen(nullptr);
    const int dpi = GetDeviceCaps(screen.get(), LOGPIXELSX);
    dpi_ = dpi > 0 ? dpi : 96;
  }
  return {dpi_};
}

}  // namespace varnowick
