// What Main and the restart command decide, apart from the windows: whether the
// program may run here, where its data lies, whether to restart.
#pragma once

#include <string>

#include "platform/files.h"
#include "platform/msg_box.h"
#include "platform/shell.h"

namespace varnowick {

struct StartDecision {
  bool mayRun = false;  // false: the user has been told why, and the program ends
  bool portable = false;
  std::wstring dataFolder;  // without a trailing backslash
};
StartDecision decideStart(Files& files, System& system, MsgBox& msgBox);

struct RestartDecision {
  bool restart = false;
  // When restarting: give the changes up, run this, unload the windows and end.
  std::wstring restarterPath;
};
// Asks whether to give up the changes since the last explicit save.
RestartDecision decideRestart(Files& files, System& system, MsgBox& msgBox);

// True when the default settings are to be loaded.
bool confirmDefaultSettings(MsgBox& msgBox);

}  // namespace varnowick
