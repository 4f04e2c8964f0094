#include "shortcuts/paths.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/fakes/fake_system.h"

namespace varnowick {
namespace {

TEST(Paths, RelativeAndBackAndTheirFolder) {
  const std::pair<const wchar_t*, const wchar_t*> resolved[] = {
      {L"@:\\x\\y.exe", L"D:\\x\\y.exe"}, {L"@", L"D"}, {L"", L""}, {L"C:\\a@b", L"C:\\a@b"}};
  for (const auto& [path, there] : resolved) EXPECT_EQ(ResolveRelativePath(path, L"D:\\V"), there);
  EXPECT_EQ(ResolveRelativePath(L"@:\\x", L""), L":\\x");
  EXPECT_EQ(MakeRelativePath(L"C:\\Tools\\x.exe"), L"@:\\Tools\\x.exe");
  EXPECT_EQ(MakeRelativePath(L""), L"");
  EXPECT_EQ(FolderOfPath(L"C:\\a\\b\\c.exe"), L"C:\\a\\b\\");
  EXPECT_EQ(FolderOfPath(L"c.exe"), L"");
}

TEST(Paths, EffectivePathTriesItsRulesInOrder) {
  FakeSystem system;
  system.program = L"D:\\V";
  clsShortcut s;
  s.Path = L"@:\\p";
  EXPECT_EQ(EffectivePath(s, true, system), L"D:\\p");
  s.Command = true;
  EXPECT_EQ(EffectivePath(s, true, system), L"C:\\Windows\\System32\\cmd.exe");
  s.ShortcutType = 1;
  EXPECT_EQ(EffectivePath(s, true, system), L"D:\\V\\Varnowick Home Page.html");
  s.Icon = L"@:\\i.ico";
  EXPECT_EQ(EffectivePath(s, true, system), L"D:\\i.ico");
  EXPECT_EQ(EffectivePath(s, false, system), L"D:\\V\\Varnowick Home Page.html");
}

TEST(Paths, OnlyFilesHiddenFrom32BitProgramsGoThroughSysnative) {
  const std::set<std::wstring> seen{L"C:\\Windows\\System32\\both.exe",
                                    L"C:\\Windows\\Sysnative\\both.exe",
                                    L"C:\\Windows\\Sysnative\\sub\\only64.exe"};
  const auto exists = [&](const std::wstring& p) { return seen.contains(p); };
  const auto from32 = [&](const std::wstring& p, bool wow64 = true) {
    return PathAsSeenFrom32Bit(p, wow64, L"C:\\Windows", exists);
  };
  const std::wstring hidden = L"c:\\windows\\SYSTEM32\\sub\\only64.exe";
  EXPECT_EQ(from32(hidden), L"C:\\Windows\\Sysnative\\sub\\only64.exe");
  for (const wchar_t* same :
       {L"C:\\Windows\\System32\\both.exe", L"C:\\Windows\\System32\\nowhere.exe",
        L"C:\\Windows\\System32\\", L"C:\\Windows\\System32x\\sub\\only64.exe", L"only64.exe", L""})
    EXPECT_EQ(from32(same), same);
  EXPECT_EQ(from32(hidden, false), hidden);
}

TEST(Paths, FoldersOfProgramsAreThoseThatTheLinkWasWrittenFor) {
  const auto exists = [](const std::wstring& path) { return path.starts_with(L"C:\\P\\Both"); };
  for (const bool wow64 : {true, false}) {
    const auto expand = [&](const std::wstring& text) {
      const std::size_t end = text.find(L'%', 1);
      const std::wstring name = text.substr(0, end + 1), rest = text.substr(end + 1);
      if (name == L"%ProgramW6432%") return wow64 ? L"C:\\P" + rest : text;
      return (wow64 ? L"C:\\P86" : L"C:\\P") + rest;
    };
    const auto expanded = [&](const wchar_t* text) {
      return ExpandAsWritten(text, expand, exists);
    };
    EXPECT_EQ(expanded(L"%programfiles%\\Both.exe"), L"C:\\P\\Both.exe");
    EXPECT_EQ(expanded(L"%ProgramFiles%\\Old.exe"),
              wow64 ? L"C:\\P86\\Old.exe" : L"C:\\P\\Old.exe");
    EXPECT_EQ(expanded(L"%ProgramFilesX%\\Both.exe"),
              wow64 ? L"C:\\P86\\Both.exe" : L"C:\\P\\Both.exe");
  }
}

}  // namespace
}  // namespace varnowick
