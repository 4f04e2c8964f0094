#include "tests/support/run_messages.h"

#include <windows.h>

namespace varnowick {

bool runMessagesUntil(const std::function<bool()>& done) {
  constexpr DWORD kLongest = 20'000;
  const DWORD start = GetTickCount();
  while (!done()) {
    if (GetTickCount() - start >= kLongest) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  return true;
}

}  // namespace varnowick
