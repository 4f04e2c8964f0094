#include "core/workspace.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(SlotTable, LowestFreeSlotIsUsedAgainFirst) {
  SlotTable<int, ShortcutSlot> table;
  for (int i = 0; i < 4; ++i) EXPECT_EQ(table.add(i).index, i);
  table.remove({2});
  table.remove({0});
  table.remove({0});
  table.remove({-1});
  EXPECT_EQ(table.count(), 2U);
  EXPECT_EQ(table.find({0}), nullptr);
  EXPECT_EQ(table.add(10).index, 0);
  EXPECT_EQ(table.add(12).index, 2);
  EXPECT_EQ(table.add(14).index, 4);
  std::vector<int> inOrder;
  table.forEach([&](ShortcutSlot, int value) { inOrder.push_back(value); });
  EXPECT_EQ(inOrder, (std::vector<int>{10, 1, 12, 3, 14}));
}

TEST(Workspace, RefusesOneShortcutTooMany) {
  Workspace w;
  const Panel inside{w.containers.add({})};
  const struct {
    Panel panel;
    int limit;
    const wchar_t* message;
  } cases[] = {
      {inside, 250, L"There's a limit of 250 shortcuts pair container (much less is recommended!)"},
      {picBack, 350,
       L"There's a limit of 350 shortcuts in the workspace. Please use containers "
       L"instead."}};
  for (const auto& c : cases) {
    clsShortcut shortcut;
    shortcut.parent = c.panel;
    const wchar_t* refusal = nullptr;
    for (int i = 0; i < c.limit; ++i) EXPECT_FALSE(w.addShortcut(shortcut, refusal).none());
    EXPECT_EQ(refusal, nullptr);
    EXPECT_TRUE(w.addShortcut(shortcut, refusal).none());
    EXPECT_STREQ(refusal, c.message);
    EXPECT_EQ(w.shortcutsOn(c.panel), static_cast<std::size_t>(c.limit));
  }
  w.removeContainer(inside.container);
  EXPECT_EQ(w.shortcuts.count(), 350U);
}

TEST(Container, MinusOneKeepsAComponent) {
  clsContainer c;
  c.SetRect({1}, {2}, {30}, {40});
  c.SetRect({5}, {-1}, {-1}, {-1});
  const TwipsRect expected{{5}, {2}, {40}, {30}};
  EXPECT_EQ(c.savedRect, expected);
}

TEST(Container, KindFollowsFromItsFields) {
  clsContainer c;
  EXPECT_EQ(containerType(c), ContainerType::Shortcuts);
  c.noteVisible = true;
  EXPECT_EQ(containerType(c), ContainerType::Note);
  c.reminder.set = true;
  EXPECT_EQ(containerType(c), ContainerType::Reminder);
  c.CopyPath = L"C:\\";
  EXPECT_EQ(containerType(c), ContainerType::Folder);
  c.RSS = true;
  EXPECT_EQ(containerType(c), ContainerType::Feed);
}

}  // namespace
}  // namespace varnowick
