// A row of a menu: a caption, and either a command or a function.
#pragma once

#include <functional>
#include <string>

#include "ui/commands/commands.h"

namespace varnowick {

struct MenuItem {
  int depth = 0;           // 0: the menu itself; a deeper row belongs to the row above it
  std::wstring caption{};  // "&" marks the mnemonic; empty: a separator
  std::wstring key{};      // shown at the right, such as "F8"
  bool checked = false;
  bool enabled = true;
  Command command = Command::None;  // for whoever shows the menu to run
  std::function<void()> act{};      // or this; neither: a separator, or a submenu's head
};

}  // namespace varnowick
