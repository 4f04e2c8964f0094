// Where a turn of the mouse wheel goes.
#pragma once

#include <windows.h>

namespace varnowick {

// Before Windows 10 the wheel goes to the window with the focus. Where another window of
// this thread lies under the pointer, the message is made that one's.
void routeWheel(MSG& message);

}  // namespace varnowick
