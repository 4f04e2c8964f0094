// Plain text from and to the clipboard.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace varnowick {

bool textIsOnClipboard();
// Nothing when there is none, or more than `most` units.
std::wstring textOnClipboard(HWND owner, std::size_t most);
// False when another program holds the clipboard; then it is left as it was.
bool putTextOnClipboard(HWND owner, std::wstring_view text);

}  // namespace varnowick
