// The commands of a pane and its menus: rows from the tables, and the tags of a
// container.

#include "shortcuts/paths.h"
#include "shortcuts/tags.h"
#include "ui/scene/command_state.h"
#include "ui/win/dialogs/frm_shortcut_properties.h"
#include "ui/win/pane/edit_record.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

// Commands of menu rows that the tables do not have: tags, by their place in the
// list of the container's tags.
constexpr std::size_t kMostTagRows = 60;

class SystemForeground final : public ForegroundWindow {
 public:
  std::uintptr_t current() override {
    return reinterpret_cast<std::uintptr_t>(GetForegroundWindow());
  }
  void set(std::uintptr_t window) override { SetForegroundWindow(reinterpret_cast<HWND>(window)); }
};

}  // namespace

CommandState WorkspacePane::commandState() const {
  CommandState state =
      commandStateOf(desk_.document, editor_.selection(),
                     {scene_.homePanel(), currentShortcut(), menuContainer_, targetContainers()});
  state.canUndo = desk_.document.history.undoName() != nullptr;
  state.canRedo = desk_.document.history.redoName() != nullptr;
  state.canPaste = clipboardOffersDroppable();
  owner_.describeState(state);
  return state;
}

void WorkspacePane::addTagMenus(std::vector<MenuItem>& items) {
  const ContainerSlot slot = menuContainer_;
  const clsContainer* container = desk_.document.workspace.containers.find(slot);
  if (container == nullptr || !desk_.settings.showTags) return;
  std::vector<std::wstring> tags = allTags(desk_.document.workspace, Panel{slot});
  if (tags.size() > kMostTagRows) tags.resize(kMostTagRows);
  if (tags.empty()) return;
  items.push_back({});
  items.push_back({.caption = commandRow(Command::mnuStartAllWTag).caption});
  for (const std::wstring& tag : tags)
    items.push_back({.depth = 1, .caption = menuText(tag), .act = [this, tag] {
                       startMany([&](StartMany& start) { StartByTag(start, tag); });
                     }});
  items.push_back({.caption = L"S&how tag"});
  const auto addFilter = [&](const std::wstring& caption, const std::wstring& tag) {
    items.push_back({.depth = 1,
                     .caption = caption,
                     .checked = sameIgnoringCase(container->ShowingTag, tag),
                     .act = [this, slot, tag] { setTagFilter(slot, tag); }});
  };
  addFilter(L"&All", L"");
  for (const std::wstring& tag : tags) addFilter(menuText(tag), tag);
}

void WorkspacePane::showMenu(MenuId menu, const MenuPlace& place, ContainerSlot container) {
  if (owner_.busyElsewhere()) return;
  menuContainer_ = container;
  std::vector<MenuItem> items;
  for (const ShownMenuRow& row : shownMenu(menu, commandState())) {
    items.push_back({row.depth, row.caption, row.key, row.checked, row.enabled, row.command});
    if (row.command == Command::mnuStartAll)
      items.back().caption = startAllCaption(desk_.document.workspace, menuContainer_);
    const std::wstring* step = row.command == Command::mnuUndo   ? desk_.document.history.undoName()
                               : row.command == Command::mnuRedo ? desk_.document.history.redoName()
                                                                 : nullptr;
    if (step != nullptr) items.back().caption += L" " + *step;
  }
  if (menu == MenuId::Container) addTagMenus(items);
  owner_.completeMenu(menu, items);
  if (items.empty()) return;
  owner_.hovered({}, {});
  const Command chosen = runMenu(window_, desk_.modal, items, place);
  if (chosen != Command::None) run(chosen);
}

bool WorkspacePane::runHere(Command command) {
  switch (command) {
    case Command::mnuShortcutProperties:
      if (const auto object = current().object) properties(*object);
      return true;
    case Command::mnuPaste:
      paste();
      return true;
    case Command::mnuSelectAll:
      editor_.selectAll();
      view_.invalidate();
      return true;
    case Command::mnuUnselectAll:
      editor_.selectNone();
      view_.invalidate();
      return true;
    case Command::mnuDeleteSelected:
      deleteSelected();
      return true;
    case Command::mnuAlignSelected:
      finishMove(editor_.align());
      return true;
    case Command::mnuSortByName:
      finishMove(editor_.sortByName({menuContainer_}));
      return true;
    case Command::mnuStartSelected:
      startSelected();
      return true;
    case Command::mnuStartAll:
      startMany([this](StartMany& start) {
        StartAll(start, menuContainer_, desk_.settings.confirmStartAllShortcuts);
      });
      return true;
    case Command::mnuOpenFileLocation: {
      const clsShortcut* shortcut = desk_.document.workspace.shortcuts.find(currentShortcut());
      if (shortcut != nullptr &&
          !OpenFileLocation(desk_.platform, owner_.mainWindow(), *shortcut, true))
        editShortcut(currentShortcut(), L"");
      return true;
    }
    case Command::mnuUseRelativePath: {
      const std::vector<ShortcutSlot> selected = editor_.selection().shortcuts();
      if (UseRelativePath(desk_.platform, desk_.document, selected)) owner_.workspaceChanged();
      return true;
    }
    case Command::mnuAddPicture:
      addPicture();
      return true;
    case Command::mnuNewNote:
      return newNote();
    case Command::mnuNewFolderLink:
      return newFolderContainer();
    default:
      return runForContainers(command);
  }
}

void WorkspacePane::run(Command command) {
  if (command == Command::None || !commandRow(command).built) return;
  const CommandState state = commandState();
  if (isLockedAway(command, state)) {
    refuseWhileLocked();
    return;
  }
  if (isEnabled(command, state) && !runHere(command)) owner_.runOwn(command);
}

void WorkspacePane::launch(ShortcutSlot slot) {
  const clsShortcut* found = desk_.document.workspace.shortcuts.find(slot);
  if (found == nullptr || clickGuard_.blocked()) return;
  const clsShortcut shortcut = *found;  // a dialog may change the table meanwhile
  const LaunchResult result = LaunchShortcut(desk_.platform, owner_, shortcut);
  if (result.outcome == LaunchOutcome::FailedFaulty) editShortcut(slot, result.propertiesError);
  if (result.outcome == LaunchOutcome::Started) {
    owner_.shortcutStarted(slot);
    announce(window_, kEventLaunched);
  }
}

// Each in turn; a dialog of one does not keep the others from starting.
void WorkspacePane::startSelected() {
  for (const ShortcutSlot slot : editor_.selection().shortcuts()) launch(slot);
}

void WorkspacePane::startMany(const std::function<void(StartMany&)>& start) {
  SystemForeground foreground;
  StartMany many{
      desk_.platform,
      owner_.mainWindow(),
      owner_,
      foreground,
      desk_.document.workspace,
      [this](ShortcutSlot slot, const std::wstring& error) { editShortcut(slot, error); }};
  start(many);
  announce(window_, kEventLaunched);
}

void WorkspacePane::properties(ObjectId id) {
  if (const auto* shortcut = std::get_if<ShortcutSlot>(&id)) editShortcut(*shortcut, L"");
  if (const auto* picture = std::get_if<PictureSlot>(&id)) editPicture(*picture, L"");
  if (const auto* container = std::get_if<ContainerSlot>(&id)) rename(*container);
}

void WorkspacePane::editShortcut(ShortcutSlot slot, const std::wstring& error) {
  const auto& shortcuts = desk_.document.workspace.shortcuts;
  if (!shortcuts.contains(slot) || refuseWhileLocked(error)) return;
  const auto ask = [&](clsShortcut& shortcut) {
    return frmShortcutProperties(shortcut, error).edit(window_);
  };
  if (!editRecord(desk_, desk_.document.workspace.shortcuts, slot, ask)) return;
  applyTagFilter(desk_.document.workspace, shortcuts.find(slot)->parent);
  editor_.shortcutChanged(slot);
  sceneChanged();
  owner_.contentsMoved();
  owner_.workspaceChanged();
}

void WorkspacePane::showShortcut(ShortcutSlot slot) {
  const NodeId node = shortcutNode(slot);
  scene_.scrollToShow(node);
  editor_.selectOnly(slot);
  view_.focus(node);
  view_.invalidate();
}

ShortcutSlot WorkspacePane::currentShortcut() const {
  const CurrentThing thing = current();
  const auto* slot = thing.object ? std::get_if<ShortcutSlot>(&*thing.object) : nullptr;
  return slot == nullptr ? ShortcutSlot{} : *slot;
}

void WorkspacePane::objectsChanged(const std::vector<ObjectId>& objects) {
  editor_.objectsChanged(objects);
  for (const ObjectId& id : objects) {
    const NodeId node = handleOf(scene_.scene(), id);
    if (!scene_.scene().shown(node)) continue;
    scene_.scrollToShow(node);
    break;
  }
  arrangeEditing();
  sceneChanged();
}

}  // namespace varnowick
