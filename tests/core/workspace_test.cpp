#include "core/workspace.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(SlotTable, LowestFreeSlotIsUsedAgainFirst) {
  SlotTable<int, ShortcutSlot> table;
  for (int i = 0; i < 4; ++i) EXPECT_EQ(table.add(i).index, i);
  for (const int gone : {2, 0, 0, -1, 4}) table.remove({gone});
  EXPECT_EQ(table.count(), 2U);
  EXPECT_EQ(table.find({0}), nullptr);
  for (const int slot : {0, 2, 4}) EXPECT_EQ(table.add(slot + 10).index, slot);
  std::vector<int> inOrder;
  table.forEach([&](ShortcutSlot, int value) { inOrder.push_back(value); });
  EXPECT_EQ(inOrder, (std::vector<int>{10, 1, 12, 3, 14}));
}

TEST(Workspace, ARemovedContainerTakesAlongWhatLiesInIt) {
  Workspace w;
  for (const Panel panel : {Panel{w.containers.add()}, picBack}) {
    w.pictures.add({L"", panel, {}});
    w.shortcuts[w.shortcuts.add()].parent = panel;
  }
  w.removeContainer({0});
  EXPECT_TRUE(w.shortcuts.count() == 1 && w.pictures.count() == 1 && w.containers.count() == 0);
  EXPECT_TRUE(w.shortcuts.contains({1}) && w.pictures.contains({1}));
}

TEST(Container, MinusOneKeepsAComponent) {
  clsContainer c;
  c.SetDetachedSize({1}, {2}, {40}, {30});
  c.SetDetachedSize({5}, {-1}, {-1}, {-1});
  EXPECT_EQ(c.detachedRect, (TwipsRect{{5}, {2}, {40}, {30}}));
}

}  // namespace
}  // namespace varnowick
