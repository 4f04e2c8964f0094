// The program's entry: makes the real platform, then hands over to Main.

#include <ole2.h>
#include <windows.h>

#include "app/program.h"
#include "platform/win32/dll_path.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  varnowick::keepLibrariesToTheSystem();
  if (FAILED(OleInitialize(nullptr))) return 1;
  const int result = varnowick::Main();
  OleUninitialize();
  return result;
}
