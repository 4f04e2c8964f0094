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
  bool sizable = false;    // has a border to size it by, or can be maximised
  bool topmost = false;
  bool maximised = false;
  PixelRect rect;
  PixelRect client;
};

// The monitor as docking sees it, in pixels.
struct MonitorArea {
  PixelRect bounds;
  PixelRect work;
};

enum class FullScreen { No, Yes, AskSystem };

// Yes for a window that covers the whole monitor and is no ordinary one that has
// merely been maximised. Where there is no taskbar a maximised window covers the
// monitor too; one without a frame of its own looks like a film then, and the
// system is asked whether it takes the screen.
FullScreen fullScreenOn(const ForegroundState& foreground, const MonitorArea& monitor);

}  // namespace varnowick
