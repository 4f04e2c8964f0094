#include "ui/scene/workspace_editor.h"

#include <algorithm>
#include <cmath>

#include "shortcuts/tags.h"
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

std::optional<ObjectId> WorkspaceEditor::objectOf(NodeId node) const {
  if (const ShortcutSlot slot = shortcutOf(node); !slot.none()) return slot;
  if (const PictureSlot slot = pictureOf(node); !slot.none()) return slot;
  const bool handle =
      node.kind == ControlKind::ContainerLabel || node.kind == ControlKind::ContainerIcon;
  if (handle && hasMainPanel()) return containerOf(node);
  return std::nullopt;
}

NodeId WorkspaceEditor::nodeOf(ObjectId id) const {
  return std::visit(Overloaded{[](ShortcutSlot s) { return shortcutNode(s); },
                               [](PictureSlot s) { return pictureNode(s); },
                               [](ContainerSlot s) { return containerNode(s); }},
                    id);
}

void WorkspaceEditor::refresh(const std::vector<ObjectId>& objects) {
  for (const ObjectId id : objects)
    std::visit(Overloaded{[this](ShortcutSlot s) { scene_.updateShortcut(s); },
                          [this](PictureSlot s) { scene_.updatePicture(s); },
                          [this](ContainerSlot s) { scene_.updateContainer(s); }},
               id);
  scene_.scrollTo(scene_.scroll());
  showSelection();
}

void WorkspaceEditor::showSelection() {
  for (const NodeId id : shownSelected_)
    if (Node* node = scene_.scene().find(id)) node->selected = false;
  shownSelected_.clear();
  for (const ObjectId id : selection_.objects()) {
    shownSelected_.push_back(nodeOf(id));
    if (Node* node = scene_.scene().find(shownSelected_.back())) node->selected = true;
  }
}

void WorkspaceEditor::sceneRebuilt() {
  selection_.prune(document_.workspace);
  // What another window shows now is no longer this one's to delete.
  for (const ObjectId id : std::set<ObjectId>(selection_.objects()))
    if (!scene_.scene().shown(nodeOf(id))) selection_.unselect(id);
  showSelection();
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
  if (const auto object = objectOf(node)) {
    selection_.press(*object, ctrl);
  } else if (node.kind == ControlKind::picBack || node.kind == ControlKind::ContainerFrame) {
    selection_.pressPanel(ctrl);
    bandPanel_ = {containerOf(node)};
  } else {
    return;
  }
  showSelection();
}

void WorkspaceEditor::released(NodeId node, bool ctrl, bool dragged) {
  if (const auto object = objectOf(node)) selection_.release(*object, ctrl, dragged);
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
  Moved moved = moveSelection(document_.workspace, document_.settings, measures(),
                              {selection_, distance, &target}, undo_);
  refresh(moved.objects);
  return moved;
}

void WorkspaceEditor::cancelDrag() { endDrag(); }

Moved WorkspaceEditor::take(WorkspaceEditor& from, Point<Twips> at) {
  const Panel panel = scene_.panelAt(at);
  Moved moved = moveToPanel(document_.workspace, document_.settings, measures(), from.selection_,
                            panel, scene_.toPanel(panel, at), undo_);
  if (moved.objects.empty()) return moved;
  from.selection_.selectNone();
  from.refresh(moved.objects);
  selection_.selectNone();
  for (const ObjectId& id : moved.objects) selection_.select(id);
  refresh(moved.objects);
  return moved;
}

// Puts what was dragged back under its panel, where its record says.
void WorkspaceEditor::endDrag() {
  unmarkDrop();
  std::vector<ObjectId> back;
  for (const Dragged& dragged : dragged_) back.push_back(dragged.id);
  dragged_.clear();
  refresh(back);
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
  const clsShortcut* current = document_.workspace.shortcuts.find(selection_.current());
  selection_.selectAll(document_.workspace,
                       current == nullptr ? scene_.homePanel() : current->parent);
  showSelection();
}

void WorkspaceEditor::selectNone() {
  selection_.selectNone();
  showSelection();
}

void WorkspaceEditor::selectOnly(ShortcutSlot slot) {
  selection_.selectNone();
  selection_.select(slot);
  showSelection();
}

Moved WorkspaceEditor::sortByName(Panel panel) {
  Moved moved =
      varnowick::sortByName(document_.workspace, document_.settings, measures(), panel, undo_);
  refresh(moved.objects);
  return moved;
}

Moved WorkspaceEditor::align() {
  Moved moved =
      alignSelection(document_.workspace, document_.settings, measures(), selection_, undo_);
  for (const ObjectId& id : moved.objects)
    if (const auto* slot = std::get_if<ContainerSlot>(&id))
      settle(document_.workspace.containers[*slot]);
  refresh(moved.objects);
  return moved;
}

bool WorkspaceEditor::undo() {
  if (document_.settings.locked) return false;
  std::vector<ObjectId> back = undo_.undo(document_.workspace);
  if (back.empty()) return false;
  // What comes back from a container that shows one tag only is hidden by it no
  // more.
  for (const ShortcutSlot slot : applyTagFilters(document_.workspace)) back.emplace_back(slot);
  // The place that a container has come back to is its own.
  for (const ObjectId& id : back)
    if (const auto* slot = std::get_if<ContainerSlot>(&id))
      settle(document_.workspace.containers[*slot]);
  refresh(back);
  return true;
}

DeletePlan WorkspaceEditor::planDelete() const {
  return varnowick::planDelete(document_.workspace, selection_, document_.settings);
}

void WorkspaceEditor::carryOut(const DeletePlan& plan) {
  applyDelete(document_.workspace, plan, selection_, undo_);
  std::vector<ObjectId> gone(plan.shortcuts.begin(), plan.shortcuts.end());
  gone.insert(gone.end(), plan.pictures.begin(), plan.pictures.end());
  refresh(gone);
}

Added WorkspaceEditor::add(std::vector<clsShortcut> shortcuts, const Point<Twips>* at) {
  Panel panel = scene_.homePanel();
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
  Scene& scene = scene_.scene();
  Node& mark = scene.create(kDropMark, scene.root());
  mark.hitTarget = false;
  mark.rect = scene.seenRect(panel.isMain() ? NodeId{ControlKind::picBack, 0}
                                            : containerNode(panel.container));
  scene.raise(kDropMark);
}

void WorkspaceEditor::unmarkDrop() { scene_.scene().remove(kDropMark); }

void WorkspaceEditor::shortcutChanged(ShortcutSlot slot) { refresh({slot}); }

}  // namespace varnowick
