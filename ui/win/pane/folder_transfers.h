// Files on their way: operations that run in the background, what belongs together
// among them, and what is to follow when it has ended. Knows no containers.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "platform/win32/win32_file_operations.h"
#include "ui/win/toolkit/modal.h"

namespace varnowick {

class FolderTransfers {
 public:
  // `news` is called when something has ended; take() is to follow. The shell's dialogs
  // come up on the window's screen.
  FolderTransfers(Doorbell& doorbell, HWND window, ModalDepth& modal, std::function<void()> news);

  void start(FileOperation operation);
  // `ended` is called by take() when all have ended, with true when all of it has
  // been done. With no operations it is called at once.
  using Ended = std::function<void(bool complete)>;
  void start(std::vector<FileOperation> operations, Ended ended);
  // Returns when all have ended; true when all of it has been done. Messages are let
  // through meanwhile, as by a message box. False at once when the program ends.
  bool carryOut(std::vector<FileOperation> operations);

  // What has ended since the last call.
  std::vector<FileOperationResult> take();
  // Whether anything is under way, and still is after a moment.
  bool busy();
  // Where the shell asks the user something meanwhile; null for nowhere. As long as it
  // does, and this is called now and then, that counts as a dialog of the program.
  HWND question();

 private:
  struct Group {
    std::vector<int> running;
    bool complete = true;
    Ended ended;
  };
  ModalDepth& modal_;
  std::optional<ModalDepth::Scope> asked_;
  Win32FileOperations operations_;
  std::vector<Group> groups_;
};

}  // namespace varnowick
