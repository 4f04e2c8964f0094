#include "ui/win/pane/in_place_edit.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnowick {
namespace {

class InPlaceEditTest : public testing::Test {
 protected:
  void SetUp() override {
    owner_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 100, 100, 300,
                             400, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(owner_, nullptr);
    SetForegroundWindow(owner_);
    SetFocus(owner_);
    scene_.find(scene_.root())->rect = {{}, {}, {4500}, {6000}};
    Node& title = scene_.create(title_, scene_.root());
    title.rect = {{150}, {300}, {3000}, {350}};
    title.visible = true;
    edit_.attach(owner_, Density{});
    edit_.setPalette(makePalette({}));
  }
  void TearDown() override { DestroyWindow(owner_); }

  bool begin(const std::wstring& text, bool stem = false) {
    return edit_.begin({.node = title_,
                        .text = text,
                        .limit = 20,
                        .selectStem = stem,
                        .accepted = [this](std::wstring t) { accepted_.push_back(std::move(t)); },
                        .done = [this] { ++done_; }});
  }
  void type(const std::wstring& text) {
    for (const wchar_t c : text) SendMessageW(edit_.control(), WM_CHAR, c, 1);
  }
  void press(int key) { SendMessageW(edit_.control(), WM_KEYDOWN, static_cast<WPARAM>(key), 1); }
  static void pump() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  const NodeId title_{ControlKind::ContainerLabel, 3};
  HWND owner_ = nullptr;
  Scene scene_;
  GdiFonts fonts_;
  std::vector<std::wstring> accepted_;
  int done_ = 0;
  InPlaceEdit edit_{scene_, fonts_};
};

TEST_F(InPlaceEditTest, EnterTakesAndEscapeDrops) {
  struct Case {
    const char* what;
    int key;
    const wchar_t* typed;
    std::vector<std::wstring> accepted;
  };
  const std::wstring unicode = L"\x042F\x65E5 \xD83D\xDE00";
  const Case cases[] = {
      {"Enter", VK_RETURN, L"New", {L"New"}},
      {"Tab", VK_TAB, L"New", {L"New"}},
      {"Esc", VK_ESCAPE, L"New", {}},
      {"typed the same", VK_RETURN, L"Old name", {}},
      {"Unicode", VK_RETURN, unicode.c_str(), {unicode}},
      {"too long", VK_RETURN, L"abcdefghijklmnopqrstuvwxyz", {L"abcdefghijklmnopqrst"}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    accepted_.clear();
    done_ = 0;
    ASSERT_TRUE(begin(L"Old name"));
    EXPECT_TRUE(edit_.active());
    EXPECT_EQ(GetFocus(), edit_.control());
    type(c.typed);
    press(c.key);
    EXPECT_FALSE(edit_.active());
    EXPECT_EQ(accepted_, c.accepted);
    EXPECT_EQ(done_, 1);
    EXPECT_EQ(GetFocus(), owner_);
  }
}

TEST_F(InPlaceEditTest, LosingTheFocusTakesOnceItHasGone) {
  ASSERT_TRUE(begin(L"Old"));
  type(L"New");
  SetFocus(owner_);
  EXPECT_TRUE(accepted_.empty()) << "not while the focus is on its way";
  pump();
  EXPECT_EQ(accepted_, std::vector<std::wstring>{L"New"});
  EXPECT_FALSE(IsWindowVisible(edit_.handle()));
}

TEST_F(InPlaceEditTest, ANameIsSelectedWithoutItsExtension) {
  const struct {
    const wchar_t* name;
    DWORD end;
  } cases[] = {{L"report.txt", 6}, {L"a.tar.gz", 5}, {L".profile", 8}, {L"plain", 5}};
  for (const auto& c : cases) {
    ASSERT_TRUE(begin(c.name, true));
    DWORD from = 1, to = 0;
    SendMessageW(edit_.control(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0U);
    EXPECT_EQ(to, c.end);
    edit_.cancel();
  }
}

TEST_F(InPlaceEditTest, FollowsItsNodeAndEndsWithIt) {
  const auto top = [this] {
    RECT r{};
    GetWindowRect(edit_.handle(), &r);
    return r.top;
  };
  ASSERT_TRUE(begin(L"Old"));
  const LONG before = top();
  scene_.find(title_)->rect.top += Twips{600};
  edit_.arrange();
  EXPECT_EQ(top() - before, 40);
  type(L"Scrolled away");
  scene_.find(title_)->rect.top = Twips{-2000};
  Node& panel = *scene_.find(scene_.root());
  panel.clipsChildren = true;
  edit_.arrange();
  EXPECT_EQ(accepted_, std::vector<std::wstring>{L"Scrolled away"});
  EXPECT_FALSE(begin(L"Old")) << "nobody edits what he does not see";

  scene_.find(title_)->rect.top = Twips{300};
  ASSERT_TRUE(begin(L"Old"));
  type(L"Deleted");
  scene_.remove(title_);
  edit_.arrange();
  EXPECT_FALSE(edit_.active());
  EXPECT_EQ(accepted_.size(), 1U) << "there is nothing left to name";
}

TEST_F(InPlaceEditTest, BeginningAnotherTakesTheFirst) {
  ASSERT_TRUE(begin(L"Old"));
  type(L"First");
  ASSERT_TRUE(begin(L"Other"));
  EXPECT_EQ(accepted_, std::vector<std::wstring>{L"First"});
  EXPECT_EQ(edit_.text(), L"Other");
}

}  // namespace
}  // namespace varnowick
