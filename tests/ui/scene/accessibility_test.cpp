#include "ui/scene/accessibility.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

using K = ControlKind;

struct AccessibilityTest : testing::Test {
  Settings settings;
  Workspace workspace;
  WorkspaceScene view{settings, workspace};
  InputState input{view.scene()};
  FrameLayout layout;

  std::vector<AccessibleItem> items() { return accessibleItems(view.scene(), input); }
  // Empty when the node is not listed.
  static AccessibleItem of(const std::vector<AccessibleItem>& items, NodeId id) {
    const auto at = std::find_if(items.begin(), items.end(),
                                 [id](const AccessibleItem& item) { return item.id == id; });
    return at == items.end() ? AccessibleItem{} : *at;
  }
};

TEST_F(AccessibilityTest, ContainersTellTheirStateAndWhatPressingDoes) {
  clsContainer c;
  c.name = L"Work";
  c.rect = c.savedRect = {{120}, {120}, {3000}, {2000}};
  const ContainerSlot slot = workspace.containers.add(c);
  const struct {
    bool folded, shrunk;
    K pressed;
    const wchar_t* action;
    unsigned state;
  } rows[] = {{false, false, K::lblFoldUnfold, L"Fold", kStateExpanded},
              {true, false, K::lblFoldUnfold, L"Unfold", kStateCollapsed},
              {false, true, K::ContainerIcon, L"Expand", kStateCollapsed}};
  for (const auto& row : rows) {
    workspace.containers[slot].folded = row.folded;
    workspace.containers[slot].shrunk = row.shrunk;
    view.build(layout);
    const auto all = items();
    const AccessibleItem box = of(all, containerNode(slot));
    EXPECT_EQ(box.name, L"Work");
    EXPECT_EQ(box.role, AccessibleRole::Grouping);
    EXPECT_EQ(box.defaultAction, row.action);
    EXPECT_EQ(box.states & (kStateExpanded | kStateCollapsed), row.state);
    EXPECT_EQ(of(all, containerPart(row.pressed, slot)).defaultAction, row.action);
  }
  workspace.containers[slot].Detached = true;
  view.build(layout);
  EXPECT_TRUE(of(items(), containerNode(slot)).id.none());
}

TEST_F(AccessibilityTest, ListedItemsHaveNamesAndAreFoundAtTheirPlace) {
  clsShortcut s;
  s.position = {{120}, {120}};
  s.FullCaption = L"Mail";
  const ShortcutSlot named = workspace.shortcuts.add(s);
  s.FullCaption = L" ";
  s.Path = L"C:\\tool.exe";
  s.position.y = {90000};
  const ShortcutSlot blank = workspace.shortcuts.add(s);
  view.build(layout);
  input.focus(shortcutNode(named));
  view.scene().find(shortcutNode(named))->selected = true;
  const auto all = items();
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_FALSE(all[i].name.empty()) << static_cast<int>(all[i].id.kind);
    if ((all[i].states & kStateOffscreen) != 0 || all[i].role == AccessibleRole::Grouping) continue;
    if (!view.scene().find(all[i].id)->hitTarget) continue;
    const Point<Twips> inside{all[i].rect.left + Twips{5}, all[i].rect.top + Twips{5}};
    EXPECT_EQ(accessibleAt(view.scene(), all, inside), static_cast<int>(i));
  }
  EXPECT_EQ(accessibleAt(view.scene(), all, {{-5}, {0}}), -1);
  EXPECT_EQ(of(all, shortcutNode(named)).states,
            unsigned{kStateFocused | kStateFocusable | kStateSelected | kStateSelectable});
  EXPECT_EQ(of(all, shortcutNode(blank)).name, L"C:\\tool.exe");
  EXPECT_EQ(of(all, shortcutNode(blank)).states,
            unsigned{kStateFocusable | kStateOffscreen | kStateSelectable});
}

TEST_F(AccessibilityTest, AddingKeepsTheOrderOfTheOthers) {
  clsShortcut s;
  for (int i = 0; i < 3; ++i) workspace.shortcuts.add(s);
  workspace.containers.add({});
  view.build(layout);
  const auto before = items();
  const ShortcutSlot added = workspace.shortcuts.add(s);
  view.updateShortcut(added);
  auto after = items();
  ASSERT_EQ(after.size(), before.size() + 1);
  std::erase_if(after, [added](const AccessibleItem& i) { return i.id == shortcutNode(added); });
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(after[i].id, before[i].id);
}

}  // namespace
}  // namespace varnowick
