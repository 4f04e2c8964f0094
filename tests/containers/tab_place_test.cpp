#include "containers/tab_place.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/fakes/fake_screen.h"

namespace varnowick {
namespace {

using enum ScreenEdge;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

// A taskbar of 600 twips at the bottom of the first, a higher monitor beside it.
const TwipsRect kWork{{0}, {0}, {19200}, {11400}};
const TwipsRect kSecond{{19200}, {-3000}, {15360}, {15000}};
const TwipsRect kWindow{{12000}, {2000}, {4000}, {3000}};

void expectWithin(const TwipsRect& r, const TwipsRect& work) {
  EXPECT_GE(r.left, work.left);
  EXPECT_GE(r.top, work.top);
  EXPECT_LE(r.right(), work.right());
  EXPECT_LE(r.bottom(), work.bottom());
}

TEST(TabPlace, StandsFlushWithItsEdge) {
  const struct {
    const char* what;
    int where;
    TwipsRect label;
    TabPlace place;
  } cases[] = {
      {"left", 1, {}, {Left, {{0}, {2700}, {220}, {1600}}}},
      {"right", 2, {}, {Right, {{18980}, {2700}, {220}, {1600}}}},
      {"top", 3, {}, {Top, {{13200}, {0}, {1600}, {180}}}},
      {"bottom", 4, {}, {Bottom, {{13200}, {11220}, {1600}, {180}}}},
      {"nowhere", 0, {}, {Top, {{13200}, {0}, {1600}, {180}}}},
      {"nonsense", -7, {}, {Top, {{13200}, {0}, {1600}, {180}}}},
      {"kept place", 2, {{5}, {7000}, {9}, {9}}, {Right, {{18980}, {7000}, {220}, {1600}}}},
      {"in the corner", 1, {{0}, {0}, {220}, {1600}}, {Left, {{0}, {0}, {220}, {1600}}}},
      {"too far down", 2, {{18980}, {90000}, {}, {}}, {Right, {{18980}, {9800}, {220}, {1600}}}},
      {"beyond a number", 3, {{kNan}, {kInfinite}, {kNan}, {}}, {Top, {{0}, {0}, {1600}, {180}}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const TabPlace got = placeTab({c.where, c.label, kWindow}, {{kWork}}, {});
    EXPECT_EQ(got.LabelLocation, c.place.LabelLocation);
    EXPECT_EQ(got.rect, c.place.rect);
  }
}

TEST(TabPlace, IsOnTheMonitorOfItsPlaceOrOfItsWindow) {
  const TwipsRect works[] = {kWork, kSecond};
  const TwipsRect there{{25000}, {-2900}, {3000}, {2000}};
  EXPECT_EQ(placeTab({2, {}, there}, works, {}).rect, (TwipsRect{{34340}, {-2700}, {220}, {1600}}));
  const TwipsRect label{{34340}, {5000}, {220}, {1600}};
  EXPECT_EQ(placeTab({2, label, kWindow}, works, {}).rect, label);
  // That monitor has gone.
  EXPECT_EQ(placeTab({2, label, kWindow}, {works, 1}, {}).rect,
            (TwipsRect{{18980}, {5000}, {220}, {1600}}));
}

TEST(TabPlace, MovesAlongPastOtherTabs) {
  const auto tabAt = [](float top) { return TwipsRect{{18980}, {top}, {220}, {1600}}; };
  const struct {
    const char* what;
    std::vector<float> others;
    float wanted, got;
  } cases[] = {
      {"free", {800}, 2600, 2600},
      {"after the one", {2000}, 2600, 3720},
      {"the gap is too small", {2000, 5400}, 2600, 7120},
      {"before, when it is full below", {8000, 9800}, 9000, 6280},
      {"just room enough below", {8080}, 8000, 9800},
      {"just room enough before", {1720, 3440, 5160, 6880, 8600}, 3000, 0},
      {"on another edge it does not matter", {}, 2600, 2600},
      {"no room at all", {0, 1500, 3000, 4500, 6000, 7500, 9000, 9800}, 2600, 2600},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    std::vector<TwipsRect> others{{{0}, {2600}, {220}, {1600}}};
    for (const float top : c.others) others.push_back(tabAt(top));
    const TabPlace got = placeTab({2, tabAt(c.wanted), kWindow}, {{kWork}}, others);
    EXPECT_EQ(got.rect, tabAt(c.got));
  }
}

TEST(TabPlace, FollowsTheMouseToTheNearestEdge) {
  const TwipsRect works[] = {kWork, kSecond};
  const struct {
    Point<Twips> pointer;
    TabPlace place;
  } cases[] = {
      {{{100}, {5000}}, {Left, {{0}, {4200}, {220}, {1600}}}},
      {{{9000}, {11900}}, {Bottom, {{8200}, {11220}, {1600}, {180}}}},
      {{{9000}, {300}}, {Top, {{8200}, {0}, {1600}, {180}}}},
      {{{34000}, {-2950}}, {Top, {{32960}, {-3000}, {1600}, {180}}}},
      {{{34559}, {14000}}, {Bottom, {{32960}, {11820}, {1600}, {180}}}},
  };
  for (const auto& c : cases) {
    const TabPlace got = dragTab(c.pointer, works);
    EXPECT_EQ(got.LabelLocation, c.place.LabelLocation) << c.pointer.x.value;
    EXPECT_EQ(got.rect, c.place.rect) << c.pointer.x.value;
  }
}

TEST(DetachedPlace, AWindowStaysWhereItCanBeReached) {
  const TwipsRect works[] = {kWork, kSecond};
  const TwipsRect usable[] = {
      kWindow,
      {{-3000}, {0}, {4000}, {3000}},     // partly off, the title within reach
      {{17000}, {-100}, {6000}, {3000}},  // across both
      {{25000}, {-3000}, {3000}, {2000}},
  };
  EXPECT_EQ(clampToWork(usable[0], works), usable[0]);
  EXPECT_EQ(clampToWork(usable[1], works), usable[1]);
  EXPECT_EQ(clampToWork(usable[3], works), usable[3]);

  // When it is shown for the first time, all of it is on one of them.
  EXPECT_EQ(fitToWork(usable[1], works), (TwipsRect{{0}, {0}, {4000}, {3000}}));
  EXPECT_EQ(fitToWork(usable[2], works), (TwipsRect{{19200}, {-100}, {6000}, {3000}}));

  const TwipsRect hostile[] = {
      {},
      {{kNan}, {kNan}, {kNan}, {kNan}},
      {{kInfinite}, {-kInfinite}, {kInfinite}, {-kInfinite}},
      {{1e30F}, {1e30F}, {1e30F}, {1e30F}},
      {{-1e30F}, {-1e30F}, {-1.0F}, {0}},
      {{30000}, {5000}, {3000}, {2000}},  // the second monitor has gone
      {{2000}, {11390}, {3000}, {2000}},  // the title below the taskbar
      {{2000}, {-2900}, {3000}, {3000}},  // the title above the screen
  };
  for (const TwipsRect& r : hostile) {
    const TwipsRect got = clampToWork(r, {works, 1});
    EXPECT_GE(got.width, kLeastDetached.width);
    EXPECT_GE(got.height, kLeastDetached.height);
    EXPECT_LE(got.width, kWork.width);
    EXPECT_LE(got.height, kWork.height);
    const TwipsRect title{got.left, got.top, got.width, kTitleStripHeight};
    const TwipsRect seen = title.intersect(kWork);
    EXPECT_GE(seen.width, 900_tw);
    EXPECT_EQ(seen.height, kTitleStripHeight);
    EXPECT_EQ(clampToWork(got, {works, 1}), got) << "and stays there";
    expectWithin(fitToWork(r, {works, 1}), kWork);
  }
}

TEST(DetachedPlace, TheFirstTimeItStandsBesideTheBar) {
  const TwipsRect box{{200}, {3000}, {4000}, {2500}};
  const struct {
    const char* what;
    TwipsRect bar;
    Point<Twips> at;
  } cases[] = {
      {"left", {{0}, {0}, {4500}, {11400}}, {{4800}, {3000}}},
      {"right", {{14700}, {0}, {4500}, {11400}}, {{10400}, {3000}}},
      {"top", {{0}, {0}, {19200}, {3000}}, {{200}, {3300}}},
      {"bottom", {{0}, {8400}, {19200}, {3000}}, {{200}, {5600}}},
      {"the whole screen", kWork, {{15200}, {3000}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const TwipsRect got = defaultDetachedRect(box, c.bar, {{kWork}}, {});
    EXPECT_EQ(got.topLeft(), c.at);
    EXPECT_EQ(got.size(), box.size());
  }
  const TwipsRect got =
      defaultDetachedRect({{kNan}, {-1e20F}, {1e20F}, {kNan}}, cases[0].bar, {{kWork}}, {});
  expectWithin(got, kWork);
  EXPECT_FALSE(needsDefaultRect(got));
  EXPECT_TRUE(needsDefaultRect({}));
  EXPECT_TRUE(needsDefaultRect({{0}, {0}, {kNan}, {100}}));
  EXPECT_TRUE(needsDefaultRect({{kInfinite}, {0}, {100}, {100}}));
}

TEST(DetachedPlace, ManyDetachedAtOnceAreAllToBeSeen) {
  const TwipsRect bar{{0}, {0}, {4500}, {11400}};
  std::vector<TwipsRect> windows;
  for (int i = 0; i < 20; ++i)
    windows.push_back(
        defaultDetachedRect({{200}, {9000}, {4000}, {2500}}, bar, {{kWork}}, windows));
  EXPECT_EQ(windows[1].topLeft(), (Point<Twips>{windows[0].left + 360_tw, 0_tw}));
  for (std::size_t i = 0; i < windows.size(); ++i) {
    expectWithin(windows[i], kWork);
    for (std::size_t k = 0; k < i; ++k) EXPECT_NE(windows[i].topLeft(), windows[k].topLeft());
  }
}

TEST(DetachedPlace, WorkAreasAreInTwips) {
  FakeMonitors monitors;
  monitors.dpi = 192;
  EXPECT_EQ(workAreas(monitors), (std::vector<TwipsRect>{{{0}, {0}, {9600}, {6000}}}));
}

}  // namespace
}  // namespace varnowick
