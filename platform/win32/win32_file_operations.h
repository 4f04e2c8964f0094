// The shell behind FileOperations: one thread for each operation, with a window of
// its own for what the shell asks and shows there, so that no dialog of it holds up
// the bar.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/file_operations.h"
#include "platform/win32/background.h"

namespace varnowick {

class Win32FileOperations final : public FileOperations {
 public:
  // `news` is called when there is something to take(). Dialogs of the shell come up
  // in the middle of the screen that `beside` is on. Operations that still run at the
  // end of this are left behind; they end with the process.
  Win32FileOperations(Doorbell& doorbell, HWND beside, std::function<void()> news);

  int start(FileOperation operation) override;
  std::vector<FileOperationResult> take() override;
  bool busy() override;
  // The window in which the shell asks the user something about an operation, or tells
  // why it fails; null while it does not. Its progress is no question.
  HWND question() const;

 private:
  struct Shared;
  struct ShellOwnerEntry;
  const HWND beside_;
  std::shared_ptr<Shared> shared_;
  Mailbox<FileOperationResult> results_;
  int lastNumber_ = 0;
};

// Carries the operation out in the calling thread. The window may be none. What may
// not be handed to the shell is refused with an error.
FileOperationResult carryOut(const FileOperation& operation, HWND window);

}  // namespace varnowick
