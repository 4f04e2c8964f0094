// A key of the keyboard with what is held with it.
#pragma once

namespace varnowick {

struct Modifiers {
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
  constexpr bool none() const { return !shift && !ctrl && !alt; }
  // Ctrl as it stands in commands: with Alt it types characters on many keyboards.
  constexpr bool ctrlAlone() const { return ctrl && !alt; }
  constexpr bool operator==(const Modifiers&) const = default;
};

constexpr Modifiers operator|(Modifiers a, Modifiers b) {
  return {a.shift || b.shift, a.ctrl || b.ctrl, a.alt || b.alt};
}

inline constexpr Modifiers kShift{.shift = true};
inline constexpr Modifiers kCtrl{.ctrl = true};
inline constexpr Modifiers kAlt{.alt = true};

// A virtual-key code with its modifiers; code 0: no key.
struct Key {
  int code = 0;
  Modifiers held{};
  constexpr bool operator==(const Key&) const = default;
};

}  // namespace varnowick
