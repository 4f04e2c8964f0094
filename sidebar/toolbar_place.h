// Where the floating toolbar stands: beside the expanded bar, at its outer side,
// touching it, so that the mouse gets there without leaving the program's windows.
#pragma once

#include <optional>

#include "core/units.h"
#include "core/workspace.h"

namespace varnowick {

// Beside a bar at the left or right edge, or a floating one, the buttons stand in
// a column; beside one at the top or bottom edge in a row.
constexpr bool toolbarIsColumn(ScreenEdge edge) {
  return edge != ScreenEdge::Top && edge != ScreenEdge::Bottom;
}

// All in screen pixels; `work` is the work area of the bar's monitor and `size`
// the toolbar's. None when there is no room beside the bar.
std::optional<PixelRect> toolbarPlace(const PixelRect& bar, ScreenEdge edge, const PixelRect& work,
                                      Size<Pixels> size);

}  // namespace varnowick
