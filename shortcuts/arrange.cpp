#include "shortcuts/arrange.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "shortcuts/natural_order.h"

namespace varnowick {
namespace {

struct Place {
  ObjectId id;
  Panel parent;
  Point<Twips> position;
  Point<Twips> saved;  // of a container: its unfolded, unshrunk position
};

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

// Puts the objects at their new places.
Moved putAll(Workspace& workspace, const std::vector<Place>& places) {
  Moved moved;
  for (const Place& place : places) {
    if (same(placeOf(workspace, place.id), place)) continue;
    put(workspace, place);
    moved.objects.push_back(place.id);
  }
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

// Shortcuts come to lie on nothing else: in the gap, or each at the nearest free place to
// where it was to go. What makes room for them is added to the places.
void settleShortcuts(const Workspace& workspace, const Settings& settings,
                     const PanelMeasures& measures, const std::optional<Gap>& gap,
                     std::vector<Place>& places) {
  std::vector<Place*> moving;
  std::vector<ShortcutSlot> slots;
  for (Place& place : places)
    if (const auto* slot = std::get_if<ShortcutSlot>(&place.id)) {
      moving.push_back(&place);
      slots.push_back(*slot);
    }
  if (moving.empty()) return;
  const Panel panel = moving.front()->parent;
  // In the order in which they are read.
  std::stable_sort(moving.begin(), moving.end(), [](const Place* a, const Place* b) {
    return std::pair(a->position.y, a->position.x) < std::pair(b->position.y, b->position.x);
  });
  if (gap) {
    std::vector<Size<Twips>> sizes;
    for (const Place* place : moving) sizes.push_back(sizeOf(workspace, measures, place->id));
    if (const auto room = makeRoom(workspace, measures, panel, sizes, slots, *gap)) {
      for (std::size_t i = 0; i < moving.size(); ++i) moving[i]->position = room->places[i];
      for (const PlacedShortcut& p : room->pushed)
        places.push_back({p.slot, panel, p.position, {}});
      return;
    }
  }
  // Each panel on its own: without a target they stay on several.
  std::vector<std::pair<Panel, std::vector<TwipsRect>>> takenOf;
  const auto takenAt = [&](Panel on) -> std::vector<TwipsRect>& {
    for (auto& [known, taken] : takenOf)
      if (known == on) return taken;
    std::vector<TwipsRect> taken = takenOn(workspace, measures, on, false);
    workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
      if (s.parent != on || std::find(slots.begin(), slots.end(), slot) != slots.end()) return;
      const Size<Twips> size = measures.shortcutSize(s);
      taken.push_back({s.position.x, s.position.y, size.width, size.height});
    });
    return takenOf.emplace_back(on, std::move(taken)).second;
  };
  for (Place* place : moving) {
    std::vector<TwipsRect>& taken = takenAt(place->parent);
    const Size<Twips> size = sizeOf(workspace, measures, place->id);
    place->position =
        nearestPlace(measures, place->parent, size, place->position, settings.align, taken);
    taken.push_back({place->position.x, place->position.y, size.width, size.height});
  }
}

// What else moves goes first, so that shortcuts may come where it has been.
Moved settle(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
             const std::optional<Gap>& gap, std::vector<Place> places) {
  std::vector<Place> shortcuts;
  std::erase_if(places, [&](const Place& place) {
    const bool is = std::holds_alternative<ShortcutSlot>(place.id);
    if (is) shortcuts.push_back(place);
    return is;
  });
  Moved moved = putAll(workspace, places);
  settleShortcuts(workspace, settings, measures, gap, shortcuts);
  const Moved rest = putAll(workspace, shortcuts);
  moved.objects.insert(moved.objects.end(), rest.objects.begin(), rest.objects.end());
  return moved;
}

}  // namespace

Moved moveSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                    const Move& move) {
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
  return settle(workspace, settings, measures, move.gap, std::move(places));
}

Moved moveToPanel(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                  const MoveOver& move) {
  if (settings.locked) return {{}, kLockedMessage};
  if (!exists(workspace, move.panel)) return {};
  std::vector<Place> places;
  Point<Twips> way;
  for (const ObjectId& id : move.selection.objects()) {
    if (std::holds_alternative<ContainerSlot>(id) || !isSelectable(workspace, id)) continue;
    Place next = placeOf(workspace, id);
    const Size<Twips> size = sizeOf(workspace, measures, id);
    if (places.empty())
      way = {move.at.x - size.width * 0.5F - next.position.x,
             move.at.y - size.height * 0.5F - next.position.y};
    next.parent = move.panel;
    next.position = placeWithin(measures, move.panel, size,
                                {next.position.x + way.x, next.position.y + way.y}, settings.align);
    places.push_back(next);
  }
  if (const wchar_t* refusal = refusalOf(workspace, places, move.panel)) return {{}, refusal};
  return settle(workspace, settings, measures, move.gap, std::move(places));
}

std::vector<PlacedShortcut> placesOf(const Workspace& workspace, Panel panel) {
  std::vector<PlacedShortcut> places;
  workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    if (s.parent == panel) places.push_back({slot, s.position});
  });
  return places;
}

std::vector<ShortcutSlot> keepWithin(Workspace& workspace, const PanelMeasures& measures,
                                     Panel panel, bool align,
                                     const std::vector<PlacedShortcut>& places) {
  std::vector<TwipsRect> taken = takenOn(workspace, measures, panel, false);
  std::vector<std::pair<PlacedShortcut, Size<Twips>>> outside;
  std::vector<ShortcutSlot> moved;
  const auto put = [&](ShortcutSlot slot, Point<Twips> at, Size<Twips> size) {
    taken.push_back({at.x, at.y, size.width, size.height});
    Point<Twips>& position = workspace.shortcuts[slot].position;
    if (position == at) return;
    position = at;
    moved.push_back(slot);
  };
  for (const PlacedShortcut& place : places) {
    const clsShortcut* shortcut = workspace.shortcuts.find(place.slot);
    if (shortcut == nullptr || shortcut->parent != panel) continue;
    const Size<Twips> size = measures.shortcutSize(*shortcut);
    if (placeWithin(measures, panel, size, place.position, false) == place.position)
      put(place.slot, place.position, size);
    else
      outside.emplace_back(place, size);
  }
  // A search through a full body takes long, and this is done while the mouse moves.
  std::optional<Size<Twips>> noRoomFor;
  std::vector<std::pair<PlacedShortcut, Size<Twips>>> below;
  for (const auto& [place, size] : outside) {
    std::optional<Point<Twips>> at;
    if (!noRoomFor || size.width < noRoomFor->width || size.height < noRoomFor->height)
      at = freePlaceWithin(measures, panel, size, place.position, align, taken);
    if (at) {
      put(place.slot, *at, size);
    } else {
      noRoomFor = size;
      below.emplace_back(place, size);
    }
  }
  const auto onGrid = [&](Twips at) {
    return Twips{std::ceil(at.value / measures.grid.value) * measures.grid.value};
  };
  Twips top, bottom;
  for (const TwipsRect& rect : taken) bottom = std::max(bottom, rect.bottom());
  Twips next;
  for (const auto& [place, size] : below) {
    const PlaceLimits limits = placeLimits(measures, panel, size, align);
    if (next > limits.last.x || top == Twips{}) {
      top = onGrid(std::max(bottom, limits.first.y));
      next = limits.first.x;
    }
    put(place.slot, {next, top}, size);
    next = onGrid(next + size.width);
    bottom = std::max(bottom, top + size.height);
  }
  return moved;
}

Moved alignSelection(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                     const Selection& selection) {
  if (settings.locked) return {{}, kLockedMessage};
  std::vector<Place> places;
  for (const ObjectId& id : selection.objects()) {
    if (!isSelectable(workspace, id)) continue;
    const Place place = placeOf(workspace, id);
    places.push_back(
        movedTo(place, placeWithin(measures, place.parent, sizeOf(workspace, measures, id),
                                   place.position, true)));
  }
  return putAll(workspace, places);
}

void applyDelete(Workspace& workspace, const DeletePlan& plan, Selection& selection) {
  for (const ShortcutSlot slot : plan.shortcuts) {
    workspace.shortcuts.remove(slot);
    selection.unselect(slot);
  }
  for (const PictureSlot slot : plan.pictures) {
    workspace.pictures.remove(slot);
    selection.unselect(slot);
  }
}

Moved sortByName(Workspace& workspace, const Settings& settings, const PanelMeasures& measures,
                 Panel panel) {
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
  return putAll(workspace, places);
}

}  // namespace varnowick
