// The borders that docking measures against, in whole twips, and where the mouse
// is with respect to the program's windows. Knows monitors as rectangles only.
#pragma once

#include <span>
#include <vector>

#include "core/units.h"
#include "platform/screen.h"

namespace varnowick {

struct ScreenExtents {
  Twips virtualLeft;    // of the virtual screen
  Twips virtualTop;     // of the virtual screen
  Twips virtualHeight;  // of the virtual screen; its bottom only while its top is 0
  std::vector<TwipsRect> monitors;
  TwipsRect monitor;  // the one that holds the window, or else the nearest
};

// The monitor that shows most of the rectangle; the nearest one when none shows
// any of it. monitors must not be empty.
TwipsRect monitorHolding(std::span<const TwipsRect> monitors, const TwipsRect& window);

ScreenExtents screenExtents(Monitors& monitors, const TwipsRect& window);

// A loaded window of the program: the screen position of its client origin and
// its outer size.
struct ProgramWindow {
  Point<Pixels> clientOrigin;
  Size<Twips> size;
};

// True when the cursor lies inside any of the windows; all four borders count as
// inside.
bool MouseOnWindow(std::span<const ProgramWindow> windows, Point<Pixels> cursor, Density density);

}  // namespace varnowick
