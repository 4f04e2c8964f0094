// Moving, aligning, sorting and deleting what lies on the panels. Works on records
// alone and asks nothing.
#pragma once

#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "shortcuts/placement.h"
#include "shortcuts/selection.h"

namespace varnowick {

struct Moved {
  std::vector<ObjectId> objects;     // whose place or parent has changed
  const wchar_t* refusal = nullptr;  // a message for the user; null for none
};

// Moves the selected objects by the distance. With a target panel shortcuts and
// pictures go over to it, keeping their place on the screen but for the distance;
// containers stay on the main panel. What lies in a selected container moves
// with it. Everything ends within its panel, on the grid if settings.align is on.
// When the target cannot take all, or editing is locked, nothing moves.
struct Move {
  const Selection& selection;
  Point<Twips> distance;
  const Panel* target = nullptr;
};
Moved moveSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                    const Move& move);

// Moves the selected shortcuts and pictures of another window onto the panel, the
// first one to that point of it and the others as they lie around it. The measures
// are those of the panel's window. Otherwise as above.
Moved moveToPanel(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                  const Selection& selection, Panel panel, Point<Twips> at);

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
