// The three states of a container on the workspace as changes of its record:
// folding, shrinking and back, and the box that a drag of its border or the draw
// mode makes. Knows one record and the size of the surface it lies on; no window,
// timer, sound or other container.
#pragma once

#include "core/workspace.h"

namespace varnowick {

// Kept to the right or bottom edge by a container that is pushed back inside.
inline constexpr Twips kExpandMargin{100};
// The point that stands for a click on the hot spot when there was none.
inline constexpr Point<Twips> kSyntheticClick{{120}, {120}};
// What a drag leaves of a container at least. Taller than a tile, because a box
// as high as a tile counts as one when containers shrink back by themselves.
inline constexpr Size<Twips> kLeastContainer{{1080}, {1080}};

// On the main panel, and not in a window of its own.
inline bool onWorkspace(const clsContainer& c) { return c.visible && !c.Detached; }
// Shrunk wins over folded: a tile has no title to unfold it by.
inline bool isFolded(const clsContainer& c) { return c.folded && !c.shrunk; }
inline bool isOpen(const clsContainer& c) { return !c.folded && !c.shrunk; }

// The surface is the size of the main panel; an extent that is not above 0 is
// unknown and restricts nothing. Numbers of the record that are none, or are out
// of this world, are replaced by the nearest usable ones. Each gives false and
// changes nothing when the container is not in the state it starts from.

// Leaves the title strip. A container that had unfolded upward gets its title
// back where it was, which is never out of the surface.
bool fold(clsContainer& c, Size<Twips> surface = {});
// Upward, with the title's bottom edge in place, when there is no room below; but no
// higher than the first line in sight of a surface that is scrolled.
bool unfold(clsContainer& c, Size<Twips> surface, Twips firstInSight = {});
// Leaves the tile, where the container was before it was pushed inside.
bool shrink(clsContainer& c);
// Pushed back inside the surface when it does not fit.
bool expand(clsContainer& c, Size<Twips> surface, Twips firstInSight = {});

// The point is relative to the body, which begins below the title; of a shrunk
// container the whole tile is the body.
bool IsOnShrinkHotSpot(const clsContainer& c, Point<Twips> bodyPoint);

// The edges of a box that a drag takes along.
struct Edges {
  bool left = false, top = false, right = false, bottom = false;
  bool operator==(const Edges&) const = default;
};

// The box as it was at the start of the drag with the edges moved by the whole
// distance. The opposite edges stay, nothing gets smaller than the least size (or
// than it was), and no edge leaves the surface that lay on it.
TwipsRect resized(const TwipsRect& start, Edges edges, Point<Twips> distance, Size<Twips> least,
                  Size<Twips> surface);
// The same for an open container. It has been placed by hand then, see settle().
bool resize(clsContainer& c, Edges edges, Point<Twips> distance, Size<Twips> least,
            Size<Twips> surface);
// The place of an open container is from now on its own: it goes back to no
// other when it folds or shrinks.
void settle(clsContainer& c);

// The box dragged out between two points of the surface, in any direction. What
// is too small grows away from where the drag began, and stays on the surface.
TwipsRect drawnRect(Point<Twips> from, Point<Twips> to, Size<Twips> least,
                    Size<Twips> surface = {});

}  // namespace varnowick
