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
  keyboard::press(VK_F8);
  const DialogWindow saved = message();
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  EXPECT_TRUE(saved.hasIcon());
  saved.press(IDOK);
  require(L"the bar to come to the front", [&] { return GetForegroundWindow() == bar.window(); });
  keyboard::press(VK_ESCAPE);
  mouse::moveAwayFrom(bar.rect());
  require(L"the bar to be back at the edge",
          [&] { return bar.rect() == windowAt(kCollapsedLeft, kBarTop, kBarWidth, kBarHeight); });
  closeProgram();
  EXPECT_EQ(folder().state(), goldenState());
  EXPECT_TRUE(folder().backups().empty());
}

TEST_F(MainSaving, AChangeWritesTheRecoveryCopyAndSavingRemovesIt) {
  write(SettingsFile());
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

TEST_F(MainSaving, AFileThatAnotherProgramHasOpenIsStillThereAfterwards) {
  write(SettingsFile());
  for (int i = 0; i < 3; ++i)
    folder().write(L"Containers\\" + std::to_wstring(i) + L".con", containerFile({.name = L"Box"}));
  startBar();
  {
    // As scanners and indexers do.
    const DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle scanner(CreateFileW(folder().file(L"Containers\\1.con").c_str(), GENERIC_READ,
                                         sharing, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(scanner);
    closeProgram();
  }
  EXPECT_EQ(folder().state().size(), 4U);
  EXPECT_FALSE(folder().exists(L"Varnowick.journal")) << "all is on the disk";
}

TEST_F(MainSaving, TheSessionEndingIsACleanExit) {
  write(SettingsFile());
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

TEST_F(MainSaving, ASessionThatGoesOnAfterAllChangesNothing) {
  write(SettingsFile());
  const Bar bar = startBar();
  const DataFiles before = folder().state();
  SendMessageW(bar.window(), WM_QUERYENDSESSION, 0, 0);
  SendMessageW(bar.window(), WM_ENDSESSION, FALSE, 0);
  EXPECT_TRUE(program().running());
  EXPECT_EQ(folder().state(), before);
}

enum class Obstacle { AnotherProgramHoldsIt, AFolderStandsInItsPlace };

class MainFailedSave : public ProgramTest, public testing::WithParamInterface<Obstacle> {
 protected:
  std::wstring file() { return folder().file(L"Varnowick.ini"); }
  Bar startWithObstacle() {
    if (GetParam() == Obstacle::AFolderStandsInItsPlace) {
      Bar bar = startBar();
      CreateDirectoryW(file().c_str(), nullptr);
      return bar;
    }
    write(SettingsFile());
    Bar bar = startBar();
    holder_.reset(CreateFileW(file().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    return bar;
  }
  void removeObstacle() {
    holder_.reset();
    RemoveDirectoryW(file().c_str());
  }
  // Waits for a message that says which file and why, and not that all is well.
  DialogWindow failure() {
    const DialogWindow told = waitForDialog(program().process(), L"");
    const std::wstring text = told.text();
    EXPECT_NE(text.find(file()), std::wstring::npos) << toUtf8(text);
    EXPECT_EQ(text.find(L"Workspace Saved"), std::wstring::npos);
    EXPECT_GT(text.size(), file().size() + 10) << "no reason: " << toUtf8(text);
    return told;
  }

 private:
  FileHandle holder_;
};

TEST_P(MainFailedSave, SaysWhichFileAndWhyAndSavesOnceItCan) {
  Bar bar = startWithObstacle();
  bar.focus();
  keyboard::press(VK_F8);
  failure().press(IDOK);
  removeObstacle();
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow saved = waitForDialog(program().process(), kTitle);
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  saved.press(IDOK);
  EXPECT_EQ(folder().read(L"Varnowick.ini").substr(0, 5), "106\r\n");
}

TEST_P(MainFailedSave, AtTheEndLeavesTheChoiceToTheUser) {
  const Bar bar = startWithObstacle();
  PostMessageW(bar.window(), WM_CLOSE, 0, 0);
  const DialogWindow first = failure();
  EXPECT_EQ(first.buttons(), (std::vector<int>{IDYES, IDNO}));
  first.press(IDNO);
  EXPECT_TRUE(program().running());
  PostMessageW(bar.window(), WM_CLOSE, 0, 0);
  failure().press(IDYES);
  EXPECT_EQ(program().waitForExit(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Obstacles, MainFailedSave,
                         testing::Values(Obstacle::AnotherProgramHoldsIt,
                                         Obstacle::AFolderStandsInItsPlace),
                         [](const auto& c) {
                           return c.param == Obstacle::AnotherProgramHoldsIt ? "Held" : "Folder";
                         });

}  // namespace
}  // namespace varnowick::e2e
