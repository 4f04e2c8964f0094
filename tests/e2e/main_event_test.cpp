// The typical event from start to end.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainEvent = ProgramTest;

TEST_F(MainEvent, RestingExpandsAClickLaunchesAndLeavingCollapses) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile(),
        {{.name = L"Tools",
          .shortcuts = {{.caption = L"Probe", .path = probe, .parameters = L"-v \"two words\""}}}});
  const DataFiles before = folder().state();
  Bar bar = startBar();
  const RECT collapsed = windowAt(kCollapsedLeft, kBarTop, kBarWidth, kBarHeight);
  EXPECT_EQ(bar.rect(), collapsed);
  EXPECT_EQ(bar.rect().right, GetSystemMetrics(SM_XVIRTUALSCREEN) + toPixels(40));

  bar.expand();
  EXPECT_EQ(bar.rect(), windowAt(kExpandedLeft, kBarTop, kBarWidth, kBarHeight));
  EXPECT_GT(coloursIn(bar.accessible().waitFor(L"Tools").rect).size(), 1U)
      << "the container shows nothing";

  bar.click(L"Probe");
  const Launch launch = waitForLaunch(probe);
  const std::wstring target = probe.substr(0, probe.find_last_of(L'\\'));
  EXPECT_EQ(launch.folder, target);
  EXPECT_NE(launch.commandLine.find(L" -v \"two words\""), std::wstring::npos)
      << toUtf8(launch.commandLine);
  EXPECT_EQ(launch.show, L"1");

  mouse::moveAwayFrom(bar.rect());
  require(L"the bar to be back at the edge", [&] { return bar.rect() == collapsed; });
  EXPECT_EQ(folder().state(), before) << "nothing was changed, so nothing may be written";
  closeProgram();
  EXPECT_EQ(folder().state(), before);
}

}  // namespace
}  // namespace varnowick::e2e
