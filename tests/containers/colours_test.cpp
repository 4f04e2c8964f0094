#include "containers/colours.h"

#include <gtest/gtest.h>

#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

TEST(Colours, GetLighterAndDarker) {
  const struct {
    Colour from;
    int percent;
    Colour lighter, darker;
  } cases[] = {
      {rgb(100, 0, 200), 0, rgb(100, 0, 200), rgb(100, 0, 200)},
      {rgb(100, 0, 200), 10, rgb(116, 26, 206), rgb(90, 0, 180)},
      {rgb(100, 0, 200), 100, rgb(255, 255, 255), rgb(0, 0, 0)},
      {rgb(0, 0, 0), 10, rgb(26, 26, 26), rgb(0, 0, 0)},
      {rgb(255, 255, 255), 250, rgb(255, 255, 255), rgb(0, 0, 0)},
      {rgb(1, 2, 3), -5, rgb(1, 2, 3), rgb(1, 2, 3)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(lighter(c.from, c.percent), c.lighter) << c.percent;
    EXPECT_EQ(darker(c.from, c.percent), c.darker) << c.percent;
  }
}

struct ColoursOfContainers : testing::Test {
  Settings settings;
  Workspace workspace;
  ContainerSlot one = workspace.containers.add({});
  ContainerSlot two = workspace.containers.add({});
  const ContainerColours red{rgb(200, 0, 0), rgb(255, 255, 0)};

  Palette shown(ContainerSlot slot) {
    WorkspaceScene view(settings, workspace);
    view.build({});
    const Node* node = view.scene().find(containerNode(slot));
    return inContainer(makePalette(settings), node->look);
  }
};

TEST_F(ColoursOfContainers, AreGivenToAll) {
  EXPECT_FALSE(ownColours(workspace.containers[one])) << "a new container has none";
  EXPECT_EQ(applyColours(workspace, {one, {99}, two}, red), (std::vector{one, two}));
  EXPECT_EQ(ownColours(workspace.containers[two]), red);
  EXPECT_TRUE(applyColours(workspace, {one, two}, red).empty()) << "nothing to save";
}

TEST_F(ColoursOfContainers, AResetEndsInTheUsualLookWhateverThatBecomes) {
  const Palette usual = shown(one);
  applyColours(workspace, {one}, red);
  EXPECT_NE(shown(one).bodyTop, usual.bodyTop);
  applyColours(workspace, {one}, std::nullopt);
  EXPECT_EQ(shown(one).bodyTop, usual.bodyTop);
  EXPECT_EQ(shown(one).titleTop, usual.titleTop);
  EXPECT_EQ(shown(one).text, usual.text);
  settings.containerFor = rgb(250, 250, 250);
  settings.foreground = rgb(0, 0, 0);
  EXPECT_EQ(shown(one).bodyTop, shown(two).bodyTop);
  EXPECT_NE(shown(one).bodyTop, usual.bodyTop);
}

TEST_F(ColoursOfContainers, ChoosingTheUsualOnesLooksUsual) {
  const Palette usual = shown(one);
  applyColours(workspace, {one}, usualColours(settings));
  EXPECT_EQ(shown(one).bodyTop, usual.bodyTop);
  EXPECT_EQ(shown(one).titleTop, usual.titleTop);
  EXPECT_EQ(shown(one).text, usual.text);
}

TEST_F(ColoursOfContainers, TextNeverHasTheColourOfItsGround) {
  for (const Colour colour : {rgb(0, 0, 0), rgb(255, 255, 255), rgb(10, 200, 30)}) {
    applyColours(workspace, {one}, ContainerColours{colour, colour});
    ASSERT_TRUE(ownColours(workspace.containers[one])) << colour.bgr;
    EXPECT_EQ(ownColours(workspace.containers[one])->back, colour);
  }
}

}  // namespace
}  // namespace varnowick
