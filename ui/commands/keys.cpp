#include "ui/commands/keys.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;
constexpr int kSpace = 32;
constexpr int kUp = 38;
constexpr int kDown = 40;
constexpr int kDelete = 46;
constexpr int kNumpad0 = 96;

KeyDecision runCommand(Command command) {
  if (command == Command::None) return {};
  KeyDecision d{.action = KeyAction::RunCommand, .command = command};
  d.closeJumpBox = command == Command::mnuShortcutProperties ||
                   command == Command::mnuProgramAppearance ||
                   command == Command::mnuProgramSettings;
  return d;
}

KeyDecision escape(const KeyState& state) {
  if (state.jumpBoxShown)
    return {.action = state.jumpBoxHasText ? KeyAction::JumpClear : KeyAction::JumpClose};
  return state.barExpanded ? runCommand(Command::mnuDockNow) : KeyDecision{};
}

// Letters and digits of the main block, and the digits of the keypad.
wchar_t typedCharacter(int keyCode, bool shift) {
  if (keyCode >= 'A' && keyCode <= 'Z')
    return static_cast<wchar_t>(shift ? keyCode : keyCode - 'A' + 'a');
  if (shift) return 0;
  if (keyCode >= '0' && keyCode <= '9') return static_cast<wchar_t>(keyCode);
  if (keyCode >= kNumpad0 && keyCode <= kNumpad0 + 9)
    return static_cast<wchar_t>(keyCode - kNumpad0 + '0');
  return 0;
}

KeyDecision typeIntoJumpBox(int keyCode, bool shift) {
  const wchar_t typed = typedCharacter(keyCode, shift);
  if (typed == 0) return {};
  return {.action = KeyAction::JumpType, .typed = typed};
}

KeyDecision withShift(int keyCode, const KeyState& state) {
  if (keyCode == kSpace)
    return {.action = state.jumpBoxShown ? KeyAction::JumpPrevious : KeyAction::None};
  if (keyCode == kDelete) return runCommand(Command::mnuDeleteSelected);
  if (const Command c = commandForKey({keyCode, kShift}); c != Command::None) return runCommand(c);
  // A name that is typed with a capital letter must find its shortcut too.
  return typeIntoJumpBox(keyCode, true);
}

KeyDecision withoutModifier(int keyCode, const KeyState& state) {
  switch (keyCode) {
    case kEnter:
      return {.action = state.jumpBoxShown ? KeyAction::JumpStart : KeyAction::None};
    case kEscape:
      return escape(state);
    case kSpace:
      return {.action = state.jumpBoxShown ? KeyAction::JumpNext : KeyAction::None};
    case kUp:
      return {.action = state.jumpBoxShown ? KeyAction::JumpUp : KeyAction::None};
    case kDown:
      return {.action = state.jumpBoxShown ? KeyAction::JumpDown : KeyAction::None};
    default:
      break;
  }
  const Command command = commandForKey({keyCode});
  if (command == Command::None) return typeIntoJumpBox(keyCode, false);
  const bool needsSelection =
      (commandRow(command).needs & (kNeedsSelection | kNeedsProperties)) != 0;
  return needsSelection && !state.shortcutSelected ? KeyDecision{} : runCommand(command);
}

}  // namespace

KeyDecision decideKey(Key key, const KeyState& state) {
  if (state.suppressed) return {};
  if (key.held.none()) return withoutModifier(key.code, state);
  if (key.held == kShift) return withShift(key.code, state);
  if (key.held == kCtrl || key.held == kAlt) return runCommand(commandForKey(key));
  // Ctrl+Alt types special characters on many keyboards; it means nothing here,
  // nor do the other combinations.
  return {};
}

int MatchPosition::showNext(int matches) {
  if (matches <= 0) return -1;
  if (next_ < 0 || next_ >= matches) next_ = 0;
  return next_++;
}

int MatchPosition::showPrevious(int matches) {
  if (matches <= 0) return -1;
  if (next_ < 0 || next_ >= matches) next_ = matches - 1;
  return next_--;
}

}  // namespace varnowick
