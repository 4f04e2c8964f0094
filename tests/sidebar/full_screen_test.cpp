#include "sidebar/full_screen.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr PixelRect rect(int left, int top, int width, int height) {
  return {{left}, {top}, {width}, {height}};
}
constexpr PixelRect kMonitor = rect(1280, 0, 1024, 768);

ForegroundState window(PixelRect r) {
  ForegroundState state;
  state.exists = true;
  state.rect = r;
  return state;
}

TEST(FullScreen, AWindowThatCoversTheMonitorAndNoLess) {
  EXPECT_TRUE(fullScreenOn(window(kMonitor), kMonitor));
  EXPECT_TRUE(fullScreenOn(window(rect(0, 0, 2304, 800)), kMonitor)) << "over all monitors";
  EXPECT_FALSE(fullScreenOn(window(rect(1280, 0, 1024, 767)), kMonitor));
  EXPECT_FALSE(fullScreenOn(window(rect(1281, 0, 1024, 768)), kMonitor));
  EXPECT_FALSE(fullScreenOn(window(rect(0, 0, 1280, 800)), kMonitor)) << "on the other monitor";
  EXPECT_FALSE(fullScreenOn(window(kMonitor), {}));
}

TEST(FullScreen, WhatIsNoProgramOfOthersDoesNotCount) {
  EXPECT_FALSE(fullScreenOn({}, kMonitor));
  for (bool ForegroundState::*flag : {&ForegroundState::shell, &ForegroundState::ours}) {
    ForegroundState state = window(kMonitor);
    state.*flag = true;
    EXPECT_FALSE(fullScreenOn(state, kMonitor));
  }
  ForegroundState hidden = window(kMonitor);
  hidden.visible = false;
  EXPECT_FALSE(fullScreenOn(hidden, kMonitor));
}

TEST(FullScreen, AMaximisedWindowIsAnOrdinaryOne) {
  ForegroundState state = window(rect(1276, -4, 1032, 776));
  state.maximised = state.captioned = true;
  EXPECT_FALSE(fullScreenOn(state, kMonitor));
  state.captioned = false;
  EXPECT_TRUE(fullScreenOn(state, kMonitor)) << "a browser in its full-screen mode";
}

}  // namespace
}  // namespace varnowick
