// What stands around the main window: tray icon, global hotkey, tooltips, jump-to
// box and floating toolbar, wired to the bar in one place. It knows how they hang
// together; what they start is the bar's to do.
#pragma once

#include <windows.h>

#include <functional>
#include <map>

#include "core/document.h"
#include "platform/platform.h"
#include "ui/commands/commands.h"
#include "ui/commands/keys.h"
#include "ui/scene/workspace_scene.h"
#include "ui/win/bar/docking_driver.h"
#include "ui/win/bar/frm_toolbar.h"
#include "ui/win/bar/global_hotkey.h"
#include "ui/win/bar/jump_box.h"
#include "ui/win/bar/tray_icon.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/toolkit/balloon_tooltip.h"
#include "ui/win/toolkit/scene_view.h"

namespace varnowick {

class BarExtras {
 public:
  // All are borrowed from the bar and outlive the extras.
  struct Bar {
    Platform platform;
    const Document& document;
    WorkspaceScene& scene;
    SceneView& view;
    ImageSource& images;
    GdiFonts& fonts;
    TextMeasure& measure;
    DockingDriver& docking;
    const FolderContainers& folders;
  };
  struct Hooks {
    std::function<void(Command)> run;
    std::function<void(MenuId, POINT screen)> menu;
    std::function<void(const JumpTarget&)> start;
    std::function<void(const JumpTarget&)> show;  // scroll to it and focus it
    std::function<void(ShortcutSlot)> properties;
    std::function<void(const KeyDecision&)> key;
    std::function<void()> open;    // the bar, in front of all
    std::function<void()> toggle;  // the same, or collapse an expanded bar
  };
  BarExtras(const Bar& bar, Hooks hooks);

  void attach(HWND window);
  // After loading and after every change of the settings.
  void applySettings();
  // The combination that opens the bar now, empty when there is none.
  std::wstring hotkeyName() const;
  void setPalette(const Palette& palette);
  // The bar or what lies on it has been laid out anew, moved or docked.
  void arrange();
  // The buttons stand beside the bar, once it is out, and not on its title.
  bool toolbarFloats();
  void imagesDelivered();
  // Before the bar goes away or something else takes the mouse.
  void hidePopups();
  // Of the bar itself, while the mouse moves over it.
  void hover(NodeId node) { tooltip_.hover(node); }
  void hideTooltip() { tooltip_.hide(); }

  PicJumpToLink& jump() { return jump_; }
  const PicJumpToLink& jump() const { return jump_; }
  // Shortcuts that are started often come first among equals.
  void countStart(ShortcutSlot slot) { ++starts_[slot]; }
  void workspaceChanged() { jump_.refresh(); }

 private:
  std::vector<JumpEntry> jumpEntries() const;
  ImageRef jumpIcon(const JumpTarget& target) const;
  std::wstring jumpPlace(const JumpTarget& target) const;
  bool barIsOut() const;
  frmToolbar::State toolbarState() const;
  BalloonTooltip::Content tooltipOf(NodeId node) const;

  Bar bar_;
  Hooks hooks_;
  HWND window_ = nullptr;
  std::map<ShortcutSlot, int> starts_;
  TrayIcon tray_;
  GlobalHotkey hotkey_;
  BalloonTooltip tooltip_;
  PicJumpToLink jump_;
  frmToolbar toolbar_;
  bool toolbarFloats_ = false;
};

}  // namespace varnowick
