// Questions that go away without an answer: closed, by Esc, or with the session.
// Nothing may be taken for Yes then.
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

enum class Way { Closed, Esc, SessionEnds };

class MainUnanswered : public ProgramTest, public testing::WithParamInterface<Way> {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    if (!underWine() && GetParam() == Way::Closed)
      GTEST_SKIP() << "Windows does not let a Yes/No box be closed";
  }
  static bool underWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  }
  // As the system ends a session: the main window is asked, then told.
  void tearDown(const DialogWindow& question, HWND mainWindow) {
    if (GetParam() == Way::Closed) PostMessageW(question.handle(), WM_CLOSE, 0, 0);
    if (GetParam() == Way::Esc) {
      require(L"the question in front", [&] { return GetForegroundWindow() == question.handle(); });
      keyboard::press(VK_ESCAPE);
    }
    if (GetParam() == Way::SessionEnds) {
      DWORD_PTR answer = 0;
      SendMessageTimeoutW(mainWindow, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, kPatience, &answer);
      EXPECT_NE(answer, 0U);
      SendMessageTimeoutW(mainWindow, WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, kPatience, &answer);
    }
    require(L"the question to go", [&] { return !question.open(); });
  }
};

TEST_P(MainUnanswered, TheRecoveryQuestionEndsTheProgramAndKeepsBothFiles) {
  if (!underWine() && GetParam() == Way::Esc) GTEST_SKIP() << "Windows ignores it there";
  write(SettingsFile().set("[LOCKED]", "1"));
  folder().write(L"Varnowick.REC", SettingsFile().bytes());
  const DataFiles before = folder().state();
  start();
  const DialogWindow question = dialog(L"Varnowick - Recover Last Session");
  tearDown(question, FindWindowW(kMainClass, nullptr));
  EXPECT_EQ(program().waitForExit(), 0U);
  EXPECT_EQ(folder().state(), before);
}

TEST_P(MainUnanswered, AConfirmationStartsNothing) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile().add({.caption = L"Probe", .path = probe, .confirm = true}));
  Bar bar = startBar();
  bar.expand();
  bar.click(L"Probe");
  const DialogWindow question = dialog(L"Launch Confirmation");
  tearDown(question, bar.window());
  if (GetParam() != Way::SessionEnds) closeProgram();
  EXPECT_EQ(program().waitForExit(), 0U);
  program().waitForAllEnded();
  EXPECT_FALSE(launched(probe));
}

std::string nameOf(const testing::TestParamInfo<Way>& way) {
  if (way.param == Way::SessionEnds) return "SessionEnds";
  return way.param == Way::Esc ? "Esc" : "Closed";
}

INSTANTIATE_TEST_SUITE_P(Ways, MainUnanswered,
                         testing::Values(Way::Closed, Way::Esc, Way::SessionEnds), nameOf);

}  // namespace
}  // namespace varnowick::e2e
