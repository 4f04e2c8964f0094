// What the end-to-end cases share: ears for the program's events, a fresh copy of
// the program, and the usual ways to start and end it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/data_files.h"
#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/events.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/running_program.h"
#include "tests/e2e/harness/screen.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/commands/commands.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {

constexpr DWORD kSeveralTicks = 2'500;  // ms: more than two looks for the mouse
constexpr int kSide = 3000;             // twips: a bar that fits every edge

class ProgramTest : public testing::Test {
 protected:
  // A folder for the case, with the mouse well away from every edge.
  void SetUp() override;
  void TearDown() override;

  ProgramFolder& folder() { return *folder_; }
  RunningProgram& program() { return *program_; }
  Events& events() { return *events_; }

  // Starts the program and does not wait. An earlier start has to have ended.
  RunningProgram& start();
  // Starts it and waits for the main window.
  Bar startBar();
  // Starts it and waits until it has loaded; or closes the main window as the task
  // manager does and waits for a clean end. Whatever the program tells meanwhile
  // is answered with the first button; the texts.
  std::vector<std::wstring> startAnsweringDialogs();
  std::vector<std::wstring> closeAnsweringDialogs();
  // The same where the program has no reason to tell anything.
  void closeProgram() { EXPECT_TRUE(closeAnsweringDialogs().empty()); }

  // The settings file, and container files from 0.con on.
  void write(const SettingsFile& settings, const std::vector<ContainerRow>& containers = {});
  std::string file(int number);
  std::string recovery() { return folder().read(L"Varnowick.REC"); }
  // A value of a container file.
  std::string value(int number, const std::string& key) { return savedValue(file(number), key); }
  DialogWindow dialog(const std::wstring& title) {
    return waitForDialog(program().process(), title);
  }
  // The program's own message box.
  DialogWindow message() { return dialog(kTitle); }
  // Does it and waits until it is on the disk. The line tells which wait was in vain.
  void expectSaved(const std::function<void()>& action, int line = __builtin_LINE());
  // Opens a menu by a right click there.
  void openMenuAt(POINT at);
  // The same, and chooses from it with the arrow keys. The
  // rows are those of the menu's table; the ones that windows add stand below them.
  void chooseFromMenu(POINT at, MenuId menu, Command command);

  // Replaces the folder; for cases that do not use the portable one.
  void useFolder(std::unique_ptr<ProgramFolder> folder) { folder_ = std::move(folder); }

 private:
  // Answers dialogs until the condition holds.
  std::vector<std::wstring> answerUntil(const std::wstring& what,
                                        const std::function<bool()>& condition);

  std::unique_ptr<Events> events_;
  std::unique_ptr<ProgramFolder> folder_;
  std::unique_ptr<RunningProgram> program_;
};

// The rectangle of a window placed at these twips, as the program rounds it.
RECT windowAt(double left, double top, double width, double height);
std::string describe(const RECT& rect);

}  // namespace varnowick::e2e

inline bool operator==(const RECT& a, const RECT& b) { return EqualRect(&a, &b) != 0; }
inline std::ostream& operator<<(std::ostream& out, const RECT& rect) {
  return out << varnowick::e2e::describe(rect);
}
