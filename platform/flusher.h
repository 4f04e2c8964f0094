// Brings files to the disk beside the program's own thread. What was written to a
// file may be lost by a power cut until this is done.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

namespace varnowick {

class Flusher {
 public:
  virtual ~Flusher() = default;
  // Begins to flush these files (full paths); what an earlier call asked for and is
  // not done yet is given up.
  virtual void begin(std::vector<std::wstring> paths) = 0;
  // How the last begin ended: Ok when every file was there and was flushed, else the
  // first failure. Nothing while it is under way.
  virtual std::optional<FileStatus> result() = 0;
  // Waits for the result, at most that long.
  virtual void wait(unsigned milliseconds) = 0;
};

}  // namespace varnowick
