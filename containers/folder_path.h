// Paths as folder containers need them: from the text a record holds to a full
// path, and what lies where. Judges texts alone and asks no disk.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace varnowick {

// The full path that the text stands for: "@" is the program's drive, variables
// get their values, quotes and trailing backslashes go. Empty when it does not
// come to a full path of a drive or a share.
std::wstring folderPath(const std::wstring& text, const std::wstring& programFolder,
                        const std::function<std::wstring(const std::wstring&)>& expandEnvironment);

// "C:\x", "C:\" or "\\server\share\x", and nothing in it that the shell or the disk
// would take for something else: wildcards, ".", "..", slashes, control characters.
bool isPlainFullPath(std::wstring_view path);

// A backslash between them, never two.
std::wstring pathIn(const std::wstring& folder, const std::wstring& name);
// The folder in which the path lies, "C:\" with its backslash; empty for a root.
std::wstring parentOf(std::wstring_view path);
std::wstring nameOf(std::wstring_view path);
// "C:" or "\\server\share".
std::wstring_view volumeOf(std::wstring_view path);

// Whatever the case and trailing backslashes.
bool samePath(std::wstring_view a, std::wstring_view b);
// The path is the folder or lies somewhere below it.
bool isInOrBelow(std::wstring_view path, std::wstring_view folder);

// A name as it is shown: characters that hide others or turn the text round are
// marked, for "txt.exe" must not read as "exe.txt".
std::wstring shownName(std::wstring_view name);

}  // namespace varnowick
