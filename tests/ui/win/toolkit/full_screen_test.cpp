#include "ui/win/toolkit/full_screen.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(FullScreenWindow, IsDescribedAsItStands) {
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 20,
                                      300, 200, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  ForegroundState state = foregroundState(window);
  EXPECT_TRUE(state.exists && state.visible && state.ours && state.captioned);
  EXPECT_FALSE(state.maximised || state.shell);
  EXPECT_EQ(state.rect, (PixelRect{{10}, {20}, {300}, {200}}));
  SetWindowLongW(window, GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_VISIBLE | WS_BORDER));
  EXPECT_FALSE(foregroundState(window).captioned) << "a border alone is no title bar";
  ShowWindow(window, SW_HIDE);
  EXPECT_FALSE(foregroundState(window).visible);
  DestroyWindow(window);
  EXPECT_FALSE(foregroundState(window).exists);
  EXPECT_FALSE(foregroundState(nullptr).exists);
}

TEST(FullScreenWindow, TheDesktopAndTheShellDoNotCount) {
  EXPECT_TRUE(foregroundState(GetDesktopWindow()).shell);
  WNDCLASSW shellClass{};
  shellClass.lpfnWndProc = DefWindowProcW;
  shellClass.hInstance = GetModuleHandleW(nullptr);
  shellClass.lpszClassName = L"WorkerW";
  RegisterClassW(&shellClass);
  const HWND wallpaper = CreateWindowExW(0, L"WorkerW", L"", WS_POPUP, 0, 0, 50, 50, nullptr,
                                         nullptr, shellClass.hInstance, nullptr);
  EXPECT_TRUE(foregroundState(wallpaper).shell);
  DestroyWindow(wallpaper);
}

}  // namespace
}  // namespace varnowick
