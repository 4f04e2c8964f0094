// A canvas that writes down what would be drawn, one call a line, for golden
// texts and for questions about what was touched.
#pragma once

#include <string>
#include <vector>

#include "ui/scene/canvas.h"

namespace varnowick {

class RecordingCanvas : public Canvas {
 public:
  struct Call {
    std::string verb;
    PixelRect rect;
    PixelRect seen;      // what the clip in force leaves of it
    std::string detail;  // text, picture name, colours, style; what is not ASCII as "?"
  };

  std::vector<Call> calls;
  std::vector<PixelRect> clips;  // in force now

  // "verb left,top widthxheight detail" for each call with one of the verbs.
  std::string written(const std::vector<std::string>& verbs) const;
  // What of it another picture has not, as "name: call; call".
  static std::string added(const std::string& name, const std::string& before,
                           const std::string& now);
  // The call that draws the text, null when there is none.
  const Call* findText(const std::string& text) const;

  void fill(const PixelRect& rect, Colour colour) override;
  void gradient(const PixelRect& rect, Colour from, Colour to, bool vertical) override;
  void box(const PixelRect& rect, Pixels radius, Colour top, Colour bottom, Colour border,
           unsigned squareCorners) override;
  void frame(const PixelRect& rect, Pixels radius, Colour border) override;
  void line(Point<Pixels> from, Point<Pixels> to, Colour colour) override;
  void stroke(std::span<const FinePoint> points, float width, Colour colour) override;
  void invert(const PixelRect& rect) override;
  void text(const PixelRect& rect, std::wstring_view text, const TextStyle& style) override;
  void image(const PixelRect& rect, const ImageRef& image) override;
  void unscaledImage(const PixelRect& rect, const ImageRef& image) override;
  void focusFrame(const PixelRect& rect) override;
  void pushClip(const PixelRect& rect) override;
  void popClip() override;

 private:
  void record(const char* verb, const PixelRect& rect, std::string detail);
};

}  // namespace varnowick
