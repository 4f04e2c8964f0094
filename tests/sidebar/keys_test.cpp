#include "sidebar/keys.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

KeyDecision run(Command command, bool closesJumpBox = false) {
  return {KeyAction::RunCommand, command, closesJumpBox, 0};
}
KeyDecision typed(wchar_t c) { return {KeyAction::JumpType, Command::None, false, c}; }
KeyDecision act(KeyAction action) { return {action, Command::None, false, 0}; }
const KeyDecision kNothing;

constexpr KeyState kPlain{};
constexpr KeyState kSelected{.shortcutSelected = true};
constexpr KeyState kJump{.jumpBoxShown = true};
constexpr KeyState kJumpText{.jumpBoxShown = true, .jumpBoxHasText = true, .barExpanded = true};
constexpr KeyState kExpanded{.barExpanded = true};

TEST(Keys, EachKeyRunsItsCommandInEveryModifierState) {
  struct Case {
    int key, modifiers;
    KeyState state;
    KeyDecision expected;
  };
  const Case cases[] = {
      {75, 2, kPlain, run(Command::mnuNewFolderLink)},
      {83, 2, kPlain, run(Command::mnuRSSSearch)},
      {69, 2, kPlain, run(Command::mnuAddRSS)},
      {87, 2, kPlain, run(Command::mnuAddLink)},
      {70, 2, kPlain, run(Command::mnuAddFileLink)},
      {68, 2, kPlain, run(Command::mnuAddFolderLink)},
      {80, 2, kPlain, run(Command::mnuAddPicture)},
      {86, 2, kPlain, run(Command::mnuPaste)},
      {65, 2, kPlain, run(Command::mnuSelectAll)},
      {82, 2, kPlain, run(Command::mnuAddReminder)},
      {85, 2, kPlain, run(Command::mnuUnselectAll)},
      {67, 2, kPlain, run(Command::mnuNew)},
      {76, 2, kPlain, run(Command::mnuLock)},
      {90, 2, kPlain, run(Command::mnuUndo)},
      {112, 2, kPlain, run(Command::mnuShrinkAll)},
      {113, 2, kPlain, run(Command::mnuFoldAll)},
      {114, 2, kPlain, run(Command::mnuAttachAll)},
      {78, 2, kPlain, run(Command::mnuNewNote)},
      {79, 2, kPlain, run(Command::mnuNewCommand)},
      {81, 2, kPlain, kNothing},
      {115, 4, kPlain, run(Command::mnuExitMainWin)},
      {112, 4, kPlain, kNothing},
      {65, 4, kPlain, kNothing},
      {32, 1, kPlain, kNothing},
      {32, 1, kJump, act(KeyAction::JumpPrevious)},
      {46, 1, kPlain, run(Command::mnuDeleteSelected)},
      {116, 1, kPlain, run(Command::mnuRefreshShortcuts)},
      {113, 1, kSelected, kNothing},
      {27, 1, kExpanded, kNothing},
      {117, 0, kPlain, run(Command::mnuContainerLibrary)},
      {112, 0, kPlain, run(Command::mnuTips)},
      {113, 0, kPlain, kNothing},
      {113, 0, kSelected, run(Command::mnuShortcutProperties, true)},
      {115, 0, kPlain, run(Command::mnuProgramAppearance, true)},
      {119, 0, kPlain, run(Command::mnuSave)},
      {116, 0, kPlain, run(Command::mnuRSSRefresh)},
      {46, 0, kPlain, kNothing},
      {46, 0, kSelected, run(Command::mnuDeleteSelected)},
      {120, 0, kPlain, run(Command::mnuTranslucent)},
      {122, 0, kPlain, run(Command::mnuRSSRefreshAll)},
      {123, 0, kPlain, run(Command::mnuRSSViewer)},
      {114, 0, kPlain, run(Command::mnuProgramSettings, true)},
      {27, 0, kPlain, kNothing},
      {27, 0, kExpanded, run(Command::mnuDockNow)},
      {32, 0, kPlain, kNothing},
      {32, 0, kJump, act(KeyAction::JumpNext)},
      {13, 0, kPlain, kNothing},
      {13, 0, kJump, act(KeyAction::JumpStart)},
      {38, 0, kJump, act(KeyAction::JumpUp)},
      {40, 0, kJump, act(KeyAction::JumpDown)},
      {40, 0, kPlain, kNothing},
      {65, 0, kPlain, typed(L'a')},
      {90, 1, kPlain, typed(L'Z')},
      {48, 0, kPlain, typed(L'0')},
      {105, 0, kPlain, typed(L'9')},
      // Codes of letters in text, but keys of their own on the keyboard.
      {118, 0, kPlain, kNothing},
      {106, 0, kPlain, kNothing},
      // Ctrl+Alt, and combinations that mean nothing.
      {65, 6, kPlain, kNothing},
      {112, 6, kPlain, kNothing},
      {67, 3, kPlain, kNothing},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.key << " with " << c.modifiers);
    EXPECT_EQ(decideKey(c.key, c.modifiers, c.state), c.expected);
    KeyState suppressed = c.state;
    suppressed.suppressed = true;
    EXPECT_EQ(decideKey(c.key, c.modifiers, suppressed), kNothing);
  }
}

TEST(Keys, EscapeClearsThenClosesThenCollapses) {
  KeyState state = kJumpText;
  EXPECT_EQ(decideKey(27, 0, state), act(KeyAction::JumpClear));
  state.jumpBoxHasText = false;
  EXPECT_EQ(decideKey(27, 0, state), act(KeyAction::JumpClose));
  state.jumpBoxShown = false;
  EXPECT_EQ(decideKey(27, 0, state), run(Command::mnuDockNow));
}

TEST(Keys, PositionWrapsPastTheLastMatchAndSurvivesShorterLists) {
  MatchPosition p;
  EXPECT_EQ(p.showNext(2), 0);
  EXPECT_EQ(p.showNext(2), 1);
  EXPECT_EQ(p.showNext(2), 0);
  EXPECT_EQ(p.showPrevious(2), 1);
  EXPECT_EQ(p.showPrevious(2), 0);
  EXPECT_EQ(p.showPrevious(2), 1);
  EXPECT_EQ(p.showNext(5), 0);
  for (int i = 0; i < 3; ++i) p.showNext(5);
  EXPECT_EQ(p.showNext(1), 0);
  EXPECT_EQ(p.showNext(0), -1);
  EXPECT_EQ(p.showPrevious(0), -1);
}

}  // namespace
}  // namespace varnowick
