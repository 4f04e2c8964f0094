#include "shortcuts/launch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "platform/msg_box.h"
#include "tests/shortcuts/launch_world.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Started = FakeShell::Started;
using Shown = FakeMsgBox::Shown;

clsShortcut shortcut(const wchar_t* caption, const wchar_t* path, ContainerSlot in = {}) {
  clsShortcut s;
  s.FullCaption = caption;
  s.Path = path;
  s.parent.container = in;
  return s;
}

TEST(Launch, StartsFilesAndCommands) {
  struct Case {
    const wchar_t *path, *parameters;
    bool command;
    Started expected;
    const wchar_t* seenAs = L"";  // other than as the user knows it
  };
  const Case cases[] = {
      {L"@:\\x\\y.exe", L"-a b", false, {7, L"", L"D:\\x\\y.exe", L"-a b", L"D:\\x\\"}},
      {L"notepad", L"", false, {7, L"", L"notepad", L"", L""}},
      {L"http://a.b/c", L"", false, {7, L"", L"http://a.b/c", L"", L""}},
      {L"@:\\ignored", L"dir c:", true, {7, L"", L"cmd.exe", L"/c dir c:", L""}},
      {L"C:\\x\\y.exe", L"", false, {7, L"", L"Z:\\y", L"", L"C:\\x\\"}, L"Z:\\y"},
  };
  for (const Case& c : cases) {
    LaunchWorld w;
    w.system.program = L"D:\\V";
    w.host.seenAs = c.seenAs;
    const LaunchResult r =
        LaunchShortcut(w.platform, w.host, false, L"x", c.parameters, c.path, c.command);
    EXPECT_EQ(r.outcome, LaunchOutcome::Started);
    EXPECT_THAT(w.shell.started, ElementsAre(c.expected));
    EXPECT_EQ(w.host.preLaunches, 1);
    EXPECT_THAT(w.sound.played, ElementsAre(L"click.wav"));
    EXPECT_THAT(w.msgBox.shown, IsEmpty());
  }
}

TEST(Launch, SuppressFlagBelongsToTheMainWindow) {
  LaunchWorld w;
  w.host.suppressed = true;
  EXPECT_EQ(LaunchShortcut(w.platform, w.host, shortcut(L"x", L"x")).outcome,
            LaunchOutcome::Suppressed);
  EXPECT_THAT(w.sound.played, IsEmpty());
  EXPECT_THAT(w.shell.started, IsEmpty());
  w.host.main = false;
  EXPECT_EQ(LaunchShortcut(w.platform, w.host, shortcut(L"x", L"x")).outcome,
            LaunchOutcome::Started);
}

TEST(Launch, OnlyYesConfirms) {
  for (const MsgAnswer answer : {kMsgAnswerYes, kMsgAnswerNo, MsgAnswer::None}) {
    LaunchWorld w;
    w.msgBox.answers = {answer};
    clsShortcut s = shortcut(L"Tool", L"C:\\t.exe");
    s.Confirm = true;
    const bool started = LaunchShortcut(w.platform, w.host, s).outcome == LaunchOutcome::Started;
    EXPECT_EQ(started, answer == kMsgAnswerYes);
    EXPECT_THAT(w.msgBox.shown, ElementsAre(Shown{L"Start Tool?", 4 | 48, L"Launch Confirmation"}));
    EXPECT_THAT(w.sound.played, SizeIs(1));
    EXPECT_EQ(w.host.preLaunches, started ? 1 : 0);
    EXPECT_THAT(w.shell.started, SizeIs(started ? 1 : 0));
  }
}

// s: started; P: the properties show the fault; b: a box shows what will pass.
TEST(Launch, EveryResultIsReportedAsItsRowSays) {
  const std::string ways = "sPPPPPPPbPPPPPPPPPPPPPPPPPbPbbbPss";
  const std::map<int, std::wstring> texts{
      {2, L"File not found"},
      {4, L"An error occurred while trying to open or print the selected file."},
      {8, L"Out of memory"},
      {31, L"No application is associated with this file type."}};
  for (int result = -1; result < static_cast<int>(ways.size()); ++result) {
    SCOPED_TRACE(result);
    const char way = result < 0 ? 's' : ways[static_cast<std::size_t>(result)];
    LaunchWorld w;
    w.shell.results = {result};
    const LaunchResult r = LaunchShortcut(w.platform, w.host, shortcut(L"x", L"C:\\x"));
    EXPECT_EQ(r.outcome, way == 's'   ? LaunchOutcome::Started
                         : way == 'P' ? LaunchOutcome::FailedFaulty
                                      : LaunchOutcome::FailedReported);
    ASSERT_THAT(w.msgBox.shown, SizeIs(way == 'b' ? 1 : 0));
    const auto text = texts.find(result);
    if (text == texts.end()) continue;
    if (way == 'P') {
      EXPECT_EQ(r.propertiesError, L"Error: " + text->second);
    }
    if (way == 'b') {
      EXPECT_EQ(w.msgBox.shown[0], (Shown{text->second, 16, L"Error with shortcut"}));
    }
  }
}

TEST(Launch, OpenWithQuotesTheDroppedPathAndNeedsAYes) {
  LaunchWorld w;
  w.system.program = L"E:\\V";
  w.shell.results = {2};  // goes unnoticed
  w.msgBox.answers = {kMsgAnswerYes, kMsgAnswerNo};
  const clsShortcut dragged = shortcut(L"Text", L"@:\\my notes.txt");
  const clsShortcut target = shortcut(L"Editor", L"@:\\bin\\ed.exe");
  OpenWith(w.platform, w.host, dragged, target);
  OpenWith(w.platform, w.host, dragged, target);
  EXPECT_EQ(w.msgBox.shown[0], (Shown{L"Open: Text with: Editor?", 4 | 32, L"Varnowick"}));
  const Started expected{0, L"", L"E:\\bin\\ed.exe", L"\"E:\\my notes.txt\"", L"E:\\bin\\"};
  EXPECT_THAT(w.shell.started, ElementsAre(expected));
  OpenWith(w.platform, w.host, shortcut(L"x", L"http://a/\" --run \"b"), target);
  EXPECT_EQ(w.shell.started.back().parameters, L"\"http://a/ --run b\"");
}

struct StartWorld : LaunchWorld {
  Workspace workspace;
  std::vector<std::pair<int, std::wstring>> properties;
  StartMany start{platform, host, host, foreground, workspace, {}};
  StartWorld() {
    start.openProperties = [this](ShortcutSlot s, const std::wstring& e) {
      properties.push_back({s.index, e});
    };
    const ContainerSlot in = workspace.containers.add({});
    for (const wchar_t* path : {L"a", L"b", L"c", L"d", L"e"})
      workspace.shortcuts.add(shortcut(path, path, *path == L'b' ? ContainerSlot{} : in));
    workspace.shortcuts.remove({0});
  }
  std::wstring started() const {
    std::wstring all;
    for (const Started& s : shell.started) all += s.file;
    return all;
  }
};

TEST(StartAll, WalksTheContainerInOrderPastErrorsAndRestoresTheForeground) {
  StartWorld w;
  w.workspace.shortcuts[{3}].Confirm = true;
  w.msgBox.answers = {kMsgAnswerYes, kMsgAnswerNo};
  w.shell.results = {2, 33};
  EXPECT_EQ(startAllCaption(w.workspace, {0}), L"&Start all [3]");
  EXPECT_TRUE(StartAll(w.start, {0}, true));
  EXPECT_EQ(w.started(), L"ce");
  EXPECT_EQ(w.msgBox.shown[0],
            (Shown{L"Start all shortcuts in the current container?\r\n\r\nYou can disable the "
                   L"confirmation from the Settings dialog.",
                   4 | 48, L"Varnowick"}));
  EXPECT_THAT(w.properties, ElementsAre(std::pair(2, std::wstring(L"Error: File not found"))));
  EXPECT_THAT(w.foreground.brought, ElementsAre(5U));
  EXPECT_EQ(w.host.preLaunches, 3);  // once for all, and before each start
}

TEST(StartAll, NoStartsNothingAndTheSettingAsksNothing) {
  StartWorld w;
  w.msgBox.answers = {kMsgAnswerNo};
  EXPECT_FALSE(StartAll(w.start, {0}, true));
  EXPECT_EQ(w.started(), L"");
  EXPECT_EQ(w.host.preLaunches, 0);
  EXPECT_TRUE(StartAll(w.start, {0}, false));
  EXPECT_EQ(w.started(), L"cde");
  EXPECT_THAT(w.msgBox.shown, SizeIs(1));
}

TEST(StartAll, SurvivesAWorkspaceThatChangesUnderIt) {
  StartWorld w;
  w.shell.results = {2, 2, 2};
  w.start.openProperties = [&](auto, auto&) { w.workspace.shortcuts.clear(); };
  EXPECT_TRUE(StartAll(w.start, {0}, false));
  EXPECT_EQ(w.started(), L"c");
}

TEST(StartByTag, TakesWholeTagsInAnyCase) {
  StartWorld w;
  w.workspace.shortcuts[{1}].Tags = L"Work, home";
  w.workspace.shortcuts[{2}].Tags = L"homework";
  w.workspace.shortcuts[{3}].Tags = L" , ,\tHOME ,";
  StartByTag(w.start, L"home");
  EXPECT_EQ(w.started(), L"bd");
}

TEST(FileLocation, IsThatOfTheIconsFileAndCommandsHaveNone) {
  LaunchWorld w;
  clsShortcut s = shortcut(L"x", L"@:\\a b\\c.txt");
  s.Icon = L"C:\\i.ico";
  EXPECT_TRUE(OpenFileLocation(w.platform, w.host, s, false));
  EXPECT_TRUE(OpenFileLocation(w.platform, w.host, s, true));
  EXPECT_THAT(w.shell.commandLines,
              ElementsAre(L"explorer /select,C:\\a b\\c.txt", L"explorer /select,C:\\i.ico"));
  s.Command = true;
  EXPECT_FALSE(OpenFileLocation(w.platform, w.host, s, false));
  EXPECT_EQ(w.host.preLaunches, 2);
}

TEST(UseRelativePath, ConvertsFilesThatHaveADriveAndNothingElse) {
  LaunchWorld w;
  Document document;
  Workspace& workspace = document.workspace;
  const wchar_t* paths[] = {L"D:\\x\\y.exe", L"C:\\web", L"\\\\server\\share\\f",
                            L"@:\\z",        L"D",       L"C:\\cmd"};
  std::vector<ShortcutSlot> selected{{99}};
  for (const wchar_t* p : paths) selected.push_back(workspace.shortcuts.add(shortcut(L"", p)));
  workspace.shortcuts[{1}].ShortcutType = 1;
  workspace.shortcuts[{5}].Command = true;
  w.msgBox.answers = {kMsgAnswerNo};
  EXPECT_FALSE(UseRelativePath(w.platform, document, selected));
  EXPECT_EQ(workspace.shortcuts[{0}].Path, paths[0]);
  EXPECT_TRUE(UseRelativePath(w.platform, document, selected));
  EXPECT_EQ(workspace.shortcuts[{0}].Path, L"@:\\x\\y.exe");
  for (int i = 1; i < 6; ++i) EXPECT_EQ(workspace.shortcuts[{i}].Path, paths[i]);
  EXPECT_FALSE(UseRelativePath(w.platform, document, selected));
}

}  // namespace
}  // namespace varnowick
