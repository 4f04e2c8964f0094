#include "sidebar/toolbar_place.h"

#include <algorithm>

namespace varnowick {
namespace {

// The position nearest to the wanted one at which the length lies in the range;
// its beginning when it does not fit.
Pixels within(Pixels from, Pixels to, Pixels wanted, Pixels length) {
  return std::max(from, std::min(wanted, to - length));
}

}  // namespace

std::optional<PixelRect> toolbarPlace(const PixelRect& bar, ScreenEdge edge, const PixelRect& work,
                                      Size<Pixels> size) {
  const bool roomRight = bar.right() + size.width <= work.right();
  const bool roomLeft = bar.left - size.width >= work.left;
  PixelRect place{{}, {}, size.width, size.height};
  if (toolbarIsColumn(edge)) {
    const bool right =
        edge == ScreenEdge::Left || (edge == ScreenEdge::None && (roomRight || !roomLeft));
    if (!(right ? roomRight : roomLeft)) return std::nullopt;
    place.left = right ? bar.right() : bar.left - size.width;
    place.top = within(work.top, work.bottom(), bar.top, size.height);
    return place;
  }
  const bool below = edge == ScreenEdge::Top;
  place.top = below ? bar.bottom() : bar.top - size.height;
  if (below ? place.bottom() > work.bottom() : place.top < work.top) return std::nullopt;
  place.left = within(work.left, work.right(), bar.right() - size.width, size.width);
  return place;
}

}  // namespace varnowick
