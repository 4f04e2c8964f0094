#include "ui/scene/palette.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(PaletteTest, TextCanBeReadOnWhateverTheUserChose) {
  const Colour choices[] = {rgb(0, 0, 0),   rgb(255, 255, 255), rgb(128, 128, 128),
                            rgb(255, 0, 0), rgb(255, 255, 0),   rgb(34, 42, 54)};
  for (const Colour ground : choices)
    for (const Colour ink : choices) {
      Settings settings;
      settings.background = settings.containerFor = settings.containerLabel = ground;
      settings.containerTextBack = ground;
      settings.foreground = settings.containerTextFor = settings.dockingColor = ink;
      const Palette base = makePalette(settings);
      NodeLook look;
      look.back = ground;
      look.fore = ink;
      for (const Palette& p : {base, inContainer(base, look)}) {
        EXPECT_GE(contrast(p.text, p.backTop), 2) << ground.bgr << " " << ink.bgr;
        EXPECT_GE(contrast(p.barText, p.barTop), 2);
        EXPECT_GE(contrast(p.bodyText, p.bodyTop), 2);
        EXPECT_GE(contrast(p.titleText, p.titleTop), 2);
        EXPECT_GE(contrast(p.noteText, p.noteBack), 2);
        EXPECT_GE(contrast(p.accent, ground), 1.5F);
      }
    }
}

TEST(PaletteTest, HighContrastUsesTheSystemsColoursAlone) {
  const SystemColours system{rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 255), rgb(0, 0, 1),
                             rgb(0, 0, 2), rgb(255, 255, 254), rgb(0, 255, 0)};
  const Palette p = makeHighContrastPalette({}, system);
  NodeLook look;
  look.back = rgb(200, 0, 0);
  look.fore = rgb(0, 0, 200);
  const Palette own = inContainer(p, look);
  EXPECT_EQ(own.bodyTop, system.window);
  EXPECT_EQ(own.text, system.windowText);
  EXPECT_EQ(own.titleText, system.buttonText);
  EXPECT_EQ(own.selectedText, system.highlightText);
  EXPECT_EQ(p.backTop, p.backBottom);
}

}  // namespace
}  // namespace varnowick
