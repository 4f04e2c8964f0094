// The part of WorkspaceScene that finds room for new objects.
#include <algorithm>
#include <cmath>
#include <vector>

#include "ui/scene/metrics.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {

namespace {

Twips upToGrid(Twips at, Twips origin) {
  return origin + kGrid * std::ceil((at - origin).value / kGrid.value);
}

// The first place in the row at `top` that is free, or a left edge past `limit`.
Twips freeInRow(const std::vector<TwipsRect>& taken, Twips left, Twips top, Size<Twips> cell,
                Twips limit) {
  const Twips origin = left;
  for (bool moved = true; moved && left <= limit;) {
    moved = false;
    for (const TwipsRect& other : taken) {
      if (TwipsRect{left, top, cell.width, cell.height}.intersect(other).empty()) continue;
      left = upToGrid(other.right(), origin);
      moved = true;
    }
  }
  return left;
}

}  // namespace

Point<Twips> WorkspaceScene::nextFreePlace(Panel panel, Size<Twips> cell) const {
  std::vector<TwipsRect> taken;
  workspace_.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& s) {
    if (s.parent == panel) taken.push_back(reachable(panel, s.position, shortcutCell(isSmall(s))));
  });
  workspace_.pictures.forEach([&](PictureSlot, const clsPicture& p) {
    const TwipsRect rect = sane(p.rect, {{240}, {240}});
    if (p.parent == panel) taken.push_back(reachable(panel, rect.topLeft(), rect.size()));
  });
  if (panel.isMain()) {
    workspace_.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
      // A folded container needs its room again when it unfolds; a tile that
      // expands lies over its neighbours for a moment only.
      if (c.visible && !c.Detached)
        taken.push_back(
            reachable(picBack, c.rect.topLeft(), c.shrunk ? kShrunkSize : panelSize({slot})));
    });
  }
  const Size<Twips> room = panelSize(panel);
  const Point<Twips> first{kPad, panel.isMain() ? kPad : kTitleStripHeight + Twips{130}};
  // Something wider than the panel still gets a row of its own.
  const Twips rightMost = std::max(first.x, room.width - cell.width - kPad * 0.5F);
  const Twips lowest = panel.isMain() ? kFarthest : room.height - cell.height;
  for (Twips top = first.y; top <= lowest; top += kGrid) {
    const Twips left = freeInRow(taken, first.x, top, cell, rightMost);
    if (left <= rightMost) return {left, top};
  }
  const float steps = static_cast<float>(taken.size() % 8);
  return {first.x + kGrid * steps, first.y + kGrid * steps};
}

}  // namespace varnowick
