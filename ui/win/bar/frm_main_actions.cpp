// What the main window does when a command is run or something on it is clicked.

#include "platform/msg_box.h"
#include "platform/sound.h"
#include "shortcuts/paths.h"
#include "shortcuts/tags.h"
#include "ui/scene/toolbar_scene.h"
#include "ui/win/bar/frm_main.h"
#include "ui/win/dialogs/frm_about.h"
#include "ui/win/dialogs/frm_shortcut_properties.h"
#include "ui/win/toolkit/popup_menu.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

// Whether this is a 32-bit program on 64-bit Windows, which sees another System32.
bool runsUnderWow64() {
  using IsWow64ProcessFunction = BOOL(WINAPI*)(HANDLE, PBOOL);
  // Windows XP SP2 and later.
  static const auto isWow64Process = reinterpret_cast<IsWow64ProcessFunction>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "IsWow64Process")));
  BOOL wow64 = FALSE;
  return isWow64Process != nullptr && isWow64Process(GetCurrentProcess(), &wow64) && wow64;
}

}  // namespace

void frmMain::clicked(NodeId node, POINT at) {
  const PixelRect place = pane_.view().toClient(node);
  RECT button{place.left.value, place.top.value, place.right().value, place.bottom().value};
  MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&button), 2);
  const MenuPlace below(button);
  switch (node.kind) {
    case ControlKind::cmdConDetach:
      return detachContainers({containerOf(node)}, std::nullopt);
    case ControlKind::cmdConMenu:
      return pane_.showMenu(MenuId::Container, below, containerOf(node));
    case ControlKind::UndoLine:
      return pane_.run(Command::mnuUndo);
    case ControlKind::DockStrip:
      return docking_.apply(docking_.rules().ExpandFromEdge(docking_.inputs()));
    case ControlKind::cmdMenu:
      return pane_.showMenu(MenuId::Main, below);
    case ControlKind::cmdSettings:
      return pane_.showMenu(MenuId::Settings, below);
    case ControlKind::cmdAdd:
      return pane_.showMenu(MenuId::Add, below);
    default:
      if (containers_.clicked(node, at)) return;
      return pane_.run(toolbarCommand(node.kind));
  }
}

void frmMain::describeState(CommandState& state) const {
  state.suspended = docking_.rules().suspended();
  state.detachedHidden = detached_.anyHidden();
  state.barOut = docking_.rules().collapseSide() == ScreenEdge::None;
}

bool frmMain::runOwn(Command command) {
  switch (command) {
    case Command::mnuUndo:
    case Command::mnuRedo:
      undo_.run(command);
      break;
    case Command::mnuAlign:
      changeSettings([](Settings& s) { s.align = !s.align; });
      break;
    case Command::mnuRefreshShortcuts:
      images_.refresh();
      pane_.view().invalidate();
      detached_.invalidate();
      break;
    case Command::mnuFoldAll:
      containers_.apply(containers_.rules().mnuFoldAll(containers_.inputs()));
      break;
    case Command::mnuShrinkAll:
      containers_.apply(containers_.rules().mnuShrinkAll(containers_.inputs()));
      break;
    case Command::mnuDetachContainer:
      mnuDetachContainer();
      break;
    case Command::mnuAttachAll:
      detached_.attachAll();
      break;
    case Command::mnuShowDetached:
      detached_.showAll();
      break;
    case Command::mnuNew:
      startDrawMode();
      break;
    case Command::mnuTranslucent:
      changeSettings([](Settings& s) { s.translucent = !s.translucent; });
      break;
    case Command::mnuDockLeft:
      docking_.dockTo(ScreenEdge::Left);
      break;
    case Command::mnuDockRight:
      docking_.dockTo(ScreenEdge::Right);
      break;
    case Command::mnuDockTop:
      docking_.dockTo(ScreenEdge::Top);
      break;
    case Command::mnuDockBottom:
      docking_.dockTo(ScreenEdge::Bottom);
      break;
    case Command::mnuDockNow:
      docking_.dockNow();
      break;
    case Command::mnuSuspendSlideOut:
      docking_.apply(docking_.rules().mnuSuspendSlideOut());
      break;
    case Command::mnuLock:
      setLocked(!document_.settings.locked);
      break;
    case Command::mnuSave:
      saveWorkspace();
      break;
    case Command::mnuAbout:
      about();
      break;
    case Command::mnuAddLink:
      askForNewShortcut(NewShortcutKind::WebUrl);
      break;
    case Command::mnuAddFileLink:
      askForNewShortcut(NewShortcutKind::File);
      break;
    case Command::mnuAddFolderLink:
      askForNewShortcut(NewShortcutKind::Directory);
      break;
    case Command::mnuNewCommand:
      askForNewShortcut(NewShortcutKind::SystemCommand);
      break;
    case Command::mnuRestart:
      restartWithoutRecentChanges();
      break;
    case Command::mnuLoadDefaults:
      loadDefaultSettings();
      break;
    case Command::mnuExitMainWin:
      exitProgram();
      break;
    // Done by the pane, which asks here for the rest.
    case Command::mnuNewFolderLink:
    case Command::mnuAddPicture:
    case Command::mnuNewNote:
    case Command::mnuPaste:
    case Command::mnuSelectAll:
    case Command::mnuUnselectAll:
    case Command::mnuDeleteSelected:
    case Command::mnuAlignSelected:
    case Command::mnuSortByName:
    case Command::mnuShortcutProperties:
    case Command::mnuStartSelected:
    case Command::mnuStartAll:
    case Command::mnuOpenFileLocation:
    case Command::mnuUseRelativePath:
    case Command::mnuConRename:
    case Command::mnuShowNote:
    case Command::mnuConColors:
    case Command::mnuConIcon:
    case Command::mnuHideToolbar:
    case Command::mnuConRemove:
    // A submenu of rows of its own; and what is not built yet, so that the compiler
    // misses a command that nobody carries out.
    case Command::None:
    case Command::mnuAddRSS:
    case Command::mnuAddReminder:
    case Command::mnuStartAllWTag:
    case Command::mnuAttach:
    case Command::mnuContainerLibrary:
    case Command::mnuRSSSearch:
    case Command::mnuRSSRefresh:
    case Command::mnuRSSRefreshAll:
    case Command::mnuRSSViewer:
    case Command::mnuProgramAppearance:
    case Command::mnuProgramSettings:
    case Command::mnuTips:
    case Command::mnuCheckForUpdate:
    case Command::Count:
      return false;
  }
  return true;
}

void frmMain::askForNewShortcut(NewShortcutKind kind) {
  std::optional<clsShortcut> shortcut;
  {
    const ModalDepth::Scope scope(modal_);
    shortcut = askForShortcut(handle(), kind);
  }
  if (!shortcut) return;
  // A chosen link file is read like one that was dropped.
  if (kind == NewShortcutKind::File)
    return pane_.takeDropped({.paths = {{shortcut->Path}}}, nullptr);
  pane_.addShortcuts({*shortcut}, nullptr, picBack, {});
}

void frmMain::about() {
  const ModalDepth::Scope scope(modal_);
  frmAbout(store_.dataFolder(), [this] {
    OpenFolder(platform_, *this, store_.dataFolder());
  }).show(handle());
}

void frmMain::PreLaunch() {
  docking_.apply(docking_.rules().preLaunch(docking_.inputs()));
  if (hasGone()) foreground_.giveBackAfterStart();
}

OwnerWindow frmMain::ownerWindow() const { return {reinterpret_cast<std::uintptr_t>(handle())}; }

std::wstring frmMain::pathForSystem(const std::wstring& path) const {
  std::wstring windows(MAX_PATH, L'\0');
  windows.resize(GetSystemWindowsDirectoryW(windows.data(), MAX_PATH));
  return PathAsSeenFrom32Bit(path, runsUnderWow64(), windows, [this](const std::wstring& file) {
    return platform_.files.exists(file);
  });
}

void frmMain::setLocked(bool locked) {
  platform_.sound.play(L"lock.wav");
  lockTold_ = true;
  timers_.start(TimerId::TimeLock);
  changeSettings([locked](Settings& s) { s.locked = locked; });
}

}  // namespace varnowick
