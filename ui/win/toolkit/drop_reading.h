// Reads what was dropped or pasted into records of shortcuts, on a thread of its own:
// whether a path is a folder, and what a link file leads to, may be a question to a
// server that does not answer.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/win32/handles.h"
#include "shortcuts/dropped.h"

namespace varnowick {

class DropReading {
 public:
  // For those that only wait a moment: link files on a disk are read by then.
  static constexpr DWORD kMoment = 250;  // ms

  // Posts the message to the window when it has ended.
  static std::shared_ptr<DropReading> begin(Dropped dropped, bool extractURLs, HWND window,
                                            UINT message);
  DropReading(const DropReading&) = delete;
  DropReading& operator=(const DropReading&) = delete;

  // False when it still goes on after that long.
  bool wait(DWORD milliseconds) const {
    return WaitForSingleObject(done_.get(), milliseconds) == WAIT_OBJECT_0;
  }
  // Once, after it has ended.
  DropRecords take() { return std::move(records_); }

 private:
  DropReading(Dropped dropped, bool extractURLs, HWND window, UINT message);
  static DWORD WINAPI threadMain(void* held);
  void read();

  Dropped dropped_;
  const bool extractURLs_;
  const HWND window_;
  const UINT message_;
  const KernelHandle done_;
  DropRecords records_;  // the thread's own until it has ended
};

}  // namespace varnowick
