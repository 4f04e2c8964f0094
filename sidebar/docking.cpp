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
    // A position that leaves only the strip on screen says as much as the flag.
    if (hidden || strippedAt(in) != ScreenEdge::None) {
      side_ = lastSide_ = collapsedAt(in);
      rightBorder_ = in.screen.monitor.right();
      settled_ = in.window.topLeft();
    } else {
      settleAt(in);
    }
    effects = screenChanged(in);
  }
  if (!effects.opacity) effects.opacity = in.shownOpacity;
  startTimer(effects, TimerId::TimerHide);
  return effects;
}

// Every way into the collapse but CollapseToEdge itself, which keeps its edge.
DockEffects Docking::collapse(const DockInputs& in, ScreenEdge edge, bool animate) {
  side_ = lastSide_ = edge;
  rightBorder_ = in.screen.monitor.right();
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
  settled_ = collapsedPosition(in);
  effects.moveTo = settled_;
  effects.opacity = opacityWhenStill(in);
  effects.change = DockChange::Collapsed;
}

DockEffects Docking::ExpandFromEdge(const DockInputs& in) {
  DockEffects effects;
  expanded_ = true;
  if (!isEdge(side_)) return effects;
  stopSlide(effects);
  settled_ = expandedPosition(in, side_);
  effects.moveTo = settled_;
  effects.opacity = in.shownOpacity;
  effects.change = DockChange::Expanded;
  insetEdge_ = side_;
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
  // A window that comes from another edge still lies partly, or almost wholly,
  // off screen along the new one.
  const TwipsRect& m = in.screen.monitor;
  if (edge == ScreenEdge::Left || edge == ScreenEdge::Right)
    from.window.top = clampInto(m.top, m.bottom(), in.window.top, in.window.height);
  else
    from.window.left = clampInto(m.left, m.right(), in.window.left, in.window.width);
  DockEffects stopped;
  stopSlide(stopped);
  DockEffects effects = collapse(from, edge, true);
  effects.timers.insert(effects.timers.begin(), stopped.timers.begin(), stopped.timers.end());
  if (!effects.moveTo && from.window != in.window) effects.moveTo = from.window.topLeft();
  return effects;
}

DockEffects Docking::dockNow(const DockInputs& in) {
  if (isEdge(side_) || in.maximised) return {};
  return redock(in, edgeToCollapseTo(in));
}

ScreenEdge Docking::edgeToCollapseTo(const DockInputs& in) const {
  const ScreenEdge touched = touchedEdge(in);
  return isEdge(touched) ? touched : nearestEdge(in);
}

DockEffects Docking::preLaunch(const DockInputs& in) {
  if (isEdge(side_) || suspended_ || in.maximised) return {};
  const ScreenEdge touched = touchedEdge(in);
  return isEdge(touched) ? collapse(in, touched, true) : DockEffects{};
}

DockEffects Docking::open(const DockInputs& in) {
  openedByRequest_ = true;
  return isEdge(side_) ? ExpandFromEdge(in) : DockEffects{};
}

DockEffects Docking::toggle(const DockInputs& in) {
  if (isEdge(side_) || !isEdge(touchedEdge(in))) return open(in);
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
  mouseEntered_ = true;
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
  // While the timer runs, the last tick has stored the position to compare with;
  // a later one would let a mouse that keeps wandering pass for one at rest.
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
  mouseEntered_ = false;
  if (suspended_ || sliding_ || in.maximised || in.keepOpen) return {};
  DockEffects effects;
  if (isEdge(side_) && movedSinceCollapse(in)) effects = floatFree(in);
  if (isEdge(side_) || openedByRequest_) return effects;
  const ScreenEdge touched = touchedEdge(in);
  return isEdge(touched) ? collapse(in, touched, true) : effects;
}

DockEffects Docking::movedByUser(const DockInputs& in) {
  if (isEdge(side_)) return sliding_ || movedSinceCollapse(in) ? floatFree(in) : DockEffects{};
  home_.reset();
  const bool wasExpanded = expanded_;
  settleAt(in);
  DockEffects effects;
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
  side_ = ScreenEdge::None;
  settleAt(in);
  effects.opacity = in.shownOpacity;
  effects.change = DockChange::Floating;
  return effects;
}

// An open window that the user has put where it is: at an edge it counts as
// expanded there, elsewhere it floats.
void Docking::settleAt(const DockInputs& in) {
  const ScreenEdge touched = touchedEdge(in);
  settled_ = in.window.topLeft();
  expanded_ = isEdge(touched);
  insetEdge_ = ScreenEdge::None;
  if (!expanded_) return;
  lastSide_ = touched;
  const Point<Twips> placed = expandedPosition(in, touched);
  const auto same = [&](Twips a, Twips b) {
    return in.density.toPixels(a) == in.density.toPixels(b);
  };
  if (same(placed.x, in.window.left) && same(placed.y, in.window.top)) insetEdge_ = touched;
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
