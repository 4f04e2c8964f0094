#include "ui/win/bar/global_hotkey.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

// Combinations that nothing else is likely to hold.
Settings settingsFor(const wchar_t* character) {
  Settings settings;
  settings.globalHotkeyChar = character;
  settings.globalHotkeyMod = kHotkeyWin | kHotkeyCtrl | kHotkeyAlt;
  return settings;
}

TEST(GlobalHotkey, FollowsTheSettings) {
  int pressed = 0;
  int taken = 0;
  GlobalHotkey hotkey(
      {.pressed = [&] { ++pressed; }, .taken = [&](const std::wstring&) { ++taken; }});
  Settings settings = settingsFor(L"J");
  hotkey.apply(settings);
  EXPECT_EQ(hotkey.registered(), hotkeyOf(settings));
  SendMessageW(hotkey.handle(), WM_HOTKEY, 1, 0);
  EXPECT_EQ(pressed, 1);

  settings.globalHotkeyChar = L"K";
  hotkey.apply(settings);
  EXPECT_EQ(hotkey.registered(), hotkeyOf(settings));
  EXPECT_TRUE(RegisterHotKey(nullptr, 77, 11, 'J')) << "the former one is free again";
  UnregisterHotKey(nullptr, 77);

  settings.globalHotkey = false;
  hotkey.apply(settings);
  EXPECT_FALSE(hotkey.registered());
  EXPECT_TRUE(RegisterHotKey(nullptr, 77, 11, 'K'));
  UnregisterHotKey(nullptr, 77);
  EXPECT_EQ(taken, 0);
}

TEST(GlobalHotkey, ATakenOneIsToldOfOnceAndTriedAgain) {
  ASSERT_TRUE(RegisterHotKey(nullptr, 77, 11, 'J'));
  std::vector<std::wstring> told;
  GlobalHotkey hotkey(
      {.pressed = {}, .taken = [&](const std::wstring& text) { told.push_back(text); }});
  const Settings settings = settingsFor(L"J");
  hotkey.apply(settings);
  hotkey.apply(settings);
  EXPECT_FALSE(hotkey.registered());
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find(L"free"), std::wstring::npos) << "some combination can be had";
  EXPECT_EQ(settings.globalHotkeyChar, L"J");

  UnregisterHotKey(nullptr, 77);
  hotkey.apply(settings);
  EXPECT_TRUE(hotkey.registered());
  EXPECT_EQ(told.size(), 1U);
}

}  // namespace
}  // namespace varnowick
