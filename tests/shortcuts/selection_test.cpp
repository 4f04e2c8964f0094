#include "shortcuts/selection.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

class SelectionTest : public testing::Test {
 protected:
  Workspace workspace;
  Settings settings;
  Selection selection;
  ContainerSlot box = workspace.containers.add({});
  ShortcutSlot a = addShortcut(picBack), b = addShortcut(picBack), inside = addShortcut({box});
  PictureSlot picture = workspace.pictures.add({});

  ShortcutSlot addShortcut(Panel parent) {
    clsShortcut shortcut;
    shortcut.parent = parent;
    return workspace.shortcuts.add(shortcut);
  }
  void expectSelected(const std::set<ObjectId>& expected) {
    EXPECT_EQ(selection.objects(), expected);
  }
};

TEST_F(SelectionTest, PressesSelectAndKeepForADrag) {
  const auto click = [&](ObjectId id, bool ctrl, bool dragged = false) {
    selection.press(id, ctrl);
    selection.release(id, ctrl, dragged);
  };
  click(a, false);
  click(b, true);
  expectSelected({a, b});
  selection.press(a, false);
  expectSelected({a, b});
  selection.release(a, false, true);
  expectSelected({a, b});
  click(a, false);
  expectSelected({a});
  click(a, true);
  expectSelected({});
  selection.press(a, false);
  selection.press(picture, false);
  expectSelected({picture});
  // Removed by a key between press and release.
  selection.press(picture, false);
  selection.unselect(picture);
  selection.release(picture, false, false);
  expectSelected({});
}

TEST(NamesForQuestion, AreAsManyAndAsLongAsABoxCanShow) {
  const std::wstring longest(60, L'x');
  EXPECT_EQ(namesForQuestion({L"", longest, longest + L"y"}),
            L"(no name)\r\n" + longest + L"\r\n" + longest + L"...\r\n");
  std::vector<std::wstring> names(8, L"a");
  EXPECT_EQ(namesForQuestion(names).find(L"more"), std::wstring::npos);
  names.emplace_back(L"b");
  EXPECT_TRUE(namesForQuestion(names).ends_with(L"a\r\nand 2 more\r\n"));
}

TEST_F(SelectionTest, TheBandAddsAndGivesBack) {
  selection.select(a);
  selection.pressPanel(true);
  selection.band({b, picture});
  expectSelected({a, b, picture});
  selection.band({b});
  expectSelected({a, b});
  selection.pressPanel(false);
  expectSelected({});
  selection.band({b});
  selection.band({});
  expectSelected({});
}

TEST_F(SelectionTest, AllIsWhatCanBeSeenOnThePanel) {
  workspace.shortcuts[b].TagHidden = true;
  selection.selectAll(workspace, picBack);
  expectSelected({a, picture, box});
  workspace.containers[box].Detached = true;
  selection.prune(workspace);
  expectSelected({a, picture});
  selection.selectNone();
  selection.selectAll(workspace, {box});
  expectSelected({inside});
}

TEST_F(SelectionTest, TheCurrentOneIsTheLastOrTheOnlyOne) {
  EXPECT_FALSE(selection.current());
  selection.select(a);
  selection.select(b);
  EXPECT_EQ(selection.current(), ObjectId{b});
  selection.press(b, true);
  EXPECT_EQ(selection.current(), ObjectId{a});
  selection.select(inside);
  selection.select(picture);
  selection.unselect(picture);
  EXPECT_FALSE(selection.current()) << "one of two";
  selection.select(a);
  selection.selectNone();
  selection.selectAll(workspace, picBack);
  EXPECT_FALSE(selection.current()) << "none of several";
}

TEST_F(SelectionTest, DeletingAsksForWhatIsAtStake) {
  EXPECT_TRUE(planDelete(workspace, selection, settings).empty());
  workspace.shortcuts[a].FullCaption = L"Alpha";
  workspace.pictures[picture].Path = L"C:\\sea.png";
  selection.select(a);
  selection.select(picture);
  selection.select(box);
  DeletePlan plan = planDelete(workspace, selection, settings);
  EXPECT_TRUE(plan.shortcuts == std::vector{a} && plan.pictures == std::vector{picture});
  EXPECT_EQ(plan.question,
            L"Remove Selected Shortcuts?\r\n\r\nAlpha\r\nsea.png\r\n\r\n"
            L"1 shortcut, 1 picture. No file is deleted.");

  workspace.containers[box].CopyPath = L"C:\\Data\\";
  const struct {
    const wchar_t* path;
    bool deleted;
  } cases[] = {{L"c:\\data\\x.txt", true},      {L"C:\\Data\\sub\\y", true},
               {L"C:\\Database\\x.txt", false}, {L"C:\\Data\\..\\Windows\\x", false},
               {L"C:\\Data\\", false},          {L"http://a.org", false}};
  selection.select(inside);
  for (const auto& c : cases) {
    workspace.shortcuts[inside].Path = c.path;
    plan = planDelete(workspace, selection, settings);
    EXPECT_EQ(plan.files.size(), c.deleted ? 1U : 0U) << c.path;
    EXPECT_EQ(plan.question.find(c.deleted ? kDeleteSelectedQuestion : kRemoveSelectedQuestion),
              0U);
    EXPECT_EQ(plan.question.find(L"To the Recycle Bin: 1 file.") != std::wstring::npos, c.deleted);
  }
  settings.confirmDelete = false;
  EXPECT_EQ(planDelete(workspace, selection, settings).question, L"");
  settings.locked = true;
  EXPECT_TRUE(planDelete(workspace, selection, settings).empty());
}

}  // namespace
}  // namespace varnowick
