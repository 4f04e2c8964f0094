// An empty folder for one test, removed with everything in it at the end.
#pragma once

#include <windows.h>

#include <string>

namespace varnowick {

class TempFolder {
 public:
  TempFolder() {
    wchar_t base[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, base);
    path_ = base +
            (L"vw-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter()));
    CreateDirectoryW(path_.c_str(), nullptr);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() { removeTree(L"\\\\?\\" + path_); }
  const std::wstring& path() const { return path_; }
  std::wstring operator/(const std::wstring& name) const { return path_ + L"\\" + name; }

 private:
  static int& counter() {
    static int count = 0;
    return count;
  }
  static void removeTree(const std::wstring& folder) {
    WIN32_FIND_DATAW data{};
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &data);
    if (search != INVALID_HANDLE_VALUE) {
      do {
        const std::wstring name = data.cFileName;
        if (name == L"." || name == L"..") continue;
        const std::wstring path = folder + L"\\" + name;
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
          removeTree(path);
        } else {
          DeleteFileW(path.c_str());
        }
      } while (FindNextFileW(search, &data));
      FindClose(search);
    }
    RemoveDirectoryW(folder.c_str());
  }

  std::wstring path_;
};

}  // namespace varnowick
