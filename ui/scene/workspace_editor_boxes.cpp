// The part of WorkspaceEditor for what has a size: containers and pictures.
#include <algorithm>
#include <cmath>

#include "ui/scene/metrics.h"
#include "ui/scene/workspace_editor.h"

namespace varnowick {
namespace {

// As far inside a box its border can be taken hold of.
constexpr Twips kGrip{75};
constexpr Twips kCorner{180};
constexpr Size<Twips> kNewContainer{{2640}, {2400}};
constexpr Size<Twips> kLeastPicture{{240}, {240}};

// Of a container only what places it; a note may be long.
void copyPlace(const clsContainer& from, clsContainer& to) {
  to.rect = from.rect;
  to.savedRect = from.savedRect;
  to.CloseToEdge = from.CloseToEdge;
  to.CloseToEdgeY = from.CloseToEdgeY;
}

}  // namespace

void WorkspaceEditor::beginContainerDrag() {
  dragged_.clear();
  Scene& scene = scene_.scene();
  for (const ContainerSlot slot : selectedContainers()) {
    if (!scene.shown(containerNode(slot))) continue;
    dragged_.push_back({slot, scene.find(containerNode(slot))->rect});
    scene.raise(containerNode(slot));
  }
}

void WorkspaceEditor::dragContainers(Point<Twips> distance) {
  for (const Dragged& dragged : dragged_)
    if (Node* node = scene_.scene().find(nodeOf(dragged.id)))
      node->rect = dragged.start.translated(distance.x, distance.y);
}

Moved WorkspaceEditor::dropContainers(Point<Twips> distance) {
  std::vector<ContainerSlot> containers;
  for (const Dragged& dragged : dragged_) containers.push_back(std::get<ContainerSlot>(dragged.id));
  endDrag();
  const UndoStep step(document_, L"move");
  Moved moved = moveSelection(document_.workspace, document_.settings, measures(),
                              {selection_, distance, nullptr});
  if (!moved.objects.empty())
    for (const ContainerSlot slot : containers)
      if (clsContainer* container = document_.workspace.containers.find(slot)) settle(*container);
  refresh(moved.objects);
  return moved;
}

Edges WorkspaceEditor::borderAt(NodeId node, Point<Twips> at) const {
  NodeId box;
  bool title = false;
  if (const PictureSlot picture = pictureOf(node); !picture.none()) {
    box = pictureNode(picture);
  } else if (const ContainerSlot slot = containerOf(node); !slot.none() && hasMainPanel()) {
    const clsContainer* container = document_.workspace.containers.find(slot);
    if (container == nullptr || !isOpen(*container)) return {};
    box = containerNode(slot);
    title = true;
  } else {
    return {};
  }
  const TwipsRect rect = scene_.scene().windowRect(box);
  if (!rect.contains(at)) return {};
  Edges edges{.left = at.x < rect.left + kGrip,
              .top = at.y < rect.top + kGrip && !title,
              .right = !(at.x < rect.right() - kGrip),
              .bottom = !(at.y < rect.bottom() - kGrip)};
  // Near a corner both edges go along, so that corners are easy to hit.
  const bool across = edges.left || edges.right;
  const bool along = edges.top || edges.bottom;
  if (across && !along) edges.bottom = !(at.y < rect.bottom() - kCorner);
  if (along && !across) {
    edges.left = at.x < rect.left + kCorner;
    edges.right = !(at.x < rect.right() - kCorner);
  }
  return edges;
}

void WorkspaceEditor::beginResize(NodeId node, Point<Twips> at) {
  const Edges edges = borderAt(node, at);
  auto step = std::make_unique<UndoStep>(document_, L"size");
  if (const clsPicture* picture = document_.workspace.pictures.find(pictureOf(node))) {
    resizing_.emplace(Resizing{pictureOf(node), edges, {}, picture->rect, {}, std::move(step)});
    return;
  }
  const clsContainer* container = document_.workspace.containers.find(containerOf(node));
  if (container == nullptr) return;
  resizing_.emplace(Resizing{containerOf(node),
                             edges,
                             {},
                             {},
                             placesOf(document_.workspace, {containerOf(node)}),
                             std::move(step)});
  copyPlace(*container, resizing_->container);
}

// The distance by which the dragged edges come to stand on the grid.
Point<Twips> WorkspaceEditor::onGrid(const TwipsRect& start, Edges edges,
                                     Point<Twips> distance) const {
  if (!document_.settings.align) return distance;
  const auto snapped = [](Twips edge, Twips by) {
    return Twips{std::round((edge + by).value / kGrid.value) * kGrid.value} - edge;
  };
  return {snapped(edges.left ? start.left : start.right(), distance.x),
          snapped(edges.top ? start.top : start.bottom(), distance.y)};
}

void WorkspaceEditor::resize(Point<Twips> distance, bool free) {
  if (!resizing_) return;
  if (const auto* slot = std::get_if<ContainerSlot>(&resizing_->id)) {
    clsContainer* container = document_.workspace.containers.find(*slot);
    // A command may have folded, shrunk or removed it meanwhile: then its border is
    // no longer in anyone's hand.
    if (container == nullptr || !isOpen(*container)) return resizing_.reset();
    copyPlace(resizing_->container, *container);
    varnowick::resize(*container, resizing_->edges,
                      onGrid(container->rect, resizing_->edges, distance), kLeastContainer,
                      {scene_.panelSize(picBack).width, {}});
    keepContents(*slot);
  } else if (const auto* picture = std::get_if<PictureSlot>(&resizing_->id)) {
    clsPicture* record = document_.workspace.pictures.find(*picture);
    if (record == nullptr) return;
    const TwipsRect& start = resizing_->picture;
    const Size<Twips> room = scene_.panelSize(record->parent);
    const Edges& e = resizing_->edges;
    record->rect = resized(start, e, onGrid(start, e, distance), kLeastPicture,
                           {room.width, record->parent.isMain() ? Twips{} : room.height});
    // By a corner the picture keeps its shape.
    if (!free && (e.left || e.right) && (e.top || e.bottom) && !start.empty()) {
      const Twips height = record->rect.width * (start.height.value / start.width.value);
      if (e.top) record->rect.top = start.bottom() - height;
      record->rect.height = height;
    }
  }
  refresh({resizing_->id});
}

// As they lay before the drag, as far as they fit.
void WorkspaceEditor::keepContents(ContainerSlot slot) {
  for (const ShortcutSlot moved : keepWithin(document_.workspace, measures(), {slot},
                                             document_.settings.align, resizing_->contents))
    scene_.updateShortcut(moved);
}

void WorkspaceEditor::keepContentsWithin(Panel panel) {
  const UndoStep step(document_, L"size");
  const std::vector<ShortcutSlot> moved =
      keepWithin(document_.workspace, measures(), panel, document_.settings.align,
                 placesOf(document_.workspace, panel));
  refresh({moved.begin(), moved.end()});
}

bool WorkspaceEditor::endResize() {
  if (!resizing_) return false;
  const Resizing was = std::move(*resizing_);
  resizing_.reset();
  if (const auto* slot = std::get_if<ContainerSlot>(&was.id)) {
    const clsContainer* container = document_.workspace.containers.find(*slot);
    return container != nullptr && container->rect != was.container.rect;
  }
  const clsPicture* picture = document_.workspace.pictures.find(std::get<PictureSlot>(was.id));
  return picture != nullptr && picture->rect != was.picture;
}

void WorkspaceEditor::cancelResize() {
  if (!resizing_) return;
  if (const auto* slot = std::get_if<ContainerSlot>(&resizing_->id)) {
    clsContainer* container = document_.workspace.containers.find(*slot);
    if (container != nullptr && isOpen(*container)) {
      copyPlace(resizing_->container, *container);
      for (const PlacedShortcut& p : resizing_->contents)
        if (clsShortcut* shortcut = document_.workspace.shortcuts.find(p.slot))
          shortcut->position = p.position;
    }
  } else if (clsPicture* picture =
                 document_.workspace.pictures.find(std::get<PictureSlot>(resizing_->id))) {
    picture->rect = resizing_->picture;
  }
  const ObjectId id = resizing_->id;
  resizing_.reset();
  refresh({id});
}

void WorkspaceEditor::showDrawn(Point<Twips> from, Point<Twips> to) { showBand(from, to); }

TwipsRect WorkspaceEditor::drawn(Point<Twips> from, Point<Twips> to) {
  endBand();
  drawMode_ = false;
  TwipsRect rect = drawnRect(scene_.toPanel(picBack, from), scene_.toPanel(picBack, to),
                             kLeastContainer, {scene_.panelSize(picBack).width, {}});
  if (document_.settings.align) {
    const Point<Twips> at = placeWithin(measures(), picBack, rect.size(), rect.topLeft(), true);
    rect.left = at.x;
    rect.top = at.y;
  }
  return rect;
}

TwipsRect WorkspaceEditor::drawnAt(Point<Twips> at) {
  drawMode_ = false;
  const Point<Twips> place = placeWithin(measures(), picBack, kNewContainer,
                                         scene_.toPanel(picBack, at), document_.settings.align);
  const Twips width = std::min(kNewContainer.width, scene_.panelSize(picBack).width - place.x);
  return {place.x, place.y, std::max(width, kLeastContainer.width), kNewContainer.height};
}

TwipsRect WorkspaceEditor::freePlace(Size<Twips> size, Panel panel) const {
  const Twips top = panel.isMain() ? scene_.scroll() : kTitleStripHeight;
  const Point<Twips> at =
      freePlaceFrom(document_.workspace, measures(), panel, size, {kPad, kPad + top});
  return {at.x, at.y, size.width, size.height};
}

ContainerSlot WorkspaceEditor::addContainer(clsContainer container, const TwipsRect& rect) {
  if (document_.settings.locked) return {};
  container.rect = container.savedRect = rect;
  const UndoStep step(document_, L"add container");
  const ContainerSlot slot = document_.workspace.containers.add(std::move(container));
  refresh({slot});
  selectOnly(slot);
  scene_.scene().raise(containerNode(slot));
  return slot;
}

PictureSlot WorkspaceEditor::addPicture(const clsPicture& picture) {
  if (document_.settings.locked) return {};
  const UndoStep step(document_, L"add picture");
  const PictureSlot slot = document_.workspace.pictures.add(picture);
  refresh({slot});
  selectOnly(slot);
  return slot;
}

void WorkspaceEditor::removeContainers(const std::vector<ContainerSlot>& slots) {
  const UndoStep step(document_, L"delete");
  Workspace& workspace = document_.workspace;
  std::vector<ObjectId> gone;
  const auto liesIn = [&](Panel panel) {
    return std::find(slots.begin(), slots.end(), panel.container) != slots.end();
  };
  workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    if (liesIn(s.parent)) gone.push_back(slot);
  });
  workspace.pictures.forEach([&](PictureSlot slot, const clsPicture& p) {
    if (liesIn(p.parent)) gone.push_back(slot);
  });
  gone.insert(gone.end(), slots.begin(), slots.end());
  for (const ContainerSlot slot : slots) workspace.removeContainer(slot);
  for (const ObjectId id : gone) selection_.unselect(id);
  refresh(gone);
}

std::vector<ContainerSlot> WorkspaceEditor::selectedContainers() const {
  std::vector<ContainerSlot> slots;
  for (const ObjectId& id : selection_.objects())
    if (const auto* slot = std::get_if<ContainerSlot>(&id)) slots.push_back(*slot);
  return slots;
}

}  // namespace varnowick
