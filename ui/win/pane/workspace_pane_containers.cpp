// The commands of a pane that are about containers.

#include <algorithm>

#include "containers/colours.h"
#include "containers/removal.h"
#include "platform/msg_box.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/dialogs/frm_con_colors.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {

std::vector<ContainerSlot> WorkspacePane::targetContainers() const {
  const SlotTable<clsContainer, ContainerSlot>& table = desk_.document.workspace.containers;
  std::vector<ContainerSlot> slots = editor_.selectedContainers();
  if (!menuContainer_.none() && !editor_.selection().contains(menuContainer_))
    slots = {menuContainer_};
  if (slots.empty())
    if (const auto object = current().object)
      if (const auto* slot = std::get_if<ContainerSlot>(&*object)) slots = {*slot};
  std::erase_if(slots, [&](ContainerSlot slot) { return !table.contains(slot); });
  return slots;
}

void WorkspacePane::containersChanged(const std::vector<ContainerSlot>& slots) {
  for (const ContainerSlot slot : slots) scene_.updateContainer(slot);
  scene_.scrollTo(scene_.scroll());
  arrangeEditing();
  refresh();
}

ContainerSlot WorkspacePane::addContainer(clsContainer container, const TwipsRect& rect) {
  const ContainerSlot slot = editor_.addContainer(std::move(container), rect);
  if (slot.none()) return {};
  scene_.scrollToShow(containerNode(slot));
  sceneChanged();
  owner_.workspaceChanged();
  rename(slot);
  return slot;
}

void WorkspacePane::rename(ContainerSlot slot) {
  const clsContainer* container = desk_.document.workspace.containers.find(slot);
  if (container == nullptr || refuseWhileLocked()) return;
  owner_.keepOpen();
  // A tile shows no name; it can be renamed once it is open.
  const NodeId title = containerPart(ControlKind::ContainerLabel, slot);
  scene_.scrollToShow(title);
  nameEdit_.begin({.node = title,
                   .text = container->name,
                   .bold = true,
                   .accessibleName = L"Name of the container",
                   .accepted = [this, slot](std::wstring name) {
                     clsContainer* renamed = desk_.document.workspace.containers.find(slot);
                     if (renamed == nullptr) return;
                     {
                       const UndoStep step(desk_.document, L"rename");
                       renamed->name = tidyCaption(name);
                     }
                     containersChanged({slot});
                     owner_.keepOpen();
                     owner_.workspaceChanged();
                   }});
}

bool WorkspacePane::runForContainers(Command command) {
  const std::vector<ContainerSlot> slots = targetContainers();
  if (slots.empty()) return false;
  Workspace& workspace = desk_.document.workspace;
  switch (command) {
    case Command::mnuConRename:
      rename(slots.front());
      return true;
    case Command::mnuConRemove:
      removeContainers();
      return true;
    case Command::mnuConColors:
      chooseColours();
      return true;
    case Command::mnuConIcon:
      chooseIcon();
      return true;
    case Command::mnuShowNote:
    case Command::mnuHideToolbar: {
      const CommandState state = commandState();
      for (const ContainerSlot slot : slots) {
        clsContainer& container = workspace.containers[slot];
        if (command == Command::mnuHideToolbar)
          container.HideToolbar = !state.toolbarHidden;
        else if (container.Detached)
          container.Detached_Note_Visible = !state.noteShown;
        else
          container.noteVisible = !state.noteShown;
      }
      containersChanged(slots);
      owner_.workspaceChanged();
      return true;
    }
    default:
      return false;
  }
}

void WorkspacePane::removeContainers() {
  const std::vector<ContainerSlot> slots = targetContainers();
  if (!slots.empty() &&
      confirmRemoval(desk_.settings, desk_.platform.msgBox, desk_.document.workspace, slots))
    remove(slots, {});
}

// The container of the menu, or the first one selected, shows what it comes to.
void WorkspacePane::chooseColours() {
  std::vector<ContainerSlot> slots = targetContainers();
  const bool ofMenu = std::find(slots.begin(), slots.end(), menuContainer_) != slots.end();
  const ContainerSlot shown = ofMenu ? menuContainer_ : slots.front();
  const clsContainer* container = desk_.document.workspace.containers.find(shown);
  if (container == nullptr) return;
  std::optional<frmConColors::Choice> choice;
  {
    const ModalDepth::Scope scope(desk_.modal);
    choice = frmConColors({container->name, ownColours(*container), usualColours(desk_.settings),
                           slots.size() > 1},
                          view_.palette(), desk_.fonts, view_.density(), desk_.platform.msgBox)
                 .choose(window_);
  }
  if (!choice) return;
  if (!choice->toAllSelected) slots = {shown};
  {
    const UndoStep step(desk_.document, L"colours");
    slots = applyColours(desk_.document.workspace, slots, choice->colours);
  }
  if (slots.empty()) return;
  containersChanged(slots);
  owner_.workspaceChanged();
}

void WorkspacePane::chooseIcon() {
  const std::vector<ContainerSlot> slots = targetContainers();
  std::optional<std::wstring> path;
  {
    const ModalDepth::Scope scope(desk_.modal);
    path = browseForFile(window_, {L"Icon of the container", kIconFilter},
                         desk_.document.workspace.containers[slots.front()].ShrinkPath);
  }
  if (!path) return;
  {
    const UndoStep step(desk_.document, L"icon");
    for (const ContainerSlot slot : slots)
      if (clsContainer* container = desk_.document.workspace.containers.find(slot))
        container->ShrinkPath = *path;
  }
  containersChanged(slots);
  owner_.workspaceChanged();
}

}  // namespace varnowick
