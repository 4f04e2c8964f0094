// One running program per data folder. The first one holds a mutex named after
// the folder and marks its main window; a later one finds that window and asks it
// to come forward. Knows nothing of what the windows show.
#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/handles.h"

namespace varnowick {

class InstanceGuard {
 public:
  explicit InstanceGuard(const std::wstring& dataFolder);

  // False when a program with this data folder is running already, be it another
  // user's or in another session.
  bool first() const { return first_; }
  // The first one marks its main window as soon as there is one.
  void announceWindow(HWND mainWindow) const;
  // A later one passes its right to the foreground on and posts message() to the
  // first one's window, which may still have to appear: it is waited for at most
  // that long. False when it was not found.
  bool bringFirstForward(unsigned milliseconds = 3000) const;

  // Arrives at the marked window when a second start wants it in front.
  static UINT message();

 private:
  std::wstring name_;
  KernelHandle mutex_;
  bool first_ = true;
};

// The name that a data folder goes by: the same for every spelling of a path.
std::wstring instanceName(const std::wstring& dataFolder);

// Makes the window the foreground window even when the system would rather
// flash its button in the taskbar. False when it refused all the same.
bool forceForeground(HWND window);

}  // namespace varnowick
