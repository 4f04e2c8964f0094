// Measures text as if every letter were half as wide as the font is high.
#pragma once

#include <algorithm>
#include <cmath>

#include "ui/scene/canvas.h"

namespace varnowick {

class FakeTextMeasure : public TextMeasure {
 public:
  int measured = 0;

  Size<Pixels> measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) override {
    ++measured;
    const double height = static_cast<double>(style.points) * 96 / 72;
    const double width = std::ceil(height / 2 * static_cast<double>(text.size()));
    const double most = style.wrap ? std::max(1, maxWidth.value) : std::max(1.0, width);
    const double lines = std::max(1.0, std::ceil(width / most));
    return {{static_cast<int>(std::min(width, most))},
            {static_cast<int>(std::ceil(lines * height * 1.2))}};
  }
};

}  // namespace varnowick
