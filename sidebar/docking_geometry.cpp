// The places of docking: borders, end of the slide, which edge a window is at,
// and where a window goes when its monitor has gone.
#include <algorithm>
#include <array>
#include <cmath>

#include "sidebar/docking.h"

namespace varnowick {
namespace {

constexpr std::array kEdges{ScreenEdge::Left, ScreenEdge::Right, ScreenEdge::Top,
                            ScreenEdge::Bottom};

constexpr bool isSideways(ScreenEdge e) { return e == ScreenEdge::Left || e == ScreenEdge::Right; }

constexpr bool isUpright(ScreenEdge e) { return e == ScreenEdge::Top || e == ScreenEdge::Bottom; }

// At least one pixel of it at the usual density.
bool isShown(const ScreenExtents& screen, const TwipsRect& window) {
  return std::any_of(screen.monitors.begin(), screen.monitors.end(), [&](const TwipsRect& m) {
    const TwipsRect shown = m.intersect(window);
    return shown.width >= 15_tw && shown.height >= 15_tw;
  });
}

bool sameColumns(const TwipsRect& a, const TwipsRect& b) {
  return a.left < b.right() && b.left < a.right();
}
bool sameRows(const TwipsRect& a, const TwipsRect& b) {
  return a.top < b.bottom() && b.top < a.bottom();
}

// The edges in the order in which a window at several of them prefers them: its
// last one, then those along its longer sides.
std::array<ScreenEdge, 5> preferredEdges(const TwipsRect& window, ScreenEdge last) {
  if (window.width > window.height)
    return {last, ScreenEdge::Top, ScreenEdge::Bottom, ScreenEdge::Left, ScreenEdge::Right};
  return {last, ScreenEdge::Left, ScreenEdge::Right, ScreenEdge::Top, ScreenEdge::Bottom};
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

// Left, top and bottom are the virtual screen's, right is the monitor's. Where
// no monitor reaches the virtual screen's border beside the window (monitors of
// different heights, or one above the primary), a strip there would be lost, and
// the border of the window's own monitor stands in.
Twips Docking::border(const DockInputs& in, ScreenEdge edge) const {
  const ScreenExtents& s = in.screen;
  const auto shown = [&](auto&& holds) {
    return s.monitors.empty() || std::any_of(s.monitors.begin(), s.monitors.end(), holds);
  };
  switch (edge) {
    case ScreenEdge::Left: {
      const bool there = shown(
          [&](const TwipsRect& m) { return m.left == s.virtualLeft && sameRows(m, in.window); });
      return there ? s.virtualLeft : s.monitor.left;
    }
    case ScreenEdge::Top: {
      const bool there = shown(
          [&](const TwipsRect& m) { return m.top == s.virtualTop && sameColumns(m, in.window); });
      return there ? s.virtualTop : s.monitor.top;
    }
    case ScreenEdge::Bottom: {
      const bool there = shown([&](const TwipsRect& m) {
        return m.bottom() == s.virtualHeight && sameColumns(m, in.window);
      });
      return there ? s.virtualHeight : s.monitor.bottom();
    }
    default:
      return isEdge(side_) ? rightBorder_ : s.monitor.right();
  }
}

Point<Twips> Docking::collapsedPosition(const DockInputs& in) const {
  Point<Twips> at = in.window.topLeft();
  const Twips b = border(in, side_);
  if (side_ == ScreenEdge::Left) at.x = b - in.window.width + kCollapsedStrip;
  if (side_ == ScreenEdge::Right) at.x = b - kCollapsedStrip;
  if (side_ == ScreenEdge::Top) at.y = b - in.window.height + kCollapsedStrip;
  if (side_ == ScreenEdge::Bottom) at.y = b - kCollapsedStrip;
  return at;
}

Point<Twips> Docking::expandedPosition(const DockInputs& in, ScreenEdge edge) const {
  Point<Twips> at = in.window.topLeft();
  const Twips b = border(in, edge);
  const FrameInsets hidden = frameInsets(edge);
  if (edge == ScreenEdge::Left) at.x = b - hidden.left;
  if (edge == ScreenEdge::Right) at.x = b - in.window.width + hidden.right;
  if (edge == ScreenEdge::Top) at.y = b - hidden.top;
  if (edge == ScreenEdge::Bottom) at.y = b - in.window.height + hidden.bottom;
  return at;
}

bool Docking::slideEnded(const DockInputs& in) const {
  const Twips b = border(in, side_);
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

bool Docking::touches(const DockInputs& in, ScreenEdge edge) const {
  switch (edge) {
    case ScreenEdge::Left:
      return in.window.left <= border(in, edge) + kEdgeTolerance;
    case ScreenEdge::Right: {
      const Twips b = in.screen.monitor.right();
      if (in.window.right() < b - kEdgeTolerance) return false;
      // Where the next monitor begins there is no edge to hide behind, unless
      // the user has docked the window to that border on purpose.
      const bool inner = std::any_of(
          in.screen.monitors.begin(), in.screen.monitors.end(), [&](const TwipsRect& m) {
            return m.left <= b && b < m.right() && sameRows(m, in.window);
          });
      return !inner || (lastSide_ == ScreenEdge::Right && rightBorder_ == b);
    }
    case ScreenEdge::Top:
      return in.window.top <= border(in, edge) + kEdgeTolerance;
    case ScreenEdge::Bottom:
      return in.window.bottom() >= border(in, edge) - kEdgeTolerance;
    default:
      return false;
  }
}

ScreenEdge Docking::touchedEdge(const DockInputs& in) const {
  for (const ScreenEdge edge : preferredEdges(in.window, lastSide_))
    if (touches(in, edge)) return edge;
  return ScreenEdge::None;
}

ScreenEdge Docking::nearestEdge(const DockInputs& in) const {
  const auto distance = [&](ScreenEdge edge) {
    switch (edge) {
      case ScreenEdge::Left:
        return in.window.left - border(in, edge);
      case ScreenEdge::Right:
        return in.screen.monitor.right() - in.window.right();
      case ScreenEdge::Top:
        return in.window.top - border(in, edge);
      default:
        return border(in, edge) - in.window.bottom();
    }
  };
  return *std::min_element(kEdges.begin(), kEdges.end(),
                           [&](ScreenEdge a, ScreenEdge b) { return distance(a) < distance(b); });
}

ScreenEdge Docking::strippedAt(const DockInputs& in) const {
  Docking asIf;
  asIf.rightBorder_ = in.screen.monitor.right();
  for (const ScreenEdge edge : kEdges) {
    asIf.side_ = edge;
    const Point<Twips> at = asIf.collapsedPosition(in);
    const float away =
        isSideways(edge) ? in.window.left.value - at.x.value : in.window.top.value - at.y.value;
    if (std::abs(away) <= kCollapsedStrip.value) return edge;
  }
  return ScreenEdge::None;
}

ScreenEdge Docking::collapsedAt(const DockInputs& in) const {
  if (const ScreenEdge stripped = strippedAt(in); stripped != ScreenEdge::None) return stripped;
  const ScreenEdge touched = touchedEdge(in);
  return touched != ScreenEdge::None ? touched : nearestEdge(in);
}

DockEffects Docking::screenChanged(const DockInputs& in) {
  DockEffects effects;
  if (in.maximised) return effects;
  DockInputs from = in;
  const auto standAt = [&](Point<Twips> at) {
    from.window.left = at.x;
    from.window.top = at.y;
    from.screen.monitor = monitorHolding(in.screen.monitors, from.window);
  };
  // The system itself may have moved the window off a monitor that has gone.
  if (settled_) standAt(*settled_);
  ScreenEdge edge = isEdge(side_) ? side_ : insetEdge_;
  if (home_ && isShown(in.screen, {home_->at.x, home_->at.y, in.window.width, in.window.height})) {
    standAt(home_->at);
    // It may have docked meanwhile to the border it was brought back to.
    if (home_->floating && isEdge(side_)) {
      effects = floatFree(from);
      edge = ScreenEdge::None;
    }
    home_.reset();
  } else if (!isShown(in.screen, from.window)) {
    if (!home_) home_ = Home{from.window.topLeft(), !isEdge(edge)};
    const TwipsRect& m = from.screen.monitor;
    if (!isSideways(edge))
      from.window.left = clampInto(m.left, m.right(), from.window.left, from.window.width);
    if (!isUpright(edge))
      from.window.top = clampInto(m.top, m.bottom(), from.window.top, from.window.height);
  }
  // A window at an edge follows its border also where it is still visible: after
  // a growth of the screen the strip would hang in the middle of it.
  rightBorder_ = from.screen.monitor.right();
  if (isEdge(side_)) {
    placeCollapsed(from, effects);
    return effects;
  }
  settled_ = isEdge(edge) ? expandedPosition(from, edge) : from.window.topLeft();
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
