// Containers on the bar: folding, shrinking, expanding by themselves, dragging,
// sizing, drawing and removing them by mouse and keyboard.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class ContainersTest : public ProgramTest {
 protected:
  // "open", "folded" or "shrunk", as the file tells it.
  std::string state(int number) {
    if (value(number, "[Shrink]") == "1") return "shrunk";
    return value(number, "[Folded]") == "1" ? "folded" : "open";
  }
  static SettingsFile quiet() { return SettingsFile().set("[AutoExpand]", "0"); }
  int heightOf(const Bar& bar, const std::wstring& name) {
    const RECT r = bar.box(name);
    return r.bottom - r.top;
  }
  // A point of the body, in twips from its corner.
  POINT inBody(const Bar& bar, const std::wstring& name, int x, int y) {
    const RECT r = bar.box(name);
    return {r.left + toPixels(x), r.top + toPixels(350 + y)};
  }
  POINT onFoldBox(const Bar& bar, const std::wstring& name) {
    const RECT r = bar.box(name);
    return {r.right - toPixels(170), r.top + toPixels(175)};
  }
};
using MainContainers = ContainersTest;

TEST_F(MainContainers, EveryStateIsReachedByTheMouse) {
  write(quiet(), {{.name = L"Tools", .x = 120, .y = 600, .width = 2400, .height = 2000}});
  Bar bar = startBar();
  bar.expand();
  const int open = heightOf(bar, L"Tools");

  expectSaved([&] { mouse::click(onFoldBox(bar, L"Tools")); });
  EXPECT_EQ(state(0), "folded");
  EXPECT_EQ(heightOf(bar, L"Tools"), toPixels(350));
  expectSaved([&] { mouse::click(bar.onTitle(L"Tools")); });
  EXPECT_EQ(state(0), "open");
  EXPECT_EQ(heightOf(bar, L"Tools"), open);

  mouse::click(inBody(bar, L"Tools", 300, 150));
  EXPECT_EQ(heightOf(bar, L"Tools"), open) << "off the hot spot";
  letTimePass(600);  // a click on a body holds expansion for half a second
  expectSaved([&] { mouse::click(inBody(bar, L"Tools", 100, 150)); });
  EXPECT_EQ(state(0), "shrunk");
  EXPECT_EQ(heightOf(bar, L"Tools"), toPixels(950));
  EXPECT_EQ(value(0, "[H]"), number(2000)) << "the size of the open container is kept";
  letTimePass(600);
  expectSaved([&] { mouse::click(centreOf(bar.box(L"Tools"))); });
  EXPECT_EQ(state(0), "open");
  closeProgram();
}

TEST_F(MainContainers, ATileOpensUnderAMouseThatRestsAndShrinksBack) {
  write(SettingsFile().set("[AutoExpand]", "1").set("[AutoExpandDelay]", "1"),
        {{.name = L"One", .y = 600, .height = 1500, .shrunk = true},
         {.name = L"Two", .y = 4000, .height = 1500}});
  Bar bar = startBar();
  bar.expand();
  expectSaved([&] { mouse::moveTo(centreOf(bar.box(L"One"))); });
  EXPECT_EQ(state(0), "open");
  expectSaved([&] { mouse::moveTo(inBody(bar, L"Two", 800, 700)); });
  EXPECT_EQ(state(0), "shrunk") << "the mouse has come over another container";
  EXPECT_EQ(state(1), "open");
  closeProgram();
}

TEST_F(MainContainers, DraggedByItsTitleItDoesNotFoldAndUndoPutsItBack) {
  write(quiet(), {{.name = L"Tools", .x = 120, .y = 600, .width = 2000, .height = 1800}});
  Bar bar = startBar();
  bar.expand();
  const POINT from = bar.onTitle(L"Tools");
  expectSaved([&] { mouse::drag(from, {from.x, from.y + toPixels(2400)}); });
  EXPECT_EQ(value(0, "[Y]"), number(3000));
  EXPECT_EQ(state(0), "open");
  bar.focus();
  expectSaved([] { keyboard::chord({VK_CONTROL, 'Z'}); });
  EXPECT_EQ(value(0, "[Y]"), number(600));

  const RECT r = bar.box(L"Tools");
  const POINT corner{r.right - 3, r.bottom - 3};
  expectSaved([&] { mouse::drag(corner, {corner.x - toPixels(600), corner.y + toPixels(600)}); });
  EXPECT_EQ(value(0, "[W]"), number(1440)) << "the border comes to stand on the grid";
  EXPECT_EQ(value(0, "[H]"), number(2400));
  EXPECT_EQ(value(0, "[Y]"), number(600));
  closeProgram();
}

TEST_F(MainContainers, ADrawnContainerIsNamedInPlace) {
  write(quiet(), {});
  Bar bar = startBar();
  bar.focus();
  keyboard::chord({VK_CONTROL, 'C'});
  bar.accessible().waitFor(L"CONTAINER DRAW MODE");
  const RECT panel = bar.box(L"Workspace");
  const POINT from{panel.left + toPixels(240), panel.top + toPixels(480)};
  expectSaved([&] { mouse::drag(from, {from.x + toPixels(1800), from.y + toPixels(1200)}); });
  EXPECT_EQ(value(0, "[X]") + value(0, "[Y]"), number(240) + number(480));
  EXPECT_EQ(value(0, "[W]") + value(0, "[H]"), number(1800) + number(1200));
  expectSaved([] {
    keyboard::type(L"Drawn here");
    keyboard::press(VK_RETURN);
  });
  EXPECT_EQ(value(0, "[Name]"), "Drawn here");
  EXPECT_TRUE(bar.accessible().find(L"Varnowick")) << "the draw mode is over";
  closeProgram();
}

// Before Windows 10 the wheel goes to the focus; and what opens in a scrolled panel stays
// in sight.
TEST_F(MainContainers, TheWheelScrollsTheWindowUnderThePointer) {
  write(quiet().add({.caption = L"Far", .path = L"C:\\x.txt", .x = 120, .y = 16'000}),
        {{.name = L"Low", .y = 8400, .height = 7500, .folded = true},
         {.name = L"Away", .detached = detachedLines({})}});
  Bar bar = startBar();
  const DetachedWindow away(program(), events(), L"Away");
  away.waitUntilShown();
  bar.expand();
  const POINT over = centreOf(bar.rect());
  mouse::moveTo(over);
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  const LONG before = bar.box(L"Low").top;
  const auto turn = [&](int delta) {
    PostMessageW(away.window(), WM_MOUSEWHEEL,
                 MAKEWPARAM(0, static_cast<WORD>(static_cast<short>(delta))),
                 MAKELPARAM(over.x, over.y));
  };
  for (int i = 0; i < 6; ++i) turn(-WHEEL_DELTA / 4);
  turn(-WHEEL_DELTA / 2);
  require(L"the bar to scroll by two notches", [&] {
    return bar.box(L"Low").top == before - toPixels(2 * 240 * static_cast<int>(lines));
  });
  expectSaved([&] { mouse::click(onFoldBox(bar, L"Low")); });
  const RECT open = bar.box(L"Low");
  const RECT panel = bar.box(L"Workspace");
  EXPECT_EQ(open.bottom - open.top, toPixels(7500));
  EXPECT_GE(open.top, panel.top);
  EXPECT_LE(open.bottom, panel.bottom);
  closeProgram();
}

// Whatever window the drag began in; and only while it lasts.
TEST_F(MainContainers, ADragThatRestsOpensWhatIsClosed) {
  write(SettingsFile()
            .set("[AutoExpand]", "0")
            .add({.caption = L"Moves", .path = L"C:\\x.txt", .x = 360, .y = 4800}),
        {{.name = L"Closed", .y = 600, .height = 2400, .folded = true},
         {.name = L"Other", .y = 6000, .height = 2400, .folded = true},
         {.name = L"Away",
          .shortcuts = {{.caption = L"Comes", .path = L"C:\\y.txt", .y = 600}},
          .detached = detachedLines({.y = 1500})},
         {.name = L"Tab",
          .detached = detachedLines({.x = 13000, .y = 6000, .useTab = true, .autoHide = true})}});
  Bar bar = startBar();
  const DetachedWindow away(program(), events(), L"Away");
  const DetachedWindow tab(program(), events(), L"Tab");
  require(L"the tab", [&] { return tab.tabShown(); });
  const auto take = [](POINT from) {
    mouse::moveTo(from);
    mouse::press();
    mouse::moveTo({from.x + 8, from.y + 8});
  };
  // From the window to the bar's strip, and into what unfolds there.
  take(centreOf(away.accessible().waitFor(L"Comes").rect));
  mouse::moveTo({1, bar.rect().top + toPixels(4500)});
  require(L"the bar to come out", [&] { return bar.isOut(); });
  mouse::moveTo(bar.onTitle(L"Closed"));
  require(L"the container to open under the drag",
          [&] { return heightOf(bar, L"Closed") > toPixels(1000); });
  mouse::moveTo(inBody(bar, L"Closed", 1000, 800));
  expectSaved([] { mouse::release(); });
  EXPECT_EQ(countSavedShortcuts(file(0)), 1U);
  EXPECT_EQ(countSavedShortcuts(file(2)), 0U);
  // From the bar to a tab.
  if (!bar.isOut()) bar.expand();
  take(centreOf(bar.accessible().waitFor(L"Moves").rect));
  mouse::moveTo(centreOf(tab.tabRect()));
  tab.waitUntilShown();
  mouse::moveTo(centreOf(tab.rect()));
  expectSaved([] { mouse::release(); });
  EXPECT_EQ(countSavedShortcuts(file(3)), 1U);
  // A drop that did not wait leaves the container folded.
  if (!bar.isOut()) bar.expand();
  take(centreOf(tab.accessible().waitFor(L"Moves").rect));
  mouse::moveTo(bar.onTitle(L"Other"));
  expectSaved([] { mouse::release(); });
  EXPECT_EQ(countSavedShortcuts(file(1)), 1U);
  letTimePass(800);
  EXPECT_EQ(state(1), "folded");
  EXPECT_EQ(heightOf(bar, L"Other"), toPixels(350));
  closeProgram();
}

// The first click decides; what comes under the mouse by it gets nothing.
TEST_F(MainContainers, ADoubleClickIsAboutWhatItsFirstClickMet) {
  const std::wstring probe = folder().addLaunchProbe();
  const std::vector<ContainerRow> containers{
      {.name = L"Tile",
       .y = 600,
       .height = 2400,
       .shortcuts = {{.caption = L"Probe", .path = probe, .x = 120, .y = 480}},
       .shrunk = true},
      {.name = L"Title", .y = 4200, .height = 1800},
      {.name = L"Away", .detached = detachedLines({})}};
  for (const bool byItself : {false, true}) {
    SCOPED_TRACE(byItself);
    write(SettingsFile()
              .set("[Dbl-Click]", byItself ? "0" : "1")
              .set("[AutoExpand]", byItself ? "1" : "0")
              .set("[AutoExpandDelay]", "0")
              .set("[FoldOnClick]", "0"),
          containers);
    Bar bar = startBar();
    bar.expand();
    const RECT tile = bar.box(L"Tile");
    const POINT lower{(tile.left + tile.right) / 2, tile.top + toPixels(800)};
    if (byItself)
      mouse::click(lower);  // it has opened under the mouse on its way
    else
      mouse::doubleClick(lower);
    require(L"the tile to open", [&] { return heightOf(bar, L"Tile") > toPixels(1000); });
    letTimePass(700);
    EXPECT_FALSE(launched(probe));
    EXPECT_EQ(state(0), "open");
    if (byItself) {
      mouse::click(lower);
      waitForLaunch(probe);
      closeProgram();
      continue;
    }
    // Where a click does not fold, a double click does, on title and body.
    mouse::click(bar.onTitle(L"Title"));
    EXPECT_EQ(heightOf(bar, L"Title"), toPixels(1800));
    letTimePass(700);
    expectSaved([&] { mouse::doubleClick(inBody(bar, L"Title", 1200, 900)); });
    EXPECT_EQ(state(1), "folded");
    letTimePass(700);
    expectSaved([&] { mouse::doubleClick(bar.onTitle(L"Title")); });
    EXPECT_EQ(state(1), "open");
    const DetachedWindow away(program(), events(), L"Away");
    expectSaved([&] { mouse::doubleClick(away.onTitle()); });
    EXPECT_EQ(away.rect().bottom - away.rect().top, toPixels(350));
    closeProgram();
  }
}

}  // namespace
}  // namespace varnowick::e2e
