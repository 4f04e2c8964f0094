#include "ui/scene/icon_ref.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_system.h"

namespace varnowick {
namespace {

TEST(IconRefTest, NamesTheSiteOfAWebShortcut) {
  FakeSystem system;
  const int web = static_cast<int>(ShortcutKindCode::WebAddress);
  const wchar_t* const home = L"C:\\Program Files\\Varnowick\\Varnowick Home Page.html";
  const struct {
    int kind;
    const wchar_t *path, *icon, *name;
    bool confirm = false;
  } cases[] = {
      {web, L"http://example.org:81/a?secret=1#b", L"", L"http://example.org:81/"},
      {web, L"www.example.org", L"", L"http://www.example.org/"},
      {web, L"http://example.org/a", L"", home, true},
      {web, L"http://192.168.0.1/a", L"", home},
      {web, L"http://example.org/a", L"@:\\own.ico", L"C:\\own.ico"},
      {web, L"mailto:a@example.org", L"", home},
      {web, L"", L"", home},
      {web + 1, L"http://example.org/a", L"", L"http://example.org/a"},
      {web + 1, L"C:\\a.exe", L"", L"C:\\a.exe"},
  };
  for (const auto& c : cases) {
    clsShortcut shortcut;
    shortcut.ShortcutType = c.kind;
    shortcut.Path = c.path;
    shortcut.Icon = c.icon;
    shortcut.Confirm = c.confirm;
    EXPECT_EQ(iconRefFor(shortcut, system), (ImageRef{ImageRef::Source::IconOf, c.name})) << c.path;
  }
}

}  // namespace
}  // namespace varnowick
