// A file system in memory that counts what changes it, and can be cut off or
// made to fail at any of those operations.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"

namespace varnowick {

// Thrown where the power goes out.
struct PowerCut {};

class MemoryFiles : public Files {
 public:
  enum class Operation { Write, Remove, Rename, CreateFolder };

  // What is on the disk. Full paths as they were given; looked up in any case.
  std::map<std::wstring, std::string> contents;
  std::set<std::wstring> unreadable;
  std::vector<std::wstring> log;  // one line for each operation that changes something

  // After this many changing operations the power goes out; -1: never. A write
  // that is cut off leaves half of its bytes.
  int operationsUntilCut = -1;
  // Decides which operations fail, and how; a failing write leaves nothing new.
  std::function<FileStatus(Operation, const std::wstring& path)> failure;

  bool exists(const std::wstring& path) override;
  FileBytes read(const std::wstring& path) override;
  FileStatus write(const std::wstring& path, std::string_view bytes) override;
  FileStatus remove(const std::wstring& path) override;
  FileStatus rename(const std::wstring& from, const std::wstring& to) override;
  FileStatus createFolder(const std::wstring& path) override;
  std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override;

  std::set<std::wstring> folders;

 private:
  // Throws at the cut; otherwise says whether the operation fails.
  FileStatus begin(Operation operation, const std::wstring& path, const wchar_t* verb);
};

}  // namespace varnowick
