// Loads the desktop from the data folder and saves it there, so that a kill, a
// power cut or a full disk at any point leaves the state before or after, and
// never less. Knows files and formats; nothing of windows and timers.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/document.h"
#include "core/load_report.h"
#include "core/object_records.h"
#include "core/save_journal.h"
#include "platform/files.h"
#include "platform/msg_box.h"
#include "platform/text_codec.h"

namespace varnowick {

struct SaveResult {
  enum class Outcome { Saved, Suppressed, Failed };
  Outcome outcome = Outcome::Saved;
  std::wstring file;    // when Failed: the file that could not be written, in full
  std::wstring reason;  // and why, in the system's words
  explicit operator bool() const { return outcome != Outcome::Failed; }
};

// What to tell the user of a failed save.
std::wstring saveFailureMessage(const SaveResult& result);

class DesktopStore {
 public:
  // The data folder is given without a trailing backslash. It need not exist
  // before the first save.
  DesktopStore(Files& files, TextCodec& codec, MsgBox& msgBox, std::wstring dataFolder);

  // Finishes a save that was cut off, asks whether to load a recovery copy, sets
  // the defaults and reads everything into the document, whose workspace is
  // emptied first. Settings without a default keep what the document holds.
  // Saving is suppressed meanwhile. Nothing when the recovery question was closed by
  // other means than its buttons: no file has been changed then, saving stays
  // suppressed, and the program is to end.
  std::optional<LoadReport> LoadSettings(Document& document, const Progress& progress = {});

  // Writes the main file (the recovery copy or the settings file) and all the
  // container files. Whatever could not be read is backed up first; the user is
  // told of that once. After a failure the former or the new state stays
  // recoverable, and the next save or start makes good.
  SaveResult SaveDesktop(const Document& document, bool recovery);

  // While set, SaveDesktop does nothing at all.
  void suppressSaving(bool suppress) { suppressed_ = suppress; }
  bool savingSuppressed() const { return suppressed_ || loading_; }

  const std::wstring& dataFolder() const { return dataFolder_; }
  std::wstring settingsPath() const { return dataFolder_ + L"\\Varnowick.ini"; }
  std::wstring recoveryPath() const { return dataFolder_ + L"\\Varnowick.REC"; }
  std::wstring containersFolder() const { return dataFolder_ + L"\\Containers"; }
  std::wstring containerPath(std::size_t number) const;

 private:
  std::wstring journalPath() const { return dataFolder_ + std::wstring(kJournalName); }

  // Nothing, or the state of a journal that could not be carried out.
  std::optional<SavedState> finishLastSave();
  // The main file to read after the recovery question; nothing without an answer.
  std::optional<std::wstring> settleRecovery();
  bool adoptRecovery(std::wstring& mainPath);
  void tell(const std::wstring& what, const std::wstring& file, const std::wstring& reason);

  struct Loading;
  void readFromDisk(const std::wstring& mainPath, Loading& loading);
  void readFromState(const SavedState& state, Loading& loading);

  std::vector<std::wstring> strangersAmong(const std::vector<FileInfo>& inFolder) const;
  bool isOwnContainerFile(std::wstring_view name) const;
  SaveResult backUpWhatIsAtRisk();
  SaveResult writeJournal(const SavedState& state);
  SaveResult carryOut(const SavedState& state);
  void tellOfBackups();

  Files& files_;
  TextCodec& codec_;
  MsgBox& msgBox_;
  std::wstring dataFolder_;
  bool suppressed_ = false;
  bool loading_ = false;
  std::size_t ownContainerFiles_ = 0;     // 0.con and so on up to here were read or written
  std::vector<std::wstring> toBackUp_;    // full paths, before the next save
  std::vector<std::wstring> newBackups_;  // names not yet told
};

}  // namespace varnowick
