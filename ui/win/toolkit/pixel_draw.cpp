#include "ui/win/toolkit/pixel_draw.h"

#include <algorithm>
#include <cmath>

namespace varnowick {

namespace {

std::uint32_t packed(Colour c) {
  return 0xFF000000U | static_cast<std::uint32_t>(c.red() << 16 | c.green() << 8 | c.blue());
}

// The colour `step` of `steps` from one to the other, both ends included.
std::uint32_t between(Colour from, Colour to, int step, int steps) {
  // Rectangles may be far larger than any screen.
  const std::int64_t last = std::max(1, steps - 1);
  const auto mix = [&](std::int64_t a, std::int64_t b) {
    return static_cast<std::uint32_t>((a * (last - step) + b * step + last / 2) / last);
  };
  return 0xFF000000U | mix(from.red(), to.red()) << 16 | mix(from.green(), to.green()) << 8 |
         mix(from.blue(), to.blue());
}

// Two channels of eight bits at once; coverage 0..256.
std::uint32_t blend(std::uint32_t below, std::uint32_t above, std::uint32_t coverage) {
  const std::uint32_t rest = 256 - coverage;
  const std::uint32_t rb =
      ((below & 0xFF00FFU) * rest + (above & 0xFF00FFU) * coverage + 0x800080U) >> 8;
  const std::uint32_t g =
      ((below & 0x00FF00U) * rest + (above & 0x00FF00U) * coverage + 0x008000U) >> 8;
  return 0xFF000000U | (rb & 0xFF00FFU) | (g & 0x00FF00U);
}

std::uint32_t* rowOf(const PixelSurface& to, int y) {
  return to.pixels + static_cast<std::ptrdiff_t>(y) * to.stride;
}

void plot(const PixelSurface& to, int x, int y, std::uint32_t colour, double coverage) {
  if (!to.clip.contains({{x}, {y}})) return;
  std::uint32_t& pixel = rowOf(to, y)[x];
  const double bounded = std::clamp(coverage, 0.0, 1.0);
  pixel = blend(pixel, colour, static_cast<std::uint32_t>(bounded * 256.0 + 0.5));
}

// How much of a pixel lies inside a box whose corners have the radius.
double coverage(int x, int y, int width, int height, double radius, unsigned squareCorners) {
  if (x < 0 || y < 0 || x >= width || y >= height) return 0;
  const double px = x + 0.5;
  const double py = y + 0.5;
  const bool left = px < radius;
  const bool right = px > width - radius;
  const bool top = py < radius;
  const bool bottom = py > height - radius;
  if (!(left || right) || !(top || bottom)) return 1;
  const unsigned corner = top ? (left ? 1U : 2U) : (left ? 8U : 4U);
  if ((squareCorners & corner) != 0) return 1;
  const double dx = left ? radius - px : px - (width - radius);
  const double dy = top ? radius - py : py - (height - radius);
  return std::clamp(radius - std::sqrt(dx * dx + dy * dy) + 0.5, 0.0, 1.0);
}

// Of the point from the line between the two.
float distance(FinePoint p, FinePoint from, FinePoint end) {
  const float dx = end.x - from.x;
  const float dy = end.y - from.y;
  const float length = dx * dx + dy * dy;
  const float along =
      length > 0 ? std::clamp(((p.x - from.x) * dx + (p.y - from.y) * dy) / length, 0.0F, 1.0F) : 0;
  return std::hypot(p.x - from.x - along * dx, p.y - from.y - along * dy);
}

std::uint32_t over(std::uint32_t below, std::uint32_t above) {
  const std::uint32_t alpha = above >> 24;
  if (alpha == 255) return above;
  if (alpha == 0) return below;
  // 255 - alpha, stretched to 256 so that a shift divides.
  const std::uint32_t rest = 255 - alpha + ((255 - alpha) >> 7);
  const std::uint32_t rb = (((below & 0xFF00FFU) * rest) >> 8) & 0xFF00FFU;
  const std::uint32_t g = (((below & 0x00FF00U) * rest) >> 8) & 0x00FF00U;
  return 0xFF000000U | ((above & 0xFFFFFFU) + (rb | g));
}

}  // namespace

void fillPixels(const PixelSurface& to, const PixelRect& rect, Colour colour) {
  const PixelRect part = rect.intersect(to.clip);
  if (part.empty()) return;
  const std::uint32_t value = packed(colour);
  for (int y = part.top.value; y < part.bottom().value; ++y) {
    std::fill_n(rowOf(to, y) + part.left.value, part.width.value, value);
  }
}

void gradientPixels(const PixelSurface& to, const PixelRect& rect, Colour from, Colour end,
                    bool vertical) {
  const PixelRect part = rect.intersect(to.clip);
  if (part.empty()) return;
  if (vertical) {
    for (int y = part.top.value; y < part.bottom().value; ++y) {
      std::fill_n(rowOf(to, y) + part.left.value, part.width.value,
                  between(from, end, y - rect.top.value, rect.height.value));
    }
    return;
  }
  std::uint32_t* first = rowOf(to, part.top.value) + part.left.value;
  for (int x = 0; x < part.width.value; ++x) {
    first[x] = between(from, end, part.left.value - rect.left.value + x, rect.width.value);
  }
  for (int y = part.top.value + 1; y < part.bottom().value; ++y) {
    std::copy_n(first, part.width.value, rowOf(to, y) + part.left.value);
  }
}

void boxPixels(const PixelSurface& to, const PixelRect& rect, int radius, const BoxFill* fill,
               Colour border, unsigned squareCorners) {
  const PixelRect part = rect.intersect(to.clip);
  if (part.empty()) return;
  const int width = rect.width.value;
  const int height = rect.height.value;
  const double r = std::clamp(radius, 0, std::min(width, height) / 2);
  // Only corners and edges need coverage; between them rows are filled whole.
  const int margin = std::max(1, static_cast<int>(r));
  const std::uint32_t borderValue = packed(border);
  const double inner = std::max(0.0, r - 1);
  for (int y = part.top.value; y < part.bottom().value; ++y) {
    const int boxY = y - rect.top.value;
    const bool edgeRow = boxY < margin || boxY >= height - margin;
    const std::uint32_t fillValue =
        fill != nullptr ? between(fill->top, fill->bottom, boxY, height) : 0;
    std::uint32_t* row = rowOf(to, y);
    for (int x = part.left.value; x < part.right().value; ++x) {
      const int boxX = x - rect.left.value;
      if (!edgeRow && boxX >= margin && boxX < width - margin) {
        const int end = std::min(rect.left.value + width - margin, part.right().value);
        if (fill != nullptr) std::fill_n(row + x, end - x, fillValue);
        x = end - 1;
        continue;
      }
      const double outside = coverage(boxX, boxY, width, height, r, squareCorners);
      if (outside <= 0) continue;
      const double inside =
          coverage(boxX - 1, boxY - 1, width - 2, height - 2, inner, squareCorners);
      std::uint32_t colour = borderValue;
      double amount = outside - inside;
      if (fill != nullptr) {
        colour = blend(borderValue, fillValue,
                       static_cast<std::uint32_t>(inside / outside * 256.0 + 0.5));
        amount = outside;
      }
      row[x] = blend(row[x], colour,
                     static_cast<std::uint32_t>(std::clamp(amount, 0.0, 1.0) * 256.0 + 0.5));
    }
  }
}

void linePixels(const PixelSurface& to, Point<Pixels> from, Point<Pixels> end, Colour colour) {
  const int dx = end.x.value - from.x.value;
  const int dy = end.y.value - from.y.value;
  if (dy == 0 || dx == 0) {
    const Pixels left{dx < 0 ? end.x.value + 1 : from.x.value};
    const Pixels top{dy < 0 ? end.y.value + 1 : from.y.value};
    const Pixels width{dx == 0 ? (dy == 0 ? 0 : 1) : std::abs(dx)};
    const Pixels height{dy == 0 ? (dx == 0 ? 0 : 1) : std::abs(dy)};
    fillPixels(to, {left, top, width, height}, colour);
    return;
  }
  const bool flat = std::abs(dx) >= std::abs(dy);
  const int steps = flat ? std::abs(dx) : std::abs(dy);
  const int major = (flat ? dx : dy) > 0 ? 1 : -1;
  const double slope = static_cast<double>(flat ? dy : dx) / steps;
  const std::uint32_t value = packed(colour);
  for (int i = 0; i < std::min(steps, 32768); ++i) {
    const double at = (flat ? from.y.value : from.x.value) + slope * i;
    const int whole = static_cast<int>(std::floor(at));
    const double part = at - whole;
    const int along = (flat ? from.x.value : from.y.value) + major * i;
    for (int side = 0; side < 2; ++side) {
      const double amount = side == 0 ? 1 - part : part;
      if (flat) {
        plot(to, along, whole + side, value, amount);
      } else {
        plot(to, whole + side, along, value, amount);
      }
    }
  }
}

void strokePixels(const PixelSurface& to, std::span<const FinePoint> points, float width,
                  Colour colour) {
  if (points.empty()) return;
  const auto farAway = [](const FinePoint& p) {
    return !(std::abs(p.x) < 32768 && std::abs(p.y) < 32768);
  };
  if (std::any_of(points.begin(), points.end(), farAway)) return;
  const float half = std::clamp(width, 0.5F, 256.0F) / 2;
  FinePoint least = points[0], most = points[0];
  for (const FinePoint& p : points) {
    least = {std::min(least.x, p.x), std::min(least.y, p.y)};
    most = {std::max(most.x, p.x), std::max(most.y, p.y)};
  }
  const Pixels left{static_cast<int>(std::floor(least.x - half - 1))};
  const Pixels top{static_cast<int>(std::floor(least.y - half - 1))};
  const PixelRect around{left, top, Pixels{static_cast<int>(std::ceil(most.x + half + 1))} - left,
                         Pixels{static_cast<int>(std::ceil(most.y + half + 1))} - top};
  const PixelRect part = around.intersect(to.clip);
  if (part.empty()) return;
  const std::uint32_t value = packed(colour);
  for (int y = part.top.value; y < part.bottom().value; ++y)
    for (int x = part.left.value; x < part.right().value; ++x) {
      const FinePoint middle{static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F};
      float nearest = distance(middle, points[0], points[0]);
      for (std::size_t i = 1; i < points.size(); ++i)
        nearest = std::min(nearest, distance(middle, points[i - 1], points[i]));
      if (nearest < half + 0.5F) plot(to, x, y, value, half + 0.5F - nearest);
    }
}

void invertPixels(const PixelSurface& to, const PixelRect& rect) {
  const PixelRect part = rect.intersect(to.clip);
  for (int y = part.top.value; y < part.bottom().value; ++y)
    for (int x = part.left.value; x < part.right().value; ++x) rowOf(to, y)[x] ^= 0xFFFFFFU;
}

void bitmapPixels(const PixelSurface& to, Point<Pixels> at, const Bitmap& bitmap) {
  const PixelRect rect{at.x, at.y, {bitmap.width}, {bitmap.height}};
  const PixelRect part = rect.intersect(to.clip);
  if (part.empty() || bitmap.empty()) return;
  for (int y = part.top.value; y < part.bottom().value; ++y) {
    const std::uint32_t* source = bitmap.pixels.data() +
                                  static_cast<std::ptrdiff_t>(y - at.y.value) * bitmap.width +
                                  (part.left.value - at.x.value);
    std::uint32_t* row = rowOf(to, y) + part.left.value;
    for (int x = 0; x < part.width.value; ++x) row[x] = over(row[x], source[x]);
  }
}

}  // namespace varnowick
