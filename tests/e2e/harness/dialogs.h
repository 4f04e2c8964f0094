// Top-level windows of a process, found by class and title: message boxes and
// dialogs, what they say, and their buttons. Buttons are pressed with the mouse,
// so a box that lies behind another window fails the test as it would fail the
// user.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace varnowick::e2e {

// The text of any window, of whatever process.
std::wstring textOf(HWND window);
std::wstring classOf(HWND window);
std::vector<HWND> windowsOf(DWORD process);
// A visible window of that class (and title, unless empty), or nullptr. Process 0
// stands for any.
HWND findWindow(DWORD process, const std::wstring& className, const std::wstring& title = {});

// A message box or another standard dialog.
class DialogWindow {
 public:
  explicit DialogWindow(HWND handle = nullptr) : handle_(handle) {}
  HWND handle() const { return handle_; }
  bool open() const { return IsWindow(handle_) && IsWindowVisible(handle_); }

  std::wstring title() const { return textOf(handle_); }
  // The texts of all its labels, in order, joined by LF.
  std::wstring text() const;
  // Identifiers of its buttons: IDOK, IDYES, ...
  std::vector<int> buttons() const;
  // True when one of the labels shows a system icon.
  bool hasIcon() const;
  // Clicks the button and waits until the dialog has closed.
  void press(int button) const;

 private:
  std::vector<HWND> children(const wchar_t* className) const;
  HWND handle_;
};

// Waits for a dialog of the process with that title (an empty one: any title).
DialogWindow waitForDialog(DWORD process, const std::wstring& title);
// The first dialog that the process shows now; not open() when there is none.
DialogWindow anyDialog(DWORD process);

}  // namespace varnowick::e2e
