// The canvas of a window: boxes, gradients and images by our own code, text by
// GDI, all on a back buffer. It knows nothing of nodes and slots.
#pragma once

#include <vector>

#include "ui/scene/canvas.h"
#include "ui/win/toolkit/back_buffer.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

class ImageSource;

class GdiCanvas : public Canvas, public TextMeasure {
 public:
  // All three are borrowed. Without an image store images are left out. Make one
  // canvas for each painting; the fonts are worth keeping.
  GdiCanvas(BackBuffer& buffer, GdiFonts& fonts, ImageSource* images, Density density);
  ~GdiCanvas() override;
  GdiCanvas(const GdiCanvas&) = delete;
  GdiCanvas& operator=(const GdiCanvas&) = delete;

  void fill(const PixelRect& rect, Colour colour) override;
  void gradient(const PixelRect& rect, Colour from, Colour to, bool vertical) override;
  void box(const PixelRect& rect, Pixels radius, Colour top, Colour bottom, Colour border,
           unsigned squareCorners) override;
  void frame(const PixelRect& rect, Pixels radius, Colour border) override;
  // As the platform draws lines: without the last point.
  void line(Point<Pixels> from, Point<Pixels> to, Colour colour) override;
  void stroke(std::span<const FinePoint> points, float width, Colour colour) override;
  void invert(const PixelRect& rect) override;
  void text(const PixelRect& rect, std::wstring_view text, const TextStyle& style) override;
  void image(const PixelRect& rect, const ImageRef& image) override;
  void unscaledImage(const PixelRect& rect, const ImageRef& image) override;
  ImageState imageState(const PixelRect& rect, const ImageRef& image) override;
  // Two rings, light and dark, so that it is seen on any background.
  void focusFrame(const PixelRect& rect) override;
  void pushClip(const PixelRect& rect) override;
  void popClip() override;

  Size<Pixels> measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) override;

 private:
  PixelSurface surface();

  BackBuffer& buffer_;
  GdiFonts& fonts_;
  ImageSource* images_;
  Density density_;
  std::vector<PixelRect> clips_;  // never empty
  bool gdiPending_ = false;       // GDI may still have to write text
};

}  // namespace varnowick
