#include "ui/scene/current_thing.h"

#include "ui/scene/folder_rows.h"
#include "ui/scene/object_scene.h"

namespace varnowick {

std::optional<ObjectId> objectOf(NodeId node) {
  if (const ShortcutSlot slot = shortcutOf(node); !slot.none()) return slot;
  if (const PictureSlot slot = pictureOf(node); !slot.none()) return slot;
  if (node.kind == ControlKind::ContainerLabel || node.kind == ControlKind::ContainerIcon ||
      node.kind == ControlKind::Container)
    return containerOf(node);
  return std::nullopt;
}

NodeId handleOf(const Scene& scene, ObjectId id) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&id)) return shortcutNode(*slot);
  if (const auto* slot = std::get_if<PictureSlot>(&id)) return pictureNode(*slot);
  const ContainerSlot slot = std::get<ContainerSlot>(id);
  const NodeId tile = containerPart(ControlKind::ContainerIcon, slot);
  return scene.shown(tile) ? tile : containerPart(ControlKind::ContainerLabel, slot);
}

CurrentThing currentThing(const Selection& selection, NodeId focused) {
  const std::optional<ObjectId> object = objectOf(focused);
  if (!selection.empty())
    return {object && selection.contains(*object) ? object : selection.current(), {}, true};
  const ContainerSlot folder = folderContainerOf(focused);
  return {object, folder, !folder.none()};
}

NodeId focusFor(const Scene& scene, const Selection& selection, NodeId focused) {
  const std::optional<ObjectId> object = objectOf(focused);
  if (selection.empty()) return object ? NodeId{} : focused;
  if (object && selection.contains(*object)) return focused;
  const std::optional<ObjectId> current = selection.current();
  return current ? handleOf(scene, *current) : NodeId{};
}

}  // namespace varnowick
