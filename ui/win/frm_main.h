// The main window: the bar with everything on it. It owns the document and the
// scene, turns messages into rule calls and commands, and decides nothing that a
// rule could decide.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "core/desktop_store.h"
#include "core/document.h"
#include "platform/platform.h"
#include "shortcuts/launch.h"
#include "sidebar/commands.h"
#include "sidebar/keys.h"
#include "ui/scene/gestures.h"
#include "ui/scene/workspace_editor.h"
#include "ui/scene/workspace_scene.h"
#include "ui/win/bar_extras.h"
#include "ui/win/docking_driver.h"
#include "ui/win/drop_target.h"
#include "ui/win/frm_add_shortcut.h"
#include "ui/win/gdi_text.h"
#include "ui/win/image_store.h"
#include "ui/win/modal.h"
#include "ui/win/popup_menu.h"
#include "ui/win/scene_accessible.h"
#include "ui/win/scene_view.h"
#include "ui/win/win_events.h"
#include "ui/win/window.h"

namespace varnowick {

inline constexpr const wchar_t* kMainWindowClass = L"VarnowickMain";

// The main window's own messages.
inline constexpr UINT kMsgImages = WM_APP + 1;   // the image store has results
inline constexpr UINT kMsgAction = WM_APP + 2;   // a default action, see SceneAccessible
inline constexpr UINT kMsgDropped = WM_APP + 3;  // a drop waits to be taken in

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
  // Messages (frm_main.cpp, frm_main_input.cpp)
  void onTimer(UINT_PTR timer);
  bool busyElsewhere();
  void onSize();
  void onMouseMove(POINT client);
  void onLeftDown(POINT client);
  void onLeftUp(POINT client);
  void onDoubleClick(POINT client);
  void onContextMenu(POINT screen);
  void onKeyDown(int key);
  void apply(const KeyDecision& decision);
  void bringForward();
  void moveFocus(Point<int> direction, bool backwards = false);
  void onDestroy();
  LRESULT onHitTest(POINT screen) const;

  // The scene (frm_main.cpp)
  FrameLayout frameLayout() const;
  std::wstring captionNow() const;
  void rebuildScene();
  void relayout();
  void applyPalette();

  // Editing (frm_main_editing.cpp)
  Point<Pixels> toScreen(POINT client) const;
  Point<Twips> toScene(Point<Pixels> screen) const;
  void onGesture(const GestureEvent& event);
  void moveBar(const GestureEvent& event);
  void moveObjects(const GestureEvent& event);
  void openWith(ShortcutSlot dragged, ShortcutSlot target);
  void finishMove(const Moved& moved);
  void takeDropped(const Dropped& dropped, const Point<Twips>* at);
  void addShortcuts(std::vector<clsShortcut> shortcuts, const Point<Twips>* at,
                    std::wstring refusal);
  bool dropIsWelcome(POINT screen);
  bool acceptDrop(POINT screen, const Dropped& dropped);
  void takePendingDrops();
  void deleteSelected();
  void setTagFilter(ContainerSlot slot, const std::wstring& tag);

  // Actions (frm_main_actions.cpp, frm_main_menus.cpp, frm_main_session.cpp)
  void run(Command command);
  CommandState commandState() const;
  void clicked(NodeId node);
  void launch(ShortcutSlot slot);
  void startSelected();
  void showShortcut(ShortcutSlot slot);
  void askForNewShortcut(NewShortcutKind kind);
  void about();
  void startMany(const std::function<void(StartMany&)>& start);
  // The shortcut that a command is about: the selected one, else the focused one.
  ShortcutSlot currentShortcut() const;
  // What commands for selected shortcuts work on: several, or the focused one.
  bool anythingSelected() const {
    return !editor_.selection().empty() || !currentShortcut().none();
  }
  void editShortcut(ShortcutSlot slot, const std::wstring& error);
  void showMenu(MenuId menu, POINT screen);
  void addTagMenus(std::vector<MenuItem>& items, std::vector<std::wstring>& tags) const;
  SaveResult save(bool recovery);
  void saveWorkspace();
  // Almost every change of the workspace ends here.
  void workspaceChanged();
  void restartWithoutRecentChanges();
  void loadDefaultSettings();
  void setLocked(bool locked);
  void toggleTranslucency();
  void exitProgram();
  void endSession();
  void end();

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
  WorkspaceEditor editor_;
  Gestures gestures_;
  DropTarget dropTarget_;
  SceneAccessible accessibleItems_;
  AccessibleServer accessible_;
  DockingDriver docking_;
  BarExtras extras_;
  ClickGuard clickGuard_;
  bool launchSuppressed_ = false;
  bool saveFailureTold_ = false;  // until a save succeeds again
  bool lockTold_ = false;         // the caption tells of locking for a moment
  bool laidOut_ = false;          // the scene has been built
  bool trackingLeave_ = false;
  bool ended_ = false;
  bool doubleClicked_ = false;
  bool firstStart_ = false;
  TwipsRect rectBeforeSizing_;
  POINT barOrigin_{};            // of the window when a drag of it began
  ContainerSlot menuContainer_;  // that the open menu is about
  struct PendingDrop {
    Dropped data;
    Point<Twips> at;  // of the window
  };
  std::vector<PendingDrop> pendingDrops_;
};

}  // namespace varnowick
