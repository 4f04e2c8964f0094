#include "containers/detached.h"

namespace varnowick {
namespace {

constexpr double kFadeStep = 12.8;  // of 256, per tick
constexpr int kFadeEnd = 256;
constexpr int kOpaque = 255;
// The way from the tab to the window takes the mouse a moment.
constexpr int kPatience = 2;

// The borders count as inside.
bool isOn(const PixelRect& r, Point<Pixels> p) {
  return !r.empty() && p.x >= r.left && p.y >= r.top && p.x <= r.right() && p.y <= r.bottom();
}

bool fades(const DetachedInputs& in) {
  return in.record.DetachedFadeOut && in.animate && in.systemAnimations;
}

TimerAction startTimer(TimerId id) { return {id, true}; }
TimerAction stopTimer(TimerId id) { return {id, false}; }

}  // namespace

DetachedEffects DetachedRules::start() const {
  DetachedEffects effects;
  effects.timers.push_back(startTimer(TimerId::DetachedTimerHide));
  return effects;
}

DetachedEffects DetachedRules::fade(FadeTag tag) {
  DetachedEffects effects;
  if (state_ != DetachedState::Fading) effects.timers.push_back(startTimer(TimerId::TimerFadeOut));
  state_ = DetachedState::Fading;
  tag_ = tag;
  return effects;
}

DetachedEffects DetachedRules::DockMe(const DetachedInputs& in) {
  if (state_ != DetachedState::Shown || in.downloading) return {};
  tabArmed_ = !isOn(in.tab, in.cursor);
  if (!fades(in)) return DockNow(in);
  DetachedEffects effects = fade(FadeTag::Dock);
  if (in.record.DetachedUseTab) effects.tab = TabChange::Place;
  return effects;
}

DetachedEffects DetachedRules::DockNow(const DetachedInputs& in) {
  DetachedEffects effects;
  if (hidden()) return effects;
  if (state_ == DetachedState::Fading) effects.timers.push_back(stopTimer(TimerId::TimerFadeOut));
  fadeCounter_ = 0;
  tabArmed_ = !isOn(in.tab, in.cursor);
  const bool tab = in.record.DetachedUseTab;
  state_ = tab ? DetachedState::HiddenInTab : DetachedState::Hidden;
  effects.tab = tab ? TabChange::Place : TabChange::Hide;
  effects.show = false;
  effects.opacity = kOpaque;
  return effects;
}

DetachedEffects DetachedRules::Undock(const DetachedInputs&) {
  DetachedEffects effects;
  if (state_ == DetachedState::Shown || unloading()) return effects;
  if (state_ == DetachedState::Fading) effects.timers.push_back(stopTimer(TimerId::TimerFadeOut));
  fadeCounter_ = 0;
  state_ = DetachedState::Shown;
  patience_ = kPatience;
  effects.tab = TabChange::Hide;
  effects.show = true;
  effects.opacity = kOpaque;
  return effects;
}

DetachedEffects DetachedRules::unload(const DetachedInputs& in) {
  DetachedEffects effects;
  if (hidden() || !fades(in))
    effects.unload = true;
  else
    effects = fade(FadeTag::Unload);
  effects.tab = TabChange::Hide;
  return effects;
}

DetachedEffects DetachedRules::TimerFadeOutTick(const DetachedInputs& in) {
  DetachedEffects effects;
  if (state_ != DetachedState::Fading) {
    effects.timers.push_back(stopTimer(TimerId::TimerFadeOut));
    return effects;
  }
  const int counter = roundHalfToEven(fadeCounter_ + kFadeStep);
  if (counter < kFadeEnd) {
    fadeCounter_ = counter;
    effects.opacity = kFadeEnd - counter;
    return effects;
  }
  if (tag_ == FadeTag::Dock) return DockNow(in);
  fadeCounter_ = 0;
  effects.timers.push_back(stopTimer(TimerId::TimerFadeOut));
  effects.unload = true;
  return effects;
}

DetachedEffects DetachedRules::TimerHideTick(const DetachedInputs& in) {
  const bool onTab = in.record.DetachedUseTab && isOn(in.tab, in.cursor);
  if (!onTab) tabArmed_ = true;
  if (state_ != DetachedState::Shown || in.busy) return {};
  if (isOn(in.window, in.cursor)) {
    patience_ = 0;
    return {};
  }
  if (!in.record.DetachedAutoHide || in.foreground) return {};
  // A mouse that rests where the tab was would only fetch the window again.
  if (onTab && in.record.DetachedAutoShow) return {};
  if (patience_ > 0) {
    --patience_;
    return {};
  }
  return DockMe(in);
}

DetachedEffects DetachedRules::launched(const DetachedInputs& in) {
  return in.record.DetachedCollapseOnClick ? DockMe(in) : DetachedEffects{};
}

DetachedEffects DetachedRules::tabTouched(const DetachedInputs& in) {
  if (!tabArmed_ || !in.record.DetachedAutoShow || in.busy || in.fullScreen) return {};
  return Undock(in);
}

DetachedEffects DetachedRules::recordChanged(const DetachedInputs& in) {
  DetachedEffects effects;
  const bool tab = in.record.DetachedUseTab;
  // Without its tab the window would be gone from sight by the turn of a check mark.
  if (state_ == DetachedState::HiddenInTab && !tab) return Undock(in);
  if (state_ == DetachedState::Hidden && tab) {
    state_ = DetachedState::HiddenInTab;
    effects.tab = TabChange::Place;
  }
  if (state_ == DetachedState::Fading && tag_ == FadeTag::Dock)
    effects.tab = tab ? TabChange::Place : TabChange::Hide;
  return effects;
}

DetachedEffects DetachedRules::systemChanged(const DetachedInputs& in) const {
  DetachedEffects effects;
  const bool fadesIntoTab =
      state_ == DetachedState::Fading && tag_ == FadeTag::Dock && in.record.DetachedUseTab;
  if (state_ == DetachedState::HiddenInTab || fadesIntoTab) effects.tab = TabChange::Place;
  return effects;
}

}  // namespace varnowick
