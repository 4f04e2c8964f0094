#include "ui/scene/icon_ref.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_system.h"

namespace varnowick {
namespace {

TEST(IconRefTest, NamesTheSiteOfAWebShortcut) {
  FakeSystem system;
  const int web = static_cast<int>(ShortcutKindCode::WebAddress);
  const struct {
    int kind;
    const wchar_t *path, *icon, *name;
  } cases[] = {
      {web, L"http://example.org/a", L"", L"http://example.org/a"},
      {web, L"www.example.org", L"", L"http://www.example.org"},
      {web, L"http://example.org/a", L"@:\\own.ico", L"C:\\own.ico"},
      {web, L"mailto:a@example.org", L"",
       L"C:\\Program Files\\Varnowick\\Varnowick Home Page.html"},
      {web, L"", L"", L"C:\\Program Files\\Varnowick\\Varnowick Home Page.html"},
      {web + 1, L"http://example.org/a", L"", L"http://example.org/a"},
      {web + 1, L"C:\\a.exe", L"", L"C:\\a.exe"},
  };
  for (const auto& c : cases) {
    clsShortcut shortcut;
    shortcut.ShortcutType = c.kind;
    shortcut.Path = c.path;
    shortcut.Icon = c.icon;
    EXPECT_EQ(iconRefFor(shortcut, system), (ImageRef{ImageRef::Source::IconOf, c.name})) << c.path;
  }
}

}  // namespace
}  // namespace varnowick
