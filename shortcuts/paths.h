// Paths of shortcuts: the "@" that stands for the drive the program runs from,
// folders of paths, and the file that stands for a shortcut. Opens nothing.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/workspace.h"
#include "platform/shell.h"

namespace varnowick {

inline constexpr const wchar_t* kHomePageFile = L"\\Varnowick Home Page.html";

// A path that begins with "@" gets the program's drive letter in its place; any
// other path comes back as it is.
std::wstring ResolveRelativePath(const std::wstring& path, const std::wstring& programFolder);
// Replaces the first character with "@". An empty path stays empty.
std::wstring MakeRelativePath(const std::wstring& path);
// Up to and including the last backslash; empty when there is none.
std::wstring FolderOfPath(const std::wstring& path);
// The file whose icon stands for the shortcut and whose location is shown.
std::wstring EffectivePath(const clsShortcut& shortcut, bool useIcon, System& system);

// A 32-bit program on 64-bit Windows sees another System32 than the user does. A
// path below it that exists there only for 64-bit programs is returned below
// Sysnative, every other path as it is. windowsFolder has no trailing backslash.
std::wstring PathAsSeenFrom32Bit(const std::wstring& path, bool isWow64,
                                 const std::wstring& windowsFolder,
                                 const std::function<bool(const std::wstring&)>& exists);

// Expands the text as the 64-bit programs do that have written it: a 32-bit program has
// another folder under %ProgramFiles% and %CommonProgramFiles%. Where the file is not in
// theirs, as it would by itself.
std::wstring ExpandAsWritten(const std::wstring& text,
                             const std::function<std::wstring(const std::wstring&)>& expand,
                             const std::function<bool(const std::wstring&)>& exists);

// The same text whatever the case of its ASCII letters.
bool sameIgnoringCase(std::wstring_view a, std::wstring_view b);

}  // namespace varnowick
