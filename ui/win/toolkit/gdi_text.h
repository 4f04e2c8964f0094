// Text by GDI: a bounded cache of fonts, measuring, and drawing on a device
// context. It knows text styles and densities, not scenes.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "core/units.h"
#include "platform/win32/handles.h"
#include "ui/scene/canvas.h"

namespace varnowick {

class GdiFonts {
 public:
  // A font for the style, upright whatever its rotation; it lives until the cache needs its place,
  // so that it is fetched anew for every use. Sizes are held to 1..400 points.
  HFONT get(const TextStyle& style, Density density);
  // Forgets all fonts: the user has changed the system's font or smoothing.
  void clear();
  std::size_t count() const { return fonts_.size(); }

 private:
  using Key = std::tuple<std::wstring, int, bool, bool, bool>;
  struct Entry {
    FontHandle font;
    std::uint64_t lastUse = 0;
  };
  void loadSystemSettings();

  std::map<Key, Entry> fonts_;
  std::uint64_t uses_ = 0;
  std::wstring systemFace_;
  BYTE quality_ = DEFAULT_QUALITY;
};

// The extent on the device context, with style.wrap broken at maxWidth.
Size<Pixels> measureGdiText(HDC dc, GdiFonts& fonts, Density density, std::wstring_view text,
                            const TextStyle& style, Pixels maxWidth);
// Draws inside the rectangle and the clip region in force.
void drawGdiText(HDC dc, GdiFonts& fonts, Density density, const PixelRect& rect,
                 std::wstring_view text, const TextStyle& style);

// Measures without a window, for layout that runs before anything is painted.
// Plain lines are added up from the widths of their letters: thousands of captions
// are laid out at once, and asking GDI for each takes ten times as long.
class GdiTextMeasure : public TextMeasure {
 public:
  explicit GdiTextMeasure(Density density) : density_(density), dc_(CreateCompatibleDC(nullptr)) {}
  void setDensity(Density density) {
    density_ = density;
    letters_ = {};
  }
  void clearFonts() {
    fonts_.clear();
    letters_ = {};
  }
  Size<Pixels> measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) override;

 private:
  // The printable ASCII characters of the style measured last.
  struct Letters {
    bool known = false;
    std::wstring face;
    float points = 0;
    bool bold = false;
    std::array<int, 95> widths{};
    int height = 0;
  };
  bool isOf(const TextStyle& style) const {
    return letters_.known && style.points == letters_.points && style.bold == letters_.bold &&
           style.face == letters_.face;
  }
  void measureLetters(const TextStyle& style);

  Density density_;
  MemoryDc dc_;
  GdiFonts fonts_;
  Letters letters_;
};

}  // namespace varnowick
