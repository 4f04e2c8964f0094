// Start-up: the question about the last session, where the data lies, what the
// program refuses, and the second start.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainStartup = ProgramTest;

struct RecoveryCase {
  const char* name;
  bool settingsFile;
  int answer;
  const wchar_t* loaded;  // caption of the shortcut that shows which file was read
};

class MainRecovery : public ProgramTest, public testing::WithParamInterface<RecoveryCase> {};

std::string fileWith(const wchar_t* caption) {
  return SettingsFile().add({.caption = caption, .path = L"C:\\none.exe"}).bytes();
}

TEST_P(MainRecovery, AsksAndLoadsWhatTheUserChose) {
  const RecoveryCase& c = GetParam();
  const std::string recovery = fileWith(L"Newer");
  if (c.settingsFile) folder().write(L"Varnowick.ini", fileWith(L"Older"));
  folder().write(L"Varnowick.REC", recovery);
  start();
  const DialogWindow question =
      waitForDialog(program().process(), L"Varnowick - Recover Last Session");
  EXPECT_EQ(question.text(),
            L"RECOVERY: Varnowick was not closed properly. Load the newer backed-up recovery "
            L"file?\r\n\r\nThe file name is Varnowick.REC");
  EXPECT_EQ(question.buttons(), (std::vector<int>{IDYES, IDNO}));
  question.press(c.answer);

  const Bar bar(program(), events());
  EXPECT_FALSE(folder().exists(L"Varnowick.REC"));
  for (const wchar_t* caption : {L"Newer", L"Older"}) {
    const bool expected = c.loaded != nullptr && std::wstring(caption) == c.loaded;
    EXPECT_EQ(bar.accessible().find(caption).has_value(), expected) << toUtf8(caption);
  }
  if (c.answer == IDYES) {
    EXPECT_EQ(folder().read(L"Varnowick.ini"), recovery);
  }
}

INSTANTIATE_TEST_SUITE_P(Answers, MainRecovery,
                         testing::Values(RecoveryCase{"Yes", true, IDYES, L"Newer"},
                                         RecoveryCase{"No", true, IDNO, L"Older"},
                                         RecoveryCase{"YesWithoutSettings", false, IDYES, L"Newer"},
                                         RecoveryCase{"NoWithoutSettings", false, IDNO, nullptr}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST_F(MainStartup, APortableProgramKeepsItsDataBesideItself) {
  const bool before = ProgramFolder::appDataTaken();
  startBar();
  closeProgram();
  EXPECT_TRUE(folder().exists(L"Varnowick.ini"));
  EXPECT_EQ(ProgramFolder::appDataTaken(), before);
}

TEST_F(MainStartup, OtherwiseTheDataFolderIsMadeByTheFirstSave) {
  if (ProgramFolder::appDataTaken()) {
    GTEST_SKIP() << "this user has a data folder, which the test must not touch";
  }
  useFolder(std::make_unique<ProgramFolder>(DataPlace::AppData));
  startBar();
  EXPECT_FALSE(fileExists(folder().dataPath() + L"\\Varnowick.ini"));
  closeProgram();
  EXPECT_TRUE(folder().exists(L"Varnowick.ini"));
  EXPECT_FALSE(fileExists(folder().path() + L"\\Varnowick.ini"));
}

// A drive letter that stands for a folder, for the time of a test.
class SubstitutedDrive {
 public:
  explicit SubstitutedDrive(const std::wstring& folder) : folder_(folder) {
    const DWORD taken = GetLogicalDrives();
    for (wchar_t letter = L'Y'; letter > L'D'; --letter) {
      if ((taken & (1U << (letter - L'A'))) != 0) continue;
      drive_ = std::wstring(1, letter) + L":";
      if (DefineDosDeviceW(0, drive_.c_str(), folder_.c_str())) return;
      failWithLastError(L"DefineDosDevice");
    }
    throw HarnessError(L"no drive letter is free");
  }
  ~SubstitutedDrive() {
    DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, drive_.c_str(),
                     folder_.c_str());
  }
  SubstitutedDrive(const SubstitutedDrive&) = delete;
  SubstitutedDrive& operator=(const SubstitutedDrive&) = delete;
  std::wstring root() const { return drive_ + L"\\"; }

 private:
  std::wstring folder_;
  std::wstring drive_;
};

TEST_F(MainStartup, RefusesToRunInTheRootFolderOfADrive) {
  folder().write(L"Varnowick.REC", SettingsFile().bytes());
  const DataFiles before = folder().state();
  const SubstitutedDrive drive(folder().path());
  RunningProgram rooted(drive.root() + L"Varnowick.exe", events());
  const DialogWindow refusal = waitForDialog(rooted.process(), kTitle);
  EXPECT_EQ(refusal.text(), L"Varnowick cannot run from the root folder of the drive.");
  EXPECT_TRUE(refusal.hasIcon());
  refusal.press(IDOK);
  rooted.waitForExit();
  EXPECT_EQ(folder().state(), before);
}

TEST_F(MainStartup, ASecondStartBringsTheFirstForwardAndEnds) {
  folder().write(L"Varnowick.ini", SettingsFile().bytes());
  const Bar bar = startBar();
  RunningProgram second(folder(), events());
  EXPECT_EQ(second.waitForExit(), 0U);
  EXPECT_TRUE(program().running());
  require(L"the first program to come to the front",
          [&] { return GetForegroundWindow() == bar.window(); });
}

}  // namespace
}  // namespace varnowick::e2e
