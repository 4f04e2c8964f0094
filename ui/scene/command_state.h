// What the commands of a window would find now: what is selected, meant and there. Reads
// records and the selection; what only the window knows is left as it is.
#pragma once

#include <vector>

#include "core/document.h"
#include "shortcuts/selection.h"
#include "ui/commands/commands.h"

namespace varnowick {

struct CommandTargets {
  Panel home;                             // of the window
  ShortcutSlot shortcut;                  // that keys are about: selected, else in focus
  ContainerSlot menu;                     // whose menu is open
  std::vector<ContainerSlot> containers;  // that a command for containers is for
};

CommandState commandStateOf(const Document& document, const Selection& selection,
                            const CommandTargets& targets);

}  // namespace varnowick
