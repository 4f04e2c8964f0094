#include "ui/commands/keys.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

using C = Command;

KeyDecision run(Command command) {
  const bool closesJumpBox = command == C::mnuShortcutProperties ||
                             command == C::mnuProgramAppearance || command == C::mnuProgramSettings;
  return {KeyAction::RunCommand, command, closesJumpBox, 0};
}
KeyDecision act(KeyAction action) { return {action, C::None, false, 0}; }

constexpr KeyState kPlain{};
constexpr KeyState kSelected{.shortcutSelected = true};
constexpr KeyState kJump{.jumpBoxShown = true};
const KeyDecision kNothing;

TEST(Keys, EachKeyRunsItsCommandInItsModifierStateOnly) {
  std::wstring keys;
  for (const CommandRow& row : commandRows()) {
    const auto [code, modifiers] = row.key;
    if (code == 0) continue;
    keys += L" " + keyText(row.key) + L" " + row.name;
    EXPECT_EQ(decideKey({code, modifiers}, kSelected), run(row.id)) << row.name;
    EXPECT_EQ(decideKey({code, kCtrl | kAlt}, kSelected), kNothing) << "types on many keyboards";
    EXPECT_EQ(decideKey({code, kCtrl | kShift}, kSelected), kNothing);
    EXPECT_EQ(decideKey({code, modifiers}, {.suppressed = true, .shortcutSelected = true}),
              kNothing);
  }
  EXPECT_EQ(keys,
            L" Ctrl+K mnuNewFolderLink Ctrl+E mnuAddRSS Ctrl+W mnuAddLink Ctrl+F mnuAddFileLink"
            L" Ctrl+D mnuAddFolderLink Ctrl+P mnuAddPicture Ctrl+R mnuAddReminder Ctrl+C mnuNew"
            L" Ctrl+N mnuNewNote Ctrl+O mnuNewCommand Ctrl+V mnuPaste Ctrl+A mnuSelectAll"
            L" Ctrl+U mnuUnselectAll Ctrl+Z mnuUndo Ctrl+Y mnuRedo Del mnuDeleteSelected"
            L" Ctrl+L mnuLock F2 mnuShortcutProperties Shift+F5 mnuRefreshShortcuts"
            L" Ctrl+F1 mnuShrinkAll Ctrl+F2 mnuFoldAll Ctrl+F3 mnuAttachAll F6 mnuContainerLibrary"
            L" Ctrl+S mnuRSSSearch F5 mnuRSSRefresh F11 mnuRSSRefreshAll F12 mnuRSSViewer"
            L" F9 mnuTranslucent F4 mnuProgramAppearance F3 mnuProgramSettings F8 mnuSave"
            L" F1 mnuTips Alt+F4 mnuExitMainWin");
  for (const int needsSelection : {46, 113})
    EXPECT_EQ(decideKey({needsSelection}, kPlain), kNothing);
  EXPECT_EQ(decideKey({46, kShift}, kPlain), run(C::mnuDeleteSelected));
  EXPECT_EQ(decideKey({113, kShift}, kSelected), kNothing);
  EXPECT_EQ(decideKey({'Q', kCtrl}, kSelected), kNothing);
  EXPECT_EQ(decideKey({0}, kSelected), kNothing) << "no key is no command's";
}

TEST(Keys, LettersAndDigitsAreTyped) {
  std::wstring plain, shifted;
  for (int code = 0; code < 256; ++code) {
    if (const wchar_t c = decideKey({code}, kPlain).typed; c != 0) plain += c;
    if (const wchar_t c = decideKey({code, kShift}, kPlain).typed; c != 0) shifted += c;
  }
  EXPECT_EQ(plain, L"0123456789abcdefghijklmnopqrstuvwxyz0123456789");  // and the keypad's
  EXPECT_EQ(shifted, L"ABCDEFGHIJKLMNOPQRSTUVWXYZ");
  EXPECT_EQ(decideKey({'A'}, kPlain).action, KeyAction::JumpType);
}

TEST(Keys, TheJumpBoxHasKeysOfItsOwn) {
  const struct {
    Key key;
    KeyAction action;
  } rows[] = {{{32, kShift}, KeyAction::JumpPrevious},
              {{32}, KeyAction::JumpNext},
              {{13}, KeyAction::JumpStart},
              {{38}, KeyAction::JumpUp},
              {{40}, KeyAction::JumpDown}};
  for (const auto& row : rows) {
    EXPECT_EQ(decideKey(row.key, kPlain), kNothing) << row.key.code;
    EXPECT_EQ(decideKey(row.key, kJump), act(row.action)) << row.key.code;
  }
  // Escape clears, then closes, then collapses.
  KeyState state{.jumpBoxShown = true, .jumpBoxHasText = true, .barExpanded = true};
  EXPECT_EQ(decideKey({27}, state), act(KeyAction::JumpClear));
  state.jumpBoxHasText = false;
  EXPECT_EQ(decideKey({27}, state), act(KeyAction::JumpClose));
  state.jumpBoxShown = false;
  EXPECT_EQ(decideKey({27}, state), run(C::mnuDockNow));
  EXPECT_EQ(decideKey({27, kShift}, state), kNothing);
  EXPECT_EQ(decideKey({27}, kPlain), kNothing);
}

TEST(Keys, PositionWrapsPastTheLastMatchAndSurvivesShorterLists) {
  MatchPosition p;
  for (const int shown : {0, 1, 0}) EXPECT_EQ(p.showNext(2), shown);
  for (const int shown : {1, 0, 1}) EXPECT_EQ(p.showPrevious(2), shown);
  for (const int shown : {0, 1, 2, 3}) EXPECT_EQ(p.showNext(5), shown);
  EXPECT_EQ(p.showNext(1), 0);
  EXPECT_EQ(p.showNext(0), -1);
  EXPECT_EQ(p.showPrevious(0), -1);
}

}  // namespace
}  // namespace varnowick
