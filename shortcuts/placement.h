// Where things can lie on a panel: within it, on the grid, and where room is
// free. Looks at records alone; what is shown how large is told by the caller.
#pragma once

#include <functional>
#include <vector>

#include "core/workspace.h"

namespace varnowick {

// The panels as they are shown, in twips.
struct PanelMeasures {
  Twips grid{120};                                 // above 0
  std::function<Size<Twips>(Panel)> panelSize;     // the title of a container included
  std::function<Point<Twips>(Panel)> panelOrigin;  // in coordinates common to all panels
  std::function<Size<Twips>(const clsShortcut&)> shortcutSize;
};

// The first and the last place at which something of that size lies within the panel.
struct PlaceLimits {
  Point<Twips> first, last;
};
PlaceLimits placeLimits(const PanelMeasures& measures, Panel panel, Size<Twips> size, bool align);

// What lies on the panel, as large as it is shown. Shortcuts are left out when they are
// about to be laid out anew.
std::vector<TwipsRect> takenOn(const Workspace& workspace, const PanelMeasures& measures,
                               Panel panel, bool shortcutsToo);

// The nearest point at which something of that size lies wholly within the panel,
// and on its grid if asked. What is larger than the panel begins at its start.
Point<Twips> placeWithin(const PanelMeasures& measures, Panel panel, Size<Twips> size,
                         Point<Twips> at, bool align);

// The first place of the grid at or after the given one, row by row, that touches
// nothing on the panel. Where the panel has no such place: the nearest one, which may
// be below a container's body.
Point<Twips> freePlaceFrom(const Workspace& workspace, const PanelMeasures& measures, Panel panel,
                           Size<Twips> size, Point<Twips> from);

// The places of things of these sizes, in their order, in rows of the grid from the
// panel's start, around what lies on the panel apart from shortcuts. It goes on
// below a container that is too small.
std::vector<Point<Twips>> placesInRows(const Workspace& workspace, const PanelMeasures& measures,
                                       Panel panel, const std::vector<Size<Twips>>& sizes);

}  // namespace varnowick
