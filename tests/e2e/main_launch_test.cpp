// Launches that ask, that fail, and that need their target worked out first.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class MainLaunch : public ProgramTest {
 protected:
  // Starts the program with that shortcut on the panel and clicks it.
  Bar startAndClick(const ShortcutRow& shortcut) {
    write(SettingsFile().add(shortcut));
    Bar bar = startBar();
    bar.expand();
    bar.click(shortcut.caption);
    return bar;
  }
};

TEST_F(MainLaunch, AMissingTargetOpensThePropertiesWithTheError) {
  const DataFiles before = [&] {
    startAndClick({.caption = L"Gone", .path = folder().path() + L"\\not there.exe"});
    return folder().state();
  }();
  const DialogWindow properties = dialog(L"Shortcut properties");
  EXPECT_NE(properties.text().find(L"Error: File not found"), std::wstring::npos)
      << toUtf8(properties.text());
  properties.press(IDCANCEL);
  EXPECT_EQ(folder().state(), before) << "a failed launch changes nothing";
}

TEST_F(MainLaunch, AConfirmationAnsweredNoStartsNothing) {
  const std::wstring probe = folder().addLaunchProbe();
  startAndClick({.caption = L"Probe", .path = probe, .confirm = true});
  const DialogWindow question = dialog(L"Launch Confirmation");
  EXPECT_EQ(question.text(), L"Start Probe?");
  EXPECT_EQ(question.buttons(), (std::vector<int>{IDYES, IDNO}));
  EXPECT_TRUE(question.hasIcon());
  question.press(IDNO);
  closeProgram();
  program().waitForAllEnded();
  EXPECT_FALSE(launched(probe));
}

TEST_F(MainLaunch, AConfirmationAnsweredYesStartsTheTarget) {
  const std::wstring probe = folder().addLaunchProbe();
  startAndClick({.caption = L"Probe", .path = probe, .confirm = true});
  dialog(L"Launch Confirmation").press(IDYES);
  waitForLaunch(probe);
}

TEST_F(MainLaunch, ARelativePathStandsForTheProgramsDrive) {
  const std::wstring probe = folder().addLaunchProbe();
  startAndClick({.caption = L"Relative", .path = L"@" + probe.substr(1), .parameters = L"here"});
  const Launch launch = waitForLaunch(probe);
  EXPECT_EQ(launch.folder, probe.substr(0, probe.find_last_of(L'\\')));
}

TEST_F(MainLaunch, ACommandRunsThroughTheInterpreter) {
  const std::wstring probe = folder().addLaunchProbe();
  startAndClick(
      {.caption = L"Command", .parameters = L"\"" + probe + L"\" by command", .command = true});
  const Launch launch = waitForLaunch(probe);
  EXPECT_NE(launch.commandLine.find(L"by command"), std::wstring::npos);
}

}  // namespace
}  // namespace varnowick::e2e
