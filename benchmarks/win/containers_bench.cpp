// What it costs to fold and to shrink everything on a bar with 10 000 shortcuts: the
// time from the command until the next frame stands painted.
#include <objbase.h>

#include "benchmarks/win/figures.h"
#include "benchmarks/win/host_process.h"
#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/running_program.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

constexpr int kRounds = 20;
constexpr DWORD kSaved = 1500;  // ms: the save that follows is not what is measured

void measure(Events& events, const Bar& bar, const std::optional<HostProcess>& host,
             ControlKind button, const std::string& name) {
  std::vector<double> painted;
  std::vector<double> processor;
  for (int i = 0; i < kRounds; ++i) {
    const double before = host ? host->processorTime() : 0;
    const double began = now();
    events.expect(kEventSceneChanged, L"scene changed",
                  [&] { PostMessageW(bar.window(), kMsgAction, static_cast<WPARAM>(button), 0); });
    // Answered once the command, which paints before it returns, is done.
    SendMessageW(bar.window(), WM_NULL, 0, 0);
    painted.push_back(now() - began);
    if (host) processor.push_back(host->processorTime() - before);
    letTimePass(kSaved);
  }
  row(name + ", 40 x 250, to the next frame", median(painted), "one frame", kFrame, true);
  row("  the fastest of " + std::to_string(kRounds), quickest(painted), "one frame", kFrame, false);
  if (host) row("  processor time", median(processor), "one frame", kFrame, false);
}

void run() {
  Events events;
  const ProgramFolder folder;
  folder.writeAll(
      largeWorkspace(SettingsFile().window(kExpandedLeft, 0, 4700, 11000).set("[Hidden]", "0")));
  mouse::moveTo({130, 14});
  const RunningProgram program(folder, events);
  const Bar bar(program, events);
  const auto host = HostProcess::find(folder.exe());
  letTimePass(2000);  // until icons are loaded
  measure(events, bar, host, ControlKind::PicFoldUnfoldAllToolbar, "fold or unfold all");
  measure(events, bar, host, ControlKind::PicShrinkExpandAllToolbar, "shrink or expand all");
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
