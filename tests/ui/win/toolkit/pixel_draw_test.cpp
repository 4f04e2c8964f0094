#include "ui/win/toolkit/pixel_draw.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

Bitmap plain(int width, int height, std::uint32_t pixel) {
  return {width, height,
          std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), pixel)};
}

TEST(Scaled, KeepsPlainColoursAndMeans) {
  for (const auto& [width, height] : {std::pair{1, 1}, {7, 3}, {16, 16}, {33, 64}, {100, 1}}) {
    const Bitmap result = scaled(plain(16, 16, 0x80402010), width, height);
    ASSERT_EQ(result.pixels.size(), static_cast<std::size_t>(width * height));
    for (const std::uint32_t pixel : result.pixels) ASSERT_EQ(pixel, 0x80402010U);
  }
  // Fine stripes become their mean, not one of the two.
  Bitmap stripes = plain(64, 64, 0xFF000000);
  for (std::size_t i = 0; i < stripes.pixels.size(); i += 2) stripes.pixels[i] = 0xFFFFFFFF;
  for (const std::uint32_t pixel : scaled(stripes, 8, 8).pixels) {
    EXPECT_NEAR(static_cast<int>(pixel & 0xFF), 128, 8);
  }
  EXPECT_TRUE(scaled(plain(4, 4, 1), 0, 5).empty());
  EXPECT_TRUE(scaled({}, 5, 5).empty());
}

TEST(BitmapPixels, BlendsInsideTheClip) {
  std::vector<std::uint32_t> target(100, 0xFFFFFFFF);
  const PixelSurface to{target.data(), 10, {2_px, 2_px, 5_px, 5_px}};
  bitmapPixels(to, {0_px, 0_px}, plain(10, 10, 0xFF102030));
  EXPECT_EQ(target[22], 0xFF102030U);
  EXPECT_EQ(target[66], 0xFF102030U);
  EXPECT_EQ(target[21], 0xFFFFFFFFU);
  EXPECT_EQ(target[67], 0xFFFFFFFFU);
  bitmapPixels(to, {Pixels{-7}, Pixels{-7}}, plain(10, 10, 0x80800000));
  EXPECT_NEAR(static_cast<int>(target[22] >> 16 & 0xFF), 128 + 8, 1);
  EXPECT_EQ(target[33], 0xFF102030U) << "beyond the bitmap's end";
  bitmapPixels(to, {4_px, 4_px}, plain(3, 3, 0));
  EXPECT_EQ(target[44], 0xFF102030U) << "clear pixels change nothing";
}

}  // namespace
}  // namespace varnowick
