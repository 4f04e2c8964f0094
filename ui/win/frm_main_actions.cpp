// What the main window does when a command is run or something on it is clicked.

#include <algorithm>

#include "core/settings_table.h"
#include "core/startup.h"
#include "platform/msg_box.h"
#include "platform/sound.h"
#include "platform/win32/handles.h"
#include "shortcuts/paths.h"
#include "shortcuts/tags.h"
#include "ui/win/frm_about.h"
#include "ui/win/frm_main.h"
#include "ui/win/frm_shortcut_properties.h"
#include "ui/win/popup_menu.h"
#include "ui/win/win_events.h"

namespace varnowick {
namespace {

// Starts the restarter with a handle on which it can wait for this process.
bool startRestarter(const std::wstring& path) {
  KernelHandle self;
  if (!DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), GetCurrentProcess(), self.put(),
                       SYNCHRONIZE, TRUE, 0))
    return false;
  const auto value = reinterpret_cast<std::uintptr_t>(self.get());
  std::wstring commandLine = L"\"" + path + L"\" " + std::to_wstring(value);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process))
    return false;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

class SystemForeground final : public ForegroundWindow {
 public:
  std::uintptr_t current() override {
    return reinterpret_cast<std::uintptr_t>(GetForegroundWindow());
  }
  void set(std::uintptr_t window) override { SetForegroundWindow(reinterpret_cast<HWND>(window)); }
};

// Commands of menu rows that the tables do not have: tags, by their place in the
// list of the container's tags.
constexpr int kStartTag = 10'000;
constexpr int kShowTag = 20'000;
constexpr std::size_t kMostTagRows = 60;

// A tag may hold what menus take for a mnemonic or a key.
std::wstring menuText(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t c : text) result += c == L'&' ? L"&&" : std::wstring(1, c == L'\t' ? L' ' : c);
  return result;
}

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
      if (document_.settings.doubleClick && !doubleClicked_) return;
      return launch(shortcutOf(node));
    case ControlKind::PicLockToolbar:
    case ControlKind::PicUnlockToolbar:
      return run(Command::mnuLock);
    case ControlKind::PicDockToolbar:
      return run(Command::mnuDockNow);
    case ControlKind::cmdMenu:
      return showMenu(MenuId::Main, below);
    case ControlKind::cmdSettings:
      return showMenu(MenuId::Settings, below);
    case ControlKind::cmdAdd:
      return showMenu(MenuId::Add, below);
    default:
      return;
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
  if (found == nullptr || clickGuard_.blocked()) return;
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

SaveResult frmMain::save(bool recovery) {
  Settings& settings = document_.settings;
  settings.window = docking_.rectToSave();
  settings.hidden = docking_.rules().collapseSide() != ScreenEdge::None;
  SaveResult result = store_.SaveDesktop(document_, recovery);
  if (result) {
    saveFailureTold_ = false;
    announce(handle(), kEventSaved);
  }
  return result;
}

void frmMain::workspaceChanged() {
  extras_.workspaceChanged();
  const SaveResult result = save(true);
  // The next change would only say the same again.
  if (result || saveFailureTold_) return;
  saveFailureTold_ = true;
  platform_.msgBox.show(saveFailureMessage(result), kMsgOkOnly | kMsgCritical, kProgramTitle);
}

void frmMain::saveWorkspace() {
  const SaveResult result = save(false);
  if (result)
    platform_.msgBox.show(L"Workspace Saved", kMsgOkOnly | kMsgInformation, kProgramTitle);
  else
    platform_.msgBox.show(saveFailureMessage(result), kMsgOkOnly | kMsgCritical, kProgramTitle);
}

void frmMain::setLocked(bool locked) {
  document_.settings.locked = locked;
  platform_.sound.play(L"lock.wav");
  lockTold_ = true;
  docking_.startTimer(TimerId::TimeLock);
  relayout();
  workspaceChanged();
}

void frmMain::loadDefaultSettings() {
  if (!confirmDefaultSettings(platform_.msgBox)) return;
  InitDefaultSettings(document_.settings);
  applyPalette();
  rebuildScene();
  extras_.applySettings();
  workspaceChanged();
}

void frmMain::restartWithoutRecentChanges() {
  const RestartDecision decision =
      decideRestart(platform_.files, platform_.system, platform_.msgBox, store_.dataFolder());
  if (!decision.restart) return;
  if (!startRestarter(decision.restarterPath)) {
    platform_.msgBox.show(L"Can't start: " + decision.restarterPath, kMsgExclamation,
                          kProgramTitle);
    return;
  }
  store_.suppressSaving(true);
  exitProgram();
}

void frmMain::exitProgram() {
  if (ended_) return;
  ended_ = true;
  if (const SaveResult result = save(false); !result) {
    const std::wstring question =
        saveFailureMessage(result) + L"\r\n\r\nEnd the program without saving?";
    ended_ =
        platform_.msgBox.show(question, kMsgYesNo | kMsgCritical, kProgramTitle) == kMsgAnswerYes;
  }
  if (ended_) destroy();
}

// There is no time for questions: what cannot be saved now stays recoverable.
void frmMain::endSession() {
  if (ended_) return;
  ended_ = true;
  save(false);
  destroy();
}

CommandState frmMain::commandState() const {
  CommandState state;
  state.locked = document_.settings.locked;
  state.suspended = docking_.rules().suspended();
  state.translucent = document_.settings.translucent;
  state.align = document_.settings.align;
  state.shortcutSelected = !currentShortcut().none();
  state.canUndo = editor_.canUndo() && !document_.settings.locked;
  return state;
}

ShortcutSlot frmMain::currentShortcut() const {
  if (const ShortcutSlot selected = editor_.selection().current(); !selected.none())
    return selected;
  const ShortcutSlot slot = shortcutOf(view_.input().focused());
  return document_.workspace.shortcuts.contains(slot) ? slot : ShortcutSlot{};
}

void frmMain::addTagMenus(std::vector<MenuItem>& items, std::vector<std::wstring>& tags) const {
  const clsContainer* container = document_.workspace.containers.find(menuContainer_);
  if (container == nullptr || !document_.settings.showTags) return;
  tags = allTags(document_.workspace, Panel{menuContainer_});
  if (tags.size() > kMostTagRows) tags.resize(kMostTagRows);
  if (tags.empty()) return;
  items.push_back({});
  items.push_back({.depth = 0, .caption = commandRow(Command::mnuStartAllWTag).caption});
  for (std::size_t i = 0; i < tags.size(); ++i)
    items.push_back(
        {.depth = 1, .command = kStartTag + static_cast<int>(i), .caption = menuText(tags[i])});
  items.push_back({.depth = 0, .caption = L"S&how tag"});
  items.push_back({.depth = 1,
                   .command = kShowTag,
                   .caption = L"&All",
                   .checked = container->ShowingTag.empty()});
  for (std::size_t i = 0; i < tags.size(); ++i)
    items.push_back({.depth = 1,
                     .command = kShowTag + 1 + static_cast<int>(i),
                     .caption = menuText(tags[i]),
                     .checked = sameIgnoringCase(container->ShowingTag, tags[i])});
}

void frmMain::showMenu(MenuId menu, POINT screen) {
  if (menu != MenuId::Container) menuContainer_ = {};
  std::vector<MenuItem> items;
  std::vector<std::wstring> tags;
  for (const ShownMenuRow& row : shownMenu(menu, commandState())) {
    items.push_back(
        {row.depth, static_cast<int>(row.command), row.caption, row.key, row.checked, row.enabled});
    if (row.command == Command::mnuStartAll)
      items.back().caption = startAllCaption(document_.workspace, menuContainer_);
  }
  if (menu == MenuId::Container) addTagMenus(items, tags);
  if (items.empty()) return;
  int chosen = 0;
  {
    const ModalDepth::Scope scope(modal_);
    announce(handle(), kEventMenuOpened);
    chosen = showPopupMenu(handle(), items, screen);
    announce(handle(), kEventMenuClosed);
  }
  if (chosen > kShowTag)
    setTagFilter(menuContainer_, tags[static_cast<std::size_t>(chosen - kShowTag - 1)]);
  else if (chosen == kShowTag)
    setTagFilter(menuContainer_, L"");
  else if (chosen >= kStartTag)
    startMany([&](StartMany& start) {
      StartByTag(start, tags[static_cast<std::size_t>(chosen - kStartTag)]);
    });
  else if (chosen != 0)
    run(static_cast<Command>(chosen));
}

}  // namespace varnowick
