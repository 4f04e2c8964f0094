// Files and folders, addressed by full paths with backslashes. Nothing here
// throws; every failure carries the system's own reason as text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

struct FileStatus {
  enum class Kind { Ok, NotFound, Denied, DiskFull, Other };
  Kind kind = Kind::Ok;
  std::wstring reason;  // the system's text for a failure, empty when Ok
  explicit operator bool() const { return kind == Kind::Ok; }
};

struct FileBytes {
  FileStatus status;
  std::string bytes;
};

struct FileInfo {
  std::wstring name;  // without its folder
  bool isFolder = false;
  std::uint64_t size = 0;          // bytes
  std::uint64_t modifiedTime = 0;  // 100-ns ticks since 1601-01-01 UTC
};

class Files {
 public:
  virtual ~Files() = default;
  virtual bool exists(const std::wstring& path) = 0;
  virtual FileBytes read(const std::wstring& path) = 0;
  // Creates the file or writes over it in place, and returns only when all bytes have
  // reached the disk.
  virtual FileStatus write(const std::wstring& path, std::string_view bytes) = 0;
  // The same, but a power cut may lose the bytes, wholly or in part, until the file
  // is flushed.
  virtual FileStatus writeUnflushed(const std::wstring& path, std::string_view bytes) = 0;
  // Brings what was written to the file to the disk. The file has to be there.
  virtual FileStatus flush(const std::wstring& path) = 0;
  // Removing what does not exist is Ok.
  virtual FileStatus remove(const std::wstring& path) = 0;
  // Replaces an existing target in one step.
  virtual FileStatus rename(const std::wstring& from, const std::wstring& to) = 0;
  // Creates the folder and those above it; Ok when it exists already.
  virtual FileStatus createFolder(const std::wstring& path) = 0;
  // Entries of the folder whose names end in the given extension (".con", any
  // case; empty for all), in no particular order. Empty when there is no folder.
  virtual std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) = 0;
};

}  // namespace varnowick
