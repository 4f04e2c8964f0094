// Waiting for what another process does. Every wait ends as soon as its
// condition holds; the limits only decide when a hung test gives up, so they are
// generous and no test learns anything from them.
#pragma once

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace varnowick::e2e {

// The test cannot go on: the program did not do what the test waits for, or the
// machine refused something. GoogleTest reports the text.
class HarnessError : public std::runtime_error {
 public:
  explicit HarnessError(const std::wstring& what);
};

std::string toUtf8(const std::wstring& text);
std::wstring fromUtf8(const std::string& bytes);
// "what" with the reason of GetLastError.
[[noreturn]] void failWithLastError(const std::wstring& what);

inline constexpr DWORD kPatience = 20'000;  // ms

// Handles this thread's messages, which is how WinEvents arrive.
void pumpMessages();
// Waits for the condition while pumping messages; false when the limit passed.
bool waitFor(const std::function<bool()>& condition, DWORD limit = kPatience);
// The same, throwing HarnessError "timed out waiting for <what>".
void require(const std::wstring& what, const std::function<bool()>& condition,
             DWORD limit = kPatience);
// Lets a length of time pass, for what has to happen in real time: a delay before
// a kill, or a while in which nothing may happen.
void letTimePass(DWORD milliseconds);

}  // namespace varnowick::e2e
