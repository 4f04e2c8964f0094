#include "tests/ui/win/images/picture_bytes.h"

#include <zlib.h>

#include <string_view>

#include "core/png.h"

namespace varnowick {

namespace {

std::string big(std::uint32_t v) {
  return {static_cast<char>(v >> 24), static_cast<char>(v >> 16), static_cast<char>(v >> 8),
          static_cast<char>(v)};
}
std::string little(std::uint32_t v, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(v >> (8 * i)));
  return out;
}

std::string infoHeader(std::uint32_t width, std::uint32_t height, std::uint32_t bits) {
  return little(40, 4) + little(width, 4) + little(height, 4) + little(1, 2) + little(bits, 2) +
         std::string(24, '\0');
}

std::string fromHex(std::string_view digits) {
  const auto value = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
    bytes.push_back(static_cast<char>(value(digits[i]) * 16 + value(digits[i + 1])));
  return bytes;
}

}  // namespace

std::string pngBytes(std::uint32_t width, std::uint32_t height, std::uint32_t argb) {
  const std::uint32_t alpha = argb >> 24;
  std::uint32_t premultiplied = alpha << 24;
  for (int shift = 0; shift < 24; shift += 8)
    premultiplied |= ((argb >> shift & 0xFF) * alpha + 127) / 255 << shift;
  return encodePng({static_cast<int>(width), static_cast<int>(height),
                    std::vector<std::uint32_t>(width * height, premultiplied)});
}

std::string pngClaiming(std::uint32_t width, std::uint32_t height) {
  std::string bytes = pngBytes(1, 1, 0);
  bytes.replace(16, 8, big(width) + big(height));
  const auto* header = reinterpret_cast<const Bytef*>(bytes.data() + 12);
  return bytes.replace(29, 4, big(static_cast<std::uint32_t>(crc32(0, header, 17))));
}

std::string bmpBytes(std::uint32_t width, std::uint32_t height, std::uint32_t rgb) {
  std::string pixels;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) pixels += little(rgb, 3);
    pixels.resize((pixels.size() + 3) / 4 * 4);
  }
  return "BM" + little(static_cast<std::uint32_t>(54 + pixels.size()), 4) + little(0, 4) +
         little(54, 4) + infoHeader(width, height, 24) + pixels;
}

std::string icoBytes(std::uint32_t edge, std::uint32_t argb) {
  std::string image = infoHeader(edge, edge * 2, 32);
  for (std::uint32_t i = 0; i < edge * edge; ++i) image += little(argb, 4);
  image += std::string((edge + 31) / 32 * 4 * edge, '\0');
  return std::string("\0\0\1\0\1\0", 6) + little(edge, 1) + little(edge, 1) + little(0, 2) +
         little(1, 2) + little(32, 2) + little(static_cast<std::uint32_t>(image.size()), 4) +
         little(22, 4) + image;
}

std::string gifBytes() {
  return fromHex(
      "47494638396105000300F0000010203000000021F904000A00000021FF0B4E45545343415045322E3003"
      "010000002C0000000005000300000203848F590021F904000A0000002C000000000500030080FF000000"
      "00000203848F59003B");
}

std::string jpegBytes() {
  return fromHex(
      "FFD8FFE000104A46494600010100000100010000FFDB0043000A07070807060A0808080B0A0A0B0E1810"
      "0E0D0D0E1D15161118231F2524221F2221262B372F26293429212230413134393B3E3E3E252E4449433C"
      "48373D3E3BFFDB0043010A0B0B0E0D0E1C10101C3B2822283B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B"
      "3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3B3BFFC00011080008000803"
      "012200021101031101FFC4001500010100000000000000000000000000000006FFC40014100100000000"
      "000000000000000000000000FFC4001501010100000000000000000000000000000406FFC40014110100"
      "000000000000000000000000000000FFDA000C03010002110311003F009B0065F3FFD9");
}

}  // namespace varnowick
