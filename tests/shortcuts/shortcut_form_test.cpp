#include "shortcuts/shortcut_form.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr ShortcutKindCode kWeb = ShortcutKindCode::WebAddress;
constexpr ShortcutKindCode kFile = ShortcutKindCode::FileOrFolder;
constexpr ShortcutKindCode kCommand = ShortcutKindCode::Command;

TEST(ShortcutForm, PathsByKind) {
  struct Row {
    ShortcutKindCode kind;
    const wchar_t* entered;
    const wchar_t* result;  // nullptr: refused
  };
  for (const Row& row : std::initializer_list<Row>{
           {kWeb, L"", nullptr},
           {kWeb, L" \t ", nullptr},
           {kWeb, L"https://example.org/a b", L"https://example.org/a%20b"},
           {kWeb, L" example.org/x\r\n", L"http://example.org/x"},
           {kWeb, L"localhost:8080", L"http://localhost:8080"},
           {kWeb, L"localhost:8080/a:b", L"http://localhost:8080/a:b"},
           {kWeb, L"mailto:me@example.org", L"mailto:me@example.org"},
           {kWeb, L"about:blank", nullptr},
           {kWeb, L"javascript:alert(1)", nullptr},
           {kWeb, L"java\tscript:alert(1)", nullptr},
           {kWeb, L"data:text/html,x", nullptr},
           {kWeb, L"ms-msdt:/id x", nullptr},
           {kWeb, L"http://", nullptr},
           {kWeb, L"two words", nullptr},
           {kWeb, L"C:\\a.html", nullptr},
           {kWeb, L"\\\\server\\share", nullptr},
           {kFile, L"", nullptr},
           {kFile, L"\"\"", nullptr},
           {kFile, L"\"C:\\My files\\a.exe\" ", L"C:\\My files\\a.exe"},
           {kFile, L"\"C:\\a.exe\" /x", nullptr},
           {kFile, L"notepad.exe", L"notepad.exe"},
           {kFile, L"@:\\x\\y.exe", L"@:\\x\\y.exe"},
           {kCommand, L"", L""},
       }) {
    ShortcutForm form;
    form.kind = row.kind;
    form.path = row.entered;
    form.parameters = L"dir";
    const auto fault = validate(form);
    ASSERT_EQ(fault.has_value(), row.result == nullptr) << testing::PrintToString(row.entered);
    if (fault)
      EXPECT_EQ(fault->field, FormField::Path);
    else
      EXPECT_EQ(form.path, row.result);
  }
}

TEST(ShortcutForm, ACommandNeedsItsText) {
  ShortcutForm form;
  form.kind = kCommand;
  form.path = L"kept.exe";
  form.parameters = L"  ";
  const auto fault = validate(form);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->field, FormField::Parameters);
  form.parameters = L"dir c: ";
  EXPECT_FALSE(validate(form));
  EXPECT_EQ(form.parameters, L"dir c: ");
  EXPECT_EQ(form.path, L"kept.exe");
}

clsShortcut unusual() {
  clsShortcut s;
  s.Path = std::wstring(32'000, L'p') + L"\x05D0\U0001F600";
  s.FullCaption = std::wstring(1'500, L'c') + L"\r\nsecond \x202E line";
  s.ShortcutType = 7;
  s.Parameters = L" /a\t\"b\" ";
  s.FontBold = true;
  s.Color = 0x123456;
  s.FontSize = 12.5F;
  s.Confirm = true;
  s.TagStart = true;
  s.TagHidden = true;
  s.Icon = L"\"C:\\i.ico\"x";
  s.Tags = L"b ,a,b";
  s.parent = Panel{ContainerSlot{3}};
  s.position = {{5}, {6}};
  return s;
}

TEST(ShortcutForm, WhatIsNotChangedKeepsItsStoredValue) {
  const clsShortcut before = unusual();
  clsShortcut after = before;
  ShortcutForm form = formOf(after);
  EXPECT_EQ(form.caption.find_first_of(L"\r\n"), std::wstring::npos);
  ASSERT_FALSE(validate(form));
  applyForm(form, after);
  EXPECT_EQ(after.Path, before.Path);
  EXPECT_EQ(after.FullCaption, before.FullCaption);
  EXPECT_EQ(after.ShortcutType, 7);
  EXPECT_FALSE(after.Command);
  EXPECT_EQ(after.Parameters, before.Parameters);
  EXPECT_EQ(after.FontSize, 12.5F);
  EXPECT_EQ(after.Icon, before.Icon);
  EXPECT_EQ(after.Tags, before.Tags);
  EXPECT_EQ(after.Color, 0x123456);
  EXPECT_TRUE(after.FontBold && after.Confirm && after.TagStart && after.TagHidden);
  EXPECT_EQ(after.parent, before.parent);
  EXPECT_EQ(after.position.x, before.position.x);
}

TEST(ShortcutForm, WhatIsChangedIsWrittenTidily) {
  clsShortcut s = unusual();
  ShortcutForm form = formOf(s);
  form.kind = kWeb;
  form.path = L"example.org";
  form.caption = L"two\nlines";
  form.parameters = L"";
  form.icon = L"\"C:\\b.ico\"";
  form.tags = L" x,, y , X";
  form.small = true;
  form.bold = form.confirm = form.startWithTag = false;
  form.colour = -1;
  ASSERT_FALSE(validate(form));
  applyForm(form, s);
  EXPECT_EQ(s.Path, L"http://example.org");
  EXPECT_EQ(s.FullCaption, L"two lines");
  EXPECT_EQ(s.ShortcutType, 1);
  EXPECT_EQ(s.Parameters, L"");
  EXPECT_EQ(s.Icon, L"C:\\b.ico");
  EXPECT_EQ(s.Tags, L"x, y");
  EXPECT_TRUE(isSmall(s));
  EXPECT_FALSE(s.FontBold || s.Confirm || s.TagStart);
  EXPECT_EQ(s.Color, -1);

  // To a command and back to a file: the flag follows the kind.
  form = formOf(s);
  form.kind = kCommand;
  applyForm(form, s);
  EXPECT_TRUE(s.Command);
  form.kind = kFile;
  form.small = false;
  applyForm(form, s);
  EXPECT_FALSE(s.Command);
  EXPECT_EQ(s.ShortcutType, 2);
  EXPECT_EQ(s.FontSize, 10);
}

TEST(ShortcutForm, NewShortcutsGetACaption) {
  struct Row {
    ShortcutKindCode kind;
    const wchar_t* path;
    const wchar_t* parameters;
    bool isFolder;
    const wchar_t* caption;
  };
  for (const Row& row : std::initializer_list<Row>{
           {kWeb, L"http://www.example.org:80/x", L"", false, L"example.org"},
           {kWeb, L"http:///", L"", false, L"http:///"},
           {kFile, L"C:\\a\\b.exe", L"", false, L"b"},
           {kFile, L"C:\\a\\b.exe\\", L"", true, L"b.exe"},
           {kFile, L"C:\\", L"", true, L"C:\\"},
           {kCommand, L"", L" dir  c:", false, L"dir c:"},
       }) {
    ShortcutForm form;
    form.kind = row.kind;
    form.path = row.path;
    form.parameters = row.parameters;
    clsShortcut made = newShortcut(form, row.isFolder);
    EXPECT_EQ(made.FullCaption, row.caption);
    EXPECT_EQ(made.ShortcutType, static_cast<int>(row.kind));
    EXPECT_EQ(made.Command, row.kind == kCommand);
    form.caption = L"own";
    EXPECT_EQ(newShortcut(form, row.isFolder).FullCaption, L"own");
  }
}

}  // namespace
}  // namespace varnowick
