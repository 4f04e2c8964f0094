#include "ui/win/bar/tray_icon.h"

#include <gtest/gtest.h>
#include <shellapi.h>

namespace varnowick {
namespace {

NOTIFYICONDATAW iconOf(HWND window) {
  NOTIFYICONDATAW data{};
  data.cbSize = NOTIFYICONDATAW_V2_SIZE;
  data.hWnd = window;
  data.uID = TrayIcon::kIconId;
  return data;
}

// Whether the shell knows the icon: it can be changed from anywhere.
bool shellHasIcon(HWND window) {
  NOTIFYICONDATAW data = iconOf(window);
  return Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
}

TEST(TrayIcon, ComesAndGoesWithTheSetting) {
  TrayIcon tray({});
  tray.setTooltip(std::wstring(500, L'x'));
  tray.show(true);
  ASSERT_TRUE(tray.shown());
  const HWND window = tray.handle();
  EXPECT_TRUE(shellHasIcon(window));
  tray.show(true);
  EXPECT_TRUE(shellHasIcon(window));
  tray.show(false);
  EXPECT_FALSE(shellHasIcon(window));
  tray.show(true);
  EXPECT_TRUE(shellHasIcon(window));
}

TEST(TrayIcon, IsPutBackWhenTheTaskbarStartsAnew) {
  TrayIcon tray({});
  tray.show(true);
  NOTIFYICONDATAW data = iconOf(tray.handle());
  ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &data));
  SendMessageW(tray.handle(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  EXPECT_TRUE(shellHasIcon(tray.handle()));
  tray.show(false);
  SendMessageW(tray.handle(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  EXPECT_FALSE(tray.shown()) << "only an icon that is wanted";
}

TEST(TrayIcon, CallsBackForClicksAndMenus) {
  int clicks = 0;
  int menus = 0;
  TrayIcon tray(
      {.clicked = [&] { ++clicks; }, .menu = [&](POINT) { ++menus; }, .balloonClicked = {}});
  tray.show(true);
  for (const UINT event : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_USER, WM_CONTEXTMENU})
    SendMessageW(tray.handle(), TrayIcon::kMessage, TrayIcon::kIconId, static_cast<LPARAM>(event));
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(menus, 1);
}

TEST(TrayIcon, ABalloonBringsAnIconThatIsSwitchedOff) {
  TrayIcon tray({});
  EXPECT_FALSE(tray.balloon(L"Title", L""));
  ASSERT_TRUE(tray.balloon(std::wstring(100, L't'), std::wstring(1000, L'b')));
  EXPECT_TRUE(tray.shown());
  SendMessageW(tray.handle(), TrayIcon::kMessage, TrayIcon::kIconId, WM_USER + 4);
  EXPECT_FALSE(tray.shown());

  tray.show(true);
  ASSERT_TRUE(tray.balloon(L"", L"text", true));
  SendMessageW(tray.handle(), TrayIcon::kMessage, TrayIcon::kIconId, WM_USER + 5);
  EXPECT_TRUE(tray.shown()) << "an icon that is on stays";
}

}  // namespace
}  // namespace varnowick
