// The main menu, and the restart that gives up the changes since the last save.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class MainMenu : public ProgramTest {
 protected:
  // A running program with a change that has not been saved.
  Bar startAndChange() {
    folder().write(L"Varnowick.ini", SettingsFile().bytes());
    Bar bar = startBar();
    bar.focus();
    events().expect(kEventSaved, L"saved", [] { keyboard::chord({VK_CONTROL, 'L'}); });
    EXPECT_TRUE(folder().exists(L"Varnowick.REC"));
    return bar;
  }
  // Chooses "Se&ttings", "&Restart without recent changes".
  void chooseRestart(Bar& bar) {
    bar.openMenu();
    bar.choose(L"tr");
  }
  DialogWindow message() { return waitForDialog(program().process(), kTitle); }
};

TEST_F(MainMenu, ItsEntriesDoWhatTheySay) {
  folder().write(L"Varnowick.ini", SettingsFile().bytes());
  Bar bar = startBar();
  bar.openMenu();
  bar.choose(L"s");
  const DialogWindow saved = message();
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  saved.press(IDOK);

  bar.openMenu();
  bar.choose(L"kr");
  const double right = toTwips(GetSystemMetrics(SM_CXSCREEN));
  require(L"the bar at the right edge",
          [&] { return bar.rect() == windowAt(right - 40, kBarTop, kBarWidth, kBarHeight); });

  bar.openMenu();
  bar.choose(L"x");
  EXPECT_EQ(program().waitForExit(), 0U);
}

TEST_F(MainMenu, ARestartGivesUpTheChangesSinceTheLastSave) {
  Bar bar = startAndChange();
  chooseRestart(bar);
  const DialogWindow question = message();
  EXPECT_EQ(question.text(), L"Ignore all recent changes and restart the program?");
  EXPECT_EQ(question.buttons(), (std::vector<int>{IDYES, IDNO}));
  question.press(IDYES);
  EXPECT_EQ(program().waitForExit(), 0U);
  const HWND again = program().waitForSuccessor();
  DWORD process = 0;
  GetWindowThreadProcessId(again, &process);
  events().waitForFirst(kEventLoaded, L"loaded", process);
  EXPECT_FALSE(anyDialog(process).open());
  EXPECT_EQ(folder().state(), (DataFiles{{L"Varnowick.ini", SettingsFile().bytes()}}));
}

TEST_F(MainMenu, ARestartAnsweredNoChangesNothing) {
  Bar bar = startAndChange();
  const DataFiles before = folder().state();
  chooseRestart(bar);
  message().press(IDNO);
  EXPECT_EQ(folder().state(), before);
  EXPECT_TRUE(program().running());
}

TEST_F(MainMenu, ARestartWithoutTheRestarterNamesTheFullPath) {
  const std::wstring restarter = folder().path() + L"\\Restarter.exe";
  DeleteFileW(restarter.c_str());
  Bar bar = startAndChange();
  const DataFiles before = folder().state();
  chooseRestart(bar);
  const DialogWindow told = message();
  EXPECT_EQ(told.text(), L"Can't find: " + restarter + L". Please reinstall the program.");
  EXPECT_TRUE(told.hasIcon());
  told.press(IDOK);
  EXPECT_EQ(folder().state(), before);
}

}  // namespace
}  // namespace varnowick::e2e
