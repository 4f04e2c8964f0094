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

TEST_F(MainLaunch, AConfirmationIsAskedForAndObeyed) {
  const std::wstring probe = folder().addLaunchProbe();
  Bar bar = startAndClick({.caption = L"Probe", .path = probe, .confirm = true});
  const DialogWindow question = dialog(L"Launch Confirmation");
  EXPECT_EQ(question.text(), L"Start Probe?");
  EXPECT_EQ(question.buttons(), (std::vector<int>{IDYES, IDNO}));
  EXPECT_TRUE(question.hasIcon());
  question.press(IDNO);
  if (!bar.isOut()) bar.expand();
  bar.click(L"Probe");
  const DialogWindow again = dialog(L"Launch Confirmation");
  EXPECT_FALSE(launched(probe));
  again.press(IDYES);
  waitForLaunch(probe);
}

TEST_F(MainLaunch, RelativePathsAndCommandsAreWorkedOut) {
  const std::wstring relative = folder().addLaunchProbe(), command = folder().addLaunchProbe();
  write(SettingsFile()
            .add({.caption = L"Relative", .path = L"@" + relative.substr(1), .y = 3600})
            .add({.caption = L"Command",
                  .parameters = L"\"" + command + L"\" by command",
                  .command = true}));
  Bar bar = startBar();
  bar.expand();
  bar.click(L"Relative");
  EXPECT_EQ(waitForLaunch(relative).folder, relative.substr(0, relative.find_last_of(L'\\')));
  bar.focus();
  bar.click(L"Command");
  EXPECT_NE(waitForLaunch(command).commandLine.find(L"by command"), std::wstring::npos);
}

}  // namespace
}  // namespace varnowick::e2e
