// Start-up: the question about the last session, where the data lies, and the second
// start.
#include "platform/win32/instance_guard.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainStartup = ProgramTest;

std::string fileWith(const wchar_t* caption) {
  return SettingsFile().add({.caption = caption, .path = L"C:\\none.exe"}).bytes();
}

TEST_F(MainStartup, AsksAndLoadsTheRecoveryCopyAfterAYes) {
  const std::string recovery = fileWith(L"Newer");
  folder().write(L"Varnowick.ini", fileWith(L"Older"));
  folder().write(L"Varnowick.REC", recovery);
  start();
  dialog(L"Varnowick - Recover Last Session").press(IDYES);
  const Bar bar(program(), events());
  bar.accessible().waitFor(L"Newer");
  EXPECT_FALSE(bar.accessible().find(L"Older"));
  EXPECT_FALSE(folder().exists(L"Varnowick.REC"));
  EXPECT_EQ(folder().read(L"Varnowick.ini"), recovery);
}

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
  const DialogWindow told = message();
  EXPECT_NE(told.text().find(folder().dataPath()), std::wstring::npos) << toUtf8(told.text());
  told.press(IDOK);
  EXPECT_EQ(program().waitForExit(), 0U);
  EXPECT_FALSE(folder().exists(L"Varnowick.ini"));
}

}  // namespace
}  // namespace varnowick::e2e
