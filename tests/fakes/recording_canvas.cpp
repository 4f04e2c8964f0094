#include "tests/fakes/recording_canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace varnowick {

namespace {

std::string hex(Colour colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(colour.red()) & 0xFFU,
                static_cast<unsigned>(colour.green()) & 0xFFU,
                static_cast<unsigned>(colour.blue()) & 0xFFU);
  return text;
}

std::string plain(std::wstring_view text) {
  std::string out;
  for (const wchar_t c : text) out += c >= 32 && c < 127 ? static_cast<char>(c) : '?';
  return out;
}

}  // namespace

void RecordingCanvas::record(const char* verb, const PixelRect& rect, std::string detail) {
  calls.push_back(
      {verb, rect, clips.empty() ? rect : rect.intersect(clips.back()), std::move(detail)});
}

std::string RecordingCanvas::written(const std::vector<std::string>& verbs) const {
  std::string out;
  for (const Call& call : calls) {
    if (std::find(verbs.begin(), verbs.end(), call.verb) == verbs.end()) continue;
    char place[80];
    std::snprintf(place, sizeof place, " %d,%d %dx%d", call.rect.left.value, call.rect.top.value,
                  call.rect.width.value, call.rect.height.value);
    out += call.verb + place + (call.detail.empty() ? "" : " ") + call.detail + "\n";
  }
  return out;
}

std::string RecordingCanvas::added(const std::string& name, const std::string& before,
                                   const std::string& now) {
  constexpr std::size_t kLine = 96;
  std::string all = name + ":";
  std::size_t lineStart = 0;
  std::istringstream lines(now);
  for (std::string line; std::getline(lines, line);) {
    if (("\n" + before).find("\n" + line + "\n") != std::string::npos) continue;
    if (all.size() - lineStart + line.size() > kLine) {
      all += "\n ";
      lineStart = all.size();
    }
    all += " " + line + ";";
  }
  if (all.back() == ';') all.pop_back();
  return all + "\n";
}

const RecordingCanvas::Call* RecordingCanvas::findText(const std::string& text) const {
  const auto at = std::find_if(calls.begin(), calls.end(), [&](const Call& call) {
    return call.verb == "text" && call.detail.rfind(text, 0) == 0;
  });
  return at == calls.end() ? nullptr : &*at;
}

void RecordingCanvas::fill(const PixelRect& rect, Colour colour) {
  record("fill", rect, hex(colour));
}
void RecordingCanvas::gradient(const PixelRect& rect, Colour from, Colour to, bool) {
  record("gradient", rect, hex(from) + " " + hex(to));
}
void RecordingCanvas::box(const PixelRect& rect, Pixels radius, Colour top, Colour bottom,
                          Colour border, unsigned squareCorners) {
  record("box", rect,
         hex(top) + (bottom == top ? "" : hex(bottom)) +
             (border == top ? "" : " in " + hex(border)) + " r" + std::to_string(radius.value) +
             (squareCorners == 0 ? "" : " square " + std::to_string(squareCorners)));
}
void RecordingCanvas::frame(const PixelRect& rect, Pixels radius, Colour border) {
  record("frame", rect, hex(border) + " r" + std::to_string(radius.value));
}
void RecordingCanvas::line(Point<Pixels> from, Point<Pixels> to, Colour colour) {
  record("line", {from.x, from.y, to.x - from.x, to.y - from.y}, hex(colour));
}
void RecordingCanvas::stroke(std::span<const FinePoint> points, float width, Colour colour) {
  if (points.empty()) return;
  FinePoint from = points[0], to = points[0];
  for (const FinePoint& p : points) {
    from = {std::min(from.x, p.x), std::min(from.y, p.y)};
    to = {std::max(to.x, p.x), std::max(to.y, p.y)};
  }
  const float half = width / 2;
  const auto down = [](float v) { return static_cast<int>(std::floor(v)); };
  const auto up = [](float v) { return static_cast<int>(std::ceil(v)); };
  const int left = down(from.x - half), top = down(from.y - half);
  record("stroke", {{left}, {top}, {up(to.x + half) - left}, {up(to.y + half) - top}}, hex(colour));
}
void RecordingCanvas::invert(const PixelRect& rect) { record("invert", rect, ""); }
void RecordingCanvas::text(const PixelRect& rect, std::wstring_view text, const TextStyle& style) {
  char points[16];
  std::snprintf(points, sizeof points, " %gpt", static_cast<double>(style.points));
  std::string detail = plain(text) + (style.bold ? " bold " : " ") + hex(style.colour) + points;
  if (style.underline) detail += " underlined";
  if (style.horizontal != HAlign::Left)
    detail += style.horizontal == HAlign::Centre ? " centred" : " right";
  if (style.vertical == VAlign::Centre) detail += " midway";
  if (style.wrap) detail += " wrapped";
  record("text", rect, detail);
}
void RecordingCanvas::image(const PixelRect& rect, const ImageRef& image) {
  record("image", rect, plain(image.name));
}
void RecordingCanvas::unscaledImage(const PixelRect& rect, const ImageRef& image) {
  record("unscaled", rect, plain(image.name));
}
void RecordingCanvas::focusFrame(const PixelRect& rect) { record("focus", rect, ""); }
void RecordingCanvas::pushClip(const PixelRect& rect) {
  clips.push_back(clips.empty() ? rect : rect.intersect(clips.back()));
}
void RecordingCanvas::popClip() { clips.pop_back(); }

}  // namespace varnowick
