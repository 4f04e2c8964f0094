// The typical event from start to end, and the same at every edge.
#include <algorithm>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainEvent = ProgramTest;

int opacityOf(HWND window) {
  COLORREF key = 0;
  BYTE alpha = 0;
  DWORD flags = 0;
  if (!GetLayeredWindowAttributes(window, &key, &alpha, &flags)) failWithLastError(L"the opacity");
  return (flags & LWA_ALPHA) != 0 ? alpha : 255;
}

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

struct Edge {
  const char* name;
  double left, top;        // collapsed, twips, as saved
  double outLeft, outTop;  // expanded
  bool animate;
};

// Positions for a bar of 3000 by 3000 twips at an edge of this screen.
std::vector<Edge> edges() {
  const double left = toTwips(GetSystemMetrics(SM_XVIRTUALSCREEN));
  const double top = toTwips(GetSystemMetrics(SM_YVIRTUALSCREEN));
  const double height = toTwips(GetSystemMetrics(SM_CYVIRTUALSCREEN));
  const double right = toTwips(GetSystemMetrics(SM_CXSCREEN));
  return {{"left", left - 2960, 3000, left - 200, 3000, true},
          {"right", right - 40, 3000, right - 2800, 3000, true},
          {"top", 6000, top - 2960, 6000, top - 100, true},
          {"bottom", 6000, height - 40, 6000, height - 2800, true},
          {"left at once", left - 2960, 3000, left - 200, 3000, false}};
}

TEST_F(MainEvent, EveryEdgeHasItsOwnExpandedPlaceAndLeavesFortyTwips) {
  for (const Edge& edge : edges()) {
    SCOPED_TRACE(edge.name);
    mouse::moveTo({GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2});
    write(SettingsFile()
              .window(static_cast<int>(edge.left), static_cast<int>(edge.top), 3000, 3000)
              .set("[Animate]", edge.animate ? "1" : "0"));
    Bar bar = startBar();
    const RECT collapsed = windowAt(edge.left, edge.top, 3000, 3000);
    EXPECT_EQ(bar.rect(), collapsed);
    bar.expand();
    EXPECT_EQ(bar.rect(), windowAt(edge.outLeft, edge.outTop, 3000, 3000));
    bar.leave();
    EXPECT_EQ(bar.rect(), collapsed);
    EXPECT_EQ(opacityOf(bar.window()), 255) << "the fade is for the slide alone";
    closeProgram();
  }
}

TEST_F(MainEvent, AScreenReaderFindsAndOpensWhatTheMouseDoes) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile().add({.caption = L"Loose", .path = probe}),
        {{.name = L"Tools", .y = 1800, .shortcuts = {{.caption = L"Inside"}}}});
  Bar bar = startBar();
  bar.expand();
  const AccessibleWindow seen = bar.accessible();
  const RECT window = bar.rect();
  for (const wchar_t* name : {L"Loose", L"Inside", L"Tools"}) {
    SCOPED_TRACE(toUtf8(name));
    const AccessibleItem item = seen.waitFor(name);
    RECT common{};
    EXPECT_TRUE(item.shown());
    EXPECT_TRUE(IntersectRect(&common, &item.rect, &window)) << item.rect;
    EXPECT_NE(item.role, 0);
  }
  const AccessibleItem loose = seen.waitFor(L"Loose");
  EXPECT_EQ(seen.defaultAction(loose), L"Open");
  seen.doDefaultAction(loose);
  waitForLaunch(probe);
}

}  // namespace
}  // namespace varnowick::e2e
