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
};

std::vector<std::string> render(const Workspace& workspace) {
  FakeCodec codec;
  return renderContainerFiles(workspace, ContentsByPanel(workspace), codec);
}

TEST(ContainerFile, ReferenceSurvives) {
  for (const std::string& file : goldenContainerFiles())
    EXPECT_EQ(render(Read(file).workspace), std::vector<std::string>{file});
  const std::vector<std::string> files = render(referenceDocument().workspace);
  for (const std::string& file : files) {
    // Lines in another style, which take the longer way, say the same.
    std::string otherStyle = file;
    std::erase(otherStyle, '\r');
    for (const Read& read : {Read(file), Read(otherStyle)}) {
      EXPECT_TRUE(read.report.empty());
      EXPECT_EQ(render(read.workspace), std::vector<std::string>{file});
    }
  }
  EXPECT_TRUE(Read(files[0]).container().Detached_Note_Visible);
  const Read feed(files[1]);
  EXPECT_EQ(feed.progress, std::vector<std::wstring>{L"Loading News..."});
  EXPECT_TRUE(feed.container().RSS);
  EXPECT_EQ(feed.container().CopyPath, L"http://feeds.example.invalid/news.xml");
  EXPECT_EQ(Read(files[2]).container().CopyPath, L"C:\\Folder shown");
}

// Each row where it is not expected: behind all the others.
TEST(ContainerFile, RowsAreTakenInAnyOrder) {
  const std::string reference = render(referenceDocument().workspace)[0];
  for (const ContainerRow& row : containerTable()) {
    const std::size_t at = reference.find("\r\n" + std::string(row.field.key) + "\r\n") + 2;
    const bool note = row.field.kind == ValueKind::Note;
    const std::size_t after = note ? reference.find("[Reminder]")
                                   : reference.find("\r\n", reference.find("\r\n", at) + 2) + 2;
    const std::string moved =
        reference.substr(0, at) + reference.substr(after) + reference.substr(at, after - at);
    EXPECT_EQ(render(Read(moved).workspace).at(0), reference) << row.field.key;
  }
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
    EXPECT_EQ(read.container().savedRect, (TwipsRect{{70}, {80}, {4000}, {3000}}));
    EXPECT_EQ(read.container().rect.size(),
              shrunk ? kShrunkSize : (Size<Twips>{{4000}, kTitleStripHeight}));
    EXPECT_EQ(render(read.workspace).at(0), file);
  }
}

TEST(ContainerFile, AContainerBeingDeletedIsNotWritten) {
  Workspace w;
  for (int i = 0; i < 2; ++i) w.containers[w.containers.add()].visible = false;
  w.containers[{1}].Detached = true;
  EXPECT_EQ(render(w).size(), 1U);
}

std::string shortcutFile(std::string_view version, std::size_t pairs, int records) {
  const char* values[] = {" 8", " 1", " 2", "label", " 1",   "path", "param", "-1",
                          "1",  "1",  "1",  "TEMP",  "tags", "0",    "1"};
  std::string file(version);
  for (; records > 0; --records) {
    file += "\r\n[Link]";
    for (std::size_t i = 0; i < pairs; ++i)
      file += "\r\n" + std::string(shortcutFields()[i].key) + "\r\n" + values[i];
  }
  return file + "\r\n[Name]\r\nafter\r\n";
}

TEST(ContainerFile, OlderVersionsHaveShorterShortcuts) {
  const std::pair<const char*, std::size_t> cases[] = {
      {"[1.01]", 9}, {"[1.02]", 12}, {"[1.04]", 13}, {"[1.05]", 14}, {"106", 15}};
  for (const auto& [version, pairs] : cases) {
    const Read read(shortcutFile(version, pairs, 2));
    EXPECT_EQ(read.report.count(), pairs == 12 ? 1U : 0U) << version;  // one that is not known
    ASSERT_EQ(read.workspace.shortcuts.count(), 2U) << version;
    EXPECT_EQ(read.container().name, L"after") << version;
    const clsShortcut& s = read.workspace.shortcuts[ShortcutSlot{1}];
    EXPECT_EQ(s.FullCaption + s.Icon + s.Tags, pairs > 12 ? L"labeltags" : L"label");
    EXPECT_TRUE(s.FontBold && s.Color == -1);
    EXPECT_TRUE(s.Confirm == (pairs > 9) && s.Command == (pairs > 9) && s.TagStart == (pairs > 14));
  }
  const Read tooMany(shortcutFile("[1.01]", 9, 251));
  EXPECT_EQ(tooMany.workspace.shortcuts.count(), 250U);
  EXPECT_EQ(tooMany.container().name, L"after");
  EXPECT_EQ(tooMany.report.count(), 1U);
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

TEST(ContainerFile, TextOfAnyScriptSurvives) {
  for (const wchar_t* text :
       {L"caf\x00E9 \x20AC", L"\x4E2D\x6587", L"\x00C3\x00A9", L"\U0001F600"}) {
    Workspace w = referenceDocument().workspace;
    clsContainer& c = w.containers[ContainerSlot{0}];
    c.name = text;
    c.note = std::wstring(text) + L"\r\n" + text;
    const Read read(render(w)[0]);
    EXPECT_TRUE(read.report.empty());
    EXPECT_EQ(read.container().name, text);
    EXPECT_EQ(read.container().note, c.note);
  }
}

}  // namespace
}  // namespace varnowick
