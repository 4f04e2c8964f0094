#include "ui/scene/gestures.h"

#include <cstdlib>

namespace varnowick {

void Gestures::press(NodeId node, GestureKind drag, Point<Pixels> screen, bool ctrl) {
  kind_ = drag;
  node_ = node;
  start_ = screen;
  ctrl_ = ctrl;
  pressed_ = true;
  dragging_ = false;
}

GestureEvent Gestures::event(GesturePhase phase, Point<Pixels> now) const {
  return {dragging_ ? kind_ : GestureKind::Click, phase, node_, start_, now, ctrl_};
}

std::optional<GestureEvent> Gestures::move(Point<Pixels> screen) {
  if (!pressed_ || kind_ == GestureKind::None) return std::nullopt;
  if (dragging_) return event(GesturePhase::Update, screen);
  if (std::abs(screen.x.value - start_.x.value) < threshold_.width.value &&
      std::abs(screen.y.value - start_.y.value) < threshold_.height.value)
    return std::nullopt;
  dragging_ = true;
  return event(GesturePhase::Begin, screen);
}

std::optional<GestureEvent> Gestures::release(Point<Pixels> screen) {
  if (!pressed_) return std::nullopt;
  const GestureEvent result = event(GesturePhase::End, screen);
  pressed_ = dragging_ = false;
  return result;
}

std::optional<GestureEvent> Gestures::cancel() {
  if (!pressed_) return std::nullopt;
  const bool wasDragging = dragging_;
  const GestureEvent result = event(GesturePhase::Cancel, start_);
  pressed_ = dragging_ = false;
  if (!wasDragging) return std::nullopt;
  return result;
}

}  // namespace varnowick
