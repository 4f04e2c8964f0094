// What it costs to bring the bar out and to slide it away, with 10 000 shortcuts
// on it: the time until it stands painted, and the processor time of one step.
#include <objbase.h>

#include "benchmarks/win/figures.h"
#include "benchmarks/win/host_process.h"
#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/running_program.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

constexpr int kRounds = 15;
constexpr int kBarWidth = 4700;  // twips
constexpr double kTick = 5;      // ms: the slide's timer
// From 200 twips off screen until no more than 100 remain, 500 at a time.
constexpr int kSteps = (kBarWidth - 100 - 200 + 499) / 500;

void measure() {
  Events events;
  const ProgramFolder folder;
  folder.writeAll(largeWorkspace(
      SettingsFile().window(-kBarWidth + 40, 0, kBarWidth, 11000).set("[Animate]", "1")));
  const POINT away{GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2};
  mouse::moveTo(away);
  const RunningProgram program(folder, events);
  Bar bar(program, events);
  const auto host = HostProcess::find(folder.exe());
  std::vector<double> shown;
  std::vector<double> steps;
  for (int i = 0; i < kRounds; ++i) {
    RECT client{};
    GetClientRect(bar.window(), &client);
    const LPARAM strip = MAKELPARAM(client.right - 1, client.bottom / 2);
    const double began = now();
    events.expect(kEventExpanded, L"expanded", [&] {
      PostMessageW(bar.window(), WM_LBUTTONDOWN, MK_LBUTTON, strip);
      PostMessageW(bar.window(), WM_LBUTTONUP, 0, strip);
    });
    // Answered when the messages before it, the painting among them, are done.
    RedrawWindow(bar.window(), nullptr, nullptr, RDW_UPDATENOW);
    SendMessageW(bar.window(), WM_NULL, 0, 0);
    shown.push_back(now() - began);

    const double before = host ? host->processorTime() : 0;
    events.expect(kEventCollapsed, L"collapsed",
                  [&] { PostMessageW(bar.window(), WM_KEYDOWN, VK_ESCAPE, 0); });
    if (host) steps.push_back((host->processorTime() - before) / kSteps);
  }
  row("bar out and painted, 40 x 250", median(shown), "one frame", kFrame, false);
  if (host) row("one slide step, 40 x 250, processor", median(steps), "its tick", kTick, true);
}

}  // namespace
}  // namespace varnowick::e2e

int main() {
  CoInitialize(nullptr);
  try {
    varnowick::e2e::measure();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
