// The main window as the user meets it: a strip at the screen's edge on which
// the mouse rests, and the bar that then slides out.
#pragma once

#include <windows.h>

#include <string>

#include "tests/e2e/harness/accessible.h"
#include "tests/e2e/harness/events.h"
#include "tests/e2e/harness/running_program.h"

namespace varnowick::e2e {

class Bar {
 public:
  // Waits until the program has loaded.
  Bar(const RunningProgram& program, Events& events);
  // A bar that is there already.
  Bar(HWND window, Events& events) : window_(window), events_(events) {}

  HWND window() const { return window_; }
  RECT rect() const;
  // What of it is on the screen.
  RECT seen() const;
  AccessibleWindow accessible() const { return AccessibleWindow(window_); }

  // The container of that name, and where its title is taken hold of.
  RECT box(const std::wstring& name) const;
  POINT onTitle(const std::wstring& name) const;

  // True when more of it can be seen than the strip.
  bool isOut() const;
  // Rests the mouse on the visible strip and waits until the bar has come out.
  void expand();
  // Takes the mouse away and waits until the bar has gone back.
  void leave();
  void waitUntilInFront() const;
  // Expands when needed and clicks an empty place, so that keys go to the bar.
  // The lower part of the panel has to be empty.
  void focus();
  // A point of the panel, clear as long as its lower part is.
  POINT emptyPlace() const;
  // Opens the main menu by a right click on an empty place.
  void openMenu();
  // Chooses from the open menu by mnemonics, one for each level.
  void choose(const std::wstring& mnemonics);
  // Clicks the shortcut, container or button of that name.
  void click(const std::wstring& name);

 private:
  HWND window_;
  Events& events_;
};

}  // namespace varnowick::e2e
