#include "ui/win/dialogs/frm_shortcut_properties.h"

#include "tests/ui/win/dialogs/dialog_driver.h"

namespace varnowick {
namespace {

using Id = frmShortcutProperties::Id;

clsShortcut example() {
  clsShortcut s;
  s.Path = L"C:\\a.exe";
  s.FullCaption = L"A & B";
  s.Parameters = L"/x";
  s.Color = 0x0000FF;
  s.FontSize = 12;
  s.Icon = L"C:\\i.ico";
  s.Tags = L"one";
  s.parent = Panel{ContainerSlot{2}};
  s.position = {{7}, {8}};
  return s;
}

const std::wstring kLong =
    L"D:\\" + std::wstring(40'000, L'x') + L"\x05D0\x05D1\xD83D\xDE00\x0301.exe";

void enterEverything(HWND dialog) {
  clickIn(dialog, Id::kWebAddress);
  clickIn(dialog, Id::kFileOrFolder);
  typeIn(dialog, Id::kPath, kLong);
  typeIn(dialog, Id::kCaption, L"first\r\nsecond");
  typeIn(dialog, Id::kParameters, L"/y \"z\"");
  typeIn(dialog, Id::kIcon, L"");
  typeIn(dialog, Id::kTags, L"b,,a , b");
  for (const int id : {Id::kStartWithTag, Id::kConfirm, Id::kBold, Id::kSmall, Id::kNoColour})
    clickIn(dialog, id);
}

TEST(ShortcutProperties, OkWritesEverything) {
  clsShortcut s = example();
  const DialogDriver driver([](HWND dialog) {
    enterEverything(dialog);
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, Id::kNoColour)));
    clickIn(dialog, IDOK);
  });
  ASSERT_TRUE(frmShortcutProperties(s, L"").edit(nullptr));
  EXPECT_TRUE(s.Path == kLong) << s.Path.size();
  EXPECT_EQ(s.FullCaption, L"first second");
  EXPECT_EQ(s.Parameters, L"/y \"z\"");
  EXPECT_EQ(s.Icon, L"");
  EXPECT_EQ(s.Tags, L"b, a");
  EXPECT_TRUE(s.TagStart && s.Confirm && s.FontBold && !s.Command);
  EXPECT_EQ(s.FontSize, kSmallFontSize);
  EXPECT_EQ(s.Color, -1);
  EXPECT_EQ(s.parent, Panel{ContainerSlot{2}});
}

TEST(ShortcutProperties, CancelAndTheCloseBoxWriteNothing) {
  for (const UINT way : {WM_COMMAND, WM_CLOSE}) {
    clsShortcut s = example();
    const DialogDriver driver([way](HWND dialog) {
      enterEverything(dialog);
      PostMessageW(dialog, way, way == WM_COMMAND ? IDCANCEL : 0, 0);
    });
    EXPECT_FALSE(frmShortcutProperties(s, L"").edit(nullptr));
    const auto fields = [](const clsShortcut& one) {
      return std::tuple(one.Path, one.FullCaption, one.Parameters, one.Icon, one.Tags, one.TagStart,
                        one.Confirm, one.FontBold, one.Command, one.FontSize, one.Color);
    };
    EXPECT_TRUE(fields(s) == fields(example()));
  }
}

TEST(ShortcutProperties, AFaultIsSaidAndTheFieldGetsTheFocus) {
  clsShortcut s = example();
  const DialogDriver driver([](HWND dialog) {
    EXPECT_EQ(textIn(dialog, Id::kFault), L"");
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, Id::kPath));
    SetFocus(GetDlgItem(dialog, IDOK));
    typeIn(dialog, Id::kPath, L" ");
    clickIn(dialog, IDOK);
    ASSERT_TRUE(IsWindow(dialog));
    EXPECT_NE(textIn(dialog, Id::kFault), L"");
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, Id::kPath));
    // A command is the text of another field, and has no path to choose.
    clickIn(dialog, Id::kCommand);
    EXPECT_EQ(textIn(dialog, Id::kFault), L"");
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, Id::kPath)));
    typeIn(dialog, Id::kParameters, L"");
    clickIn(dialog, IDOK);
    ASSERT_TRUE(IsWindow(dialog));
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, Id::kParameters));
    typeIn(dialog, Id::kParameters, L"dir c:");
    clickIn(dialog, IDOK);
  });
  ASSERT_TRUE(frmShortcutProperties(s, L"").edit(nullptr));
  EXPECT_TRUE(s.Command);
  EXPECT_EQ(s.ShortcutType, static_cast<int>(ShortcutKindCode::Command));
  EXPECT_EQ(s.Parameters, L"dir c:");
}

}  // namespace
}  // namespace varnowick
