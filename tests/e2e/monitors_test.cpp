// The bar on two monitors: beside each other, and one above the other.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class MonitorsTest : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    if (GetSystemMetrics(SM_CMONITORS) < 2) GTEST_SKIP() << "this machine has one monitor";
  }
  void write(int x, int y) {
    ProgramTest::write(
        SettingsFile().window(x, y, kSide, kSide).set("[Hidden]", "0").set("[Animate]", "1"));
  }
  static bool shows(const Bar& bar, POINT at) { return WindowFromPoint(at) == bar.window(); }
  // What the system tells when monitors or settings change, and after a rest.
  static void tellOfChanges(const Bar& bar) {
    for (const auto& [message, parameter] : {std::pair<UINT, WPARAM>{WM_SETTINGCHANGE, 0},
                                             {WM_DISPLAYCHANGE, 32},
                                             {WM_POWERBROADCAST, PBT_APMRESUMESUSPEND}})
      SendMessageW(bar.window(), message, parameter, 0);
  }
  // Docks by the menu, and looks all the while at a point of the next monitor.
  bool dockUnseenFrom(Bar& bar, const wchar_t* letters, POINT beyond) {
    bar.openMenu();
    const std::size_t before = events().count(kEventCollapsed, program().process());
    bar.choose(letters);
    bool seen = false;
    require(L"the bar to be away", [&] {
      seen = seen || shows(bar, beyond);
      return events().count(kEventCollapsed, program().process()) > before;
    });
    return !seen;
  }
  // At the border it stays, through new starts, changes and a rest on it.
  void staysAt(const RECT& collapsed, const RECT& strip, POINT beyond) {
    for (int start = 0; start < 2; ++start) {
      SCOPED_TRACE(start);
      closeProgram();
      Bar bar = startBar();
      EXPECT_EQ(bar.rect(), collapsed);
      EXPECT_EQ(bar.seen(), strip);
      tellOfChanges(bar);
      EXPECT_EQ(bar.rect(), collapsed);
      EXPECT_EQ(bar.seen(), strip);
      EXPECT_TRUE(shows(bar, centreOf(strip)));
      EXPECT_FALSE(shows(bar, beyond));
      // Wandering on over the border opens nothing.
      mouse::moveTo(centreOf(strip));
      mouse::moveTo(beyond);
      letTimePass(1'200);
      EXPECT_FALSE(bar.isOut());
      bar.expand();
      EXPECT_FALSE(shows(bar, beyond)) << "the part that stays off screen";
      RECT out = bar.seen();
      EXPECT_GT(out.right - out.left, 180);
      EXPECT_GT(out.bottom - out.top, 180);
      bar.leave();
    }
  }
};
using TwoMonitors = MonitorsTest;
using StackedMonitors = MonitorsTest;

TEST_F(TwoMonitors, TheBorderBetweenThemIsAnEdgeLikeAnyOther) {
  write(9000, 3000);
  Bar bar = startBar();
  const POINT beyond{1285, 300};
  EXPECT_TRUE(dockUnseenFrom(bar, L"kr", beyond));
  const RECT collapsed = windowAt(1280 * 15 - 40, 3000, kSide, kSide);
  staysAt(collapsed, {collapsed.left, collapsed.top, 1280, collapsed.bottom}, beyond);
}

TEST_F(StackedMonitors, TheBorderBetweenThemIsAnEdgeLikeAnyOther) {
  write(9000, -9000);
  Bar bar = startBar();
  const POINT beyond{700, 5};
  EXPECT_TRUE(dockUnseenFrom(bar, L"kb", beyond));
  const RECT collapsed = windowAt(9000, -40, kSide, kSide);
  staysAt(collapsed, {collapsed.left, collapsed.top, collapsed.right, 0}, beyond);
}

TEST_F(TwoMonitors, ADetachedWindowIsWholeOnOneOfThem) {
  ProgramTest::write(SettingsFile(),
                     {{.name = L"Tools", .detached = detachedLines({.x = 17000, .y = 11000})}});
  startBar();
  const DetachedWindow tools(program(), events(), L"Tools");
  tools.waitUntilShown();
  EXPECT_EQ(tools.rect(), windowAt(19200 - 3000, 12000 - 2400, 3000, 2400));
  SendMessageW(tools.window(), WM_DISPLAYCHANGE, 32, 0);
  EXPECT_EQ(tools.rect(), windowAt(19200 - 3000, 12000 - 2400, 3000, 2400));
  closeProgram();
  EXPECT_EQ(savedValue(folder().read(L"Containers\\0.con"), "[DetachedX]"), number(17000));
}

}  // namespace
}  // namespace varnowick::e2e
