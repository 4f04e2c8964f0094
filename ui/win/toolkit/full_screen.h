// Asks the system about the foreground window for the full-screen rule, and keeps
// windows that are always on top from lying on a program that fills the screen.
#pragma once

#include <windows.h>

#include "core/units.h"
#include "platform/screen.h"
#include "sidebar/full_screen.h"

namespace varnowick {

// What is known of a window; null: there is none.
ForegroundState foregroundState(HWND window);
// The program of others that fills the monitor now, or the monitor that holds most
// of a place; null when none does.
HWND fullScreenProgramOn(const MonitorArea& monitor);
HWND fullScreenProgramAt(const PixelRect& place, Monitors& monitors);
// A topmost window goes behind that program; null: it is topmost again.
void standBehind(HWND window, HWND program);

}  // namespace varnowick
