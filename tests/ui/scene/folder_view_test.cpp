#include "ui/scene/folder_view.h"

#include <gtest/gtest.h>

#include <random>

namespace varnowick {
namespace {

FolderListing ready(std::initializer_list<const wchar_t*> names) {
  FolderListing listing{FolderState::Ready};
  // A name that ends in a backslash is a folder's.
  for (std::wstring name : names) {
    const bool folder = name.back() == L'\\';
    if (folder) name.pop_back();
    listing.entries.push_back({name, folder});
  }
  return listing;
}

std::wstring names(const FolderView& view) {
  std::wstring all;
  for (const FolderEntry& entry : view.entries()) all += (all.empty() ? L"" : L" ") + entry.name;
  return all;
}
std::wstring selected(const FolderView& view) {
  std::wstring all;
  for (int row = 0; row < view.count(); ++row)
    if (view.isSelected(row)) all += (all.empty() ? L"" : L" ") + view.entry(row)->name;
  return all;
}

FolderView withLetters() {
  FolderView view(L"C:\\f");
  view.apply(ready({L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h", L"i", L"j"}));
  view.setRoom(990_tw, 330_tw);
  return view;
}

TEST(FolderView, FoldersComeFirstAndNumbersByValue) {
  FolderView view(L"C:\\f");
  view.apply(ready({L"b10.txt", L"a", L"z\\", L"B2.txt", L"01", L"1", L"Y2\\", L"y10\\"}));
  EXPECT_EQ(names(view), L"Y2 y10 z 01 1 a B2.txt b10.txt");
  EXPECT_EQ(view.pathOf(0), L"C:\\f\\Y2");
  EXPECT_EQ(view.pathOf(99), L"");
  FolderView root(L"D:\\");
  root.apply(ready({L"x"}));
  EXPECT_EQ(root.pathOf(0), L"D:\\x");
}

TEST(FolderView, SaysWhyThereAreNoEntries) {
  FolderView view(L"X:\\gone");
  EXPECT_EQ(view.message(), L"Loading...");
  EXPECT_TRUE(view.apply({FolderState::Missing}));
  EXPECT_FALSE(view.apply({FolderState::Missing})) << "nothing new";
  EXPECT_EQ(view.message(), L"Folder not found: X:\\gone");
  view.apply({FolderState::Denied, {{L"leftover"}}, L"Access is denied."});
  EXPECT_EQ(view.message(), L"Folder cannot be opened: X:\\gone\r\nAccess is denied.");
  EXPECT_EQ(view.count(), 0);
  EXPECT_TRUE(view.apply(ready({})));
  EXPECT_EQ(view.message(), L"This folder is empty");
  view.apply(ready({L"a"}));
  EXPECT_EQ(view.message(), L"");
}

TEST(FolderView, NewListingsKeepSelectionCurrentRowAndScrollByName) {
  FolderView view = withLetters();
  view.press(4, {});
  view.press(6, kCtrl);
  view.scrollBy(3);
  view.apply(ready({L"0", L"a", L"b", L"c", L"d", L"e", L"ee", L"f", L"g", L"h", L"i", L"j"}));
  EXPECT_EQ(selected(view), L"e g");
  EXPECT_EQ(view.entry(view.current())->name, L"g");
  EXPECT_EQ(view.entry(view.top())->name, L"d");
  // The current row goes: its place is taken by the next one, which is not selected.
  view.apply(ready({L"a", L"b", L"c", L"e", L"h", L"i", L"j"}));
  EXPECT_EQ(selected(view), L"e");
  EXPECT_EQ(view.entry(view.current())->name, L"h");
  EXPECT_EQ(view.entry(view.top())->name, L"e");
  // At the end nothing is scrolled past the last entry, and no row is invented.
  view.move(ListMove::End, {});
  view.apply(ready({L"a", L"b"}));
  EXPECT_EQ(view.top(), 0);
  EXPECT_EQ(view.current(), 1);
  EXPECT_EQ(view.selectedCount(), 0);
  view.apply({FolderState::Missing});
  EXPECT_EQ(view.current(), -1);
  view.apply(ready({L"a", L"b"}));
  EXPECT_EQ(view.selectedCount(), 0) << "another folder may have come in its place";
}

TEST(FolderView, ListsThatShowTheirBeginningGoOnShowingIt) {
  FolderView view = withLetters();
  view.apply(ready({L"0", L"1", L"a", L"b", L"c", L"d"}));
  EXPECT_EQ(view.top(), 0);
}

TEST(FolderView, PressesSelect) {
  const struct {
    const char* what;
    int row;
    bool ctrl, shift;
    const wchar_t* pressed;
    const wchar_t* released;
  } rows[] = {{"alone", 2, false, false, L"c", L"c"},
              {"a range", 4, false, true, L"c d e", L"c d e"},
              {"the range turns round", 1, false, true, L"b c", L"b c"},
              {"one more", 5, true, false, L"b c f", L"b c f"},
              {"one less", 1, true, false, L"c f", L"c f"},
              {"a selected one may be dragged", 2, false, false, L"c f", L"c"},
              {"beside the rows", -1, false, false, L"", L""}};
  FolderView view = withLetters();
  for (const auto& row : rows) {
    view.press(row.row, {row.shift, row.ctrl});
    EXPECT_EQ(selected(view), row.pressed) << row.what;
    view.release(row.row, {row.shift, row.ctrl}, false);
    EXPECT_EQ(selected(view), row.released) << row.what;
  }
  view.selectAll();
  view.press(3, {});
  view.release(3, {}, true);
  EXPECT_EQ(view.selectedCount(), 10) << "a drag keeps them";
  EXPECT_EQ(view.selectedPaths().back(), L"C:\\f\\j");
}

TEST(FolderView, KeysMoveAndScroll) {
  using M = ListMove;
  const struct {
    M move;
    bool ctrl, shift;
    const wchar_t* chosen;
    int current, top;
  } rows[] = {{M::Up, false, false, L"a", 0, 0},      {M::Down, false, false, L"b", 1, 0},
              {M::Down, false, true, L"b c", 2, 0},   {M::PageDown, false, true, L"b c d e", 4, 2},
              {M::Up, true, false, L"b c d e", 3, 2}, {M::Home, false, true, L"a b", 0, 0},
              {M::End, false, false, L"j", 9, 7},     {M::Down, false, false, L"j", 9, 7},
              {M::PageUp, false, false, L"h", 7, 7},  {M::PageUp, false, false, L"f", 5, 5}};
  FolderView view = withLetters();
  for (const auto& row : rows) {
    view.move(row.move, {row.shift, row.ctrl});
    EXPECT_EQ(selected(view), row.chosen) << &row - rows;
    EXPECT_EQ(view.current(), row.current) << &row - rows;
    EXPECT_EQ(view.top(), row.top) << &row - rows;
  }
  view.toggleCurrent();
  EXPECT_EQ(selected(view), L"");
  // Without a press before, a selection begins at the current row, or where it was turned.
  for (const bool turned : {false, true}) {
    FolderView fresh = withLetters();
    fresh.move(M::Home, kCtrl);
    if (turned) fresh.toggleCurrent();
    fresh.move(M::Down, kCtrl);
    fresh.move(M::Down, kShift);
    EXPECT_EQ(selected(fresh), turned ? L"a b c" : L"b c");
  }
  FolderView empty(L"C:\\f");
  EXPECT_FALSE(empty.move(M::Down, {}));
  empty.toggleCurrent();
  EXPECT_FALSE(empty.typed(L'a', 0));
}

TEST(FolderView, LettersJump) {
  FolderView view(L"C:\\f");
  view.apply(ready({L"alpha", L"alto", L"beta", L"Bravo", L"eel", L"eerie", L"zeta"}));
  const struct {
    const wchar_t* letters;
    std::uint64_t pause;  // before each of them
    const wchar_t* found;
  } rows[] = {{L"b", 5000, L"beta"},   {L"b", 5000, L"Bravo"}, {L"B", 5000, L"beta"},
              {L"br", 300, L"Bravo"},  {L"alt", 300, L"alto"}, {L"aA", 300, L"alto"},
              {L"eer", 300, L"eerie"}, {L"q", 5000, L"eerie"}, {L"ze", 300, L"zeta"},
              {L"al", 300, L"alpha"},  {L"be", 1000, L"beta"}, {L"be", 1001, L"eel"}};
  std::uint64_t now = 100;
  for (const auto& row : rows) {
    now += 2000;
    for (const wchar_t* c = row.letters; *c != 0; ++c) view.typed(*c, now += row.pause);
    EXPECT_EQ(selected(view), row.found) << &row - rows;
  }
}

TEST(FolderView, RoomAndScrollingStayWithinTheEntries) {
  FolderView view = withLetters();
  view.setRoom(1000_tw, 330_tw);
  EXPECT_EQ(view.bottom(), 3) << "ten twips are no row";
  view.setRoom(1100_tw, 330_tw);
  EXPECT_EQ(view.bottom(), 4) << "the fourth is seen in part";
  EXPECT_EQ(view.rowAt(1000_tw), 3);
  EXPECT_EQ(view.rowAt(Twips{-1}), -1);
  EXPECT_TRUE(view.scrollBy(1000));
  EXPECT_FALSE(view.scrollBy(1));
  EXPECT_EQ(view.top(), 6) << "in part: the last one ends where the list does";
  EXPECT_EQ(view.rowAt(1099_tw), 9);
  EXPECT_EQ(view.rowAt(1100_tw), -1) << "below the list";
  EXPECT_NEAR(view.thumb().start + view.thumb().length, 1, 1e-5);
  view.setRoom(100_tw, 330_tw);
  EXPECT_NEAR(view.thumb().length, 0.05, 1e-5);
  view.setRoom(Twips{-5}, 0_tw);
  EXPECT_EQ(view.bottom(), view.top() + 1);
  view.setRoom(99000_tw, 330_tw);
  EXPECT_EQ(view.top(), 0);
  EXPECT_EQ(view.thumb().length, 1);
}

// Listings that come and go at random never leave a row out of range.
TEST(FolderView, RandomListingsLeaveNothingDangling) {
  std::mt19937 random(7);
  FolderView view(L"C:\\f");
  view.setRoom(1000_tw, 330_tw);
  for (int round = 0; round < 300; ++round) {
    FolderListing listing{random() % 8 == 0 ? FolderState::Missing : FolderState::Ready};
    const auto density = random() % 100;
    for (int i = 0; i < 60; ++i)
      if (random() % 100 < density) listing.entries.push_back({std::to_wstring(i), i % 7 == 0});
    view.apply(listing);
    view.press(static_cast<int>(random() % 60), {random() % 3 == 0, random() % 2 == 0});
    view.move(static_cast<ListMove>(random() % 6), {.shift = random() % 2 == 0});
    int chosen = 0;
    for (int row = 0; row < view.count(); ++row) chosen += view.isSelected(row) ? 1 : 0;
    ASSERT_EQ(chosen, view.selectedCount());
    ASSERT_LT(view.current(), std::max(1, view.count()));
    ASSERT_LE(view.bottom(), view.count());
    ASSERT_TRUE(view.count() == 0 || view.top() < view.count());
  }
}

}  // namespace
}  // namespace varnowick
