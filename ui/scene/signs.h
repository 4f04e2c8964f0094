// The small signs on buttons, drawn with lines so that they are sharp at every
// density. Knows no nodes: what a button stands for is decided elsewhere.
#pragma once

#include "core/workspace.h"
#include "ui/scene/canvas.h"

namespace varnowick {

enum class Sign {
  Shrink,
  FoldAll,
  Feed,
  OpenLock,
  Lock,
  Dock,  // points to the edge
  Add,
  Settings,
  Menu,
  Tile,
  Detach,  // away from the edge
  Attach,
  Hide,
  Plus,
  Minus,
  Lens
};

// In the middle of the rectangle.
void drawSign(Canvas& canvas, Sign sign, const PixelRect& rect, Density density, Colour colour,
              ScreenEdge towards = ScreenEdge::Left);

}  // namespace varnowick
