#include "ui/scene/gestures.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr Point<Pixels> at(int x, int y) { return {{x}, {y}}; }

TEST(Gestures, APressThatStaysWithinTheThresholdIsAClick) {
  Gestures gestures;
  gestures.press({ControlKind::lblShortcut, 3}, GestureKind::MoveObjects, at(10, 10), false);
  EXPECT_FALSE(gestures.move(at(13, 7)));
  const auto end = gestures.release(at(13, 7));
  ASSERT_TRUE(end);
  EXPECT_EQ(end->kind, GestureKind::Click);
  EXPECT_EQ(end->node, (NodeId{ControlKind::lblShortcut, 3}));
  EXPECT_FALSE(gestures.release(at(13, 7))) << "one press, one click";
}

TEST(Gestures, ADragBeginsOnceAndACancelEndsItWithoutADrop) {
  Gestures gestures;
  gestures.press({ControlKind::lblShortcut, 1}, GestureKind::MoveObjects, at(0, 0), true);
  EXPECT_EQ(gestures.move(at(0, 4))->phase, GesturePhase::Begin);
  const auto update = gestures.move(at(1, 0));
  EXPECT_EQ(update->phase, GesturePhase::Update) << "coming back does not end it";
  EXPECT_TRUE(update->ctrl);
  EXPECT_EQ(gestures.cancel()->phase, GesturePhase::Cancel);
  EXPECT_FALSE(gestures.dragging());
  EXPECT_FALSE(gestures.release(at(5, 5)));
  gestures.press({ControlKind::cmdMenu, 0}, GestureKind::None, at(0, 0), false);
  EXPECT_FALSE(gestures.move(at(90, 90))) << "what cannot be dragged stays a click";
  EXPECT_FALSE(gestures.cancel()) << "there was nothing to give back";
}

}  // namespace
}  // namespace varnowick
