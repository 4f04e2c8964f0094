// The window of a detached container: its scene on a borderless window of its own,
// with its tab. It gathers inputs for the rules, applies their effects and keeps the
// record's rectangles; when it hides and fades is decided by the rules, what becomes
// of the container by its host.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "containers/detached.h"
#include "containers/detached_menu.h"
#include "containers/drag_rest.h"
#include "containers/tab_place.h"
#include "ui/scene/detached_scene.h"
#include "ui/win/detached/frm_container_label.h"
#include "ui/win/pane/desk.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/balloon_tooltip.h"
#include "ui/win/toolkit/window.h"
#include "ui/win/toolkit/window_timers.h"

namespace varnowick {

inline constexpr const wchar_t* kDetachedWindowClass = L"VarnowickContainer";

// What the window asks of the program around it. None of these destroys the window
// before it has returned to its message loop.
class DetachedHost {
 public:
  virtual ~DetachedHost() = default;
  virtual LaunchHost& mainWindow() = 0;
  virtual bool busyElsewhere() = 0;
  virtual void workspaceChanged() = 0;
  virtual void changeSettings(const SettingsChange& change) = 0;
  virtual WorkspacePane* paneAt(POINT screen) = 0;
  virtual DragStop* dragStop(HWND window) = 0;
  virtual void shortcutStarted(ShortcutSlot slot) = 0;
  // A command of the whole program. False when it is not for a detached window.
  virtual bool runProgramCommand(Command command) = 0;
  virtual void attach(ContainerSlot slot) = 0;
  // The container with all that lies in it.
  virtual void deleteContainer(ContainerSlot slot) = 0;
  // The window has faded out and is to be closed.
  virtual void unload(ContainerSlot slot) = 0;
  // Where the tabs of the other windows stand.
  virtual std::vector<TwipsRect> otherTabs(ContainerSlot slot) const = 0;
  virtual const Palette& palette() const = 0;
};

class frmContainer final : public Window, private PaneOwner {
 public:
  // All are borrowed and must outlive the window.
  frmContainer(const Desk& desk, ContainerSlot slot, DetachedHost& host);
  ~frmContainer() override;

  // Creates the window, hidden, at the record's place. False when the system refuses.
  bool open();
  // Shows it for the first time, without taking the focus.
  void showFirst();

  void AttachMe() { host_.attach(slot_); }
  void DockMe();
  void DockNow();
  // Shows it in front of other windows; `activate`: with the focus.
  void Undock(bool activate);
  // Fades it out if it is to fade, and has the host unload it then.
  void close();
  // From now on it saves nothing and answers nothing.
  void hideForGood();
  // One of its handlers is under way: it must not be freed.
  bool handling() const { return handlers_ > 0 || tab_.handling() || pane_.handling(); }

  ContainerSlot slot() const { return slot_; }
  const std::wstring& lblName() const { return lblName_; }
  const DetachedRules& rules() const { return rules_; }
  const WindowTimers& timers() const { return timers_; }
  const DetachedScene& objects() const { return scene_; }
  const frmContainerLabel& tab() const { return tab_; }
  frmContainerLabel& tab() { return tab_; }
  WorkspacePane& pane() { return pane_; }
  TwipsRect rect() const;

  // The record, or what lies in it, has been changed by someone else.
  void refresh();
  void setPalette();
  void invalidate() { pane_.view().invalidate(); }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  clsContainer* record() { return desk_.document.workspace.containers.find(slot_); }
  const clsContainer* record() const { return desk_.document.workspace.containers.find(slot_); }
  Density density() const;

  // Place (frm_container_place.cpp)
  // At the record's place, or the nearest to it that can be reached; whole: with all
  // of it on the screen.
  void place(bool whole);
  void storeRect();
  void rebuildScene();
  void roundCorners();
  void toggleFolded();
  TabPlace tabPlace() const;
  void tabDropped(const TabPlace& place);
  void systemChanged();
  LRESULT onHitTest(POINT screen) const;
  // Sizing by a border. True when the message was about it.
  bool handleSizing(UINT message, WPARAM wParam, LPARAM lParam);
  void sizeTo(POINT cursor);
  void endSizing(bool keep);

  // Rules
  DetachedInputs inputs(const clsContainer& record) const;
  void apply(const DetachedEffects& effects);
  void decide(const std::function<DetachedEffects(const DetachedInputs&)>& call);
  void onTimer(TimerId id);
  void bringToFront();
  void dragRested();
  // The tab does not lie on a program that fills the screen.
  void keepTabBehind();

  // The menu (frm_container_menu.cpp)
  void showOwnMenu(const MenuPlace& place);
  void runItem(DetachedItem item);
  void applyRecord();

  // PaneOwner
  LaunchHost& mainWindow() override { return host_.mainWindow(); }
  bool busyElsewhere() override { return gone_ || host_.busyElsewhere(); }
  void workspaceChanged() override;
  void startClickGuardTimer() override;
  void pressed(NodeId node, POINT at) override;
  void clicked(NodeId node, POINT at) override;
  bool doubleClicked(NodeId node) override;
  void hovered(NodeId node, POINT at) override;
  void moveWindow(const GestureEvent& event) override;
  void removing(const std::vector<ContainerSlot>& slots) override;
  WorkspacePane* paneAt(POINT screen) override { return host_.paneAt(screen); }
  DragStop* dragStop(HWND window) override { return host_.dragStop(window); }
  void draggedOver(POINT screen) override;
  void dragLeft() override;
  void shortcutStarted(ShortcutSlot slot) override { host_.shortcutStarted(slot); }
  bool runOwn(Command command) override;
  bool ownMenu(NodeId node, POINT screen) override;
  void completeMenu(MenuId menu, std::vector<MenuItem>& items) override;
  bool keyDown(Key key) override;

  // LaunchHost
  bool isMainWindow() const override { return false; }
  bool launchSuppressed() const override { return pane_.launchSuppressed(); }
  bool ended() const override { return desk_.modal.ended(); }
  void PreLaunch() override;
  OwnerWindow ownerWindow() const override;
  std::wstring pathForSystem(const std::wstring& path) const override {
    return host_.mainWindow().pathForSystem(path);
  }

  Desk desk_;
  ContainerSlot slot_;
  DetachedHost& host_;
  DetachedRules rules_;
  DetachedScene scene_;
  WorkspacePane pane_;
  WindowTimers timers_;
  frmContainerLabel tab_;
  BalloonTooltip tooltip_;
  std::wstring lblName_;
  int handlers_ = 0;
  bool gone_ = false;  // its container is no longer its own
  POINT origin_{};     // of the window when a drag of it began
  DragRest dragRest_;  // on the window while it is folded, or on its tab
  struct Sizing {
    LRESULT border;  // HTLEFT and so on
    POINT from;      // the cursor at the press
    PixelRect start;
  };
  std::optional<Sizing> sizing_;
  PixelRect placed_;     // where it was put last
  bool placing_ = true;  // the layout follows, or there is none yet
};

}  // namespace varnowick
