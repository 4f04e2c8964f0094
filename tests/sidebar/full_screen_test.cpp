#include "sidebar/full_screen.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr PixelRect rect(int left, int top, int width, int height) {
  return {{left}, {top}, {width}, {height}};
}
constexpr PixelRect kMonitor = rect(1280, 0, 1024, 768);
constexpr PixelRect kAboveTaskbar = rect(1280, 0, 1024, 738);

TEST(FullScreen, IsTheWholeMonitorAndNoOrdinaryWindow) {
  using enum FullScreen;
  using Flag = bool ForegroundState::*;
  constexpr Flag kShell = &ForegroundState::shell, kOurs = &ForegroundState::ours,
                 kCaption = &ForegroundState::captioned, kSizable = &ForegroundState::sizable,
                 kTopmost = &ForegroundState::topmost, kMaximised = &ForegroundState::maximised;
  struct Case {
    const char* what;
    std::vector<Flag> flags;
    PixelRect rect;
    FullScreen noTaskbar, taskbar;
  };
  const Case cases[] = {
      {"a film", {}, kMonitor, Yes, Yes},
      {"over all monitors", {}, rect(0, 0, 2304, 800), Yes, Yes},
      {"a pixel too few", {}, rect(1281, 0, 1024, 768), No, No},
      {"beside the taskbar only", {kMaximised}, kAboveTaskbar, No, No},
      {"on the other monitor", {}, rect(0, 0, 1280, 800), No, No},
      {"the desktop", {kShell}, kMonitor, No, No},
      {"ours", {kOurs, kTopmost}, kMonitor, No, No},
      {"maximised", {kMaximised, kCaption, kSizable}, rect(1276, -4, 1032, 776), No, No},
      {"maximised, frame drawn by itself", {kMaximised, kSizable}, kMonitor, No, No},
      {"maximised without a frame", {kMaximised}, kMonitor, AskSystem, Yes},
      {"sized so by itself", {kSizable}, kMonitor, AskSystem, Yes},
      {"a game with its title beyond the screen", {kCaption}, rect(1276, -30, 1032, 810), Yes, Yes},
      {"above all", {kSizable, kTopmost}, kMonitor, Yes, Yes},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ForegroundState state;
    state.exists = true;
    state.rect = state.client = c.rect;
    for (const Flag flag : c.flags) state.*flag = true;
    if (state.maximised && state.captioned) state.client.top += 30_px;
    EXPECT_EQ(fullScreenOn(state, {kMonitor, kMonitor}), c.noTaskbar);
    EXPECT_EQ(fullScreenOn(state, {kMonitor, kAboveTaskbar}), c.taskbar);
    state.visible = false;
    EXPECT_EQ(fullScreenOn(state, {kMonitor, kMonitor}), No);
  }
  EXPECT_EQ(fullScreenOn({}, {kMonitor, kMonitor}), No);
}

}  // namespace
}  // namespace varnowick
