#include "ui/win/bar/undo_driver.h"

#include "platform/msg_box.h"
#include "shortcuts/tags.h"

namespace varnowick {

void UndoDriver::run(Command command) {
  // What is typed belongs to the state before, and must not reach another object.
  bar_.endEditing();
  detached_.endEditing();
  Workspace& workspace = desk_.document.workspace;
  UndoHistory& history = desk_.document.history;
  UndoHistory::Taken taken =
      command == Command::mnuRedo ? history.redo(workspace) : history.undo(workspace);
  if (!taken.removed.empty()) hooks_.removed(taken.removed);
  // What lies elsewhere now may be hidden there, or seen again.
  for (const ShortcutSlot slot : applyTagFilters(workspace)) taken.objects.emplace_back(slot);
  bar_.objectsChanged(taken.objects);
  detached_.reopen();
  detached_.refreshAll();
  hooks_.workspaceChanged();
  if (taken.kept)
    desk_.platform.msgBox.show(L"A container stays: something has come into it since.",
                               kMsgOkOnly | kMsgInformation, kProgramTitle);
}

void UndoDriver::changed() {
  if (!line_.update(desk_.document.history)) return;
  hooks_.timer(!line_.text().empty());
  hooks_.lineChanged();
}

void UndoDriver::lineTimeUp() {
  if (line_.end()) hooks_.lineChanged();
}

}  // namespace varnowick
