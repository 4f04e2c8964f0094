#include "tests/e2e/harness/events.h"

#include <algorithm>

#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

// The range that Windows leaves to the makers of programs.
constexpr DWORD kFirst = 0x0101;
constexpr DWORD kLast = 0x01FF;

// Hook procedures carry no context; there is one listener at a time.
Events* listener = nullptr;

}  // namespace

Events::Events() {
  if (listener != nullptr) throw HarnessError(L"only one Events object can listen at a time");
  listener = this;
  hook_ = SetWinEventHook(kFirst, kLast, nullptr, &Events::heard, 0, 0, WINEVENT_OUTOFCONTEXT);
  if (hook_ == nullptr) {
    listener = nullptr;
    failWithLastError(L"SetWinEventHook");
  }
}

Events::~Events() {
  UnhookWinEvent(hook_);
  listener = nullptr;
}

void CALLBACK Events::heard(HWINEVENTHOOK, DWORD event, HWND window, LONG, LONG, DWORD, DWORD) {
  if (listener == nullptr) return;
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  listener->heard_.push_back({event, window, process});
}

std::size_t Events::count(DWORD event, DWORD process) const {
  const auto matches = [&](const HeardEvent& e) {
    return e.event == event && (process == 0 || e.process == process);
  };
  return static_cast<std::size_t>(std::count_if(heard_.begin(), heard_.end(), matches));
}

void Events::expect(DWORD event, const std::wstring& name, const std::function<void()>& action) {
  pumpMessages();
  const std::size_t before = count(event);
  action();
  require(L"the event " + name, [&] { return count(event) > before; });
}

void Events::waitForFirst(DWORD event, const std::wstring& name, DWORD process) {
  require(L"the first event " + name, [&] { return count(event, process) > 0; });
}

}  // namespace varnowick::e2e
