#include "containers/layout.h"

#include <algorithm>
#include <cmath>

namespace varnowick {
namespace {

// Files may hold any number; nothing is placed or sized beyond this.
constexpr float kFarthest = 150000;
constexpr Twips kHotSpotWidth{230};
constexpr Twips kHotSpotTop{200};
constexpr Twips kHotSpotBottom{300};

Twips within(Twips value, float least) {
  if (std::isnan(value.value)) return {std::max(least, 0.0F)};
  return {std::clamp(value.value, least, kFarthest)};
}

Point<Twips> usable(Point<Twips> p) { return {within(p.x, -kFarthest), within(p.y, -kFarthest)}; }

TwipsRect usable(const TwipsRect& r, Size<Twips> least) {
  return {within(r.left, -kFarthest), within(r.top, -kFarthest), within(r.width, least.width.value),
          within(r.height, least.height.value)};
}

// 0 for an extent that is unknown.
Size<Twips> usable(Size<Twips> surface) {
  return {within(surface.width, 0), within(surface.height, 0)};
}

void repair(clsContainer& c) {
  constexpr Size<Twips> least{kShrunkSize.width, kTitleStripHeight};
  c.savedRect = usable(c.savedRect, least);
  c.rect = usable(c.rect, least);
}

// Moving a container adds the same distance to both places, but not to the last
// bit.
bool samePlace(Twips a, Twips b) { return std::abs(a.value - b.value) < 1; }

// True when the part from start on does not end before the end of the surface.
bool overruns(Twips start, Twips length, Twips surface) {
  return surface > Twips{} && start + length > surface;
}

// One dimension of a box whose edges are dragged.
struct Span {
  Twips start, length;
};
Span dragged(Span span, bool first, bool last, Twips distance, Twips least, Twips surface) {
  const Twips end = span.start + span.length;
  const Twips shortest = std::min(least, span.length);
  if (first) {
    // A box that lay partly off the surface may stay there.
    const Twips lowest = std::min(span.start, Twips{});
    const Twips start = std::clamp(span.start + distance, lowest, end - shortest);
    return {start, end - start};
  }
  if (!last) return span;
  Twips length = std::max(span.length + distance, shortest);
  if (surface > Twips{}) {
    const Twips most = std::max(surface, end) - span.start;
    length = std::min(length, std::max(most, shortest));
  }
  return {span.start, length};
}

Span drawn(Twips from, Twips to, Twips least, Twips surface) {
  from = std::max(from, Twips{});
  to = std::max(to, Twips{});
  if (surface > Twips{}) {
    from = std::min(from, surface);
    to = std::min(to, surface);
  }
  const Twips length = std::max(least, from < to ? to - from : from - to);
  Twips start = from <= to ? from : from - length;
  if (surface > Twips{}) start = std::min(start, surface - length);
  return {std::max(start, Twips{}), length};
}

}  // namespace

bool fold(clsContainer& c, Size<Twips> surface) {
  if (!isOpen(c)) return false;
  repair(c);
  surface = usable(surface);
  if (c.CloseToEdgeY) {
    // Unfolding upward has either written the new top to the saved layout, or,
    // at the top of the surface, left the title's place there.
    if (samePlace(c.rect.top, c.savedRect.top))
      c.savedRect.top += c.savedRect.height - kTitleStripHeight;
    if (surface.height > kTitleStripHeight && c.savedRect.top >= surface.height)
      c.savedRect.top = surface.height - kTitleStripHeight;
    c.savedRect.top = std::max(c.savedRect.top, Twips{});
    c.CloseToEdgeY = false;
  }
  c.rect.top = c.savedRect.top;
  c.rect.height = kTitleStripHeight;
  c.folded = true;
  return true;
}

bool unfold(clsContainer& c, Size<Twips> surface, Twips firstInSight) {
  if (!isFolded(c)) return false;
  repair(c);
  firstInSight = within(firstInSight, 0);
  surface = usable(surface);
  c.folded = false;
  c.CloseToEdgeY = overruns(c.rect.top, c.savedRect.height, surface.height);
  if (c.CloseToEdgeY) {
    const Twips top = c.rect.top - c.savedRect.height + kTitleStripHeight;
    if (top >= firstInSight) {
      c.rect.top = top;
      c.savedRect.left = c.rect.left;
      c.savedRect.top = top;
      c.CloseToEdge = false;
    } else {
      c.rect.top = firstInSight;
      // A title at the very top has nowhere else to go back to.
      c.CloseToEdgeY = !samePlace(c.savedRect.top, c.rect.top);
    }
  }
  c.rect.width = c.savedRect.width;
  c.rect.height = c.savedRect.height;
  return true;
}

bool shrink(clsContainer& c) {
  if (!isOpen(c)) return false;
  repair(c);
  // The tile stands at the saved place, where nothing is left to go back to.
  if (!samePlace(c.rect.top, c.savedRect.top)) c.CloseToEdgeY = false;
  c.rect.top = c.savedRect.top;
  if (c.CloseToEdge) c.rect.left = c.savedRect.left;
  c.CloseToEdge = false;
  c.rect.width = kShrunkSize.width;
  c.rect.height = kShrunkSize.height;
  c.shrunk = true;
  return true;
}

bool expand(clsContainer& c, Size<Twips> surface, Twips firstInSight) {
  if (!c.shrunk) return false;
  repair(c);
  firstInSight = within(firstInSight, 0);
  surface = usable(surface);
  c.shrunk = false;
  c.folded = false;
  c.rect.width = c.savedRect.width;
  c.rect.height = c.savedRect.height;
  c.CloseToEdge = overruns(c.rect.left, c.rect.width, surface.width);
  if (c.CloseToEdge) c.rect.left = std::max(surface.width - c.rect.width - kExpandMargin, Twips{});
  if (overruns(c.rect.top, c.rect.height, surface.height))
    c.rect.top = std::max(surface.height - c.rect.height - kExpandMargin, firstInSight);
  return true;
}

bool IsOnShrinkHotSpot(const clsContainer& c, Point<Twips> bodyPoint) {
  // Comparisons so that no number that is none lies on it.
  if (!(bodyPoint.x >= Twips{} && bodyPoint.x < kHotSpotWidth && bodyPoint.y >= Twips{}))
    return false;
  if (bodyPoint.y < kHotSpotTop) return true;
  // A note covers all of the body but a narrow margin.
  if (c.noteVisible) return false;
  const Twips body = c.shrunk ? kShrunkSize.height : within(c.rect.height, 0) - kTitleStripHeight;
  return bodyPoint.y > body - kHotSpotBottom;
}

TwipsRect resized(const TwipsRect& start, Edges edges, Point<Twips> distance, Size<Twips> least,
                  Size<Twips> surface) {
  const TwipsRect box = usable(start, {{1}, {1}});
  distance = usable(distance);
  least = usable(least);
  surface = usable(surface);
  const Span across = dragged({box.left, box.width}, edges.left, edges.right, distance.x,
                              least.width, surface.width);
  const Span down = dragged({box.top, box.height}, edges.top, edges.bottom, distance.y,
                            least.height, surface.height);
  return usable({across.start, down.start, across.length, down.length}, {});
}

bool resize(clsContainer& c, Edges edges, Point<Twips> distance, Size<Twips> least,
            Size<Twips> surface) {
  if (!isOpen(c)) return false;
  repair(c);
  const TwipsRect box = resized(c.rect, edges, distance, least, surface);
  if (box == c.rect) return false;
  c.rect = box;
  settle(c);
  return true;
}

void settle(clsContainer& c) {
  if (!isOpen(c)) return;
  repair(c);
  c.savedRect = c.rect;
  c.CloseToEdge = c.CloseToEdgeY = false;
}

TwipsRect drawnRect(Point<Twips> from, Point<Twips> to, Size<Twips> least, Size<Twips> surface) {
  from = usable(from);
  to = usable(to);
  least = usable(least);
  surface = usable(surface);
  const Span across = drawn(from.x, to.x, least.width, surface.width);
  const Span down = drawn(from.y, to.y, least.height, surface.height);
  return {across.start, down.start, across.length, down.length};
}

}  // namespace varnowick
