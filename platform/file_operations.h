// Copying, moving, recycling and renaming files, in the background: a large copy
// must not stop the bar. The platform shows progress and its own questions. It
// decides nothing; what may be done with what is containers/folder_operations.h.
#pragma once

#include <string>
#include <vector>

namespace varnowick {

enum class FileAction { None, Copy, Move, Recycle, Rename };

struct FileOperation {
  FileAction action = FileAction::None;
  std::vector<std::wstring> from{};  // full paths without wildcards
  // Copy, Move: the folder to put them into. Rename: the new full path.
  std::wstring to{};
  bool renameOnCollision = false;  // copies beside themselves get a name of their own
  bool operator==(const FileOperation&) const = default;
};

struct FileOperationResult {
  FileOperation operation;
  bool cancelled = false;  // by the user, who knows
  std::wstring error{};    // one line; empty when all went well
  int number = 0;          // what start() has answered

  bool complete() const { return !cancelled && error.empty(); }
};

class FileOperations {
 public:
  virtual ~FileOperations() = default;
  // Never waits. The end is announced to whoever owns this. A number for it, never 0;
  // 0 when there is nothing to be done.
  virtual int start(FileOperation operation) = 0;
  virtual std::vector<FileOperationResult> take() = 0;
  // Whether anything has been started and not ended.
  virtual bool busy() = 0;
};

}  // namespace varnowick
