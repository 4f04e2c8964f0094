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

ShortcutSlot WorkspaceEditor::openWithTarget(Point<Twips> pointer) {
  if (dragged_.size() != 1 || !std::holds_alternative<ShortcutSlot>(dragged_.front().id)) return {};
  const ShortcutSlot target =
      beneathDrag([&] { return shortcutOf(scene_.scene().hitTest(pointer)); });
  return document_.workspace.shortcuts.contains(target) ? target : ShortcutSlot{};
}

Moved WorkspaceEditor::drop(Point<Twips> distance, Point<Twips> pointer) {
  const Panel target = dropPanel(pointer);
  endDrag();
  const UndoStep step(document_, L"move");
  Moved moved = moveSelection(document_.workspace, document_.settings, measures(),
                              {selection_, distance, &target});
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
  Moved moved = moveToPanel(document_.workspace, document_.settings, measures(), from.selection_,
                            panel, scene_.toPanel(panel, at));
  if (moved.objects.empty()) {
    from.showSelection();
    return moved;
  }
  from.selection_.selectNone();
  from.refresh(moved.objects);
  selection_.selectNone();
  for (const ObjectId& id : moved.objects) selection_.select(id);
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

Added WorkspaceEditor::add(std::vector<clsShortcut> shortcuts, const Point<Twips>* at,
                           Panel panel) {
  const UndoStep step(document_, L"add");
  Point<Twips> from{kPad, kPad + (panel.isMain() ? scene_.scroll() : kTitleStripHeight)};
  if (at != nullptr) {
    panel = scene_.panelAt(*at);
    from = scene_.toPanel(panel, *at);
  }
  const PanelMeasures m = measures();
  Added added =
      addShortcuts(document_.workspace, document_.settings, std::move(shortcuts), panel, from,
                   [&](Panel on, const clsShortcut& s, Point<Twips> start) {
                     return freePlaceFrom(document_.workspace, m, on, m.shortcutSize(s), start);
                   });
  selection_.selectNone();
  for (const ShortcutSlot slot : added.slots) selection_.select(slot);
  refresh({added.slots.begin(), added.slots.end()});
  return added;
}

void WorkspaceEditor::markDrop(Point<Twips> pointer) {
  const Panel panel = dropPanel(pointer);
  markDrop(panel.isMain() ? NodeId{ControlKind::picBack, 0} : containerNode(panel.container));
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
