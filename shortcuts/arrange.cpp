#include "shortcuts/arrange.h"

#include <algorithm>

#include "shortcuts/natural_order.h"

namespace varnowick {
namespace {

using Place = MoveUndo::Place;

Size<Twips> sizeOf(const Workspace& workspace, const PanelMeasures& measures, ObjectId id) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&id))
    return measures.shortcutSize(workspace.shortcuts[*slot]);
  if (const auto* slot = std::get_if<PictureSlot>(&id))
    return workspace.pictures[*slot].rect.size();
  return workspace.containers[std::get<ContainerSlot>(id)].rect.size();
}

Place placeOf(const Workspace& workspace, ObjectId id) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&id)) {
    const clsShortcut& shortcut = workspace.shortcuts[*slot];
    return {id, shortcut.parent, shortcut.position, {}};
  }
  if (const auto* slot = std::get_if<PictureSlot>(&id)) {
    const clsPicture& picture = workspace.pictures[*slot];
    return {id, picture.parent, picture.rect.topLeft(), {}};
  }
  const clsContainer& container = workspace.containers[std::get<ContainerSlot>(id)];
  return {id, picBack, container.rect.topLeft(), container.savedRect.topLeft()};
}

void put(Workspace& workspace, const Place& place) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&place.id)) {
    workspace.shortcuts[*slot].parent = place.parent;
    workspace.shortcuts[*slot].position = place.position;
  } else if (const auto* picture = std::get_if<PictureSlot>(&place.id)) {
    clsPicture& record = workspace.pictures[*picture];
    record.parent = place.parent;
    record.rect.left = place.position.x;
    record.rect.top = place.position.y;
  } else {
    clsContainer& container = workspace.containers[std::get<ContainerSlot>(place.id)];
    container.rect.left = place.position.x;
    container.rect.top = place.position.y;
    container.savedRect.left = place.saved.x;
    container.savedRect.top = place.saved.y;
  }
}

bool same(const Place& a, const Place& b) {
  return a.parent == b.parent && a.position == b.position && a.saved == b.saved;
}

// The use of the object's slot, 0 when it is free.
unsigned useOf(const Workspace& workspace, ObjectId id) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&id)) return workspace.shortcuts.use(*slot);
  if (const auto* slot = std::get_if<PictureSlot>(&id)) return workspace.pictures.use(*slot);
  return workspace.containers.use(std::get<ContainerSlot>(id));
}

// Puts the objects at their new places and remembers where they were. A sequence
// in which nothing moves leaves the last move undoable.
Moved putAll(Workspace& workspace, const std::vector<Place>& places, MoveUndo& undo) {
  Moved moved;
  std::vector<Place> before;
  for (const Place& place : places) {
    Place old = placeOf(workspace, place.id);
    if (same(old, place)) continue;
    old.use = useOf(workspace, old.id);
    old.parentUse = workspace.containers.use(old.parent.container);
    before.push_back(old);
    put(workspace, place);
    moved.objects.push_back(place.id);
  }
  if (!before.empty()) undo.remember(std::move(before));
  return moved;
}

std::size_t limitOf(Panel panel) {
  return panel.isMain() ? kMaxShortcutsOnMainPanel : kMaxShortcutsInContainer;
}

bool exists(const Workspace& workspace, Panel panel) {
  return panel.isMain() || workspace.containers.contains(panel.container);
}

// Null when the panel can take the shortcuts among the places that come to it.
const wchar_t* refusalOf(const Workspace& workspace, const std::vector<Place>& places,
                         Panel target) {
  std::size_t coming = 0;
  for (const Place& place : places) {
    const auto* slot = std::get_if<ShortcutSlot>(&place.id);
    if (slot != nullptr && place.parent == target && workspace.shortcuts[*slot].parent != target)
      ++coming;
  }
  const clsContainer* container = workspace.containers.find(target.container);
  if (coming != 0 && container != nullptr && !takesShortcuts(*container))
    return kListContainerMessage;
  if (coming == 0 || workspace.shortcutsOn(target) + coming <= limitOf(target)) return nullptr;
  return target.isMain() ? kMainPanelFullMessage : kContainerFullMessage;
}

// A container moves with its saved layout.
Place movedTo(const Place& place, Point<Twips> to) {
  Place result = place;
  result.saved = {place.saved.x + (to.x - place.position.x),
                  place.saved.y + (to.y - place.position.y)};
  if (!std::holds_alternative<ContainerSlot>(place.id)) result.saved = {};
  result.position = to;
  return result;
}

Point<Twips> newPlace(const Place& place, const PanelMeasures& measures, const Move& move,
                      Panel to) {
  Point<Twips> at{place.position.x + move.distance.x, place.position.y + move.distance.y};
  if (to == place.parent) return at;
  const Point<Twips> from = measures.panelOrigin(place.parent);
  const Point<Twips> origin = measures.panelOrigin(to);
  return {at.x + from.x - origin.x, at.y + from.y - origin.y};
}

}  // namespace

void MoveUndo::forget(ObjectId id) {
  std::erase_if(places_, [&](const Place& place) {
    const auto* gone = std::get_if<ContainerSlot>(&id);
    return place.id == id || (gone != nullptr && place.parent == Panel{*gone});
  });
}

std::vector<ObjectId> MoveUndo::undo(Workspace& workspace) {
  std::vector<ObjectId> moved;
  const std::vector<Place> places = std::move(places_);
  places_.clear();
  for (const Place& place : places) {
    if (place.use == 0 || useOf(workspace, place.id) != place.use) continue;
    if (workspace.containers.use(place.parent.container) != place.parentUse) continue;
    if (refusalOf(workspace, {place}, place.parent) != nullptr) continue;
    if (same(placeOf(workspace, place.id), place)) continue;
    put(workspace, place);
    moved.push_back(place.id);
  }
  return moved;
}

Moved moveSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                    const Move& move, MoveUndo& undo) {
  if (settings.locked) return {{}, kLockedMessage};
  if (move.target != nullptr && !exists(workspace, *move.target)) return {};
  std::vector<Place> places;
  for (const ObjectId& id : move.selection.objects()) {
    if (!isSelectable(workspace, id)) continue;
    const Place place = placeOf(workspace, id);
    const ContainerSlot around = place.parent.container;
    if (!around.none() && move.selection.contains(around)) continue;
    Place next = place;
    if (move.target != nullptr && !std::holds_alternative<ContainerSlot>(id))
      next.parent = *move.target;
    next = movedTo(next, placeWithin(measures, next.parent, sizeOf(workspace, measures, id),
                                     newPlace(place, measures, move, next.parent), settings.align));
    places.push_back(next);
  }
  if (move.target != nullptr)
    if (const wchar_t* refusal = refusalOf(workspace, places, *move.target)) return {{}, refusal};
  return putAll(workspace, places, undo);
}

Moved moveToPanel(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                  const Selection& selection, Panel panel, Point<Twips> at, MoveUndo& undo) {
  if (settings.locked) return {{}, kLockedMessage};
  if (!exists(workspace, panel)) return {};
  std::vector<Place> places;
  Point<Twips> first;
  for (const ObjectId& id : selection.objects()) {
    if (std::holds_alternative<ContainerSlot>(id) || !isSelectable(workspace, id)) continue;
    Place next = placeOf(workspace, id);
    if (places.empty()) first = next.position;
    const Point<Twips> to{at.x + next.position.x - first.x, at.y + next.position.y - first.y};
    next.parent = panel;
    next.position =
        placeWithin(measures, panel, sizeOf(workspace, measures, id), to, settings.align);
    places.push_back(next);
  }
  if (const wchar_t* refusal = refusalOf(workspace, places, panel)) return {{}, refusal};
  return putAll(workspace, places, undo);
}

Moved alignSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                     const Selection& selection, MoveUndo& undo) {
  if (settings.locked) return {{}, kLockedMessage};
  std::vector<Place> places;
  for (const ObjectId& id : selection.objects()) {
    if (!isSelectable(workspace, id)) continue;
    const Place place = placeOf(workspace, id);
    places.push_back(
        movedTo(place, placeWithin(measures, place.parent, sizeOf(workspace, measures, id),
                                   place.position, true)));
  }
  return putAll(workspace, places, undo);
}

void applyDelete(Workspace& workspace, const DeletePlan& plan, Selection& selection,
                 MoveUndo& undo) {
  const auto drop = [&](ObjectId id) {
    selection.unselect(id);
    undo.forget(id);
  };
  for (const ShortcutSlot slot : plan.shortcuts) {
    workspace.shortcuts.remove(slot);
    drop(slot);
  }
  for (const PictureSlot slot : plan.pictures) {
    workspace.pictures.remove(slot);
    drop(slot);
  }
}

Moved sortByName(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                 Panel panel, MoveUndo& undo) {
  if (settings.locked) return {{}, kLockedMessage};
  std::vector<ShortcutSlot> slots;
  workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    if (s.parent == panel) slots.push_back(slot);
  });
  std::stable_sort(slots.begin(), slots.end(), [&](ShortcutSlot a, ShortcutSlot b) {
    return naturalLess(workspace.shortcuts[a].FullCaption, workspace.shortcuts[b].FullCaption);
  });
  std::vector<Size<Twips>> sizes;
  for (const ShortcutSlot slot : slots)
    sizes.push_back(measures.shortcutSize(workspace.shortcuts[slot]));
  const std::vector<Point<Twips>> rows = placesInRows(workspace, measures, panel, sizes);
  std::vector<Place> places;
  for (std::size_t i = 0; i < rows.size(); ++i)
    places.push_back(movedTo(placeOf(workspace, slots[i]), rows[i]));
  return putAll(workspace, places, undo);
}

}  // namespace varnowick
