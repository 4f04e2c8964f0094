#include "shortcuts/tags.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

class TagsTest : public testing::Test {
 protected:
  Workspace workspace;
  Panel box{workspace.containers.add({})};
  ShortcutSlot main = add(picBack, L"Work"), tool = add(box, L" work ,Item 10,"),
               game = add(box, L"play, ITEM 9"), plain = add(box, L"");

  ShortcutSlot add(Panel parent, const wchar_t* tags) {
    clsShortcut shortcut;
    shortcut.parent = parent;
    shortcut.Tags = tags;
    return workspace.shortcuts.add(shortcut);
  }
};

TEST_F(TagsTest, ListsEachTagOnceInOrder) {
  using Tags = std::vector<std::wstring>;
  EXPECT_EQ(allTags(workspace), (Tags{L"ITEM 9", L"Item 10", L"play", L"Work"}));
  EXPECT_EQ(allTags(workspace, box), (Tags{L"ITEM 9", L"Item 10", L"play", L"work"}));
  EXPECT_EQ(allTags(workspace, picBack), Tags{L"Work"});
  EXPECT_EQ(tidyTags(L" a,,B ,\r\nA,  c d "), L"a, B, c d");
  EXPECT_EQ(tidyTags(L" , "), L"");
}

TEST_F(TagsTest, TheFilterHidesTheOthers) {
  EXPECT_TRUE(applyTagFilters(workspace).empty());
  workspace.containers[box.container].ShowingTag = L"WORK";
  EXPECT_EQ(applyTagFilter(workspace, box), (std::vector{game, plain}));
  EXPECT_TRUE(applyTagFilters(workspace).empty());
  EXPECT_FALSE(workspace.shortcuts[tool].TagHidden);

  workspace.shortcuts[plain].parent = picBack;
  EXPECT_EQ(applyTagFilter(workspace, picBack), std::vector{plain});
  workspace.containers[box.container].ShowingTag.clear();
  EXPECT_EQ(applyTagFilters(workspace), std::vector{game});
}

}  // namespace
}  // namespace varnowick
