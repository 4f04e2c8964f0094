#include "sidebar/hotkey.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace varnowick {
namespace {

TEST(Hotkey, IsWhatTheSettingsSayUnlessItWouldLockAKey) {
  struct Row {
    bool on;
    const wchar_t* character;
    int modifiers;
    const wchar_t* expected;  // empty: none
  };
  const Row rows[] = {
      {true, L"S", 8, L"Win+S"},
      {true, L"s", 3, L"Ctrl+Alt+S"},
      {true, L" 7x", 6, L"Ctrl+Shift+7"},
      {true, L"A", 15, L"Win+Ctrl+Alt+Shift+A"},
      {true, L"A", 0x4008, L"Win+A"},
      {false, L"S", 8, L""},
      {true, L"", 8, L""},
      {true, L"\u00e4", 8, L""},
      {true, L"S", 0, L""},
      {true, L"S", 4, L""},
      {true, L" \tz", 1, L"Alt+Z"},
      {true, L"0", 2, L"Ctrl+0"},
  };
  for (const Row& row : rows) {
    Settings settings;
    settings.globalHotkey = row.on;
    settings.globalHotkeyChar = row.character;
    settings.globalHotkeyMod = row.modifiers;
    const auto hotkey = hotkeyOf(settings);
    EXPECT_EQ(hotkey ? hotkeyText(*hotkey) : L"", row.expected);
  }
}

TEST(Hotkey, CandidatesAreOthersAndUsable) {
  for (const Hotkey taken : {Hotkey{kHotkeyWin, 'S'}, Hotkey{kHotkeyCtrl | kHotkeyAlt, 'B'}}) {
    const auto candidates = hotkeyCandidates(taken);
    ASSERT_GE(candidates.size(), 5U);
    EXPECT_EQ(candidates.front().key, taken.key) << "the same letter is easiest to remember";
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      EXPECT_NE(candidates[i], taken);
      EXPECT_EQ(std::count(candidates.begin(), candidates.end(), candidates[i]), 1);
      Settings settings;
      settings.globalHotkeyChar = static_cast<wchar_t>(candidates[i].key);
      settings.globalHotkeyMod = candidates[i].modifiers;
      EXPECT_EQ(hotkeyOf(settings), candidates[i]);
    }
  }
}

TEST(Hotkey, TheBalloonNamesWhatIsFree) {
  const Hotkey taken{kHotkeyWin, 'S'};
  EXPECT_TRUE(hotkeyTakenText(taken, {{kHotkeyWin, 'B'}, {kHotkeyCtrl, 'Q'}})
                  .ends_with(L"These are free: Win+B, Ctrl+Q. It can be changed in the settings."));
  EXPECT_EQ(hotkeyTakenText(taken, {}).find(L"free"), std::wstring::npos);
  EXPECT_LE(hotkeyTakenText(taken, std::vector<Hotkey>(3, {15, 'W'})).size(), 255U)
      << "or it is cut";
}

}  // namespace
}  // namespace varnowick
