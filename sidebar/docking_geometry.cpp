// The places of docking: borders, end of the slide, which edge a window is at
// or is let go at, and where a window goes when its monitor has gone.
#include <algorithm>
#include <array>
#include <cmath>

#include "sidebar/docking.h"

namespace varnowick {
namespace {

constexpr std::array kEdges{ScreenEdge::Left, ScreenEdge::Right, ScreenEdge::Top,
                            ScreenEdge::Bottom};
// A pointer pushed against a border, wherever the drag began.
constexpr Twips kAgainstBorder{30};

constexpr bool isUpright(ScreenEdge e) { return e == ScreenEdge::Top || e == ScreenEdge::Bottom; }

constexpr Twips edgeOf(const TwipsRect& r, ScreenEdge edge) {
  switch (edge) {
    case ScreenEdge::Left:
      return r.left;
    case ScreenEdge::Right:
      return r.right();
    case ScreenEdge::Top:
      return r.top;
    default:
      return r.bottom();
  }
}

// How much of the two lies side by side along the edge.
Twips shared(const TwipsRect& a, const TwipsRect& b, ScreenEdge edge) {
  return isUpright(edge) ? std::min(a.right(), b.right()) - std::max(a.left, b.left)
                         : std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
}

// So long that it is near the edge wherever it stands.
bool reachesAlways(const TwipsRect& window, const TwipsRect& work, ScreenEdge edge) {
  constexpr float kMost = 2.0F / 3.0F;
  return isUpright(edge) ? window.height > work.height * kMost : window.width > work.width * kMost;
}

// The edges in the order in which a window at several of them prefers them: its
// last one, then those along its longer sides.
std::array<ScreenEdge, 5> preferredEdges(const TwipsRect& window, ScreenEdge last) {
  if (window.width > window.height)
    return {last, ScreenEdge::Top, ScreenEdge::Bottom, ScreenEdge::Left, ScreenEdge::Right};
  return {last, ScreenEdge::Left, ScreenEdge::Right, ScreenEdge::Top, ScreenEdge::Bottom};
}

const ScreenMonitor* overlapping(const ScreenExtents& screen, const TwipsRect& bounds) {
  const ScreenMonitor& nearest = monitorHolding(screen.monitors, bounds);
  return nearest.bounds.intersect(bounds).empty() ? nullptr : &nearest;
}

}  // namespace

FrameInsets frameInsets(ScreenEdge edge) {
  FrameInsets insets;
  // The top edge hides less than the others; deliberate.
  if (edge == ScreenEdge::Left) insets.left = 200_tw;
  if (edge == ScreenEdge::Right) insets.right = 200_tw;
  if (edge == ScreenEdge::Top) insets.top = 100_tw;
  if (edge == ScreenEdge::Bottom) insets.bottom = 200_tw;
  return insets;
}

Twips clampInto(Twips from, Twips to, Twips position, Twips length) {
  return std::max(from, std::min(position, to - length));
}

ScreenMonitor Docking::monitor(const DockInputs& in) const {
  if (!isEdge(side_) && !isEdge(insetEdge_)) return monitorHolding(in.screen.monitors, in.window);
  if (const ScreenMonitor* own = overlapping(in.screen, monitor_)) return *own;
  return monitorHolding(in.screen.monitors, monitor_);
}

// Left, top and bottom are the virtual screen's, right is the monitor's. Where
// no monitor reaches the virtual screen's border beside the window (monitors of
// different heights, or one above the primary), a strip there would be lost,
// and the border of the window's own monitor stands in.
Docking::Border Docking::borderFor(const DockInputs& in, ScreenEdge edge) const {
  const ScreenExtents& s = in.screen;
  const ScreenMonitor own = monitor(in);
  const auto reaches = [&](const ScreenMonitor& m) {
    switch (edge) {
      case ScreenEdge::Left:
        return m.bounds.left == s.virtualLeft;
      case ScreenEdge::Top:
        return m.bounds.top == s.virtualTop;
      case ScreenEdge::Bottom:
        return m.bounds.bottom() == s.virtualHeight;
      default:
        return false;
    }
  };
  Border best{edge, own};
  if (reaches(own)) return best;
  Twips most{};
  for (const ScreenMonitor& m : s.monitors) {
    const Twips beside = shared(m.bounds, in.window, edge);
    if (!reaches(m) || beside <= most) continue;
    most = beside;
    best.monitor = m;
  }
  return best;
}

// Bars of the desktop keep their place.
Twips Docking::place(const Border& border) { return edgeOf(border.monitor.work, border.edge); }

Point<Twips> Docking::collapsedPosition(const TwipsRect& window, const Border& border) {
  Point<Twips> at = window.topLeft();
  const Twips b = place(border);
  if (border.edge == ScreenEdge::Left) at.x = b - window.width + kCollapsedStrip;
  if (border.edge == ScreenEdge::Right) at.x = b - kCollapsedStrip;
  if (border.edge == ScreenEdge::Top) at.y = b - window.height + kCollapsedStrip;
  if (border.edge == ScreenEdge::Bottom) at.y = b - kCollapsedStrip;
  return at;
}

Point<Twips> Docking::expandedPosition(const TwipsRect& window, const Border& border) {
  Point<Twips> at = window.topLeft();
  const Twips b = place(border);
  const FrameInsets hidden = frameInsets(border.edge);
  if (border.edge == ScreenEdge::Left) at.x = b - hidden.left;
  if (border.edge == ScreenEdge::Right) at.x = b - window.width + hidden.right;
  if (border.edge == ScreenEdge::Top) at.y = b - hidden.top;
  if (border.edge == ScreenEdge::Bottom) at.y = b - window.height + hidden.bottom;
  return at;
}

void Docking::clampAlong(TwipsRect& window, const Border& border) {
  const TwipsRect& work = border.monitor.work;
  if (isUpright(border.edge))
    window.left = clampInto(work.left, work.right(), window.left, window.width);
  else
    window.top = clampInto(work.top, work.bottom(), window.top, window.height);
}

bool Docking::slideEnded(const DockInputs& in) const {
  const Twips b = place({side_, monitor(in)});
  switch (side_) {
    case ScreenEdge::Left:
      return in.window.left <= b - in.window.width + 100_tw;
    case ScreenEdge::Right:
      return in.window.left >= b - 200_tw;
    case ScreenEdge::Top:
      return in.window.top <= b - in.window.height + 100_tw;
    default:
      return in.window.top >= b - 100_tw;
  }
}

bool Docking::isInner(const DockInputs& in, const Border& border, const TwipsRect& beside) {
  const Twips b = edgeOf(border.monitor.bounds, border.edge);
  const bool backwards = border.edge == ScreenEdge::Left || border.edge == ScreenEdge::Top;
  return std::any_of(
      in.screen.monitors.begin(), in.screen.monitors.end(), [&](const ScreenMonitor& m) {
        const Twips from = isUpright(border.edge) ? m.bounds.top : m.bounds.left;
        const Twips to = isUpright(border.edge) ? m.bounds.bottom() : m.bounds.right();
        return (backwards ? from < b && b <= to : from <= b && b < to) &&
               shared(m.bounds, beside, border.edge) > Twips{};
      });
}

bool Docking::touches(const DockInputs& in, ScreenEdge edge) const {
  if (!isEdge(edge)) return false;
  const Border border = borderFor(in, edge);
  const bool backwards = edge == ScreenEdge::Left || edge == ScreenEdge::Top;
  const Twips side = edgeOf(in.window, edge);
  if (backwards ? side > place(border) + kEdgeTolerance : side < place(border) - kEdgeTolerance)
    return false;
  if (reachesAlways(in.window, border.monitor.work, edge)) return false;
  // Where the next monitor begins there is no edge to hide behind, unless the
  // user has docked the window to that border on purpose.
  return !isInner(in, border, in.window) ||
         (lastSide_ == edge && monitor_ == border.monitor.bounds);
}

ScreenEdge Docking::touchedEdge(const DockInputs& in) const {
  for (const ScreenEdge edge : preferredEdges(in.window, lastSide_))
    if (touches(in, edge)) return edge;
  return ScreenEdge::None;
}

// A window that is just where ExpandFromEdge puts it, or else touches an edge.
ScreenEdge Docking::standsAt(const DockInputs& in) const {
  for (const ScreenEdge edge : preferredEdges(in.window, lastSide_)) {
    if (!isEdge(edge)) continue;
    const Point<Twips> at = expandedPosition(in.window, borderFor(in, edge));
    if (in.density.toPixels(at.x) == in.density.toPixels(in.window.left) &&
        in.density.toPixels(at.y) == in.density.toPixels(in.window.top))
      return edge;
  }
  return touchedEdge(in);
}

ScreenEdge Docking::nearestEdge(const DockInputs& in) const {
  const auto distance = [&](ScreenEdge edge) {
    const Border border = borderFor(in, edge);
    const bool backwards = edge == ScreenEdge::Left || edge == ScreenEdge::Top;
    const Twips gap = backwards ? edgeOf(in.window, edge) - place(border)
                                : place(border) - edgeOf(in.window, edge);
    return std::pair(reachesAlways(in.window, border.monitor.work, edge), gap);
  };
  return *std::min_element(kEdges.begin(), kEdges.end(),
                           [&](ScreenEdge a, ScreenEdge b) { return distance(a) < distance(b); });
}

// At a border where the next monitor begins the window is in full view there,
// and only the flag can tell that it is collapsed.
std::optional<Docking::Border> Docking::strippedAt(const DockInputs& in, bool hidden) const {
  std::optional<Border> inner;
  for (const ScreenMonitor& m : in.screen.monitors) {
    for (const ScreenEdge edge : kEdges) {
      const Border border{edge, m};
      const Point<Twips> at = collapsedPosition(in.window, border);
      const float away =
          isUpright(edge) ? in.window.top.value - at.y.value : in.window.left.value - at.x.value;
      if (std::abs(away) > kCollapsedStrip.value) continue;
      if (shared(m.bounds, in.window, edge) <= Twips{}) continue;
      if (!isInner(in, border, in.window)) return border;
      if (!inner) inner = border;
    }
  }
  return hidden ? inner : std::nullopt;
}

// The border of the pointer's own monitor.
Docking::Border Docking::borderNearPointer(const DockInputs& in, ScreenEdge edge, Twips& distance) {
  const Twips pixel = in.density.toTwips(1_px);
  const TwipsRect at{in.density.toTwips(in.cursor.x), in.density.toTwips(in.cursor.y), pixel,
                     pixel};
  const Border border{edge, monitorHolding(in.screen.monitors, at)};
  const bool backwards = edge == ScreenEdge::Left || edge == ScreenEdge::Top;
  distance = backwards ? edgeOf(at, edge) - place(border) : place(border) - edgeOf(at, edge);
  return border;
}

std::optional<Docking::Border> Docking::borderAtPointer(const DockInputs& in) const {
  std::optional<Border> nearest;
  Twips least{};
  for (const ScreenEdge edge : preferredEdges(in.window, ScreenEdge::None)) {
    if (!isEdge(edge)) continue;
    Twips distance{};
    const Border border = borderNearPointer(in, edge, distance);
    const Twips reach = heldNear_[static_cast<std::size_t>(edge)] ? kAgainstBorder : kDropReach;
    if (distance > reach || (nearest && distance >= least)) continue;
    const TwipsRect beside{in.density.toTwips(in.cursor.x), in.density.toTwips(in.cursor.y), 15_tw,
                           15_tw};
    if (isInner(in, border, beside)) continue;
    nearest = border;
    least = distance;
  }
  return nearest;
}

void Docking::dragBegan(const DockInputs& in) {
  heldNear_.fill(true);
  dragged(in);
}

std::optional<TwipsRect> Docking::dragged(const DockInputs& in) {
  for (const ScreenEdge edge : kEdges) {
    Twips distance{};
    borderNearPointer(in, edge, distance);
    if (distance > kDropReach) heldNear_[static_cast<std::size_t>(edge)] = false;
  }
  Docking asIf = *this;
  const DockEffects effects = asIf.dropped(in);
  if (!isEdge(asIf.at_) || !effects.moveTo) return std::nullopt;
  const Size<Twips> size = effects.resize.value_or(in.window.size());
  return TwipsRect{effects.moveTo->x, effects.moveTo->y, size.width, size.height}.intersect(
      asIf.monitor(in).work);
}

Size<Twips> Docking::turned(const TwipsRect& window, const Border& border) {
  const Size<Twips> now = window.size();
  const bool upright = isUpright(border.edge);
  if (upright ? now.height <= now.width : now.width <= now.height) return now;
  (upright ? tall_ : wide_) = now;
  const std::optional<Size<Twips>>& before = upright ? wide_ : tall_;
  const TwipsRect& work = border.monitor.work;
  Size<Twips> size = upright ? Size<Twips>{work.width, std::min(now.width, work.height * 0.5F)}
                             : Size<Twips>{std::min(now.height, work.width * 0.5F), work.height};
  if (before) size = *before;
  return {std::min(size.width, work.width), std::min(size.height, work.height)};
}

std::optional<TwipsRect> Docking::clip(const DockInputs& in) const {
  const ScreenEdge edge = isEdge(side_) ? side_ : insetEdge_;
  if (!isEdge(edge)) return std::nullopt;
  const Twips b = place({edge, monitor(in)});
  TwipsRect inside = in.window;
  TwipsRect beyond = in.window;
  if (isUpright(edge)) {
    const Twips cut = std::clamp(b, in.window.top, in.window.bottom());
    TwipsRect& upper = edge == ScreenEdge::Top ? beyond : inside;
    TwipsRect& lower = edge == ScreenEdge::Top ? inside : beyond;
    upper.height = cut - in.window.top;
    lower.height = in.window.bottom() - cut;
    lower.top = cut;
  } else {
    const Twips cut = std::clamp(b, in.window.left, in.window.right());
    TwipsRect& first = edge == ScreenEdge::Left ? beyond : inside;
    TwipsRect& second = edge == ScreenEdge::Left ? inside : beyond;
    first.width = cut - in.window.left;
    second.width = in.window.right() - cut;
    second.left = cut;
  }
  if (!isShown(in.screen.monitors, beyond)) return std::nullopt;
  return inside;
}

DockEffects Docking::screenChanged(const DockInputs& in) {
  DockEffects effects;
  if (in.maximised) return effects;
  const ScreenEdge edge = isEdge(side_) ? side_ : insetEdge_;
  DockInputs from = in;
  const auto standAt = [&](Point<Twips> at) {
    from.window.left = at.x;
    from.window.top = at.y;
  };
  const bool floated = home_ && !isEdge(home_->edge);
  if (floated) {
    standAt(home_->at);
    if (isShown(in.screen.monitors, from.window)) {
      home_.reset();
      // It may have docked meanwhile to the border it was brought back to.
      if (isEdge(side_)) effects = floatFree(from);
      settleAt(from, touchedEdge(from));
      if (*settled_ != in.window.topLeft()) effects.moveTo = settled_;
      return effects;
    }
  }
  // The system itself may have moved the window off a monitor that has gone.
  Home wanted{settled_ ? *settled_ : in.window.topLeft(), edge, monitor_};
  if (home_ && !floated) wanted = *home_;
  standAt(wanted.at);
  if (!isEdge(edge)) {
    if (!isShown(in.screen.monitors, from.window)) {
      if (!home_) home_ = wanted;
      const TwipsRect work = monitorHolding(in.screen.monitors, from.window).work;
      from.window.left = clampInto(work.left, work.right(), from.window.left, from.window.width);
      from.window.top = clampInto(work.top, work.bottom(), from.window.top, from.window.height);
    }
    settled_ = from.window.topLeft();
    if (!touches(from, at_)) at_ = ScreenEdge::None;
    if (*settled_ != in.window.topLeft()) effects.moveTo = settled_;
    return effects;
  }
  const ScreenMonitor* own = overlapping(in.screen, wanted.monitor);
  const Border border{edge,
                      own != nullptr ? *own : monitorHolding(in.screen.monitors, wanted.monitor)};
  monitor_ = border.monitor.bounds;
  clampAlong(from.window, border);
  const bool away = own == nullptr || from.window.topLeft() != wanted.at;
  if (!floated) home_ = away ? std::optional(wanted) : std::nullopt;
  // Its border may have moved: after a growth of the screen the strip would
  // hang in the middle of it.
  if (isEdge(side_)) {
    placeCollapsed(from, effects);
    return effects;
  }
  settled_ = expandedPosition(from.window, border);
  if (*settled_ != in.window.topLeft()) effects.moveTo = settled_;
  return effects;
}

TwipsRect Docking::rectToSave(const DockInputs& in) const {
  TwipsRect rect = in.window;
  if (!home_) return rect;
  rect.left = home_->at.x;
  rect.top = home_->at.y;
  return rect;
}

}  // namespace varnowick
