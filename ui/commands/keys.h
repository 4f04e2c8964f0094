// What a key press in the main window does: the order of the tests that turn key
// code, modifiers and state into a command or a step of the jump-to box. It runs
// nothing and consumes nothing.
#pragma once

#include "ui/commands/commands.h"

namespace varnowick {

struct KeyState {
  bool suppressed = false;  // an edit box of the bar has the keys, say
  bool jumpBoxShown = false;
  bool jumpBoxHasText = false;
  bool shortcutSelected = false;
  bool barExpanded = false;
};

enum class KeyAction {
  None,
  RunCommand,
  JumpClear,     // empty the search field
  JumpClose,     // close the jump-to box
  JumpNext,      // showNextMatch
  JumpPrevious,  // showPreviousMatch
  JumpUp,        // move within the matches
  JumpDown,
  JumpStart,  // start the chosen match
  JumpType    // type `typed` into the search field, showing the box first
};

struct KeyDecision {
  KeyAction action = KeyAction::None;
  Command command = Command::None;  // for RunCommand; it may not be built yet
  bool closeJumpBox = false;        // before the command
  wchar_t typed = 0;                // for JumpType: a letter or a digit
  bool operator==(const KeyDecision&) const = default;
};

KeyDecision decideKey(Key key, const KeyState& state);

// The position in a list of matches. Each step gives the match to show, -1 when
// there is none.
class MatchPosition {
 public:
  void reset() { next_ = 0; }
  // The match that the next step shows; a number out of the list counts as past
  // its end.
  void moveTo(int match) { next_ = match; }
  // The match at the position, then one further; past the last match it begins
  // anew.
  int showNext(int matches);
  // The match at the position, then one back.
  int showPrevious(int matches);

 private:
  int next_ = 0;
};

}  // namespace varnowick
