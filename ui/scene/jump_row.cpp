#include "ui/scene/jump_row.h"

#include <algorithm>
#include <string_view>

#include "ui/scene/signs.h"

namespace varnowick {
namespace {

constexpr std::size_t kLongestCaption = 400;
constexpr float kPlaceShare = 0.4F;  // of the row, at most

Pixels scaled(int usual, Density density) {
  return {std::max(1, roundHalfToEven(static_cast<double>(usual) * density.dpi / 96.0))};
}

TextStyle plainStyle(Colour colour, float points) {
  TextStyle style;
  style.points = points;
  style.colour = colour;
  style.vertical = VAlign::Centre;
  return style;
}

// Draws stretches of matched and other letters one behind the other.
void paintCaption(Canvas& canvas, TextMeasure& measure, const PixelRect& rect, const JumpRow& row,
                  Colour ink, Colour matchedInk, bool underline) {
  const std::wstring_view caption = std::wstring_view(row.caption).substr(0, kLongestCaption);
  Pixels left = rect.left;
  std::size_t at = 0;
  auto next = row.matched.begin();
  while (at < caption.size() && left < rect.right()) {
    const bool matched = next != row.matched.end() && *next == at;
    std::size_t end = at;
    if (matched) {
      while (next != row.matched.end() && *next == end) ++next, ++end;
    } else {
      end = next == row.matched.end() ? caption.size() : std::min(*next, caption.size());
      // Indices out of order would never be reached.
      if (end <= at) end = caption.size();
    }
    end = std::min(end, caption.size());
    TextStyle style = plainStyle(matched ? matchedInk : ink, kJumpPoints);
    style.bold = matched;
    style.underline = matched && underline;
    const std::wstring_view run = caption.substr(at, end - at);
    const Pixels width = measure.measure(run, style, {0}).width;
    const Pixels room = rect.right() - left;
    canvas.text({left, rect.top, end == caption.size() ? room : std::min(width, room), rect.height},
                run, style);
    left += width;
    at = end;
  }
}

}  // namespace

Colour jumpListGround(const Palette& p) {
  return p.highContrast ? p.backTop : mix(p.barTop, p.text, 0.03F);
}

Colour jumpFieldGround(const Palette& p) {
  return p.highContrast ? p.backTop : mix(p.barTop, p.text, 0.08F);
}

Pixels jumpWordsWidth(TextMeasure& measure, const std::wstring& words, Density density) {
  if (words.empty()) return {0};
  return measure.measure(words, plainStyle({}, kJumpSmallPoints), {0}).width + scaled(10, density);
}

void paintJumpRow(Canvas& canvas, TextMeasure& measure, const PixelRect& rect, const JumpRow& row,
                  const Palette& p, Density density) {
  const Colour ground = jumpListGround(p);
  canvas.fill(rect, ground);
  const PixelRect box = {rect.left, rect.top + scaled(1, density), rect.width,
                         rect.height - scaled(2, density)};
  Colour behind = ground;
  if (row.selected) {
    behind = p.highContrast ? p.accent : mix(ground, p.accent, 0.26F);
    canvas.box(box, scaled(5, density), behind, behind, p.accent, 0);
  } else if (row.hovered) {
    if (!p.highContrast) behind = mix(ground, p.text, 0.10F);
    canvas.box(box, scaled(5, density), behind, behind, p.highContrast ? p.accent : behind, 0);
  }
  const Colour ink = row.selected ? p.selectedText : p.text;
  const Colour lit = p.highContrast ? ink : readable(mix(p.accent, p.text, 0.25F), behind);
  const Pixels icon = scaled(16, density);
  const Pixels pad = scaled(8, density);
  canvas.image(
      {rect.left + pad, {rect.top.value + (rect.height.value - icon.value) / 2}, icon, icon},
      row.icon);
  Pixels right = rect.right() - pad;
  if (!row.place.empty()) {
    TextStyle style = plainStyle(row.selected ? ink : p.mutedText, kJumpSmallPoints);
    style.horizontal = HAlign::Right;
    const Pixels most{static_cast<int>(static_cast<float>(rect.width.value) * kPlaceShare)};
    const Pixels width =
        std::min(most, measure.measure(row.place, style, {0}).width + scaled(2, density));
    canvas.text({right - width, rect.top, width, rect.height}, row.place, style);
    right -= width + pad;
  }
  const Pixels left = rect.left + pad + icon + pad;
  paintCaption(canvas, measure, {left, rect.top, right - left, rect.height}, row, ink, lit,
               p.highContrast);
}

void paintJumpPanel(Canvas& canvas, TextMeasure& measure, const PixelRect& panel,
                    const PixelRect& field, const PixelRect& thumb, const std::wstring& words,
                    bool focused, const Palette& p, Density density) {
  const Pixels line = scaled(1, density);
  canvas.fill(panel, jumpListGround(p));
  canvas.fill({panel.left, panel.bottom() - line - line, panel.width, line + line},
              p.highContrast ? p.border : p.barEdge);
  const Colour ground = jumpFieldGround(p);
  const Colour idle = p.highContrast ? p.border : mix(ground, p.text, 0.15F);
  canvas.box(field, scaled(5, density), ground, ground, focused ? p.accent : idle, 0);
  const PixelRect lens{field.left + scaled(9, density), field.top, scaled(14, density),
                       field.height};
  drawSign(canvas, Sign::Lens, lens, density, p.mutedText);
  if (!words.empty()) {
    TextStyle style = plainStyle(p.mutedText, kJumpSmallPoints);
    style.horizontal = HAlign::Right;
    const Pixels width = jumpWordsWidth(measure, words, density);
    canvas.text({field.right() - width - scaled(6, density), field.top, width, field.height}, words,
                style);
  }
  if (!thumb.empty()) {
    const Colour ink = p.highContrast ? p.text : mix(jumpListGround(p), p.text, 0.3F);
    canvas.box(thumb, scaled(2, density), ink, ink, ink, 0);
  }
}

}  // namespace varnowick
