// Paints a scene on a canvas. It reads nodes, input state and palette; it lays
// nothing out, changes nothing and never touches a file or a window.
#pragma once

#include "ui/scene/canvas.h"
#include "ui/scene/palette.h"
#include "ui/scene/scene.h"

namespace varnowick {

// Paints what lies in the dirty rectangle (pixels of the window); nothing
// outside it is touched.
void paintScene(const Scene& scene, const InputState& input, const Palette& palette,
                Density density, const PixelRect& dirty, Canvas& canvas);

}  // namespace varnowick
