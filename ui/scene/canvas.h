// What scenes are drawn on: a small stateless surface measured in pixels. It
// knows colours, text and images by reference; it knows nothing of nodes, slots
// or windows. GdiCanvas draws, RecordingCanvas writes down what would be drawn.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/units.h"

namespace varnowick {

// Names an image without holding it. What is not loaded yet draws as a quiet
// placeholder; drawing never touches the file behind it.
struct ImageRef {
  enum class Source {
    None,
    Asset,       // one of the program's own pictures, by name ("lock", "note", ...)
    IconOf,      // the icon of the file, folder or address in `name`
    PictureFile  // the picture file in `name`
  };
  Source source = Source::None;
  std::wstring name;
  bool operator==(const ImageRef&) const = default;
};

// What there is of an image to draw.
enum class ImageState {
  Ready,
  Waiting,  // it is being loaded
  Failed    // the file is missing, or no picture that can be shown
};

enum class HAlign { Left, Centre, Right };
enum class VAlign { Top, Centre, Bottom };

struct TextStyle {
  std::wstring face;  // empty: the system's interface font
  float points = 9;   // height of the font
  bool bold = false;
  bool underline = false;
  Colour colour;
  HAlign horizontal = HAlign::Left;
  VAlign vertical = VAlign::Top;
  bool wrap = false;     // breaks lines at the rectangle's width
  bool ellipsis = true;  // what does not fit ends in "..."
  int rotation = 0;      // degrees counter-clockwise: 0, 90 or 270
};

// A point between pixels: the middle of the first pixel lies at 0.5.
struct FinePoint {
  float x = 0;
  float y = 0;
};

class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void fill(const PixelRect& rect, Colour colour) = 0;
  // From the top colour down, or from left to right.
  virtual void gradient(const PixelRect& rect, Colour from, Colour to, bool vertical) = 0;
  // An anti-aliased rounded box filled with a vertical gradient and framed one
  // pixel wide. Corners not rounded are given by a bit each: 1 top left,
  // 2 top right, 4 bottom right, 8 bottom left.
  virtual void box(const PixelRect& rect, Pixels radius, Colour top, Colour bottom, Colour border,
                   unsigned squareCorners) = 0;
  // Only the one-pixel frame of such a box.
  virtual void frame(const PixelRect& rect, Pixels radius, Colour border) = 0;
  virtual void line(Point<Pixels> from, Point<Pixels> to, Colour colour) = 0;
  // A smooth line through the points by a round pen; its joints are no darker.
  virtual void stroke(std::span<const FinePoint> points, float width, Colour colour) = 0;
  // Turns what is there already into its negative.
  virtual void invert(const PixelRect& rect) = 0;
  virtual void text(const PixelRect& rect, std::wstring_view text, const TextStyle& style) = 0;
  virtual void image(const PixelRect& rect, const ImageRef& image) = 0;
  // The picture at its own size from the upper left corner; what reaches past the
  // rectangle is cut off.
  virtual void unscaledImage(const PixelRect& rect, const ImageRef& image) = 0;
  // Of an image for that rectangle, for whoever draws something in place of one that
  // is not there.
  virtual ImageState imageState(const PixelRect&, const ImageRef&) { return ImageState::Ready; }
  virtual void focusFrame(const PixelRect& rect) = 0;
  // Clips nest: the new clip is intersected with the one in force.
  virtual void pushClip(const PixelRect& rect) = 0;
  virtual void popClip() = 0;
};

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  // The extent of the text; with style.wrap, broken at maxWidth.
  virtual Size<Pixels> measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) = 0;
};

}  // namespace varnowick
