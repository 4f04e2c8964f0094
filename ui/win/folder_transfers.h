// Files on their way: operations that run in the background, what belongs together
// among them, and what is to follow when it has ended. Knows no containers.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/file_operations.h"
#include "ui/win/modal.h"

namespace varnowick {

class FolderTransfers {
 public:
  // The message is posted to the window when something has ended; take() is to follow.
  FolderTransfers(HWND window, UINT message, ModalDepth& modal);

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

 private:
  struct Group {
    std::vector<int> running;
    bool complete = true;
    Ended ended;
  };
  ModalDepth& modal_;
  std::unique_ptr<FileOperations> operations_;
  std::vector<Group> groups_;
};

}  // namespace varnowick
