// All detached containers: one window with its tab for each, made, shown, attached
// again and closed together. It changes the records' detached state; what stands on
// the bar and what is written to disk is left to its hooks.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/desktop_store.h"
#include "ui/win/detached/frm_container.h"
#include "ui/win/pane/desk.h"

namespace varnowick {

class DetachedWindows final : public DetachedHost {
 public:
  struct Hooks {
    std::function<bool()> busyElsewhere;
    // Containers have left the bar, or have come back to it.
    std::function<void(const std::vector<ContainerSlot>&)> barChanged;
    std::function<void()> workspaceChanged;  // to be saved
    std::function<void(const SettingsChange&)> changeSettings;
    std::function<void(ContainerSlot)> removeContainer;
    std::function<void(ShortcutSlot)> shortcutStarted;
    std::function<bool(Command)> runCommand;
    std::function<TwipsRect(ContainerSlot)> boxOnScreen;  // on the bar, as unfolded
    std::function<TwipsRect()> barOnScreen;
    std::function<WorkspacePane*(POINT)> paneAt;  // of any window of the program
    std::function<DragStop*(HWND)> dragStop{};    // the same
    // sweep() is to be called soon, from the message loop.
    std::function<void()> sweepSoon;
  };
  // All are borrowed and must outlive the windows.
  DetachedWindows(const Desk& desk, LaunchHost& mainWindow, Hooks hooks)
      : desk_(desk), mainWindow_(mainWindow), hooks_(std::move(hooks)) {}

  // Gives each a window of its own; at a point of the screen, the first one with its
  // title there. Containers that are detached already are left alone.
  void detach(const std::vector<ContainerSlot>& slots, std::optional<Point<Pixels>> at = {});
  // After loading: a window, still hidden, for each container that was stored as
  // detached.
  void detachLoaded(const Progress& progress);
  void showLoaded();
  // A window for each container that has come back to the workspace as detached.
  void reopen();
  void attach(ContainerSlot slot) override;
  void attachAll();
  // Shows every window, in front of others.
  void showAll();
  bool anyHidden() const;
  // The container is about to be removed from the workspace.
  void removed(ContainerSlot slot);
  // At the end of the program: out of sight, all at once.
  void closeAll();
  // Frees what has been closed, except while its own handlers are under way.
  void sweep();

  // One row for each window, in the order in which they were detached.
  struct Row {
    ContainerSlot slot;
    std::wstring lblName;
  };
  std::vector<Row> rows() const;
  frmContainer* find(ContainerSlot slot);
  WorkspacePane* paneOf(HWND window);
  // The pane, or the tab, that is that window; null for none.
  DragStop* dragStopOf(HWND window);
  std::size_t count() const { return windows_.size(); }

  // Records or settings have been changed elsewhere.
  void refreshAll();
  void setPalette(const Palette& palette);
  void invalidate();
  // What is being edited is taken, before it is saved.
  void endEditing();

 private:
  void attachThese(std::vector<ContainerSlot> slots);
  frmContainer* open(ContainerSlot slot);
  void each(const std::function<void(frmContainer&)>& act);
  void giveUp(ContainerSlot slot);
  void giveFirstRect(ContainerSlot slot, std::optional<Point<Pixels>> at);

  // DetachedHost
  LaunchHost& mainWindow() override { return mainWindow_; }
  bool busyElsewhere() override { return hooks_.busyElsewhere(); }
  void workspaceChanged() override { hooks_.workspaceChanged(); }
  void changeSettings(const SettingsChange& change) override { hooks_.changeSettings(change); }
  WorkspacePane* paneAt(POINT screen) override { return hooks_.paneAt(screen); }
  DragStop* dragStop(HWND window) override { return hooks_.dragStop(window); }
  void shortcutStarted(ShortcutSlot slot) override { hooks_.shortcutStarted(slot); }
  bool runProgramCommand(Command command) override;
  void deleteContainer(ContainerSlot slot) override;
  void unload(ContainerSlot slot) override { giveUp(slot); }
  std::vector<TwipsRect> otherTabs(ContainerSlot slot) const override;
  const Palette& palette() const override { return palette_; }

  Desk desk_;
  LaunchHost& mainWindow_;
  Hooks hooks_;
  Palette palette_;
  std::vector<std::unique_ptr<frmContainer>> windows_;
  std::vector<std::unique_ptr<frmContainer>> closed_;  // their own handlers may still run
};

}  // namespace varnowick
