#include "shortcuts/launch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    const wchar_t* program;
    const wchar_t* path;
    const wchar_t* parameters;
    bool command;
    Started expected;
  };
  const Case cases[] = {
      {L"D:\\V", L"@:\\x\\y.exe", L"-a b", false, {7, L"", L"D:\\x\\y.exe", L"-a b", L"D:\\x\\"}},
      {L"D:\\V", L"C:\\x\\y.exe", L"", false, {7, L"", L"C:\\x\\y.exe", L"", L"C:\\x\\"}},
      {L"D:\\V", L"notepad", L"", false, {7, L"", L"notepad", L"", L""}},
      {L"D:\\V", L"http://a.b/c", L"", false, {7, L"", L"http://a.b/c", L"", L""}},
      {L"D:\\V", L"", L"", false, {7, L"", L"", L"", L""}},
      {L"D:\\V", L"@:\\ignored", L"dir c:", true, {7, L"", L"cmd.exe", L"/c dir c:", L""}},
  };
  for (const Case& c : cases) {
    LaunchWorld w;
    w.system.program = c.program;
    const LaunchResult r =
        LaunchShortcut(w.platform, w.host, false, L"x", c.parameters, c.path, c.command);
    EXPECT_EQ(r.outcome, LaunchOutcome::Started);
    EXPECT_THAT(w.shell.started, ElementsAre(c.expected));
    EXPECT_EQ(w.host.preLaunches, 1);
    EXPECT_THAT(w.sound.played, ElementsAre(L"click.wav"));
    EXPECT_THAT(w.msgBox.shown, IsEmpty());
  }
}

TEST(Launch, WorkingFolderIsTheOneTheUserKnows) {
  LaunchWorld w;
  w.host.seenAs = L"C:\\Windows\\Sysnative\\x.exe";
  LaunchShortcut(w.platform, w.host, shortcut(L"x", L"C:\\Windows\\System32\\x.exe"));
  EXPECT_THAT(w.shell.started,
              ElementsAre(Started{7, L"", w.host.seenAs, L"", L"C:\\Windows\\System32\\"}));
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

TEST(Launch, EveryResultIsReportedAsItsRowSays) {
  constexpr const wchar_t* kUnknown =
      L"An error occurred while trying to open or print the selected file.";
  struct Case {
    int result;
    LaunchOutcome outcome;
    const wchar_t* message;
  };
  constexpr auto kFaulty = LaunchOutcome::FailedFaulty;
  constexpr auto kPassing = LaunchOutcome::FailedReported;
  constexpr auto kStarted = LaunchOutcome::Started;
  const Case cases[] = {
      {0, kStarted, nullptr},
      {1, kFaulty, kUnknown},
      {2, kFaulty, L"File not found"},
      {3, kFaulty, L"Path not found"},
      {4, kFaulty, kUnknown},
      {5, kFaulty, L"Path/file access error"},
      {8, kPassing, L"Out of memory"},
      {11, kFaulty, L"The executable file is invalid or corrupt"},
      {25, kFaulty, kUnknown},
      {26, kPassing, L"A sharing violation occurred."},
      {27, kFaulty, L"This file type does not have a valid file association."},
      {28, kPassing,
       L"The file could not be opened due to time out. Please try again in a moment."},
      {29, kPassing,
       L"The file could not be opened because the DDE transaction failed. Please try again in a "
       L"moment."},
      {30, kPassing,
       L"The file could not be opened because the target application is busy. Please try again in "
       L"a moment."},
      {31, kFaulty, L"No application is associated with this file type."},
      {32, kStarted, nullptr},
      {33, kStarted, nullptr},
      {-1, kStarted, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.result);
    LaunchWorld w;
    w.shell.results = {c.result};
    const clsShortcut s = shortcut(L"x", L"C:\\x");
    const LaunchResult r = LaunchShortcut(w.platform, w.host, s);
    EXPECT_EQ(r.outcome, c.outcome);
    EXPECT_EQ(r.propertiesError,
              c.outcome == kFaulty ? std::wstring(L"Error: ") + c.message : std::wstring());
    if (c.outcome == kPassing)
      EXPECT_THAT(w.msgBox.shown, ElementsAre(Shown{c.message, 16, L"Error with shortcut"}));
    else
      EXPECT_THAT(w.msgBox.shown, IsEmpty());
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
  StartMany start{platform,
                  host,
                  host,
                  foreground,
                  workspace,
                  [this](ShortcutSlot s, const std::wstring& e) {
                    properties.push_back({s.index, e}); }};
  StartWorld() {
    const ContainerSlot in{0};
    workspace.containers.add({});
    const wchar_t* paths[] = {L"a", L"b", L"c", L"d", L"e"};
    for (int i = 0; i < 5; ++i)
      workspace.shortcuts.add(shortcut(paths[i], paths[i], i == 1 ? ContainerSlot{} : in));
    workspace.shortcuts.remove({0});
  }
  std::vector<std::wstring> started() const {
    std::vector<std::wstring> all;
    for (const Started& s : shell.started) all.push_back(s.file);
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
  EXPECT_THAT(w.started(), ElementsAre(L"c", L"e"));
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
  EXPECT_THAT(w.started(), IsEmpty());
  EXPECT_EQ(w.host.preLaunches, 0);
  EXPECT_TRUE(StartAll(w.start, {0}, false));
  EXPECT_THAT(w.started(), ElementsAre(L"c", L"d", L"e"));
  EXPECT_THAT(w.msgBox.shown, SizeIs(1));
}

TEST(StartAll, SurvivesAWorkspaceThatChangesUnderIt) {
  StartWorld w;
  w.shell.results = {2, 2, 2};
  w.start.openProperties = [&](ShortcutSlot, const std::wstring&) {
    w.workspace.shortcuts.clear();
  };
  EXPECT_TRUE(StartAll(w.start, {0}, false));
  EXPECT_THAT(w.started(), ElementsAre(L"c"));
}

TEST(StartByTag, TakesWholeTagsInAnyCase) {
  StartWorld w;
  w.workspace.shortcuts[{1}].Tags = L"Work, home";
  w.workspace.shortcuts[{2}].Tags = L"homework";
  w.workspace.shortcuts[{3}].Tags = L" , ,\tHOME ,";
  StartByTag(w.start, L"home");
  EXPECT_THAT(w.started(), ElementsAre(L"b", L"d"));
  EXPECT_THAT(tagsOf(w.workspace.shortcuts[{3}]), ElementsAre(L"HOME"));
  EXPECT_THAT(tagsOf(w.workspace.shortcuts[{1}]), ElementsAre(L"Work", L"home"));
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
  Workspace workspace;
  const wchar_t* paths[] = {L"D:\\x\\y.exe", L"http://a", L"\\\\server\\share\\f", L"@:\\z", L""};
  std::vector<ShortcutSlot> selected{{99}};
  for (const wchar_t* p : paths) selected.push_back(workspace.shortcuts.add(shortcut(L"", p)));
  workspace.shortcuts[{1}].ShortcutType = 1;
  w.msgBox.answers = {kMsgAnswerNo};
  EXPECT_FALSE(UseRelativePath(w.platform, workspace, selected));
  EXPECT_EQ(workspace.shortcuts[{0}].Path, paths[0]);
  EXPECT_TRUE(UseRelativePath(w.platform, workspace, selected));
  EXPECT_EQ(workspace.shortcuts[{0}].Path, L"@:\\x\\y.exe");
  for (int i = 1; i < 5; ++i) EXPECT_EQ(workspace.shortcuts[{i}].Path, paths[i]);
  EXPECT_FALSE(UseRelativePath(w.platform, workspace, selected));
}

}  // namespace
}  // namespace varnowick
