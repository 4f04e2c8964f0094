// The disk behind Files. Paths beyond the classic limit work; nothing is tried a
// second time, because whoever asked decides whether trying again makes sense.
#pragma once

#include "platform/files.h"

namespace varnowick {

class Win32Files : public Files {
 public:
  bool exists(const std::wstring& path) override;
  // Files above 256 MB are refused.
  FileBytes read(const std::wstring& path) override;
  FileStatus write(const std::wstring& path, std::string_view bytes) override;
  FileStatus writeUnflushed(const std::wstring& path, std::string_view bytes) override;
  FileStatus flush(const std::wstring& path) override;
  // Also removes an empty folder.
  FileStatus remove(const std::wstring& path) override;
  FileStatus rename(const std::wstring& from, const std::wstring& to) override;
  FileStatus createFolder(const std::wstring& path) override;
  std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override;
};

// The status for an error code of the system (ERROR_SUCCESS gives Ok).
FileStatus fileStatusOf(unsigned long code);

// Of what GetFileAttributes tells, a failure included.
bool hasFolderAttribute(unsigned long attributes);

// The path as file functions take it whatever its length.
std::wstring pathForSystem(const std::wstring& path);

}  // namespace varnowick
