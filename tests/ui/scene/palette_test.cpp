#include "ui/scene/palette.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "containers/colours.h"
#include "ui/scene/workspace_scene.h"

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

// What the shades of the usual colours come to, in rows of a darker and a lighter one.
std::string told(const Palette& p) {
  const std::pair<const char*, std::vector<Colour>> rows[] = {
      {"back", {p.backTop, p.backBottom}},
      {"bar", {p.barTop, p.barBottom, p.barEdge, p.barHover, p.barPressed}},
      {"body", {p.bodyTop, p.bodyBottom}},
      {"title", {p.titleTop, p.titleBottom}},
      {"text", {p.text, p.barText, p.mutedText, p.bodyText, p.titleText, p.selectedText}},
      {"lines", {p.border, p.accent}}};
  std::string all;
  for (const auto& [name, colours] : rows) {
    all += name;
    for (const Colour c : colours) {
      char hex[16];
      std::snprintf(hex, sizeof hex, " %02x%02x%02x", static_cast<unsigned>(c.red()),
                    static_cast<unsigned>(c.green()), static_cast<unsigned>(c.blue()));
      all += hex;
    }
    all += "\n";
  }
  return all;
}

TEST(PaletteTest, ShadesOfTheUsualAndOfALightLook) {
  Settings settings;
  NodeLook red;
  red.back = rgb(150, 40, 40);
  red.fore = rgb(250, 240, 230);
  EXPECT_EQ(told(makePalette(settings)), R"(back 1d242e 262e3a
bar 1b212a 171d25 11151b 32373f 242a33
body 33404e 293543
title 4a627a 374d64
text ebf0f6 c6cbd1 9fa5ad ebf0f6 ebf0f6 ebf0f6
lines 4a5662 4fa3e0
)");
  EXPECT_EQ(told(inContainer(makePalette(settings), red)), R"(back 992e2e 8a2525
bar 1b212a 171d25 11151b 32373f 242a33
body 992e2e 8a2525
title a94d4d 8f3a3a
text faf0e6 c6cbd1 d5a6a0 faf0e6 faf0e6 faf0e6
lines ab5353 4fa3e0
)");
  settings.background = settings.containerFor = rgb(240, 240, 230);
  settings.containerLabel = rgb(200, 210, 220);
  settings.foreground = rgb(20, 30, 40);
  EXPECT_EQ(told(makePalette(settings)), R"(back e3e3d9 f0f0e7
bar dbdbd2 d1d1c9 c0c0b8 c5c5bd d2d2ca
body f0f0e7 ddddd4
title cbd5de b0b9c2
text 141e28 384047 686e70 141e28 141e28 141e28
lines cecec6 4fa3e0
)");
  settings.gradient = false;
  EXPECT_EQ(told(makePalette(settings)).substr(0, 19), "back f0f0e6 f0f0e6\n");
}

// A reset ends in the usual look, whatever that becomes; so does choosing its colours.
TEST(PaletteTest, ContainersComeBackToTheUsualLook) {
  Settings settings;
  Workspace workspace;
  const ContainerSlot one = workspace.containers.add({}), two = workspace.containers.add({});
  const auto shown = [&](ContainerSlot slot) {
    WorkspaceScene view(settings, workspace);
    view.build({});
    return told(inContainer(makePalette(settings), view.scene().find(containerNode(slot))->look));
  };
  const std::string usual = shown(one);
  applyColours(workspace, {one}, ContainerColours{rgb(200, 0, 0), rgb(255, 255, 0)});
  EXPECT_NE(shown(one), usual);
  applyColours(workspace, {one}, std::nullopt);
  EXPECT_EQ(shown(one), usual);
  settings.containerFor = rgb(250, 250, 250);
  settings.foreground = rgb(0, 0, 0);
  EXPECT_EQ(shown(one), shown(two));
  EXPECT_NE(shown(one), usual);
  applyColours(workspace, {one}, usualColours(settings));
  EXPECT_EQ(shown(one), shown(two));
}

}  // namespace
}  // namespace varnowick
