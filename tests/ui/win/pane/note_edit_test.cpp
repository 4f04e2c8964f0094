#include "ui/win/pane/note_edit.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "ui/win/toolkit/clipboard_text.h"

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
  // With Ctrl.
  void chord(int key, bool shift = false) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    SetKeyboardState(keys);
    press(key);
    keys[VK_CONTROL] = keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
  }
  static std::wstring lines(std::size_t size) {
    std::wstring text;
    for (int i = 0; text.size() < size; ++i)
      text += L"Line " + std::to_wstring(i) + L" of a note that nobody will ever read again.\r\n";
    return text;
  }
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
  NoteEdit edit_{
      scene_,
      fonts_,
      {.committed = [this](ContainerSlot s,
                           const std::wstring& t) { committed_.emplace_back(s.index, t); },
       .ended = [this](ContainerSlot s, std::size_t) { ended_.push_back(s.index); },
       .functionKey =
           [this](int key) {
             keys_.push_back(key);
             return true;
           }}};
};

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

TEST_F(NoteEditTest, UndoesWhatWasPastedAndTypedWhereverItWas) {
  const std::wstring before = lines(100'000);
  ASSERT_TRUE(edit_.begin({4}, before, 0));
  type(L"one");
  chord('A');
  ASSERT_TRUE(putTextOnClipboard(nullptr, std::wstring(15'000, L'y') + L"\n"));
  chord('V');
  type(L"end");
  press(VK_ESCAPE);
  const std::wstring after = std::wstring(15'000, L'y') + L"\r\nend";
  ASSERT_TRUE(last() == after);
  // Come back to as it was left, the note has its history; changed elsewhere, none.
  ASSERT_TRUE(edit_.begin({4}, after, 0));
  for (int i = 0; i < 3; ++i) chord('Z');
  rest();
  EXPECT_TRUE(last() == before);
  chord('Z');
  for (int i = 0; i < 9; ++i) chord('Y');
  rest();
  EXPECT_TRUE(last() == after);
  press(VK_ESCAPE);
  ASSERT_TRUE(edit_.begin({4}, L"changed", 0));
  chord('Z');
  press(VK_ESCAPE);
  EXPECT_TRUE(last() == after) << "nothing more was handed over";
}

TEST_F(NoteEditTest, SelectsAndChangesAVeryLongNoteAsAWhole) {
  const std::wstring text = lines(2'600'000) + std::wstring(2'500'000, L'x');
  const auto copied = [&] {
    chord('C');
    return textOnClipboard(nullptr, kMostNoteText);
  };
  const std::size_t middle = 1'300'000;
  ASSERT_TRUE(edit_.begin({4}, text, middle));
  chord(VK_END, true);
  EXPECT_TRUE(copied() == text.substr(middle));
  chord(VK_HOME, true);
  EXPECT_TRUE(copied() == text.substr(0, middle));
  chord('A');
  EXPECT_TRUE(copied() == text);
  press(VK_RIGHT);  // to the end of all
  type(L"end");
  chord(VK_HOME);
  type(L"start");
  chord('A');
  type(L"!");
  rest();
  EXPECT_EQ(last(), L"!");
  for (const std::wstring& back : {std::wstring(), L"start" + text + L"end", text + L"end", text}) {
    chord('Z');
    rest();
    EXPECT_TRUE(last() == back);
  }
}

TEST_F(NoteEditTest, WalksOnThroughALongNote) {
  const std::wstring text = lines(100'000);
  ASSERT_TRUE(edit_.begin({4}, text, 0));
  const std::size_t first = edit_.text().size();
  ASSERT_LT(first, text.size());
  type(L"A");
  // To the end of what is in the control: more of the note comes.
  SendMessageW(edit_.control(), EM_SETSEL, first + 1, static_cast<LPARAM>(first + 1));
  press(VK_RIGHT);
  type(L"B");
  for (int i = 0; i < 100; ++i)
    SendMessageW(edit_.control(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120 * 100)), 0);
  EXPECT_GT(firstLine(), 0);
  type(L"C");
  press(VK_ESCAPE);
  std::wstring expected = L"A" + text;
  expected.insert(first + 1, L"BC");
  EXPECT_TRUE(last() == expected) << "the wheel leaves the caret where it is";
}

}  // namespace
}  // namespace varnowick
