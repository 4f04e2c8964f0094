// The global hotkey as settings hold it: which combination is meant, how it is
// called, and which others are worth trying when it is taken. Registers nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/settings.h"

namespace varnowick {

// Modifiers as the platform's hotkey interface adds them up.
inline constexpr int kHotkeyAlt = 1;
inline constexpr int kHotkeyCtrl = 2;
inline constexpr int kHotkeyShift = 4;
inline constexpr int kHotkeyWin = 8;

struct Hotkey {
  int modifiers = 0;
  int key = 0;  // virtual-key code of a letter or digit
  bool operator==(const Hotkey&) const = default;
};

// None when the hotkey is off, when the stored text does not begin with a letter
// or digit, or when the modifiers would take a key away that every program types
// with.
std::optional<Hotkey> hotkeyOf(const Settings& settings);
// "Win+S", "Ctrl+Alt+S"
std::wstring hotkeyText(Hotkey hotkey);
// Newer systems keep the usual combination for themselves: what takes its place,
// the best first, without a word of warning, for nobody chose the usual one. None
// for any other combination.
std::vector<Hotkey> hotkeyStandIns(Hotkey taken);
// What to try in place of a taken combination, the most alike first; never the
// combination itself.
std::vector<Hotkey> hotkeyCandidates(Hotkey taken);
// What the balloon says; without free ones it names none.
std::wstring hotkeyTakenText(Hotkey taken, const std::vector<Hotkey>& free);

}  // namespace varnowick
