// The system's own dialogs for choosing a file, a folder or a colour. They leave
// the current folder as it was, and follow no link file.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace varnowick {

struct FileChoice {
  const wchar_t* title;
  // Pairs of name and pattern, each ended by a zero, with one more at the end.
  const wchar_t* filter = L"All files\0*.*\0";
};

// The full path of an existing file; nothing when the user thinks better of it.
// start is a path whose folder is shown first, or empty.
std::optional<std::wstring> browseForFile(HWND owner, const FileChoice& choice,
                                          const std::wstring& start = {});
// The same with an existing folder of at most MAX_PATH characters.
std::optional<std::wstring> browseForFolder(HWND owner, const wchar_t* title,
                                            const std::wstring& start = {});
std::optional<COLORREF> chooseColour(HWND owner, COLORREF start);

inline constexpr const wchar_t* kPictureFilter =
    L"Pictures\0*.png;*.jpg;*.jpeg;*.gif;*.bmp;*.ico\0All files\0*.*\0";
inline constexpr const wchar_t* kIconFilter =
    L"Icons\0*.ico;*.exe;*.dll;*.icl\0Pictures\0*.png;*.bmp;*.gif;*.jpg;*.jpeg\0All files\0*.*\0";

}  // namespace varnowick
