// A file system in memory that counts what changes it, and can be cut off or made to
// fail at any of those operations. As on the real one, what was written and not
// flushed may be lost at a cut, and files that another program has open behave as the
// system documents it.
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
  enum class Operation { Write, Flush, Remove, Rename, CreateFolder };

  // What is on the disk. Full paths as they were given; looked up in any case.
  std::map<std::wstring, std::string> contents;
  std::set<std::wstring> unreadable;
  int flushes = 0;
  std::vector<std::wstring> log;  // one line for each operation that changes something

  // After this many operations the power goes out; -1: never. A write that is cut off
  // leaves half of its bytes.
  int operationsUntilCut = -1;
  // Decides which operations fail, and how; a failing write leaves nothing new.
  std::function<FileStatus(Operation, const std::wstring& path)> failure;

  // What may be left of unflushed writes when the power comes back.
  enum class Loss { Nothing, All, Halves, EverySecond };
  void losePower(Loss loss);

  // Another program opens the file, sharing all or nothing, and closes it again.
  // While a shared one is open it can be written, renamed and deleted, but a deleted
  // one keeps its name from everybody until it is closed, and it cannot be replaced.
  void openElsewhere(const std::wstring& path, bool sharing) { open_[path] = sharing; }
  void closeElsewhere();

  bool exists(const std::wstring& path) override;
  FileBytes read(const std::wstring& path) override;
  FileStatus write(const std::wstring& path, std::string_view bytes) override;
  FileStatus writeUnflushed(const std::wstring& path, std::string_view bytes) override;
  FileStatus flush(const std::wstring& path) override;
  FileStatus remove(const std::wstring& path) override;
  FileStatus rename(const std::wstring& from, const std::wstring& to) override;
  FileStatus createFolder(const std::wstring& path) override;
  std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override;

  std::set<std::wstring> folders;

 private:
  // Throws at the cut; otherwise says whether the operation fails.
  FileStatus begin(Operation operation, const std::wstring& path, const wchar_t* verb);
  // What another program's handle makes of access to the file.
  FileStatus access(const std::wstring& path) const;

  std::map<std::wstring, std::string> unflushed_;  // path -> what of it is on the disk
  std::map<std::wstring, bool> open_;              // path -> shared
  std::set<std::wstring> deletePending_;
};

}  // namespace varnowick
