// The files of the data folder that make up the saved state: where they stand, which
// of them this program has read or written, and how a whole state is put there.
// Knows nothing of what is in them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/patient_files.h"
#include "core/save_journal.h"

namespace varnowick {

struct SaveResult {
  enum class Outcome { Saved, Suppressed, Failed };
  Outcome outcome = Outcome::Saved;
  std::wstring file;    // when Failed: the file that could not be written, in full
  std::wstring reason;  // and why, in the system's words
  explicit operator bool() const { return outcome != Outcome::Failed; }
};
SaveResult saveFailed(const std::wstring& file, const FileStatus& status);

class StateFiles {
 public:
  StateFiles(PatientFiles& files, std::wstring dataFolder);

  const std::wstring& dataFolder() const { return dataFolder_; }
  std::wstring settingsPath() const { return dataFolder_ + L"\\Varnowick.ini"; }
  std::wstring recoveryPath() const { return dataFolder_ + L"\\Varnowick.REC"; }
  std::wstring mainPath(bool recovery) const { return recovery ? recoveryPath() : settingsPath(); }
  std::wstring containersFolder() const { return dataFolder_ + L"\\Containers"; }
  std::wstring containerPath(std::size_t number) const;

  // What has been read may be written over: a main file, and the container files
  // below this number.
  void ownMainFile(bool recovery) { (recovery ? ownsRecovery_ : ownsSettings_) = true; }
  void ownContainerFiles(std::size_t count) { ownContainerFiles_ = count; }

  // Container files that nobody has read.
  std::vector<std::wstring> strangersAmong(const std::vector<FileInfo>& inFolder) const;
  // All that the next save would write over or delete although nobody has read it.
  std::vector<std::wstring> strangers(bool recovery);
  // All that carrying out the state would change or delete.
  std::vector<std::wstring> otherThan(const SavedState& state);

  // Puts the state there, unflushed, in a fixed order; whatever the folder holds
  // besides goes. Can be done again at any time, and must be after a failure.
  SaveResult carryOut(const SavedState& state);
  // The files that the state consists of.
  std::vector<std::wstring> pathsOf(const SavedState& state) const;

 private:
  bool isFile(const std::wstring& path, const wchar_t* extension);
  bool isNumbered(std::wstring_view name, std::size_t below) const;
  std::vector<FileInfo> inContainersFolder() { return files_.list(containersFolder(), L".con"); }

  PatientFiles& files_;
  std::wstring dataFolder_;
  bool ownsSettings_ = false;
  bool ownsRecovery_ = false;
  std::size_t ownContainerFiles_ = 0;  // 0.con and so on up to here
};

}  // namespace varnowick
