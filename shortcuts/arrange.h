// Moving, aligning, sorting and deleting what lies on the panels. Works on records
// alone and asks nothing.
#pragma once

#include <optional>
#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "shortcuts/nearest_place.h"
#include "shortcuts/selection.h"

namespace varnowick {

struct Moved {
  std::vector<ObjectId> objects;     // whose place or parent has changed
  const wchar_t* refusal = nullptr;  // a message for the user; null for none
};

// Moves the selected objects by the distance. With a target panel shortcuts and
// pictures go over to it, keeping their place on the screen but for the distance;
// containers stay on the main panel. What lies in a selected container moves
// with it. Everything ends within its panel, on the grid if settings.align is on, and
// shortcuts at the nearest free place; into a gap between others, if there is one, when
// those can make room. When the target cannot take all, or editing is locked, nothing
// moves.
struct Move {
  const Selection& selection;
  Point<Twips> distance;
  const Panel* target = nullptr;
  std::optional<Gap> gap = {};
};
Moved moveSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                    const Move& move);

// Moves the selected shortcuts and pictures of another window onto the panel, the
// first one with its middle to that point of it and the others as they lie around it.
// The measures are those of the panel's window. Otherwise as above.
struct MoveOver {
  const Selection& selection;
  Panel panel;
  Point<Twips> at;
  std::optional<Gap> gap = {};
};
Moved moveToPanel(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                  const MoveOver& move);

std::vector<PlacedShortcut> placesOf(const Workspace& workspace, Panel panel);
// The panel has become smaller. Shortcuts that lay at these places and fit no more go to
// the nearest free place in it; what finds none stays apart from the others below. Gives
// what has moved.
std::vector<ShortcutSlot> keepWithin(Workspace& workspace, const PanelMeasures& measures,
                                     Panel panel, bool align,
                                     const std::vector<PlacedShortcut>& places);

// Puts the selected objects onto the grid, whatever settings.align says.
Moved alignSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                     const Selection& selection);

// Lays the shortcuts of the panel onto the grid in rows, ordered by name, around
// pictures and containers. What finds no room in a container goes on below, where
// it comes into sight when the container is made larger.
Moved sortByName(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                 Panel panel);

// Removes the objects of a confirmed plan from the workspace and the selection.
void applyDelete(Workspace& workspace, const DeletePlan& plan, Selection& selection);

}  // namespace varnowick
