// The thread behind Flusher. It lives as long as the object, sleeps while there is
// nothing to do, and shares nothing with the window but what is in here.
#pragma once

#include <windows.h>

#include <memory>

#include "platform/flusher.h"
#include "platform/win32/handles.h"

namespace varnowick {

class Win32Flusher final : public Flusher {
 public:
  Win32Flusher();
  // A flush that hangs is left behind; it ends with the process.
  ~Win32Flusher() override;
  Win32Flusher(const Win32Flusher&) = delete;
  Win32Flusher& operator=(const Win32Flusher&) = delete;

  // From now on the message is posted to the window when there is a result.
  void notify(HWND window, UINT message);

  void begin(std::vector<std::wstring> paths) override;
  std::optional<FileStatus> result() override;
  void wait(unsigned milliseconds) override;

 private:
  struct Shared;
  static DWORD WINAPI threadMain(void* shared);
  std::shared_ptr<Shared> shared_;
  KernelHandle thread_;
};

}  // namespace varnowick
