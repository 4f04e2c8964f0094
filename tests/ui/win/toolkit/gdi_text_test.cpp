#include "ui/win/toolkit/gdi_text.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

// Adding up letters must lay out as GDI draws, in every style that scenes use.
TEST(GdiTextMeasure, AgreesWithGdi) {
  TextStyle bold;
  bold.bold = true;
  bold.points = 7.25F;
  TextStyle large;
  large.face = L"Times New Roman";
  large.points = 24;
  TextStyle wrapped;
  wrapped.wrap = true;
  TextStyle upwards;
  upwards.rotation = 90;
  for (const int dpi : {96, 144}) {
    GdiTextMeasure measure(Density{dpi});
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    GdiFonts fonts;
    for (const TextStyle& style : {TextStyle{}, bold, large, TextStyle{}, wrapped, upwards}) {
      for (const wchar_t* text : {L"", L"i", L" ", L"Shortcut 12-7", L"AVAVA To. fi", L"a & b && c",
                                  L"tab\there", L"two\r\nlines", L"Caf\u00e9 \u20ac", L"~}|{_"}) {
        const Size<Pixels> expected =
            measureGdiText(dc.get(), fonts, Density{dpi}, text, style, Pixels{60});
        const Size<Pixels> size = measure.measure(text, style, Pixels{60});
        EXPECT_NEAR(size.width.value, expected.width.value, 1) << dpi << ' ' << text;
        EXPECT_EQ(size.height, expected.height) << dpi << ' ' << text;
      }
    }
  }
}

}  // namespace
}  // namespace varnowick
