#include "platform/win32/win32_shell.h"

#include <windows.h>
// These rely on it.
#include <shellapi.h>

#include "platform/win32/dll_path.h"
#include "platform/win32/handles.h"

namespace varnowick {

namespace {

const wchar_t* orNull(const std::wstring& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

int Win32Shell::execute(OwnerWindow owner, const std::wstring& verb, const std::wstring& file,
                        const std::wstring& parameters, const std::wstring& directory) {
  const OwnDllPathForChildren children;
  const HINSTANCE result =
      ShellExecuteW(reinterpret_cast<HWND>(owner.value), orNull(verb), file.c_str(),
                    orNull(parameters), orNull(directory), SW_SHOWNORMAL);
  const auto code = reinterpret_cast<INT_PTR>(result);
  return code > 32 ? 33 : static_cast<int>(code);
}

bool Win32Shell::run(const std::wstring& commandLine) {
  const OwnDllPathForChildren children;
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  std::wstring writable = commandLine;  // the system writes into the line
  if (!CreateProcessW(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &start, &process)) {
    return false;
  }
  const KernelHandle processOwner(process.hProcess);
  const KernelHandle threadOwner(process.hThread);
  return true;
}

}  // namespace varnowick
