// The splash window: the program's name and what is being loaded. It appears
// only when loading takes long enough to be noticed.
#pragma once

#include <string>

#include "ui/win/toolkit/window.h"

namespace varnowick {

class frmSplash : public Window {
 public:
  // Begins to count the time. No window is made yet: most starts need none.
  void open() { openedAt_ = GetTickCount(); }
  // Shows the text. The window appears in the middle of the primary monitor at
  // the first call later than 200 ms after open().
  void progress(const std::wstring& text);
  void close() { destroy(); }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool makeWindow();
  void paint(HDC dc);
  std::wstring text_;
  DWORD openedAt_ = 0;
};

}  // namespace varnowick
