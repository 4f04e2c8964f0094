#include "ui/scene/workspace_editor.h"

#include <algorithm>
#include <cmath>

#include "ui/scene/current_thing.h"
#include "ui/scene/metrics.h"

namespace varnowick {
namespace {

constexpr NodeId kDragLayer{ControlKind::DragLayer, 0};
constexpr NodeId kRubberBand{ControlKind::RubberBand, 0};
constexpr NodeId kDropMark{ControlKind::DropMark, 0};
constexpr Twips kGapMark{60};
// The part at either end of a shortcut that is beside its middle.
constexpr float kMiddle = 0.25F;

TwipsRect between(Point<Twips> a, Point<Twips> b) {
  return {std::min(a.x, b.x),
          std::min(a.y, b.y),
          {std::abs(a.x.value - b.x.value)},
          {std::abs(a.y.value - b.y.value)}};
}

template <class... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

}  // namespace

PanelMeasures WorkspaceEditor::measures() const {
  PanelMeasures m;
  m.grid = kGrid;
  m.panelSize = [this](Panel panel) { return scene_.panelSize(panel); };
  m.panelOrigin = [this](Panel panel) {
    const Point<Twips> zero = scene_.toPanel(panel, {});
    return Point<Twips>{-zero.x, -zero.y};
  };
  m.shortcutSize = [this](const clsShortcut& s) { return scene_.shortcutCell(isSmall(s)); };
  return m;
}

// Of the objects of this window: a container that fills it is none.
std::optional<ObjectId> WorkspaceEditor::objectAt(NodeId node) const {
  const std::optional<ObjectId> object = objectOf(node);
  const bool isContainer = object && std::holds_alternative<ContainerSlot>(*object);
  if (isContainer && (node.kind == ControlKind::Container || !hasMainPanel())) return std::nullopt;
  return object;
}

NodeId WorkspaceEditor::nodeOf(ObjectId id) const {
  return std::visit(Overloaded{[](ShortcutSlot s) { return shortcutNode(s); },
                               [](PictureSlot s) { return pictureNode(s); },
                               [](ContainerSlot s) { return containerNode(s); }},
                    id);
}

void WorkspaceEditor::update(const std::vector<ObjectId>& objects) {
  for (const ObjectId id : objects)
    std::visit(Overloaded{[this](ShortcutSlot s) { scene_.updateShortcut(s); },
                          [this](PictureSlot s) { scene_.updatePicture(s); },
                          [this](ContainerSlot s) { scene_.updateContainer(s); }},
               id);
  scene_.scrollTo(scene_.scroll());
}

void WorkspaceEditor::refresh(const std::vector<ObjectId>& objects) {
  update(objects);
  showSelection();
}

void WorkspaceEditor::showSelection() {
  selection_.prune(document_.workspace);
  // What is folded away or shown by another window is not this one's to delete.
  for (const ObjectId id : std::set<ObjectId>(selection_.objects()))
    if (!scene_.scene().shown(nodeOf(id))) selection_.unselect(id);
  for (const NodeId id : shownSelected_)
    if (Node* node = scene_.scene().find(id)) node->selected = false;
  const bool was = !shownSelected_.empty();
  shownSelected_.clear();
  for (const ObjectId id : selection_.objects()) {
    shownSelected_.push_back(nodeOf(id));
    scene_.scene().find(shownSelected_.back())->selected = true;
  }
  if (selectionShown_ && (was || !shownSelected_.empty())) selectionShown_();
}

GestureKind WorkspaceEditor::dragFrom(NodeId node, Point<Twips> at) const {
  GestureKind kind = GestureKind::None;
  switch (node.kind) {
    case ControlKind::TitleBar:
    case ControlKind::lblCaption:
    case ControlKind::DockStrip:  // all that there is to take hold of while collapsed
      kind = GestureKind::MoveBar;
      break;
    case ControlKind::ContainerLabel:
    case ControlKind::ContainerIcon:
      kind = hasMainPanel() ? GestureKind::MoveContainers : GestureKind::MoveBar;
      break;
    case ControlKind::lblShortcut:
    case ControlKind::picShortcut:
    case ControlKind::PicContainer:
    case ControlKind::PicImage:
      kind = GestureKind::MoveObjects;
      break;
    case ControlKind::picBack:
    case ControlKind::ContainerFrame:
      // A locked workspace still lets the user select.
      kind = GestureKind::RubberBand;
      break;
    default:
      break;
  }
  if (document_.settings.locked) return kind == GestureKind::RubberBand ? kind : GestureKind::None;
  if (drawMode_ && node.kind == ControlKind::picBack) return GestureKind::DrawContainer;
  return borderAt(node, at) == Edges{} ? kind : GestureKind::Resize;
}

void WorkspaceEditor::pressed(NodeId node, bool ctrl) {
  if (const auto object = objectAt(node)) {
    selection_.press(*object, ctrl);
  } else if (node.kind == ControlKind::ContainerNote || node.kind == ControlKind::LstRSS) {
    selection_.selectNone();
  } else if (node.kind == ControlKind::picBack || node.kind == ControlKind::ContainerFrame) {
    selection_.pressPanel(ctrl);
    bandPanel_ = {containerOf(node)};
  } else {
    return;
  }
  showSelection();
}

void WorkspaceEditor::released(NodeId node, bool ctrl, bool dragged) {
  if (const auto object = objectAt(node)) selection_.release(*object, ctrl, dragged);
  showSelection();
}

void WorkspaceEditor::beginDrag() {
  dragged_.clear();
  Scene& scene = scene_.scene();
  Node& layer = scene.create(kDragLayer, scene.root());
  layer.hitTarget = false;
  layer.rect = {{}, {}, scene_.windowSize().width, scene_.windowSize().height};
  scene.raise(kDragLayer);
  for (const ObjectId id : selection_.objects()) {
    const NodeId node = nodeOf(id);
    if (std::holds_alternative<ContainerSlot>(id) || !scene.shown(node)) continue;
    const TwipsRect at = scene.windowRect(node);
    Node& dragged = scene.create(node, kDragLayer);
    dragged.rect = at;
    dragged_.push_back({id, at});
  }
}

void WorkspaceEditor::drag(Point<Twips> distance) {
  for (const Dragged& dragged : dragged_)
    if (Node* node = scene_.scene().find(nodeOf(dragged.id)))
      node->rect = dragged.start.translated(distance.x, distance.y);
}

template <class Question>
auto WorkspaceEditor::beneathDrag(Question&& question) {
  Node* layer = scene_.scene().find(kDragLayer);
  if (layer != nullptr) layer->visible = false;
  const auto answer = question();
  if (layer != nullptr) layer->visible = true;
  return answer;
}

Panel WorkspaceEditor::dropPanel(Point<Twips> pointer) {
  return beneathDrag([&] { return scene_.panelAt(pointer); });
}

ShortcutSlot WorkspaceEditor::shortcutAt(Point<Twips> pointer) {
  const ShortcutSlot slot =
      beneathDrag([&] { return shortcutOf(scene_.scene().hitTest(pointer)); });
  return document_.workspace.shortcuts.contains(slot) ? slot : ShortcutSlot{};
}

float WorkspaceEditor::alongAt(ShortcutSlot slot, Point<Twips> pointer) const {
  const TwipsRect r = scene_.scene().windowRect(shortcutNode(slot));
  const bool column = isSmall(document_.workspace.shortcuts[slot]);
  return column ? (pointer.y - r.top).value / std::max(1.0F, r.height.value)
                : (pointer.x - r.left).value / std::max(1.0F, r.width.value);
}

ShortcutSlot WorkspaceEditor::openWithTarget(Point<Twips> pointer) {
  if (dragged_.size() != 1 || !std::holds_alternative<ShortcutSlot>(dragged_.front().id)) return {};
  const ShortcutSlot target = shortcutAt(pointer);
  if (target.none()) return {};
  const float along = alongAt(target, pointer);
  return along >= kMiddle && along <= 1 - kMiddle ? target : ShortcutSlot{};
}

std::optional<Gap> WorkspaceEditor::gapAt(Point<Twips> pointer) {
  if (const ShortcutSlot slot = shortcutAt(pointer); !slot.none())
    return Gap{slot, alongAt(slot, pointer) > 0.5F};
  // Between two of them that are not a shortcut apart.
  const Panel panel = dropPanel(pointer);
  const Workspace& workspace = document_.workspace;
  ShortcutSlot before, after;
  float nearestBefore = 0, nearestAfter = 0;
  workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    const bool dragged = std::any_of(dragged_.begin(), dragged_.end(),
                                     [&](const Dragged& d) { return d.id == ObjectId{slot}; });
    if (s.parent != panel || dragged || !scene_.scene().shown(shortcutNode(slot))) return;
    const TwipsRect r = scene_.scene().windowRect(shortcutNode(slot));
    const bool column = isSmall(s);
    const bool beside = column ? pointer.x >= r.left && pointer.x < r.right()
                               : pointer.y >= r.top && pointer.y < r.bottom();
    const float half = (column ? r.height : r.width).value / 2;
    const float way = (column ? pointer.y - r.bottom() : pointer.x - r.right()).value;
    const float wayTo = (column ? r.top - pointer.y : r.left - pointer.x).value;
    if (!beside) return;
    if (way >= 0 && way < half && (before.none() || way < nearestBefore)) {
      before = slot;
      nearestBefore = way;
    }
    if (wayTo > 0 && wayTo < half && (after.none() || wayTo < nearestAfter)) {
      after = slot;
      nearestAfter = wayTo;
    }
  });
  if (before.none() || after.none()) return std::nullopt;
  return Gap{after, false};
}

Moved WorkspaceEditor::drop(Point<Twips> distance, Point<Twips> pointer) {
  const Panel target = dropPanel(pointer);
  const std::optional<Gap> gap = gapAt(pointer);
  endDrag();
  const UndoStep step(document_, L"move");
  Moved moved = moveSelection(document_.workspace, document_.settings, measures(),
                              {selection_, distance, &target, gap});
  refresh(moved.objects);
  return moved;
}

void WorkspaceEditor::cancelDrag() {
  endDrag();
  showSelection();
}

Moved WorkspaceEditor::take(WorkspaceEditor& from, Point<Twips> at) {
  from.endDrag();
  const Panel panel = scene_.panelAt(at);
  const UndoStep step(document_, L"move");
  Moved moved = moveToPanel(document_.workspace, document_.settings, measures(),
                            {from.selection_, panel, scene_.toPanel(panel, at), gapAt(at)});
  if (moved.objects.empty()) {
    from.showSelection();
    return moved;
  }
  const std::set<ObjectId> taken = from.selection_.objects();
  from.selection_.selectNone();
  from.refresh(moved.objects);
  selection_.selectNone();
  for (const ObjectId& id : taken)
    if (!std::holds_alternative<ContainerSlot>(id)) selection_.select(id);
  refresh(moved.objects);
  return moved;
}

// Puts what was dragged back under its panel, where its record says. The panel may
// have been folded away meanwhile; it stays selected until it has been moved.
void WorkspaceEditor::endDrag() {
  unmarkDrop();
  std::vector<ObjectId> back;
  for (const Dragged& dragged : dragged_) back.push_back(dragged.id);
  dragged_.clear();
  update(back);
  scene_.scene().remove(kDragLayer);
}

void WorkspaceEditor::showBand(Point<Twips> from, Point<Twips> to) {
  Scene& scene = scene_.scene();
  Node& band = scene.create(kRubberBand, scene.root());
  band.hitTarget = false;
  band.rect = between(from, to);
  scene.raise(kRubberBand);
}

void WorkspaceEditor::band(Point<Twips> from, Point<Twips> to) {
  showBand(from, to);
  const TwipsRect rect = between(from, to);
  Scene& scene = scene_.scene();
  std::vector<ObjectId> touched;
  const auto test = [&](ObjectId id, Panel parent) {
    if (parent == bandPanel_ && scene.shown(nodeOf(id)) &&
        !scene.seenRect(nodeOf(id)).intersect(rect).empty())
      touched.push_back(id);
  };
  document_.workspace.shortcuts.forEach(
      [&](ShortcutSlot slot, const clsShortcut& s) { test(slot, s.parent); });
  document_.workspace.pictures.forEach(
      [&](PictureSlot slot, const clsPicture& p) { test(slot, p.parent); });
  if (bandPanel_.isMain())
    document_.workspace.containers.forEach(
        [&](ContainerSlot slot, const clsContainer&) { test(slot, picBack); });
  selection_.band(touched);
  showSelection();
}

void WorkspaceEditor::endBand() { scene_.scene().remove(kRubberBand); }

void WorkspaceEditor::selectAll() {
  // Where the user works: the panel of what is selected, else the window's own.
  Panel panel = scene_.homePanel();
  if (const std::optional<ObjectId> current = selection_.current()) {
    if (const auto* slot = std::get_if<ShortcutSlot>(&*current))
      panel = document_.workspace.shortcuts[*slot].parent;
    if (const auto* slot = std::get_if<PictureSlot>(&*current))
      panel = document_.workspace.pictures[*slot].parent;
  }
  selection_.selectAll(document_.workspace, panel);
  showSelection();
}

void WorkspaceEditor::selectNone() {
  selection_.selectNone();
  showSelection();
}

void WorkspaceEditor::selectOnly(ObjectId id) {
  selection_.selectNone();
  selection_.select(id);
  showSelection();
}

Moved WorkspaceEditor::sortByName(Panel panel) {
  const UndoStep step(document_, L"sort");
  Moved moved = varnowick::sortByName(document_.workspace, document_.settings, measures(), panel);
  refresh(moved.objects);
  return moved;
}

Moved WorkspaceEditor::align() {
  const UndoStep step(document_, L"align");
  Moved moved = alignSelection(document_.workspace, document_.settings, measures(), selection_);
  for (const ObjectId& id : moved.objects)
    if (const auto* slot = std::get_if<ContainerSlot>(&id))
      settle(document_.workspace.containers[*slot]);
  refresh(moved.objects);
  return moved;
}

DeletePlan WorkspaceEditor::planDelete(const std::vector<ContainerSlot>& removedBefore) const {
  return varnowick::planDelete(document_.workspace, selection_, document_.settings, removedBefore);
}

void WorkspaceEditor::carryOut(const DeletePlan& plan) {
  const UndoStep step(document_, L"delete");
  applyDelete(document_.workspace, plan, selection_);
  std::vector<ObjectId> gone(plan.shortcuts.begin(), plan.shortcuts.end());
  gone.insert(gone.end(), plan.pictures.begin(), plan.pictures.end());
  refresh(gone);
}

// Without a point where there is room in sight; else around the point, the first with
// its middle there and the others after it.
Added WorkspaceEditor::add(std::vector<clsShortcut> shortcuts, const Point<Twips>* at,
                           Panel panel) {
  const UndoStep step(document_, L"add");
  Point<Twips> from{kPad, kPad + (panel.isMain() ? scene_.scroll() : kTitleStripHeight)};
  const PanelMeasures m = measures();
  const Workspace& workspace = document_.workspace;
  std::optional<RoomMade> room;
  if (at != nullptr) {
    panel = scene_.panelAt(*at);
    from = scene_.toPanel(panel, *at);
    std::vector<Size<Twips>> sizes;
    for (const clsShortcut& s : shortcuts) sizes.push_back(m.shortcutSize(s));
    if (const auto gap = gapAt(*at)) room = makeRoom(workspace, m, panel, sizes, {}, *gap);
  }
  std::size_t count = 0;
  const auto findPlace = [&](Panel on, const clsShortcut& s, Point<Twips>) {
    const Size<Twips> size = m.shortcutSize(s);
    const bool first = count == 0;
    if (room && on == panel) return room->places[count++];
    ++count;
    if (at == nullptr || !first) return from = freePlaceFrom(workspace, m, on, size, from);
    const Point<Twips> corner{from.x - size.width * 0.5F, from.y - size.height * 0.5F};
    return from = nearestPlace(m, on, size, corner, document_.settings.align,
                               takenOn(workspace, m, on, true));
  };
  Added added = addShortcuts(document_.workspace, document_.settings, std::move(shortcuts), panel,
                             from, findPlace);
  selection_.selectNone();
  for (const ShortcutSlot slot : added.slots) selection_.select(slot);
  std::vector<ObjectId> changed(added.slots.begin(), added.slots.end());
  if (room && !added.slots.empty()) {
    for (const PlacedShortcut& p : room->pushed) {
      document_.workspace.shortcuts[p.slot].position = p.position;
      changed.emplace_back(p.slot);
    }
  }
  refresh(changed);
  return added;
}

void WorkspaceEditor::markDrop(Point<Twips> pointer) {
  const Panel panel = dropPanel(pointer);
  const std::optional<Gap> gap = gapAt(pointer);
  const ShortcutSlot with = openWithTarget(pointer);
  if (!with.none()) return markDrop(shortcutNode(with));
  markDrop(panel.isMain() ? NodeId{ControlKind::picBack, 0} : containerNode(panel.container));
  if (!gap) return;
  // A line where it would go in.
  TwipsRect r = scene_.scene().seenRect(shortcutNode(gap->neighbour));
  const bool column = isSmall(document_.workspace.shortcuts[gap->neighbour]);
  if (gap->after) (column ? r.top : r.left) = column ? r.bottom() : r.right();
  (column ? r.top : r.left) -= kGapMark * 0.5F;
  (column ? r.height : r.width) = kGapMark;
  scene_.scene().find(kDropMark)->rect = r;
}

void WorkspaceEditor::markDrop(NodeId node) {
  Scene& scene = scene_.scene();
  Node& mark = scene.create(kDropMark, scene.root());
  mark.hitTarget = false;
  mark.rect = scene.seenRect(node);
  scene.raise(kDropMark);
}

void WorkspaceEditor::unmarkDrop() { scene_.scene().remove(kDropMark); }

void WorkspaceEditor::shortcutChanged(ShortcutSlot slot) { refresh({slot}); }

}  // namespace varnowick
