// Ties the docking rules to a window: gathers their inputs, applies their
// effects, and keeps the window's exact place in twips, which pixels cannot hold.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "core/settings.h"
#include "platform/platform.h"
#include "platform/win32/app_bars.h"
#include "sidebar/docking.h"
#include "ui/win/toolkit/window_timers.h"

namespace varnowick {

class DockingDriver {
 public:
  struct Hooks {
    std::function<bool()> keepOpen;
    std::function<void()> prepareCollapse;
    std::function<void(bool suspended)> captionChanged;
    std::function<void(DockChange)> changed;
  };

  DockingDriver(const Platform& platform, const Settings& settings, WindowTimers& timers,
                Hooks hooks)
      : platform_(platform), settings_(settings), timers_(timers), hooks_(std::move(hooks)) {}
  DockingDriver(const DockingDriver&) = delete;
  DockingDriver& operator=(const DockingDriver&) = delete;

  void attach(HWND window) { window_ = window; }
  // Places the window, and docks it when it stands at an edge. A minimised bar
  // would be lost to who has no tray icon and no hotkey: it comes as its strip.
  void start(const TwipsRect& rect, bool hidden, int windowState);
  // How ShowWindow is to show it for the first time.
  int showCommand() const { return startsMaximised_ ? SW_SHOWMAXIMIZED : SW_SHOWNA; }
  // As "[WindowState]" has it.
  int windowState() const;
  // The dock commands bring a maximised window back first.
  void dockTo(ScreenEdge edge);
  void dockNow();

  Docking& rules() { return rules_; }
  const Docking& rules() const { return rules_; }
  DockInputs inputs() const;
  // Of the inputs where the bar and the monitors are, and no more.
  DockInputs surroundings() const;
  void apply(const DockEffects& effects);
  // Something is being dragged over the window, from wherever. The system reports
  // no mouse moves meanwhile, and the drag itself keeps the bar open.
  void draggedOver();
  void mouseMoved();
  // Monitors, or what stands at their edges, may have changed.
  void screenChanged();
  // The first look for them, once the bar stands painted: the shell takes its time.
  void lookForAutoHideBars();

  // The user drags the window. Where it would stand if it were let go now.
  void dragBegan();
  std::optional<PixelRect> dragged();
  // Let go where it is; or back where it was, which changes nothing.
  void dragEnded(bool dropped);

  // Runs the tick of a timer of kTimers; false when it is none of docking's.
  bool tick(TimerId id);

  // The window's rectangle on the screen has been changed by the system or the
  // user; small roundings of our own placement do not count.
  void noteWindowRect();
  const TwipsRect& rect() const { return rect_; }
  TwipsRect rectToSave() const { return rules_.rectToSave(inputs()); }

 private:
  PixelRect windowPixels() const;
  Density density() const;
  void place(const TwipsRect& rect);
  void restore();
  void readScreen();
  void adaptToScreen();
  void updateClip();
  HWND fullScreenProgram(const DockInputs& in) const;

  Platform platform_;
  const Settings& settings_;
  WindowTimers& timers_;
  Hooks hooks_;
  Docking rules_;
  HWND window_ = nullptr;
  TwipsRect rect_;
  bool startsMaximised_ = false;
  bool dragging_ = false;
  bool placing_ = false;
  std::optional<PixelRect> clip_;  // of the window, in its own pixels
  AutoHideBars autoHideBars_;
  ScreenExtents screen_;  // as of the last change
};

}  // namespace varnowick
