#include "ui/win/bar/jump_box.h"

#include <gtest/gtest.h>

#include <map>

#include "ui/win/images/image_store.h"

namespace varnowick {
namespace {

class JumpBoxTest : public testing::Test {
 protected:
  void SetUp() override {
    parent_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 100, 100,
                              300, 500, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(parent_, nullptr);
    SetForegroundWindow(parent_);
    SetFocus(parent_);
    box_.attach(parent_, Density{});
    box_.setPalette(makePalette({}));
    box_.place({{0}, {30}, {300}, {440}});
    entries_ = {{{0}, L"Mail", 0},
                {{1}, L"Terminal", 0},
                {{2}, L"Text Editor", 0},
                {{3}, L"Meteo", 5},
                {{4}, L"Latest", 0}};
  }
  void TearDown() override { DestroyWindow(parent_); }

  // What the main window does with a letter key.
  void type(const std::wstring& text) {
    for (const wchar_t c : text) box_.apply({.action = KeyAction::JumpType, .typed = c});
  }
  void press(int key) { SendMessageW(box_.cboSearch(), WM_KEYDOWN, static_cast<WPARAM>(key), 1); }
  void click(int row) {
    RECT r{};
    SendMessageW(box_.list(), LB_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&r));
    const LPARAM at = MAKELPARAM(r.left + 20, r.top + 5);
    SendMessageW(box_.list(), WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(box_.list(), WM_LBUTTONUP, 0, at);
  }
  LRESULT rows() const { return SendMessageW(box_.list(), LB_GETCOUNT, 0, 0); }
  std::wstring row(int i) const {
    wchar_t text[200] = {};
    SendMessageW(box_.list(), LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
    return text;
  }

  std::vector<JumpEntry> entries_;
  std::vector<int> started_, shown_, edited_;
  std::vector<Command> commands_;
  bool shownWhenStarted_ = true;
  HWND parent_ = nullptr;
  ImageStore images_{L"C:\\nowhere"};
  GdiFonts fonts_;
  PicJumpToLink box_{
      images_,
      fonts_,
      {.entries = [this] { return entries_; },
       .icon = [](const JumpTarget&) { return ImageRef{}; },
       .place = [](const JumpTarget& t) { return t.shortcut.index == 2 ? L"Work" : L""; },
       .start =
           [this](const JumpTarget& t) {
             started_.push_back(t.shortcut.index);
             shownWhenStarted_ = box_.shown();
           },
       .showMatch = [this](const JumpTarget& t) { shown_.push_back(t.shortcut.index); },
       .properties = [this](ShortcutSlot s) { edited_.push_back(s.index); },
       .key = [this](const KeyDecision& d) { commands_.push_back(d.command); }}};
};

TEST_F(JumpBoxTest, ArrowsAndBlanksWalkThroughTheMatches) {
  type(L"te");
  press(VK_SPACE);
  press(VK_SPACE);
  EXPECT_EQ(shown_, (std::vector<int>{1, 2}));
  EXPECT_EQ(box_.current().shortcut, ShortcutSlot{2});
  press(VK_DOWN);
  EXPECT_EQ(box_.current().shortcut, ShortcutSlot{3});
  EXPECT_EQ(shown_.size(), 2U) << "arrows only choose";
  press(VK_SPACE);
  EXPECT_EQ(shown_.back(), 3) << "a blank shows what the arrows have chosen";
  press(VK_SPACE);
  press(VK_SPACE);
  EXPECT_EQ(shown_.back(), 1) << "past the last match it begins anew";
  for (int i = 0; i < 10; ++i) press(VK_UP);
  EXPECT_EQ(box_.current().shortcut, ShortcutSlot{1});
  EXPECT_TRUE(box_.apply({.action = KeyAction::JumpPrevious}));
  press(VK_RETURN);
  EXPECT_EQ(started_, std::vector<int>{1});
}

TEST_F(JumpBoxTest, AClickStartsAndKeepsTheFocusInTheField) {
  type(L"te");
  SetFocus(box_.list());
  EXPECT_EQ(GetFocus(), box_.cboSearch());
  click(2);
  EXPECT_EQ(started_, std::vector<int>{3});
  type(L"ma");
  const LPARAM inside = MAKELPARAM(20, 5);
  SendMessageW(box_.list(), WM_LBUTTONUP, 0, inside);
  EXPECT_EQ(started_.size(), 1U) << "pressed elsewhere";
}

TEST_F(JumpBoxTest, TheWheelGoesAsFarAsTheSystemSays) {
  for (int i = 5; i < 60; ++i) entries_.push_back({{i}, L"Test", 0});
  type(L"te");
  const auto turned = [&](UINT lines, int delta) {
    SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0);
    SendMessageW(box_.list(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
    return SendMessageW(box_.list(), LB_GETTOPINDEX, 0, 0);
  };
  EXPECT_EQ(turned(1, -WHEEL_DELTA), 1);
  EXPECT_EQ(turned(5, -WHEEL_DELTA), 6);
  EXPECT_EQ(turned(5, WHEEL_DELTA / 5), 5) << "a fine wheel";
  SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, 3, nullptr, 0);
}

TEST_F(JumpBoxTest, KeysOfOtherMeaningArePassedOn) {
  type(L"te");
  press(VK_F8);
  press(VK_DELETE);
  press(VK_HOME);
  EXPECT_EQ(commands_, std::vector<Command>{Command::mnuSave}) << "editing keys edit";
  for (const WPARAM c : {L' ', L'\r', L'\x1b', L'\t', L'\x7f'})
    SendMessageW(box_.cboSearch(), WM_CHAR, c, 1);
  wchar_t typed[20] = {};
  GetWindowTextW(box_.cboSearch(), typed, 20);
  EXPECT_STREQ(typed, L"te");
  press(VK_TAB);
  EXPECT_EQ(GetFocus(), parent_);
  EXPECT_TRUE(box_.shown());
  press(VK_DOWN);
  press(VK_F2);
  EXPECT_EQ(edited_, std::vector<int>{2}) << "the match, not what is selected on the bar";
  EXPECT_FALSE(box_.shown());
}

TEST_F(JumpBoxTest, AChangedWorkspaceIsFoundAtOnce) {
  type(L"te");
  entries_ = {{{9}, L"Tea", 0}};
  box_.refresh();
  ASSERT_EQ(rows(), 1);
  EXPECT_EQ(box_.current().shortcut, ShortcutSlot{9});
  entries_.clear();
  box_.refresh();
  EXPECT_TRUE(box_.current().none());
}

TEST_F(JumpBoxTest, NeverLeavesItsPanel) {
  entries_.clear();
  for (int i = 0; i < 3000; ++i) entries_.push_back({{i}, L"Item " + std::to_wstring(i), 0});
  type(L"item");
  EXPECT_LE(rows(), 200);
  for (const int height : {440, 120, 40, 0}) {
    box_.place({{0}, {30}, {height == 0 ? 0 : 300}, {height}});
    RECT r{};
    GetWindowRect(box_.handle(), &r);
    EXPECT_LE(r.bottom - r.top, height);
  }
}

}  // namespace
}  // namespace varnowick
