// Loads the desktop from the data folder and saves it there, so that a kill, a
// power cut or a full disk at any point leaves the state before or after, and
// never less. Knows files and formats; nothing of windows and timers.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/document.h"
#include "core/journal_places.h"
#include "core/load_report.h"
#include "core/object_records.h"
#include "core/patient_files.h"
#include "core/save_journal.h"
#include "core/state_files.h"
#include "platform/flusher.h"
#include "platform/msg_box.h"
#include "platform/text_codec.h"

namespace varnowick {

// What to tell the user of a failed save.
std::wstring saveFailureMessage(const SaveResult& result);

// How the disk is reached: the pause serves for waiting until another program has
// closed a file; without one nothing is tried twice.
struct StoreDisk {
  Files& files;
  Flusher& flusher;
  PatientFiles::Pause pause;
};

class DesktopStore {
 public:
  // The data folder is given without a trailing backslash. It need not exist
  // before the first save.
  DesktopStore(StoreDisk disk, TextCodec& codec, MsgBox& msgBox, std::wstring dataFolder);

  // Finishes a save that was cut off, asks whether to load a recovery copy, sets
  // the defaults and reads everything into the document, whose workspace is
  // emptied first. Settings without a default keep what the document holds.
  // Saving is suppressed meanwhile. Nothing when the recovery question was closed by
  // other means than its buttons: no file has been changed then, saving stays
  // suppressed, and the program is to end.
  std::optional<LoadReport> LoadSettings(Document& document, const Progress& progress = {});
  // Tells what could not be read and where it has been copied to, once.
  void tellOfDamage();

  // Writes the main file (the recovery copy or the settings file) and all the
  // container files. Only a journal of all that reaches the disk before this returns;
  // the flusher brings the files there. Whatever could not be read is backed up
  // first; the user is told of that once. After a failure the former or the new
  // state stays recoverable, and the next save or start makes good.
  SaveResult SaveDesktop(const Document& document, bool recovery);
  // To be called when the flusher has a result: drops the journal when every file of
  // the last save has reached the disk.
  void flushed();
  // Waits for that at most so long, and tries again what has failed. False when the journal stays
  // for the next start.
  bool finish(unsigned milliseconds);
  // For a restart without recent changes: finishes, deletes the recovery copy and
  // suppresses saving. After a failure nothing of that is the case.
  SaveResult giveUpRecentChanges();

  // While set, SaveDesktop does nothing at all.
  void suppressSaving(bool suppress) { suppressed_ = suppress; }
  bool savingSuppressed() const { return suppressed_ || loading_; }

  const std::wstring& dataFolder() const { return state_.dataFolder(); }
  std::wstring settingsPath() const { return state_.settingsPath(); }
  std::wstring recoveryPath() const { return state_.recoveryPath(); }
  std::wstring containersFolder() const { return state_.containersFolder(); }
  std::wstring containerPath(std::size_t number) const { return state_.containerPath(number); }

 private:
  // Nothing, or the state of a journal that could not be carried out.
  std::optional<SavedState> finishLastSave();
  SaveResult replay(const SavedState& state);
  // The main file to read after the recovery question; nothing without an answer.
  std::optional<std::wstring> settleRecovery();
  void adoptRecovery(std::wstring& mainPath);
  void tell(const std::wstring& what, const std::wstring& file, const std::wstring& reason);

  struct Loading;
  void readFromDisk(const std::wstring& mainPath, Loading& loading);
  void readFromState(const SavedState& state, Loading& loading);
  void copyDamaged(const LoadReport& report);

  SaveResult backUpWhatIsAtRisk(bool recovery);
  SaveResult writeJournal(const SavedState& state);
  SaveResult carryOut(const SavedState& state);
  void startFlushing();
  void takeFlushed();
  void tellOfBackups();

  PatientFiles files_;
  Flusher& flusher_;
  TextCodec& codec_;
  MsgBox& msgBox_;
  StateFiles state_;
  JournalPlaces journals_;
  bool suppressed_ = false;
  bool loading_ = false;
  bool flushing_ = false;                 // the journal goes when the flusher is done
  std::vector<std::wstring> carriedOut_;  // the files of the newest journal's state
  std::vector<std::wstring> toBackUp_;    // full paths, before the next save
  std::vector<std::wstring> newBackups_;  // names not yet told
  std::wstring damage_;                   // what could not be read, not yet told
};

}  // namespace varnowick
