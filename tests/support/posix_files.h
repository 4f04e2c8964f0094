// Files on the real disk of a Linux machine, for benchmarks. Paths keep their
// backslashes on the outside and are ASCII.
#pragma once

#include "platform/files.h"

namespace varnowick {

class PosixFiles : public Files {
 public:
  // Without flushing, what is written costs no more than copying it.
  explicit PosixFiles(bool flush = true) : flush_(flush) {}

  bool exists(const std::wstring& path) override;
  FileBytes read(const std::wstring& path) override;
  FileStatus write(const std::wstring& path, std::string_view bytes) override;
  FileStatus writeUnflushed(const std::wstring& path, std::string_view bytes) override;
  FileStatus flush(const std::wstring& path) override;
  FileStatus remove(const std::wstring& path) override;
  FileStatus rename(const std::wstring& from, const std::wstring& to) override;
  FileStatus createFolder(const std::wstring& path) override;
  std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override;

 private:
  bool flush_;
};

}  // namespace varnowick
