// The borders that docking measures against, in whole twips, and where the
// mouse is with respect to the program's windows. Knows monitors as rectangles
// only.
#pragma once

#include <span>
#include <vector>

#include "core/units.h"
#include "platform/screen.h"

namespace varnowick {

struct ScreenMonitor {
  TwipsRect bounds;
  TwipsRect work;  // without the taskbar and other bars of the desktop
  bool operator==(const ScreenMonitor&) const = default;
};

struct ScreenExtents {
  Twips virtualLeft;                    // of the virtual screen
  Twips virtualTop;                     // of the virtual screen
  Twips virtualHeight;                  // of the virtual screen; its bottom only while its top
                                        // is 0
  std::vector<ScreenMonitor> monitors;  // never empty
};

// The monitor that shows most of the rectangle; the nearest one when none shows
// any of it. monitors must not be empty.
TwipsRect monitorHolding(std::span<const TwipsRect> monitors, const TwipsRect& window);
const ScreenMonitor& monitorHolding(std::span<const ScreenMonitor> monitors,
                                    const TwipsRect& window);

// True when at least one pixel of the rectangle shows, at the usual density.
bool isShown(std::span<const ScreenMonitor> monitors, const TwipsRect& rect);

ScreenExtents screenExtents(Monitors& monitors);

// A loaded window of the program: the screen position of its client origin and
// its outer size.
struct ProgramWindow {
  Point<Pixels> clientOrigin;
  Size<Twips> size;
};

// True when the cursor lies inside any of the windows; all four borders count
// as inside.
bool MouseOnWindow(std::span<const ProgramWindow> windows, Point<Pixels> cursor, Density density);

}  // namespace varnowick
