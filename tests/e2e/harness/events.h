// The WinEvents that the program raises when something a user would notice has
// changed. Listens to every process, so that nothing is missed between a start
// and the first look, and so that a restarted program is heard too.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace varnowick::e2e {

struct HeardEvent {
  DWORD event;
  HWND window;
  DWORD process;
};

class Events {
 public:
  Events();
  ~Events();
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;

  // How often the event has come so far from that process (0: from any).
  std::size_t count(DWORD event, DWORD process = 0) const;
  // Does the action, then waits until the event has come once more.
  void expect(DWORD event, const std::wstring& name, const std::function<void()>& action);
  // Waits until the event has come from that process at least once.
  void waitForFirst(DWORD event, const std::wstring& name, DWORD process);

 private:
  static void CALLBACK heard(HWINEVENTHOOK hook, DWORD event, HWND window, LONG object, LONG child,
                             DWORD thread, DWORD time);
  HWINEVENTHOOK hook_ = nullptr;
  std::vector<HeardEvent> heard_;
};

}  // namespace varnowick::e2e
