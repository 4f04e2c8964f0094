// The window of a detached container: when it hides into its tab, fades, and comes
// out again. Each call takes what the window has gathered and returns what it shall
// do; there is no window, timer or clock in here. One object for each window.
#pragma once

#include <optional>
#include <vector>

#include "core/units.h"
#include "core/workspace.h"
#include "platform/timers.h"

namespace varnowick {

enum class DetachedState {
  Shown,
  Fading,       // still to be seen, and about to hide or to close
  HiddenInTab,  // its tab stands at the edge
  Hidden        // there is no tab; it comes back by a command
};

// What follows the end of a fade.
enum class FadeTag { Dock, Unload };

struct DetachedInputs {
  const clsContainer& record;
  PixelRect window;  // on the screen
  PixelRect tab;     // where the tab stands, or would; empty: nowhere yet
  Point<Pixels> cursor;
  bool foreground = false;  // the window is the foreground window
  bool fullScreen = false;  // a program of others fills the monitor of the tab
  // A menu, dialog, edit box or drag of ours is active: the window stays.
  bool busy = false;
  bool animate = true;           // [Animate]
  bool systemAnimations = true;  // the system's own setting
  bool downloading = false;      // its headlines: the window stays
};

enum class TabChange { None, Place, Hide };

// To be applied in the order of the members. Opacity counts before a window that
// is to be shown appears, and after one that is to be hidden has gone.
struct DetachedEffects {
  TabChange tab = TabChange::None;  // Place: put it at its edge and show it
  std::optional<bool> show;
  std::optional<int> opacity;  // 1 to 255
  std::vector<TimerAction> timers;
  bool unload = false;  // close the window
};

class DetachedRules {
 public:
  // The window has been created and shown.
  DetachedEffects start() const;

  // Hides the window, at once or by fading; nothing unless it is shown.
  DetachedEffects DockMe(const DetachedInputs& in);
  // Hides it at once.
  DetachedEffects DockNow(const DetachedInputs& in);
  // Shows it again; breaks off a fade that leads into the tab.
  DetachedEffects Undock(const DetachedInputs& in);
  // Closes the window for good, fading as DockMe does.
  DetachedEffects unload(const DetachedInputs& in);

  DetachedEffects TimerHideTick(const DetachedInputs& in);
  DetachedEffects TimerFadeOutTick(const DetachedInputs& in);

  // A shortcut of the window has been started.
  DetachedEffects launched(const DetachedInputs& in);
  // The mouse has moved on the tab, or has left it.
  DetachedEffects tabTouched(const DetachedInputs& in);
  void tabLeft() { tabArmed_ = true; }
  // The record's flags have been changed.
  DetachedEffects recordChanged(const DetachedInputs& in);
  // Monitors, resolution, density or work area have changed.
  DetachedEffects systemChanged(const DetachedInputs& in) const;

  DetachedState state() const { return state_; }
  bool hidden() const {
    return state_ == DetachedState::HiddenInTab || state_ == DetachedState::Hidden;
  }
  // It is fading and will be closed.
  bool unloading() const { return state_ == DetachedState::Fading && tag_ == FadeTag::Unload; }

 private:
  DetachedEffects fade(FadeTag tag);

  DetachedState state_ = DetachedState::Shown;
  FadeTag tag_ = FadeTag::Dock;
  int fadeCounter_ = 0;
  // Ticks during which a window that has just been shown waits for the mouse.
  int patience_ = 0;
  // False while the mouse rests where the tab has appeared: it has not come onto
  // the tab, the tab has come under it.
  bool tabArmed_ = true;
};

}  // namespace varnowick
