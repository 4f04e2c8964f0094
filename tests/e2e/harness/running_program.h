// The real program as a process. It and everything it starts live in one job, so
// that nothing survives a test, however that ends.
#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/handles.h"
#include "tests/e2e/harness/events.h"
#include "tests/e2e/harness/program_folder.h"

namespace varnowick::e2e {

inline constexpr const wchar_t* kMainClass = L"VarnowickMain";
inline constexpr const wchar_t* kTitle = L"Varnowick";

class RunningProgram {
 public:
  RunningProgram(const std::wstring& exe, Events& events);
  RunningProgram(const ProgramFolder& folder, Events& events)
      : RunningProgram(folder.exe(), events) {}
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  DWORD process() const { return processId_; }
  bool running() const;
  // Ends the process at once, as a power cut would.
  void kill() const;
  // Waits for the process to end by itself; its exit code.
  DWORD waitForExit() const;
  // Waits until nothing that the program started is running any more.
  void waitForAllEnded() const;

  // Waits until the program has loaded its files and shows itself.
  void waitUntilLoaded() const;
  // The main window; throws when there is none.
  HWND mainWindow() const;
  // Waits for a start of the program's that is not this one, such as a restart:
  // its main window.
  HWND waitForSuccessor() const;

 private:
  KernelHandle job_;
  KernelHandle handle_;
  DWORD processId_ = 0;
  Events& events_;
};

}  // namespace varnowick::e2e
