#include "ui/scene/toolbar_scene.h"

#include <gtest/gtest.h>

#include <set>

#include "ui/scene/accessibility.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

std::vector<std::wstring> buttons(const Scene& scene) {
  std::vector<std::wstring> names;
  const InputState input(scene);
  for (const AccessibleItem& item : accessibleItems(scene, input))
    if (toolbarCommand(item.id.kind) != Command::None) names.push_back(item.name);
  return names;
}

TEST(ToolbarScene, HasTheButtonsOfTheBar) {
  for (const bool locked : {false, true}) {
    const Settings settings;
    const Workspace workspace;
    WorkspaceScene bar(settings, workspace);
    FrameLayout layout;
    layout.locked = locked;
    bar.build(layout);
    Scene toolbar;
    buildToolbar(toolbar, {.look = {.locked = locked}});
    EXPECT_EQ(buttons(toolbar), buttons(bar.scene()));
    layout.toolbar = false;
    bar.setFrame(layout);
    EXPECT_TRUE(buttons(bar.scene()).empty()) << "while they float";
  }
}

TEST(ToolbarScene, EveryButtonCanBeHitAloneInBothDirections) {
  Scene scene;
  for (const bool column : {true, false, true}) {
    const Size<Twips> size = buildToolbar(scene, {.column = column});
    EXPECT_EQ(size.height > size.width, column);
    std::set<NodeId> hit;
    for (float x = 0; x < size.width.value; x += 60)
      for (float y = 0; y < size.height.value; y += 60) hit.insert(scene.hitTest({{x}, {y}}));
    std::size_t count = 0;
    for (const NodeId node : hit) count += toolbarCommand(node.kind) != Command::None ? 1U : 0U;
    EXPECT_EQ(count, 5U);
    for (const NodeId node : scene.visibleNodes()) {
      const TwipsRect r = scene.windowRect(node);
      EXPECT_EQ(r.intersect({{}, {}, size.width, size.height}), r);
      // As far from one side as from the other.
      if (column ? r.left > Twips{} : r.top > Twips{}) {
        EXPECT_EQ(column ? r.left + r.right() : r.top + r.bottom(),
                  column ? size.width : size.height);
      }
    }
  }
}

}  // namespace
}  // namespace varnowick
