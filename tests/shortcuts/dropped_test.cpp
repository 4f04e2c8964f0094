#include "shortcuts/dropped.h"

#include <gtest/gtest.h>

#include "shortcuts/link_files.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/memory_files.h"
#include "tests/shortcuts/shell_link_bytes.h"

namespace varnowick {
namespace {

constexpr int kWeb = static_cast<int>(ShortcutKindCode::WebAddress);
constexpr int kFile = static_cast<int>(ShortcutKindCode::FileOrFolder);

class DroppedTest : public testing::Test {
 protected:
  MemoryFiles files;
  FakeCodec codec;
  DropSurroundings surroundings{files, codec, [](const std::wstring& text) {
                                  return text == L"%windir%\\n.exe" ? L"C:\\Win\\n.exe" : text;
                                }};

  DropRecords read(const Dropped& dropped, bool extractURLs = true) {
    return recordsFromDrop(dropped, extractURLs, surroundings);
  }
  clsShortcut readPath(const std::wstring& path, std::uint64_t size = 0) {
    const DropRecords records = read({.paths = {{path, false, size}}});
    EXPECT_EQ(records.shortcuts.size(), 1U);
    return records.shortcuts.empty() ? clsShortcut{} : records.shortcuts.front();
  }
};

TEST_F(DroppedTest, FilesAndFoldersKeepTheirNames) {
  const struct {
    const wchar_t* path;
    bool isFolder;
    const wchar_t* caption;
  } cases[] = {{L"C:\\a\\Tool.EXE", false, L"Tool"},
               {L"C:\\a\\notes.txt", false, L"notes.txt"},
               {L"C:\\a\\lib.exe", true, L"lib.exe"},
               {L"C:\\a\\b\\", true, L"b"},
               {L"C:\\", true, L"C:\\"},
               {L"\\\\srv\\pub", true, L"pub"},
               {L"C:\\a\\.exe", false, L".exe"}};
  Dropped dropped;
  for (const auto& c : cases) dropped.paths.push_back({c.path, c.isFolder});
  for (const wchar_t* bad : {L"", L"C:\\a\r\nb", L"C:\\\"a"}) dropped.paths.push_back({bad, false});
  dropped.paths.push_back({std::wstring(4097, L'a'), false});
  const DropRecords records = read(dropped);
  ASSERT_EQ(records.shortcuts.size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const clsShortcut& shortcut = records.shortcuts[i];
    EXPECT_EQ(shortcut.FullCaption, cases[i].caption);
    EXPECT_EQ(shortcut.Path, cases[i].path);
    EXPECT_TRUE(shortcut.ShortcutType == kFile && !shortcut.Confirm);
  }
}

TEST_F(DroppedTest, LinkFilesAreFollowedWhereTheyCanBe) {
  ShellLinkBytes link;
  link.flags = ShellLinkBytes::kArguments | ShellLinkBytes::kIcon | ShellLinkBytes::kUnicode;
  link.rest = ShellLinkBytes::wideText(u"/x") + ShellLinkBytes::wideText(u"C:\\i.ico") +
              ShellLinkBytes::environmentBlock(0xA0000001, u"%windir%\\n.exe");
  files.contents[L"C:\\Pad.lnk"] = link.bytes();
  clsShortcut shortcut = readPath(L"C:\\Pad.lnk");
  EXPECT_EQ(shortcut.Path + L"|" + shortcut.Parameters + L"|" + shortcut.Icon,
            L"C:\\Win\\n.exe|/x|C:\\i.ico");
  EXPECT_EQ(shortcut.FullCaption, L"Pad");
  link.rest = ShellLinkBytes::wideText(u"/x") + ShellLinkBytes::wideText(u"\\\\evil\\i.ico") +
              ShellLinkBytes::environmentBlock(0xA0000001, u"%windir%\\n.exe");
  files.contents[L"C:\\Remote.lnk"] = link.bytes();
  EXPECT_EQ(readPath(L"C:\\Remote.lnk").Icon, L"");

  ShellLinkBytes advertised = link;
  advertised.flags |= 1U << 12;
  ShellLinkBytes noFile;
  files.contents[L"C:\\advertised.lnk"] = advertised.bytes();
  files.contents[L"C:\\nofile.lnk"] = noFile.bytes();
  files.contents[L"C:\\broken.lnk"] = "L";
  for (const wchar_t* path :
       {L"C:\\advertised.lnk", L"C:\\nofile.lnk", L"C:\\broken.lnk", L"C:\\missing.lnk"}) {
    shortcut = readPath(path);
    EXPECT_EQ(shortcut.Path, path);
    EXPECT_EQ(shortcut.Parameters, L"");
  }
  EXPECT_EQ(readPath(L"C:\\Pad.lnk", kMaxLinkFile + 1).Path, L"C:\\Pad.lnk");
}

TEST_F(DroppedTest, WebLinkFilesBecomeWebAddresses) {
  files.contents[L"C:\\Home.url"] = "[InternetShortcut]\nURL=www.a.org\nIconFile=C:\\i.ico";
  files.contents[L"C:\\Bad.url"] = "[InternetShortcut]\nURL=javascript:x";
  files.contents[L"C:\\Remote.url"] = "[InternetShortcut]\nURL=http://b\nIconFile=\\\\evil\\i.ico";
  const clsShortcut home = readPath(L"C:\\Home.url");
  EXPECT_EQ(home.Path + L"|" + home.FullCaption + L"|" + home.Icon,
            L"http://www.a.org|Home|C:\\i.ico");
  EXPECT_TRUE(home.ShortcutType == kWeb && !home.Confirm);
  EXPECT_EQ(readPath(L"C:\\Bad.url").Path, L"C:\\Bad.url");
  EXPECT_EQ(readPath(L"C:\\Remote.url").Icon, L"");
}

TEST_F(DroppedTest, WhatComesFromABrowserAsksBeforeItStarts) {
  const DropRecords link =
      read({.address = L"https://www.a.org/x", .title = L" A\r\npage ", .text = L"other"});
  ASSERT_EQ(link.shortcuts.size(), 1U);
  EXPECT_EQ(link.shortcuts[0].FullCaption, L"A page");
  EXPECT_EQ(link.shortcuts[0].Path, L"https://www.a.org/x");

  const DropRecords text = read({.text = L"http://a.org/1 and www.b.org"});
  ASSERT_EQ(text.shortcuts.size(), 2U);
  EXPECT_EQ(text.shortcuts[1].FullCaption, L"b.org");

  const DropRecords path = read({.text = L"\"C:\\x\\y.exe\""}, false);
  ASSERT_EQ(path.shortcuts.size(), 1U);
  EXPECT_EQ(path.shortcuts[0].ShortcutType, kFile);

  std::wstring list;
  for (int i = 0; i < 150; ++i) list += L"http://a.org/" + std::to_wstring(i) + L"\r\n";
  const DropRecords most = read({.text = list}, false);
  EXPECT_EQ(most.shortcuts.size(), 100U);
  EXPECT_NE(most.refusal, L"");
  EXPECT_TRUE(read({.text = list + L"and prose"}, false).shortcuts.empty());

  for (const DropRecords* records : {&link, &text, &path}) {
    EXPECT_EQ(records->refusal, L"");
    for (const clsShortcut& shortcut : records->shortcuts) EXPECT_TRUE(shortcut.Confirm);
  }
}

TEST_F(DroppedTest, RefusesWhatIsNoAddress) {
  for (const Dropped& dropped :
       {Dropped{.address = L"javascript:alert(1)"}, Dropped{.address = L"file:///C:/x.exe"},
        Dropped{.text = L"shell:startup"}, Dropped{.text = L"some words"},
        Dropped{.text = L"\\\\server"}, Dropped{.text = std::wstring(6'000'000, L'a')}}) {
    const DropRecords records = read(dropped);
    EXPECT_TRUE(records.shortcuts.empty());
    EXPECT_TRUE(!records.refusal.empty() && records.refusal.size() < 500);
  }
  EXPECT_TRUE(read({.text = L"two http://a.org words"}, false).shortcuts.empty());
  EXPECT_EQ(read({.text = L"http://a.org"}, false).shortcuts.size(), 1U);
  // What nothing links to may become a note, unless nothing in it can be seen.
  EXPECT_EQ(read({.text = L"\nsome\rwords\r\n"}).note, L"\r\nsome\r\nwords\r\n");
  EXPECT_EQ(read({.text = L" \r\n\x200B"}).note, L"");
}

TEST_F(DroppedTest, CaptionsStayWithinTheirLimit) {
  std::wstring words;
  for (int i = 0; i < 500; ++i) words += L"word ";
  EXPECT_EQ(tidyCaption(words).size(), 997U);
  EXPECT_TRUE(tidyCaption(words).ends_with(L"word..."));
  EXPECT_EQ(tidyCaption(std::wstring(5000, L'x')).size(), kMaxCaption);
  EXPECT_EQ(tidyCaption(std::wstring(1000, L'x')), std::wstring(1000, L'x'));
  EXPECT_EQ(tidyCaption(L" a\u200B\u202E\u2060\uFEFFb \t\u2028\u00A0 c\r\n"), L"ab c");
}

class AddShortcutsTest : public testing::Test {
 protected:
  Workspace workspace;
  Settings settings;
  FindPlace inARow = [](Panel, const clsShortcut&, Point<Twips> from) { return from; };

  Added add(std::size_t count, Panel panel) {
    return addShortcuts(workspace, settings, std::vector<clsShortcut>(count), panel, {{120}, {240}},
                        inARow);
  }
};

TEST_F(AddShortcutsTest, FullPanelsTakeWhatFits) {
  const Panel panel{workspace.containers.add({})};
  EXPECT_EQ(add(249, panel).slots.size(), 249U);
  const Added last = add(3, panel);
  EXPECT_EQ(last.slots.size(), 1U);
  EXPECT_STREQ(last.refusal,
               L"There's a limit of 250 shortcuts pair container (much less is recommended!)");
  EXPECT_STREQ(dropRefusal(workspace, settings, panel), kContainerFullMessage);
  EXPECT_STREQ(dropRefusal(workspace, settings, picBack), nullptr);
  EXPECT_EQ(add(351, picBack).slots.size(), 350U);
  EXPECT_STREQ(
      dropRefusal(workspace, settings, picBack),
      L"There's a limit of 350 shortcuts in the workspace. Please use containers instead.");
}

TEST_F(AddShortcutsTest, NewShortcutsAreSeen) {
  const Panel panel{workspace.containers.add({})};
  workspace.containers[panel.container].ShowingTag = L"Work";
  const Added added = add(1, panel);
  const clsShortcut& shortcut = workspace.shortcuts[added.slots.at(0)];
  EXPECT_EQ(shortcut.Tags, L"Work");
  EXPECT_EQ(shortcut.position, (Point<Twips>{{120}, {240}}));
  workspace.removeContainer(panel.container);
  EXPECT_EQ(workspace.shortcuts[add(1, panel).slots.at(0)].parent, picBack);

  settings.locked = true;
  EXPECT_STREQ(add(1, picBack).refusal, kLockedMessage);
  EXPECT_EQ(workspace.shortcuts.count(), 1U);
}

}  // namespace
}  // namespace varnowick
