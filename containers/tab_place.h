// Where the windows of detached containers and their tabs stand: tabs flush with
// the work area and clear of each other, windows always within reach. Everything in
// screen twips, whatever numbers a file holds. Knows no windows.
#pragma once

#include <span>
#include <vector>

#include "core/units.h"
#include "core/workspace.h"
#include "platform/screen.h"

namespace varnowick {

constexpr bool isVerticalTab(ScreenEdge edge) {
  return edge == ScreenEdge::Left || edge == ScreenEdge::Right;
}
constexpr Size<Twips> tabSize(ScreenEdge edge) {
  return isVerticalTab(edge) ? Size<Twips>{{220}, {1600}} : Size<Twips>{{1600}, {180}};
}

// Work areas in twips; never empty, the primary monitor's first.
std::vector<TwipsRect> workAreas(Monitors& monitors);

// The edge of the work area that the rectangle's middle is nearest to.
ScreenEdge nearestEdge(const TwipsRect& rect, const TwipsRect& work);

struct TabWish {
  // Anything but 1 to 4 stands for the edge nearest to the window.
  int DetachedTabDockedWhere = 0;
  // Where the tab was left; all zero: nowhere. Only its position along the edge and
  // the monitor that it is on count.
  TwipsRect detachedLabelRect;
  TwipsRect window;
};
struct TabPlace {
  ScreenEdge LabelLocation = ScreenEdge::Right;
  TwipsRect rect;
};
// Where the tab goes. Without a place of its own it stands in the middle of the
// window's height or width. Where another tab stands it moves along its edge to the
// first free place after it, else to the last one before it; on an edge that is full
// it stays. works must not be empty.
TabPlace placeTab(const TabWish& wish, std::span<const TwipsRect> works,
                  std::span<const TwipsRect> otherTabs);

// The place of a tab that the user drags to a point of the screen: at the edge
// nearest to it, in the middle of the point.
TabPlace dragTab(Point<Twips> pointer, std::span<const TwipsRect> works);

// Less than this of a window is not usable.
inline constexpr Size<Twips> kLeastDetached{{1500}, {900}};

// The rectangle of a detached window as it can be shown: at least kLeastDetached,
// at most the work area, and so placed that its title can be got hold of. What is
// usable is left alone. works must not be empty.
TwipsRect clampToWork(const TwipsRect& window, std::span<const TwipsRect> works);

// The same with all of it on the work area.
TwipsRect fitToWork(const TwipsRect& window, std::span<const TwipsRect> works);

// True when the rectangle has never been set, or is beyond use.
bool needsDefaultRect(const TwipsRect& window);
// For a container that is detached for the first time: as large as its box on the
// bar, beside the bar where there is most room, level with the box, and a step away
// from every window that stands there already.
TwipsRect defaultDetachedRect(const TwipsRect& box, const TwipsRect& bar,
                              std::span<const TwipsRect> works,
                              std::span<const TwipsRect> otherWindows);

}  // namespace varnowick
