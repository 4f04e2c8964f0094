// Drawing straight on 32-bit pixels: what GDI cannot do smoothly, or not on
// every system. Knows pixels and a clip; no device contexts, no scenes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/units.h"
#include "ui/scene/canvas.h"

namespace varnowick {

// A picture in memory: rows from the top, 0xAARRGGBB, colours premultiplied.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
  bool empty() const { return pixels.empty(); }
};

// Averages down and interpolates up. Sizes below 1 give an empty bitmap.
Bitmap scaled(const Bitmap& source, int width, int height);

// The target of drawing: nothing outside the clip is touched, and the clip must
// lie inside the pixels.
struct PixelSurface {
  std::uint32_t* pixels = nullptr;
  int stride = 0;  // pixels from one row to the next
  PixelRect clip;
};

void fillPixels(const PixelSurface& to, const PixelRect& rect, Colour colour);
void gradientPixels(const PixelSurface& to, const PixelRect& rect, Colour from, Colour end,
                    bool vertical);
// An anti-aliased box; fill is optional. Corners not rounded have a bit each: 1
// top left, 2 top right, 4 bottom right, 8 bottom left.
struct BoxFill {
  Colour top, bottom;
};
void boxPixels(const PixelSurface& to, const PixelRect& rect, int radius, const BoxFill* fill,
               Colour border, unsigned squareCorners);
// Anti-aliased, from the first point up to but not including the last.
void linePixels(const PixelSurface& to, Point<Pixels> from, Point<Pixels> end, Colour colour);
// Each pixel is covered once, by the nearest part of the line.
void strokePixels(const PixelSurface& to, std::span<const FinePoint> points, float width,
                  Colour colour);
void invertPixels(const PixelSurface& to, const PixelRect& rect);
// Blends the bitmap, at its own size, with its top left corner at the point.
void bitmapPixels(const PixelSurface& to, Point<Pixels> at, const Bitmap& bitmap);

}  // namespace varnowick
