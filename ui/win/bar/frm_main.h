// The main window: the bar with everything on it. It owns the document and the
// scene, turns messages into rule calls and commands, and decides nothing that a
// rule could decide.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "core/desktop_store.h"
#include "core/document.h"
#include "platform/platform.h"
#include "ui/commands/commands.h"
#include "ui/commands/keys.h"
#include "ui/scene/workspace_scene.h"
#include "ui/win/bar/bar_extras.h"
#include "ui/win/bar/container_driver.h"
#include "ui/win/bar/dock_preview.h"
#include "ui/win/bar/docking_driver.h"
#include "ui/win/bar/foreground_return.h"
#include "ui/win/bar/undo_driver.h"
#include "ui/win/detached/detached_windows.h"
#include "ui/win/dialogs/frm_add_shortcut.h"
#include "ui/win/pane/desk.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/win_events.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

inline constexpr const wchar_t* kMainWindowClass = L"VarnowickMain";

class Fetchers;

class frmMain final : public Window, private PaneOwner {
 public:
  frmMain(const Platform& platform, DesktopStore& store, ModalDepth& modal, Doorbell& doorbell,
          Fetchers& fetchers);
  ~frmMain() override;

  // Creates the window, still hidden. False when the system refuses it.
  bool open();
  // Loads settings and workspace; each text of progress is passed on as well. False
  // when the program is to end: the recovery question got no answer.
  bool load(const Progress& progress);
  // Shows the bar where it was left.
  void show();
  // Tells what could not be read, and begins to load icons.
  void begin();

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // Messages (frm_main.cpp, frm_main_input.cpp)
  void onTimer(TimerId id);
  void onSize();
  void screenChanged();
  void imagesCame();
  void apply(const KeyDecision& decision);
  void bringForward();
  void toggle();
  bool hasGone() const { return docking_.rules().collapseSide() != ScreenEdge::None; }
  void onDestroy();
  LRESULT onHitTest(POINT screen) const;

  Desk desk() {
    return {platform_, document_, document_.settings, images_, fonts_, measure_, modal_, &folders_};
  }

  // The scene (frm_main.cpp)
  FrameLayout frameLayout();
  std::wstring captionNow() const;
  void rebuildScene();
  void relayout();
  void applyPalette();

  // Actions (frm_main_actions.cpp, frm_main_session.cpp)
  void askForNewShortcut(NewShortcutKind kind);
  void about();
  SaveResult save(bool recovery);
  void saveWorkspace();
  void restartWithoutRecentChanges();
  void loadDefaultSettings();
  void setLocked(bool locked);
  // The one way to change settings while the program runs: what the change affects is
  // done anew, and it is saved.
  void changeSettings(const SettingsChange& change);
  void applySettings(unsigned affects);
  bool mayLeaveFiles();
  void exitProgram();
  void endProgram();
  void endSession();
  void end();

  // Containers (frm_main_containers.cpp)
  void startDrawMode();
  void saveSoon();

  // Detached containers (frm_main_detached.cpp)
  DetachedWindows::Hooks detachedHooks();
  void detachContainers(const std::vector<ContainerSlot>& slots, std::optional<Point<Pixels>> at);
  void mnuDetachContainer();
  // What the jump-to box has found.
  void startMatch(const JumpTarget& target);
  void showMatch(const JumpTarget& target);
  void openContainer(ContainerSlot slot);
  // Of the window that shows it.
  WorkspacePane& paneWith(ShortcutSlot slot);
  void showShortcut(ShortcutSlot slot);
  void draggedOut(const std::vector<ContainerSlot>& slots, POINT screen) override;
  void completeMenu(MenuId menu, std::vector<MenuItem>& items) override;

  // PaneOwner (frm_main_input.cpp, frm_main_actions.cpp, frm_main_containers.cpp)
  LaunchHost& mainWindow() override { return *this; }
  bool busyElsewhere() override;
  void workspaceChanged() override;
  void startClickGuardTimer() override;
  bool pressMeantOther(POINT at) override { return containers_.pressMeantTile(at); }
  void pressed(NodeId node, POINT at) override;
  void clicked(NodeId node, POINT at) override;
  bool doubleClicked(NodeId node) override { return containers_.doubleClicked(node); }
  void mouseMoved() override;
  void hovered(NodeId node, POINT at) override;
  void moveWindow(const GestureEvent& event) override;
  void released(NodeId node, bool click) override;
  HCURSOR cursorOver(NodeId node, POINT at) override;
  void draggedOver(POINT screen) override;
  void dragLeft() override { containers_.dragLeft(); }
  void keepOpen() override;
  void removing(const std::vector<ContainerSlot>& slots) override;
  WorkspacePane* paneAt(POINT screen) override;
  DragStop* dragStop(HWND window) override;
  void contentsMoved() override { detached_.refreshAll(); }
  void drawModeEnded() override { relayout(); }
  void shortcutStarted(ShortcutSlot slot) override { extras_.countStart(slot); }
  void describeState(CommandState& state) const override;
  bool runOwn(Command command) override;
  bool keyDown(Key key) override;

  // LaunchHost
  bool isMainWindow() const override { return true; }
  bool launchSuppressed() const override { return pane_.launchSuppressed(); }
  bool ended() const override { return modal_.ended(); }
  void PreLaunch() override;
  OwnerWindow ownerWindow() const override;
  std::wstring pathForSystem(const std::wstring& path) const override;

  Platform platform_;
  DesktopStore& store_;
  ModalDepth& modal_;
  Doorbell& doorbell_;
  Fetchers& fetchers_;
  Document document_;
  ImageStore images_;
  GdiFonts fonts_;
  GdiTextMeasure measure_;
  WorkspaceScene workspaceScene_;
  FolderContainers folders_;
  WorkspacePane pane_;
  WindowTimers timers_;
  DockingDriver docking_;
  ContainerDriver containers_;
  DetachedWindows detached_;
  BarExtras extras_;
  ForegroundReturn foreground_;
  DockPreview preview_;
  UndoDriver undo_;
  bool saveFailureTold_ = false;  // until a save succeeds again
  bool lockTold_ = false;         // the caption tells of locking for a moment
  bool laidOut_ = false;          // the scene has been built
  bool ended_ = false;
  bool firstStart_ = false;
  TwipsRect rectBeforeSizing_;
  bool sizing_ = false;  // the system moves a border of the bar
  POINT barOrigin_{};    // of the window when a drag of it began
};

}  // namespace varnowick
