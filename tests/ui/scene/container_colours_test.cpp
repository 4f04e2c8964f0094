// What the colours of containers come to on the scene.
#include <gtest/gtest.h>

#include "containers/colours.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

struct ContainerColoursOnScene : testing::Test {
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

TEST_F(ContainerColoursOnScene, AResetEndsInTheUsualLookWhateverThatBecomes) {
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

TEST_F(ContainerColoursOnScene, ChoosingTheUsualOnesLooksUsual) {
  const Palette usual = shown(one);
  applyColours(workspace, {one}, usualColours(settings));
  EXPECT_EQ(shown(one).bodyTop, usual.bodyTop);
  EXPECT_EQ(shown(one).titleTop, usual.titleTop);
  EXPECT_EQ(shown(one).text, usual.text);
}

}  // namespace
}  // namespace varnowick
