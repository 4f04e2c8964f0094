#include "ui/win/note_edit.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace varnowick {
namespace {

class NoteEditTest : public testing::Test {
 protected:
  void SetUp() override {
    owner_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 100, 100, 300,
                             400, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(owner_, nullptr);
    SetForegroundWindow(owner_);
    SetFocus(owner_);
    scene_.find(scene_.root())->rect = {{}, {}, {4500}, {6000}};
    scene_.create(note_, scene_.root()).rect = {{150}, {300}, {3000}, {3000}};
    edit_.attach(owner_, Density{});
    edit_.setPalette(makePalette({}));
  }
  void TearDown() override { DestroyWindow(owner_); }

  void type(const std::wstring& text) {
    for (const wchar_t c : text) SendMessageW(edit_.control(), WM_CHAR, c, 1);
  }
  void press(int key) { SendMessageW(edit_.control(), WM_KEYDOWN, static_cast<WPARAM>(key), 1); }
  void rest() { SendMessageW(edit_.handle(), WM_TIMER, 1, 0); }
  int firstLine() const {
    return static_cast<int>(SendMessageW(edit_.control(), EM_GETFIRSTVISIBLELINE, 0, 0));
  }
  static void pump() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  std::wstring last() const { return committed_.empty() ? L"(none)" : committed_.back().second; }

  const NodeId note_{ControlKind::ContainerNote, 4};
  HWND owner_ = nullptr;
  Scene scene_;
  GdiFonts fonts_;
  std::vector<std::pair<int, std::wstring>> committed_;
  std::vector<int> ended_;
  std::vector<int> keys_;
  std::size_t top_ = 0;
  NoteEdit edit_{
      scene_,
      fonts_,
      {.committed = [this](ContainerSlot s,
                           const std::wstring& t) { committed_.emplace_back(s.index, t); },
       .ended =
           [this](ContainerSlot s, std::size_t top) {
             ended_.push_back(s.index);
             top_ = top;
           },
       .functionKey =
           [this](int key) {
             keys_.push_back(key);
             return true;
           }}};
};

TEST_F(NoteEditTest, WhatIsTypedComesBackAsTyped) {
  const std::wstring before = L"Caf\x00E9 \x65E5\x672C\r\n[END Note]\r\n\r\n\ttab ";
  ASSERT_TRUE(edit_.begin({4}, before, before.size()));
  EXPECT_EQ(GetFocus(), edit_.control());
  type(L"\x042F\xD83D\xDE00");
  press(VK_RETURN);
  type(L"[END Note]\tx");
  press(VK_ESCAPE);
  EXPECT_EQ(last(), before + L"\x042F\xD83D\xDE00\r\n[END Note]\tx");
  ASSERT_EQ(committed_.size(), 1U);
  EXPECT_EQ(committed_[0].first, 4);
  EXPECT_EQ(ended_, std::vector<int>{4});
  EXPECT_EQ(GetFocus(), owner_);
}

TEST_F(NoteEditTest, ComesBackUntouchedWhenNothingWasTyped) {
  using namespace std::string_literals;
  for (const std::wstring& text : {L"a\nb\r\r\nc\0d"s, L"\x0B\x0C\x2028"s, L""s}) {
    ASSERT_TRUE(edit_.begin({4}, text, 0));
    rest();
    press(VK_ESCAPE);
  }
  EXPECT_TRUE(committed_.empty()) << "showing a text must not rewrite it";
  EXPECT_EQ(ended_.size(), 3U);
}

TEST_F(NoteEditTest, HandsOverWhenTheTypingRestsAndAtEveryEnd) {
  ASSERT_TRUE(edit_.begin({4}, L"", 0));
  type(L"one");
  EXPECT_TRUE(committed_.empty()) << "not key by key";
  rest();
  EXPECT_EQ(last(), L"one");
  EXPECT_TRUE(edit_.active());
  rest();
  EXPECT_EQ(committed_.size(), 1U);
  type(L" two");
  press(VK_F8);
  EXPECT_EQ(keys_, std::vector<int>{VK_F8});
  EXPECT_EQ(last(), L"one two") << "saving saves what was typed";
  type(L" three");
  SetFocus(owner_);
  pump();
  EXPECT_EQ(last(), L"one two three");
  EXPECT_FALSE(edit_.active());

  ASSERT_TRUE(edit_.begin({4}, L"", 0));
  type(L"folded away");
  scene_.find(note_)->visible = false;
  edit_.arrange();
  EXPECT_EQ(last(), L"folded away");
}

TEST_F(NoteEditTest, UndoesAndSelectsAll) {
  ASSERT_TRUE(edit_.begin({4}, L"kept", 4));
  type(L"x");
  SendMessageW(edit_.control(), EM_UNDO, 0, 0);
  EXPECT_EQ(edit_.text(), L"kept");
  SendMessageW(edit_.control(), EM_UNDO, 0, 0);
  EXPECT_EQ(edit_.text(), L"kept") << "the text itself was not typed";
  SendMessageW(edit_.control(), EM_SETSEL, 0, -1);
  type(L"n");
  press(VK_ESCAPE);
  EXPECT_EQ(last(), L"n");
}

void putOnClipboard(const std::wstring& text) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  memcpy(GlobalLock(memory), text.c_str(), bytes);
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
  CloseClipboard();
}

TEST_F(NoteEditTest, PastesTextOfAnyLengthAsText) {
  for (const std::wstring& pasted : {std::wstring(L"a\nb"), std::wstring(1'000'000, L'y')}) {
    putOnClipboard(pasted);
    ASSERT_TRUE(edit_.begin({4}, L"1\r\n2\r\n34", 7));
    SendMessageW(edit_.control(), WM_PASTE, 0, 0);
    type(L"!");
    press(VK_ESCAPE);
    const std::wstring expected = pasted == L"a\nb" ? L"a\r\nb" : pasted;
    EXPECT_TRUE(last() == L"1\r\n2\r\n3" + expected + L"!4") << last().substr(0, 40).size();
  }
}

TEST_F(NoteEditTest, TakesAVeryLongNote) {
  std::wstring text;
  for (int i = 0; text.size() < 2'600'000; ++i)
    text += L"Line " + std::to_wstring(i) + L" of a note that nobody will ever read again.\r\n";
  text += std::wstring(2'500'000, L'x');
  for (const std::size_t at :
       {std::size_t{0}, text.size() / 3, text.size() - 1'000'000, text.size()}) {
    SCOPED_TRACE(at);
    ASSERT_TRUE(edit_.begin({4}, text, at));
    UpdateWindow(edit_.handle());
    pump();
    type(L"\x00E4");
    press(VK_ESCAPE);
    std::wstring expected = text;
    expected.insert(at, 1, L'\x00E4');
    ASSERT_TRUE(last() == expected);  // not printed: it is 5 MB
  }
}

TEST_F(NoteEditTest, WalksOnThroughALongNote) {
  std::wstring text;
  for (int i = 0; i < 4000; ++i) text += L"Line " + std::to_wstring(i) + L"\r\n";
  ASSERT_TRUE(edit_.begin({4}, text, 0));
  const std::wstring first = edit_.text();
  ASSERT_LT(first.size(), text.size());
  type(L"A");
  // To the end of what is in the control: more of the note comes.
  const auto end = static_cast<LPARAM>(first.size());
  SendMessageW(edit_.control(), EM_SETSEL, static_cast<WPARAM>(end), end);
  press(VK_RIGHT);
  EXPECT_NE(edit_.text(), L"A" + first);
  type(L"B");
  for (int i = 0; i < 30; ++i)
    SendMessageW(edit_.control(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120 * 100)), 0);
  EXPECT_NE(edit_.text().find(L"Line 3999"), std::wstring::npos);
  EXPECT_GT(firstLine(), 0);
  press(VK_ESCAPE);
  EXPECT_EQ(last().substr(0, 7), L"ALine 0");
  EXPECT_EQ(last().size(), text.size() + 2);
  EXPECT_GT(top_, text.size() - 10'000) << "the painted note stays where it was scrolled to";
}

}  // namespace
}  // namespace varnowick
