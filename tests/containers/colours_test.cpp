#include "containers/colours.h"

#include <gtest/gtest.h>

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

TEST(Colours, AreGivenToContainersAndNeverHideTheText) {
  Workspace workspace;
  const ContainerSlot one = workspace.containers.add({}), two = workspace.containers.add({});
  const ContainerColours red{rgb(200, 0, 0), rgb(255, 255, 0)};
  EXPECT_FALSE(ownColours(workspace.containers[one])) << "a new container has none";
  EXPECT_EQ(applyColours(workspace, {one, {99}, two}, red), (std::vector{one, two}));
  EXPECT_EQ(ownColours(workspace.containers[two]), red);
  EXPECT_TRUE(applyColours(workspace, {one, two}, red).empty()) << "nothing to save";
  const Colour white = rgb(255, 255, 255), black = rgb(0, 0, 0);
  for (const auto& [ground, ink] : {std::pair{black, white},
                                    {white, black},
                                    {rgb(10, 200, 30), white},
                                    {rgb(10, 220, 30), black}}) {
    applyColours(workspace, {one}, ContainerColours{ground, ground});
    EXPECT_EQ(ownColours(workspace.containers[one]), (ContainerColours{ground, ink}));
  }
}

}  // namespace
}  // namespace varnowick
