#include "core/png.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace varnowick {
namespace {

using Pixels = std::vector<std::uint32_t>;

std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (const int value : values) out.push_back(static_cast<char>(value));
  return out;
}

std::string chunk(const std::string& type, const std::string& data) {
  const auto number = [](std::size_t v) {
    return bytes({static_cast<int>(v >> 24 & 255), static_cast<int>(v >> 16 & 255),
                  static_cast<int>(v >> 8 & 255), static_cast<int>(v & 255)});
  };
  const std::string body = type + data;
  return number(data.size()) + body +
         number(
             crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size())));
}

std::string deflated(const std::string& rows) {
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  std::string out(size, '\0');
  compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(rows.data()),
           static_cast<uLong>(rows.size()));
  out.resize(size);
  return out;
}

// The parts before the pixels are whole chunks.
std::string png(int width, int height, int depth, int type, const std::string& rows,
                const std::string& before = {}, int interlaced = 0) {
  const std::string data = deflated(rows);
  return "\x89PNG\r\n\x1A\n" +
         chunk("IHDR", bytes({0, 0, width >> 8, width & 255, 0, 0, height >> 8, height & 255, depth,
                              type, 0, 0, interlaced})) +
         before + chunk("IDAT", data.substr(0, 3)) + chunk("IDAT", data.substr(3)) +
         chunk("IEND", "");
}

TEST(PngTest, DecodesEveryColourType) {
  const std::string palette = chunk("PLTE", bytes({255, 0, 0, 0, 255, 0, 0, 0, 255}));
  const struct {
    const char* name;
    std::string file;
    Pixels pixels;
  } cases[] = {
      {"grey, 1 bit",
       png(3, 1, 1, 0, bytes({0, 0b10100000})),
       {0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF}},
      {"grey, 2 bits", png(2, 1, 2, 0, bytes({0, 0b01100000})), {0xFF555555, 0xFFAAAAAA}},
      {"grey with a clear level",
       png(2, 1, 8, 0, bytes({0, 7, 9}), chunk("tRNS", bytes({0, 7}))),
       {0, 0xFF090909}},
      {"grey, 16 bits", png(1, 1, 16, 0, bytes({0, 0x12, 0x99})), {0xFF121212}},
      {"grey and alpha", png(1, 1, 8, 4, bytes({0, 255, 128})), {0x80808080}},
      {"colours", png(1, 2, 8, 2, bytes({0, 1, 2, 3, 0, 4, 5, 6})), {0xFF010203, 0xFF040506}},
      {"colours with a clear one",
       png(2, 1, 8, 2, bytes({0, 1, 2, 3, 1, 2, 4}), chunk("tRNS", bytes({0, 1, 0, 2, 0, 3}))),
       {0, 0xFF010204}},
      {"palette, 4 bits, partly clear, and an index beyond it",
       png(3, 1, 4, 3, bytes({0, 0x01, 0x90}), palette + chunk("tRNS", bytes({128}))),
       {0x80800000, 0xFF00FF00, 0xFF000000}},
      {"colours, 16 bits and alpha",
       png(1, 1, 16, 6, bytes({0, 10, 0, 20, 0, 30, 0, 255, 255})),
       {0xFF0A141E}},
      {"every filter",
       png(2, 5, 8, 0, bytes({0, 10, 20, 1, 10, 10, 2, 1, 1, 3, 5, 5, 4, 1, 1})),
       {0xFF0A0A0A, 0xFF141414, 0xFF0A0A0A, 0xFF141414, 0xFF0B0B0B, 0xFF151515, 0xFF0A0A0A,
        0xFF141414, 0xFF0B0B0B, 0xFF151515}},
  };
  for (const auto& c : cases) {
    const auto picture = decodePng(c.file);
    ASSERT_TRUE(picture) << c.name;
    EXPECT_EQ(picture->pixels, c.pixels) << c.name;
  }
}

TEST(PngTest, RefusesWhatItCannotDecode) {
  std::string decoded;  // types with their depths
  for (int type = 0; type < 8; ++type)
    for (int depth = 0; depth < 33; ++depth)
      if (decodePng(png(1, 1, depth, type, std::string(9, '\0'))))
        decoded += " " + std::to_string(type) + ":" + std::to_string(depth);
  EXPECT_EQ(decoded, " 0:1 0:2 0:4 0:8 0:16 2:8 2:16 3:1 3:2 3:4 3:8 4:8 4:16 6:8 6:16");
  const std::string row = bytes({0, 1, 2, 3, 4});
  std::string badSum = png(1, 1, 8, 6, row);
  badSum[20] = 9;
  const std::pair<const char*, std::string> cases[] = {
      {"nothing", ""},
      {"another file", "GIF89a and more"},
      {"interlaced", png(1, 1, 8, 6, row, {}, 1)},
      {"no width", png(0, 1, 8, 6, row)},
      {"no such filter", png(1, 1, 8, 6, bytes({5, 1, 2, 3, 4}))},
      {"too few rows", png(1, 2, 8, 6, row)},
      {"claims far more than it has", png(4000, 4000, 8, 6, row)},
      {"claims more than there may be", png(30000, 30000, 1, 0, row)},
      {"wrong checksum", badSum}};
  for (const auto& [name, file] : cases) EXPECT_FALSE(decodePng(file)) << name;
  const std::string whole = png(1, 1, 8, 6, row);
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(decodePng(whole.substr(0, length))) << length;
}

TEST(PngTest, ComesBackAsItWasEncoded) {
  PngPicture picture{16, 16, {}};
  for (std::uint32_t alpha = 0; alpha < 256; ++alpha)
    picture.pixels.push_back(alpha << 24 | alpha << 16 | alpha / 2 << 8 | alpha / 5);
  const auto back = decodePng(encodePng(picture));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->width, 16);
  EXPECT_EQ(back->pixels, picture.pixels);
  EXPECT_EQ(encodePng({2, 2, {1, 2, 3}}), "");
  EXPECT_EQ(encodePng({}), "");
}

}  // namespace
}  // namespace varnowick
