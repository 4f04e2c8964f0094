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
};

TEST_F(Startup, RefusesWhereItCannotRun) {
  system.program = L"E:\\";
  system.version = 4;  // the folder is looked at first
  EXPECT_FALSE(decideStart(files, system, msgBox).mayRun);
  system.program = L"C:\\Varnowick";
  EXPECT_FALSE(decideStart(files, system, msgBox).mayRun);
  const std::vector<FakeMsgBox::Shown> expected{
      {L"Varnowick cannot run from the root folder of the drive.", 16 + 4096, L"Varnowick"},
      {L"Varnowick Requires Windows 2000 or above. Sorry.", 16 + 4096, L"Varnowick"}};
  EXPECT_EQ(msgBox.shown, expected);
}

TEST_F(Startup, ChoosesTheDataFolder) {
  StartDecision decision = decideStart(files, system, msgBox);
  EXPECT_TRUE(decision.mayRun && !decision.portable);
  EXPECT_EQ(decision.dataFolder, L"C:\\Data\\Varnowick");
  files.contents[L"C:\\Program Files\\Varnowick\\LOCATIONROOT"] = "";
  decision = decideStart(files, system, msgBox);
  EXPECT_TRUE(decision.mayRun && decision.portable);
  EXPECT_EQ(decision.dataFolder, system.program);
  EXPECT_TRUE(msgBox.shown.empty() && files.log.empty());
}

TEST_F(Startup, RestartGivesUpRecentChangesOnlyWhenAgreed) {
  const std::wstring restarter = L"C:\\Program Files\\Varnowick\\Restarter.exe";
  EXPECT_FALSE(decideRestart(files, system, msgBox).restart);
  files.contents[restarter] = "MZ";
  msgBox.answers = {kMsgAnswerNo};
  EXPECT_FALSE(decideRestart(files, system, msgBox).restart);
  const RestartDecision yes = decideRestart(files, system, msgBox);
  EXPECT_TRUE(yes.restart);
  EXPECT_EQ(yes.restarterPath, restarter);
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
