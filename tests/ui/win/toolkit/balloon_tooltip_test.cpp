#include "ui/win/toolkit/balloon_tooltip.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr NodeId kNode{ControlKind::lblShortcut, 3};

class BalloonTooltipTest : public testing::Test {
 protected:
  void SetUp() override {
    SetCursorPos(300, 300);
    window_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 200, 200,
                              300, 200, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(window_, nullptr);
    tooltip_.attach(window_);
  }
  void TearDown() override { DestroyWindow(window_); }

  // Lets timers run until the tooltip is as expected, or for far longer than
  // that can take.
  bool becomes(bool shown) {
    for (int i = 0; i < 200 && tooltip_.shown() != shown; ++i) pump();
    return tooltip_.shown() == shown;
  }
  void pump() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  int asked_ = 0;
  HWND window_ = nullptr;
  BalloonTooltip tooltip_{[this](NodeId node) {
    ++asked_;
    BalloonTooltip::Content content;
    if (node == kNode) content.text = {L"Editor", L"C:\\editor.exe\r\nTags: work"};
    content.screen = {{280}, {280}, {60}, {40}};
    return content;
  }};
};

TEST_F(BalloonTooltipTest, IsShownWhereTheMouseRestsAndGoesWithIt) {
  tooltip_.hover(kNode);
  EXPECT_FALSE(tooltip_.shown());
  ASSERT_TRUE(becomes(true));
  EXPECT_TRUE(IsWindowVisible(tooltip_.window()));
  EXPECT_EQ(GetWindow(tooltip_.window(), GW_OWNER), window_);
  RECT r{};
  GetWindowRect(tooltip_.window(), &r);
  EXPECT_GT(r.bottom - r.top, 40) << "three lines";

  tooltip_.hover(kNode);
  EXPECT_TRUE(tooltip_.shown()) << "the mouse has not moved";
  SetCursorPos(320, 300);
  EXPECT_TRUE(becomes(false)) << "even without being told";
  EXPECT_FALSE(IsWindowVisible(tooltip_.window()));
  EXPECT_EQ(asked_, 1);
}

TEST_F(BalloonTooltipTest, StaysAwayAfterAPressUntilTheMouseMoves) {
  tooltip_.hover(kNode);
  ASSERT_TRUE(becomes(true));
  tooltip_.hide();
  tooltip_.hover(kNode);
  for (int i = 0; i < 40; ++i) pump();
  EXPECT_FALSE(tooltip_.shown());
  SetCursorPos(320, 300);
  tooltip_.hover(kNode);
  EXPECT_TRUE(becomes(true));
}

}  // namespace
}  // namespace varnowick
