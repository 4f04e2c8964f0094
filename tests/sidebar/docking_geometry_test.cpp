// Where bars stand: on every arrangement of monitors, after drags and changes of the screen.
#include <gtest/gtest.h>

#include "tests/sidebar/docking_world.h"

namespace varnowick {
namespace {

using enum ScreenEdge;

const PixelRect kFirst{{0}, {0}, {1280}, {800}};
const PixelRect kSecond{{1280}, {0}, {1024}, {768}};
const PixelRect kAbove{{0}, {-1024}, {1280}, {1024}};

constexpr TwipsRect R(float left, float top, float width, float height) {
  return {{left}, {top}, {width}, {height}};
}

// What the user sees of it: the largest part on one monitor, and that monitor.
std::pair<TwipsRect, TwipsRect> seenOf(DockingWorld& w) {
  const DockInputs in = w.inputs();
  const TwipsRect shown = w.rules.clip(in).value_or(w.window);
  const TwipsRect monitor = monitorHolding(in.screen.monitors, shown).bounds;
  return {shown.intersect(monitor), monitor};
}

TEST(Docking, ThePointerSaysWhereADroppedBarStands) {
  struct Case {
    const char* what;
    TwipsRect window;  // as it is let go
    int x, y;          // of the pointer
    ScreenEdge edge;
    TwipsRect stands;
  };
  const TwipsRect tall = R(8000, 0, 4700, 12000);
  const Case cases[] = {
      {"in the middle, as high as the screen", tall, 640, 200, None, tall},
      {"dragged down a little", R(8000, 300, 4700, 12000), 640, 220, None, tall},
      {"pointer at the right", tall, 1279, 200, Right, R(14700, 0, 4700, 12000)},
      {"pointer at the top", tall, 640, 0, Top, R(0, -100, 19200, 4700)},
      {"pointer at the bottom", tall, 640, 790, Bottom, R(0, 7500, 19200, 4700)},
      {"in a corner", tall, 1279, 15, Right, R(14700, 0, 4700, 12000)},
      {"side there", R(16200, 2000, 3000, 4500), 1150, 150, Right, R(16400, 2000, 3000, 4500)},
      {"low there", R(16400, 11400, 3000, 4500), 1150, 762, Right, R(16400, 7500, 3000, 4500)},
      {"low, free", R(9000, 11400, 3000, 3000), 700, 762, Bottom, R(9000, 9200, 3000, 3000)},
      {"half off", R(-1500, 3000, 14000, 4500), 300, 220, None, R(0, 3000, 14000, 4500)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    DockingWorld w;
    w.start();
    w.cursor.at = {{640}, {400}};
    w.rules.dragBegan(w.inputs());
    w.window = c.window;
    w.cursor.at = {{c.x}, {c.y}};
    const auto preview = w.rules.dragged(w.inputs());
    w.apply(w.rules.dropped(w.inputs()));
    EXPECT_EQ(w.window, c.stands);
    EXPECT_EQ(preview.has_value(), c.edge != None);
    w.cursor.at = {{5}, {5}};
    w.apply(w.rules.TimerHideTick(w.inputs()));
    EXPECT_EQ(w.rules.collapseSide(), w.inputs().mouseOnWindow ? None : c.edge);
  }
  // Taken hold of at the top of the screen and moved along it: it was not
  // dragged there. Back at the side it is as it was.
  DockingWorld w;
  w.window = tall;
  w.start();
  w.cursor.at = {{600}, {12}};
  w.rules.dragBegan(w.inputs());
  w.cursor.at = {{640}, {12}};
  EXPECT_FALSE(w.rules.dragged(w.inputs()));
  w.cursor.at = {{640}, {0}};
  EXPECT_TRUE(w.rules.dragged(w.inputs()));
  w.apply(w.rules.dropped(w.inputs()));
  w.dockTo(Left);
  EXPECT_EQ(w.window.size(), tall.size());
}

TEST(Docking, PixelRoundingIsNotTakenForAMove) {
  for (const int dpi : {96, 120, 144, 168})
    for (const ScreenEdge edge : kAllEdges) {
      DockingWorld w;
      w.monitors.dpi = dpi;
      w.wholePixels = true;
      w.window = R(3000, 1500, 3001, 2999);
      w = collapsedAt(edge, w);
      w.play("hide");
      EXPECT_EQ(w.rules.collapseSide(), edge) << dpi;
      EXPECT_FALSE(toPixels(w.window, {dpi}).intersect(w.monitors.virtualScreen()).empty());
    }
}

TEST(Docking, OnMonitorsOfEveryArrangementOnlyTheStripShowsAndIsFoundAgain) {
  const std::vector<PixelRect> arrangements[] = {{kFirst},
                                                 {kFirst, kSecond},
                                                 {kFirst, {{-1024}, {0}, {1024}, {768}}},
                                                 {kFirst, kAbove},
                                                 {kFirst, {{0}, {800}, {1280}, {1024}}},
                                                 {kFirst, {{1280}, {-300}, {1024}, {768}}},
                                                 {kFirst, {{-1024}, {400}, {1024}, {768}}},
                                                 {kFirst, kSecond, kAbove}};
  for (std::size_t a = 0; a < std::size(arrangements); ++a)
    for (const PixelRect& home : arrangements[a])
      for (const ScreenEdge edge : kAllEdges) {
        SCOPED_TRACE(testing::Message() << "arrangement " << a << " monitor " << home.left.value
                                        << " edge " << static_cast<int>(edge));
        DockingWorld w;
        w.monitors.bounds = arrangements[a];
        w.placeAt(w.monitors.density().toTwips(home.left + 400_px),
                  w.monitors.density().toTwips(home.top + 300_px));
        w.start();
        w.dockTo(edge);
        w.slide();
        ASSERT_TRUE(w.collapsed());
        const auto [strip, monitor] = seenOf(w);
        EXPECT_EQ(edge == Left || edge == Right ? strip.width : strip.height, 40_tw);
        const auto shown = w.rules.clip(w.inputs()).value_or(w.window);
        for (const ScreenMonitor& m : w.inputs().screen.monitors)
          EXPECT_TRUE(m.bounds == monitor || shown.intersect(m.bounds).empty());
        EXPECT_EQ(w.rules.monitor(w.inputs()).bounds, monitor);
        // Told of changes, and started again from what was saved, it stays there.
        const TwipsRect collapsed = w.window;
        w.changeMonitors(arrangements[a]);
        EXPECT_EQ(w.window, collapsed);
        DockingWorld again;
        again.monitors.bounds = arrangements[a];
        again.window = w.rules.rectToSave(w.inputs());
        again.start(true);
        EXPECT_EQ(again.window, collapsed);
        EXPECT_EQ(again.rules.collapseSide(), edge);
        EXPECT_EQ(again.rules.monitor(again.inputs()).bounds, monitor);
        // Out it comes on its own monitor.
        again.play("expand");
        EXPECT_EQ(seenOf(again).second, monitor);
        EXPECT_GE(seenOf(again).first.width, 2800_tw);
      }
}

TEST(Docking, LeavesTaskbarsTheirPlace) {
  for (const ScreenEdge edge : kAllEdges) {
    SCOPED_TRACE(static_cast<int>(edge));
    DockingWorld w;
    PixelRect work = kFirst;
    constexpr Pixels kBar{40};
    if (edge == Left) work.left += kBar;
    if (edge == Top) work.top += kBar;
    (edge == Left || edge == Right ? work.width : work.height) -= kBar;
    w.monitors.works = {work};
    w = collapsedAt(edge, w);
    const TwipsRect free = toTwips(work, {96});
    EXPECT_EQ(w.rules.clip(w.inputs())->intersect(free), *w.rules.clip(w.inputs()));
    const auto strip = seenOf(w).first;
    EXPECT_EQ(edge == Left || edge == Right ? strip.width : strip.height, 40_tw);
    // The bar has gone: it follows its border.
    w.monitors.works.clear();
    w.changeMonitors({kFirst});
    EXPECT_FALSE(w.rules.clip(w.inputs()));
  }
}

TEST(Docking, AWindowSavedAsAStripIsCollapsedWhateverTheFlagSays) {
  DockingWorld w;
  w.window = {{-2960}, {0}, {3000}, {4500}};
  w.moveMouse(1, 20);
  w.start();
  EXPECT_EQ(w.rules.collapseSide(), Left);
  w.moveMouse(1, 21);
  EXPECT_TRUE(w.runs(TimerId::TimerShow)) << "the strip answers to the mouse at once";
  // Where the next monitor begins only the flag can tell.
  DockingWorld open;
  open.monitors.bounds = {kFirst, kSecond};
  open.window = {{19160}, {3000}, {3000}, {3000}};
  open.start(false);
  EXPECT_EQ(open.rules.collapseSide(), None);
}

TEST(Docking, BorderBetweenTwoMonitorsDoesNotDockByItself) {
  DockingWorld w;
  w.monitors.bounds = {kFirst, kSecond};
  w.window.left = 16200_tw;  // flush with the first monitor's right border
  w.start();
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
  w.drag(16200_tw, 1500_tw, {{1279}, {300}});
  w.cursor.at = kFarAway;
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
}

TEST(Docking, BarFollowsItsBorderWhenTheScreenGrowsOrShrinks) {
  for (const ScreenEdge edge : {Right, Bottom}) {
    DockingWorld w = collapsedAt(edge);
    const TwipsRect before = w.window;
    w.changeMonitors({{{0}, {0}, {1600}, {1200}}});
    EXPECT_EQ(w.window.left, edge == Right ? 23960_tw : before.left);
    EXPECT_EQ(w.window.top, edge == Bottom ? 17960_tw : before.top);
    EXPECT_EQ(w.rules.collapseSide(), edge);
    w.changeMonitors({kFirst});
    EXPECT_EQ(w.window, before);
    w.play("expand");
    w.changeMonitors({{{0}, {0}, {800}, {600}}});
    EXPECT_EQ(w.window.left, edge == Right ? 9200_tw : before.left);
    EXPECT_EQ(w.window.top, edge == Bottom ? 6200_tw : before.top);
  }
}

TEST(Docking, WindowOfAMissingMonitorComesBackWithIt) {
  // Docked at a border between the two, docked outside, and floating.
  struct Case {
    const char* what;
    Twips left;
    ScreenEdge edge;
    PixelRect remains;
  };
  for (const Case& c : {Case{"outside", {25000}, Right, kFirst},
                        {"between", {5000}, Right, kSecond},
                        {"floating", {25000}, None, kFirst}}) {
    SCOPED_TRACE(c.what);
    DockingWorld w;
    w.conditions.animate = false;
    w.monitors.bounds = {kFirst, kSecond};
    w.placeAt(c.left, 2000_tw);
    w.start();
    w.cursor.at = kFarAway;
    w.dockTo(c.edge);
    const TwipsRect before = w.window;
    w.changeMonitors({c.remains});
    EXPECT_EQ(seenOf(w).first.width, c.edge == None ? 3000_tw : 40_tw);
    EXPECT_EQ(w.rules.collapseSide(), c.edge);
    EXPECT_EQ(w.rules.rectToSave(w.inputs()), before);
    w.tick(TimerId::TimerHide);
    w.changeMonitors({kFirst, kSecond});
    EXPECT_EQ(w.window, before);
    EXPECT_EQ(w.rules.collapseSide(), c.edge);
    // Unless the user has given it a new place meanwhile.
    w.changeMonitors({c.remains});
    w.drag(c.remains == kFirst ? 5000_tw : 25000_tw, 1000_tw);
    const TwipsRect dropped = w.window;
    w.changeMonitors({kFirst, kSecond});
    EXPECT_EQ(w.window, dropped);
  }
  DockingWorld w;  // saved there, and missing from the start
  w.placeAt(25000_tw, 2000_tw);
  w.start();
  EXPECT_EQ(w.window.left, 16200_tw);
  EXPECT_EQ(w.rules.rectToSave(w.inputs()).left, 25000_tw);
}

}  // namespace
}  // namespace varnowick
