#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

constexpr DWORD kLookAgain = 5;  // ms

}  // namespace

std::string toUtf8(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  const int needed =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

std::wstring fromUtf8(const std::string& bytes) {
  const int length = static_cast<int>(bytes.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), needed);
  return text;
}

HarnessError::HarnessError(const std::wstring& what) : std::runtime_error(toUtf8(what)) {}

void failWithLastError(const std::wstring& what) {
  const DWORD code = GetLastError();
  throw HarnessError(what + L" (system error " + std::to_wstring(code) + L")");
}

void pumpMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool waitFor(const std::function<bool()>& condition, DWORD limit) {
  const DWORD start = GetTickCount();
  for (;;) {
    pumpMessages();
    if (condition()) return true;
    if (GetTickCount() - start > limit) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kLookAgain, QS_ALLINPUT);
  }
}

void require(const std::wstring& what, const std::function<bool()>& condition, DWORD limit) {
  if (!waitFor(condition, limit)) throw HarnessError(L"timed out waiting for " + what);
}

void letTimePass(DWORD milliseconds) {
  const DWORD start = GetTickCount();
  for (DWORD passed = 0; passed < milliseconds; passed = GetTickCount() - start) {
    pumpMessages();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - passed, QS_ALLINPUT);
  }
}

}  // namespace varnowick::e2e
