// Drives a modal dialog of the calling thread from inside its own message loop,
// so that a test needs neither input nor a second thread.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/win/toolkit/dialog.h"

namespace varnowick {

class DialogDriver {
 public:
  // Runs script once with the first dialog that opens while this object lives. A
  // dialog that the script leaves open is closed as with Esc.
  explicit DialogDriver(std::function<void(HWND)> script) {
    current() = this;
    script_ = std::move(script);
    timer_ = SetTimer(nullptr, 0, 10, &DialogDriver::tick);
  }
  DialogDriver(const DialogDriver&) = delete;
  DialogDriver& operator=(const DialogDriver&) = delete;
  ~DialogDriver() {
    KillTimer(nullptr, timer_);
    current() = nullptr;
    EXPECT_TRUE(done_) << "no dialog opened";
  }

 private:
  static DialogDriver*& current() {
    static DialogDriver* driver = nullptr;
    return driver;
  }
  static BOOL CALLBACK findDialog(HWND window, LPARAM found) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 15);
    if (!IsWindowVisible(window) || lstrcmpW(name, L"#32770") != 0) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
  }
  static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
    DialogDriver* driver = current();
    if (driver == nullptr || driver->done_) return;
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr) return;
    driver->done_ = true;
    driver->script_(dialog);
    if (IsWindow(dialog)) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  }

  std::function<void(HWND)> script_;
  UINT_PTR timer_ = 0;
  bool done_ = false;
};

inline void clickIn(HWND dialog, int id) { SendDlgItemMessageW(dialog, id, BM_CLICK, 0, 0); }
inline std::wstring textIn(HWND dialog, int id) { return windowText(GetDlgItem(dialog, id)); }
inline void typeIn(HWND dialog, int id, const std::wstring& text) {
  SetDlgItemTextW(dialog, id, text.c_str());
}

}  // namespace varnowick
