#include "core/picture_header.h"

#include <algorithm>
#include <cstddef>

namespace varnowick {

namespace {

constexpr std::uint64_t kMaxPixels = 64'000'000;
constexpr std::uint32_t kMaxEdge = 32768;

std::uint32_t at(std::string_view bytes, std::size_t i) {
  return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
}
std::uint32_t little16(std::string_view b, std::size_t i) { return at(b, i) | at(b, i + 1) << 8; }
std::uint32_t big16(std::string_view b, std::size_t i) { return at(b, i) << 8 | at(b, i + 1); }
std::uint32_t little32(std::string_view b, std::size_t i) {
  return little16(b, i) | little16(b, i + 2) << 16;
}
std::uint32_t big32(std::string_view b, std::size_t i) {
  return big16(b, i) << 16 | big16(b, i + 2);
}
// Heights of bitmaps are negative when the rows start at the top.
std::uint32_t magnitude(std::uint32_t value) { return value >> 31 != 0 ? 0U - value : value; }

bool startsWith(std::string_view bytes, std::string_view start) {
  return bytes.substr(0, start.size()) == start;
}

PictureHeader jpegHeader(std::string_view bytes) {
  std::size_t i = 2;
  while (i + 9 < bytes.size()) {
    if (at(bytes, i) != 0xFF) return {};
    const std::uint32_t marker = at(bytes, i + 1);
    if (marker == 0xFF) {  // padding
      ++i;
      continue;
    }
    const bool frame =
        marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame) return {PictureFormat::Jpeg, big16(bytes, i + 7), big16(bytes, i + 5)};
    const std::uint32_t length = big16(bytes, i + 2);
    if (length < 2 || marker == 0xD9 || marker == 0xDA) return {};
    i += 2 + length;
  }
  return {};
}

PictureHeader icoHeader(std::string_view bytes) {
  PictureHeader header{PictureFormat::Ico, 0, 0};
  const std::uint32_t count = std::min(little16(bytes, 4), 256U);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t entry = 6 + std::size_t{16} * i;
    if (entry + 16 > bytes.size()) return {};
    const std::size_t offset = little32(bytes, entry + 12);
    if (offset >= bytes.size() || bytes.size() - offset < 24) return {};
    // The directory's word of one byte an edge is not what decoders go by.
    const std::string_view image = bytes.substr(offset);
    const bool png = startsWith(image, "\x89PNG");
    header.width = std::max(header.width, png ? big32(image, 16) : little32(image, 4));
    header.height =
        std::max(header.height, png ? big32(image, 20) : magnitude(little32(image, 8)) / 2);
  }
  return header;
}

PictureHeader parse(std::string_view bytes) {
  if (startsWith(bytes, "\x89PNG\r\n\x1A\n") && bytes.substr(12, 4) == "IHDR") {
    return {PictureFormat::Png, big32(bytes, 16), big32(bytes, 20)};
  }
  if (startsWith(bytes, "\xFF\xD8")) return jpegHeader(bytes);
  if (startsWith(bytes, "GIF87a") || startsWith(bytes, "GIF89a")) {
    return {PictureFormat::Gif, little16(bytes, 6), little16(bytes, 8)};
  }
  if (startsWith(bytes, "BM")) {
    if (little32(bytes, 14) == 12) {
      return {PictureFormat::Bmp, little16(bytes, 18), little16(bytes, 20)};
    }
    return {PictureFormat::Bmp, little32(bytes, 18), magnitude(little32(bytes, 22))};
  }
  if (startsWith(bytes, std::string_view("\0\0\1\0", 4))) return icoHeader(bytes);
  return {};
}

}  // namespace

PictureHeader readPictureHeader(std::string_view bytes) {
  if (bytes.size() < 24) return {};
  const PictureHeader header = parse(bytes);
  return header.width == 0 || header.height == 0 ? PictureHeader{} : header;
}

bool isDecodable(const PictureHeader& header) {
  return header.format != PictureFormat::Unknown && header.width <= kMaxEdge &&
         header.height <= kMaxEdge &&
         static_cast<std::uint64_t>(header.width) * header.height <= kMaxPixels;
}

}  // namespace varnowick
