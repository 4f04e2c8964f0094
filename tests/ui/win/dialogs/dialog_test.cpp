#include "ui/win/toolkit/dialog.h"

#include <cwctype>
#include <map>

#include "tests/ui/win/dialogs/dialog_driver.h"
#include "ui/win/dialogs/frm_about.h"
#include "ui/win/dialogs/frm_add_shortcut.h"
#include "ui/win/dialogs/frm_shortcut_properties.h"

namespace varnowick {
namespace {

std::wstring classOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 63);
  return name;
}

wchar_t mnemonicOf(HWND control) {
  const LONG_PTR style = GetWindowLongPtrW(control, GWL_STYLE);
  if (classOf(control) == L"Edit" || (classOf(control) == L"Static" && (style & SS_NOPREFIX) != 0))
    return 0;
  const std::wstring text = windowText(control);
  const std::size_t mark = text.find(L'&');
  if (mark == std::wstring::npos || mark + 1 == text.size()) return 0;
  return static_cast<wchar_t>(std::towlower(text[mark + 1]));
}

// Whatever a person may read or operate lies inside, alone, and has a key of its
// own where it has words.
void lookOver(HWND dialog) {
  RECT inside{};
  GetClientRect(dialog, &inside);
  std::map<wchar_t, std::wstring> keys;
  std::vector<RECT> taken;
  for (HWND c = GetWindow(dialog, GW_CHILD); c != nullptr; c = GetWindow(c, GW_HWNDNEXT)) {
    const std::wstring words = windowText(c);
    if (const wchar_t key = mnemonicOf(c); key != 0) {
      EXPECT_TRUE(keys.emplace(key, words).second) << "two controls share the key of " << keys[key];
    } else if (classOf(c) == L"Button") {
      EXPECT_TRUE(words == L"OK" || words == L"Cancel") << testing::PrintToString(words);
    }
    RECT r{};
    GetWindowRect(c, &r);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
    RECT common{};
    UnionRect(&common, &r, &inside);
    EXPECT_TRUE(EqualRect(&common, &inside)) << testing::PrintToString(words);
    for (const RECT& other : taken)
      EXPECT_FALSE(IntersectRect(&common, &r, &other)) << testing::PrintToString(words);
    taken.push_back(r);
  }
}

TEST(Dialog, ControlsLieApartAndHaveKeysOfTheirOwn) {
  clsShortcut shortcut;
  const std::function<void()> dialogs[] = {
      [&] { frmShortcutProperties(shortcut, L"").edit(nullptr); },
      [&] { frmShortcutProperties(shortcut, L"File not found").edit(nullptr); },
      [] { frmAddShortcut(NewShortcutKind::WebUrl, L"").ask(nullptr); },
      [] { frmAddShortcut(NewShortcutKind::SystemCommand, L"").ask(nullptr); },
      [] { frmAbout(L"C:\\data", [] {}).show(nullptr); },
  };
  for (const auto& open : dialogs) {
    const DialogDriver driver(lookOver);
    open();
  }
}

TEST(Dialog, AboutOpensTheDataFolderAndStays) {
  int opened = 0;
  const DialogDriver driver([&](HWND dialog) {
    EXPECT_EQ(textIn(dialog, frmAbout::kDataFolder), L"C:\\data & more");
    clickIn(dialog, frmAbout::kOpenDataFolder);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(IsWindow(dialog));
  });
  frmAbout(L"C:\\data & more", [&] { ++opened; }).show(nullptr);
}

}  // namespace
}  // namespace varnowick
