#include "shortcuts/arrange.h"

#include <gtest/gtest.h>

#include <limits>

#include "shortcuts/natural_order.h"
#include "tests/shortcuts/panel_world.h"

namespace varnowick {
namespace {

class ArrangeTest : public PanelWorld {
 protected:
  ContainerSlot box = addContainer({{1200}, {2400}, {3000}, {2000}});

  Moved move(float dx, float dy, const Panel* target = nullptr) {
    return moveSelection(workspace, settings, measures, {selection, {{dx}, {dy}}, target});
  }
  void expectAt(ShortcutSlot slot, Panel parent, float x, float y) {
    EXPECT_EQ(workspace.shortcuts[slot].parent, parent);
    EXPECT_EQ(workspace.shortcuts[slot].position.x.value, x);
    EXPECT_EQ(workspace.shortcuts[slot].position.y.value, y);
  }
};

TEST_F(ArrangeTest, MovesKeepToGridAndPanel) {
  const ShortcutSlot a = add(picBack, {{120}, {120}});
  selection.select(a);
  const struct {
    bool align;
    float dx, dy, x, y;
  } cases[] = {{true, 65, 170, 240, 240},
               {false, 65, 170, 185, 290},
               {true, -9000, -9000, 0, 0},
               {true, 9000, 0, 3360, 120},
               {false, 9000, 0, 3380, 120},
               {true, 0, 1e9F, 120, 150000},
               {true, std::numeric_limits<float>::quiet_NaN(), 0, 0, 120}};
  for (const auto& c : cases) {
    workspace.shortcuts[a].position = {{120}, {120}};
    settings.align = c.align;
    move(c.dx, c.dy);
    expectAt(a, picBack, c.x, c.y);
  }
}

TEST_F(ArrangeTest, WhatMovesTogetherDoesNotDodgeItself) {
  const ShortcutSlot a = add(picBack, {{120}, {120}});
  const PictureSlot picture =
      workspace.pictures.add({L"", picBack, {{1440}, {120}, {1200}, {960}}});
  for (const ObjectId id : std::initializer_list<ObjectId>{a, picture}) selection.select(id);
  move(600, 0);
  expectAt(a, picBack, 720, 120);
  EXPECT_EQ(workspace.pictures[picture].rect.left, Twips{2040});
}

TEST_F(ArrangeTest, GoesOverToAContainerWhereItIsShown) {
  const ShortcutSlot a = add(picBack, {{1320}, {240}});
  const ShortcutSlot b = add({box}, {{120}, {480}});
  selection.select(a);
  selection.select(b);
  const Panel target{box};
  EXPECT_EQ(move(240, 2880, &target).objects.size(), 2U);
  expectAt(a, target, 360, 720);
  expectAt(b, target, 1680, 840);  // the end of the body, beside the other
}

TEST_F(ArrangeTest, AContainerTakesItsContentAndItsSavedPlaceAlong) {
  const ShortcutSlot inside = add({box}, {{120}, {480}});
  workspace.containers[box].savedRect.left = Twips{600};  // expands to the left of its tile
  selection.select(box);
  selection.select(inside);
  const Panel main = picBack;
  EXPECT_EQ(move(120, 240, &main).objects, std::vector<ObjectId>{box});
  expectAt(inside, {box}, 120, 480);
  EXPECT_EQ(workspace.containers[box].rect.topLeft(), (Point<Twips>{{1320}, {2640}}));
  EXPECT_EQ(workspace.containers[box].savedRect.topLeft(), (Point<Twips>{{720}, {2640}}));
}

TEST_F(ArrangeTest, OverThereTheFirstLiesUnderThePointerAndTheOthersBesideIt) {
  const ShortcutSlot a = add(picBack, {{120}, {120}});
  const ShortcutSlot b = add(picBack, {{1440}, {120}});
  for (const ObjectId id : std::initializer_list<ObjectId>{a, b, box}) selection.select(id);
  const ContainerSlot wide = addContainer({{0}, {0}, {6000}, {6000}});
  const auto over = [&](Panel panel) {
    return moveToPanel(workspace, settings, measures, {selection, panel, {{1860}, {1620}}});
  };
  EXPECT_EQ(over({wide}).objects, (std::vector<ObjectId>{a, b}));
  expectAt(a, {wide}, 1200, 1080);
  expectAt(b, {wide}, 2520, 1080);
  EXPECT_TRUE(over({{7}}).objects.empty()) << "it has gone";
  settings.locked = true;
  EXPECT_STREQ(over(picBack).refusal, kLockedMessage);
}

TEST_F(ArrangeTest, AlignedThingsStandOnTheGrid) {
  const ShortcutSlot a = add(picBack, {{130}, {185}});
  const PictureSlot picture = workspace.pictures.add({L"", picBack, {{59}, {61}, {500}, {500}}});
  for (const ObjectId id : std::initializer_list<ObjectId>{a, picture}) selection.select(id);
  EXPECT_EQ(alignSelection(workspace, settings, measures, selection).objects.size(), 2U);
  expectAt(a, picBack, 120, 240);
  EXPECT_EQ(workspace.pictures[picture].rect.topLeft(), (Point<Twips>{{0}, {120}}));
  EXPECT_TRUE(alignSelection(workspace, settings, measures, selection).objects.empty());
}

TEST_F(ArrangeTest, RefusalsMoveNothing) {
  for (int i = 0; i < 249; ++i) add({box}, {{120}, {480}});
  selection.select(add(picBack, {{120}, {120}}));
  selection.select(add(picBack, {{1560}, {120}}));
  const Panel target{box};
  const Moved refused = move(0, 0, &target);
  EXPECT_STREQ(refused.refusal, kContainerFullMessage);
  EXPECT_TRUE(refused.objects.empty());
  EXPECT_EQ(workspace.shortcutsOn(target), 249U);

  workspace.containers[box].CopyPath = L"D:\\Music";
  EXPECT_STREQ(move(0, 0, &target).refusal, kListContainerMessage) << "it shows a folder";
  EXPECT_EQ(workspace.shortcutsOn(target), 249U);

  settings.locked = true;
  EXPECT_STREQ(move(500, 500).refusal, kLockedMessage);
  EXPECT_STREQ(sortByName(workspace, settings, measures, picBack).refusal, kLockedMessage);
  EXPECT_STREQ(alignSelection(workspace, settings, measures, selection).refusal, kLockedMessage);
}

TEST_F(ArrangeTest, SortsByNameAroundWhatLiesThere) {
  workspace.pictures.add({L"", picBack, {{120}, {120}, {2000}, {600}}});
  const ShortcutSlot x10 = add(picBack, {}, L"x10"), x9 = add(picBack, {}, L"X9"),
                     a = add(picBack, {{500}, {900}}, L"a"), b = add(picBack, {}, L"B");
  EXPECT_EQ(sortByName(workspace, settings, measures, picBack).objects.size(), 4U);
  expectAt(a, picBack, 2160, 120);  // beside the picture
  expectAt(b, picBack, 120, 1200);  // the next row
  expectAt(x9, picBack, 1440, 1200);
  expectAt(x10, picBack, 2760, 1200);

  // What finds no room goes on below.
  for (int i = 0; i < 6; ++i) add({box}, {}, L"n");
  sortByName(workspace, settings, measures, {box});
  std::vector<TwipsRect> cells;
  workspace.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& s) {
    if (s.parent.isMain()) return;
    for (const TwipsRect& other : cells) EXPECT_TRUE(rectOf(s).intersect(other).empty());
    cells.push_back(rectOf(s));
    EXPECT_GE(s.position.y, kTitleStripHeight);
  });
}

TEST_F(ArrangeTest, FreePlacesBeginWhereSomethingIsDropped) {
  const auto at = [&](Panel panel, float x, float y) {
    return freePlaceFrom(workspace, measures, panel, cell, {{x}, {y}});
  };
  EXPECT_EQ(at(picBack, 1250, 500), (Point<Twips>{{1200}, {480}}));
  add(picBack, {{1200}, {480}});
  EXPECT_EQ(at(picBack, 1250, 500), (Point<Twips>{{2520}, {480}}));
  // Not under the container, which is in the way from 2400 to 4400.
  EXPECT_EQ(at(picBack, 1250, 2500), (Point<Twips>{{120}, {4440}}));
  EXPECT_EQ(at({box}, 0, 0), (Point<Twips>{{0}, {360}}));
  add({box}, {{120}, {480}});
  add({box}, {{1440}, {480}});
  EXPECT_EQ(at({box}, 600, 600), (Point<Twips>{{600}, {1560}}));  // no room: below
}

TEST(NaturalOrderTest, IsTheOrderOfPeople) {
  const wchar_t* ordered[] = {L"",   L"1",    L"2 b", L"10", L"A",     L"a1",
                              L"A2", L"a10b", L"a11", L"b",  L"\x00E9"};
  for (std::size_t i = 0; i < std::size(ordered); ++i)
    for (std::size_t j = 0; j < std::size(ordered); ++j)
      EXPECT_EQ(naturalLess(ordered[i], ordered[j]), i < j) << i << " " << j;
  EXPECT_FALSE(naturalLess(L"a01", L"A1"));
  EXPECT_FALSE(naturalLess(L"A1", L"a01"));
}

}  // namespace
}  // namespace varnowick
