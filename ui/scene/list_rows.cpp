#include "ui/scene/list_rows.h"

#include "ui/scene/metrics.h"

namespace varnowick {

void layoutRows(Scene& scene, const ListNodes& nodes, ListModel& model, Twips rowHeight,
                const std::function<RowLook(int row)>& look) {
  const Node* list = scene.find(nodes.list);
  if (list == nullptr) return;
  const Size<Twips> room = list->rect.size();
  model.setRoom(room.height, rowHeight);
  const bool scrolls = model.scrolls();
  const Twips width = room.width - (scrolls ? kScrollThumbWidth + kNoteMargin : kNoteMargin);

  int n = 0;
  for (int row = model.top(); row < model.bottom(); ++row, ++n) {
    const NodeId id = nodes.row(n);
    if (id.none()) break;
    Node& node = scene.create(id, nodes.list);
    RowLook shown = look(row);
    node.rect = {{}, model.offsetOf(row), width, model.heightOf(row)};
    node.visible = true;
    node.text = std::move(shown.text);
    node.image = std::move(shown.image);
    node.selected = model.isSelected(row);
    node.current = row == model.current();
  }
  // The nodes of a longer list stay for later; they come one after the other.
  for (NodeId id = nodes.row(n); !id.none(); id = nodes.row(++n)) {
    Node* node = scene.find(id);
    if (node == nullptr) break;
    node->visible = false;
  }

  Node& thumb = scene.create(nodes.thumb, nodes.list);
  const ListModel::Thumb at = model.thumb();
  thumb.visible = scrolls;
  thumb.hitTarget = false;
  thumb.rect = {room.width - kScrollThumbWidth - Twips{15}, room.height * at.start,
                kScrollThumbWidth, room.height * at.length};
}

}  // namespace varnowick
