// Asks the system about the foreground window for the full-screen rule.
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
