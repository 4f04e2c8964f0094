#include "ui/win/toolkit/gdi_text.h"

#include <algorithm>
#include <cmath>

namespace varnowick {

namespace {

constexpr std::size_t kMaxFonts = 48;
// What nobody can see in one rectangle is not handed to GDI: the time it takes to
// break lines grows with the square of the text.
constexpr std::size_t kMaxLineChars = 2048;
constexpr std::size_t kMaxMeasuredChars = 4096;
constexpr std::size_t kMaxDrawnChars = 32768;
// Names that old headers lack.
constexpr BYTE kClearTypeQuality = 5;
constexpr UINT kGetFontSmoothingType = 0x200A;
constexpr UINT kFontSmoothingClearType = 2;

// Reading order follows the first character that has a direction.
bool startsRightToLeft(std::wstring_view text) {
  const int length = static_cast<int>(std::min<std::size_t>(text.size(), 64));
  WORD types[64] = {};
  if (length == 0 || !GetStringTypeW(CT_CTYPE2, text.data(), length, types)) return false;
  for (int i = 0; i < length; ++i) {
    if (types[i] == C2_LEFTTORIGHT) return false;
    if (types[i] == C2_RIGHTTOLEFT) return true;
  }
  return false;
}

// No more of a wrapped text than fits into the rectangle with the narrowest of
// letters.
std::wstring_view visiblePart(std::wstring_view text, const TextStyle& style, const PixelRect& rect,
                              Density density) {
  if (!style.wrap) return text.substr(0, kMaxLineChars);
  const double lineHeight =
      std::clamp(static_cast<double>(style.points), 1.0, 400.0) * std::max(1, density.dpi) / 72.0;
  const double lines = rect.height.value / lineHeight + 2;
  const double chars = lines * (rect.width.value / 2.0 + 2);
  return text.substr(
      0, static_cast<std::size_t>(std::min(static_cast<double>(kMaxDrawnChars), chars)));
}

UINT formatOf(std::wstring_view text, const TextStyle& style) {
  UINT format = DT_NOPREFIX | DT_EXPANDTABS;
  format |= style.wrap ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE;
  if (style.horizontal == HAlign::Centre) format |= DT_CENTER;
  if (style.horizontal == HAlign::Right) format |= DT_RIGHT;
  if (style.ellipsis) format |= DT_END_ELLIPSIS;
  if (startsRightToLeft(text)) format |= DT_RTLREADING;
  return format;
}

COLORREF colourRef(Colour colour) { return static_cast<COLORREF>(colour.bgr & 0xFFFFFF); }

RECT calculated(HDC dc, std::wstring_view text, UINT format, int width) {
  RECT extent{0, 0, width, 0};
  DrawTextW(dc, text.data(), static_cast<int>(text.size()), &extent,
            (format & ~static_cast<UINT>(DT_END_ELLIPSIS)) | DT_CALCRECT);
  return extent;
}

int aligned(int from, int room, int extent, int third) {
  return third == 0 ? from : third == 1 ? from + (room - extent) / 2 : from + room - extent;
}

void drawUpright(HDC dc, const PixelRect& rect, std::wstring_view text, const TextStyle& style) {
  const UINT format = formatOf(text, style);
  RECT area{rect.left.value, rect.top.value, rect.right().value, rect.bottom().value};
  if (style.vertical != VAlign::Top) {
    const int height = calculated(dc, text, format, rect.width.value).bottom;
    // Text that is too high starts at the top, where it begins.
    if (height < rect.height.value) {
      area.top =
          aligned(rect.top.value, rect.height.value, height, static_cast<int>(style.vertical));
    }
  }
  const UINT clip = style.wrap ? 0U : static_cast<UINT>(DT_NOCLIP);
  IntersectClipRect(dc, rect.left.value, rect.top.value, rect.right().value, rect.bottom().value);
  DrawTextW(dc, text.data(), static_cast<int>(text.size()), &area, format | clip);
}

// The line as it stands upright, shortened to the room.
std::wstring shortened(HDC dc, std::wstring_view text, const TextStyle& style, int room) {
  std::wstring line(text.substr(0, kMaxLineChars));
  if (!style.ellipsis) return line;
  const int length = static_cast<int>(line.size());
  line.resize(line.size() + 8);  // DrawText may add up to four characters
  RECT r{0, 0, room, 0};
  DrawTextW(dc, line.data(), length, &r,
            DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT);
  // It ends a string that it has shortened, and leaves any other as it was.
  const std::size_t end = line.find(L'\0');
  line.resize(end == std::wstring::npos ? static_cast<std::size_t>(length) : end);
  return line;
}

// 32-bit pixels with a device context on them.
class Sheet {
 public:
  explicit Sheet(Size<Pixels> size) : size_(size), dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width.value;
    info.bmiHeader.biHeight = -size.height.value;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!dc_ || !bitmap_ || bits == nullptr) return;
    former_ = SelectObject(dc_.get(), bitmap_.get());
    pixels_ = static_cast<std::uint32_t*>(bits);
  }
  ~Sheet() {
    if (former_ != nullptr) SelectObject(dc_.get(), former_);
  }
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  bool ready() const { return pixels_ != nullptr; }
  HDC dc() const { return dc_.get(); }
  std::uint32_t& at(int x, int y) const { return pixels_[y * size_.width.value + x]; }

 private:
  Size<Pixels> size_;
  MemoryDc dc_;
  BitmapHandle bitmap_;
  HGDIOBJ former_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
};

// Fonts that GDI turns lose their hinting and the even steps between letters. So the
// line is drawn upright, white on black, and laid over what is there turned.
void drawRotated(HDC dc, GdiFonts& fonts, Density density, const PixelRect& rect,
                 std::wstring_view text, const TextStyle& style) {
  const int width = rect.width.value;
  const int height = rect.height.value;
  constexpr int kMaxTextEdge = 4096;
  if (width > kMaxTextEdge || height > kMaxTextEdge) return;
  const Sheet upright({rect.height, rect.width});
  const Sheet turned(rect.size());
  if (!upright.ready() || !turned.ready()) return;
  {
    const SelectionGuard font(upright.dc(), fonts.get(style, density));
    const std::wstring line = shortened(upright.dc(), text, style, height);
    SIZE extent{};
    GetTextExtentPoint32W(upright.dc(), line.data(), static_cast<int>(line.size()), &extent);
    const int x =
        aligned(0, height, static_cast<int>(extent.cx), static_cast<int>(style.horizontal));
    const int y = aligned(0, width, static_cast<int>(extent.cy), static_cast<int>(style.vertical));
    SetBkMode(upright.dc(), TRANSPARENT);
    SetTextColor(upright.dc(), RGB(255, 255, 255));
    const UINT options = startsRightToLeft(line) ? static_cast<UINT>(ETO_RTLREADING) : 0U;
    ExtTextOutW(upright.dc(), x, y, options, nullptr, line.data(), static_cast<UINT>(line.size()),
                nullptr);
  }
  BitBlt(turned.dc(), 0, 0, width, height, dc, rect.left.value, rect.top.value, SRCCOPY);
  GdiFlush();
  const auto channel = [](std::uint32_t below, int ink, unsigned share, unsigned shift) {
    const std::uint32_t old = (below >> shift) & 0xFFU;
    return ((old * (255 - share) + static_cast<std::uint32_t>(ink) * share + 127) / 255) << shift;
  };
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const std::uint32_t ink =
          style.rotation == 90 ? upright.at(height - 1 - y, x) : upright.at(y, width - 1 - x);
      // Green stands for all: a font without colour fringes has three alike.
      const unsigned share = (ink >> 8) & 0xFFU;
      if (share == 0) continue;
      std::uint32_t& pixel = turned.at(x, y);
      pixel = channel(pixel, style.colour.red(), share, 16) |
              channel(pixel, style.colour.green(), share, 8) |
              channel(pixel, style.colour.blue(), share, 0);
    }
  BitBlt(dc, rect.left.value, rect.top.value, width, height, turned.dc(), 0, 0, SRCCOPY);
}

}  // namespace

void GdiFonts::loadSystemSettings() {
  if (!systemFace_.empty()) return;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  systemFace_ = L"MS Shell Dlg";
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) &&
      metrics.lfMessageFont.lfFaceName[0] != L'\0') {
    systemFace_ = metrics.lfMessageFont.lfFaceName;
  }
  BOOL smoothing = FALSE;
  UINT type = 0;
  quality_ = DEFAULT_QUALITY;
  if (SystemParametersInfoW(SPI_GETFONTSMOOTHING, 0, &smoothing, 0) && smoothing) {
    quality_ =
        SystemParametersInfoW(kGetFontSmoothingType, 0, &type, 0) && type == kFontSmoothingClearType
            ? kClearTypeQuality
            : static_cast<BYTE>(ANTIALIASED_QUALITY);
  }
}

HFONT GdiFonts::get(const TextStyle& style, Density density) {
  loadSystemSettings();
  const float points = std::isfinite(style.points) ? std::clamp(style.points, 1.0F, 400.0F) : 9.0F;
  const int height =
      std::max(1, roundHalfToEven(static_cast<double>(points) * std::max(1, density.dpi) / 72.0));
  const bool turned = style.rotation == 90 || style.rotation == 270;
  const Key key{style.face.empty() ? systemFace_ : style.face.substr(0, LF_FACESIZE - 1), height,
                style.bold, style.underline, turned};
  Entry& entry = fonts_[key];
  entry.lastUse = ++uses_;
  if (entry.font) return entry.font.get();

  LOGFONTW font{};
  font.lfHeight = -height;
  font.lfWeight = style.bold ? FW_BOLD : FW_NORMAL;
  font.lfUnderline = style.underline ? TRUE : FALSE;
  font.lfCharSet = DEFAULT_CHARSET;
  // Colour fringes belong beside a stem, not above it: drawRotated turns the pixels.
  font.lfQuality =
      turned && quality_ == kClearTypeQuality ? static_cast<BYTE>(ANTIALIASED_QUALITY) : quality_;
  const std::wstring& face = std::get<0>(key);
  std::copy(face.begin(), face.end(), font.lfFaceName);
  entry.font.reset(CreateFontIndirectW(&font));
  const HFONT made = entry.font.get();
  if (fonts_.size() > kMaxFonts) {
    const auto oldest = std::min_element(
        fonts_.begin(), fonts_.end(),
        [](const auto& a, const auto& b) { return a.second.lastUse < b.second.lastUse; });
    fonts_.erase(oldest);
  }
  return made;
}

void GdiFonts::clear() {
  fonts_.clear();
  systemFace_.clear();
}

Size<Pixels> measureGdiText(HDC dc, GdiFonts& fonts, Density density, std::wstring_view text,
                            const TextStyle& style, Pixels maxWidth) {
  TextStyle upright = style;
  upright.rotation = 0;
  const std::wstring_view seen = text.substr(0, style.wrap ? kMaxMeasuredChars : kMaxLineChars);
  const SelectionGuard font(dc, fonts.get(upright, density));
  if (seen.empty()) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return {{0}, {static_cast<int>(metrics.tmHeight)}};
  }
  const RECT extent = calculated(dc, seen, formatOf(seen, style), std::max(1, maxWidth.value));
  const Size<Pixels> size{{static_cast<int>(extent.right - extent.left)},
                          {static_cast<int>(extent.bottom - extent.top)}};
  return style.rotation == 0 ? size : Size<Pixels>{size.height, size.width};
}

void GdiTextMeasure::measureLetters(const TextStyle& style) {
  letters_ = {false, style.face, style.points, style.bold, {}, 0};
  std::array<wchar_t, 95> all{};
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<wchar_t>(L' ' + i);
  const int count = static_cast<int>(all.size());
  const SelectionGuard font(dc_.get(), fonts_.get(style, density_));
  SIZE extent{};
  TEXTMETRICW metrics{};
  // Where each letter ends when all stand in one line. GDI does not kern.
  std::array<int, 95>& widths = letters_.widths;
  letters_.known = GetTextExtentExPointW(dc_.get(), all.data(), count, 0, nullptr, widths.data(),
                                         &extent) != 0 &&
                   GetTextMetricsW(dc_.get(), &metrics) != 0;
  for (std::size_t i = widths.size() - 1; i > 0; --i) widths[i] -= widths[i - 1];
  letters_.height = static_cast<int>(metrics.tmHeight);
}

Size<Pixels> GdiTextMeasure::measure(std::wstring_view text, const TextStyle& style,
                                     Pixels maxWidth) {
  const auto isPlain = [](wchar_t c) { return c >= L' ' && c <= L'~'; };
  if (style.rotation == 0 && !style.wrap && !style.underline && !text.empty() &&
      text.size() <= kMaxLineChars && std::all_of(text.begin(), text.end(), isPlain)) {
    if (!isOf(style)) measureLetters(style);
    if (letters_.known) {
      int width = 0;
      for (const wchar_t c : text) width += letters_.widths[static_cast<std::size_t>(c - L' ')];
      return {{width}, {letters_.height}};
    }
  }
  return measureGdiText(dc_.get(), fonts_, density_, text, style, maxWidth);
}

void drawGdiText(HDC dc, GdiFonts& fonts, Density density, const PixelRect& rect,
                 std::wstring_view text, const TextStyle& style) {
  if (rect.empty() || text.empty()) return;
  const int saved = SaveDC(dc);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, colourRef(style.colour));
  if (style.rotation == 90 || style.rotation == 270) {
    drawRotated(dc, fonts, density, rect, text, style);
  } else {
    const SelectionGuard font(dc, fonts.get(style, density));
    drawUpright(dc, rect, visiblePart(text, style, rect, density), style);
  }
  RestoreDC(dc, saved);
}

}  // namespace varnowick
