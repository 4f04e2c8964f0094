// What the main window does with containers that are, or are to be, in windows of
// their own.

#include "platform/msg_box.h"
#include "platform/screen.h"
#include "ui/win/bar/frm_main.h"

namespace varnowick {
namespace {

// The rows of "A&ttach...", by the slot of the container.

}  // namespace

DetachedWindows::Hooks frmMain::detachedHooks() {
  return {.busyElsewhere = [this] { return busyElsewhere(); },
          .barChanged =
              [this](const std::vector<ContainerSlot>& slots) {
                for (const ContainerSlot slot : slots) containers_.rules().removed(slot);
                rebuildScene();
              },
          .workspaceChanged = [this] { workspaceChanged(); },
          .changeSettings = [this](const SettingsChange& change) { changeSettings(change); },
          .removeContainer =
              [this](ContainerSlot slot) {
                containers_.rules().removed(slot);
                pane_.editor().removeContainers({slot});
                pane_.sceneChanged();
              },
          .shortcutStarted = [this](ShortcutSlot slot) { extras_.countStart(slot); },
          .runCommand = [this](Command command) { return runOwn(command); },
          .boxOnScreen =
              [this](ContainerSlot slot) {
                const PixelRect r = pane_.view().toClient(containerNode(slot));
                POINT at{r.left.value, r.top.value};
                ClientToScreen(handle(), &at);
                const Density d = platform_.monitors.density();
                const clsContainer* c = document_.workspace.containers.find(slot);
                const Size<Twips> size = c == nullptr ? Size<Twips>{} : c->savedRect.size();
                return TwipsRect{d.toTwips(Pixels{static_cast<int>(at.x)}),
                                 d.toTwips(Pixels{static_cast<int>(at.y)}), size.width,
                                 size.height};
              },
          .barOnScreen = [this] { return docking_.rect(); },
          .paneAt = [this](POINT screen) { return paneAt(screen); },
          .dragStop = [this](HWND window) { return dragStop(window); },
          .sweepSoon = [this] { PostMessageW(handle(), kMsgSweep, 0, 0); }};
}

// "&Detach"; by drag with the place of the pointer.
void frmMain::detachContainers(const std::vector<ContainerSlot>& slots,
                               std::optional<Point<Pixels>> at) {
  pane_.endEditing();
  detached_.detach(slots, at);
}

void frmMain::mnuDetachContainer() {
  const Detachable selected = detachable(document_.workspace, pane_.editor().selection());
  // A container's own menu is about that container, whatever is selected besides.
  const bool fromSelection = pane_.menuContainer().none();
  if (fromSelection && selected.refusal != nullptr) {
    platform_.msgBox.show(selected.refusal, kMsgOkOnly | kMsgExclamation, kProgramTitle);
    return detachContainers(selected.containers, std::nullopt);
  }
  detachContainers(pane_.targetContainers(), std::nullopt);
}

void frmMain::draggedOut(const std::vector<ContainerSlot>& slots, POINT screen) {
  if (!document_.settings.dragToDetach) return;
  detachContainers(slots,
                   Point<Pixels>{{static_cast<int>(screen.x)}, {static_cast<int>(screen.y)}});
}

WorkspacePane* frmMain::paneAt(POINT screen) {
  const HWND window = DragTrail::windowAt(screen);
  return window == handle() ? &pane_ : detached_.paneOf(window);
}

DragStop* frmMain::dragStop(HWND window) {
  if (window == nullptr) return nullptr;
  return window == handle() ? &pane_ : detached_.dragStopOf(window);
}

void frmMain::completeMenu(MenuId, std::vector<MenuItem>& items) {
  // The hotkey collapses the bar as well, and may be a stand-in for the stored one.
  for (MenuItem& item : items)
    if (item.command == Command::mnuDockNow) item.key = extras_.hotkeyName();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].command != Command::mnuAttach) continue;
    items[i].command = Command::None;
    const int depth = items[i].depth + 1;
    std::vector<MenuItem> rows;
    for (const DetachedWindows::Row& row : detached_.rows())
      rows.push_back({.depth = depth,
                      .caption = row.lblName.empty() ? L"(no name)" : menuText(row.lblName),
                      .act = [this, slot = row.slot] { detached_.attach(slot); }});
    if (rows.empty())
      rows.push_back({.depth = depth, .caption = kNoDetachedContainers, .enabled = false});
    items.insert(items.begin() + static_cast<std::ptrdiff_t>(i) + 1, rows.begin(), rows.end());
    return;
  }
}

void frmMain::startMatch(const JumpTarget& target) {
  switch (target.kind()) {
    case JumpKind::Shortcut:
      return pane_.launch(target.shortcut);
    case JumpKind::Container:
      return showMatch(target);
    case JumpKind::File:
      return folders_.openFile(target.container, target.file, *this);
  }
}

WorkspacePane& frmMain::paneWith(ShortcutSlot slot) {
  const clsShortcut* shortcut = document_.workspace.shortcuts.find(slot);
  frmContainer* window = shortcut == nullptr ? nullptr : detached_.find(shortcut->parent.container);
  return window == nullptr ? pane_ : window->pane();
}

// Where it is to be seen: here, or in a window of its own.
void frmMain::showMatch(const JumpTarget& target) {
  if (target.kind() == JumpKind::Shortcut) return showShortcut(target.shortcut);
  openContainer(target.container);
  frmContainer* window = detached_.find(target.container);
  WorkspacePane& pane = window == nullptr ? pane_ : window->pane();
  if (window == nullptr) workspaceScene_.scrollToShow(containerNode(target.container));
  const bool file = target.kind() == JumpKind::File;
  if (file)
    pane.editor().selectNone();
  else if (window == nullptr)
    pane.editor().selectOnly(target.container);
  pane.view().focus(containerPart(ControlKind::ContainerLabel, target.container));
  if (file) folders_.showFile(target.container, target.file);
  pane.view().invalidate();
}

// Unfolds or expands it; in a window of its own that comes out.
void frmMain::openContainer(ContainerSlot slot) {
  if (frmContainer* window = detached_.find(slot)) return window->Undock(false);
  const clsContainer* container = document_.workspace.containers.find(slot);
  if (container == nullptr || !container->visible) return;
  ContainerRules& rules = containers_.rules();
  containers_.apply(rules.keepOpen());
  if (container->shrunk)
    containers_.apply(
        rules.ShrinkExpand(containers_.inputs(), slot, kSyntheticClick.x, kSyntheticClick.y));
  else if (container->folded)
    containers_.apply(rules.lblFoldUnfold_Click(containers_.inputs(), slot));
}

void frmMain::showShortcut(ShortcutSlot slot) {
  const clsShortcut* shortcut = document_.workspace.shortcuts.find(slot);
  if (shortcut == nullptr) return;
  openContainer(shortcut->parent.container);
  frmContainer* window = detached_.find(shortcut->parent.container);
  (window == nullptr ? pane_ : window->pane()).showShortcut(slot);
}

}  // namespace varnowick
