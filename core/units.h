// Lengths and rectangles. The workspace, its windows and its files measure in
// twips; cursors and monitors in pixels. The two never mix without a Density,
// which holds the one conversion in each direction.
#pragma once

#include <cmath>
#include <compare>

namespace varnowick {

// A length of 1/1440 inch. Single precision, because that is what the files
// hold; whole values are exact up to 16 777 216.
struct Twips {
  float value = 0;
  constexpr auto operator<=>(const Twips&) const = default;
};
constexpr Twips operator+(Twips a, Twips b) { return {a.value + b.value}; }
constexpr Twips operator-(Twips a, Twips b) { return {a.value - b.value}; }
constexpr Twips operator-(Twips a) { return {-a.value}; }
constexpr Twips operator*(Twips a, float f) { return {a.value * f}; }
constexpr Twips& operator+=(Twips& a, Twips b) { return a = a + b; }
constexpr Twips& operator-=(Twips& a, Twips b) { return a = a - b; }
constexpr Twips operator""_tw(unsigned long long v) { return {static_cast<float>(v)}; }

struct Pixels {
  int value = 0;
  constexpr auto operator<=>(const Pixels&) const = default;
};
constexpr Pixels operator+(Pixels a, Pixels b) { return {a.value + b.value}; }
constexpr Pixels operator-(Pixels a, Pixels b) { return {a.value - b.value}; }
constexpr Pixels operator-(Pixels a) { return {-a.value}; }
constexpr Pixels operator*(Pixels a, int f) { return {a.value * f}; }
constexpr Pixels& operator+=(Pixels& a, Pixels b) { return a = a + b; }
constexpr Pixels& operator-=(Pixels& a, Pixels b) { return a = a - b; }
constexpr Pixels operator""_px(unsigned long long v) { return {static_cast<int>(v)}; }

// Rounds half to even, independently of the floating-point environment.
// Values outside the range of int are clamped to it; NaN gives 0.
int roundHalfToEven(double value);

// Dots per inch of the screen (96 unless the user scales it).
struct Density {
  int dpi = 96;
  constexpr auto operator<=>(const Density&) const = default;
  constexpr float twipsPerPixel() const { return 1440.0F / static_cast<float>(dpi); }
  Pixels toPixels(Twips t) const {
    return {roundHalfToEven(static_cast<double>(t.value) * dpi / 1440.0)};
  }
  constexpr Twips toTwips(Pixels p) const {
    return {static_cast<float>(p.value) * 1440.0F / static_cast<float>(dpi)};
  }
};

template <class Unit>
struct Point {
  Unit x{};
  Unit y{};
  constexpr bool operator==(const Point&) const = default;
};

template <class Unit>
struct Size {
  Unit width{};
  Unit height{};
  constexpr bool operator==(const Size&) const = default;
};

template <class Unit>
struct Rect {
  Unit left{};
  Unit top{};
  Unit width{};
  Unit height{};

  constexpr bool operator==(const Rect&) const = default;
  constexpr Unit right() const { return left + width; }
  constexpr Unit bottom() const { return top + height; }
  constexpr Point<Unit> topLeft() const { return {left, top}; }
  constexpr Size<Unit> size() const { return {width, height}; }
  constexpr bool empty() const { return !(width > Unit{}) || !(height > Unit{}); }
  // Left and top edges belong to the rectangle, right and bottom do not.
  constexpr bool contains(Point<Unit> p) const {
    return p.x >= left && p.y >= top && p.x < right() && p.y < bottom();
  }
  constexpr Rect translated(Unit dx, Unit dy) const { return {left + dx, top + dy, width, height}; }
  constexpr Rect inset(Unit by) const {
    return {left + by, top + by, width - by - by, height - by - by};
  }
  constexpr Rect intersect(const Rect& o) const {
    const Unit l = left > o.left ? left : o.left;
    const Unit t = top > o.top ? top : o.top;
    const Unit r = right() < o.right() ? right() : o.right();
    const Unit b = bottom() < o.bottom() ? bottom() : o.bottom();
    if (!(r > l) || !(b > t)) return {l, t, Unit{}, Unit{}};
    return {l, t, r - l, b - t};
  }
};

using TwipsRect = Rect<Twips>;
using PixelRect = Rect<Pixels>;

// Edge by edge, so that neighbouring rectangles stay neighbours.
inline PixelRect toPixels(const TwipsRect& r, Density d) {
  const Pixels left = d.toPixels(r.left);
  const Pixels top = d.toPixels(r.top);
  return {left, top, d.toPixels(r.right()) - left, d.toPixels(r.bottom()) - top};
}
inline TwipsRect toTwips(const PixelRect& r, Density d) {
  return {d.toTwips(r.left), d.toTwips(r.top), d.toTwips(r.width), d.toTwips(r.height)};
}

// A colour as the files and the platform write it: 0x00BBGGRR.
struct Colour {
  int bgr = 0;
  constexpr bool operator==(const Colour&) const = default;
  constexpr int red() const { return bgr & 0xFF; }
  constexpr int green() const { return (bgr >> 8) & 0xFF; }
  constexpr int blue() const { return (bgr >> 16) & 0xFF; }
};
constexpr Colour rgb(int red, int green, int blue) { return {(blue << 16) | (green << 8) | red}; }

}  // namespace varnowick
