// The windows of detached containers and their tabs as the user meets them, and the
// lines that a file has for them.
#pragma once

#include <windows.h>

#include <string>

#include "tests/e2e/harness/accessible.h"
#include "tests/e2e/harness/events.h"
#include "tests/e2e/harness/running_program.h"

namespace varnowick::e2e {

// Twips; flags as the file has them.
struct DetachedRow {
  int x = 9000;
  int y = 3000;
  int width = 3000;
  int height = 2400;
  bool useTab = false;
  bool autoShow = false;
  bool autoHide = false;
  bool hideOnClick = false;
  bool fadeOut = false;
  int edge = 2;
};
std::string detachedLines(const DetachedRow& row);

class DetachedWindow {
 public:
  DetachedWindow(const RunningProgram& program, Events& events, std::wstring name)
      : program_(program), events_(events), name_(std::move(name)) {}

  // Null while there is none, or it is hidden.
  HWND window() const;
  HWND tab() const;
  bool shown() const { return window() != nullptr; }
  bool tabShown() const { return tab() != nullptr; }
  RECT rect() const;
  RECT tabRect() const;
  AccessibleWindow accessible() const;
  POINT onTitle() const;

  void waitUntilShown() const;
  // Right-clicks the title, and chooses by mnemonics.
  void choose(const std::wstring& mnemonics) const;

 private:
  const RunningProgram& program_;
  Events& events_;
  std::wstring name_;
};

}  // namespace varnowick::e2e
