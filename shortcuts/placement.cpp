#include "shortcuts/placement.h"

#include <algorithm>
#include <cmath>

#include "shortcuts/nearest_place.h"

namespace varnowick {
namespace {

// Files may hold any number; no panel is longer than this.
constexpr Twips kFarthest{150000};
constexpr Twips kMargin{120};
// The first row of a container begins below its title.
constexpr Twips kTitleMargin{130};

Twips kept(Twips value, Twips least, Twips most) {
  if (!std::isfinite(value.value)) return least;
  return std::clamp(value, least, std::max(least, most));
}

Twips toGrid(Twips value, Twips grid) {
  return {std::round(value.value / grid.value) * grid.value};
}
Twips downToGrid(Twips value, Twips grid) {
  return {std::floor(value.value / grid.value) * grid.value};
}
Twips upToGrid(Twips value, Twips grid) {
  return {std::ceil(value.value / grid.value) * grid.value};
}

Twips topMargin(Panel panel) { return panel.isMain() ? kMargin : kTitleStripHeight + kTitleMargin; }

// The first free place in rows from the given one down to `lowest`. A place whose
// left edge is past `right` is none.
bool searchRows(const std::vector<TwipsRect>& taken, const PanelMeasures& measures, Panel panel,
                Size<Twips> size, Twips lowest, Point<Twips>& at) {
  const Twips left = kMargin;
  const Twips right = std::max(left, measures.panelSize(panel).width - size.width);
  for (; at.y <= lowest; at = {left, at.y + measures.grid}) {
    for (bool moved = true; moved && at.x <= right;) {
      moved = false;
      for (const TwipsRect& other : taken) {
        if (TwipsRect{at.x, at.y, size.width, size.height}.intersect(other).empty()) continue;
        at.x = upToGrid(other.right(), measures.grid);
        moved = true;
      }
    }
    if (at.x <= right) return true;
  }
  return false;
}

}  // namespace

std::vector<TwipsRect> takenOn(const Workspace& workspace, const PanelMeasures& measures,
                               Panel panel, bool shortcutsToo) {
  std::vector<TwipsRect> taken;
  const auto take = [&](Point<Twips> at, Size<Twips> size) {
    taken.push_back({at.x, at.y, size.width, size.height});
  };
  if (shortcutsToo)
    workspace.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& s) {
      if (s.parent == panel) take(s.position, measures.shortcutSize(s));
    });
  workspace.pictures.forEach([&](PictureSlot, const clsPicture& p) {
    if (p.parent == panel) take(p.rect.topLeft(), p.rect.size());
  });
  if (panel.isMain())
    workspace.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
      if (!c.visible || c.Detached) return;
      Size<Twips> size = c.shrunk ? kShrunkSize : measures.panelSize({slot});
      if (c.folded && !c.shrunk) size.height = kTitleStripHeight;
      take(c.rect.topLeft(), size);
    });
  return taken;
}

PlaceLimits placeLimits(const PanelMeasures& measures, Panel panel, Size<Twips> size, bool align) {
  const Size<Twips> room = measures.panelSize(panel);
  const Twips top = panel.isMain() ? Twips{} : kTitleStripHeight;
  const Twips right = std::max(Twips{}, room.width - size.width);
  const Twips bottom = panel.isMain() ? kFarthest : std::max(top, room.height - size.height);
  if (!align) return {{{}, top}, {right, bottom}};
  const Twips grid = measures.grid;
  const Twips first = upToGrid(top, grid);
  return {{{}, first}, {downToGrid(right, grid), std::max(first, downToGrid(bottom, grid))}};
}

Point<Twips> placeWithin(const PanelMeasures& measures, Panel panel, Size<Twips> size,
                         Point<Twips> at, bool align) {
  PlaceLimits limits = placeLimits(measures, panel, size, false);
  const Point<Twips> inside{kept(at.x, limits.first.x, limits.last.x),
                            kept(at.y, limits.first.y, limits.last.y)};
  if (!align) return inside;
  limits = placeLimits(measures, panel, size, true);
  return {kept(toGrid(inside.x, measures.grid), limits.first.x, limits.last.x),
          kept(toGrid(inside.y, measures.grid), limits.first.y, limits.last.y)};
}

Point<Twips> freePlaceFrom(const Workspace& workspace, const PanelMeasures& measures, Panel panel,
                           Size<Twips> size, Point<Twips> from) {
  const std::vector<TwipsRect> taken = takenOn(workspace, measures, panel, true);
  const Point<Twips> start = placeWithin(measures, panel, size, from, true);
  const Twips lowest = panel.isMain() ? kFarthest : measures.panelSize(panel).height - size.height;
  Point<Twips> at = start;
  if (searchRows(taken, measures, panel, size, lowest, at)) return at;
  at = {kMargin, upToGrid(topMargin(panel), measures.grid)};
  if (searchRows(taken, measures, panel, size, lowest, at)) return at;
  return nearestPlace(measures, panel, size, from, true, taken);
}

std::vector<Point<Twips>> placesInRows(const Workspace& workspace, const PanelMeasures& measures,
                                       Panel panel, const std::vector<Size<Twips>>& sizes) {
  const std::vector<TwipsRect> taken = takenOn(workspace, measures, panel, false);
  std::vector<Point<Twips>> places;
  Point<Twips> next{kMargin, upToGrid(topMargin(panel), measures.grid)};
  Twips rowHeight{};
  for (const Size<Twips>& size : sizes) {
    Point<Twips> at = next;
    if (!searchRows(taken, measures, panel, size, next.y, at)) {
      // A row is as high as the highest in it, so that it stays a row.
      at = {kMargin, next.y + upToGrid(rowHeight, measures.grid)};
      rowHeight = {};
      // Past the end of the panel there is no order to keep any more.
      if (!searchRows(taken, measures, panel, size, kFarthest, at)) at = {kMargin, kFarthest};
    }
    places.push_back(at);
    rowHeight = std::max(rowHeight, size.height);
    next = {upToGrid(at.x + size.width, measures.grid), at.y};
  }
  return places;
}

}  // namespace varnowick
