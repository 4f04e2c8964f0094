#include "core/container_files.h"

#include <gtest/gtest.h>

#include "tests/core/reference_document.h"
#include "tests/fakes/fake_codec.h"

namespace varnowick {
namespace {

struct Read {
  Workspace workspace;
  LoadReport report;
  std::vector<std::wstring> progress;

  explicit Read(std::string_view bytes) {
    FakeCodec codec;
    readContainerFile(
        bytes, L"0.con", codec, [this](const std::wstring& text) { progress.push_back(text); },
        workspace, report);
  }
  const clsContainer& container() const { return workspace.containers[ContainerSlot{0}]; }
  const clsShortcut& shortcut() const { return workspace.shortcuts[ShortcutSlot{0}]; }
};

std::vector<std::string> render(const Workspace& workspace) {
  FakeCodec codec;
  return renderContainerFiles(workspace, ContentsByPanel(workspace), codec);
}

// Every row of the container and of what lies in it.
constexpr const char* kReferenceFile =
    "106\r\n[Container]\r\n-1\r\n[Name]\r\nEverything\r\n[Backcolor]\r\n 111\r\n"
    "[Forecolor]\r\n 222\r\n[Icon]\r\nC:\\tile.ico\r\n[CopyPath]\r\n\r\n[AutoRefresh]\r\n 30\r\n"
    "[NOTE ON]\r\n1\r\n[START Note]\r\nfirst\r\n\r\n[Link]\r\n  kept as it stands \r\n"
    "[END Note] \r\n\r\n[END Note]\r\n[Reminder]\r\n1\r\n[ReminderTime]\r\n10:15:00\r\n"
    "[ReminderDate]\r\n2/3/2008\r\n[Readable]\r\nSunday, 3 February\r\nTEMP\r\n"
    "[Folded]\r\n0\r\n[Flipped]\r\n1\r\n[Detached]\r\n1\r\n[DetachedTab]\r\n1\r\n"
    "[DetachedAutoShow]\r\n1\r\n[DetachedAutoHide]\r\n1\r\n[DetachedCollapseOnClick]\r\n1\r\n"
    "[DetachedFadeOut]\r\n1\r\n[DetachedTabX]\r\n-15\r\n[DetachedTabY]\r\n 30\r\n"
    "[DetachedTabH]\r\n 1200\r\n[DetachedTabW]\r\n 450\r\n[DetachedTabDocked]\r\n 3\r\n"
    "[DetachedX]\r\n 100\r\n[DetachedY]\r\n-200\r\n[DetachedH]\r\n 4000\r\n"
    "[DetachedW]\r\n 3000\r\n[HideToolbar]\r\n1\r\n[Shrink]\r\n0\r\n[X]\r\n 1.5\r\n"
    "[Y]\r\n 2.25\r\n[W]\r\n 3000.5\r\n[H]\r\n 2000.75\r\n[ShowTag]\r\nwork\r\n"
    "[Picture]\r\n[Locked]\r\n0\r\n[PicX]\r\n 5\r\n[PicY]\r\n 6\r\n[PicW]\r\n 7\r\n"
    "[PicH]\r\n 8\r\n[PicPath]\r\nC:\\inside.bmp\r\nTEMP\r\n"
    "[Link]\r\n[Size]\r\n 8.25\r\n[LinkX]\r\n 240\r\n[LinkY]\r\n-0.1\r\n[LinkLabel]\r\n[Link]\r\n"
    "[LinkType]\r\n-7\r\n[LinkPath]\r\nC:\\Programs\\[Link].exe\r\n[LinkParam]\r\n/a \"b c\"\r\n"
    "[Color]\r\n 255\r\n[Bold]\r\n1\r\n[Confirm]\r\n1\r\n[Command]\r\nTrue\r\n"
    "[Icon]\r\n@:\\icons\\x.ico\r\n[GROUP]\r\nwork,home\r\n[EXCLUSIVE]\r\n0\r\n[TAGSTART]\r\n1\r\n";

TEST(ContainerFile, ReferenceIsWrittenLineByLineAndSurvives) {
  const std::vector<std::string> files = render(referenceDocument().workspace);
  ASSERT_EQ(files.size(), 3U);
  EXPECT_EQ(files[0], kReferenceFile);
  for (const std::string& file : files) {
    const Read read(file);
    EXPECT_TRUE(read.report.empty());
    EXPECT_EQ(render(read.workspace), std::vector<std::string>{file});
  }
  EXPECT_EQ(Read(files[1]).progress, std::vector<std::wstring>{L"Loading News..."});
  EXPECT_TRUE(Read(files[0]).container().Detached_Note_Visible);
}

// Without its pair a row falls back to its default, and only that row does.
TEST(ContainerFile, NoRowIsDead) {
  const std::string reference = kReferenceFile;
  for (const ContainerRow& row : containerTable()) {
    const std::string key(row.field.key);
    if (key == "[CopyPath]" || key == "[Folded]" || key == "[Shrink]") continue;
    const std::size_t at = reference.find(key + "\r\n");
    ASSERT_NE(at, std::string::npos) << key;
    const std::string end = row.field.kind == ValueKind::Note ? "\r\n[END Note]\r\n" : "\r\n";
    const std::size_t after =
        reference.find(end, at + key.size() + 2) + (end.size() > 2 ? end.size() : 2);
    const std::string without = reference.substr(0, at) + reference.substr(after);
    EXPECT_NE(render(Read(without).workspace).at(0), reference) << key;
    const std::string moved = without + reference.substr(at, after - at);
    EXPECT_EQ(render(Read(moved).workspace).at(0), reference) << key;
  }
}

TEST(ContainerFile, FeedsAndFoldersKeepTheirAddress) {
  const std::vector<std::string> files = render(referenceDocument().workspace);
  EXPECT_TRUE(files[1].starts_with("106\r\n[RSS]\r\nhttp://example.org/feed\r\nNews\r\n-1\r\n"));
  EXPECT_NE(files[1].find("[CopyPath]\r\n\r\n"), std::string::npos);
  const Read feed(files[1]);
  EXPECT_TRUE(feed.container().RSS);
  EXPECT_EQ(feed.container().CopyPath, L"http://example.org/feed");
  EXPECT_EQ(Read(files[2]).container().CopyPath, L"C:\\Papers");
}

// The tile's size must never take the place of the real one.
TEST(ContainerFile, FoldedAndShrunkBoxesKeepTheirFullSize) {
  Workspace w;
  clsContainer c;
  c.savedRect = {{10}, {20}, {4000.5F}, {3000}};
  for (const bool shrunk : {false, true}) {
    c.shrunk = shrunk;
    c.folded = !shrunk;
    // Moved since, and the tile stands elsewhere.
    c.rect = {{70}, {80}, {700}, {shrunk ? 950.0F : 350.0F}};
    w.containers.clear();
    w.containers.add(c);
    const std::string file = render(w).at(0);
    EXPECT_NE(file.find("[X]\r\n 70\r\n[Y]\r\n 80\r\n[W]\r\n 4000\r\n[H]\r\n 3000\r\n"),
              std::string::npos);
    const Read read(file);
    const TwipsRect full{{70}, {80}, {4000}, {3000}};
    const TwipsRect folded{{70}, {80}, {4000}, {350}};
    const TwipsRect tile{{70}, {80}, {700}, {950}};
    EXPECT_EQ(read.container().savedRect, full);
    EXPECT_EQ(read.container().rect, shrunk ? tile : folded);
    EXPECT_EQ(render(read.workspace).at(0), file);
  }
}

TEST(ContainerFile, AContainerBeingDeletedIsNotWritten) {
  Workspace w;
  clsContainer c;
  c.visible = false;
  w.containers.add(c);
  c.Detached = true;
  w.containers.add(c);
  EXPECT_EQ(render(w).size(), 1U);
}

std::string shortcutFile(std::string_view version, int pairs) {
  const char* keys[] = {"[Size]",     "[LinkX]",     "[LinkY]", "[LinkLabel]", "[LinkType]",
                        "[LinkPath]", "[LinkParam]", "[Color]", "[Bold]",      "[Confirm]",
                        "[Command]",  "[Icon]",      "[GROUP]", "[EXCLUSIVE]", "[TAGSTART]"};
  const char* values[] = {" 8", " 1", " 2", "label", " 1",   "path", "param", "-1",
                          "1",  "1",  "1",  "TEMP",  "tags", "0",    "1"};
  std::string file(version);
  for (int record = 0; record < 2; ++record) {
    file += "\r\n[Link]";
    for (int i = 0; i < pairs; ++i) file += std::string("\r\n") + keys[i] + "\r\n" + values[i];
  }
  return file + "\r\n[Name]\r\nafter\r\n";
}

TEST(ContainerFile, OlderVersionsHaveShorterShortcuts) {
  const struct {
    const char* version;
    int pairs;
  } cases[] = {{"[1.01]", 9}, {"[1.04]", 13}, {"[1.05]", 14}, {"106", 15}};
  for (const auto& c : cases) {
    const Read read(shortcutFile(c.version, c.pairs));
    EXPECT_TRUE(read.report.empty()) << c.version;
    ASSERT_EQ(read.workspace.shortcuts.count(), 2U) << c.version;
    EXPECT_EQ(read.container().name, L"after") << c.version;
    const clsShortcut& s = read.workspace.shortcuts[ShortcutSlot{1}];
    EXPECT_EQ(s.FullCaption, L"label");
    EXPECT_TRUE(s.FontBold);
    EXPECT_EQ(s.Color, -1);
    EXPECT_EQ(s.Confirm, c.pairs > 9);
    EXPECT_EQ(s.Command, c.pairs > 9);
    EXPECT_EQ(s.Icon, L"");
    EXPECT_EQ(s.Tags, c.pairs > 12 ? L"tags" : L"");
    EXPECT_EQ(s.TagStart, c.pairs > 14);
  }
}

TEST(ContainerFile, DamageIsReportedAndTheRestIsTaken) {
  const struct {
    const char* what;
    const char* file;
    std::size_t shortcuts;
    const wchar_t* name;
  } cases[] = {
      {"empty", "", 0, L""},
      {"unknown version", "107\r\n[Name]\r\nn\r\n", 0, L"n"},
      {"wrong key at a position", "[1.01]\r\n[Link]\r\n[Size]\r\n 8\r\n[Other]\r\n 1\r\n", 1, L""},
      {"cut off at once", "106\r\n[Name]\r\nn\r\n[Link]\r\n", 0, L"n"},
      {"note without end", "106\r\n[Name]\r\nn\r\n[START Note]\r\ntext\r\n", 0, L"n"},
      {"note end with blanks", "106\r\n[START Note]\r\ntext\r\n [END Note] \r\n[Name]\r\nn\r\n", 0,
       L"n"},
      {"bytes without meaning", "106\r\n[Name]\r\nn\x81\r\n", 0, L"n\xFFFD"},
  };
  for (const auto& c : cases) {
    const Read read(c.file);
    EXPECT_FALSE(read.report.empty()) << c.what;
    EXPECT_EQ(read.workspace.containers.count(), 1U) << c.what;
    EXPECT_EQ(read.workspace.shortcuts.count(), c.shortcuts) << c.what;
    EXPECT_EQ(read.container().name, c.name) << c.what;
  }
}

TEST(ContainerFile, APanelTakesNoMoreThanItCanHold) {
  std::string file = "[1.01]\r\n";
  for (int i = 0; i < 251; ++i) {
    file += "[Link]\r\n";
    for (int pair = 0; pair < 9; ++pair)
      file += std::string(shortcutFields()[static_cast<std::size_t>(pair)].key) + "\r\n0\r\n";
  }
  const Read read(file);
  EXPECT_EQ(read.workspace.shortcuts.count(), 250U);
  EXPECT_EQ(read.report.count(), 1U);
}

TEST(ContainerFile, EveryPrefixLoads) {
  const std::string whole = kReferenceFile;
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const Read read(std::string_view(whole).substr(0, size));
    if (size > whole.find("[Backcolor]")) {
      EXPECT_EQ(read.container().name, L"Everything");
    }
    if (size > whole.find("[Reminder]")) {
      EXPECT_TRUE(read.container().note.starts_with(L"first\r\n\r\n[Link]\r\n"));
    }
    const std::vector<std::string> again = render(read.workspace);
    EXPECT_EQ(render(Read(again.at(0)).workspace), again) << size;
  }
}

TEST(ContainerFile, TextOfAnyScriptSurvives) {
  for (const wchar_t* text : {L"caf\x00E9 \x20AC", L"\x4E2D\x6587", L"\x00C3\x00A9",
                              L"mixed \x00E9 \x05D0", L"\U0001F600"}) {
    Document d = referenceDocument();
    clsContainer& c = d.workspace.containers[ContainerSlot{0}];
    c.name = text;
    c.note = std::wstring(text) + L"\r\n" + text;
    for (const auto page : {FakeCodec::CodePage::Western, FakeCodec::CodePage::AsciiOnly}) {
      FakeCodec codec(page);
      const ContentsByPanel contents(d.workspace);
      const std::string file = renderContainerFile(c, contents.of(Panel{ContainerSlot{0}}), codec);
      Workspace w;
      LoadReport report;
      const ContainerSlot slot = readContainerFile(file, L"0.con", codec, {}, w, report);
      EXPECT_TRUE(report.empty());
      EXPECT_EQ(w.containers[slot].name, text);
      EXPECT_EQ(w.containers[slot].note, c.note);
    }
  }
}

}  // namespace
}  // namespace varnowick
