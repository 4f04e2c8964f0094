#include "shortcuts/shortcut_form.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

constexpr ShortcutKindCode kWeb = ShortcutKindCode::WebAddress;
constexpr ShortcutKindCode kFile = ShortcutKindCode::FileOrFolder;
constexpr ShortcutKindCode kCommand = ShortcutKindCode::Command;

TEST(ShortcutForm, PathsByKind) {
  const wchar_t* refused = nullptr;
  const struct {
    ShortcutKindCode kind;
    const wchar_t *entered, *result;
  } rows[] = {
      {kWeb, L"https://example.org/a b", L"https://example.org/a%20b"},
      {kWeb, L" example.org/x\r\n", L"http://example.org/x"},
      {kWeb, L"localhost:8080", L"http://localhost:8080"},
      {kWeb, L"localhost:8080/a:b", L"http://localhost:8080/a:b"},
      {kWeb, L"mailto:me@example.org", L"mailto:me@example.org"},
      {kFile, L"\"C:\\My files\\a.exe\" ", L"C:\\My files\\a.exe"},
      {kFile, L"notepad.exe", L"notepad.exe"},
      {kFile, L"@:\\x\\y.exe", L"@:\\x\\y.exe"},
      {kFile, L"", refused},
      {kFile, L"\"\"", refused},
      {kFile, L"\"C:\\a.exe\" /x", refused},
      {kCommand, L"", L""},
  };
  const auto check = [](ShortcutKindCode kind, const wchar_t* entered, const wchar_t* result) {
    ShortcutForm form;
    form.kind = kind;
    form.path = entered;
    form.parameters = L"dir";
    const auto fault = validate(form);
    ASSERT_EQ(fault.has_value(), result == nullptr) << testing::PrintToString(entered);
    if (fault)
      EXPECT_EQ(fault->field, FormField::Path);
    else
      EXPECT_EQ(form.path, result);
  };
  for (const auto& row : rows) check(row.kind, row.entered, row.result);
  for (const wchar_t* address :
       {L"", L" \t ", L"about:blank", L"javascript:alert(1)", L"java\tscript:alert(1)",
        L"data:text/html,x", L"ms-msdt:/id x", L"http://", L"two words", L"C:\\a.html",
        L"\\\\server\\share", L"a<b"})
    check(kWeb, address, refused);
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
  s.FontBold = s.Confirm = s.TagStart = s.TagHidden = true;
  s.Color = 0x123456;
  s.FontSize = 12.5F;
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
  const auto fields = [](const clsShortcut& s) {
    return std::tuple(s.Path, s.FullCaption, s.ShortcutType, s.Command, s.Parameters, s.FontSize,
                      s.Icon, s.Tags, s.Color, s.FontBold, s.Confirm, s.TagStart, s.TagHidden,
                      s.parent.container.index, s.position.x);
  };
  EXPECT_TRUE(fields(after) == fields(before));
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
  EXPECT_EQ(s.Path + L"|" + s.FullCaption + L"|" + s.Parameters + L"|" + s.Icon + L"|" + s.Tags,
            L"http://example.org|two lines||C:\\b.ico|x, y");
  EXPECT_TRUE(isSmall(s) && s.ShortcutType == 1 && s.Color == -1);
  EXPECT_FALSE(s.FontBold || s.Confirm || s.TagStart);

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
    const wchar_t *path, *parameters;
    bool isFolder;
    const wchar_t* caption;
  };
  for (const Row& row : {Row{kWeb, L"http://www.example.org:80/x", L"", false, L"example.org"},
                         {kWeb, L"http:///", L"", false, L"http:///"},
                         {kFile, L"C:\\a\\b.exe", L"", false, L"b"},
                         {kFile, L"C:\\a\\b.exe\\", L"", true, L"b.exe"},
                         {kCommand, L"", L" dir  c:", false, L"dir c:"}}) {
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
