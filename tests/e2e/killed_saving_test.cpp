// A kill at any moment of a save leaves the state before or after, never one
// between.
#include <random>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

constexpr unsigned kSeed = 20260214;
constexpr int kRounds = 30;
constexpr int kContainers = 12;

// The workspace before: as an older version wrote it, so that a save by this
// version changes every single file.
DataFiles olderState() {
  DataFiles files;
  const auto older = [](std::string bytes) { return "[1.05]" + bytes.substr(3); };
  files[L"Varnowick.ini"] = older(SettingsFile().bytes());
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
  void trigger(const Bar& bar, bool byEnding) {
    if (byEnding) {
      PostMessageW(bar.window(), WM_CLOSE, 0, 0);
    } else {
      PostMessageW(bar.window(), WM_KEYDOWN, VK_F8, 0x00420001);
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
  events().expect(kEventSaved, L"saved", [&] { trigger(first, false); });
  QueryPerformanceCounter(&end);
  const long long whole = (end.QuadPart - start.QuadPart) * 1'000'000 / frequency.QuadPart;
  const DataFiles after = folder().state();
  ASSERT_EQ(after.size(), before.size());
  for (const auto& [name, bytes] : after) ASSERT_NE(bytes, before.at(name));
  program().kill();

  std::mt19937 random(kSeed);
  std::uniform_int_distribution<long long> delay(0, whole + whole / 4);
  int sawBefore = 0, sawAfter = 0;
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round) + " of seed " + std::to_string(kSeed));
    folder().writeAll(before);
    const Bar bar = startBar();
    trigger(bar, round % 2 == 1);
    spin(delay(random));
    program().kill();
    // The next start may have to finish what the kill cut off; it asks nothing.
    startBar();
    program().kill();
    const DataFiles now = folder().state();
    const bool isBefore = now == before;
    const bool isAfter = now == after;
    ASSERT_TRUE(isBefore || isAfter) << "the files are of neither state";
    (isBefore ? sawBefore : sawAfter) += 1;
  }
  RecordProperty("before", sawBefore);
  RecordProperty("after", sawAfter);
  std::printf("of %d kills within %lld us: %d before, %d after\n", kRounds, whole + whole / 4,
              sawBefore, sawAfter);
}

}  // namespace
}  // namespace varnowick::e2e
