// How the jump-to box looks: a row of its list with the matched letters standing
// out, and the frame of its search field. Draws only; it knows neither the
// matching nor a window.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/scene/canvas.h"
#include "ui/scene/palette.h"

namespace varnowick {

// Pixels at 96 dots per inch.
inline constexpr int kJumpRowHeight = 28;
inline constexpr int kJumpMargin = 8;
inline constexpr int kJumpFieldHeight = 28;
inline constexpr int kJumpFieldTextLeft = 30;  // the sign stands before it
inline constexpr float kJumpPoints = 9.5F;
inline constexpr float kJumpSmallPoints = 8;

struct JumpRow {
  std::wstring caption;
  std::vector<std::size_t> matched;  // indices into the caption, ascending
  ImageRef icon;
  std::wstring place;  // where it lies, at the right; empty for none
  bool selected = false;
  bool hovered = false;
};

// The ground of the rows and of the field, for the controls that lie on them.
Colour jumpListGround(const Palette& palette);
Colour jumpFieldGround(const Palette& palette);

void paintJumpRow(Canvas& canvas, TextMeasure& measure, const PixelRect& rect, const JumpRow& row,
                  const Palette& palette, Density density);
// The panel with the field in it; the words at the field's right tell how many
// matches there are. `list` is the list's rectangle, empty for none; `thumb` the
// part of it on the right that shows how far it is scrolled, empty for none.
void paintJumpPanel(Canvas& canvas, TextMeasure& measure, const PixelRect& panel,
                    const PixelRect& field, const PixelRect& thumb, const std::wstring& words,
                    bool focused, const Palette& palette, Density density);
// The room that the words at the field's right take.
Pixels jumpWordsWidth(TextMeasure& measure, const std::wstring& words, Density density);

}  // namespace varnowick
