#include "ui/win/toolkit/gdi_canvas.h"

#include <gtest/gtest.h>

#include <set>

namespace varnowick {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kRed = 0xFF0000;

class GdiCanvasTest : public testing::Test {
 protected:
  GdiCanvasTest() {
    EXPECT_TRUE(buffer_.resize({40_px, 30_px}));
    canvas().fill(whole(), rgb(255, 255, 255));
  }
  static PixelRect whole() { return {0_px, 0_px, 40_px, 30_px}; }
  GdiCanvas canvas(int dpi = 96) { return {buffer_, fonts_, nullptr, {dpi}}; }
  std::uint32_t at(int x, int y) const {
    GdiFlush();
    return buffer_.pixels()[y * buffer_.stride() + x] & 0xFFFFFF;
  }
  // The rectangle around all pixels that are not white.
  PixelRect inked() const {
    int left = 40, top = 30, right = 0, bottom = 0;
    for (int y = 0; y < 30; ++y) {
      for (int x = 0; x < 40; ++x) {
        if (at(x, y) == kWhite) continue;
        left = std::min(left, x), right = std::max(right, x + 1);
        top = std::min(top, y), bottom = std::max(bottom, y + 1);
      }
    }
    return {{left}, {top}, {right - left}, {bottom - top}};
  }
  BackBuffer buffer_;
  GdiFonts fonts_;
};

TEST_F(GdiCanvasTest, NothingLeavesTheClipOrTheBuffer) {
  const PixelRect clip{5_px, 6_px, 10_px, 8_px};
  const PixelRect huge{Pixels{-100000}, Pixels{-100000}, 200000_px, 200000_px};
  const std::function<void(GdiCanvas&)> drawings[] = {
      [&](GdiCanvas& c) { c.fill(huge, {}); },
      [&](GdiCanvas& c) { c.gradient(huge, {}, rgb(9, 9, 9), true); },
      [&](GdiCanvas& c) { c.gradient(huge, {}, rgb(9, 9, 9), false); },
      [&](GdiCanvas& c) { c.box(huge, 8_px, {}, {}, {}, 0); },
      [&](GdiCanvas& c) {
        c.line({Pixels{-50}, 10_px}, {100_px, 10_px}, {});
      },
      [&](GdiCanvas& c) {
        c.line({Pixels{-50}, Pixels{-50}}, {100_px, 90_px}, {});
      },
      [&](GdiCanvas& c) {
        TextStyle style;
        style.points = 14;
        c.text(huge.intersect(whole()), L"MMMM", style);
      },
  };
  for (const auto& draw : drawings) {
    GdiCanvas c = canvas();
    c.fill(whole(), rgb(255, 255, 255));
    c.pushClip(clip);
    c.pushClip({0_px, 0_px, 12_px, 30_px});
    draw(c);
    c.popClip();
    c.popClip();
    c.popClip();  // one too many is harmless
    const PixelRect ink = inked();
    EXPECT_EQ(ink.intersect({5_px, 6_px, 7_px, 8_px}), ink) << (&draw - drawings);
    EXPECT_FALSE(ink.empty()) << (&draw - drawings);
  }
}

TEST_F(GdiCanvasTest, GradientsReachBothColours) {
  canvas().gradient({0_px, 0_px, 40_px, 11_px}, rgb(0, 0, 0), rgb(200, 100, 50), true);
  EXPECT_EQ(at(3, 0), 0U);
  EXPECT_EQ(at(3, 5), 0x643219U);
  EXPECT_EQ(at(39, 10), 0xC86432U);
  canvas().gradient({0_px, 0_px, 11_px, 30_px}, rgb(0, 0, 0), rgb(200, 100, 50), false);
  EXPECT_EQ(at(0, 29), 0U);
  EXPECT_EQ(at(10, 7), 0xC86432U);
}

TEST_F(GdiCanvasTest, BoxesAreRoundSymmetricAndFramed) {
  const PixelRect box{4_px, 4_px, 20_px, 16_px};
  canvas().box(box, 6_px, rgb(0, 0, 255), rgb(0, 0, 255), rgb(255, 0, 0), 2U);
  EXPECT_EQ(inked(), box);
  EXPECT_EQ(at(4, 4), kWhite) << "rounded away";
  EXPECT_EQ(at(23, 4), kRed) << "the square corner";
  EXPECT_EQ(at(14, 4), kRed);
  EXPECT_EQ(at(14, 5), 0x0000FFU);
  EXPECT_EQ(at(4, 12), kRed);
  EXPECT_EQ(at(23, 19), kWhite);
  std::set<std::uint32_t> shades;
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(at(4 + i, 19), at(4, 19 - i)) << "mirrored at the diagonal";
    EXPECT_EQ(at(4 + i, 19), at(23 - i, 19)) << "left and right";
    shades.insert(at(4 + i, 19));
  }
  EXPECT_GT(shades.size(), 2U) << "edges are smooth";
}

TEST_F(GdiCanvasTest, FramesAndDegenerateBoxesLeaveTheInsideAlone) {
  canvas().frame({2_px, 2_px, 10_px, 10_px}, 0_px, rgb(255, 0, 0));
  EXPECT_EQ(at(2, 2), kRed);
  EXPECT_EQ(at(11, 11), kRed);
  EXPECT_EQ(at(3, 3), kWhite);
  EXPECT_EQ(at(12, 12), kWhite);
  // A radius larger than the box, and boxes of one pixel or none.
  canvas().box({20_px, 2_px, 4_px, 4_px}, 50_px, rgb(255, 0, 0), rgb(255, 0, 0), rgb(255, 0, 0), 0);
  EXPECT_EQ(at(22, 4), kRed);
  canvas().box({30_px, 2_px, 1_px, 1_px}, 3_px, rgb(0, 0, 255), rgb(0, 0, 255), rgb(255, 0, 0), 0);
  EXPECT_EQ(at(30, 2), kRed);
  canvas().box({34_px, 2_px, 0_px, 9_px}, 3_px, {}, {}, {}, 0);
  canvas().box({34_px, 2_px, 9_px, Pixels{-4}}, 3_px, {}, {}, {}, 0);
  EXPECT_EQ(at(34, 2), kWhite);
}

TEST_F(GdiCanvasTest, LinesLeaveOutTheirLastPoint) {
  GdiCanvas c = canvas();
  c.line({2_px, 3_px}, {8_px, 3_px}, {});
  EXPECT_EQ(inked(), (PixelRect{2_px, 3_px, 6_px, 1_px}));
  c.fill(whole(), rgb(255, 255, 255));
  c.line({8_px, 9_px}, {8_px, 4_px}, {});
  EXPECT_EQ(inked(), (PixelRect{8_px, 5_px, 1_px, 5_px}));
  c.fill(whole(), rgb(255, 255, 255));
  c.line({8_px, 9_px}, {8_px, 9_px}, {});
  EXPECT_TRUE(inked().empty());
}

TEST_F(GdiCanvasTest, TextStaysInItsRectangleWhereItIsAligned) {
  const PixelRect room{4_px, 3_px, 30_px, 24_px};
  for (const int rotation : {0, 90, 270}) {
    for (const HAlign horizontal : {HAlign::Left, HAlign::Right}) {
      TextStyle style;
      style.rotation = rotation;
      style.horizontal = horizontal;
      style.vertical = VAlign::Bottom;
      style.points = 6;
      GdiCanvas c = canvas();
      c.fill(whole(), rgb(255, 255, 255));
      c.text(room, L"I", style);
      const PixelRect ink = inked();
      ASSERT_FALSE(ink.empty()) << rotation;
      EXPECT_EQ(ink.intersect(room), ink) << rotation;
      // The side on which the line begins: left, below for text that rises, above
      // for text that falls.
      const bool atStart = horizontal == HAlign::Left;
      const int middleX = ink.left.value + ink.width.value / 2;
      const int middleY = ink.top.value + ink.height.value / 2;
      const bool beginsThere = rotation == 0    ? middleX < 19
                               : rotation == 90 ? middleY > 15
                                                : middleY < 15;
      EXPECT_EQ(beginsThere, atStart) << rotation;
      // The foot of the letters lies at the bottom, right for rising text.
      EXPECT_TRUE(rotation == 0    ? middleY > 15
                  : rotation == 90 ? middleX > 19
                                   : middleX < 19)
          << rotation;
    }
  }
}

TEST_F(GdiCanvasTest, MeasuresWrappedScaledAndHostileText) {
  GdiTextMeasure normal({96});
  GdiTextMeasure dense({192});
  TextStyle style;
  const Size<Pixels> one = normal.measure(L"one two three", style, 1000_px);
  EXPECT_GT(one.width, 0_px);
  EXPECT_EQ(normal.measure(L"", style, 1000_px).height, one.height);
  EXPECT_GT(dense.measure(L"one two three", style, 1000_px).height, one.height);
  style.wrap = true;
  const Size<Pixels> wrapped = normal.measure(L"one two three", style, {one.width.value / 2});
  EXPECT_GE(wrapped.height.value, 2 * one.height.value);
  EXPECT_LE(wrapped.width.value, one.width.value);
  EXPECT_EQ(normal.measure(L"a && b & c", {}, 1000_px).width >
                normal.measure(L"a  b  c", {}, 1000_px).width,
            true)
      << "an ampersand is a character";
  style.points = 1e30F;
  style.face = std::wstring(500, L'x');
  EXPECT_GT(normal.measure(std::wstring(100000, L'\x5D0'), style, 0_px).height, 0_px);
}

TEST_F(GdiCanvasTest, FontsAreCachedAndBounded) {
  TextStyle style;
  const HFONT first = fonts_.get(style, {96});
  EXPECT_EQ(fonts_.get(style, {96}), first);
  for (int i = 0; i < 300; ++i) {
    style.points = 5.0F + static_cast<float>(i);
    ASSERT_NE(fonts_.get(style, {96}), nullptr);
  }
  EXPECT_LE(fonts_.count(), 48U);
}

TEST(BackBufferTest, SizesAndBlits) {
  BackBuffer buffer;
  EXPECT_FALSE(buffer.ready());
  EXPECT_TRUE(buffer.resize({100_px, 50_px}));
  EXPECT_FALSE(buffer.resize({100_px, 50_px})) << "nothing has changed";
  const std::uint32_t* pixels = buffer.pixels();
  EXPECT_TRUE(buffer.resize({90_px, 50_px}));
  EXPECT_EQ(buffer.pixels(), pixels) << "a little smaller needs no new memory";
  EXPECT_TRUE(buffer.resize({0_px, Pixels{-5}}));
  EXPECT_EQ(buffer.size(), (Size<Pixels>{1_px, 1_px}));

  BackBuffer target;
  ASSERT_TRUE(target.resize({20_px, 20_px}));
  ASSERT_TRUE(buffer.resize({20_px, 20_px}));
  fillPixels({buffer.pixels(), buffer.stride(), {0_px, 0_px, 20_px, 20_px}},
             {0_px, 0_px, 20_px, 20_px}, rgb(1, 2, 3));
  buffer.blit(target.dc(), {5_px, 5_px, 100_px, 3_px});
  GdiFlush();
  const auto at = [&](int x, int y) { return target.pixels()[y * target.stride() + x] & 0xFFFFFF; };
  EXPECT_EQ(at(5, 5), 0x010203U);
  EXPECT_EQ(at(19, 7), 0x010203U);
  EXPECT_EQ(at(4, 5), 0U);
  EXPECT_EQ(at(5, 8), 0U);
}

// A process can have some ten thousand GDI objects; each round makes several.
TEST(BackBufferTest, TakesNoHandlesForGood) {
  for (int round = 0; round < 6000; ++round) {
    BackBuffer buffer;
    GdiFonts fonts;
    ASSERT_TRUE(buffer.resize({8_px, 8_px})) << round;
    ASSERT_TRUE(buffer.resize({16_px, 16_px})) << round;
    TextStyle style;
    style.rotation = round % 2 == 0 ? 0 : 90;
    GdiCanvas(buffer, fonts, nullptr, {96}).text({0_px, 0_px, 16_px, 16_px}, L"x", style);
    ASSERT_NE(fonts.get(style, {96}), nullptr) << round;
  }
}

}  // namespace
}  // namespace varnowick
