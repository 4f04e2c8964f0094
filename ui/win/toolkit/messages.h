// The numbers of the program's own messages. No two windows of it read one number
// differently, so that a message that comes late to a reused handle does no harm.
// What crosses processes is registered instead: see InstanceGuard::message().
#pragma once

#include <windows.h>

namespace varnowick {

inline constexpr UINT kMsgAction = WM_APP + 2;          // a default action, see SceneAccessible
inline constexpr UINT kMsgDropped = WM_APP + 3;         // a drop waits to be taken in
inline constexpr UINT kMsgSweep = WM_APP + 4;           // windows that were closed can be freed
inline constexpr UINT kMsgFolderNews = WM_APP + 6;      // a folder that is shown has changed
inline constexpr UINT kMsgFolderTell = WM_APP + 8;      // a failed one is to be told
inline constexpr UINT kMsgTrayIcon = WM_APP + 9;        // of the shell, about the tray icon
inline constexpr UINT kMsgEditFocusGone = WM_APP + 10;  // a text being edited has lost the focus
inline constexpr UINT kMsgAway = WM_APP + 11;           // the bar has begun to go away
inline constexpr UINT kMsgSelect = WM_APP + 12;       // what a screen reader does to the selection
inline constexpr UINT kMsgReaders = WM_APP + 13;      // readers are to be told what has changed
inline constexpr UINT kMsgAcceptDrops = WM_APP + 14;  // the window stands and can take drops

}  // namespace varnowick
