// An empty folder on the real disk for one test, removed with everything in it at
// the end. Windows only; the implementation is tests/platform/win32/temp_folder.cpp.
#pragma once

#include <string>

namespace varnowick {

class TempFolder {
 public:
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();
  const std::wstring& path() const { return path_; }
  std::wstring operator/(const std::wstring& name) const { return path_ + L"\\" + name; }

 private:
  std::wstring path_;
};

}  // namespace varnowick
