#include "ui/win/toolkit/gdi_canvas.h"

#include <algorithm>

#include "ui/win/toolkit/image_source.h"

namespace varnowick {

GdiCanvas::GdiCanvas(BackBuffer& buffer, GdiFonts& fonts, ImageSource* images, Density density)
    : buffer_(buffer), fonts_(fonts), images_(images), density_(density) {
  const PixelRect all{{}, {}, buffer.size().width, buffer.size().height};
  clips_.push_back(buffer.ready() ? all : PixelRect{});
}

GdiCanvas::~GdiCanvas() {
  if (gdiPending_) GdiFlush();
}

PixelSurface GdiCanvas::surface() {
  // GDI collects calls; our own writing must not overtake them.
  if (gdiPending_) GdiFlush();
  gdiPending_ = false;
  return {buffer_.pixels(), buffer_.stride(), clips_.back()};
}

void GdiCanvas::fill(const PixelRect& rect, Colour colour) { fillPixels(surface(), rect, colour); }

void GdiCanvas::gradient(const PixelRect& rect, Colour from, Colour to, bool vertical) {
  gradientPixels(surface(), rect, from, to, vertical);
}

void GdiCanvas::box(const PixelRect& rect, Pixels radius, Colour top, Colour bottom, Colour border,
                    unsigned squareCorners) {
  const BoxFill inside{top, bottom};
  boxPixels(surface(), rect, radius.value, &inside, border, squareCorners);
}

void GdiCanvas::frame(const PixelRect& rect, Pixels radius, Colour border) {
  boxPixels(surface(), rect, radius.value, nullptr, border, 0);
}

void GdiCanvas::line(Point<Pixels> from, Point<Pixels> to, Colour colour) {
  linePixels(surface(), from, to, colour);
}

void GdiCanvas::stroke(std::span<const FinePoint> points, float width, Colour colour) {
  strokePixels(surface(), points, width, colour);
}

void GdiCanvas::invert(const PixelRect& rect) { invertPixels(surface(), rect); }

void GdiCanvas::text(const PixelRect& rect, std::wstring_view text, const TextStyle& style) {
  const PixelRect& clip = clips_.back();
  if (rect.intersect(clip).empty()) return;
  const int saved = SaveDC(buffer_.dc());
  IntersectClipRect(buffer_.dc(), clip.left.value, clip.top.value, clip.right().value,
                    clip.bottom().value);
  drawGdiText(buffer_.dc(), fonts_, density_, rect, text, style);
  RestoreDC(buffer_.dc(), saved);
  gdiPending_ = true;
}

void GdiCanvas::image(const PixelRect& rect, const ImageRef& image) {
  if (images_ == nullptr || rect.empty() || image.source == ImageRef::Source::None) return;
  // Also asked for when out of sight, so that it is there once scrolled to.
  const Bitmap* bitmap = images_->find(image, rect.size());
  if (bitmap != nullptr) bitmapPixels(surface(), rect.topLeft(), *bitmap);
}

void GdiCanvas::unscaledImage(const PixelRect& rect, const ImageRef& image) {
  if (images_ == nullptr || rect.empty()) return;
  const Bitmap* bitmap = images_->findUnscaled(image);
  if (bitmap == nullptr) return;
  PixelSurface to = surface();
  to.clip = to.clip.intersect(rect);
  bitmapPixels(to, rect.topLeft(), *bitmap);
}

ImageState GdiCanvas::imageState(const PixelRect& rect, const ImageRef& image) {
  return images_ == nullptr ? ImageState::Waiting : images_->state(image, rect.size());
}

void GdiCanvas::focusFrame(const PixelRect& rect) {
  const Pixels radius = density_.toPixels(60_tw);
  const Pixels one = std::max(1_px, density_.toPixels(15_tw));
  const PixelSurface to = surface();
  PixelRect ring = rect;
  for (const Colour colour : {rgb(255, 255, 255), rgb(0, 0, 0)}) {
    for (int i = 0; i < one.value && !ring.empty(); ++i) {
      boxPixels(to, ring, radius.value, nullptr, colour, 0);
      ring = ring.inset(1_px);
    }
  }
}

void GdiCanvas::pushClip(const PixelRect& rect) { clips_.push_back(clips_.back().intersect(rect)); }

void GdiCanvas::popClip() {
  if (clips_.size() > 1) clips_.pop_back();
}

Size<Pixels> GdiCanvas::measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) {
  return measureGdiText(buffer_.dc(), fonts_, density_, text, style, maxWidth);
}

}  // namespace varnowick
