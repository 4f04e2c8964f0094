// Selecting, dragging, dropping, pasting and deleting on a pane.

#include "containers/removal.h"
#include "platform/msg_box.h"
#include "shortcuts/tags.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/held_keys.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

// While a dialog is open nothing is taken in; this looks whether it still is.
constexpr UINT kDropDelay = 250;  // ms

Point<Twips> distanceOf(const GestureEvent& event, Density density) {
  return {density.toTwips(event.now.x - event.start.x),
          density.toTwips(event.now.y - event.start.y)};
}

}  // namespace

void WorkspacePane::onGesture(const GestureEvent& event) {
  switch (event.kind) {
    case GestureKind::MoveBar:
      return owner_.moveWindow(event);
    case GestureKind::MoveObjects:
      return moveObjects(event);
    case GestureKind::MoveContainers:
      return moveContainers(event);
    case GestureKind::Resize:
      return resizeObject(event);
    case GestureKind::DrawContainer:
      return drawContainer(event);
    case GestureKind::ScrollNote:
      return scrollNoteBy(event);
    case GestureKind::DragFiles:
      if (event.phase == GesturePhase::Begin) dragFiles(event.node);
      return;
    case GestureKind::RubberBand:
      if (event.phase == GesturePhase::Begin || event.phase == GesturePhase::Update)
        editor_.band(toScene(event.start), toScene(event.now));
      else
        editor_.endBand();
      return view_.invalidate();
    default:
      return;
  }
}

void WorkspacePane::moveObjects(const GestureEvent& event) {
  const Point<Twips> distance = distanceOf(event, view_.density());
  switch (event.phase) {
    case GesturePhase::Begin:
      editor_.beginDrag();
      [[fallthrough]];
    case GesturePhase::Update: {
      editor_.drag(distance);
      const bool welcome = dragTrail_.moveTo({event.now.x.value, event.now.y.value});
      // Beyond our windows nothing can be painted; there the cursor tells.
      SetCursor(LoadCursorW(nullptr, welcome ? IDC_ARROW : IDC_NO));
      break;
    }
    case GesturePhase::Cancel:
      dragTrail_.end();
      editor_.cancelDrag();
      break;
    case GesturePhase::End:
      dragTrail_.end();
      dropObjects(event);
      break;
  }
  view_.invalidate();
}

// On nothing of ours there is nowhere to put them: they stay where they were.
void WorkspacePane::dropObjects(const GestureEvent& event) {
  WorkspacePane* target = owner_.paneAt({event.now.x.value, event.now.y.value});
  if (target == nullptr) return editor_.cancelDrag();
  if (target != this) {
    const Moved moved = target->editor_.take(editor_, target->toScene(event.now));
    sceneChanged();
    return target->finishMove(moved);
  }
  const Point<Twips> pointer = toScene(event.now);
  const ShortcutSlot other = editor_.openWithTarget(pointer);
  const std::vector<ShortcutSlot> selected = editor_.selection().shortcuts();
  if (!other.none() && !selected.empty()) {
    const ShortcutSlot dragged = selected.front();
    editor_.cancelDrag();
    view_.invalidate();
    return openWith(dragged, other);
  }
  finishMove(editor_.drop(distanceOf(event, view_.density()), pointer));
}

void WorkspacePane::draggedOver(POINT screen) {
  owner_.draggedOver(screen);
  editor_.markDrop(toScene({{screen.x}, {screen.y}}));
  view_.invalidate();
}

void WorkspacePane::dragLeft() {
  editor_.unmarkDrop();
  owner_.dragLeft();
  view_.invalidate();
}

bool WorkspacePane::isOutside(Point<Pixels> screen) const {
  RECT r{};
  GetWindowRect(window_, &r);
  return !PtInRect(&r, {screen.x.value, screen.y.value});
}

void WorkspacePane::moveContainers(const GestureEvent& event) {
  const Point<Twips> distance = distanceOf(event, view_.density());
  switch (event.phase) {
    case GesturePhase::Begin:
      editor_.beginContainerDrag();
      [[fallthrough]];
    case GesturePhase::Update:
      editor_.dragContainers(distance);
      // Beyond the window nothing can be painted; the cursor tells that it goes along.
      SetCursor(LoadCursorW(nullptr, isOutside(event.now) ? IDC_SIZEALL : IDC_ARROW));
      break;
    case GesturePhase::Cancel:
      editor_.cancelDrag();
      break;
    case GesturePhase::End: {
      const POINT screen{event.now.x.value, event.now.y.value};
      const std::vector<ContainerSlot> slots = editor_.selectedContainers();
      if (!isOutside(event.now)) {
        finishMove(editor_.dropContainers(distance));
        break;
      }
      owner_.draggedOut(slots, screen);
      editor_.cancelDrag();
      break;
    }
  }
  view_.invalidate();
}

void WorkspacePane::resizeObject(const GestureEvent& event) {
  switch (event.phase) {
    case GesturePhase::Begin:
      editor_.beginResize(event.node, toScene(event.start));
      [[fallthrough]];
    case GesturePhase::Update:
      editor_.resize(distanceOf(event, view_.density()), heldModifiers().shift);
      break;
    case GesturePhase::Cancel:
      editor_.cancelResize();
      break;
    case GesturePhase::End:
      if (!editor_.endResize()) break;
      sceneChanged();
      owner_.workspaceChanged();
      break;
  }
  view_.invalidate();
}

void WorkspacePane::drawContainer(const GestureEvent& event) {
  const Point<Twips> from = toScene(event.start);
  const Point<Twips> to = toScene(event.now);
  if (event.phase == GesturePhase::Begin || event.phase == GesturePhase::Update) {
    editor_.showDrawn(from, to);
    return view_.invalidate();
  }
  endDrawing(editor_.drawn(from, to), event.phase == GesturePhase::End);
}

void WorkspacePane::endDrawing(const TwipsRect& rect, bool add) {
  owner_.drawModeEnded();
  if (add) {
    clsContainer container;
    container.name = L"Container";
    addContainer(std::move(container), rect);
  }
  view_.invalidate();
}

void WorkspacePane::openWith(ShortcutSlot dragged, ShortcutSlot target) {
  const clsShortcut* one = desk_.document.workspace.shortcuts.find(dragged);
  const clsShortcut* other = desk_.document.workspace.shortcuts.find(target);
  if (one == nullptr || other == nullptr) return;
  OpenWith(desk_.platform, owner_, clsShortcut(*one), clsShortcut(*other));
}

void WorkspacePane::finishMove(const Moved& moved) {
  view_.invalidate();
  if (moved.refusal != nullptr)
    desk_.platform.msgBox.show(moved.refusal, kMsgOkOnly | kMsgExclamation, kProgramTitle);
  if (moved.objects.empty()) return;
  // What came into a container that shows one tag only may not carry it.
  for (const ShortcutSlot changed : applyTagFilters(desk_.document.workspace))
    editor_.shortcutChanged(changed);
  announce(window_, kEventSceneChanged);
  owner_.workspaceChanged();
}

bool WorkspacePane::refuseWhileLocked(const std::wstring& error) {
  if (!desk_.settings.locked) return false;
  desk_.platform.msgBox.show(error.empty() ? kLockedMessage : error, kMsgOkOnly | kMsgExclamation,
                             kProgramTitle);
  return true;
}

void WorkspacePane::takeDropped(Dropped dropped, const Point<Twips>* at) {
  takeDropped(std::move(dropped), at, scene_.homePanel());
}

void WorkspacePane::takeDropped(Dropped dropped, const Point<Twips>* at, Panel panel) {
  if (refuseWhileLocked()) return;
  PendingDrop drop{
      DropReading::begin(std::move(dropped), desk_.settings.extractURLs, window_, kMsgDropped)};
  drop.panel = panel;
  if (at != nullptr) drop.at = *at;
  const bool ready = drop.reading->wait(DropReading::kMoment);
  pendingDrops_.push_back(std::move(drop));
  if (ready) takePendingDrops();
}

// Into the container whose menu it was chosen from. A folder takes files.
void WorkspacePane::paste() {
  const ContainerSlot slot = menuContainer_;
  if (!desk_.document.workspace.containers.contains(slot))
    return takeDropped(readClipboard(), nullptr);
  if (desk_.folders == nullptr || !desk_.folders->paste(slot))
    takeDropped(readClipboard(), nullptr, {slot});
}

void WorkspacePane::addShortcuts(std::vector<clsShortcut> shortcuts, const Point<Twips>* at,
                                 Panel panel, std::wstring refusal) {
  const Added added = editor_.add(std::move(shortcuts), at, panel);
  if (added.refusal != nullptr) refusal = added.refusal;
  if (!added.slots.empty()) {
    scene_.scrollToShow(shortcutNode(added.slots.front()));
    view_.focus(shortcutNode(added.slots.front()));
    announce(window_, kEventSceneChanged);
  }
  view_.invalidate();
  if (!added.slots.empty()) owner_.workspaceChanged();
  if (!refusal.empty())
    desk_.platform.msgBox.show(refusal, kMsgOkOnly | kMsgExclamation, kProgramTitle);
}

bool WorkspacePane::dropIsWelcome(POINT screen) {
  // While files are dragged out of here there is nothing that a drop could disturb.
  const bool busy = desk_.modal.active() && !draggingFiles();
  if (busy || desk_.settings.locked) return false;
  // Also over what takes nothing: a bar or another window may have to come out.
  draggedOver(screen);
  const Panel panel = scene_.panelAt(toScene({{screen.x}, {screen.y}}));
  const clsContainer* container = desk_.document.workspace.containers.find(panel.container);
  // A folder judges for itself.
  const bool isFolder = container != nullptr && containerType(*container) == ContainerType::Folder;
  if (!isFolder && dropRefusal(desk_.document.workspace, desk_.settings, panel)) {
    editor_.unmarkDrop();
    return false;
  }
  return true;
}

// The source waits for the answer: what may ask the user comes after it. Some sources
// delete links that they have made for the drop, which are read before that.
bool WorkspacePane::acceptDrop(POINT screen, const Dropped& dropped) {
  if (!mayBecomeShortcuts(dropped)) return false;
  pendingDrops_.push_back(
      {DropReading::begin(dropped, desk_.settings.extractURLs, window_, kMsgDropped),
       toScene({{screen.x}, {screen.y}}), scene_.homePanel()});
  pendingDrops_.back().reading->wait(DropReading::kMoment);
  return true;
}

void WorkspacePane::takePendingDrops() {
  KillTimer(window_, kDropTimer);
  if (pendingDrops_.empty()) return;
  if (desk_.modal.active()) {
    SetTimer(window_, kDropTimer, kDropDelay, nullptr);
    return;
  }
  std::vector<PendingDrop> ready;
  std::erase_if(pendingDrops_, [&](const PendingDrop& drop) {
    if (!drop.reading->wait(0)) return false;
    ready.push_back(drop);
    return true;
  });
  for (const PendingDrop& drop : ready) {
    DropRecords records = drop.reading->take();
    if (refuseWhileLocked()) continue;
    if (!records.note.empty() && scene_.homePanel().isMain())
      offerNote(records.note);
    else
      addShortcuts(std::move(records.shortcuts), drop.at ? &*drop.at : nullptr, drop.panel,
                   std::move(records.refusal));
  }
}

void WorkspacePane::deleteSelected() {
  menuContainer_ = {};
  // All is asked before anything goes, so that it comes back together.
  std::vector<ContainerSlot> containers = editor_.selectedContainers();
  if (!containers.empty() &&
      !confirmRemoval(desk_.settings, desk_.platform.msgBox, desk_.document.workspace, containers))
    containers.clear();
  DeletePlan plan = editor_.planDelete(containers);
  if (!plan.question.empty() &&
      desk_.platform.msgBox.show(plan.question, kMsgYesNo | kMsgExclamation, kProgramTitle) !=
          kMsgAnswerYes)
    plan = {};
  remove(containers, plan);
}

void WorkspacePane::remove(const std::vector<ContainerSlot>& containers, const DeletePlan& plan) {
  if (containers.empty() && plan.empty()) return;
  // What is typed into a note must not reach the next container of its slot.
  endEditing();
  if (!containers.empty()) owner_.removing(containers);
  {
    const UndoStep step(desk_.document, L"delete");
    if (!containers.empty()) editor_.removeContainers(containers);
    editor_.carryOut(plan);
  }
  if (!plan.files.empty() && desk_.folders != nullptr) desk_.folders->recycleUnasked(plan.files);
  scene_.scrollTo(scene_.scroll());
  menuContainer_ = {};
  sceneChanged();
  owner_.workspaceChanged();
}

void WorkspacePane::setTagFilter(ContainerSlot slot, const std::wstring& tag) {
  clsContainer* container = desk_.document.workspace.containers.find(slot);
  if (container == nullptr) return;
  container->ShowingTag = tag;
  for (const ShortcutSlot changed : applyTagFilter(desk_.document.workspace, {slot}))
    editor_.shortcutChanged(changed);
  scene_.updateContainer(slot);
  view_.invalidate();
  announce(window_, kEventSceneChanged);
  owner_.workspaceChanged();
}

}  // namespace varnowick
