// What keys and menus of a window are about. There is one answer for Del, F2, Enter
// and Ctrl+C, and the focus shows it: the object that has the focus is always one of
// those selected, and a list has it only while nothing is selected beside its rows.
#pragma once

#include <optional>

#include "shortcuts/selection.h"
#include "ui/scene/scene.h"

namespace varnowick {

// The object that a node stands for: a shortcut, a picture, or a container's title,
// tile or whole. None for what lies in a container.
std::optional<ObjectId> objectOf(NodeId node);
// What of the object can have the focus now.
NodeId handleOf(const Scene& scene, ObjectId id);

struct CurrentThing {
  // One object, to open or to change; none of several of which none has the focus.
  std::optional<ObjectId> object;
  // The files selected in this folder container, in place of objects.
  ContainerSlot files;
  // What can be removed: files, or objects that are selected.
  bool removable = false;
};
CurrentThing currentThing(const Selection& selection, NodeId focused);

// Where the focus belongs once the selection has changed.
NodeId focusFor(const Scene& scene, const Selection& selection, NodeId focused);

}  // namespace varnowick
