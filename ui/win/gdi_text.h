// Text by GDI: a bounded cache of fonts, measuring, and drawing on a device
// context. It knows text styles and densities, not scenes.
#pragma once

#include <windows.h>

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
  // A font for the style; it lives until the cache needs its place, so that it is
  // fetched anew for every use. Sizes are held to 1..400 points.
  HFONT get(const TextStyle& style, Density density);
  // Forgets all fonts: the user has changed the system's font or smoothing.
  void clear();
  std::size_t count() const { return fonts_.size(); }

 private:
  using Key = std::tuple<std::wstring, int, bool, bool, int>;
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
class GdiTextMeasure : public TextMeasure {
 public:
  explicit GdiTextMeasure(Density density) : density_(density), dc_(CreateCompatibleDC(nullptr)) {}
  void setDensity(Density density) { density_ = density; }
  void clearFonts() { fonts_.clear(); }
  Size<Pixels> measure(std::wstring_view text, const TextStyle& style, Pixels maxWidth) override {
    return measureGdiText(dc_.get(), fonts_, density_, text, style, maxWidth);
  }

 private:
  Density density_;
  MemoryDc dc_;
  GdiFonts fonts_;
};

}  // namespace varnowick
