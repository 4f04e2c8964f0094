#include "containers/detached.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace varnowick {
namespace {

using testing::ElementsAre;

constexpr PixelRect kWindow{{800}, {100}, {300}, {200}};
constexpr PixelRect kTab{{1265}, {150}, {15}, {107}};
constexpr Point<Pixels> kFarAway{{100}, {700}};
constexpr Point<Pixels> kOnWindow{{900}, {150}};
constexpr Point<Pixels> kOnTab{{1270}, {200}};

// A window with its tab, timers and mouse as plain fields.
struct DetachedWorld {
  clsContainer record;
  DetachedRules rules;
  Point<Pixels> cursor = kFarAway;
  bool foreground = false, busy = false, animate = true, systemAnimations = true;
  std::wstring_view feedStatus;
  bool shown = true, tabShown = false, closed = false;
  int opacity = 255;
  std::vector<int> opacities;
  std::set<DetachedTimerId> running;

  DetachedWorld() {
    record.DetachedUseTab = record.DetachedAutoShow = record.DetachedAutoHide = true;
    apply(rules.start());
  }
  DetachedInputs inputs() const {
    return {record, kWindow, kTab,    cursor,           foreground,
            false,  busy,    animate, systemAnimations, feedStatus};
  }
  void apply(const DetachedEffects& e) {
    if (e.tab != TabChange::None) tabShown = e.tab == TabChange::Place;
    if (e.show) shown = *e.show;
    if (e.opacity) opacities.push_back(opacity = *e.opacity);
    for (const DetachedTimerAction& t : e.timers) {
      if (t.start)
        running.insert(t.id);
      else
        running.erase(t.id);
    }
    closed = closed || e.unload;
  }
  bool fading() const { return running.contains(DetachedTimerId::TimerFadeOut); }
  void dock() { apply(rules.DockMe(inputs())); }
  void undock() { apply(rules.Undock(inputs())); }
  int fade(int atMost = 100) {
    int ticks = 0;
    for (; fading() && ticks < atMost; ++ticks) apply(rules.TimerFadeOutTick(inputs()));
    return ticks;
  }
  // How many seconds pass until the window is about to go; 0: it stays.
  int hidesAfter(int seconds = 10) {
    for (int i = 1; i <= seconds; ++i) {
      apply(rules.TimerHideTick(inputs()));
      if (rules.state() != DetachedState::Shown) return i;
    }
    return 0;
  }
};

TEST(Detached, FadesInTwentyStepsThenActsOnItsTag) {
  DetachedWorld w;
  w.record.DetachedFadeOut = true;
  for (int round = 0; round < 2; ++round) {
    w.opacities.clear();
    w.dock();
    EXPECT_EQ(w.rules.state(), DetachedState::Fading);
    EXPECT_TRUE(w.tabShown) << "the tab stands there from the beginning";
    EXPECT_TRUE(w.shown);
    EXPECT_EQ(w.fade(), 20);
    EXPECT_THAT(w.opacities, ElementsAre(243, 230, 217, 204, 191, 178, 165, 152, 139, 126, 113, 100,
                                         87, 74, 61, 48, 35, 22, 9, 255));
    EXPECT_EQ(w.rules.state(), DetachedState::HiddenInTab);
    EXPECT_FALSE(w.shown);
    w.undock();
    EXPECT_TRUE(w.shown);
    EXPECT_FALSE(w.tabShown);
  }
  w.apply(w.rules.unload(w.inputs()));
  EXPECT_TRUE(w.rules.unloading());
  w.undock();
  EXPECT_TRUE(w.rules.unloading()) << "what is being closed does not come back";
  EXPECT_FALSE(w.closed);
  EXPECT_EQ(w.fade(), 20);
  EXPECT_TRUE(w.closed);
  EXPECT_FALSE(w.tabShown);
}

TEST(Detached, HidesAtOnceUnlessEverythingAnimates) {
  struct Case {
    bool fadeOut, animate, system, fades;
  };
  for (const Case& c : {Case{true, true, true, true}, Case{false, true, true, false},
                        Case{true, false, true, false}, Case{true, true, false, false}}) {
    SCOPED_TRACE(testing::Message() << c.fadeOut << c.animate << c.system);
    DetachedWorld w;
    w.record.DetachedFadeOut = c.fadeOut;
    w.animate = c.animate;
    w.systemAnimations = c.system;
    w.dock();
    EXPECT_EQ(w.fading(), c.fades);
    EXPECT_EQ(w.rules.state(), c.fades ? DetachedState::Fading : DetachedState::HiddenInTab);
    EXPECT_EQ(w.shown, c.fades);
    EXPECT_TRUE(w.tabShown);
    w.apply(w.rules.unload(w.inputs()));
    EXPECT_NE(w.closed, c.fades);
  }
}

TEST(Detached, WithoutTabItIsOnlyHidden) {
  for (const bool fadeOut : {false, true}) {
    DetachedWorld w;
    w.record.DetachedUseTab = false;
    w.record.DetachedFadeOut = fadeOut;
    w.dock();
    EXPECT_FALSE(w.tabShown);
    w.fade();
    EXPECT_EQ(w.rules.state(), DetachedState::Hidden);
    EXPECT_FALSE(w.shown || w.tabShown);
    w.apply(w.rules.systemChanged(w.inputs()));
    EXPECT_FALSE(w.tabShown);
    w.undock();
    EXPECT_TRUE(w.shown);
  }
}

TEST(Detached, StaysWhileHeadlinesAreDownloaded) {
  DetachedWorld w;
  w.feedStatus = L"Downloading latest headlines...";
  w.dock();
  EXPECT_EQ(w.hidesAfter(), 0);
  w.record.DetachedCollapseOnClick = true;
  w.apply(w.rules.launched(w.inputs()));
  EXPECT_EQ(w.rules.state(), DetachedState::Shown);
  EXPECT_FALSE(w.tabShown);
  w.feedStatus = L"Last Update 4 minutes ago";
  EXPECT_EQ(w.hidesAfter(), 1);
}

TEST(Detached, AutoHideNeedsTheMouseAwayAndTheWindowInTheBackground) {
  struct Case {
    const char* what;
    bool autoHide, foreground, busy;
    Point<Pixels> cursor;
    int hidesAfter;
  };
  const Case cases[] = {
      {"away", true, false, false, kFarAway, 1},
      {"not checked", false, false, false, kFarAway, 0},
      {"foreground", true, true, false, kFarAway, 0},
      {"busy", true, false, true, kFarAway, 0},
      {"inside", true, false, false, kOnWindow, 0},
      {"on the left border", true, false, false, {{800}, {100}}, 0},
      {"on the right border", true, false, false, {{1100}, {300}}, 0},
      {"beside it", true, false, false, {{1101}, {200}}, 1},
      {"where the tab will stand", true, false, false, kOnTab, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    DetachedWorld w;
    w.record.DetachedAutoHide = c.autoHide;
    w.foreground = c.foreground;
    w.busy = c.busy;
    w.cursor = c.cursor;
    EXPECT_EQ(w.hidesAfter(), c.hidesAfter);
  }
}

TEST(Detached, AWindowFetchedByItsTabWaitsForTheMouse) {
  DetachedWorld w;
  w.dock();
  w.cursor = kOnTab;
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_TRUE(w.shown);
  EXPECT_EQ(w.hidesAfter(), 0) << "the mouse is still where the tab was";
  w.cursor = kFarAway;
  EXPECT_EQ(w.hidesAfter(), 3) << "on its way, then elsewhere";
  w.undock();
  w.cursor = kOnWindow;
  EXPECT_EQ(w.hidesAfter(), 0);
  w.cursor = kFarAway;
  EXPECT_EQ(w.hidesAfter(), 1) << "it has been there and has left";
}

TEST(Detached, TheTabAnswersToTheMouseThatComesOntoIt) {
  DetachedWorld w;
  w.record.DetachedAutoShow = false;
  w.dock();
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_FALSE(w.shown);
  w.record.DetachedAutoShow = true;
  w.busy = true;
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_FALSE(w.shown);
  w.busy = false;
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_TRUE(w.shown);

  // Hidden by hand under a mouse that is where the tab appears.
  w.cursor = kOnTab;
  w.dock();
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_FALSE(w.shown);
  w.rules.tabLeft();
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_TRUE(w.shown);
  w.dock();
  w.cursor = kFarAway;
  w.apply(w.rules.TimerHideTick(w.inputs()));
  w.cursor = kOnTab;
  w.apply(w.rules.tabTouched(w.inputs()));
  EXPECT_TRUE(w.shown);
}

TEST(Detached, AFadeIsBrokenOffByItsTab) {
  DetachedWorld w;
  w.record.DetachedFadeOut = true;
  w.dock();
  w.fade(5);
  EXPECT_EQ(w.opacity, 191);
  w.dock();
  EXPECT_EQ(w.fade(1), 1);
  EXPECT_EQ(w.opacity, 178) << "hiding once more does not begin again";
  w.undock();
  EXPECT_EQ(w.opacity, 255);
  EXPECT_FALSE(w.fading());
  EXPECT_TRUE(w.shown);
  EXPECT_FALSE(w.tabShown);
  w.dock();
  w.apply(w.rules.TimerFadeOutTick(w.inputs()));
  EXPECT_EQ(w.opacity, 243) << "the counter starts anew";
  w.apply(w.rules.DockNow(w.inputs()));
  EXPECT_FALSE(w.shown || w.fading());
  EXPECT_EQ(w.opacity, 255);
}

TEST(Detached, HideOnClickFollowsALaunch) {
  DetachedWorld w;
  w.apply(w.rules.launched(w.inputs()));
  EXPECT_TRUE(w.shown);
  w.record.DetachedCollapseOnClick = true;
  w.apply(w.rules.launched(w.inputs()));
  EXPECT_FALSE(w.shown);
}

TEST(Detached, SwitchingTheTabOffDoesNotLoseTheWindow) {
  DetachedWorld w;
  w.dock();
  w.record.DetachedUseTab = false;
  w.apply(w.rules.recordChanged(w.inputs()));
  EXPECT_TRUE(w.shown);
  w.dock();
  EXPECT_EQ(w.rules.state(), DetachedState::Hidden);
  w.record.DetachedUseTab = true;
  w.apply(w.rules.recordChanged(w.inputs()));
  EXPECT_EQ(w.rules.state(), DetachedState::HiddenInTab);
  EXPECT_TRUE(w.tabShown);

  w.undock();
  w.record.DetachedFadeOut = true;
  w.dock();
  w.record.DetachedUseTab = false;
  w.apply(w.rules.recordChanged(w.inputs()));
  EXPECT_FALSE(w.tabShown);
  w.fade();
  EXPECT_EQ(w.rules.state(), DetachedState::Hidden);
}

TEST(Detached, MonitorsThatChangePlaceTheTabAnew) {
  DetachedWorld w;
  EXPECT_EQ(w.rules.systemChanged(w.inputs()).tab, TabChange::None);
  w.dock();
  EXPECT_EQ(w.rules.systemChanged(w.inputs()).tab, TabChange::Place);
}

}  // namespace
}  // namespace varnowick
