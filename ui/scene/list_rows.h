// A list as nodes: one for each row that is in sight and none for the others, and a
// thumb. Reads the model and changes nothing of it but its room.
#pragma once

#include <functional>

#include "ui/scene/list_model.h"
#include "ui/scene/scene.h"

namespace varnowick {

struct RowLook {
  std::wstring text;
  ImageRef image;
};

struct ListNodes {
  NodeId list;  // must exist: the rows get its room
  NodeId thumb;
  std::function<NodeId(int)> row;  // of the n-th row in sight; none beyond what is possible
};

// Brings the rows below the list up to date.
void layoutRows(Scene& scene, const ListNodes& nodes, ListModel& model, Twips rowHeight,
                const std::function<RowLook(int row)>& look);

}  // namespace varnowick
