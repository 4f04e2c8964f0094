// What the end-to-end cases share: ears for the program's events, a fresh copy of
// the program, and the usual ways to start and end it.
#pragma once

#include <gtest/gtest.h>

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
#include "ui/win/win_events.h"

namespace varnowick::e2e {

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
  // The same where files are damaged: answers what it tells meanwhile with the
  // first button. The texts it told.
  std::vector<std::wstring> startAnsweringDialogs();
  // Closes the main window as the task manager does, and waits for a clean end.
  void closeProgram();

  // Replaces the folder; for cases that do not use the portable one.
  void useFolder(std::unique_ptr<ProgramFolder> folder) { folder_ = std::move(folder); }

 private:
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
