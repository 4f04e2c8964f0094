// Drives the typical event on a program that is running already: rests the mouse
// on the strip, clicks the shortcut or button named by the argument, and moves
// away so that the bar collapses. Used by ./run to show the program at work.
//
//   drive_demo.exe CAPTION
//
// After each step it prints a line "SHOT <name>" and waits for one line on its
// standard input, so that the caller can take a picture of the screen meanwhile;
// an input that has ended counts as an answer. The names are collapsed, expanded,
// launched and away. Ends with 0, or with 1 and a line "FAILED <reason>".

#include <windows.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include "platform/win32/handles.h"
#include "tests/e2e/harness/bar.h"
#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

void shot(const char* name) {
  // What has been triggered is on the screen a moment later.
  letTimePass(150);
  std::cout << "SHOT " << name << std::endl;
  std::string answer;
  std::getline(std::cin, answer);
}

void drive(const std::wstring& caption) {
  seeRealPixels();
  const ComApartment apartment;
  Events events;
  HWND window = nullptr;
  require(L"the program's window", [&] {
    window = findWindow(0, kMainClass);
    return window != nullptr;
  });
  Bar bar(window, events);
  if (bar.isOut()) {
    bar.leave();
  }
  shot("collapsed");
  bar.expand();
  shot("expanded");
  bar.click(caption);
  // A picture of the launch shows what was launched.
  DWORD bars = 0;
  GetWindowThreadProcessId(bar.window(), &bars);
  require(L"the started program's window", [&] {
    DWORD process = 0;
    const HWND front = GetForegroundWindow();
    GetWindowThreadProcessId(front, &process);
    return front != nullptr && process != bars && process != GetCurrentProcessId();
  });
  letTimePass(500);
  shot("launched");
  mouse::moveAwayFrom(bar.rect());
  require(L"the bar to go back", [&] { return !bar.isOut(); });
  shot("away");
}

}  // namespace
}  // namespace varnowick::e2e

int wmain(int count, wchar_t** arguments) {
  if (count != 2) {
    std::cout << "usage: drive_demo.exe CAPTION" << std::endl;
    return 2;
  }
  try {
    varnowick::e2e::drive(arguments[1]);
    return 0;
  } catch (const std::exception& error) {
    std::cout << "FAILED " << error.what() << std::endl;
    return 1;
  }
}
