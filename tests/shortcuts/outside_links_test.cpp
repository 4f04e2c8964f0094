#include "shortcuts/outside_links.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/shortcuts/launch_world.h"

namespace varnowick {
namespace {

TEST(OutsideLinks, OnlyAddressesOfTheAllowedSchemesAreSafe) {
  for (const wchar_t* safe : {L"http://a.b/c?d=e&f#g", L"HTTPS://a", L"ftp://user@host/f",
                              L"mailto:a@b.c?subject=x", L"http://\u00FCber.example/\u4E2D"})
    EXPECT_TRUE(isSafeOutsideLink(safe)) << safe;
  for (const wchar_t* bad : {L"",
                             L"http",
                             L"http:",
                             L"http://",
                             L"http:///x",
                             L"http:\\\\server\\x",
                             L"mailto:",
                             L"mailto:-run",
                             L"mailto://x",
                             L"file:///c:/x.exe",
                             L"C:\\x.exe",
                             L"\\\\server\\share\\x.exe",
                             L"javascript:alert(1)",
                             L"cmd.exe",
                             L"x http://a",
                             L" http://a",
                             L"http://a b",
                             L"http://a\" --run",
                             L"http://a\nfile://b",
                             L"ms-settings:x",
                             L"shell:startup",
                             L"https\u200B://a",
                             L"data:text/html,x",
                             L"vbscript:x",
                             L"www.example.com"})
    EXPECT_FALSE(isSafeOutsideLink(bad)) << bad;
  EXPECT_FALSE(isSafeOutsideLink(std::wstring_view(L"http://a\0b", 10)));
  EXPECT_FALSE(isSafeOutsideLink(L"http://" + std::wstring(100000, L'a')));
}

TEST(OutsideLinks, NoShortcutRunsTheTextOfItsAddress) {
  LaunchWorld w;
  clsShortcut shortcut;
  for (const wchar_t* script : {L"javascript:alert(1)", L" Java\tScript :x", L"url:VBScript:x",
                                L"data:text/html,x", L"ms-msdt:/id x", L"mk:@MSITStore:x"}) {
    shortcut.Path = script;
    EXPECT_EQ(LaunchShortcut(w.platform, w.host, shortcut).outcome, LaunchOutcome::FailedReported);
  }
  EXPECT_THAT(w.shell.started, testing::IsEmpty());
  for (const wchar_t* other : {L"ms-settings:x", L"C:\\data.txt", L"steam://run/1", L"database"}) {
    shortcut.Path = other;
    EXPECT_EQ(LaunchShortcut(w.platform, w.host, shortcut).outcome, LaunchOutcome::Started);
  }
}

TEST(OutsideLinks, OthersAreShownWithTheirTextAndNotOpened) {
  LaunchWorld w;
  const std::wstring bad = L"file:///\u202Egpj.exe\r\n" + std::wstring(5000, L'x');
  EXPECT_FALSE(openOutsideLink(w.platform, {1}, bad));
  EXPECT_THAT(w.shell.started, testing::IsEmpty());
  ASSERT_THAT(w.msgBox.shown, testing::SizeIs(1));
  EXPECT_NE(w.msgBox.shown[0].text.find(L"file:///\uFFFDgpj.exe\uFFFD\uFFFDxxx"),
            std::wstring::npos);
  EXPECT_LT(w.msgBox.shown[0].text.size(), 500U);
  EXPECT_TRUE(openOutsideLink(w.platform, {1}, L"http://a/b"));
  EXPECT_THAT(w.shell.started,
              testing::ElementsAre(FakeShell::Started{1, L"", L"http://a/b", L"", L""}));
}

}  // namespace
}  // namespace varnowick
