#include "ui/win/images/picture_decoder.h"

#include <gtest/gtest.h>

#include "platform/win32/handles.h"
#include "platform/win32/win32_files.h"
#include "tests/support/temp_folder.h"
#include "tests/ui/win/images/picture_bytes.h"
#include "ui/win/images/icon_bitmap.h"

namespace varnowick {
namespace {

class PictureDecoder : public testing::Test {
  ComApartment com_;
};

TEST_F(PictureDecoder, DecodesWithTransparency) {
  const struct {
    const char* name;
    std::string bytes;
    std::uint32_t pixel;  // premultiplied
  } rows[] = {
      {"opaque png", pngBytes(5, 3, 0xFF102030), 0xFF102030},
      {"half transparent png", pngBytes(5, 3, 0x80FF0000), 0x80800000},
      {"clear png", pngBytes(5, 3, 0x00FFFFFF), 0x00000000},
      {"bmp", bmpBytes(5, 3, 0x102030), 0xFF102030},
      {"the first frame of a gif", gifBytes(), 0xFF102030},
  };
  for (const auto& row : rows) {
    const Bitmap bitmap = decodePicture(row.bytes, 100);
    ASSERT_EQ(bitmap.width, 5) << row.name;
    ASSERT_EQ(bitmap.height, 3) << row.name;
    EXPECT_EQ(bitmap.pixels.front(), row.pixel) << row.name;
    EXPECT_EQ(bitmap.pixels.back(), row.pixel) << row.name;
  }
  EXPECT_FALSE(decodePicture(icoBytes(16, 0xFF00FF00), 100).empty());
  const Bitmap jpeg = decodePicture(jpegBytes(), 100);
  ASSERT_EQ(jpeg.width, 8);
  const std::uint32_t pixel = jpeg.pixels.front();
  EXPECT_NEAR(static_cast<int>(pixel >> 16 & 0xFF), 0xC0, 6);
  EXPECT_NEAR(static_cast<int>(pixel >> 8 & 0xFF), 0x20, 6);
  EXPECT_NEAR(static_cast<int>(pixel & 0xFF), 0x40, 6);
}

TEST_F(PictureDecoder, ShrinksToTheLongestEdgeAndKeepsTheColour) {
  const Bitmap bitmap = decodePicture(pngBytes(100, 40, 0xFF336699), 50);
  EXPECT_EQ(bitmap.width, 50);
  EXPECT_EQ(bitmap.height, 20);
  for (const std::uint32_t pixel : bitmap.pixels) ASSERT_EQ(pixel, 0xFF336699U);
}

TEST_F(PictureDecoder, RefusesWhatIsNoPictureOrClaimsTooMuch) {
  EXPECT_TRUE(decodePicture("", 100).empty());
  EXPECT_TRUE(decodePicture("just a text that someone has called picture.png", 100).empty());
  EXPECT_TRUE(decodePicture(pngClaiming(60000, 60000), 100).empty());
  EXPECT_TRUE(decodePicture(pngClaiming(0xFFFFFFFF, 1), 100).empty());
  EXPECT_TRUE(decodePicture(pngClaiming(0, 0), 100).empty());
  EXPECT_TRUE(loadPictureFile(L"Z:\\no such\\file.png", 100).empty());
  const TempFolder folder;
  const std::pair<const wchar_t*, std::string> files[] = {{L"claim", pngClaiming(60000, 60000)},
                                                          {L"fine", jpegBytes()}};
  for (const auto& [name, bytes] : files) ASSERT_TRUE(Win32Files().write(folder / name, bytes));
  EXPECT_FALSE(pictureSizeOf(folder / L"claim") || pictureSizeOf(folder / L"missing"));
  EXPECT_EQ(pictureSizeOf(folder / L"fine"), (Size<Pixels>{{8}, {8}}));
}

// Whatever comes of a damaged file, it has the size it says it has.
TEST_F(PictureDecoder, SurvivesDamage) {
  for (const std::string& whole : {pngBytes(9, 9, 0xFF102030), bmpBytes(9, 9, 0x102030),
                                   icoBytes(16, 0xFF102030), gifBytes(), jpegBytes()}) {
    for (std::size_t length = 0; length < whole.size(); length += 7) {
      const Bitmap cut = decodePicture(std::string_view(whole).substr(0, length), 100);
      EXPECT_EQ(cut.pixels.size(), static_cast<std::size_t>(cut.width * cut.height));
      std::string damaged = whole;
      damaged[length] = static_cast<char>(~damaged[length]);
      const Bitmap other = decodePicture(damaged, 100);
      EXPECT_EQ(other.pixels.size(), static_cast<std::size_t>(other.width * other.height));
    }
  }
}

TEST_F(PictureDecoder, IconsOfFilesComeAtTheWantedSize) {
  const TempFolder folder;
  const std::wstring icon = folder / L"green.ico";
  ASSERT_TRUE(Win32Files().write(icon, icoBytes(32, 0xFF00C000)));
  for (const int edge : {16, 20, 32, 48}) {
    const Bitmap bitmap = loadIconOf(icon, edge);
    ASSERT_EQ(bitmap.width, edge);
    ASSERT_EQ(bitmap.height, edge);
    const std::uint32_t middle = bitmap.pixels[bitmap.pixels.size() / 2];
    EXPECT_EQ(middle, 0xFF00C000U) << edge;
  }
  EXPECT_FALSE(loadIconOf(folder.path(), 32).empty()) << "a folder";
  EXPECT_TRUE(loadIconOf(folder / L"missing and without extension", 32).empty());
  EXPECT_TRUE(loadIconOf(L"", 32).empty());
  EXPECT_TRUE(loadIconOf(icon, 0).empty());
  EXPECT_TRUE(loadIconOf(icon, 100000).empty());
}

TEST_F(PictureDecoder, KnowsSlowPathsAndAddressesByName) {
  const struct {
    const wchar_t* path;
    bool address;
  } rows[] = {{L"http://example.org/a.b", true},
              {L"mailto:someone@example.org", true},
              {L"C:\\a.exe", false},
              {L"\\\\server\\share\\a:b", false},
              {L"folder\\http://x", false},
              {L"", false}};
  for (const auto& row : rows) EXPECT_EQ(isAddress(row.path), row.address);
  EXPECT_TRUE(mayBeSlow(L"\\\\server\\share\\a.exe"));
  EXPECT_TRUE(mayBeSlow(L"Q:\\no such drive"));
  EXPECT_FALSE(mayBeSlow(L"C:\\windows"));
}

}  // namespace
}  // namespace varnowick
