#include "sidebar/docking.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace varnowick {
namespace {

void startTimer(DockEffects& effects, TimerId id) { effects.timers.push_back({id, true}); }
void stopTimer(DockEffects& effects, TimerId id) { effects.timers.push_back({id, false}); }

bool moreThan(Pixels a, Pixels b, Pixels tolerance) {
  return std::abs(static_cast<long long>(a.value) - b.value) > tolerance.value;
}

int opacityWhenStill(const DockInputs& in) {
  return in.visibleBorderCollapsed ? in.shownOpacity : kHiddenStripOpacity;
}

}  // namespace

DockEffects Docking::start(const DockInputs& in, bool hidden) {
  DockEffects effects;
  if (!in.maximised) {
    settled_ = in.window.topLeft();
    // A position that leaves only the strip on screen says as much as the flag.
    if (const auto strip = strippedAt(in, hidden)) {
      side_ = lastSide_ = strip->edge;
      monitor_ = strip->monitor.bounds;
    } else if (hidden) {
      const ScreenEdge touched = touchedEdge(in);
      const Border border = borderFor(in, isEdge(touched) ? touched : nearestEdge(in));
      side_ = lastSide_ = border.edge;
      // The place itself stands for a monitor that is missing.
      monitor_ = isShown(in.screen.monitors, in.window) ? border.monitor.bounds : in.window;
    } else {
      settleAt(in, standsAt(in));
    }
    effects = screenChanged(in);
  }
  if (!effects.opacity) effects.opacity = in.shownOpacity;
  startTimer(effects, TimerId::TimerHide);
  startTimer(effects, TimerId::TimerLook);
  return effects;
}

// Every way into the collapse but CollapseToEdge itself, which keeps its edge.
DockEffects Docking::collapse(const DockInputs& in, ScreenEdge edge, bool animate) {
  const Border border = borderFor(in, edge);
  side_ = lastSide_ = edge;
  at_ = ScreenEdge::None;
  monitor_ = border.monitor.bounds;
  return CollapseToEdge(in, animate);
}

DockEffects Docking::CollapseToEdge(const DockInputs& in, bool animate) {
  DockEffects effects;
  effects.prepareCollapse = true;
  if (!isEdge(side_)) return effects;
  openedByRequest_ = false;
  if (animate && in.animate && in.systemAnimations) {
    if (!sliding_) startTimer(effects, TimerId::TimerSlide);
    sliding_ = true;
    expanded_ = false;
    return effects;
  }
  placeCollapsed(in, effects);
  return effects;
}

void Docking::placeCollapsed(const DockInputs& in, DockEffects& effects) {
  stopSlide(effects);
  expanded_ = false;
  settled_ = collapsedPosition(in.window, {side_, monitor(in)});
  effects.moveTo = settled_;
  effects.opacity = opacityWhenStill(in);
  effects.change = DockChange::Collapsed;
}

DockEffects Docking::ExpandFromEdge(const DockInputs& in) {
  DockEffects effects;
  expanded_ = true;
  if (!isEdge(side_)) return effects;
  stopSlide(effects);
  settled_ = expandedPosition(in.window, {side_, monitor(in)});
  effects.moveTo = settled_;
  effects.opacity = in.shownOpacity;
  effects.change = DockChange::Expanded;
  at_ = insetEdge_ = side_;
  side_ = ScreenEdge::None;
  return effects;
}

DockEffects Docking::dockTo(const DockInputs& in, ScreenEdge edge) {
  if (!isEdge(edge) || in.maximised) return {};
  home_.reset();
  return redock(in, edge);
}

DockEffects Docking::redock(const DockInputs& in, ScreenEdge edge) {
  DockInputs from = in;
  const Border border = borderFor(in, edge);
  const Size<Twips> size = turned(in.window, border);
  if (size != in.window.size()) {
    from.window.width = size.width;
    from.window.height = size.height;
    const Point<Twips> open = expandedPosition(from.window, border);
    from.window.left = open.x;
    from.window.top = open.y;
  }
  // A window that comes from another edge still lies partly, or almost wholly,
  // off screen along the new one.
  clampAlong(from.window, border);
  DockEffects stopped;
  stopSlide(stopped);
  DockEffects effects = collapse(from, edge, true);
  effects.timers.insert(effects.timers.begin(), stopped.timers.begin(), stopped.timers.end());
  if (!effects.moveTo && from.window != in.window) effects.moveTo = from.window.topLeft();
  if (size != in.window.size()) effects.resize = size;
  return effects;
}

DockEffects Docking::dockNow(const DockInputs& in) {
  if (isEdge(side_) || in.maximised) return {};
  return redock(in, edgeToCollapseTo(in));
}

ScreenEdge Docking::edgeToCollapseTo(const DockInputs& in) const {
  if (isEdge(side_)) return side_;
  return isEdge(at_) ? at_ : nearestEdge(in);
}

DockEffects Docking::preLaunch(const DockInputs& in) {
  if (isEdge(side_) || suspended_ || in.maximised || !isEdge(at_)) return {};
  return collapse(in, at_, true);
}

DockEffects Docking::open(const DockInputs& in) {
  openedByRequest_ = true;
  return isEdge(side_) ? ExpandFromEdge(in) : DockEffects{};
}

DockEffects Docking::toggle(const DockInputs& in) {
  if (isEdge(side_) || !isEdge(at_)) return open(in);
  return dockNow(in);
}

DockEffects Docking::mnuSuspendSlideOut() {
  DockEffects effects;
  suspended_ = !suspended_;
  effects.timers.push_back({TimerId::TimerHide, !suspended_});
  effects.caption = suspended_ ? CaptionChange::Suspended : CaptionChange::Normal;
  return effects;
}

DockEffects Docking::mouseMoved(const DockInputs& in) {
  openedByRequest_ = false;
  if (in.maximised || in.blocked || !isEdge(side_)) return {};
  // A window that slides away under a still mouse reports mouse moves too; they
  // must not call it back at once.
  if (in.undockImmediately && !sliding_) {
    DockEffects effects = ExpandFromEdge(in);
    disarm(effects);
    return effects;
  }
  if (showArmed_) return {};
  DockEffects effects;
  showArmed_ = true;
  skipRestCheck_ = in.leftButtonDown;
  // While the timer runs, the last tick has stored the position to compare
  // with; a later one would let a mouse that keeps wandering pass for one at
  // rest.
  if (!showRunning_) {
    armedCursor_ = in.cursor;
    showRunning_ = true;
    startTimer(effects, TimerId::TimerShow);
  }
  return effects;
}

DockEffects Docking::TimerShowTick(const DockInputs& in) {
  DockEffects effects;
  showArmed_ = false;
  if (!in.mouseOnWindow || !isEdge(side_)) {
    disarm(effects);
    return effects;
  }
  if (sliding_) return effects;
  if (!skipRestCheck_ && (moreThan(in.cursor.x, armedCursor_.x, kRestTolerance) ||
                          moreThan(in.cursor.y, armedCursor_.y, kRestTolerance))) {
    armedCursor_ = in.cursor;
    return effects;
  }
  effects = ExpandFromEdge(in);
  disarm(effects);
  return effects;
}

DockEffects Docking::TimerSlideTick(const DockInputs& in) {
  DockEffects effects;
  if (!isEdge(side_)) return effects;
  if (fadeOpacity_ == 0) fadeOpacity_ = 255;
  if (fadeOpacity_ > kFadeStep) {
    fadeOpacity_ -= kFadeStep;
    effects.opacity = std::min(fadeOpacity_, in.shownOpacity);
  }
  DockInputs moved = in;
  switch (side_) {
    case ScreenEdge::Left:
      moved.window.left -= kSlideStep;
      break;
    case ScreenEdge::Right:
      moved.window.left += kSlideStep;
      break;
    case ScreenEdge::Top:
      moved.window.top -= kSlideStep;
      break;
    default:
      moved.window.top += kSlideStep;
      break;
  }
  if (!slideEnded(moved)) {
    effects.moveTo = moved.window.topLeft();
    return effects;
  }
  stopSlide(effects);
  DockEffects placed = CollapseToEdge(moved, false);
  placed.timers.insert(placed.timers.begin(), effects.timers.begin(), effects.timers.end());
  return placed;
}

DockEffects Docking::TimerHideTick(const DockInputs& in) {
  if (in.mouseOnWindow) {
    openedByRequest_ = false;
    return {};
  }
  if (suspended_ || sliding_ || in.maximised || in.keepOpen) return {};
  DockEffects effects;
  if (isEdge(side_) && movedSinceCollapse(in)) effects = floatFree(in);
  if (isEdge(side_) || openedByRequest_ || !isEdge(at_)) return effects;
  return collapse(in, at_, true);
}

DockEffects Docking::dropped(const DockInputs& in) {
  if (in.maximised || (isEdge(side_) && !sliding_ && !movedSinceCollapse(in))) return {};
  DockEffects effects;
  home_.reset();
  stopSlide(effects);
  side_ = at_ = insetEdge_ = ScreenEdge::None;
  std::optional<Border> border = borderAtPointer(in);
  if (const ScreenEdge touched = touchedEdge(in); !border && isEdge(touched))
    border = borderFor(in, touched);
  heldNear_.fill(false);
  DockInputs from = in;
  if (border) {
    const Size<Twips> size = turned(in.window, *border);
    from.window.width = size.width;
    from.window.height = size.height;
    clampAlong(from.window, *border);
    side_ = lastSide_ = border->edge;
    monitor_ = border->monitor.bounds;
    DockEffects placed = ExpandFromEdge(from);
    placed.timers.insert(placed.timers.begin(), effects.timers.begin(), effects.timers.end());
    if (size != in.window.size()) placed.resize = size;
    return placed;
  }
  // Wherever it is left, all of it can be seen.
  const TwipsRect pointer{in.density.toTwips(in.cursor.x), in.density.toTwips(in.cursor.y), 15_tw,
                          15_tw};
  const TwipsRect work = monitorHolding(in.screen.monitors, pointer).work;
  from.window.left = clampInto(work.left, work.right(), in.window.left, in.window.width);
  from.window.top = clampInto(work.top, work.bottom(), in.window.top, in.window.height);
  settleAt(from, ScreenEdge::None);
  if (from.window != in.window) effects.moveTo = settled_;
  effects.opacity = in.shownOpacity;
  effects.change = DockChange::Floating;
  return effects;
}

DockEffects Docking::sized(const DockInputs& in) {
  DockEffects effects;
  if (isEdge(side_)) return effects;
  home_.reset();
  const bool wasExpanded = expanded_;
  const bool inPlace = at_ == standsAt(in);
  settleAt(in, inPlace || touches(in, at_) ? at_ : ScreenEdge::None);
  if (wasExpanded && !expanded_) effects.change = DockChange::Floating;
  return effects;
}

DockEffects Docking::opacityChanged(const DockInputs& in) const {
  DockEffects effects;
  if (!sliding_) effects.opacity = isEdge(side_) ? opacityWhenStill(in) : in.shownOpacity;
  return effects;
}

DockEffects Docking::floatFree(const DockInputs& in) {
  DockEffects effects;
  stopSlide(effects);
  home_.reset();
  side_ = insetEdge_ = ScreenEdge::None;
  settleAt(in, touchedEdge(in));
  effects.opacity = in.shownOpacity;
  effects.change = DockChange::Floating;
  return effects;
}

void Docking::settleAt(const DockInputs& in, ScreenEdge edge) {
  settled_ = in.window.topLeft();
  at_ = edge;
  expanded_ = isEdge(edge);
  insetEdge_ = ScreenEdge::None;
  if (!expanded_) return;
  const Border border = borderFor(in, edge);
  lastSide_ = edge;
  monitor_ = border.monitor.bounds;
  const Point<Twips> placed = expandedPosition(in.window, border);
  const auto same = [&](Twips a, Twips b) {
    return in.density.toPixels(a) == in.density.toPixels(b);
  };
  if (same(placed.x, in.window.left) && same(placed.y, in.window.top)) insetEdge_ = edge;
}

void Docking::stopSlide(DockEffects& effects) {
  if (sliding_) stopTimer(effects, TimerId::TimerSlide);
  sliding_ = false;
  fadeOpacity_ = 0;
}

void Docking::disarm(DockEffects& effects) {
  if (showRunning_) stopTimer(effects, TimerId::TimerShow);
  showRunning_ = false;
  showArmed_ = false;
}

bool Docking::movedSinceCollapse(const DockInputs& in) const {
  // In pixels: the window stands at whole ones, so its position read back in
  // twips is seldom exactly the one that was set.
  const auto differs = [&](Twips a, Twips b) {
    return in.density.toPixels(a) != in.density.toPixels(b);
  };
  return settled_ && (differs(in.window.left, settled_->x) || differs(in.window.top, settled_->y));
}

}  // namespace varnowick
