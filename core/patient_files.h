// Files beside other programs: scanners, indexers and backup programs hold a file
// open for a moment, and what fails then works a little later. Knows nothing of
// what is in the files.
#pragma once

#include <functional>
#include <set>

#include "platform/files.h"

namespace varnowick {

class PatientFiles final : public Files {
 public:
  using Pause = std::function<void(unsigned milliseconds)>;

  // Without a pause nothing is tried twice. Spare names for what is discarded are
  // taken in that folder, which has to be on the same drive.
  PatientFiles(Files& files, Pause pause, std::wstring spareFolder);

  // From now on about a second altogether may be spent on waiting for other
  // programs. A file for which that was in vain is not waited for again until it
  // could be had once.
  void renewPatience();
  void losePatience() { patience_ = 0; }

  // Removes a file so that its name is free at once: a file that another program
  // has open keeps its name until it is closed, and only a new name frees the old.
  // Discarding what does not exist is Ok.
  FileStatus discard(const std::wstring& path);
  // Removes what an earlier run has discarded and could not remove.
  void removeDiscarded();

  bool exists(const std::wstring& path) override { return files_.exists(path); }
  FileBytes read(const std::wstring& path) override;
  FileStatus write(const std::wstring& path, std::string_view bytes) override;
  FileStatus writeUnflushed(const std::wstring& path, std::string_view bytes) override;
  FileStatus flush(const std::wstring& path) override { return files_.flush(path); }
  FileStatus remove(const std::wstring& path) override;
  FileStatus rename(const std::wstring& from, const std::wstring& to) override;
  FileStatus createFolder(const std::wstring& path) override { return files_.createFolder(path); }
  std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override {
    return files_.list(folder, extension);
  }

 private:
  FileStatus persist(const std::wstring& path, const std::function<FileStatus()>& attempt);
  FileStatus discardOnce(const std::wstring& path);

  Files& files_;
  Pause pause_;
  std::wstring spareFolder_;
  unsigned spares_ = 0;
  unsigned patience_ = 0;  // ms
  std::set<std::wstring> hopeless_;
};

}  // namespace varnowick
