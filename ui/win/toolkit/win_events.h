// Events of our own, raised with NotifyWinEvent on a window's client object when
// something has happened that a test waits for. Screen readers ignore numbers of
// this range, which is set aside for programs.
#pragma once

namespace varnowick {

enum PrivateEvent : unsigned {
  kEventShown = 0x0101,  // the bar has been painted for the first time
  kEventLoaded,          // its hotkey and tray icon are there, too
  kEventExpanded,        // the bar has slid out
  kEventCollapsed,       // the bar has slid away
  kEventSaved,           // the workspace is on disk
  kEventLaunched,        // a shortcut was handed to the shell
  kEventMenuOpened,
  kEventMenuClosed,
  kEventSceneChanged,   // items came, went or moved
  kEventDetachedShown,  // a detached container has come out, or has been detached
  kEventDetachedHidden  // it has gone into its tab, or out of sight
};

}  // namespace varnowick
