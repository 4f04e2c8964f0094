// Pictures on a pane: new ones, what they show, and how large.

#include "containers/picture_size.h"
#include "platform/msg_box.h"
#include "shortcuts/addresses.h"
#include "ui/scene/metrics.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/dialogs/frm_picture_properties.h"
#include "ui/win/images/picture_decoder.h"
#include "ui/win/pane/edit_record.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {}  // namespace

// The container that the menu is about, or that fills the window; else the main panel.
Panel WorkspacePane::panelForPicture() const {
  if (desk_.document.workspace.containers.contains(menuContainer_)) return {menuContainer_};
  const Scene& scene = scene_.scene();
  if (scene.find({ControlKind::picBack, 0}) != nullptr) return picBack;
  for (const NodeId id : scene.find(scene.root())->children)
    if (id.kind == ControlKind::Container) return {containerOf(id)};
  return picBack;
}

void WorkspacePane::addPicture() {
  const Panel panel = panelForPicture();
  std::optional<std::wstring> path;
  {
    const ModalDepth::Scope scope(desk_.modal);
    path = browseForFile(window_, {L"The picture to show", kPictureFilter});
  }
  if (!path) return;
  const auto natural = pictureSizeOf(*path);
  if (!natural) {
    desk_.platform.msgBox.show(L"This file is no picture that can be shown:\r\n\r\n" + *path,
                               kMsgOkOnly | kMsgExclamation, kProgramTitle);
    return;
  }
  Size<Twips> room = scene_.panelSize(panel);
  room.width -= kPad * 2;
  room.height -= kPad * 2 + (panel.isMain() ? Twips{} : kTitleStripHeight);
  clsPicture picture;
  picture.Path = *path;
  picture.parent = panel;
  picture.rect = editor_.freePlace(newPictureSize(*natural, view_.density(), room), panel);
  // It may have been shown before, with another content.
  desk_.images.forget({ImageRef::Source::PictureFile, *path});
  const PictureSlot slot = editor_.addPicture(picture);
  if (slot.none()) return;
  scene_.scrollTo(scene_.scroll());
  scene_.scrollToShow(pictureNode(slot));
  view_.focus(pictureNode(slot));
  sceneChanged();
  owner_.workspaceChanged();
}

PictureSlot WorkspacePane::currentPicture() const {
  const auto& objects = editor_.selection().objects();
  if (objects.size() != 1) return {};
  const auto* slot = std::get_if<PictureSlot>(&*objects.begin());
  return slot == nullptr ? PictureSlot{} : *slot;
}

// With the program of its kind, as a shortcut to the file would.
void WorkspacePane::openPicture(PictureSlot slot) {
  const clsPicture* picture = desk_.document.workspace.pictures.find(slot);
  if (picture == nullptr || clickGuard_.blocked()) return;
  const std::wstring path = picture->Path;
  const LaunchResult result = LaunchShortcut(desk_.platform, owner_, false, path, L"", path, false);
  if (result.outcome == LaunchOutcome::FailedFaulty) editPicture(slot, result.propertiesError);
  if (result.outcome == LaunchOutcome::Started) announce(window_, kEventLaunched);
}

bool WorkspacePane::pictureMenu(NodeId node, POINT screen) {
  const PictureSlot slot = pictureOf(node);
  const clsPicture* picture = desk_.document.workspace.pictures.find(slot);
  if (picture == nullptr) return false;
  if (owner_.busyElsewhere()) return true;
  // The menu is about the selection, which the picture under the mouse joins.
  if (!editor_.selection().contains(slot)) editor_.pressed(node, false);
  view_.focus(pictureNode(slot));
  view_.invalidate();
  const bool locked = desk_.settings.locked;
  const bool one = currentPicture() == slot;
  const auto openLocation = [this, slot] {
    const clsPicture* shown = desk_.document.workspace.pictures.find(slot);
    if (shown == nullptr) return;
    clsShortcut file;
    file.Path = shown->Path;
    OpenFileLocation(desk_.platform, owner_.mainWindow(), file, false);
  };
  const std::vector<MenuItem> items = {
      {.caption = L"&Open", .key = L"Enter", .act = [this, slot] { openPicture(slot); }},
      {.caption = L"Open file &location", .act = openLocation},
      {},
      {.caption = L"Ori&ginal size",
       .enabled = one && !locked,
       .act = [this, slot] { showInOriginalSize(slot); }},
      {.caption = L"&Delete",
       .key = L"Del",
       .enabled = !locked,
       .act = [this] { deleteSelected(); }},
      {},
      {.caption = L"&Properties", .key = L"F2", .enabled = one && !locked, .act = [this, slot] {
         editPicture(slot, L"");
       }}};
  owner_.hovered({}, {});
  runMenu(window_, desk_.modal, items, screen);
  return true;
}

void WorkspacePane::editPicture(PictureSlot slot, const std::wstring& error) {
  const auto& pictures = desk_.document.workspace.pictures;
  if (!pictures.contains(slot) || refuseWhileLocked(error)) return;
  const auto ask = [&](clsPicture& picture) {
    return frmPictureProperties(picture, view_.density(), error).edit(window_);
  };
  if (!editRecord(desk_, desk_.document.workspace.pictures, slot, ask)) return;
  // It may have been shown before, with another content.
  desk_.images.forget({ImageRef::Source::PictureFile, pictures.find(slot)->Path});
  pictureChanged(slot);
}

void WorkspacePane::showInOriginalSize(PictureSlot slot) {
  clsPicture* picture = desk_.document.workspace.pictures.find(slot);
  if (picture == nullptr || refuseWhileLocked()) return;
  // Looking may take as long as the network likes.
  if (isServerPath(picture->Path))
    return editPicture(slot, L"The size of a picture on another machine is not looked up.");
  const auto natural = pictureSizeOf(picture->Path);
  if (!natural) return editPicture(slot, L"This file is no picture that can be shown.");
  {
    const UndoStep step(desk_.document, L"size");
    constexpr Size<Twips> kAnyRoom{{150'000}, {150'000}};
    const Size<Twips> size = newPictureSize(*natural, view_.density(), kAnyRoom);
    picture->rect.width = size.width;
    picture->rect.height = size.height;
  }
  pictureChanged(slot);
}

void WorkspacePane::pictureChanged(PictureSlot slot) {
  scene_.updatePicture(slot);
  scene_.scrollTo(scene_.scroll());
  sceneChanged();
  owner_.workspaceChanged();
}

}  // namespace varnowick
