// The shell behind FileOperations: one thread for each operation, with a window of
// its own for what the shell asks and shows there, so that no dialog of it holds up
// the bar.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/file_operations.h"

namespace varnowick {

class Win32FileOperations final : public FileOperations {
 public:
  // The message is posted to the owner when there is something to take(). Dialogs
  // of the shell come up in the middle of the owner's screen.
  Win32FileOperations(HWND owner, UINT message);
  // Operations that still run are left behind; they end with the process.
  ~Win32FileOperations() override;
  Win32FileOperations(const Win32FileOperations&) = delete;
  Win32FileOperations& operator=(const Win32FileOperations&) = delete;

  int start(FileOperation operation) override;
  std::vector<FileOperationResult> take() override;
  bool busy() override;
  // The window in which the shell asks the user something about an operation, or tells
  // why it fails; null while it does not. Its progress is no question.
  HWND question() const;

 private:
  struct Shared;
  struct ShellOwnerEntry;
  struct Job;
  static DWORD WINAPI threadMain(void* job);
  std::shared_ptr<Shared> shared_;
  int lastNumber_ = 0;
};

// Carries the operation out in the calling thread. The window may be none. What may
// not be handed to the shell is refused with an error.
FileOperationResult carryOut(const FileOperation& operation, HWND window);

}  // namespace varnowick
