// The dialog, message box or menu of the program that waits for the user.
#pragma once

#include <windows.h>

namespace varnowick {

// The window that has to come forward before anything else can go on; null when
// none waits. Of several, the last one opened: it has disabled the others.
HWND waitingDialog();

}  // namespace varnowick
