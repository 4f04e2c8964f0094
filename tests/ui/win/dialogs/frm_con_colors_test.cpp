#include "ui/win/dialogs/frm_con_colors.h"

#include "tests/fakes/fake_msg_box.h"
#include "tests/ui/win/dialogs/dialog_driver.h"

namespace varnowick {
namespace {

using Id = frmConColors::Id;

class ConColorsTest : public testing::Test {
 protected:
  std::optional<frmConColors::Choice> show(const std::function<void(HWND)>& script) {
    const DialogDriver driver(script);
    return frmConColors(subject_, palette_, fonts_, Density{}, box_,
                        [this](HWND, COLORREF start) {
                          asked_.push_back(start);
                          return chosen_;
                        })
        .choose(nullptr);
  }
  // The middle of the preview, as it is drawn now.
  static COLORREF preview(HWND dialog) {
    const HWND control = GetDlgItem(dialog, Id::kPreview);
    UpdateWindow(control);
    RECT r{};
    GetClientRect(control, &r);
    const WindowDc dc(control);
    return GetPixel(dc.get(), r.right / 2, r.bottom * 3 / 4);
  }
  static bool alike(COLORREF a, COLORREF b) {
    const auto close = [](int x, int y) { return x - y <= 24 && y - x <= 24; };
    return close(GetRValue(a), GetRValue(b)) && close(GetGValue(a), GetGValue(b)) &&
           close(GetBValue(a), GetBValue(b));
  }

  const ContainerColours red_{rgb(200, 0, 0), rgb(255, 255, 0)};
  frmConColors::Subject subject_{L"Work & play", red_, {rgb(45, 58, 73), rgb(235, 240, 246)}};
  Palette palette_ = makePalette({});
  GdiFonts fonts_;
  FakeMsgBox box_;
  std::optional<COLORREF> chosen_ = RGB(0, 128, 0);
  std::vector<COLORREF> asked_;
};

TEST_F(ConColorsTest, ChoosesAndShades) {
  const auto choice = show([&](HWND dialog) {
    EXPECT_TRUE(alike(preview(dialog), RGB(200, 0, 0)));
    clickIn(dialog, Id::kChooseBack);
    EXPECT_TRUE(alike(preview(dialog), RGB(0, 128, 0))) << "seen at once";
    clickIn(dialog, Id::kDarkerBack);
    clickIn(dialog, Id::kLighterFore);
    chosen_.reset();
    clickIn(dialog, Id::kChooseFore);
    EXPECT_EQ(textIn(dialog, Id::kBack), L"#007300");
    clickIn(dialog, IDOK);
  });
  ASSERT_TRUE(choice && choice->colours);
  EXPECT_EQ(choice->colours->back, rgb(0, 115, 0));
  EXPECT_EQ(choice->colours->fore, rgb(255, 255, 26));
  EXPECT_EQ(asked_, (std::vector<COLORREF>{RGB(200, 0, 0), RGB(255, 255, 26)}));
  EXPECT_FALSE(choice->toAllSelected);
  EXPECT_TRUE(box_.shown.empty());
  EXPECT_FALSE(show([](HWND dialog) {
    clickIn(dialog, Id::kDarkerBack);
    clickIn(dialog, IDCANCEL);
  }));
}

TEST_F(ConColorsTest, ResetsAfterAQuestion) {
  box_.answers = {kMsgAnswerNo, kMsgAnswerYes};
  const auto choice = show([&](HWND dialog) {
    clickIn(dialog, Id::kReset);
    EXPECT_EQ(textIn(dialog, Id::kBack), L"#C80000");
    clickIn(dialog, Id::kReset);
    EXPECT_EQ(textIn(dialog, Id::kBack), L"#2D3A49");
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, Id::kReset)));
    clickIn(dialog, IDOK);
  });
  ASSERT_TRUE(choice);
  EXPECT_FALSE(choice->colours);
  const FakeMsgBox::Shown question{L"Reset Container's colors to defualt values?",
                                   kMsgYesNo | kMsgQuestion, L"Varnowick"};
  EXPECT_EQ(box_.shown, (std::vector{question, question}));
}

TEST_F(ConColorsTest, AsksBeforeItGoesToAllSelected) {
  subject_.severalSelected = true;
  for (const MsgAnswer answer : {kMsgAnswerYes, kMsgAnswerNo, MsgAnswer::None}) {
    box_.shown.clear();
    box_.answers = {answer};
    const auto choice = show([](HWND dialog) { clickIn(dialog, IDOK); });
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->toAllSelected, answer == kMsgAnswerYes);
    ASSERT_EQ(box_.shown.size(), 1U);
    EXPECT_EQ(box_.shown[0].text, L"Apply colors to all selected containers?");
    EXPECT_EQ(box_.shown[0].style, kMsgYesNo | kMsgQuestion);
  }
}

}  // namespace
}  // namespace varnowick
