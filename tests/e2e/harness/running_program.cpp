#include "tests/e2e/harness/running_program.h"

#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

DWORD activeProcesses(HANDLE job) {
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION info{};
  if (!QueryInformationJobObject(job, JobObjectBasicAccountingInformation, &info, sizeof info,
                                 nullptr)) {
    failWithLastError(L"QueryInformationJobObject");
  }
  return info.ActiveProcesses;
}

}  // namespace

RunningProgram::RunningProgram(const std::wstring& exe, Events& events)
    : job_(CreateJobObjectW(nullptr, nullptr)), events_(events) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  std::wstring commandLine = L"\"" + exe + L"\"";
  // Not the program's own folder, which it has to find by itself.
  wchar_t folder[MAX_PATH] = {};
  GetSystemDirectoryW(folder, MAX_PATH);
  if (!CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED,
                      nullptr, folder, &startup, &process)) {
    failWithLastError(L"starting " + exe);
  }
  handle_.reset(process.hProcess);
  const KernelHandle thread(process.hThread);
  processId_ = process.dwProcessId;
  if (!AssignProcessToJobObject(job_.get(), handle_.get())) {
    TerminateProcess(handle_.get(), 1);
    failWithLastError(L"AssignProcessToJobObject");
  }
  // The right to come to the front passes from whoever has it now.
  AllowSetForegroundWindow(processId_);
  ResumeThread(thread.get());
}

RunningProgram::~RunningProgram() {
  TerminateJobObject(job_.get(), 1);
  WaitForSingleObject(handle_.get(), kPatience);
  try {
    waitForAllEnded();
  } catch (const HarnessError&) {
    // The test has its verdict already; the folder may then be left behind.
  }
}

bool RunningProgram::running() const {
  return WaitForSingleObject(handle_.get(), 0) == WAIT_TIMEOUT;
}

void RunningProgram::kill() const {
  TerminateProcess(handle_.get(), 1);
  WaitForSingleObject(handle_.get(), kPatience);
}

DWORD RunningProgram::waitForExit() const {
  require(L"the program to end", [&] { return !running(); });
  DWORD code = 0;
  GetExitCodeProcess(handle_.get(), &code);
  return code;
}

void RunningProgram::waitForAllEnded() const {
  require(L"what the program started to end", [&] { return activeProcesses(job_.get()) == 0; });
}

void RunningProgram::waitUntilLoaded() const {
  require(L"the program to load", [&] {
    if (events_.count(kEventLoaded, processId_) > 0) return true;
    if (!running()) throw HarnessError(L"the program ended while loading");
    if (const DialogWindow dialog = anyDialog(processId_); dialog.open()) {
      throw HarnessError(L"a dialog came while loading: " + dialog.title() + L": " + dialog.text());
    }
    return false;
  });
}

HWND RunningProgram::mainWindow() const {
  const HWND window = findWindow(processId_, kMainClass);
  if (window == nullptr) throw HarnessError(L"the program shows no main window");
  return window;
}

HWND RunningProgram::waitForSuccessor() const {
  HWND found = nullptr;
  require(L"the program to start again", [&] {
    for (const HWND window : windowsOf(0)) {
      DWORD owner = 0;
      GetWindowThreadProcessId(window, &owner);
      if (owner == processId_ || classOf(window) != kMainClass) continue;
      if (IsWindowVisible(window)) found = window;
    }
    return found != nullptr;
  });
  return found;
}

}  // namespace varnowick::e2e
