#include "shortcuts/outside_links.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/shortcuts/launch_world.h"
#include "tests/support/words.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(OutsideLinks, OnlyAddressesOfTheAllowedSchemesAreSafe) {
  const std::wstring longest = L"http://" + std::wstring(2041, L'a');
  for (const std::wstring& safe : words(L"http://a.b/c?d=e&f#g HTTPS://a ftp://user@host/f "
                                        L"mailto:a@b.c?subject=x http://\u00FCber.example/\u4E2D " +
                                        longest))
    EXPECT_TRUE(isSafeOutsideLink(safe)) << testing::PrintToString(safe);
  std::vector<std::wstring> bad = words(
      L"http http: http:// http:///x http:/a http:\\\\server\\x mailto: mailto:-run mailto://x "
      L"file:///c:/x.exe C:\\x.exe \\\\server\\share\\x.exe javascript:alert(1) cmd.exe "
      L"ms-settings:x shell:startup https\u200B://a data:text/html,x vbscript:x www.example.com " +
      longest + L"a");
  for (const wchar_t* more : {L"", L"x http://a", L" http://a", L"http://a b", L"http://a\" --run",
                              L"http://a\nfile://b", L"http://a\x7F", L"http://a\x80"})
    bad.emplace_back(more);
  bad.emplace_back(L"http://a\0b", 10);
  for (const wchar_t c : std::wstring_view(L"<>`\\")) bad.push_back(std::wstring(L"http://a") + c);
  for (const std::wstring& link : bad)
    EXPECT_FALSE(isSafeOutsideLink(link)) << testing::PrintToString(link);
}

TEST(OutsideLinks, NoShortcutRunsTheTextOfItsAddress) {
  LaunchWorld w;
  clsShortcut shortcut;
  const auto outcome = [&](const std::wstring& path) {
    shortcut.Path = path;
    return LaunchShortcut(w.platform, w.host, shortcut).outcome;
  };
  for (const wchar_t* script : {L"javascript:alert(1)", L" Java\tScript :x", L"url:VBScript:x",
                                L"data:text/html,x", L"ms-msdt:/id x", L"mk:@MSITStore:x"})
    EXPECT_EQ(outcome(script), LaunchOutcome::FailedReported) << script;
  EXPECT_THAT(w.shell.started, IsEmpty());
  for (const wchar_t* other : {L"ms-settings:x", L"C:\\data.txt", L"steam://run/1", L"database",
                               L"abcdefghijklmnopqrstuvwxyz:data:x"})
    EXPECT_EQ(outcome(other), LaunchOutcome::Started) << other;
}

TEST(OutsideLinks, OthersAreShownWithTheirTextAndNotOpened) {
  LaunchWorld w;
  const std::wstring bad = L"file:///a \u202Egpj.exe\r\n" + std::wstring(5000, L'x');
  EXPECT_FALSE(openOutsideLink(w.platform, {1}, bad));
  EXPECT_THAT(w.shell.started, IsEmpty());
  ASSERT_THAT(w.msgBox.shown, testing::SizeIs(1));
  const std::wstring& text = w.msgBox.shown[0].text;
  EXPECT_NE(text.find(L"file:///a \uFFFDgpj.exe\uFFFD\uFFFDxxx"), std::wstring::npos);
  EXPECT_TRUE(text.ends_with(L"xxx...") && text.size() < 500);
  EXPECT_TRUE(openOutsideLink(w.platform, {1}, L"http://a/b"));
  EXPECT_THAT(w.shell.started, ElementsAre(FakeShell::Started{1, L"", L"http://a/b", L"", L""}));
}

}  // namespace
}  // namespace varnowick
