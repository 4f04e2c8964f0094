// What a press of the left button becomes: a click, a rubber band, or a drag of
// the window or of objects. Knows nodes by id and points of the screen; moves nothing.
#pragma once

#include <optional>

#include "core/units.h"
#include "ui/scene/scene.h"

namespace varnowick {

enum class GestureKind {
  None,
  Click,
  MoveBar,  // the window itself
  MoveObjects,
  MoveContainers,
  Resize,  // by its border
  RubberBand,
  DrawContainer,
  DragFiles,  // out of a folder container, and out of the window
  ScrollNote  // by its thumb
};
enum class GesturePhase { Begin, Update, End, Cancel };

struct GestureEvent {
  GestureKind kind = GestureKind::None;
  GesturePhase phase = GesturePhase::End;
  NodeId node;  // the node that was pressed
  Point<Pixels> start;
  Point<Pixels> now;
  bool ctrl = false;  // held at the press
  bool operator==(const GestureEvent&) const = default;
};

class Gestures {
 public:
  // A pointer that leaves the start by less than this, in both directions, has
  // not begun to drag.
  void setThreshold(Size<Pixels> threshold) { threshold_ = threshold; }

  // `drag` is what moving the mouse would begin; with None a click stays a click
  // wherever it ends.
  void press(NodeId node, GestureKind drag, Point<Pixels> screen, bool ctrl);
  // Begin at the step that leaves the threshold, Update after it.
  std::optional<GestureEvent> move(Point<Pixels> screen);
  // End of a drag, or a click.
  std::optional<GestureEvent> release(Point<Pixels> screen);
  // The capture was lost or Esc pressed: an event when a drag was under way.
  std::optional<GestureEvent> cancel();

  bool dragging() const { return dragging_; }
  bool pressed() const { return pressed_; }
  // While the button is down for a drag or to select: nothing is to be started.
  bool startsNothing() const { return pressed_ && (dragging_ || ctrl_); }

 private:
  GestureEvent event(GesturePhase phase, Point<Pixels> now) const;

  Size<Pixels> threshold_{{4}, {4}};
  GestureKind kind_ = GestureKind::None;
  NodeId node_;
  Point<Pixels> start_;
  bool ctrl_ = false;
  bool pressed_ = false;
  bool dragging_ = false;
};

// The two presses of a double click. The first one decides what is meant: what has
// moved under the pointer since gets nothing of the second.
class ClickPair {
 public:
  // `second`: the system takes it for the second press of a double click.
  void press(NodeId node, bool second) {
    second_ = second && node == first_;
    strayed_ = second && !second_;
    first_ = second ? NodeId{} : node;
  }
  bool second() const { return second_; }
  // The second press has met something else than the first: it is to do nothing.
  bool strayed() const { return strayed_; }

 private:
  NodeId first_;
  bool second_ = false;
  bool strayed_ = false;
};

}  // namespace varnowick
