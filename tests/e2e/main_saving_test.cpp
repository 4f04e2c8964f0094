// Saving: every byte of every file, the ways to end, and saves that fail.
#include "tests/e2e/program_test.h"
#include "tests/support/golden_files.h"

namespace varnowick::e2e {
namespace {

using MainSaving = ProgramTest;

TEST_F(MainSaving, SavingAndEndingLeavesEveryFileByteForByte) {
  DataFiles golden{{L"Varnowick.ini", goldenSettingsFile()}};
  for (const std::string& file : goldenContainerFiles())
    golden[L"Containers\\" + std::to_wstring(golden.size() - 1) + L".con"] = file;
  folder().writeAll(golden);
  Bar bar = startBar();
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow saved = message();
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  EXPECT_TRUE(saved.hasIcon());
  saved.press(IDOK);
  bar.waitUntilInFront();
  keyboard::press(VK_ESCAPE);
  mouse::moveAwayFrom(bar.rect());
  require(L"the bar to be back at the edge",
          [&] { return bar.rect() == windowAt(kCollapsedLeft, kBarTop, kBarWidth, kBarHeight); });
  closeProgram();
  EXPECT_EQ(folder().state(), golden);
  EXPECT_TRUE(folder().backups().empty());
}

TEST_F(MainSaving, AFileThatAnotherProgramHasOpenIsStillThereAfterwards) {
  write(SettingsFile(), std::vector<ContainerRow>(3, {.name = L"Box"}));
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
  expectSaved([] { keyboard::chord({VK_CONTROL, 'L'}); });
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

class MainFailedSave : public ProgramTest {
 protected:
  std::wstring file() { return folder().file(L"Varnowick.ini"); }
  Bar startWithObstacle() {
    write(SettingsFile());
    Bar bar = startBar();
    holder_.reset(CreateFileW(file().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    return bar;
  }
  // Waits for a message that says which file and why, and not that all is well.
  DialogWindow failure() {
    const DialogWindow told = dialog(L"");
    const std::wstring text = told.text();
    EXPECT_NE(text.find(file()), std::wstring::npos) << toUtf8(text);
    EXPECT_EQ(text.find(L"Workspace Saved"), std::wstring::npos);
    EXPECT_GT(text.size(), file().size() + 10) << "no reason: " << toUtf8(text);
    return told;
  }

  FileHandle holder_;
};

TEST_F(MainFailedSave, SaysWhichFileAndWhyAndSavesOnceItCan) {
  Bar bar = startWithObstacle();
  bar.focus();
  keyboard::press(VK_F8);
  failure().press(IDOK);
  holder_.reset();
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow saved = message();
  EXPECT_EQ(saved.text(), L"Workspace Saved");
  saved.press(IDOK);
  EXPECT_EQ(folder().read(L"Varnowick.ini").substr(0, 5), "106\r\n");
}

TEST_F(MainFailedSave, AtTheEndLeavesTheChoiceToTheUser) {
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

}  // namespace
}  // namespace varnowick::e2e
