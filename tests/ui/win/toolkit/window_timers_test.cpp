#include "ui/win/toolkit/window_timers.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(WindowTimers, ATickOfAnEarlierStartIsNobodys) {
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  WindowTimers timers;
  timers.attach(window);
  timers.start(TimerId::TimerHide, 60'000);
  const UINT_PTR first = timers.systemIdOf(TimerId::TimerHide);
  EXPECT_EQ(timers.due(first), TimerId::TimerHide);
  timers.start(TimerId::TimerHide, 60'000);
  EXPECT_EQ(timers.due(first), std::nullopt);
  const UINT_PTR second = timers.systemIdOf(TimerId::TimerHide);
  timers.stop(TimerId::TimerHide);
  EXPECT_EQ(timers.due(second), std::nullopt);
  EXPECT_EQ(timers.due(0), std::nullopt) << "of none that runs";

  timers.start(TimerId::TimerSave, 60'000);
  const UINT_PTR once = timers.systemIdOf(TimerId::TimerSave);
  EXPECT_EQ(timers.due(once), TimerId::TimerSave);
  EXPECT_EQ(timers.due(once), std::nullopt) << "its first tick was its last";
  EXPECT_FALSE(KillTimer(window, once));
  DestroyWindow(window);
}

}  // namespace
}  // namespace varnowick
