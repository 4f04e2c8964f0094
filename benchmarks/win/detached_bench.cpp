// What it costs to detach containers and to attach them again, and what is left
// behind after a thousand rounds.
#include <objbase.h>

#include "benchmarks/win/figures.h"
#include "benchmarks/win/host_process.h"
#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/running_program.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

constexpr int kContainers = 20;
constexpr int kShortcuts = 20;  // in each
constexpr int kRounds = 1000;
constexpr double kNoticed = 100;  // ms: what takes longer is felt as waiting
constexpr const wchar_t* kClass = L"VarnowickContainer";

DataFiles workspace() {
  DataFiles files;
  files[L"Varnowick.ini"] = SettingsFile().window(kExpandedLeft, 0, 4700, 11000).bytes();
  for (int c = 0; c < kContainers; ++c) {
    ContainerRow container{.name = L"Container " + std::to_wstring(c),
                           .y = 120 + c * 2000,
                           .width = 4200,
                           .height = 1900};
    for (int s = 0; s < kShortcuts; ++s)
      container.shortcuts.push_back({.caption = L"Shortcut " + std::to_wstring(s),
                                     .path = L"C:\\windows\\notepad.exe",
                                     .x = 60 + s % 5 * 820,
                                     .y = 400 + s / 5 * 500});
    files[L"Containers\\" + std::to_wstring(c) + L".con"] = containerFile(container);
  }
  return files;
}

// The button on a container's title, which detaches it on the bar and attaches it in
// its window. Returns once that is done and painted.
void pressDetach(HWND window, int slot) {
  PostMessageW(window, kMsgAction, static_cast<WPARAM>(ControlKind::cmdConDetach), slot);
  SendMessageW(window, WM_NULL, 0, 0);
}

HWND windowOf(const RunningProgram& program, int slot) {
  return findWindow(program.process(), kClass, L"Container " + std::to_wstring(slot));
}

void requireWindow(const RunningProgram& program, int slot, bool there) {
  require(there ? L"a detached window" : L"a detached window to go",
          [&] { return (windowOf(program, slot) != nullptr) == there; });
}

void measureTimes(const RunningProgram& program, const Bar& bar) {
  std::vector<double> detached;
  std::vector<double> attached;
  for (int slot = 0; slot < kContainers; ++slot) {
    const double began = now();
    pressDetach(bar.window(), slot);
    requireWindow(program, slot, true);
    // Its first paint comes before the answer.
    SendMessageW(windowOf(program, slot), WM_NULL, 0, 0);
    detached.push_back(now() - began);
  }
  for (int slot = 0; slot < kContainers; ++slot) {
    const HWND window = windowOf(program, slot);
    const double began = now();
    PostMessageW(window, kMsgAction, static_cast<WPARAM>(ControlKind::cmdConDetach), slot);
    requireWindow(program, slot, false);
    attached.push_back(now() - began);
  }
  row("detach a container (of 20), saved", median(detached), "noticed", kNoticed, true);
  row("attach a container (of 20), saved", median(attached), "noticed", kNoticed, true);
}

struct Counts {
  std::size_t windows = 0;
  DWORD handles = 0;
  double memory = 0;  // bytes; 0: unknown
};

Counts countsOf(const RunningProgram& program, const std::optional<HostProcess>& host) {
  letTimePass(1500);  // what was closed is freed from the message loop
  Counts counts;
  counts.windows = windowsOf(program.process()).size();
  const KernelHandle process(OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, program.process()));
  if (process) GetProcessHandleCount(process.get(), &counts.handles);
  if (host) counts.memory = host->privateBytes();
  return counts;
}

void countRow(const std::string& name, double after, double before, bool mayGrow) {
  const bool kept = after <= before;
  std::printf("%s | %.0f | %.0f before | %.2f | %s | %s\n", name.c_str(), after, before,
              before > 0 ? after / before : 0, mayGrow ? "-" : "no more",
              mayGrow ? "-"
              : kept  ? "yes"
                      : "NO");
}

void measureLeftovers(const RunningProgram& program, const Bar& bar,
                      const std::optional<HostProcess>& host) {
  const auto rounds = [&](int count) {
    for (int i = 0; i < count; ++i) {
      const int slot = i % kContainers;
      pressDetach(bar.window(), slot);
      requireWindow(program, slot, true);
      pressDetach(windowOf(program, slot), slot);
      requireWindow(program, slot, false);
    }
  };
  rounds(50);  // caches fill
  const Counts before = countsOf(program, host);
  const double began = now();
  rounds(kRounds);
  const double each = (now() - began) / kRounds;
  const Counts after = countsOf(program, host);
  row("detach and attach, one round of 1000", each, "noticed", kNoticed * 2, true);
  countRow("windows after 1000 rounds", static_cast<double>(after.windows),
           static_cast<double>(before.windows), false);
  // Wine does not count those of another process.
  if (before.handles != 0)
    countRow("kernel handles after 1000 rounds", after.handles, before.handles, false);
  if (host)
    countRow("private memory after 1000 rounds, KB", after.memory / 1024, before.memory / 1024,
             true);
}

void run() {
  Events events;
  const ProgramFolder folder;
  folder.writeAll(workspace());
  mouse::moveTo({900, 600});
  const RunningProgram program(folder, events);
  const Bar bar(program, events);
  const auto host = HostProcess::find(folder.exe());
  letTimePass(2000);  // until icons are loaded
  measureTimes(program, bar);
  measureLeftovers(program, bar, host);
}

}  // namespace
}  // namespace varnowick::e2e

int main() {
  CoInitialize(nullptr);
  try {
    varnowick::e2e::seeRealPixels();
    varnowick::e2e::run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
