// What Windows counts for a process does not grow with use.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using Handles = ProgramTest;

struct Counts {
  DWORD gdi = 0, user = 0, kernel = 0;
};

Counts countsOf(DWORD process) {
  const KernelHandle handle(OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, process));
  Counts counts;
  counts.gdi = GetGuiResources(handle.get(), GR_GDIOBJECTS);
  counts.user = GetGuiResources(handle.get(), GR_USEROBJECTS);
  GetProcessHandleCount(handle.get(), &counts.kernel);
  return counts;
}

TEST_F(Handles, DoNotGrowOverFiftyRounds) {
  constexpr int kWarmUp = 5;  // icons and fonts that stay
  constexpr int kRounds = 50;
  write(SettingsFile().set("[Undock Immediately]", "1"), {{.name = L"Tools"}});
  Bar bar = startBar();
  Counts start;
  for (int round = 0; round < kWarmUp + kRounds; ++round) {
    if (round == kWarmUp) start = countsOf(program().process());
    bar.focus();
    events().expect(kEventCollapsed, L"collapsed", [] { keyboard::press(VK_ESCAPE); });
  }
  const Counts end = countsOf(program().process());
  if (start.gdi == 0 && start.user == 0 && start.kernel == 0) {
    GTEST_SKIP() << "this system does not count them (Wine does not)";
  }
  EXPECT_LE(end.kernel, start.kernel + 5);
  EXPECT_LE(end.gdi, start.gdi + 5);
  EXPECT_LE(end.user, start.user + 5);
}

}  // namespace
}  // namespace varnowick::e2e
