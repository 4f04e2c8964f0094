#include "containers/detached.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace varnowick {
namespace {

using testing::ElementsAre;

constexpr PixelRect kWindow{{800}, {100}, {300}, {200}};
constexpr PixelRect kTab{{1265}, {150}, {15}, {107}};
constexpr Point<Pixels> kFarAway{{100}, {700}};
constexpr Point<Pixels> kOnWindow{{900}, {150}};
constexpr Point<Pixels> kOnTab{{1270}, {200}};

// A window with its tab, timers and mouse as plain fields. It acts stories: words for
// what happens, and "=..." for what there is to be seen then: window, tab, fading.
struct DetachedWorld {
  clsContainer record;
  DetachedRules rules;
  Point<Pixels> cursor = kFarAway;
  bool foreground = false, fullScreen = false, busy = false, animate = true,
       systemAnimations = true;
  bool downloading = false;
  bool shown = true, tabShown = false, closed = false;
  std::vector<int> opacities;
  std::set<TimerId> running;

  DetachedWorld() {
    record.DetachedUseTab = record.DetachedAutoShow = record.DetachedAutoHide = true;
    apply(rules.start());
  }
  DetachedInputs inputs() const {
    return {record,     kWindow, kTab,    cursor,           foreground,
            fullScreen, busy,    animate, systemAnimations, downloading};
  }
  void apply(const DetachedEffects& e) {
    if (e.tab != TabChange::None) tabShown = e.tab == TabChange::Place;
    if (e.show) shown = *e.show;
    if (e.opacity) opacities.push_back(*e.opacity);
    for (const TimerAction& t : e.timers) {
      if (t.start)
        running.insert(t.id);
      else
        running.erase(t.id);
    }
    closed = closed || e.unload;
  }
  bool fading() const { return running.contains(TimerId::TimerFadeOut); }
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
  std::string seen() const {
    return std::string(closed  ? "closed"
                       : shown ? "window"
                               : "") +
           (tabShown ? "+tab" : "") + (fading() ? "+fading" : "");
  }
  // useTab and the like turn that flag of the record round.
  void play(const std::string& story) {
    std::istringstream words(story);
    for (std::string word; words >> word;) {
      SCOPED_TRACE(word + " in " + story);
      if (word == "dock") apply(rules.DockMe(inputs()));
      if (word == "dockNow") apply(rules.DockNow(inputs()));
      if (word == "undock") apply(rules.Undock(inputs()));
      if (word == "unload") apply(rules.unload(inputs()));
      if (word == "touch") apply(rules.tabTouched(inputs()));
      if (word == "left") rules.tabLeft();
      if (word == "launch") apply(rules.launched(inputs()));
      if (word == "tick") apply(rules.TimerHideTick(inputs()));
      if (word == "fade") fade();
      if (word == "changed") apply(rules.recordChanged(inputs()));
      if (word == "system") apply(rules.systemChanged(inputs()));
      if (word == "useTab") record.DetachedUseTab = !record.DetachedUseTab;
      if (word == "fadeOut") record.DetachedFadeOut = !record.DetachedFadeOut;
      if (word == "autoShow") record.DetachedAutoShow = !record.DetachedAutoShow;
      if (word == "onClick") record.DetachedCollapseOnClick = !record.DetachedCollapseOnClick;
      if (word == "busy") busy = !busy;
      if (word == "fullScreen") fullScreen = !fullScreen;
      if (word == "ontoTab") cursor = kOnTab;
      if (word == "ontoWindow") cursor = kOnWindow;
      if (word == "away") cursor = kFarAway;
      if (word[0] == '=') {
        EXPECT_EQ(seen(), word.substr(1));
      }
    }
  }
};

TEST(Detached, FadesInTwentyStepsThenActsOnItsTag) {
  DetachedWorld w;
  for (const char* hide : {"fadeOut dock =window+tab+fading", "dock =window+tab+fading"}) {
    w.opacities.clear();
    w.play(hide);
    EXPECT_EQ(w.fade(), 20);
    EXPECT_THAT(w.opacities, ElementsAre(243, 230, 217, 204, 191, 178, 165, 152, 139, 126, 113, 100,
                                         87, 74, 61, 48, 35, 22, 9, 255));
    w.play("=+tab undock =window");
  }
  w.play("unload =window+fading undock =window+fading");
  EXPECT_TRUE(w.rules.unloading()) << "what is being closed does not come back";
  EXPECT_EQ(w.fade(), 20);
  EXPECT_EQ(w.seen(), "closed");
}

TEST(Detached, HidesAtOnceUnlessEverythingAnimates) {
  for (int off = 0; off < 4; ++off) {
    SCOPED_TRACE(off);
    DetachedWorld w;
    w.record.DetachedFadeOut = off != 1;
    w.animate = off != 2;
    w.systemAnimations = off != 3;
    w.play(off == 0 ? "dock =window+tab+fading unload =window+fading"
                    : "dock =+tab unload =closed");
  }
}

TEST(Detached, Stories) {
  const char* const stories[] = {
      // Without a tab it is only hidden.
      "useTab dock = system = undock =window",
      "useTab fadeOut dock =window+fading fade = undock =window",
      // The tab answers to the mouse that comes onto it, unless it is not to.
      "autoShow dock touch =+tab autoShow busy touch =+tab busy fullScreen touch =+tab fullScreen "
      "touch =window",
      // Hidden by hand under a mouse that is where the tab appears.
      "ontoTab dock touch =+tab left touch =window dock away tick ontoTab touch =window",
      "ontoTab dock tick touch =+tab",
      // A fade is broken off by its tab, or ended at once.
      "fadeOut dock touch =window", "fadeOut dock dockNow =+tab dockNow =+tab",
      "launch =window onClick launch =+tab",
      // Switching the tab off does not lose the window.
      "dock useTab changed =window dock = useTab changed =+tab",
      "fadeOut dock useTab changed =window+fading fade =",
      "useTab fadeOut dock useTab changed =window+tab+fading",
      "unload fadeOut useTab changed system =closed",
      "fadeOut unload changed system =window+fading"};
  for (const char* story : stories) DetachedWorld().play(story);
  // Monitors that change place the tab anew.
  for (const auto& [story, place] : {std::pair{"", false},
                                     {"dock", true},
                                     {"fadeOut dock", true},
                                     {"useTab dock", false},
                                     {"useTab fadeOut dock", false}}) {
    DetachedWorld w;
    w.play(story);
    EXPECT_EQ(w.rules.systemChanged(w.inputs()).tab == TabChange::Place, place) << story;
  }
}

TEST(Detached, AFadeThatIsAskedForAgainGoesOn) {
  DetachedWorld w;
  w.play("fadeOut dock");
  w.fade(5);
  w.play("dock");
  w.fade(1);
  w.play("undock");
  EXPECT_THAT(w.opacities, ElementsAre(243, 230, 217, 204, 191, 178, 255));
  w.play("dock");
  w.fade(1);
  EXPECT_EQ(w.opacities.back(), 243) << "the counter starts anew";
}

TEST(Detached, StaysWhileHeadlinesAreDownloaded) {
  DetachedWorld w;
  w.downloading = true;
  w.play("dock =window");
  EXPECT_EQ(w.hidesAfter(), 0);
  w.play("onClick launch =window");
  w.downloading = false;
  EXPECT_EQ(w.hidesAfter(), 1);
}

TEST(Detached, AutoHideNeedsTheMouseAwayAndTheWindowInTheBackground) {
  const struct {
    const char* what;
    bool autoHide, foreground, busy;
    Point<Pixels> cursor;
    int hidesAfter;
  } cases[] = {
      {"away", true, false, false, kFarAway, 1},
      {"not checked", false, false, false, kFarAway, 0},
      {"foreground", true, true, false, kFarAway, 0},
      {"busy", true, false, true, kFarAway, 0},
      {"inside", true, false, false, kOnWindow, 0},
      {"on the left border", true, false, false, {{800}, {100}}, 0},
      {"on the right border", true, false, false, {{1100}, {300}}, 0},
      {"beside it", true, false, false, {{1101}, {200}}, 1},
      {"above it", true, false, false, {{900}, {99}}, 1},
      {"where the tab will stand", true, false, false, kOnTab, 0},
  };
  for (const auto& c : cases) {
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
  w.play("dock ontoTab touch =window");
  EXPECT_EQ(w.hidesAfter(), 0) << "the mouse is still where the tab was";
  w.cursor = kFarAway;
  EXPECT_EQ(w.hidesAfter(), 3) << "on its way, then elsewhere";
  w.play("undock ontoWindow tick away");
  EXPECT_EQ(w.hidesAfter(), 1) << "it has been there and has left";
}

}  // namespace
}  // namespace varnowick
