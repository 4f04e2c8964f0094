#include "core/picture_header.h"

#include <gtest/gtest.h>

#include <string>

namespace varnowick {
namespace {

using Format = PictureFormat;

std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (const int v : values) out.push_back(static_cast<char>(v));
  return out;
}

std::string padded(std::string text) {
  text.resize(64, '\0');
  return text;
}

TEST(PictureHeader, ReadsTheClaimedSize) {
  const std::string png = "\x89PNG\r\n\x1A\n" + bytes({0, 0, 0, 13}) + "IHDR";
  const struct {
    const char* name;
    std::string data;
    Format format;
    std::uint32_t width, height;
  } rows[] = {
      {"png", padded(png + bytes({0, 0, 1, 2, 0, 0, 0, 9})), Format::Png, 258, 9},
      {"png of no width", padded(png + bytes({0, 0, 0, 0, 0, 0, 0, 9})), Format::Unknown, 0, 0},
      {"gif", padded("GIF89a" + bytes({0x10, 0x01, 5, 0})), Format::Gif, 272, 5},
      {"bmp, rows from the top",
       padded("BM" + std::string(12, '\0') +
              bytes({40, 0, 0, 0, 7, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF})),
       Format::Bmp, 7, 2},
      {"old bmp", padded("BM" + std::string(12, '\0') + bytes({12, 0, 0, 0, 7, 0, 3, 0})),
       Format::Bmp, 7, 3},
      {"jpeg behind another segment",
       padded(bytes({0xFF, 0xD8, 0xFF, 0xE0, 0, 4, 1, 2, 0xFF, 0xFF, 0xC2, 0, 17, 8, 0, 5, 1, 0})),
       Format::Jpeg, 256, 5},
      {"jpeg, segment of no length", padded(bytes({0xFF, 0xD8, 0xFF, 0xE0, 0, 0, 0xFF, 0xC0})),
       Format::Unknown, 0, 0},
      {"jpeg, data before a frame", padded(bytes({0xFF, 0xD8, 0xFF, 0xDA, 0, 4})), Format::Unknown,
       0, 0},
      {"ico", padded(bytes({0, 0,  1, 0, 1, 0,  0, 0, 0, 0,  1, 0, 32, 0,  40, 0, 0,
                            0, 22, 0, 0, 0, 40, 0, 0, 0, 16, 0, 0, 0,  32, 0,  0, 0})),
       Format::Ico, 16, 16},
      {"ico that points outside", padded(bytes({0, 0,  1, 0,  1, 0, 0, 0,    0,    0,    1,
                                                0, 32, 0, 40, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF})),
       Format::Unknown, 0, 0},
      {"ico of nothing", padded(bytes({0, 0, 1, 0, 0, 0})), Format::Unknown, 0, 0},
      {"text", padded("hello"), Format::Unknown, 0, 0},
      {"empty", "", Format::Unknown, 0, 0},
  };
  for (const auto& row : rows) {
    const PictureHeader header = readPictureHeader(row.data);
    EXPECT_EQ(header.format, row.format) << row.name;
    EXPECT_EQ(header.width, row.width) << row.name;
    EXPECT_EQ(header.height, row.height) << row.name;
    // Cut anywhere, it is read without a step outside.
    for (std::size_t cut = 0; cut < row.data.size(); ++cut) {
      readPictureHeader(std::string(row.data, 0, cut));
    }
  }
}

TEST(PictureHeader, LimitsAreOnPixelsAndEdges) {
  EXPECT_TRUE(isDecodable({Format::Png, 8000, 8000}));
  EXPECT_FALSE(isDecodable({Format::Png, 8001, 8000}));
  EXPECT_TRUE(isDecodable({Format::Jpeg, 32768, 1}));
  EXPECT_FALSE(isDecodable({Format::Jpeg, 1, 32769}));
  EXPECT_FALSE(isDecodable({Format::Png, 0xFFFFFFFF, 0xFFFFFFFF}));
  EXPECT_FALSE(isDecodable({Format::Unknown, 1, 1}));
}

}  // namespace
}  // namespace varnowick
