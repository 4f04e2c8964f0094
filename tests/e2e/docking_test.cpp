// When the bar comes out, where it goes, and what keeps it there.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class DockingTest : public ProgramTest {
 protected:
  Bar startSmallBar(const SettingsFile& settings = {}) {
    write(SettingsFile(settings).window(kCollapsedLeft, 3000, kSide, kSide));
    return startBar();
  }
  std::wstring captionOf(const Bar& bar) {
    for (const AccessibleItem& item : bar.accessible().items())
      if (item.role == ROLE_SYSTEM_STATICTEXT) return item.name;
    return {};
  }
  void suspend(const Bar& bar) {
    chooseFromMenu(bar.emptyPlace(), MenuId::Main, Command::mnuSuspendSlideOut);
  }
};
using MainDocking = DockingTest;

// That a rest does is seen wherever the bar is brought out.
TEST_F(MainDocking, UndockedImmediatelyItComesOutUnderAMouseThatMovesOn) {
  const Bar bar = startSmallBar(SettingsFile().set("[Undock Immediately]", "1"));
  const LONG top = bar.rect().top + 10;
  for (int i = 0; i < 60 && !bar.isOut(); ++i) {
    mouse::moveTo({0, top + i * 4 % 180});
    letTimePass(20);
  }
  EXPECT_TRUE(bar.isOut());
}

TEST_F(MainDocking, TheMenuDocksAtEveryEdge) {
  Bar bar = startSmallBar(SettingsFile().set("[Animate]", "1"));
  const double right = toTwips(GetSystemMetrics(SM_CXSCREEN));
  const double bottom = toTwips(GetSystemMetrics(SM_CYSCREEN));
  const struct {
    const wchar_t* letters;
    double left, top;
    double outLeft, outTop;
  } rows[] = {
      {L"kr", right - 40, 3000, right - 2800, 3000},
      // What lay off screen comes back on to it.
      {L"kt", right - kSide, 40 - kSide, right - kSide, -100},
      {L"kb", right - kSide, bottom - 40, right - kSide, bottom - 2800},
      {L"kl", 40 - kSide, bottom - kSide, -200, bottom - kSide},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(toUtf8(row.letters));
    bar.openMenu();
    events().expect(kEventCollapsed, L"collapsed", [&] { bar.choose(row.letters); });
    EXPECT_EQ(bar.rect(), windowAt(row.left, row.top, kSide, kSide));
    EXPECT_EQ(opacityOf(bar.window()), 255) << "the fade is for the slide alone";
    bar.expand();
    EXPECT_EQ(bar.rect(), windowAt(row.outLeft, row.outTop, kSide, kSide));
  }
}

TEST_F(DockingTest, SuspendedItStaysOpenAndSaysSo) {
  Bar bar = startSmallBar();
  bar.focus();
  suspend(bar);
  require(L"the caption to say so", [&] { return captionOf(bar) == L"AUTO-COLLAPSE SUSPENDED"; });
  mouse::moveAwayFrom(bar.rect());
  letTimePass(kSeveralTicks);
  EXPECT_TRUE(bar.isOut());
  bar.focus();
  suspend(bar);
  require(L"the caption to be as before", [&] { return captionOf(bar) == L"Varnowick"; });
  bar.leave();
  EXPECT_FALSE(bar.isOut());
}

TEST_F(MainDocking, ABarAsHighAsTheScreenGoesWhereThePointerLetsItGo) {
  Bar bar = startBar();  // a first start: it is out already
  const RECT first = bar.rect();
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const auto preview = [&] { return findWindow(program().process(), L"VarnowickDockPreview"); };
  const auto dragTo = [&](POINT to, bool marked) {
    SCOPED_TRACE(std::to_string(to.x) + ", " + std::to_string(to.y));
    mouse::moveTo(centreOf(bar.accessible().waitFor(L"Varnowick").rect));
    mouse::press();
    const POINT from = mouse::position();
    for (int i = 1; i <= 8; ++i)
      mouse::moveTo({from.x + (to.x - from.x) * i / 8, from.y + (to.y - from.y) * i / 8});
    require(L"the mark where it will stand", [&] { return (preview() != nullptr) == marked; });
    expectSaved([] { mouse::release(); });
    EXPECT_EQ(preview(), nullptr);
  };
  dragTo({width / 2, 40}, false);
  const RECT free = bar.rect();
  mouse::moveAwayFrom(free);
  letTimePass(kSeveralTicks);
  EXPECT_EQ(bar.rect(), free) << "it stands free";
  EXPECT_EQ(free.bottom - free.top, first.bottom - first.top);

  dragTo({width / 2, 0}, true);
  EXPECT_EQ(bar.rect().right - bar.rect().left, width) << "it lies along the top";
  EXPECT_LT(bar.rect().bottom, GetSystemMetrics(SM_CYSCREEN) / 2);
  bar.leave();
  EXPECT_LE(bar.rect().bottom, toPixels(40) + 1);
  bar.expand();
  dragTo({width - 1, 300}, true);
  EXPECT_EQ(bar.rect().bottom - bar.rect().top, first.bottom - first.top) << "upright again";
  EXPECT_EQ(bar.rect().right, width + toPixels(200));
}

TEST_F(DockingTest, APositionOffEveryMonitorIsKeptInTheFileAndShownAtTheNearestEdge) {
  const LONG screenRight = GetSystemMetrics(SM_CXSCREEN);
  for (const char* hidden : {"0", "1"}) {
    SCOPED_TRACE(std::string("[Hidden] ") + hidden);
    write(SettingsFile().window(90'000, 3000, kSide, kSide).set("[Hidden]", hidden));
    const DataFiles before = folder().state();
    Bar bar = startBar();
    const RECT shown = bar.rect();
    EXPECT_LT(shown.left, screenRight);
    EXPECT_GE(shown.right, screenRight) << shown;
    EXPECT_EQ(shown.top, toPixels(3000));
    closeProgram();
    EXPECT_EQ(folder().state(), before);
  }
}

}  // namespace
}  // namespace varnowick::e2e
