// Moving, aligning, sorting and deleting what lies on the panels, and taking the
// last move back. Works on records alone and asks nothing.
#pragma once

#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "shortcuts/placement.h"
#include "shortcuts/selection.h"

namespace varnowick {

// What the last move was made of; undone in one step. What has been removed since
// is left out.
class MoveUndo {
 public:
  struct Place {
    ObjectId id;
    Panel parent;
    Point<Twips> position;
    Point<Twips> saved;  // of a container: its unfolded, unshrunk position
    // Which uses of the slots are meant: another window may free them and fill them
    // again without knowing of this undo.
    unsigned use = 0, parentUse = 0;
  };
  bool empty() const { return places_.empty(); }
  void clear() { places_.clear(); }
  void remember(std::vector<Place> places) { places_ = std::move(places); }
  void forget(ObjectId id);
  // Puts everything back and forgets it; gives what has moved. What its panel
  // cannot take back stays where it is.
  std::vector<ObjectId> undo(Workspace& workspace);

 private:
  std::vector<Place> places_;
};

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
                    const Move& move, MoveUndo& undo);

// Moves the selected shortcuts and pictures of another window onto the panel, the
// first one to that point of it and the others as they lie around it. The measures
// are those of the panel's window. Otherwise as above.
Moved moveToPanel(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                  const Selection& selection, Panel panel, Point<Twips> at, MoveUndo& undo);

// Puts the selected objects onto the grid, whatever settings.align says.
Moved alignSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                     const Selection& selection, MoveUndo& undo);

// Lays the shortcuts of the panel onto the grid in rows, ordered by name, around
// pictures and containers. What finds no room in a container goes on below, where
// it comes into sight when the container is made larger.
Moved sortByName(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                 Panel panel, MoveUndo& undo);

// Removes the objects of a confirmed plan from the workspace, the selection and
// the undo.
void applyDelete(Workspace& workspace, const DeletePlan& plan, Selection& selection,
                 MoveUndo& undo);

}  // namespace varnowick
