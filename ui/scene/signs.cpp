#include "ui/scene/signs.h"

namespace varnowick {

namespace {

// Draws on a grid of strokes whose middle is the middle of the rectangle.
class SignPen {
 public:
  SignPen(Canvas& canvas, const PixelRect& rect, Pixels unit, Colour colour, int width, int height)
      : canvas_(canvas),
        left_(rect.left.value + (rect.width.value - width * unit.value) / 2),
        top_(rect.top.value + (rect.height.value - height * unit.value) / 2),
        unit_(unit.value),
        colour_(colour) {}

  void bar(int x, int y, int width, int height) {
    canvas_.fill(cells(x, y, width, height), colour_);
  }
  void box(int x, int y, int width, int height, int radius) {
    canvas_.frame(cells(x, y, width, height), {radius * unit_}, colour_);
  }
  // A diagonal of single strokes, one step a stroke.
  void steps(int x, int y, int count, int dx, int dy) {
    for (int i = 0; i < count; ++i) bar(x + i * dx, y + i * dy, 1, 1);
  }

 private:
  PixelRect cells(int x, int y, int width, int height) const {
    return {{left_ + x * unit_}, {top_ + y * unit_}, {width * unit_}, {height * unit_}};
  }
  Canvas& canvas_;
  int left_, top_, unit_;
  Colour colour_;
};

void drawShrink(SignPen pen) {  // an arrow into a corner
  pen.steps(0, 0, 9, 1, 1);
  pen.bar(3, 9, 8, 1);
  pen.bar(10, 2, 1, 8);
}

void drawFoldAll(SignPen pen) {  // title strips
  for (int i = 0; i < 3; ++i) pen.bar(0, i * 4, 11, 2);
}

void drawFeed(SignPen pen) {  // waves from a point
  pen.bar(0, 8, 3, 3);
  pen.bar(0, 4, 4, 1);
  pen.steps(4, 5, 2, 1, 1);
  pen.bar(6, 7, 1, 4);
  pen.bar(0, 0, 5, 1);
  pen.bar(5, 1, 2, 1);
  pen.steps(7, 2, 2, 1, 1);
  pen.bar(9, 4, 1, 2);
  pen.bar(10, 6, 1, 5);
}

void drawLock(SignPen pen, bool open) {
  pen.bar(0, 5, 9, 6);
  pen.bar(2, 1, 1, 4);
  pen.bar(3, 0, 3, 1);
  pen.bar(6, 1, 1, open ? 2 : 4);
}

void drawDock(SignPen pen) {  // an arrow to the edge
  pen.bar(0, 0, 1, 11);
  pen.bar(3, 5, 9, 1);
  pen.steps(3, 5, 4, 1, -1);
  pen.steps(3, 5, 4, 1, 1);
}

void drawAdd(SignPen pen) {
  pen.bar(0, 4, 9, 1);
  pen.bar(4, 0, 1, 9);
}

void drawSettings(SignPen pen) {  // sliders
  for (int i = 0; i < 3; ++i) pen.bar(0, 1 + i * 4, 11, 1);
  pen.bar(7, 0, 2, 3);
  pen.bar(2, 4, 2, 3);
  pen.bar(6, 8, 2, 3);
}

void drawMenu(SignPen pen) {
  for (int i = 0; i < 3; ++i) pen.bar(0, i * 4, 11, 1);
}

void drawTile(SignPen pen) {  // a window that becomes a tile
  pen.box(0, 0, 9, 9, 0);
  pen.bar(2, 5, 2, 2);
}

void drawDetach(SignPen pen) {  // an arrow out of a window
  pen.bar(0, 3, 1, 7);
  pen.bar(1, 9, 6, 1);
  pen.bar(0, 3, 3, 1);
  pen.bar(6, 7, 1, 2);
  pen.bar(4, 0, 6, 1);
  pen.bar(9, 1, 1, 5);
  pen.steps(3, 6, 6, 1, -1);
}

}  // namespace

void drawSign(Canvas& canvas, ControlKind kind, const PixelRect& rect, Pixels unit, Colour colour) {
  const auto pen = [&](int width, int height) {
    return SignPen(canvas, rect, unit, colour, width, height);
  };
  switch (kind) {
    case ControlKind::PicShrinkExpandAllToolbar:
      return drawShrink(pen(11, 10));
    case ControlKind::PicFoldUnfoldAllToolbar:
      return drawFoldAll(pen(11, 10));
    case ControlKind::PicRSSToolbar:
      return drawFeed(pen(11, 11));
    case ControlKind::PicLockToolbar:
      return drawLock(pen(9, 11), true);
    case ControlKind::PicUnlockToolbar:
      return drawLock(pen(9, 11), false);
    case ControlKind::PicDockToolbar:
      return drawDock(pen(12, 11));
    case ControlKind::cmdAdd:
      return drawAdd(pen(9, 9));
    case ControlKind::cmdSettings:
      return drawSettings(pen(11, 11));
    case ControlKind::cmdConShrink:
      return drawTile(pen(9, 9));
    case ControlKind::cmdConDetach:
      return drawDetach(pen(10, 10));
    case ControlKind::cmdConMenu:
    case ControlKind::cmdMenu:
      return drawMenu(pen(11, 9));
    default:
      return;
  }
}

void drawFoldSign(Canvas& canvas, bool folded, const PixelRect& rect, Pixels unit, Colour colour) {
  SignPen pen(canvas, rect, unit, colour, 7, 7);
  pen.bar(0, 3, 7, 1);
  if (folded) pen.bar(3, 0, 1, 7);
}

}  // namespace varnowick
