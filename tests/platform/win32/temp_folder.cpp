#include "tests/support/temp_folder.h"

#include <windows.h>

#include "platform/win32/handles.h"

namespace varnowick {

namespace {

void removeTree(const std::wstring& folder) {
  {
    WIN32_FIND_DATAW data{};
    const FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &data));
    while (search) {
      const std::wstring name = data.cFileName;
      const std::wstring path = folder + L"\\" + name;
      if (name != L"." && name != L"..") {
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
          removeTree(path);
        } else {
          DeleteFileW(path.c_str());
        }
      }
      if (!FindNextFileW(search.get(), &data)) break;
    }
  }
  RemoveDirectoryW(folder.c_str());
}

}  // namespace

TempFolder::TempFolder() {
  static int count = 0;
  wchar_t base[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH, base);
  path_ =
      base + (L"vw-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count));
  CreateDirectoryW(path_.c_str(), nullptr);
}

TempFolder::~TempFolder() { removeTree(L"\\\\?\\" + path_); }

}  // namespace varnowick
