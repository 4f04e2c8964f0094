// Taking changes back and doing them again, for all windows of the program, and the
// line on the bar that offers it after something was removed. What a step is, the
// history decides.
#pragma once

#include <functional>

#include "platform/timers.h"
#include "shortcuts/removed_line.h"
#include "ui/commands/commands.h"
#include "ui/win/detached/detached_windows.h"
#include "ui/win/pane/desk.h"
#include "ui/win/pane/workspace_pane.h"

namespace varnowick {

class UndoDriver {
 public:
  struct Hooks {
    std::function<void(const std::vector<ContainerSlot>&)> removed;  // they are gone
    std::function<void()> workspaceChanged;                          // to be saved
    std::function<void()> lineChanged;
    std::function<void(bool start)> timer;  // TimerUndoLine
  };
  // All are borrowed and must outlive the driver.
  UndoDriver(const Desk& desk, WorkspacePane& bar, DetachedWindows& detached, Hooks hooks)
      : desk_(desk), bar_(bar), detached_(detached), hooks_(std::move(hooks)) {}

  // mnuUndo or mnuRedo.
  void run(Command command);
  // The workspace has been changed by anyone.
  void changed();
  void lineTimeUp();
  const std::wstring& line() const { return line_.text(); }

 private:
  Desk desk_;
  WorkspacePane& bar_;
  DetachedWindows& detached_;
  Hooks hooks_;
  RemovedLine line_;
};

}  // namespace varnowick
