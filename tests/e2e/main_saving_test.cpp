// Saving: every byte of every file, the ways to end, and saves that fail.
#include "tests/e2e/harness/golden_state.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class MainSaving : public ProgramTest {
 protected:
  DialogWindow message() { return waitForDialog(program().process(), kTitle); }
};

TEST_F(MainSaving, SavingAndEndingLeavesEveryFileByteForByte) {
  folder().writeAll(goldenState());
  Bar bar = startBar();
  bar.focus();
  keyboard::press(VK_ESCAPE);
  mouse::moveAwayFrom(bar.rect());
  require(L"the bar to be back at the edge",
          [&] { return bar.rect() == windowAt(kCollapsedLeft, kBarTop, kBarWidth, kBarHeight); });
  keyboard::press(VK_F8);
  const DialogWindow saved = message();
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  EXPECT_TRUE(saved.hasIcon());
  EXPECT_EQ(folder().state(), goldenState());
  saved.press(IDOK);
  require(L"the bar to come to the front", [&] { return GetForegroundWindow() == bar.window(); });
  keyboard::chord({VK_MENU, VK_F4});
  EXPECT_EQ(program().waitForExit(), 0U);
  EXPECT_EQ(folder().state(), goldenState());
  EXPECT_TRUE(folder().backups().empty());
}

TEST_F(MainSaving, AChangeWritesTheRecoveryCopyAndSavingRemovesIt) {
  folder().write(L"Varnowick.ini", SettingsFile().bytes());
  Bar bar = startBar();
  bar.focus();
  events().expect(kEventSaved, L"saved", [] { keyboard::chord({VK_CONTROL, 'L'}); });
  EXPECT_TRUE(folder().exists(L"Varnowick.REC"));
  EXPECT_EQ(folder().read(L"Varnowick.ini"), SettingsFile().bytes());
  bar.focus();
  keyboard::press(VK_F8);
  message().press(IDOK);
  EXPECT_FALSE(folder().exists(L"Varnowick.REC"));
  EXPECT_NE(folder().read(L"Varnowick.ini").find("[LOCKED]\r\n1\r\n"), std::string::npos);
}

TEST_F(MainSaving, TheSessionEndingIsACleanExit) {
  folder().write(L"Varnowick.ini", SettingsFile().bytes());
  Bar bar = startBar();
  bar.focus();
  events().expect(kEventSaved, L"saved", [] { keyboard::chord({VK_CONTROL, 'L'}); });
  ASSERT_TRUE(folder().exists(L"Varnowick.REC"));
  // As the system does it: each window is asked, then told; the process may be
  // ended as soon as the second call returns.
  const UINT limit = kPatience;
  DWORD_PTR agreed = 0;
  ASSERT_NE(
      SendMessageTimeoutW(bar.window(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, limit, &agreed), 0);
  EXPECT_NE(agreed, 0U);
  DWORD_PTR ignored = 0;
  ASSERT_NE(SendMessageTimeoutW(bar.window(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, limit, &ignored),
            0);
  program().kill();
  EXPECT_FALSE(folder().exists(L"Varnowick.REC"));
  EXPECT_NE(folder().read(L"Varnowick.ini").find("[LOCKED]\r\n1\r\n"), std::string::npos);
  startBar();  // throws when a question comes
}

enum class Obstacle { AnotherProgramHoldsIt, AFolderStandsInItsPlace };

class MainFailedSave : public ProgramTest, public testing::WithParamInterface<Obstacle> {};

TEST_P(MainFailedSave, SaysWhichFileAndWhyAndNeverThatItWasSaved) {
  const std::wstring file = folder().file(L"Varnowick.ini");
  if (GetParam() == Obstacle::AnotherProgramHoldsIt) {
    folder().write(L"Varnowick.ini", SettingsFile().bytes());
  }
  Bar bar = startBar();
  FileHandle holder;
  if (GetParam() == Obstacle::AnotherProgramHoldsIt) {
    holder.reset(CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  } else {
    CreateDirectoryW(file.c_str(), nullptr);
  }
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow told = waitForDialog(program().process(), L"");
  const std::wstring text = told.text();
  EXPECT_NE(text.find(file), std::wstring::npos) << toUtf8(text);
  EXPECT_EQ(text.find(L"Workspace Saved"), std::wstring::npos);
  EXPECT_GT(text.size(), file.size() + 10) << "no reason: " << toUtf8(text);
  told.press(told.buttons().at(0));

  // Once the obstacle has gone, the same key saves.
  holder.reset();
  RemoveDirectoryW(file.c_str());
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow saved = waitForDialog(program().process(), kTitle);
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  saved.press(IDOK);
  EXPECT_TRUE(folder().exists(L"Varnowick.ini"));
}

INSTANTIATE_TEST_SUITE_P(Obstacles, MainFailedSave,
                         testing::Values(Obstacle::AnotherProgramHoldsIt,
                                         Obstacle::AFolderStandsInItsPlace),
                         [](const auto& c) {
                           return c.param == Obstacle::AnotherProgramHoldsIt ? "Held" : "Folder";
                         });

}  // namespace
}  // namespace varnowick::e2e
