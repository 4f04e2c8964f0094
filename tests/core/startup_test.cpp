#include "core/startup.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {
namespace {

struct Startup : testing::Test {
  MemoryFiles files;
  FakeSystem system;
  FakeMsgBox msgBox;
  StartDecision start() { return decideStart(files, system, msgBox); }
};

TEST_F(Startup, RunsWhereItsDataHasAPlace) {
  EXPECT_EQ(start().dataFolder, L"C:\\Data\\Varnowick");
  EXPECT_TRUE(start().mayRun && !start().portable);
  files.contents[L"C:\\Program Files\\Varnowick\\LOCATIONROOT"] = "";
  EXPECT_EQ(start().dataFolder, system.program);
  system.version = 5;
  system.applicationData.clear();
  EXPECT_TRUE(start().mayRun && start().portable && files.log.empty() && msgBox.shown.empty());

  files.contents.clear();
  EXPECT_FALSE(start().mayRun);
  system.version = 4;
  EXPECT_FALSE(start().mayRun);
  system.program = L"E:\\";  // is looked at first
  EXPECT_FALSE(start().mayRun);
  const std::vector<FakeMsgBox::Shown> expected{
      {L"Varnowick can't find the folder for its data.", 16 + 4096, L"Varnowick"},
      {L"Varnowick Requires Windows 2000 or above. Sorry.", 16 + 4096, L"Varnowick"},
      {L"Varnowick cannot run from the root folder of the drive.", 16 + 4096, L"Varnowick"}};
  EXPECT_EQ(msgBox.shown, expected);
}

TEST_F(Startup, RestartGivesUpRecentChangesOnlyWhenAgreed) {
  const std::wstring restarter = L"C:\\Program Files\\Varnowick\\Restarter.exe";
  EXPECT_FALSE(decideRestart(files, system, msgBox).restart);
  files.contents[restarter] = "MZ";
  msgBox.answers = {kMsgAnswerNo};
  EXPECT_FALSE(decideRestart(files, system, msgBox).restart);
  EXPECT_EQ(decideRestart(files, system, msgBox).restarterPath, restarter);
  const FakeMsgBox::Shown question{L"Ignore all recent changes and restart the program?", 4 + 48,
                                   L"Varnowick"};
  const std::vector<FakeMsgBox::Shown> expected{
      {L"Can't find: " + restarter + L". Please reinstall the program.", 48, L"Varnowick"},
      question,
      question};
  EXPECT_EQ(msgBox.shown, expected);
}

}  // namespace
}  // namespace varnowick
