// Links that came from outside (feeds, replies, dropped texts): which may be
// opened, and what is said about the others. Opens only through Shell.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "platform/shell.h"

namespace varnowick {

// True for an address of a scheme on the allow list (http, https, ftp, mailto)
// that holds nothing but plain printable characters. Never a file or a program.
bool isSafeOutsideLink(std::wstring_view link);

// True for an address whose scheme has a program run what stands in the address
// itself (a script, a diagnosis), or opens a page that may: it is started from
// nowhere, whoever has put it into a file. Other schemes of programs are not this.
bool runsItsOwnText(std::wstring_view address);

// The link with characters that mislead made visible, cut to a length that fits
// a message.
std::wstring outsideLinkForDisplay(std::wstring_view link);

// Opens a safe link; shows any other in a message with its text. True when the
// link has been handed to the system, whatever came of it.
bool openOutsideLink(Platform& platform, OwnerWindow owner, const std::wstring& link);

}  // namespace varnowick
