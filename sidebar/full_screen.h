// Whether a program fills a monitor, so that nothing of ours may come up there by
// itself: a game, a film, a presentation. Rectangles and flags only, no windows.
#pragma once

#include "core/units.h"

namespace varnowick {

// The foreground window, and what is known of it. All rectangles are in screen
// pixels.
struct ForegroundState {
  bool exists = false;
  bool visible = true;     // and not minimised
  bool shell = false;      // desktop, taskbar, task switcher
  bool ours = false;       // of this process
  bool captioned = false;  // has a title bar
  bool maximised = false;
  PixelRect rect;
};

// True when the window covers the whole monitor and is no ordinary window that
// has merely been maximised: with a taskbar that hides itself, those cover the
// monitor too.
bool fullScreenOn(const ForegroundState& foreground, const PixelRect& monitor);

}  // namespace varnowick
