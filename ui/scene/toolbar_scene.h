// The scene of the floating toolbar: the buttons of the bar's own toolbar, in the
// same order, on a window of their own. Knows no window.
#pragma once

#include "sidebar/commands.h"
#include "ui/scene/scene.h"

namespace varnowick {

struct ToolbarLayout {
  bool column = true;  // else a row
  bool locked = false;
  bool buttonImages = false;  // as in FrameLayout
};

// Lays the buttons out, and gives the size of the window.
Size<Twips> buildToolbar(Scene& scene, const ToolbarLayout& layout);
// The command behind a button of a toolbar; None for other kinds.
Command toolbarCommand(ControlKind kind);

}  // namespace varnowick
