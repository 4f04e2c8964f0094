#include "sidebar/screen_extents.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_screen.h"

namespace varnowick {
namespace {

TEST(MouseOnWindow, AllFourBordersCountAndAnyWindowWill) {
  // 1500 x 750 twips are 100 x 50 pixels at 96 dots per inch.
  const ProgramWindow windows[] = {{{{10}, {20}}, {{1500}, {750}}},
                                   {{{-300}, {0}}, {{150}, {150}}}};
  struct Case {
    int x, y;
    bool inside;
  };
  for (const Case& c : {Case{10, 20, true},
                        {110, 70, true},
                        {110, 20, true},
                        {10, 70, true},
                        {9, 20, false},
                        {10, 19, false},
                        {111, 70, false},
                        {110, 71, false},
                        {-290, 10, true},
                        {-289, 10, false}})
    EXPECT_EQ(MouseOnWindow(windows, {{c.x}, {c.y}}, {96}), c.inside) << c.x << "," << c.y;
  EXPECT_TRUE(MouseOnWindow(windows, {{135}, {82}}, {120}));  // 125 x 62.5 pixels
  EXPECT_FALSE(MouseOnWindow(windows, {{135}, {83}}, {120}));
  EXPECT_FALSE(MouseOnWindow({}, {{0}, {0}}, {96}));
}

TEST(ScreenExtents, AreWholeTwipsAndNameTheMonitorThatShowsMost) {
  FakeMonitors m;
  m.dpi = 110;  // 13.09 twips a pixel
  m.bounds = {{{0}, {0}, {1280}, {800}}, {{-1023}, {-5}, {1023}, {768}}};
  const ScreenExtents e = screenExtents(m);
  EXPECT_EQ(e.virtualLeft, Twips{-13392});  // -13391.99
  EXPECT_EQ(e.virtualTop, Twips{-65});      // -65.45
  EXPECT_EQ(e.virtualHeight, Twips{10538});
  EXPECT_EQ(monitorHolding(e.monitors, {{-2000}, {0}, {5000}, {1000}}), e.monitors[0]);
  EXPECT_EQ(monitorHolding(e.monitors, {{-4000}, {0}, {5000}, {1000}}), e.monitors[1]);
  EXPECT_EQ(monitorHolding(e.monitors, {{90000}, {90000}, {50}, {50}}), e.monitors[0]);
  EXPECT_EQ(monitorHolding(e.monitors, {{-90000}, {0}, {50}, {50}}), e.monitors[1]);
}

}  // namespace
}  // namespace varnowick
