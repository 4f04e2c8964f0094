// Asks the system about the foreground window for the full-screen rule.
//
// Wiring: before the bar comes up by itself (TimerShow, a reminder's window, the
// floating toolbar) frmMain asks fullScreenProgramOn(its monitor's bounds); while
// it is true, mouse moves on the strip arm nothing (DockInputs::blocked). What the
// user asks for by hotkey or tray comes up all the same.
#pragma once

#include <windows.h>

#include "core/units.h"
#include "sidebar/full_screen.h"

namespace varnowick {

// What is known of a window; null: there is none.
ForegroundState foregroundState(HWND window);
// Whether a program of others fills the monitor now.
bool fullScreenProgramOn(const PixelRect& monitorBounds);

}  // namespace varnowick
