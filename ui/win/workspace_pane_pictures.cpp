// New pictures on a pane.

#include "containers/picture_size.h"
#include "platform/msg_box.h"
#include "ui/scene/metrics.h"
#include "ui/win/browse.h"
#include "ui/win/picture_decoder.h"
#include "ui/win/workspace_pane.h"

namespace varnowick {

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

}  // namespace varnowick
