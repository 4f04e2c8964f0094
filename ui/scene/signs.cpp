#include "ui/scene/signs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <vector>

namespace varnowick {

namespace {

// Draws in pixels of the usual density, away from the middle of the rectangle; what
// points anywhere points to the left. Lines that run straight come to lie on whole
// pixels at every density, so that they are sharp; others are smooth.
class SignPen {
 public:
  SignPen(Canvas& canvas, const PixelRect& rect, Density density, Colour colour,
          ScreenEdge towards = ScreenEdge::Left)
      : canvas_(canvas),
        colour_(colour),
        towards_(towards),
        scale_(static_cast<float>(density.dpi) / 96.0F),
        width_(std::max(1, static_cast<int>(std::lround(scale_)))) {
    // The middle of a pixel for a line of an odd width, a border between two for others.
    const float half = width_ % 2 == 0 ? 0.0F : 0.5F;
    x_ = static_cast<float>(rect.left.value + rect.width.value / 2) + half;
    y_ = static_cast<float>(rect.top.value + rect.height.value / 2) + half;
  }

  void line(std::initializer_list<FinePoint> points) const {
    std::vector<FinePoint> snapped;
    for (const FinePoint& p : points) snapped.push_back(at(p));
    canvas_.stroke(snapped, static_cast<float>(width_), colour_);
  }
  void arc(FinePoint middle, float radius, float from, float to) const {
    std::vector<FinePoint> points;
    constexpr int kSteps = 24;
    const FinePoint around = at(middle);
    for (int i = 0; i <= kSteps; ++i) {
      const float turn = (from + (to - from) * static_cast<float>(i) / kSteps) *
                         std::numbers::pi_v<float> / 180.0F;
      const FinePoint out = turned({std::cos(turn), -std::sin(turn)});
      points.push_back({around.x + out.x * snap(radius), around.y + out.y * snap(radius)});
    }
    canvas_.stroke(points, static_cast<float>(width_), colour_);
  }
  void dot(FinePoint middle, float radius) const {
    const std::array<FinePoint, 1> point{at(middle)};
    canvas_.stroke(point, std::max(1.0F, radius * 2 * scale_), colour_);
  }
  void bar(float left, float top, float right, float bottom) const {
    const auto whole = [](float v) { return Pixels{static_cast<int>(std::floor(v))}; };
    const FinePoint a{x_ + snap(left), y_ + snap(top)};
    const FinePoint b{x_ + snap(right), y_ + snap(bottom)};
    canvas_.fill({whole(a.x), whole(a.y), whole(b.x) - whole(a.x), whole(b.y) - whole(a.y)},
                 colour_);
  }
  // An arrow's head at its tip; both sides reach as far back as aside.
  void head(FinePoint tip, float size) const {
    line({{tip.x + size, tip.y - size}, tip, {tip.x + size, tip.y + size}});
  }

 private:
  float snap(float v) const { return std::copysign(std::floor(std::abs(v) * scale_ + 0.5F), v); }
  FinePoint turned(FinePoint p) const {
    switch (towards_) {
      case ScreenEdge::Right:
        return {-p.x, p.y};
      case ScreenEdge::Top:
        return {p.y, p.x};
      case ScreenEdge::Bottom:
        return {p.y, -p.x};
      default:
        return p;
    }
  }
  FinePoint at(FinePoint p) const {
    const FinePoint q = turned(p);
    return {x_ + snap(q.x), y_ + snap(q.y)};
  }

  Canvas& canvas_;
  Colour colour_;
  ScreenEdge towards_;
  float scale_;
  int width_;
  float x_ = 0, y_ = 0;
};

void drawShrink(const SignPen& pen) {  // an arrow into a corner
  pen.line({{-5, -5}, {4, 4}});
  pen.line({{-3, 4}, {4, 4}, {4, -3}});
}

void drawFoldAll(const SignPen& pen) {  // title strips
  for (const float y : {-5.0F, -1.0F, 3.0F}) pen.bar(-5, y, 6, y + 2);
}

void drawFeed(const SignPen& pen) {  // waves from a point
  pen.dot({-4, 4}, 1.6F);
  pen.arc({-5, 5}, 6, 0, 90);
  pen.arc({-5, 5}, 10, 0, 90);
}

void drawLock(const SignPen& pen, bool open) {
  pen.bar(-4, 0, 5, 6);
  const float foot = open ? -2.0F : 0.0F;
  pen.arc({0, -2}, 3, 0, 180);
  pen.line({{-3, -2}, {-3, 0}});
  pen.line({{3, -2}, {3, foot}});
}

void drawDock(const SignPen& pen) {  // an arrow to the edge
  pen.line({{-6, -5}, {-6, 5}});
  pen.line({{-3, 0}, {6, 0}});
  pen.head({-3, 0}, 4);
}

void drawAdd(const SignPen& pen) {
  pen.line({{-4, 0}, {4, 0}});
  pen.line({{0, -4}, {0, 4}});
}

void drawSettings(const SignPen& pen) {  // sliders
  constexpr std::array<float, 3> kKnobs{2, -3, 1};
  for (std::size_t i = 0; i < kKnobs.size(); ++i) {
    const float y = -4.0F + 4.0F * static_cast<float>(i);
    pen.line({{-5, y}, {5, y}});
    pen.dot({kKnobs[i], y}, 1.6F);
  }
}

void drawMenu(const SignPen& pen) {
  for (const float y : {-4.0F, 0.0F, 4.0F}) pen.line({{-5, y}, {5, y}});
}

void drawTile(const SignPen& pen) {  // a window that becomes a tile
  pen.line({{-4, -4}, {4, -4}, {4, 4}, {-4, 4}, {-4, -4}});
  pen.bar(-2, 1, 0, 3);
}

// An arrow out of a window, or back into it.
void drawDetach(const SignPen& pen, bool back) {
  pen.line({{1, -3}, {4, -3}, {4, 4}, {-3, 4}, {-3, 1}});
  pen.line({{1, 1}, {-4, -4}});
  if (back)
    pen.line({{1, -2}, {1, 1}, {-2, 1}});
  else
    pen.line({{-4, 0}, {-4, -4}, {0, -4}});
}

void drawHide(const SignPen& pen) { pen.line({{-4, 3}, {4, 3}}); }

}  // namespace

void drawSign(Canvas& canvas, Sign sign, const PixelRect& rect, Density density, Colour colour,
              ScreenEdge towards) {
  const SignPen pen(canvas, rect, density, colour);
  const SignPen pointing(canvas, rect, density, colour, towards);
  switch (sign) {
    case Sign::Shrink:
      return drawShrink(pen);
    case Sign::FoldAll:
      return drawFoldAll(pen);
    case Sign::Feed:
      return drawFeed(pen);
    case Sign::OpenLock:
      return drawLock(pen, true);
    case Sign::Lock:
      return drawLock(pen, false);
    case Sign::Dock:
      return drawDock(pointing);
    case Sign::Add:
      return drawAdd(pen);
    case Sign::Settings:
      return drawSettings(pen);
    case Sign::Menu:
      return drawMenu(pen);
    case Sign::Tile:
      return drawTile(pen);
    // Away from the bar, and so from its edge.
    case Sign::Detach:
      return drawDetach(
          SignPen(canvas, rect, density, colour,
                  towards == ScreenEdge::Right ? ScreenEdge::Left : ScreenEdge::Right),
          false);
    case Sign::Attach:
      return drawDetach(SignPen(canvas, rect, density, colour, ScreenEdge::Right), true);
    case Sign::Hide:
      return drawHide(pen);
    case Sign::Plus:
      pen.line({{0, -3}, {0, 3}});
      [[fallthrough]];
    case Sign::Minus:
      return pen.line({{-3, 0}, {3, 0}});
    case Sign::Lens: {
      pen.arc({-1, -1}, 4, 0, 360);
      return pen.line({{2, 2}, {6, 6}});
    }
  }
}

}  // namespace varnowick
