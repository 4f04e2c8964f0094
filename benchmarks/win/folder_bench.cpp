// What a folder of 20 000 entries costs the one who uses the bar meanwhile: the
// longest time in which the window does not answer while the folder's container is
// opened, until its entries are there, and after a file has come.
#include <objbase.h>

#include <algorithm>

#include "benchmarks/win/figures.h"
#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/running_program.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

constexpr int kEntries = 20'000;
constexpr int kRounds = 5;
constexpr double kNoticed = 100;  // ms: what a user takes for at once

struct Figures {
  double longest = 0;  // without an answer
  double until = 0;    // what was waited for
};

// Asks the window again and again, until the scene has changed that often.
Figures askMeanwhile(const Events& events, const Bar& bar, DWORD process, std::size_t changes,
                     const std::function<void()>& action) {
  const std::size_t goal = events.count(kEventSceneChanged, process) + changes;
  Figures figures;
  const double began = now();
  action();
  while (events.count(kEventSceneChanged, process) < goal && now() - began < 30'000) {
    const double asked = now();
    SendMessageW(bar.window(), WM_NULL, 0, 0);
    figures.longest = std::max(figures.longest, now() - asked);
    Sleep(1);
    pumpMessages();
  }
  figures.until = now() - began;
  return figures;
}

void rows(const std::string& name, const std::vector<Figures>& all) {
  std::vector<double> longest, until;
  for (const Figures& figures : all) {
    longest.push_back(figures.longest);
    until.push_back(figures.until);
  }
  row(name + ", longest time without an answer", *std::max_element(longest.begin(), longest.end()),
      "noticed", kNoticed, true);
  row("  until it shows", median(until), "noticed", kNoticed, false);
}

void run() {
  Events events;
  const ProgramFolder folder;
  const std::wstring shown = folder.file(L"Many");
  CreateDirectoryW(shown.c_str(), nullptr);
  for (int i = 0; i < kEntries; ++i)
    writeFile(shown + L"\\File number " + std::to_wstring(i) + L".txt", "");
  folder.write(L"Varnowick.ini",
               SettingsFile().window(kExpandedLeft, 0, 4700, 11000).set("[Hidden]", "0").bytes());
  folder.write(
      L"Containers\\0.con",
      containerFile(
          {.name = L"Many", .width = 4000, .height = 6000, .folded = true, .folder = shown}));
  mouse::moveTo({130, 14});
  const RunningProgram program(folder, events);
  const Bar bar(program, events);
  letTimePass(1500);

  const auto fold = [&] {
    PostMessageW(bar.window(), kMsgAction, static_cast<WPARAM>(ControlKind::lblFoldUnfold), 0);
  };
  std::vector<Figures> opened, grown;
  // The first opening lists; the later ones show what is known and look again.
  opened.push_back(askMeanwhile(events, bar, program.process(), 2, fold));
  for (int i = 0; i < kRounds; ++i) {
    letTimePass(500);
    const std::wstring path = shown + L"\\A new one " + std::to_wstring(i);
    grown.push_back(askMeanwhile(events, bar, program.process(), 1, [&] { writeFile(path, "x"); }));
  }
  rows("a folder of 20 000 entries is opened", opened);
  rows("a file comes into it", grown);
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
