// The main window: the bar with everything on it. It owns the document and the
// scene, turns messages into rule calls and commands, and decides nothing that a
// rule could decide.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "core/desktop_store.h"
#include "core/document.h"
#include "platform/platform.h"
#include "shortcuts/launch.h"
#include "sidebar/commands.h"
#include "sidebar/keys.h"
#include "ui/scene/workspace_scene.h"
#include "ui/win/docking_driver.h"
#include "ui/win/gdi_text.h"
#include "ui/win/image_store.h"
#include "ui/win/modal.h"
#include "ui/win/scene_accessible.h"
#include "ui/win/scene_view.h"
#include "ui/win/window.h"

namespace varnowick {

inline constexpr const wchar_t* kMainWindowClass = L"VarnowickMain";

class frmMain final : public Window, private LaunchHost {
 public:
  frmMain(const Platform& platform, DesktopStore& store, ModalDepth& modal);
  ~frmMain() override;

  // Creates the window, still hidden. False when the system refuses it.
  bool open();
  // Loads settings and workspace; each text of progress is passed on as well.
  void load(const Progress& progress);
  // Shows the bar where it was left and begins to load icons.
  void show();

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // Messages (frm_main.cpp)
  void onTimer(TimerId id);
  void onSize();
  void onMouseMove(POINT client);
  void onLeftDown(POINT client);
  void onLeftUp(POINT client);
  void onContextMenu(POINT screen);
  void onKeyDown(int key);
  void onDestroy();
  LRESULT onHitTest(POINT screen) const;

  // The scene (frm_main.cpp)
  FrameLayout frameLayout() const;
  void rebuildScene();
  void relayout();
  void applyPalette();

  // Actions (frm_main_actions.cpp)
  void run(Command command);
  CommandState commandState() const;
  void clicked(NodeId node);
  void launch(ShortcutSlot slot);
  // The shortcut that a command is about: the focused one.
  ShortcutSlot currentShortcut() const;
  void editShortcut(ShortcutSlot slot, const std::wstring& error);
  void showMenu(MenuId menu, POINT screen);
  SaveResult save(bool recovery);
  void saveWorkspace();
  // Almost every change of the workspace ends here.
  void workspaceChanged();
  void restartWithoutRecentChanges();
  void loadDefaultSettings();
  void setLocked(bool locked);
  void exitProgram();
  void endSession();

  // LaunchHost
  bool isMainWindow() const override { return true; }
  bool launchSuppressed() const override { return launchSuppressed_; }
  void PreLaunch() override;
  OwnerWindow ownerWindow() const override;
  std::wstring pathForSystem(const std::wstring& path) const override;

  Platform platform_;
  DesktopStore& store_;
  ModalDepth& modal_;
  Document document_;
  ImageStore images_;
  GdiFonts fonts_;
  GdiTextMeasure measure_;
  WorkspaceScene workspaceScene_;
  SceneView view_;
  SceneAccessible accessibleItems_;
  AccessibleServer accessible_;
  DockingDriver docking_;
  ClickGuard clickGuard_;
  std::wstring caption_;
  std::wstring progress_;
  bool launchSuppressed_ = false;
  bool saveFailureTold_ = false;  // until a save succeeds again
  bool laidOut_ = false;  // the scene has been built
  bool trackingLeave_ = false;
  bool ended_ = false;
  // A drag of the bar by its caption, in screen pixels.
  bool dragging_ = false;
  bool dragMoved_ = false;
  POINT dragStart_{};
  POINT dragOrigin_{};
};

}  // namespace varnowick
