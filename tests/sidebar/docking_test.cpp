#include "sidebar/docking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sidebar/docking_world.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using enum ScreenEdge;

constexpr ScreenEdge kAllEdges[] = {Left, Right, Top, Bottom};
constexpr Point<Pixels> kFarAway{{640}, {790}};
const PixelRect kFirst{{0}, {0}, {1280}, {800}};
const PixelRect kSecond{{1280}, {0}, {1024}, {768}};
const PixelRect kAbove{{0}, {-1024}, {1280}, {1024}};

// A bar that is collapsed without sliding, the mouse elsewhere.
DockingWorld collapsedAt(ScreenEdge edge, DockingWorld w = {}) {
  w.conditions.animate = false;
  w.start();
  w.cursor.at = kFarAway;
  w.dockTo(edge);
  w.conditions.animate = true;
  w.opacities.clear();
  return w;
}

// What the user sees of it: the largest part on one monitor, and that monitor.
std::pair<TwipsRect, TwipsRect> seenOf(DockingWorld& w) {
  const DockInputs in = w.inputs();
  const TwipsRect shown = w.rules.clip(in).value_or(w.window);
  const TwipsRect monitor = monitorHolding(in.screen.monitors, shown).bounds;
  return {shown.intersect(monitor), monitor};
}

TEST(Docking, EveryEdgeHasItsPlacesAndItsSlide) {
  // 1280 x 800 pixels are 19200 x 12000 twips; a bar of 3000 x 3000.
  struct Case {
    ScreenEdge edge;
    Point<Twips> collapsed;
    Point<Twips> expanded;
    int slideTicks;  // from 3000, 1500
  };
  const Case cases[] = {
      {Left, {{-2960}, {1500}}, {{-200}, {1500}}, 12},     // 3000 - 12 * 500 <= -2900
      {Right, {{19160}, {1500}}, {{16400}, {1500}}, 32},   // 3000 + 32 * 500 >= 19000
      {Top, {{3000}, {-2960}}, {{3000}, {-100}}, 9},       // 1500 - 9 * 500 <= -2900
      {Bottom, {{3000}, {11960}}, {{3000}, {9200}}, 21}};  // 1500 + 21 * 500 >= 11900
  for (const Case& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.edge));
    for (const auto& [setting, system] :
         {std::pair{true, true}, {false, true}, {true, false}, {false, false}}) {
      DockingWorld w;
      w.conditions.animate = setting;
      w.conditions.systemAnimations = system;
      w.start();
      w.dockTo(c.edge);
      EXPECT_EQ(w.slide(), setting && system ? c.slideTicks : 0);
      EXPECT_EQ(w.window.topLeft(), c.collapsed);
      EXPECT_EQ(w.lastChange, DockChange::Collapsed);
      w.apply(w.rules.ExpandFromEdge(w.inputs()));
      EXPECT_EQ(w.window.topLeft(), c.expanded);
      EXPECT_EQ(w.rules.collapseSide(), None);
      EXPECT_EQ(w.rules.expandedEdge(), c.edge);
    }
  }
}

TEST(Docking, SlideFadesInStepsStaysAtTheLastAndIsOpaqueAgainWhenStill) {
  DockingWorld w;
  w.start();
  for (int round = 0; round < 2; ++round) {
    w.opacities.clear();
    w.placeAt(2000_tw, 1500_tw);
    w.dockTo(Left);
    EXPECT_EQ(w.slide(), 10);
    EXPECT_THAT(w.opacities, ElementsAre(215, 175, 135, 95, 55, 15, 255));
    w.apply(w.rules.ExpandFromEdge(w.inputs()));
  }
  // From -200 a bar 3000 wide stops once it is at or below -2900.
  w.dockTo(Left);
  EXPECT_EQ(w.slide(5), 5);
  EXPECT_EQ(w.window.left, -2700_tw);
  w.tick(TimerId::TimerHide);  // leaves it alone
  EXPECT_EQ(w.slide(), 1);
  EXPECT_EQ(w.window.left, -2960_tw);
}

TEST(Docking, TranslucencyIsShownAtOnceButNotOnAnInvisibleStrip) {
  DockingWorld w;
  w.conditions.visibleBorderCollapsed = false;
  w.start();
  const auto switchTo = [&](int opacity) {
    w.conditions.shownOpacity = opacity;
    w.opacities.clear();
    w.apply(w.rules.opacityChanged(w.inputs()));
  };
  switchTo(200);
  EXPECT_THAT(w.opacities, ElementsAre(200));
  w.dockTo(Left);
  switchTo(255);
  EXPECT_TRUE(w.opacities.empty()) << "the slide fades";
  w.slide();
  EXPECT_EQ(w.opacities.back(), 1) << "0 would let the mouse through";
  switchTo(200);
  EXPECT_THAT(w.opacities, ElementsAre(1));
  w.apply(w.rules.ExpandFromEdge(w.inputs()));
  EXPECT_EQ(w.opacities.back(), 200);
}

TEST(Docking, MouseMustRestOnTheStripWithinThreePixels) {
  struct Case {
    int dx, dy;
    bool expands;
  };
  for (const Case& c : {Case{0, 0, true},
                        {0, 3, true},
                        {0, -3, true},
                        {0, 4, false},
                        {0, -4, false},
                        {3, 3, true},
                        {4, 0, false},
                        {-4, 0, false}}) {
    SCOPED_TRACE(testing::Message() << c.dx << "," << c.dy);
    // The longer way along the strip of each edge leaves room to wander.
    DockingWorld w = collapsedAt(c.dx == 0 || c.dy != 0 ? Left : Top);
    moveOntoStrip(w);
    ASSERT_TRUE(w.runs(TimerId::TimerShow));
    const Point<Pixels> armed = w.cursor.at;
    // Wandering on the way does not count, nor does where it came from.
    for (int tick = 0; tick < 4 && w.collapsed(); ++tick) {
      const int sign = tick % 2 == 0 ? 1 : 0;
      w.cursor.at = {armed.x + Pixels{sign * (c.dy != 0 ? 0 : c.dx)},
                     armed.y + Pixels{sign * c.dy}};
      w.apply(w.rules.mouseMoved(w.inputs()));
      w.tick(TimerId::TimerShow);
    }
    EXPECT_EQ(w.rules.expanded(), c.expands);
    EXPECT_EQ(w.runs(TimerId::TimerShow), !c.expands);
  }
}

TEST(Docking, WhatElseOpensItOrNot) {
  const auto opens = [](auto&& change, int ticks = 1) {
    DockingWorld w = collapsedAt(Left);
    change(w);
    for (int i = 0; i < ticks; ++i) w.tick(TimerId::TimerShow);
    return w.rules.expanded();
  };
  EXPECT_TRUE(opens([](DockingWorld& w) {
    w.cursor.down = true;  // a drag need not rest
    moveOntoStrip(w);
    w.cursor.down = false;
    w.cursor.at.y += 100_px;
  }));
  EXPECT_FALSE(opens([](DockingWorld& w) {
    moveOntoStrip(w);
    w.cursor.at = kFarAway;
  }));
  EXPECT_TRUE(opens([](DockingWorld& w) {
    moveOntoStrip(w);
    w.cursor.at = kFarAway;
    w.tick(TimerId::TimerShow);
    w.tick(TimerId::TimerHide);
    moveOntoStrip(w);  // arms again
  }));
  const auto atOnce = [](bool DockInputs::*flag) {
    return [flag](DockingWorld& w) {
      w.conditions.undockImmediately = true;
      w.conditions.*flag = true;
      moveOntoStrip(w);
      EXPECT_FALSE(w.runs(TimerId::TimerShow));
    };
  };
  EXPECT_TRUE(opens(atOnce(&DockInputs::undockImmediately), 0));
  EXPECT_FALSE(opens(atOnce(&DockInputs::maximised)));
  EXPECT_FALSE(opens(atOnce(&DockInputs::blocked)));
  // A bar that slides away under the mouse is not called back by that mouse.
  DockingWorld w = collapsedAt(Right);
  w.conditions.undockImmediately = true;
  moveOntoStrip(w);
  w.dockTo(Right);
  w.apply(w.rules.mouseMoved(w.inputs()));
  w.slide();
  EXPECT_TRUE(w.collapsed());
}

TEST(Docking, HideTickDocksOnlyWhenNothingHoldsTheBar) {
  const auto holds = [](auto&& change) {
    DockingWorld w = collapsedAt(Left);
    w.apply(w.rules.ExpandFromEdge(w.inputs()));
    change(w);
    w.tick(TimerId::TimerHide);
    return w.rules.collapseSide() == None;
  };
  EXPECT_FALSE(holds([](DockingWorld&) {}));
  EXPECT_TRUE(holds([](DockingWorld& w) { w.cursor.at = {{50}, {200}}; }));
  EXPECT_TRUE(holds([](DockingWorld& w) { w.conditions.keepOpen = true; }));
  EXPECT_TRUE(holds([](DockingWorld& w) { w.conditions.maximised = true; }));
  EXPECT_TRUE(holds([](DockingWorld& w) { w.apply(w.rules.mnuSuspendSlideOut()); }));
  EXPECT_TRUE(holds([](DockingWorld& w) { w.drag(4000_tw, 1500_tw); }));
  // Opened by hotkey, or a dialog answered: until the mouse or the focus has
  // gone.
  const auto ask = [](DockingWorld& w) { w.rules.dialogClosed(); };
  const auto reopen = [](DockingWorld& w) {
    w.apply(w.rules.toggle(w.inputs()));
    w.slide();
    w.apply(w.rules.toggle(w.inputs()));
  };
  for (const auto& keep : {std::function<void(DockingWorld&)>(ask), {reopen}}) {
    EXPECT_TRUE(holds(keep));
    EXPECT_FALSE(holds([&](DockingWorld& w) {
      keep(w);
      w.rules.lostFocus();
    }));
    EXPECT_FALSE(holds([&](DockingWorld& w) {
      keep(w);
      w.moveMouse(20, 200);
      w.cursor.at = kFarAway;
    }));
  }
}

TEST(Docking, SuspendingStopsTheHideTimerUntilItIsUndone) {
  DockingWorld w;
  w.start();
  w.apply(w.rules.mnuSuspendSlideOut());
  EXPECT_FALSE(w.runs(TimerId::TimerHide));
  EXPECT_EQ(w.caption, CaptionChange::Suspended);
  w.apply(w.rules.preLaunch(w.inputs()));
  EXPECT_EQ(w.rules.collapseSide(), None);
  w.apply(w.rules.mnuSuspendSlideOut());
  EXPECT_TRUE(w.runs(TimerId::TimerHide));
  EXPECT_EQ(w.caption, CaptionChange::Normal);
}

TEST(Docking, ThePointerSaysWhereADroppedBarStands) {
  struct Case {
    const char* what;
    TwipsRect window;  // as it is let go
    Point<Pixels> pointer;
    ScreenEdge edge;
    TwipsRect stands;
  };
  const TwipsRect tall{{8000}, {0}, {4700}, {12000}};
  const Case cases[] = {
      {"in the middle, as high as the screen", tall, {{640}, {200}}, None, tall},
      {"and dragged down a little", {{8000}, {300}, {4700}, {12000}}, {{640}, {220}}, None, tall},
      {"pointer at the right", tall, {{1279}, {200}}, Right, {{14700}, {0}, {4700}, {12000}}},
      {"pointer at the top", tall, {{640}, {0}}, Top, {{0}, {-100}, {19200}, {4700}}},
      {"pointer at the bottom", tall, {{640}, {790}}, Bottom, {{0}, {7500}, {19200}, {4700}}},
      {"in a corner", tall, {{1279}, {15}}, Right, {{14700}, {0}, {4700}, {12000}}},
      {"its side at the border",
       {{16200}, {2000}, {3000}, {4500}},
       {{1150}, {150}},
       Right,
       {{16400}, {2000}, {3000}, {4500}}},
      {"low at the side",
       {{16400}, {11400}, {3000}, {4500}},
       {{1150}, {762}},
       Right,
       {{16400}, {7500}, {3000}, {4500}}},
      {"low, and free",
       {{9000}, {11400}, {3000}, {3000}},
       {{700}, {762}},
       Bottom,
       {{9000}, {9200}, {3000}, {3000}}},
      {"half off the screen, and free",
       {{-1500}, {3000}, {14000}, {4500}},
       {{300}, {220}},
       None,
       {{0}, {3000}, {14000}, {4500}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    DockingWorld w;
    w.start();
    w.cursor.at = {{640}, {400}};
    w.rules.dragBegan(w.inputs());
    w.window = c.window;
    w.cursor.at = c.pointer;
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

TEST(Docking, MovedByOthersTheStripFloats) {
  DockingWorld w = collapsedAt(Left);
  w.placeAt(3000_tw, 2000_tw);
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
  EXPECT_EQ(w.lastChange, DockChange::Floating);
  EXPECT_EQ(w.window.left, 3000_tw);
}

TEST(Docking, SizingKeepsTheEdge) {
  DockingWorld w = collapsedAt(Right);
  w.apply(w.rules.ExpandFromEdge(w.inputs()));
  w.window.left -= 1000_tw;
  w.window.width += 1000_tw;
  w.apply(w.rules.sized(w.inputs()));
  EXPECT_EQ(w.rules.expandedEdge(), Right);
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), Right);
}

TEST(Docking, PixelRoundingIsNotTakenForAMove) {
  for (const int dpi : {96, 120, 144, 168}) {
    for (const ScreenEdge edge : kAllEdges) {
      DockingWorld w;
      w.monitors.dpi = dpi;
      w.wholePixels = true;
      w.window = {{3000}, {1500}, {3001}, {2999}};
      w.start();
      w.cursor.at = kFarAway;
      w.dockTo(edge);
      w.slide();
      w.tick(TimerId::TimerHide);
      EXPECT_EQ(w.rules.collapseSide(), edge) << dpi;
      EXPECT_FALSE(toPixels(w.window, {dpi}).intersect(w.monitors.virtualScreen()).empty());
    }
  }
}

TEST(Docking, CollapseNowTakesTheEdgeItIsAtOrTheNearest) {
  struct Case {
    Twips left, top;
    ScreenEdge expected;
  };
  for (const Case& c : {Case{{-200}, {3000}, Left},
                        {{12000}, {3000}, Top},
                        {{15000}, {4000}, Right},
                        {{8000}, {7000}, Bottom}}) {
    DockingWorld w;
    w.window.left = c.left;
    w.window.top = c.top;
    w.start();
    w.apply(w.rules.dockNow(w.inputs()));
    EXPECT_EQ(w.rules.collapseSide(), c.expected);
  }
}

TEST(Docking, DockingToAnotherEdgeBringsTheOtherCoordinateOnScreen) {
  DockingWorld w = collapsedAt(Top);
  w.dockTo(Left);
  w.slide();
  EXPECT_EQ(w.window.topLeft(), (Point<Twips>{{-2960}, {0}}));
  w.dockTo(Bottom);
  w.slide();
  EXPECT_EQ(w.window.topLeft(), (Point<Twips>{{0}, {11960}}));
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
        // Told of changes, and started again from what was saved, it stays
        // there.
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
        again.apply(again.rules.ExpandFromEdge(again.inputs()));
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
  EXPECT_EQ(w.rules.collapseSide(), ScreenEdge::Left);
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
    w.apply(w.rules.ExpandFromEdge(w.inputs()));
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
