// The program's entry: makes the real platform, then hands over to Main.

#include <ole2.h>
#include <windows.h>

#include "app/program.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  if (FAILED(OleInitialize(nullptr))) return 1;
  const int result = varnowick::Main();
  OleUninitialize();
  return result;
}
