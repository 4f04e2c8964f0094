#include "sidebar/docking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sidebar/docking_world.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using enum ScreenEdge;

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
      w.play("expand");
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
    w.play("expand");
  }
  // From -200 a bar 3000 wide stops once it is at or below -2900.
  w.dockTo(Left);
  EXPECT_EQ(w.slide(5), 5);
  w.play("hide");  // leaves it alone
  EXPECT_EQ(w.window.left, -2700_tw);
  EXPECT_EQ(w.slide(), 1);
}

TEST(Docking, TranslucencyIsShownAtOnceButNotOnAnInvisibleStrip) {
  DockingWorld w;
  w.conditions.visibleBorderCollapsed = false;
  w.start();
  const auto switchTo = [&](int opacity) {
    w.conditions.shownOpacity = opacity;
    w.apply(w.rules.opacityChanged(w.inputs()));
    return w.opacities.back();
  };
  EXPECT_EQ(switchTo(200), 200);
  w.dockTo(Left);
  EXPECT_EQ(switchTo(255), 200) << "the slide fades";
  w.slide();
  EXPECT_EQ(w.opacities.back(), 1) << "0 would let the mouse through";
  EXPECT_EQ(switchTo(220), 1);
  w.play("expand");
  EXPECT_EQ(w.opacities.back(), 220);
}

TEST(Docking, MouseMustRestOnTheStripWithinThreePixels) {
  const struct {
    int dx, dy;
    bool expands;
  } cases[] = {{0, 0, true},   {0, 3, true}, {0, -3, true}, {0, 4, false},
               {0, -4, false}, {3, 3, true}, {4, 0, false}, {-4, 0, false}};
  for (const auto& c : cases) {
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

TEST(Docking, WhatOpensItWhatHoldsItAndWhatLetsItGo) {
  const std::pair<const char*, bool> rows[] = {
      {"press strip wander show", true},  // a drag need not rest
      {"strip far show", false},
      {"strip far show hide strip show", true},  // arms again
      {"atOnce strip", true},
      {"atOnce maximised strip show", false},
      {"atOnce blocked strip show", false},
      {"atOnce right strip slide", false},  // not called back while it slides away
      {"expand hide", false},
      {"expand over hide", true},
      {"expand keepOpen hide", true},
      {"expand maximised hide dockNow launch", true},
      {"expand suspend launch", true},
      {"expand suspend suspend hide", false},
      {"expand launch", false},
      {"expand drag hide launch", true},
      // Opened by hotkey, or a dialog answered: until the mouse or the focus has gone.
      {"expand dialog hide", true},
      {"expand dialog unfocus hide", false},
      {"expand dialog enter far hide", false},
      {"toggle hide", true},
      {"toggle toggle", false},
      {"toggle toggle slide toggle hide", true},
      {"toggle unfocus hide", false},
      {"toggle enter far hide", false},
      {"toggle over hide far hide", false}};
  for (const auto& [steps, open] : rows) {
    DockingWorld w = collapsedAt(Left);
    w.play(steps);
    EXPECT_EQ(w.rules.collapseSide() == None, open) << steps;
  }
  DockingWorld w;
  w.start();
  for (const bool suspended : {true, false}) {
    w.play("suspend");
    EXPECT_EQ(w.runs(TimerId::TimerHide), !suspended);
    EXPECT_EQ(w.caption, suspended ? CaptionChange::Suspended : CaptionChange::Normal);
  }
}

TEST(Docking, SizingKeepsTheEdgeAndBeingMovedByOthersDoesNot) {
  DockingWorld w = collapsedAt(Right);
  w.play("expand");
  w.window.left -= 1000_tw;
  w.window.width += 1000_tw;
  w.apply(w.rules.sized(w.inputs()));
  EXPECT_EQ(w.rules.expandedEdge(), Right);
  EXPECT_EQ(w.lastChange, DockChange::Expanded);
  DockingWorld away = w;
  away.window.width -= 2000_tw;  // its right side leaves the border
  away.apply(away.rules.sized(away.inputs()));
  EXPECT_EQ(away.lastChange, DockChange::Floating);
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), Right);
  w.slide();
  w.placeAt(3000_tw, 2000_tw);
  w.tick(TimerId::TimerHide);
  EXPECT_EQ(w.rules.collapseSide(), None);
  EXPECT_EQ(w.lastChange, DockChange::Floating);
  EXPECT_EQ(w.window.left, 3000_tw);
}

TEST(Docking, CollapseNowTakesTheEdgeItIsAtOrTheNearest) {
  const std::pair<Point<Twips>, ScreenEdge> cases[] = {{{{-200}, {3000}}, Left},
                                                       {{{12000}, {3000}}, Top},
                                                       {{{15000}, {4000}}, Right},
                                                       {{{8000}, {7000}}, Bottom}};
  for (const auto& [at, expected] : cases) {
    DockingWorld w;
    w.placeAt(at.x, at.y);
    w.start();
    w.play("dockNow");
    EXPECT_EQ(w.rules.collapseSide(), expected);
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

}  // namespace
}  // namespace varnowick
