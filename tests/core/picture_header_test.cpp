#include "core/picture_header.h"

#include <gtest/gtest.h>

#include <string>

namespace varnowick {
namespace {

using Format = PictureFormat;

// Bytes in hexadecimal, with texts between slashes; what comes behind is zero.
std::string fileOf(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '/') {
      const std::size_t end = text.find('/', i + 1);
      out += text.substr(i + 1, end - i - 1);
      i = end;
    } else if (text[i] != ' ') {
      out.push_back(static_cast<char>(std::stoi(std::string(text.substr(i++, 2)), nullptr, 16)));
    }
  }
  out.resize(64, '\0');
  return out;
}

TEST(PictureHeader, ReadsTheClaimedSize) {
  const struct {
    const char* name;
    std::string data;
    Format format;
    std::uint32_t width, height;
  } rows[] = {
      {"png", "89/PNG/0D0A1A0A 0000000D/IHDR/ 00010102 03000009", Format::Png, 65794, 50331657},
      {"png of no width", "89/PNG/0D0A1A0A 0000000D/IHDR/ 00000000 00000009", Format::Unknown, 0,
       0},
      {"gif", "/GIF89a/ 1001 0500", Format::Gif, 272, 5},
      {"older gif", "/GIF87a/ 0100 0002", Format::Gif, 1, 512},
      {"bmp, rows from the top", "/BM/ 0000 0000 0000 0000 0000 0000 28000000 07000100 FEFFFFFF",
       Format::Bmp, 65543, 2},
      {"old bmp", "/BM/ 0000 0000 0000 0000 0000 0000 0C000000 0700 0300", Format::Bmp, 7, 3},
      {"jpeg behind another segment", "FFD8 FFE0 0004 0102 FFFF C2 0011 08 0005 0100", Format::Jpeg,
       256, 5},
      {"jpeg, tables are no frames", "FFD8 FFC4 0002 FFC8 0002 FFCC 0002 FFCF 0011 08 0005 0100",
       Format::Jpeg, 256, 5},
      {"jpeg, a frame of another kind", "FFD8 FFC0 0011 08 0005 0100", Format::Jpeg, 256, 5},
      {"jpeg, segment of no length", "FFD8 FFE0 0000 FFC0 0011 08 0005 0100", Format::Unknown, 0,
       0},
      {"jpeg, data before a frame", "FFD8 FFDA 0004 0000 FFC0 0011 08 0005 0100", Format::Unknown,
       0, 0},
      {"ico", "0000 0100 0100 00000000 0100 2000 28000000 16000000 28000000 10000000 20000000",
       Format::Ico, 16, 16},
      {"ico that points outside", "0000 0100 0100 00000000 0100 2000 28000000 FFFFFFFF",
       Format::Unknown, 0, 0},
      {"ico with a picture that is cut off",
       "0000 0100 0100 00000000 0100 2000 28000000 2C000000" + std::string(44, '0') +
           "28000000 10000000 20000000",
       Format::Unknown, 0, 0},
      {"ico of a png",
       "0000 0100 0100 00000000 0100 2000 28000000 16000000 89/PNG/0D0A1A0A 0000000D/IHDR/ "
       "00000030 00000020",
       Format::Ico, 48, 32},
      {"ico of nothing", "0000 0100 0000", Format::Unknown, 0, 0},
      {"text", "/hello/", Format::Unknown, 0, 0},
  };
  for (const auto& row : rows) {
    const std::string data = fileOf(row.data);
    const PictureHeader header = readPictureHeader(data);
    EXPECT_EQ(header.format, row.format) << row.name;
    EXPECT_EQ(header.width, row.width) << row.name;
    EXPECT_EQ(header.height, row.height) << row.name;
    // Cut anywhere, it is read without a step outside.
    for (std::size_t cut = 0; cut < data.size(); ++cut) readPictureHeader(data.substr(0, cut));
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
