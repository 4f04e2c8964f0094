#include "ui/win/images/icon_picture.h"

#include <windows.h>

#include <algorithm>

#include "core/picture_header.h"
#include "core/png.h"
#include "platform/win32/handles.h"
#include "ui/win/images/icon_bitmap.h"
#include "ui/win/images/picture_decoder.h"

namespace varnowick {

namespace {

constexpr std::size_t kDirectoryBytes = 6;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kMaxImages = 64;
constexpr std::uint32_t kInfoHeaderBytes = 40;
constexpr std::uint32_t kMaxIconEdge = 512;
constexpr DWORD kIconVersion = 0x00030000;

std::uint32_t little(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint32_t value = 0;
  for (std::size_t i = count; i > 0 && at + count <= bytes.size(); --i)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  return value;
}

// The system takes the header's word for how much follows, so that it is checked
// before it gets to see the image.
bool isWholeImage(std::string_view image) {
  if (little(image, 0, 4) != kInfoHeaderBytes || image.size() < kInfoHeaderBytes) return false;
  const std::uint32_t width = little(image, 4, 4);
  const std::uint32_t height = little(image, 8, 4) / 2;  // of the picture; the mask is the rest
  const std::uint32_t bits = little(image, 14, 2);
  const std::uint32_t colours = little(image, 32, 4);
  if (width == 0 || height == 0 || width > kMaxIconEdge || height > kMaxIconEdge) return false;
  if (bits != 1 && bits != 4 && bits != 8 && bits != 24 && bits != 32) return false;
  if (little(image, 16, 4) != BI_RGB || colours > 256) return false;
  const std::uint32_t palette = bits > 8 ? colours : colours != 0 ? colours : 1U << bits;
  const auto rows = [&](std::uint32_t depth) { return (width * depth + 31) / 32 * 4 * height; };
  return image.size() >= kInfoHeaderBytes + palette * 4 + rows(bits) + rows(1);
}

// The smallest that is large enough, else the largest; of the same size the one
// with more colours. Empty when the directory is damaged.
std::string_view bestImage(std::string_view file, int edge) {
  std::string_view best;
  int bestRank = 0;
  const std::size_t count = std::min<std::size_t>(little(file, 4, 2), kMaxImages);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = kDirectoryBytes + i * kEntryBytes;
    if (entry + kEntryBytes > file.size()) break;
    const auto width = static_cast<int>(little(file, entry, 1));
    const int own = width == 0 ? 256 : width;
    const std::size_t size = little(file, entry + 8, 4);
    const std::size_t offset = little(file, entry + 12, 4);
    if (offset > file.size() || size > file.size() - offset) continue;
    const int fit = own >= edge ? 2000 - own : own;
    const int rank = fit * 64 + static_cast<int>(std::min(little(file, entry + 6, 2), 32U)) + 1;
    if (rank <= bestRank) continue;
    bestRank = rank;
    best = file.substr(offset, size);
  }
  return best;
}

Bitmap decodeIco(std::string_view file, int edge) {
  const std::string_view image = bestImage(file, edge);
  if (auto png = decodePng(image); png) return {png->width, png->height, std::move(png->pixels)};
  if (!isWholeImage(image)) return {};
  // Its own size: scaling is done here, and smoother.
  const auto width = static_cast<int>(little(image, 4, 4));
  std::string copy(image);
  const IconHandle icon(CreateIconFromResourceEx(reinterpret_cast<BYTE*>(copy.data()),
                                                 static_cast<DWORD>(copy.size()), TRUE,
                                                 kIconVersion, width, width, LR_DEFAULTCOLOR));
  return icon ? bitmapOfIcon(icon.get(), width) : Bitmap{};
}

}  // namespace

Bitmap decodeIconPicture(std::string_view bytes, int edge) {
  if (edge < 1 || edge > static_cast<int>(kMaxIconEdge)) return {};
  const bool ico = readPictureHeader(bytes).format == PictureFormat::Ico;
  const Bitmap picture = ico ? decodeIco(bytes, edge) : decodePicture(bytes, 1024);
  const int longest = std::max(picture.width, picture.height);
  if (picture.empty() || longest < 1) return {};
  const int width = std::max(1, picture.width * edge / longest);
  const int height = std::max(1, picture.height * edge / longest);
  Bitmap fitted = scaled(picture, width, height);
  if ((width == edge && height == edge) || fitted.empty()) return fitted;
  Bitmap square{edge, edge, {}};
  square.pixels.resize(static_cast<std::size_t>(edge) * static_cast<std::size_t>(edge));
  for (int y = 0; y < height; ++y) {
    const int target = (y + (edge - height) / 2) * edge + (edge - width) / 2;
    std::copy_n(fitted.pixels.begin() + y * width, width, square.pixels.begin() + target);
  }
  return square;
}

}  // namespace varnowick
