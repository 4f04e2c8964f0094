// What the main window does when a command is run or something on it is clicked.

#include "platform/msg_box.h"
#include "platform/sound.h"
#include "shortcuts/paths.h"
#include "shortcuts/tags.h"
#include "ui/scene/toolbar_scene.h"
#include "ui/win/frm_about.h"
#include "ui/win/frm_main.h"
#include "ui/win/frm_shortcut_properties.h"
#include "ui/win/popup_menu.h"
#include "ui/win/win_events.h"

namespace varnowick {
namespace {

class SystemForeground final : public ForegroundWindow {
 public:
  std::uintptr_t current() override {
    return reinterpret_cast<std::uintptr_t>(GetForegroundWindow());
  }
  void set(std::uintptr_t window) override { SetForegroundWindow(reinterpret_cast<HWND>(window)); }
};

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

void frmMain::clicked(NodeId node) {
  const PixelRect at = view_.toClient(node);
  POINT below{at.left.value, at.bottom().value};
  ClientToScreen(handle(), &below);
  switch (node.kind) {
    case ControlKind::lblShortcut:
    case ControlKind::picShortcut:
      return launch(shortcutOf(node));
    case ControlKind::DockStrip:
      return docking_.apply(docking_.rules().ExpandFromEdge(docking_.inputs()));
    case ControlKind::cmdMenu:
      return showMenu(MenuId::Main, below);
    case ControlKind::cmdSettings:
      return showMenu(MenuId::Settings, below);
    case ControlKind::cmdAdd:
      return showMenu(MenuId::Add, below);
    default:
      return run(toolbarCommand(node.kind));
  }
}

void frmMain::run(Command command) {
  if (command == Command::None || !commandRow(command).built || !isEnabled(command, commandState()))
    return;
  switch (command) {
    case Command::mnuShortcutProperties:
      return editShortcut(currentShortcut(), L"");
    case Command::mnuPaste:
      return takeDropped(readClipboard(), nullptr);
    case Command::mnuSelectAll:
      editor_.selectAll();
      return view_.invalidate();
    case Command::mnuUnselectAll:
      editor_.selectNone();
      return view_.invalidate();
    case Command::mnuUndo:
      if (!editor_.undo()) return;
      view_.invalidate();
      return workspaceChanged();
    case Command::mnuDeleteSelected:
      return deleteSelected();
    case Command::mnuAlign:
      document_.settings.align = !document_.settings.align;
      return workspaceChanged();
    case Command::mnuSortByName:
      return finishMove(editor_.sortByName({menuContainer_}));
    case Command::mnuStartSelected:
      return startSelected();
    case Command::mnuStartAll:
      return startMany([this](StartMany& start) {
        StartAll(start, menuContainer_, document_.settings.confirmStartAllShortcuts);
      });
    case Command::mnuOpenFileLocation: {
      const clsShortcut* shortcut = document_.workspace.shortcuts.find(currentShortcut());
      if (shortcut != nullptr && !OpenFileLocation(platform_, *this, *shortcut, true))
        editShortcut(currentShortcut(), L"");
      return;
    }
    case Command::mnuUseRelativePath: {
      const std::vector<ShortcutSlot> selected = editor_.selection().shortcuts();
      if (UseRelativePath(platform_, document_.workspace, selected)) workspaceChanged();
      return;
    }
    case Command::mnuRefreshShortcuts:
      images_.clear();
      return view_.invalidate();
    case Command::mnuTranslucent:
      return toggleTranslucency();
    case Command::mnuDockLeft:
      return docking_.apply(docking_.rules().dockTo(docking_.inputs(), ScreenEdge::Left));
    case Command::mnuDockRight:
      return docking_.apply(docking_.rules().dockTo(docking_.inputs(), ScreenEdge::Right));
    case Command::mnuDockTop:
      return docking_.apply(docking_.rules().dockTo(docking_.inputs(), ScreenEdge::Top));
    case Command::mnuDockBottom:
      return docking_.apply(docking_.rules().dockTo(docking_.inputs(), ScreenEdge::Bottom));
    case Command::mnuDockNow:
      return docking_.apply(docking_.rules().dockNow(docking_.inputs()));
    case Command::mnuSuspendSlideOut:
      return docking_.apply(docking_.rules().mnuSuspendSlideOut());
    case Command::mnuLock:
      return setLocked(!document_.settings.locked);
    case Command::mnuSave:
      return saveWorkspace();
    case Command::mnuAbout:
      return about();
    case Command::mnuAddLink:
      return askForNewShortcut(NewShortcutKind::WebUrl);
    case Command::mnuAddFileLink:
      return askForNewShortcut(NewShortcutKind::File);
    case Command::mnuAddFolderLink:
      return askForNewShortcut(NewShortcutKind::Directory);
    case Command::mnuNewCommand:
      return askForNewShortcut(NewShortcutKind::SystemCommand);
    case Command::mnuRestart:
      return restartWithoutRecentChanges();
    case Command::mnuLoadDefaults:
      return loadDefaultSettings();
    case Command::mnuExitMainWin:
      return exitProgram();
    default:
      return;
  }
}

void frmMain::launch(ShortcutSlot slot) {
  const clsShortcut* found = document_.workspace.shortcuts.find(slot);
  if (found == nullptr || ended_ || clickGuard_.blocked()) return;
  const clsShortcut shortcut = *found;  // a dialog may change the table meanwhile
  const LaunchResult result = LaunchShortcut(platform_, *this, shortcut);
  if (result.outcome == LaunchOutcome::FailedFaulty) editShortcut(slot, result.propertiesError);
  if (result.outcome == LaunchOutcome::Started) {
    extras_.countStart(slot);
    announce(handle(), kEventLaunched);
  }
}

// Each in turn; a dialog of one does not keep the others from starting.
void frmMain::startSelected() {
  for (const ShortcutSlot slot : editor_.selection().shortcuts()) launch(slot);
}

void frmMain::startMany(const std::function<void(StartMany&)>& start) {
  SystemForeground foreground;
  StartMany many{
      platform_,
      *this,
      *this,
      foreground,
      document_.workspace,
      [this](ShortcutSlot slot, const std::wstring& error) { editShortcut(slot, error); }};
  launchSuppressed_ = false;
  start(many);
  announce(handle(), kEventLaunched);
}

void frmMain::toggleTranslucency() {
  document_.settings.translucent = !document_.settings.translucent;
  docking_.apply(docking_.rules().opacityChanged(docking_.inputs()));
  workspaceChanged();
}

void frmMain::editShortcut(ShortcutSlot slot, const std::wstring& error) {
  clsShortcut* shortcut = document_.workspace.shortcuts.find(slot);
  if (shortcut == nullptr) return;
  clsShortcut edited = *shortcut;
  {
    const ModalDepth::Scope scope(modal_);
    if (!frmShortcutProperties(edited, error).edit(handle())) return;
  }
  shortcut = document_.workspace.shortcuts.find(slot);
  if (shortcut == nullptr) return;
  *shortcut = std::move(edited);
  applyTagFilter(document_.workspace, shortcut->parent);
  editor_.shortcutChanged(slot);
  view_.invalidate();
  announce(handle(), kEventSceneChanged);
  workspaceChanged();
}

void frmMain::showShortcut(ShortcutSlot slot) {
  const NodeId node = shortcutNode(slot);
  workspaceScene_.scrollToShow(node);
  editor_.selectOnly(slot);
  view_.focus(node);
  view_.invalidate();
}

void frmMain::askForNewShortcut(NewShortcutKind kind) {
  if (document_.settings.locked) {
    platform_.msgBox.show(kLockedMessage, kMsgOkOnly | kMsgExclamation, kProgramTitle);
    return;
  }
  std::optional<clsShortcut> shortcut;
  {
    const ModalDepth::Scope scope(modal_);
    shortcut = askForShortcut(handle(), kind);
  }
  if (!shortcut) return;
  // A chosen link file is read like one that was dropped.
  if (kind == NewShortcutKind::File) return takeDropped({.paths = {{shortcut->Path}}}, nullptr);
  addShortcuts({*shortcut}, nullptr, {});
}

void frmMain::about() {
  const ModalDepth::Scope scope(modal_);
  frmAbout(store_.dataFolder(), [this] {
    OpenFolder(platform_, *this, store_.dataFolder());
  }).show(handle());
}

void frmMain::PreLaunch() { docking_.apply(docking_.rules().preLaunch(docking_.inputs())); }

OwnerWindow frmMain::ownerWindow() const { return {reinterpret_cast<std::uintptr_t>(handle())}; }

std::wstring frmMain::pathForSystem(const std::wstring& path) const {
  std::wstring windows(MAX_PATH, L'\0');
  windows.resize(GetSystemWindowsDirectoryW(windows.data(), MAX_PATH));
  return PathAsSeenFrom32Bit(path, runsUnderWow64(), windows, [this](const std::wstring& file) {
    return platform_.files.exists(file);
  });
}

void frmMain::setLocked(bool locked) {
  document_.settings.locked = locked;
  platform_.sound.play(L"lock.wav");
  lockTold_ = true;
  docking_.startTimer(TimerId::TimeLock);
  relayout();
  workspaceChanged();
}

ShortcutSlot frmMain::currentShortcut() const {
  if (const ShortcutSlot selected = editor_.selection().current(); !selected.none())
    return selected;
  const ShortcutSlot slot = shortcutOf(view_.input().focused());
  return document_.workspace.shortcuts.contains(slot) ? slot : ShortcutSlot{};
}

}  // namespace varnowick
