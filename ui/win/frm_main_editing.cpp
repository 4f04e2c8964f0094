// Selecting, dragging, dropping, pasting and deleting on the main window.

#include "platform/msg_box.h"
#include "shortcuts/tags.h"
#include "ui/win/frm_main.h"

namespace varnowick {
namespace {

std::wstring expandEnvironment(const std::wstring& text) {
  const DWORD length = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
  if (length == 0) return text;
  std::wstring expanded(length, L'\0');
  ExpandEnvironmentStringsW(text.c_str(), expanded.data(), length);
  expanded.resize(length - 1);
  return expanded;
}

}  // namespace

Point<Twips> frmMain::toScene(Point<Pixels> screen) const {
  POINT client{screen.x.value, screen.y.value};
  ScreenToClient(handle(), &client);
  return view_.toScene(client);
}

void frmMain::onGesture(const GestureEvent& event) {
  // A release that ends a drag or a selection starts nothing.
  launchSuppressed_ = event.kind != GestureKind::Click || event.ctrl;
  switch (event.kind) {
    case GestureKind::MoveBar:
      return moveBar(event);
    case GestureKind::MoveObjects:
      return moveObjects(event);
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

void frmMain::moveBar(const GestureEvent& event) {
  if (event.phase == GesturePhase::Begin) {
    RECT r{};
    GetWindowRect(handle(), &r);
    barOrigin_ = {r.left, r.top};
  }
  const bool cancelled = event.phase == GesturePhase::Cancel;
  const int dx = cancelled ? 0 : (event.now.x - event.start.x).value;
  const int dy = cancelled ? 0 : (event.now.y - event.start.y).value;
  SetWindowPos(handle(), nullptr, barOrigin_.x + dx, barOrigin_.y + dy, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (event.phase != GesturePhase::End) return;
  docking_.apply(docking_.rules().movedByUser(docking_.inputs()));
  relayout();
  workspaceChanged();
}

void frmMain::moveObjects(const GestureEvent& event) {
  const Density density = view_.density();
  const Point<Twips> distance{density.toTwips(event.now.x - event.start.x),
                              density.toTwips(event.now.y - event.start.y)};
  const Point<Twips> pointer = toScene(event.now);
  switch (event.phase) {
    case GesturePhase::Begin:
      editor_.beginDrag();
      [[fallthrough]];
    case GesturePhase::Update:
      editor_.drag(distance, pointer);
      break;
    case GesturePhase::Cancel:
      editor_.cancelDrag();
      break;
    case GesturePhase::End: {
      const ShortcutSlot target = editor_.openWithTarget(pointer);
      if (!target.none()) {
        const ShortcutSlot dragged = editor_.selection().current();
        editor_.cancelDrag();
        view_.invalidate();
        openWith(dragged, target);
        break;
      }
      finishMove(editor_.drop(distance, pointer));
      break;
    }
  }
  view_.invalidate();
}

void frmMain::openWith(ShortcutSlot dragged, ShortcutSlot target) {
  const clsShortcut* one = document_.workspace.shortcuts.find(dragged);
  const clsShortcut* other = document_.workspace.shortcuts.find(target);
  if (one == nullptr || other == nullptr) return;
  OpenWith(platform_, *this, clsShortcut(*one), clsShortcut(*other));
}

void frmMain::finishMove(const Moved& moved) {
  view_.invalidate();
  if (moved.refusal != nullptr)
    platform_.msgBox.show(moved.refusal, kMsgOkOnly | kMsgExclamation, kProgramTitle);
  if (moved.objects.empty()) return;
  // What came into a container that shows one tag only may not carry it.
  for (const ShortcutSlot changed : applyTagFilters(document_.workspace))
    editor_.shortcutChanged(changed);
  announce(handle(), kEventSceneChanged);
  workspaceChanged();
}

void frmMain::takeDropped(const Dropped& dropped, const Point<Twips>* at) {
  if (document_.settings.locked) {
    platform_.msgBox.show(kLockedMessage, kMsgOkOnly | kMsgExclamation, kProgramTitle);
    return;
  }
  DropRecords records = recordsFromDrop(dropped, document_.settings.extractURLs,
                                        {platform_.files, platform_.codec, &expandEnvironment});
  addShortcuts(std::move(records.shortcuts), at, records.refusal);
}

void frmMain::addShortcuts(std::vector<clsShortcut> shortcuts, const Point<Twips>* at,
                           std::wstring refusal) {
  const Added added = editor_.add(std::move(shortcuts), at);
  if (added.refusal != nullptr) refusal = added.refusal;
  if (!added.slots.empty()) {
    workspaceScene_.scrollToShow(shortcutNode(added.slots.front()));
    view_.focus(shortcutNode(added.slots.front()));
    announce(handle(), kEventSceneChanged);
  }
  view_.invalidate();
  if (!added.slots.empty()) workspaceChanged();
  if (!refusal.empty()) platform_.msgBox.show(refusal, kMsgOkOnly | kMsgExclamation, kProgramTitle);
}

bool frmMain::dropIsWelcome(POINT screen) {
  if (modal_.active() || document_.settings.locked) return false;
  docking_.draggedOver();
  editor_.markDrop(toScene({{screen.x}, {screen.y}}));
  view_.invalidate();
  return true;
}

// The source waits for the answer: what may ask the user comes after it.
bool frmMain::acceptDrop(POINT screen, const Dropped& dropped) {
  if (!mayBecomeShortcuts(dropped)) return false;
  pendingDrops_.push_back({dropped, toScene({{screen.x}, {screen.y}})});
  return PostMessageW(handle(), kMsgDropped, 0, 0) != FALSE;
}

void frmMain::takePendingDrops() {
  std::vector<PendingDrop> drops;
  drops.swap(pendingDrops_);
  for (const PendingDrop& drop : drops) takeDropped(drop.data, &drop.at);
}

void frmMain::deleteSelected() {
  const DeletePlan plan = editor_.planDelete();
  if (plan.empty()) return;
  if (plan.question != nullptr && platform_.msgBox.show(plan.question, kMsgYesNo | kMsgExclamation,
                                                        kProgramTitle) == kMsgAnswerNo)
    return;
  editor_.carryOut(plan);
  view_.invalidate();
  announce(handle(), kEventSceneChanged);
  workspaceChanged();
}

void frmMain::setTagFilter(ContainerSlot slot, const std::wstring& tag) {
  clsContainer* container = document_.workspace.containers.find(slot);
  if (container == nullptr) return;
  container->ShowingTag = tag;
  for (const ShortcutSlot changed : applyTagFilter(document_.workspace, {slot}))
    editor_.shortcutChanged(changed);
  workspaceScene_.updateContainer(slot);
  view_.invalidate();
  announce(handle(), kEventSceneChanged);
  workspaceChanged();
}

}  // namespace varnowick
