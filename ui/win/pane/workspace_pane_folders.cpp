// What a pane hands on to the folder containers that are shown on it.

#include "containers/folder_path.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/held_keys.h"

namespace varnowick {
namespace {

constexpr Size<Twips> kNewFolder{{3600}, {3000}};

}  // namespace

void WorkspacePane::attachFolders() {
  FolderContainers* folders = desk_.folders;
  if (folders == nullptr) return;
  scene_.setContentLayout([folders](ContainerSlot slot) { folders->laidOut(slot); });
  folders->attach({&scene_, &view_, &owner_, &nameEdit_, &accessibleItems_, &dropTarget_, window_});
  desk_.document.workspace.containers.forEach(
      [folders](ContainerSlot slot, const clsContainer&) { folders->laidOut(slot); });
}

void WorkspacePane::detachFolders() {
  scene_.setContentLayout({});
  if (desk_.folders != nullptr) desk_.folders->detach(window_);
}

bool WorkspacePane::pressedFolder(NodeId node) {
  if (desk_.folders == nullptr) return false;
  if (!desk_.folders->pressed(node, heldModifiers())) {
    // What keys do from now on must not be done to files.
    if (!folderContainerOf(view_.input().focused()).none()) view_.focus({});
    return false;
  }
  // There is one selection for the keys to act on.
  editor_.selectNone();
  return true;
}

bool WorkspacePane::releasedFolder(NodeId node, bool click) {
  return desk_.folders != nullptr && desk_.folders->released(node, click);
}

void WorkspacePane::dragFiles(NodeId node) {
  gestures_.cancel();
  view_.captureLost();
  ReleaseCapture();
  desk_.folders->drag(node);
}

bool WorkspacePane::canDragFiles(NodeId node) const {
  return desk_.folders != nullptr && desk_.folders->canDrag(node);
}

bool WorkspacePane::clickedFolder(NodeId node) {
  return desk_.folders != nullptr && desk_.folders->clicked(node, clicks_.second());
}

bool WorkspacePane::openFile(NodeId node) {
  return desk_.folders != nullptr && desk_.folders->open(node);
}

bool WorkspacePane::folderMenu(NodeId node, POINT screen) {
  return desk_.folders != nullptr && desk_.folders->contextMenu(node, screen);
}

NodeId WorkspacePane::currentOf(NodeId node) const {
  return desk_.folders == nullptr ? node : desk_.folders->currentRow(node);
}

bool WorkspacePane::wheelOverFolder(POINT screen, int delta) {
  if (desk_.folders == nullptr) return false;
  const NodeId node = scene_.scene().hitTest(toScene({{screen.x}, {screen.y}}));
  return desk_.folders->wheel(node, delta);
}

bool WorkspacePane::keyInFolder(Key key) {
  return desk_.folders != nullptr && !current().files.none() &&
         desk_.folders->keyDown(view_.input().focused(), key);
}

bool WorkspacePane::typedInFolder(wchar_t letter) {
  return desk_.folders != nullptr && desk_.folders->typed(view_.input().focused(), letter);
}

std::optional<DWORD> WorkspacePane::folderDropEffect(POINT screen, IDataObject& data, DWORD keys,
                                                     DWORD allowed) {
  if (desk_.folders == nullptr) return std::nullopt;
  const Point<Twips> at = toScene({{screen.x}, {screen.y}});
  const NodeId node = scene_.scene().hitTest(at);
  const auto effect =
      desk_.folders->dropEffect(scene_.panelAt(at).container, node, data, keys, allowed);
  if (!effect) return effect;
  const NodeId row = desk_.folders->dropRow(node);
  if (*effect == DROPEFFECT_NONE)
    editor_.unmarkDrop();
  else if (!row.none())
    editor_.markDrop(row);
  return effect;
}

DWORD WorkspacePane::dropOnFolder(POINT screen, IDataObject& data, DWORD effect) {
  const Point<Twips> at = toScene({{screen.x}, {screen.y}});
  return desk_.folders->drop(scene_.panelAt(at).container, scene_.scene().hitTest(at), data,
                             effect);
}

// A container for a folder that the user chooses; on a window without a main panel
// it is left to the owner.
bool WorkspacePane::newFolderContainer() {
  if (scene_.scene().find({ControlKind::picBack, 0}) == nullptr) return false;
  std::optional<std::wstring> path;
  {
    const ModalDepth::Scope scope(desk_.modal);
    path = browseForFolder(window_, L"Folder to show in a container");
  }
  if (!path) return true;
  clsContainer container;
  container.name = tidyCaption(nameOf(*path));
  container.CopyPath = *path;
  const ContainerSlot slot =
      editor_.addContainer(std::move(container), editor_.freePlace(kNewFolder));
  scene_.scrollToShow(containerNode(slot));
  sceneChanged();
  owner_.workspaceChanged();
  return true;
}

bool WorkspacePane::draggingFiles() const {
  return desk_.folders != nullptr && desk_.folders->dragging();
}

}  // namespace varnowick
