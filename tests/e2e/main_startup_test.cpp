// Start-up: the question about the last session, where the data lies, what the
// program refuses, and the second start.
#include <algorithm>

#include "platform/win32/instance_guard.h"
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

long long windowsOfClass(DWORD process, const wchar_t* className) {
  const std::vector<HWND> all = windowsOf(process);
  return std::count_if(all.begin(), all.end(),
                       [&](HWND window) { return classOf(window) == className; });
}

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

// The program in the root folder of a drive: a drive letter that stands for its
// folder, for the time of a test.
class ProgramInRoot {
 public:
  explicit ProgramInRoot(const ProgramFolder& folder) : folder_(folder.path()) {
    const DWORD taken = GetLogicalDrives();
    for (wchar_t letter = L'Y'; letter > L'D' && drive_.empty(); --letter) {
      if ((taken & (1U << (letter - L'A'))) == 0) drive_ = std::wstring(1, letter) + L":";
    }
    if (drive_.empty() || !DefineDosDeviceW(0, drive_.c_str(), folder_.c_str())) {
      failWithLastError(L"DefineDosDevice");
    }
    exe_ = drive_ + L"\\Varnowick.exe";
    if (fileExists(exe_)) return;
    // Wine lists such a drive and opens no file on it. There the test has a drive
    // C: of its own, whose root takes the program.
    copied_ = true;
    exe_ = folder_.substr(0, 2) + L"\\Varnowick.exe";
    if (!CopyFileW(folder.exe().c_str(), exe_.c_str(), TRUE))
      failWithLastError(L"copying to a root");
  }
  ~ProgramInRoot() {
    DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, drive_.c_str(),
                     folder_.c_str());
    if (copied_) DeleteFileW(exe_.c_str());
  }
  ProgramInRoot(const ProgramInRoot&) = delete;
  ProgramInRoot& operator=(const ProgramInRoot&) = delete;
  const std::wstring& exe() const { return exe_; }

 private:
  std::wstring folder_;
  std::wstring drive_;
  std::wstring exe_;
  bool copied_ = false;
};

TEST_F(MainStartup, RefusesToRunInTheRootFolderOfADrive) {
  folder().write(L"Varnowick.REC", SettingsFile().bytes());
  const DataFiles before = folder().state();
  const ProgramInRoot root(folder());
  {
    RunningProgram program(root.exe(), events());
    const DialogWindow refusal = waitForDialog(program.process(), kTitle);
    EXPECT_EQ(refusal.text(), L"Varnowick cannot run from the root folder of the drive.");
    EXPECT_TRUE(refusal.hasIcon());
    EXPECT_EQ(windowsOfClass(program.process(), kMainClass), 0) << "before any window is made";
    refusal.press(IDOK);
    program.waitForExit();
  }
  EXPECT_EQ(folder().state(), before);
}

TEST_F(MainStartup, ASecondStartBringsTheFirstForwardAndEnds) {
  write(SettingsFile());
  const Bar bar = startBar();
  RunningProgram second(folder(), events());
  EXPECT_EQ(second.waitForExit(), 0U);
  EXPECT_TRUE(program().running());
  require(L"the first program to come to the front",
          [&] { return GetForegroundWindow() == bar.window(); });
}

TEST_F(MainStartup, ASecondStartSaysSoWhereTheFirstCannotBeReached) {
  // As the program of another session: its name is taken, its window is not to be seen.
  const std::wstring name = L"Global\\" + instanceName(folder().dataPath());
  const KernelHandle other(CreateMutexW(nullptr, FALSE, name.c_str()));
  start();
  const DialogWindow told = waitForDialog(program().process(), kTitle);
  EXPECT_NE(told.text().find(folder().dataPath()), std::wstring::npos) << toUtf8(told.text());
  told.press(IDOK);
  EXPECT_EQ(program().waitForExit(), 0U);
  EXPECT_FALSE(folder().exists(L"Varnowick.ini"));
}

}  // namespace
}  // namespace varnowick::e2e
