#include "ui/scene/gestures.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr Point<Pixels> at(int x, int y) { return {{x}, {y}}; }

TEST(Gestures, APressThatStaysWithinTheThresholdIsAClick) {
  Gestures gestures;
  gestures.press({ControlKind::lblShortcut, 3}, at(10, 10), false, false);
  EXPECT_FALSE(gestures.move(at(13, 7)));
  const auto end = gestures.release(at(13, 7));
  ASSERT_TRUE(end);
  EXPECT_EQ(end->kind, GestureKind::Click);
  EXPECT_EQ(end->node, (NodeId{ControlKind::lblShortcut, 3}));
  EXPECT_FALSE(gestures.release(at(13, 7))) << "one press, one click";
}

TEST(Gestures, WhatIsDraggedFollowsFromWhatWasPressed) {
  const struct {
    ControlKind pressed;
    bool locked;
    GestureKind expected;
  } cases[] = {
      {ControlKind::lblCaption, false, GestureKind::MoveBar},
      {ControlKind::DockStrip, false, GestureKind::MoveBar},
      {ControlKind::lblShortcut, false, GestureKind::MoveObjects},
      {ControlKind::ContainerFrame, false, GestureKind::RubberBand},
      {ControlKind::picBack, true, GestureKind::RubberBand},
      {ControlKind::lblShortcut, true, GestureKind::Click},
      {ControlKind::lblCaption, true, GestureKind::Click},
      {ControlKind::cmdMenu, false, GestureKind::Click},
  };
  for (const auto& c : cases) {
    Gestures gestures;
    gestures.press({c.pressed, 0}, at(0, 0), false, c.locked);
    const auto begin = gestures.move(at(0, 40));
    EXPECT_EQ(begin.has_value(), c.expected != GestureKind::Click);
    const auto end = gestures.release(at(0, 40));
    ASSERT_TRUE(end);
    EXPECT_EQ(end->kind, c.expected) << static_cast<int>(c.pressed);
  }
}

TEST(Gestures, ADragBeginsOnceAndACancelEndsItWithoutADrop) {
  Gestures gestures;
  gestures.press({ControlKind::lblShortcut, 1}, at(0, 0), true, false);
  EXPECT_EQ(gestures.move(at(5, 0))->phase, GesturePhase::Begin);
  const auto update = gestures.move(at(1, 0));
  EXPECT_EQ(update->phase, GesturePhase::Update) << "coming back does not end it";
  EXPECT_TRUE(update->ctrl);
  EXPECT_EQ(gestures.cancel()->phase, GesturePhase::Cancel);
  EXPECT_FALSE(gestures.dragging());
  EXPECT_FALSE(gestures.release(at(5, 5)));
  gestures.press({ControlKind::cmdMenu, 0}, at(0, 0), false, false);
  EXPECT_FALSE(gestures.cancel()) << "there was nothing to give back";
}

}  // namespace
}  // namespace varnowick
