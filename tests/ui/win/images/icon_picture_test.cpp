#include "ui/win/images/icon_picture.h"

#include <gtest/gtest.h>

#include "platform/win32/handles.h"
#include "tests/ui/win/images/picture_bytes.h"

namespace varnowick {
namespace {

std::string little(std::size_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i)));
  return out;
}

// The images of several icon files in one; PNG files go in as they are.
std::string together(const std::vector<std::pair<std::size_t, std::string>>& images) {
  std::string file("\0\0\1\0", 4);
  file += little(images.size(), 2);
  std::string data;
  for (const auto& [edge, bytes] : images) {
    const std::string image = bytes.starts_with("\x89PNG") ? bytes : bytes.substr(22);
    file += little(edge, 1) + little(edge, 1) + little(0, 2) + little(1, 2) + little(32, 2) +
            little(image.size(), 4) + little(6 + images.size() * 16 + data.size(), 4);
    data += image;
  }
  return file + data;
}

class IconPictureTest : public testing::Test {
 protected:
  static std::uint32_t middle(const std::string& bytes, int edge) {
    const Bitmap bitmap = decodeIconPicture(bytes, edge);
    if (bitmap.width != edge || bitmap.height != edge) return 1;
    return bitmap.pixels[static_cast<std::size_t>(edge / 2 * edge + edge / 2)];
  }

 private:
  ComApartment com_;
};

TEST_F(IconPictureTest, TakesTheImageThatFits) {
  const std::string file = together({{16, icoBytes(16, 0xFF0000FF)},
                                     {48, pngBytes(48, 48, 0xFF00FF00)},
                                     {32, icoBytes(32, 0x80800000)}});
  EXPECT_EQ(middle(file, 16), 0xFF0000FFU);
  EXPECT_EQ(middle(file, 40), 0xFF00FF00U);
  EXPECT_EQ(middle(file, 64), 0xFF00FF00U);
  EXPECT_EQ(middle(file, 32) >> 24, 0x80U) << "soft edges";
  EXPECT_EQ(middle(bmpBytes(16, 16, 0x102030), 20), 0xFF102030U);
}

TEST_F(IconPictureTest, GivesMarginsToWhatIsNotSquare) {
  const Bitmap bitmap = decodeIconPicture(pngBytes(40, 20, 0xFF102030), 20);
  ASSERT_EQ(bitmap.pixels.size(), 400U);
  EXPECT_EQ(bitmap.pixels[10], 0U);
  EXPECT_EQ(bitmap.pixels[10 * 20], 0xFF102030U);
  EXPECT_EQ(bitmap.pixels[10 * 20 + 19], 0xFF102030U);
  EXPECT_EQ(bitmap.pixels[19 * 20 + 10], 0U);
}

// Whatever a site has sent, the result is of the size that was asked for, or none.
TEST_F(IconPictureTest, SurvivesDamage) {
  const std::string file =
      together({{16, icoBytes(16, 0xFF0000FF)}, {24, pngBytes(24, 24, 0xFF00FF00)}});
  for (std::size_t i = 0; i < file.size(); i += i < 120 ? 1 : 37) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(~damaged[i]);
    for (const std::string& bytes : {damaged, file.substr(0, i)}) {
      const Bitmap bitmap = decodeIconPicture(bytes, 20);
      EXPECT_TRUE(bitmap.empty() || bitmap.pixels.size() == 400U) << i;
    }
  }
}

}  // namespace
}  // namespace varnowick
