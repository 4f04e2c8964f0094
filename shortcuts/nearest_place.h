// The free place nearest to a wanted one, in any direction, and room made between
// shortcuts for one that is put there. Looks at rectangles and records; moves nothing.
#pragma once

#include <optional>
#include <vector>

#include "shortcuts/placement.h"

namespace varnowick {

// Whether two things share more than a border.
bool overlap(const TwipsRect& a, const TwipsRect& b);

// The free place of the panel that is nearest to `wanted`, on the grid if asked.
std::optional<Point<Twips>> freePlaceWithin(const PanelMeasures& measures, Panel panel,
                                            Size<Twips> size, Point<Twips> wanted, bool align,
                                            const std::vector<TwipsRect>& taken);

// Where a thing comes to lie that is let go at `wanted`: there if it is free, else at
// the nearest place of the panel that is. A container without one goes on below its
// body. On the grid if asked.
Point<Twips> nearestPlace(const PanelMeasures& measures, Panel panel, Size<Twips> size,
                          Point<Twips> wanted, bool align, const std::vector<TwipsRect>& taken);

// Before or after a shortcut in the order of reading: rows, or columns of those in the
// small style.
struct Gap {
  ShortcutSlot neighbour;
  bool after = false;
};

struct PlacedShortcut {
  ShortcutSlot slot;
  Point<Twips> position;
};

// What is put into the gap and what makes room for it.
struct RoomMade {
  std::vector<Point<Twips>> places;    // of what comes, in its order
  std::vector<PlacedShortcut> pushed;  // that have to move
};

// Room for things of these sizes. The shortcuts of `leaving` are taken for gone from
// the panel: they are what comes. Nothing when what lies there cannot make room within
// the panel.
std::optional<RoomMade> makeRoom(const Workspace& workspace, const PanelMeasures& measures,
                                 Panel panel, const std::vector<Size<Twips>>& sizes,
                                 const std::vector<ShortcutSlot>& leaving, const Gap& gap);

}  // namespace varnowick
