// Which picture stands for a shortcut on screen. Looks at no disk and no web.
#pragma once

#include "core/workspace.h"
#include "platform/shell.h"
#include "ui/scene/canvas.h"

namespace varnowick {

// A web shortcut without an icon of its own is drawn as its site, which the image
// store shows as a web page until it knows better. Every other one is drawn as
// its EffectivePath.
ImageRef iconRefFor(const clsShortcut& shortcut, System& system);

}  // namespace varnowick
