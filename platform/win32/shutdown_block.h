// Tells the user why the end of the session has to wait, for the time of a scope.
// Systems before Windows Vista show nothing and wait all the same.
#pragma once

#include <windows.h>

namespace varnowick {

class ShutdownBlock {
 public:
  // For a top-level window of the calling thread.
  ShutdownBlock(HWND window, const wchar_t* reason) : window_(window) {
    using Create = BOOL(WINAPI*)(HWND, LPCWSTR);
    if (const auto create = function<Create>("ShutdownBlockReasonCreate"); create != nullptr)
      create(window, reason);
  }
  ShutdownBlock(const ShutdownBlock&) = delete;
  ShutdownBlock& operator=(const ShutdownBlock&) = delete;
  ~ShutdownBlock() {
    using Destroy = BOOL(WINAPI*)(HWND);
    if (const auto destroy = function<Destroy>("ShutdownBlockReasonDestroy"); destroy != nullptr)
      destroy(window_);
  }

 private:
  template <class Function>
  static Function function(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
  }
  HWND window_;
};

}  // namespace varnowick
