// Error codes of the system as the text that a user is shown.
#pragma once

#include <windows.h>

#include <string>

namespace varnowick {

// One line without its line break; the bare number when the system has no text.
std::wstring systemErrorText(DWORD code);

}  // namespace varnowick
