// The small signs of the toolbar and the bottom bar, drawn from lines and fills
// so that they are sharp at every density and need no picture or font.
#pragma once

#include "ui/scene/canvas.h"
#include "ui/scene/scene.h"

namespace varnowick {

// Draws the sign of a control centred in the rectangle; kinds without one draw
// nothing. `unit` is the width of a thin stroke, one pixel at 96 dots per inch.
void drawSign(Canvas& canvas, ControlKind kind, const PixelRect& rect, Pixels unit, Colour colour);
// "+" or "-" for a fold box.
void drawFoldSign(Canvas& canvas, bool folded, const PixelRect& rect, Pixels unit, Colour colour);

}  // namespace varnowick
