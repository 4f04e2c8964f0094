// The program's entry: makes the real platform, then hands over to Main.

#include <windows.h>

#include "app/program.h"
#include "platform/win32/dll_path.h"
#include "platform/win32/ole_session.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  varnowick::keepLibrariesToTheSystem();
  const int result = varnowick::Main();
  varnowick::endOle();
  return result;
}
