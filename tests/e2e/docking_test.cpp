// When the bar comes out, where it goes, and what keeps it there.
#include <algorithm>
#include <cstdlib>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

constexpr int kSide = 3000;             // twips: a bar that fits every edge
constexpr DWORD kSeveralTicks = 2'500;  // ms: more than two looks for the mouse
constexpr DWORD kShortestRest = 150;    // ms: clearly less than a rest on the strip

class DockingTest : public ProgramTest {
 protected:
  Bar startSmallBar(const SettingsFile& settings = {}) {
    write(SettingsFile(settings).window(kCollapsedLeft, 3000, kSide, kSide));
    return startBar();
  }
  std::size_t expansions() { return events().count(kEventExpanded, program().process()); }
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

struct Wander {
  const char* name;
  bool onwards;  // or to and fro
  int step;      // pixels
  bool buttonDown;
  bool undockImmediately;
  bool expands;
};

constexpr Wander kWanders[] = {
    {"to and fro by three pixels is a rest", false, 3, false, false, true},
    {"on and on by four pixels is none", true, 4, false, false, false},
    {"the left button is down", true, 4, true, false, true},
    {"undock immediately", true, 4, false, true, true},
};

enum class Seen { Expanded, StayedAway, Interrupted };

// Moves along the strip for a while. Interrupted when this process was kept from
// moving so long that the program may have taken it for a rest.
Seen wander(const Wander& row, const RECT& strip, const std::function<bool()>& expanded) {
  POINT at{strip.left, strip.top + 10};
  DWORD last = GetTickCount();
  for (int i = 0; i < 60; ++i) {
    mouse::moveTo({at.x, at.y + (row.onwards ? i : i % 2) * row.step % 180});
    letTimePass(20);
    if (expanded()) return Seen::Expanded;
    const DWORD now = GetTickCount();
    if (now - last > kShortestRest) return Seen::Interrupted;
    last = now;
  }
  return Seen::StayedAway;
}

TEST_F(MainDocking, OnlyAMouseThatRestsOrDragsOpensIt) {
  for (const Wander& row : kWanders) {
    SCOPED_TRACE(row.name);
    const POINT middle{GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2};
    mouse::moveTo(middle);
    Bar bar = startSmallBar(
        SettingsFile().set("[Undock Immediately]", row.undockImmediately ? "1" : "0"));
    RECT strip = bar.rect();
    strip.left = 0;
    if (row.buttonDown) mouse::press();
    Seen seen = Seen::Interrupted;
    for (int attempt = 0; attempt < 5 && seen == Seen::Interrupted; ++attempt) {
      const std::size_t before = expansions();
      seen = wander(row, strip, [&] { return expansions() > before; });
      if (seen != Seen::Interrupted) break;
      mouse::moveTo(middle);
      require(L"the bar to be at the edge", [&] { return !bar.isOut(); });
    }
    if (row.expands && seen == Seen::StayedAway) {
      // To and fro may be given more time than one wander.
      seen = waitFor([&] { return bar.isOut(); }) ? Seen::Expanded : seen;
    }
    if (row.buttonDown) mouse::release();
    if (seen == Seen::Interrupted) GTEST_SKIP() << "this machine is too busy for a steady hand";
    EXPECT_EQ(seen == Seen::Expanded, row.expands);
    closeProgram();
  }
}

TEST_F(MainDocking, TheMenuDocksAtEveryEdge) {
  Bar bar = startSmallBar();
  const double right = toTwips(GetSystemMetrics(SM_CXSCREEN));
  const double bottom = toTwips(GetSystemMetrics(SM_CYSCREEN));
  const struct {
    const wchar_t* letters;
    double left, top;
  } rows[] = {
      {L"kr", right - 40, 3000},
      {L"kt", right - kSide, 40 - kSide},  // what lay off screen comes back on to it
      {L"kb", right - kSide, bottom - 40},
      {L"kl", 40 - kSide, bottom - kSide},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(toUtf8(row.letters));
    bar.openMenu();
    events().expect(kEventCollapsed, L"collapsed", [&] { bar.choose(row.letters); });
    EXPECT_EQ(bar.rect(), windowAt(row.left, row.top, kSide, kSide));
  }
}

TEST_F(DockingTest, EscapeCollapsesUnderTheMouse) {
  Bar bar = startSmallBar();
  bar.focus();
  events().expect(kEventCollapsed, L"collapsed", [] { keyboard::press(VK_ESCAPE); });
  EXPECT_EQ(bar.rect(), windowAt(kCollapsedLeft, 3000, kSide, kSide));
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

TEST_F(MainDocking, DraggedAwayItFloatsAndDraggedBackItDocks) {
  Bar bar = startSmallBar();
  bar.expand();
  const RECT expanded = bar.rect();
  const auto dragBy = [&](int dx, int dy) {
    const POINT from = centreOf(bar.accessible().waitFor(L"Varnowick").rect);
    require(L"the caption to be reachable with the mouse",
            [&] { return WindowFromPoint(from) == bar.window(); });
    RECT expected = bar.rect();
    OffsetRect(&expected, dx, dy);
    mouse::moveTo(from);
    mouse::press();
    require(L"the bar to follow the mouse", [&] {
      mouse::moveTo({from.x + dx / 2, from.y + dy / 2});
      mouse::moveTo({from.x + dx, from.y + dy});
      letTimePass(20);
      return bar.rect() == expected;
    });
    events().expect(kEventSaved, L"saved", [] { mouse::release(); });
    EXPECT_EQ(bar.rect(), expected);
    return expected;
  };
  const RECT floating = dragBy(400, 50);
  mouse::moveAwayFrom(floating);
  letTimePass(kSeveralTicks);
  EXPECT_EQ(bar.rect(), floating) << "away from every edge it stays";

  dragBy(-400, 0);
  bar.leave();
  RECT collapsed = windowAt(kCollapsedLeft, 3000, kSide, kSide);
  OffsetRect(&collapsed, 0, 50);
  EXPECT_EQ(bar.rect(), collapsed);
  EXPECT_EQ(expanded.right - expanded.left, collapsed.right - collapsed.left);
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
    events().expect(kEventSaved, L"saved", [] { mouse::release(); });
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
