// The modifier keys as they were when the message being handled was sent.
#pragma once

#include <windows.h>

#include "core/key.h"

namespace varnowick {

inline Modifiers heldModifiers() {
  const auto down = [](int key) { return GetKeyState(key) < 0; };
  return {down(VK_SHIFT), down(VK_CONTROL), down(VK_MENU)};
}

}  // namespace varnowick
