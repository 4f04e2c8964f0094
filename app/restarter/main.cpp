// Restarter.exe: waits for the program that started it to end, then starts it
// again. The argument is the inherited handle of that program's process; without
// one the program is started at once.

#include <windows.h>

#include <cstdint>
#include <cwchar>
#include <string>

namespace {

constexpr DWORD kLongestWait = 60'000;  // ms

std::wstring programBeside() {
  std::wstring path(32'768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  path.resize(length);
  const std::size_t slash = path.find_last_of(L'\\');
  return (slash == std::wstring::npos ? L"" : path.substr(0, slash + 1)) + L"Varnowick.exe";
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR arguments, int) {
  if (const std::uint64_t value = std::wcstoull(arguments, nullptr, 10); value != 0) {
    const auto process = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value));
    // Starting beside a program that hangs would only bring its window forward.
    if (WaitForSingleObject(process, kLongestWait) == WAIT_TIMEOUT) return 1;
    CloseHandle(process);
  }
  std::wstring program = programBeside();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  std::wstring commandLine = L"\"" + program + L"\"";
  if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &process)) {
    MessageBoxW(nullptr, (L"Can't start: " + program).c_str(), L"Varnowick",
                MB_OK | MB_ICONEXCLAMATION);
    return 1;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return 0;
}
