// A kill at any moment of a save leaves the state before or after, never one
// between.
#include <random>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

constexpr unsigned kKillingSeed = 20260214;
constexpr int kRounds = 30;
constexpr int kContainers = 12;

// The workspace before: as an older version wrote it, so that a save by this
// version changes every single file.
DataFiles olderState() {
  DataFiles files;
  const auto older = [](std::string bytes) { return "[1.05]" + bytes.substr(3); };
  // The bar is out: while it is away its keys do nothing.
  files[L"Varnowick.ini"] = older(SettingsFile()
                                      .set("[Hidden]", "0")
                                      .window(kExpandedLeft, kBarTop, kBarWidth, kBarHeight)
                                      .bytes());
  const std::string line(70, 'n');
  for (int i = 0; i < kContainers; ++i) {
    std::string note;
    for (int n = 0; n < 40; ++n) note += line + "\r\n";
    files[L"Containers\\" + std::to_wstring(i) + L".con"] = older(containerFile(
        {.name = L"Container " + std::to_wstring(i), .y = 120 + 200 * i, .note = note}));
  }
  return files;
}

class KilledSaving : public ProgramTest {
 protected:
  // Starts a save without waiting for it: by key, or by ending the program.
  void trigger(HWND window, bool byEnding) {
    if (byEnding) {
      PostMessageW(window, WM_CLOSE, 0, 0);
    } else {
      PostMessageW(window, WM_KEYDOWN, VK_F8, 0x00420001);
    }
  }
};

// Times are in microseconds: a save takes a few milliseconds.
void spin(long long microseconds) {
  LARGE_INTEGER frequency{}, start{}, now{};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  do {
    QueryPerformanceCounter(&now);
  } while ((now.QuadPart - start.QuadPart) * 1'000'000 / frequency.QuadPart < microseconds);
}

TEST_F(KilledSaving, LeavesTheStateBeforeOrAfter) {
  const DataFiles before = olderState();
  folder().writeAll(before);
  const Bar first = startBar();
  // One whole save tells what comes after it and how long it takes.
  LARGE_INTEGER frequency{}, start{}, end{};
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  expectSaved([&] { trigger(first.window(), false); });
  QueryPerformanceCounter(&end);
  const long long whole = (end.QuadPart - start.QuadPart) * 1'000'000 / frequency.QuadPart;
  const DataFiles after = folder().state();
  require(L"the files to be flushed", [&] { return !folder().exists(L"Varnowick.journal"); });
  ASSERT_EQ(after.size(), before.size());
  for (const auto& [name, bytes] : after) ASSERT_NE(bytes, before.at(name));

  std::mt19937 random(kKillingSeed);
  std::uniform_int_distribution<long long> delay(0, whole + whole / 4);
  int sawBefore = 0, sawAfter = 0, cutOff = 0;
  HWND window = first.window();
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round) + " of seed " + std::to_string(kKillingSeed));
    // The program holds the same workspace whichever of the two it has read.
    folder().writeAll(before);
    trigger(window, round % 2 == 1);
    spin(delay(random));
    program().kill();
    const DataFiles found = folder().state();
    if (found != before && found != after) ++cutOff;
    // The next start has to finish what the kill cut off; it asks nothing.
    window = startBar().window();
    const DataFiles now = folder().state();
    const bool isBefore = now == before;
    ASSERT_TRUE(isBefore || now == after) << "the files are of neither state";
    (isBefore ? sawBefore : sawAfter) += 1;
  }
  std::printf("%d kills within %lld us: %d before, %d after, %d of these cut off amid the files\n",
              kRounds, whole + whole / 4, sawBefore, sawAfter, cutOff);
}

}  // namespace
}  // namespace varnowick::e2e
