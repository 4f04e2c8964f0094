#include "sidebar/docking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sidebar/docking_world.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using enum ScreenEdge;

constexpr Point<Pixels> kFarAway{{640}, {790}};
const PixelRect kFirst{{0}, {0}, {1280}, {800}};
const PixelRect kSecond{{1280}, {0}, {1024}, {768}};

// A bar that is collapsed without sliding, the mouse elsewhere.
DockingWorld collapsedAt(ScreenEdge edge) {
  DockingWorld w;
  w.conditions.animate = false;
  w.start();
  w.cursor.at = kFarAway;
  w.dockTo(edge);
  w.conditions.animate = true;
  w.opacities.clear();
  return w;
}

struct EdgeCase {
  ScreenEdge edge;
  Point<Twips> collapsed;
  Point<Twips> expanded;
  int slideTicks;  // from 3000, 1500
};

TEST(Docking, EveryEdgeHasItsPlacesAndItsSlide) {
  // 1280 x 800 pixels are 19200 x 12000 twips.
  const EdgeCase cases[] = {
      {Left, {{-2960}, {1500}}, {{-200}, {1500}}, 12},     // 3000 - 12 * 500 <= -2900
      {Right, {{19160}, {1500}}, {{16400}, {1500}}, 32},   // 3000 + 32 * 500 >= 19000
      {Top, {{3000}, {-4460}}, {{3000}, {-100}}, 12},      // 1500 - 12 * 500 <= -4400
      {Bottom, {{3000}, {11960}}, {{3000}, {7700}}, 21}};  // 1500 + 21 * 500 >= 11900
  for (const EdgeCase& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.edge));
    DockingWorld w = collapsedAt(c.edge);
    EXPECT_EQ(w.window.topLeft(), c.collapsed);
    EXPECT_EQ(w.rules.collapseSide(), c.edge);
    w.apply(w.rules.ExpandFromEdge(w.inputs()));
    EXPECT_EQ(w.window.topLeft(), c.expanded);
    EXPECT_EQ(w.rules.collapseSide(), None);
    EXPECT_EQ(w.rules.expandedEdge(), c.edge);
    EXPECT_TRUE(w.rules.expanded());

    DockingWorld s;
    s.start();
    s.dockTo(c.edge);
    EXPECT_EQ(s.window.topLeft(), (Point<Twips>{{3000}, {1500}}));  // nothing moves yet
    EXPECT_EQ(s.slide(), c.slideTicks);
    EXPECT_EQ(s.window.topLeft(), c.collapsed);
    EXPECT_EQ(s.lastChange, DockChange::Collapsed);
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
  EXPECT_EQ(w.slide(), 1);
  EXPECT_EQ(w.window.left, -2960_tw);
}

TEST(Docking, SlidesOnlyWhenBothSettingAndSystemAnimate) {
  for (const auto& [setting, system] : {std::pair{false, true}, {true, false}, {false, false}}) {
    DockingWorld w;
    w.conditions.animate = setting;
    w.conditions.systemAnimations = system;
    w.start();
    w.dockTo(Left);
    EXPECT_FALSE(w.runs(TimerId::TimerSlide));
    EXPECT_EQ(w.window.left, -2960_tw);
  }
}

TEST(Docking, StripIsOpaqueOrNearlyInvisibleAsTheSettingSays) {
  DockingWorld w;
  w.conditions.visibleBorderCollapsed = false;
  w.conditions.shownOpacity = 200;
  w.conditions.animate = false;
  w.start();
  w.dockTo(Left);
  EXPECT_EQ(w.opacities.back(), 1);  // 0 would let the mouse through
  w.apply(w.rules.ExpandFromEdge(w.inputs()));
  EXPECT_EQ(w.opacities.back(), 200);
}

TEST(Docking, SwitchedTranslucencyIsShownAtOnceButNotOnAnInvisibleStrip) {
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
  switchTo(200);
  EXPECT_THAT(w.opacities, ElementsAre(1));
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
    DockingWorld w = collapsedAt(c.dx == 0 ? Left : Top);
    if (c.dx != 0 && c.dy != 0) w = collapsedAt(Left);
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

TEST(Docking, ArmedExpandEndsWhenTheMouseHasGone) {
  DockingWorld w = collapsedAt(Left);
  moveOntoStrip(w);
  w.cursor.at = kFarAway;
  w.tick(TimerId::TimerShow);
  EXPECT_TRUE(w.collapsed());
  EXPECT_FALSE(w.runs(TimerId::TimerShow));
  w.tick(TimerId::TimerHide);
  EXPECT_FALSE(w.rules.mouseEntered());
  moveOntoStrip(w);  // and arms again
  w.tick(TimerId::TimerShow);
  EXPECT_TRUE(w.rules.expanded());
}

TEST(Docking, DraggingOntoTheStripExpandsAtTheFirstTick) {
  DockingWorld w = collapsedAt(Left);
  w.cursor.down = true;
  moveOntoStrip(w);
  w.cursor.down = false;
  w.cursor.at.y += 100_px;
  w.tick(TimerId::TimerShow);
  EXPECT_TRUE(w.rules.expanded());
}

TEST(Docking, UndockImmediatelyNeedsNoTimer) {
  DockingWorld w = collapsedAt(Right);
  w.conditions.undockImmediately = true;
  moveOntoStrip(w);
  EXPECT_TRUE(w.rules.expanded());
  EXPECT_TRUE(w.rules.mouseEntered());
  EXPECT_FALSE(w.runs(TimerId::TimerShow));
  // A bar that slides away under the mouse is not called back by that mouse.
  w.dockTo(Right);
  w.apply(w.rules.mouseMoved(w.inputs()));
  w.slide();
  EXPECT_TRUE(w.collapsed());
}

TEST(Docking, MaximisedOrBlockedBarIsNotArmed) {
  for (const bool maximised : {true, false}) {
    DockingWorld w = collapsedAt(Left);
    w.conditions.undockImmediately = true;
    (maximised ? w.conditions.maximised : w.conditions.blocked) = true;
    moveOntoStrip(w);
    EXPECT_TRUE(w.collapsed());
    EXPECT_FALSE(w.runs(TimerId::TimerShow));
    EXPECT_FALSE(w.rules.mouseEntered());
  }
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
}

TEST(Docking, HideTickLeavesASlideAlone) {
  DockingWorld w = collapsedAt(Left);
  w.apply(w.rules.ExpandFromEdge(w.inputs()));
  w.tick(TimerId::TimerHide);
  w.slide(2);
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), Left);
  w.slide();
  EXPECT_EQ(w.window.left, -2960_tw);
}

TEST(Docking, SuspendingStopsTheHideTimerUntilItIsUndone) {
  DockingWorld w;
  w.start();
  w.apply(w.rules.mnuSuspendSlideOut());
  EXPECT_FALSE(w.runs(TimerId::TimerHide));
  EXPECT_EQ(w.caption, CaptionChange::Suspended);
  EXPECT_TRUE(w.rules.suspended());
  w.apply(w.rules.preLaunch(w.inputs()));
  EXPECT_EQ(w.rules.collapseSide(), None);
  w.apply(w.rules.mnuSuspendSlideOut());
  EXPECT_TRUE(w.runs(TimerId::TimerHide));
  EXPECT_EQ(w.caption, CaptionChange::Normal);
}

TEST(Docking, MovedWindowFloatsAndDocksAgainWhereItTouchesAnEdge) {
  // Both ways of noticing: the end of the move, and the next tick.
  for (const bool told : {true, false}) {
    DockingWorld w = collapsedAt(Left);
    w.placeAt(3000_tw, 2000_tw);
    if (told) w.apply(w.rules.movedByUser(w.inputs()));
    w.tick(TimerId::TimerHide);
    EXPECT_EQ(w.rules.collapseSide(), None);
    EXPECT_EQ(w.lastChange, DockChange::Floating);
    EXPECT_EQ(w.window.left, 3000_tw);
    w.tick(TimerId::TimerHide);
    EXPECT_EQ(w.rules.collapseSide(), None);
    w.drag(16100_tw, 2000_tw);                // right border at 19100 of 19200
    EXPECT_EQ(w.rules.expandedEdge(), None);  // nothing of it lies off screen
    w.tick(TimerId::TimerHide);
    w.slide();
    EXPECT_EQ(w.rules.collapseSide(), Right);
    EXPECT_EQ(w.window.left, 19160_tw);
  }
}

TEST(Docking, BarAtSeveralEdgesTakesTheOneItHadOrTheOneAlongItsLongSide) {
  struct Case {
    ScreenEdge dockedBefore;
    TwipsRect window;
    ScreenEdge expected;
  };
  const Case cases[] = {
      {None, {{0}, {0}, {3000}, {12000}}, Left},     {None, {{16200}, {0}, {3000}, {12000}}, Right},
      {None, {{0}, {0}, {19200}, {3000}}, Top},      {None, {{0}, {9000}, {19200}, {3000}}, Bottom},
      {Bottom, {{0}, {0}, {3000}, {12000}}, Bottom}, {Top, {{0}, {9000}, {3000}, {3000}}, Left},
  };
  for (const Case& c : cases) {
    DockingWorld w;
    if (c.dockedBefore != None) w = collapsedAt(c.dockedBefore);
    w.cursor.at = {{2000}, {2000}};
    if (c.dockedBefore != None) w.apply(w.rules.ExpandFromEdge(w.inputs()));
    w.window = c.window;
    w.running.insert(TimerId::TimerHide);
    w.tick(TimerId::TimerHide);
    EXPECT_EQ(w.rules.collapseSide(), c.expected);
  }
}

TEST(Docking, PixelRoundingIsNotTakenForAMove) {
  for (const int dpi : {96, 120, 144, 168}) {
    for (const ScreenEdge edge : {Left, Right, Top, Bottom}) {
      DockingWorld w;
      w.monitors.dpi = dpi;
      w.wholePixels = true;
      w.window = {{3000}, {1500}, {3001}, {4499}};
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

TEST(Docking, OpenedByHotkeyStaysUntilTheMouseOrTheFocusHasGone) {
  DockingWorld w = collapsedAt(Left);
  w.apply(w.rules.toggle(w.inputs()));
  EXPECT_TRUE(w.rules.expanded());
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
  DockingWorld lost = w;
  lost.rules.lostFocus();
  lost.tick(TimerId::TimerHide);
  EXPECT_EQ(lost.rules.collapseSide(), Left);
  DockingWorld entered = w;
  entered.moveMouse(20, 200);
  entered.cursor.at = kFarAway;
  entered.tick(TimerId::TimerHide);
  EXPECT_EQ(entered.rules.collapseSide(), Left);
  w.apply(w.rules.toggle(w.inputs()));
  EXPECT_EQ(w.rules.collapseSide(), Left);
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

TEST(Docking, StartsCollapsedWhereItWasSavedCollapsed) {
  for (const ScreenEdge edge : {Left, Right, Top, Bottom}) {
    DockingWorld saved = collapsedAt(edge);
    DockingWorld w;
    w.window = saved.rules.rectToSave(saved.inputs());
    w.start(true);
    EXPECT_EQ(w.rules.collapseSide(), edge);
    EXPECT_EQ(w.window, saved.window);
    EXPECT_TRUE(w.runs(TimerId::TimerHide));
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
}

TEST(Docking, SecondMonitorHasItsOwnRightBorderButTheSharedLeft) {
  DockingWorld w;
  w.monitors.bounds = {kFirst, kSecond};
  w.window.left = 22000_tw;
  w.start();
  w.dockTo(Right);
  w.slide();
  EXPECT_EQ(w.window.left, 34520_tw);  // (1280 + 1024) * 15 - 40
  // On the first monitor it is that monitor's border, also once most of the bar
  // has slid onto the second, and on the way back.
  w.placeAt(10000_tw, 1500_tw);
  w.apply(w.rules.movedByUser(w.inputs()));
  w.dockTo(Right);
  w.slide();
  EXPECT_EQ(w.window.left, 19160_tw);
  w.apply(w.rules.ExpandFromEdge(w.inputs()));
  EXPECT_EQ(w.window.left, 16400_tw);
  w.dockTo(Left);
  w.slide();
  EXPECT_EQ(w.window.left, -2960_tw);
}

TEST(Docking, BorderBetweenTwoMonitorsDoesNotDockByItself) {
  DockingWorld w;
  w.monitors.bounds = {kFirst, kSecond};
  w.window.left = 16200_tw;  // flush with the first monitor's right border
  w.start();
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
}

TEST(Docking, StripIsNeverPutWhereNoMonitorShowsIt) {
  // A monitor above the primary, and a lower one beside it.
  const std::vector<PixelRect> arrangements[] = {{kFirst, {{0}, {-1024}, {1280}, {1024}}},
                                                 {kFirst, {{1280}, {-300}, {1024}, {768}}},
                                                 {kFirst, {{-1024}, {400}, {1024}, {768}}}};
  for (const auto& bounds : arrangements)
    for (const PixelRect& home : bounds)
      for (const ScreenEdge edge : {Left, Right, Top, Bottom}) {
        DockingWorld w;
        w.monitors.bounds = bounds;
        w.placeAt(w.monitors.density().toTwips(home.left + 400_px),
                  w.monitors.density().toTwips(home.top + 300_px));
        w.start();
        w.dockTo(edge);
        w.slide();
        ASSERT_TRUE(w.collapsed());
        const DockInputs in = w.inputs();
        EXPECT_TRUE(std::any_of(in.screen.monitors.begin(), in.screen.monitors.end(),
                                [&](const TwipsRect& m) {
                                  const TwipsRect shown = m.intersect(w.window);
                                  return shown.width >= 40_tw && shown.height >= 40_tw;
                                }))
            << static_cast<int>(edge);
      }
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
    EXPECT_EQ(w.window.top, edge == Bottom ? 4700_tw : before.top);
  }
}

TEST(Docking, WindowOfAMissingMonitorComesBackWithIt) {
  for (const bool docked : {true, false}) {
    SCOPED_TRACE(docked);
    DockingWorld w;
    w.conditions.animate = false;
    w.monitors.bounds = {kFirst, kSecond};
    w.placeAt(25000_tw, 2000_tw);
    w.start();
    w.cursor.at = kFarAway;
    if (docked) w.dockTo(Right);
    const TwipsRect before = w.window;
    w.changeMonitors({kFirst});
    const TwipsRect first = w.inputs().screen.monitors.front();
    EXPECT_GE(w.window.intersect(first).width, 40_tw);
    EXPECT_EQ(w.rules.collapseSide(), docked ? Right : None);
    EXPECT_EQ(w.rules.rectToSave(w.inputs()), before);
    w.tick(TimerId::TimerHide);  // a floating window may dock where it has landed
    w.changeMonitors({kFirst, kSecond});
    EXPECT_EQ(w.window, before);
    EXPECT_EQ(w.rules.collapseSide(), docked ? Right : None);
    // Unless the user has given it a new place meanwhile.
    w.changeMonitors({kFirst});
    w.drag(5000_tw, 1000_tw);
    w.changeMonitors({kFirst, kSecond});
    EXPECT_EQ(w.window.left, 5000_tw);
  }
}

TEST(Docking, SavedPlaceOfAMissingMonitorIsKept) {
  DockingWorld w;
  w.placeAt(25000_tw, 2000_tw);
  w.start();
  EXPECT_EQ(w.window.left, 16200_tw);
  EXPECT_EQ(w.rules.rectToSave(w.inputs()).left, 25000_tw);
}

}  // namespace
}  // namespace varnowick
