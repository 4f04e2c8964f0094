#include "ui/win/dialogs/frm_add_shortcut.h"

#include "tests/ui/win/dialogs/dialog_driver.h"

namespace varnowick {
namespace {

using Id = frmAddShortcut::Id;

TEST(AddShortcut, ACommandWithItsQuestion) {
  const DialogDriver driver([](HWND dialog) {
    typeIn(dialog, Id::kTarget, L"shutdown /s");
    typeIn(dialog, Id::kCaption, L"Good night");
    clickIn(dialog, Id::kConfirm);
    clickIn(dialog, IDOK);
  });
  const auto made = askForShortcut(nullptr, NewShortcutKind::SystemCommand);
  ASSERT_TRUE(made);
  EXPECT_EQ(made->Path, L"");
  EXPECT_EQ(made->Parameters, L"shutdown /s");
  EXPECT_EQ(made->FullCaption, L"Good night");
  EXPECT_TRUE(made->Command && made->Confirm);
}

TEST(AddShortcut, CancelMakesNone) {
  const DialogDriver driver([](HWND dialog) {
    typeIn(dialog, Id::kTarget, L"dir");
    clickIn(dialog, IDCANCEL);
  });
  EXPECT_FALSE(askForShortcut(nullptr, NewShortcutKind::SystemCommand));
}

}  // namespace
}  // namespace varnowick
