// Another program's window in front of the bar, with a field that is typed into.
// It belongs to the test's own process.
#pragma once

#include <windows.h>

#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {

class OtherProgram {
 public:
  explicit OtherProgram(const RECT& at = {700, 300, 1100, 500}, DWORD style = WS_OVERLAPPEDWINDOW)
      : window_(CreateWindowExW(0, L"EDIT", L"", style | WS_VISIBLE, at.left, at.top,
                                at.right - at.left, at.bottom - at.top, nullptr, nullptr, nullptr,
                                nullptr)) {
    comeForward();
  }
  ~OtherProgram() { close(); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  void comeForward() {
    SetForegroundWindow(window_);
    require(L"the other program in front", [&] { return inFront(); });
  }
  void close() {
    if (window_ != nullptr) DestroyWindow(window_);
    window_ = nullptr;
  }
  HWND window() const { return window_; }
  bool inFront() const { return GetForegroundWindow() == window_; }

 private:
  HWND window_;
};

}  // namespace varnowick::e2e
