#include "core/desktop_store.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/backup.h"
#include "core/container_files.h"
#include "core/settings_file.h"
#include "core/settings_table.h"

namespace varnowick {
namespace {

constexpr std::uint64_t kMostBytesToReserveFor = 16U << 20U;
constexpr std::uint64_t kBytesOfAShortcut = 270;  // about what one takes in a file

constexpr unsigned kFlushPatience = 10'000;  // ms, for the whole of a save

// For trying out a file without asking anything.
class NoMsgBox : public MsgBox {
 public:
  MsgAnswer show(const std::wstring&, unsigned, const std::wstring&) override { return {}; }
};

// What could not be read, in words: the first problem of each file, as far as a box
// can show them.
std::wstring damageMessage(const LoadReport& report) {
  constexpr std::size_t kMostFiles = 12;
  std::wstring text = L"Some files could not be read completely:";
  std::wstring last;
  std::size_t files = 0;
  for (const LoadProblem& problem : report.problems()) {
    if (problem.file == last) continue;
    last = problem.file;
    if (++files > kMostFiles) return text + L"\r\n...";
    text += L"\r\n\r\n" + problem.file.substr(problem.file.rfind(L'\\') + 1);
    if (problem.line != 0) text += L", line " + std::to_wstring(problem.line);
    text += L": " + problem.what;
  }
  return text;
}

std::wstring linesOf(const std::vector<std::wstring>& names) {
  std::wstring lines;
  for (const std::wstring& name : names) lines += L"\r\n" + name;
  return lines;
}

}  // namespace

struct DesktopStore::Loading {
  Document& document;
  const Progress& progress;
  LoadReport report;
};

std::wstring saveFailureMessage(const SaveResult& result) {
  return L"The workspace could not be saved.\r\n\r\n" + result.file + L"\r\n" + result.reason;
}

DesktopStore::DesktopStore(StoreDisk disk, TextCodec& codec, MsgBox& msgBox,
                           std::wstring dataFolder)
    : files_(disk.files, std::move(disk.pause), dataFolder),
      flusher_(disk.flusher),
      codec_(codec),
      msgBox_(msgBox),
      state_(files_, dataFolder),
      journals_(files_, dataFolder) {}

void DesktopStore::tell(const std::wstring& what, const std::wstring& file,
                        const std::wstring& reason) {
  msgBox_.show(what + L"\r\n\r\n" + file + L"\r\n" + reason, kMsgExclamation, kProgramTitle);
}

// ---- Loading

std::optional<LoadReport> DesktopStore::LoadSettings(Document& document, const Progress& progress) {
  loading_ = true;
  files_.renewPatience();
  document.workspace = {};
  document.settings.recentSearches.clear();
  setBuiltInSettings(document.settings);
  InitDefaultSettings(document.settings);

  Loading loading{document, progress, {}};
  if (const std::optional<SavedState> unfinished = finishLastSave()) {
    readFromState(*unfinished, loading);
  } else {
    const std::optional<std::wstring> mainPath = settleRecovery();
    if (!mainPath) return std::nullopt;
    readFromDisk(*mainPath, loading);
  }

  copyDamaged(loading.report);
  loading_ = false;
  return std::move(loading.report);
}

std::optional<SavedState> DesktopStore::finishLastSave() {
  files_.removeDiscarded();
  std::optional<SavedState> state = journals_.read();
  // They may be all that is left of the last save, so no save may replace them.
  for (const JournalPlaces::Unreadable& journal : journals_.unreadable())
    toBackUp_.push_back(journal.path);
  if (!journals_.unreadable().empty())
    tell(L"The record of the last save could not be read.", journals_.unreadable().front().path,
         journals_.unreadable().front().reason);
  if (!state) {
    // Those that are cut off were never acted on: the files are as they were before.
    journals_.drop();
    return std::nullopt;
  }
  if (const SaveResult result = replay(*state); !result) {
    tell(
        L"The last save was cut off and could not be finished. It will be tried again with the "
        L"next save.",
        result.file, result.reason);
    return state;
  }
  // Else it would undo what the recovery question decides.
  finish(kFlushPatience);
  return std::nullopt;
}

// The journal may be older than it seems: one that could not be removed, beside files
// that came from elsewhere meanwhile. So whatever differs from it is kept.
SaveResult DesktopStore::replay(const SavedState& state) {
  const std::vector<std::wstring> others = state_.otherThan(state);
  const BackupResult kept = backUpFiles(files_, dataFolder(), others);
  if (kept.status) return carryOut(state);
  toBackUp_.insert(toBackUp_.end(), others.begin(), others.end());
  return saveFailed(kept.failedFile, kept.status);
}

std::optional<std::wstring> DesktopStore::settleRecovery() {
  std::wstring mainPath = settingsPath();
  if (!files_.exists(recoveryPath())) return mainPath;
  const MsgAnswer answer = msgBox_.show(
      L"RECOVERY: Varnowick was not closed properly. Load the newer backed-up recovery file?"
      L"\r\n\r\n"
      L"The file name is Varnowick.REC",
      kMsgYesNo | kMsgExclamation | kMsgSystemModal | kMsgMustAnswer,
      L"Varnowick - Recover Last Session");
  if (answer == MsgAnswer::None) return std::nullopt;
  if (answer == kMsgAnswerNo)
    files_.discard(recoveryPath());
  else
    adoptRecovery(mainPath);
  return mainPath;
}

// Puts the recovery copy in place of the settings file. Where that fails nothing
// is deleted, and the copy is read from where it is, if it can be read at all.
void DesktopStore::adoptRecovery(std::wstring& mainPath) {
  const FileBytes copy = files_.read(recoveryPath());
  if (!copy.status) {
    toBackUp_.push_back(recoveryPath());
    return tell(L"The recovery file could not be read. The last saved state is loaded instead.",
                recoveryPath(), copy.status.reason);
  }
  Document tried;
  LoadReport report;
  NoMsgBox noMsgBox;
  readSettingsFile(copy.bytes, recoveryPath(), codec_, noMsgBox, {}, tried, report);
  FileStatus status;
  if (!report.empty()) {
    // A damaged copy must not be the end of a sound settings file.
    BackupResult kept = backUpFiles(files_, dataFolder(), {settingsPath()});
    newBackups_.insert(newBackups_.end(), kept.written.begin(), kept.written.end());
    status = kept.status;
  }
  if (status) status = files_.rename(recoveryPath(), settingsPath());
  if (status) return;
  mainPath = recoveryPath();
  tell(L"The recovery file could not take the place of the settings file. Both are kept.",
       settingsPath(), status.reason);
}

namespace {
bool isListed(const std::vector<FileInfo>& folder, const std::wstring& path) {
  const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
  return std::any_of(folder.begin(), folder.end(),
                     [&](const FileInfo& info) { return info.name == name; });
}
}  // namespace

void DesktopStore::readFromDisk(const std::wstring& mainPath, Loading& loading) {
  const FileBytes mainFile = files_.read(mainPath);
  if (mainFile.status) {
    state_.ownMainFile(mainPath == recoveryPath());
    readSettingsFile(mainFile.bytes, mainPath, codec_, msgBox_, loading.progress, loading.document,
                     loading.report);
  } else if (mainFile.status.kind != FileStatus::Kind::NotFound) {
    loading.report.add(mainPath, 0, L"The file cannot be read. " + mainFile.status.reason);
  }

  const std::vector<FileInfo> inFolder = files_.list(containersFolder(), L".con");
  std::uint64_t bytes = 0;
  for (const FileInfo& info : inFolder) bytes += info.size;
  // A guess that saves moving everything about as the table grows.
  loading.document.workspace.shortcuts.reserve(
      static_cast<std::size_t>(std::min(bytes, kMostBytesToReserveFor) / kBytesOfAShortcut));

  std::size_t number = 0;
  for (;; ++number) {
    const std::wstring path = containerPath(number);
    const FileBytes file = files_.read(path);
    if (file.status.kind == FileStatus::Kind::NotFound) break;
    if (file.status)
      readContainerFile(file.bytes, path, codec_, loading.progress, loading.document.workspace,
                        loading.report);
    else
      loading.report.add(path, 0, L"The file cannot be read. " + file.status.reason);
    // A drive that has gone answers like this for every number there is.
    if (!file.status && !isListed(inFolder, path)) break;
  }
  state_.ownContainerFiles(number);
  for (const std::wstring& stranger : state_.strangersAmong(inFolder))
    loading.report.add(stranger, 0,
                       L"The file is not read, because a number before it is missing.");
}

void DesktopStore::readFromState(const SavedState& state, Loading& loading) {
  readSettingsFile(state.mainFile, state.recovery ? recoveryPath() : settingsPath(), codec_,
                   msgBox_, loading.progress, loading.document, loading.report);
  for (std::size_t i = 0; i < state.containers.size(); ++i)
    readContainerFile(state.containers[i], containerPath(i), codec_, loading.progress,
                      loading.document.workspace, loading.report);
  // How far the cut-off save came is not known; what it left is in the journal.
  state_.ownMainFile(state.recovery);
  state_.ownContainerFiles(state.containers.size());
}

// What can be read is copied at once; what cannot has to wait for the next save,
// because it would have to be moved.
void DesktopStore::copyDamaged(const LoadReport& report) {
  std::vector<std::wstring> readable;
  for (const std::wstring& path : report.filesNotReadWhole())
    (files_.read(path).status ? readable : toBackUp_).push_back(path);
  const BackupResult kept = backUpFiles(files_, dataFolder(), readable);
  if (!kept.status) toBackUp_.insert(toBackUp_.end(), readable.begin(), readable.end());
  newBackups_.insert(newBackups_.end(), kept.written.begin(), kept.written.end());
  if (report.empty()) return;
  damage_ = damageMessage(report);
  if (!kept.status)
    damage_ += L"\r\n\r\nThey could not be copied yet:\r\n" + kept.failedFile + L"\r\n" +
               kept.status.reason;
}

void DesktopStore::tellOfDamage() {
  if (damage_.empty()) return tellOfBackups();
  std::wstring text = std::exchange(damage_, {});
  if (!newBackups_.empty())
    text += L"\r\n\r\nCopies were put into " + backupFolder(dataFolder()) +
            L", so that nothing is lost:" + linesOf(std::exchange(newBackups_, {}));
  else if (!toBackUp_.empty())
    text += L"\r\n\r\nNothing will be saved before they have been copied.";
  msgBox_.show(text, kMsgExclamation, kProgramTitle);
}

// ---- Saving

SaveResult DesktopStore::SaveDesktop(const Document& document, bool recovery) {
  if (savingSuppressed()) return {SaveResult::Outcome::Suppressed, {}, {}};
  const ContentsByPanel contents(document.workspace);
  SavedState state;
  state.recovery = recovery;
  state.mainFile = renderSettingsFile(document.settings, contents.of(picBack), codec_);
  state.containers = renderContainerFiles(document.workspace, contents, codec_);

  files_.renewPatience();
  if (!files_.exists(dataFolder()))
    if (const FileStatus status = files_.createFolder(dataFolder()); !status)
      return saveFailed(dataFolder(), status);
  if (SaveResult result = backUpWhatIsAtRisk(recovery); !result) return result;
  if (SaveResult result = writeJournal(state); !result) return result;
  if (SaveResult result = carryOut(state); !result) return result;
  tellOfBackups();
  return {};
}

SaveResult DesktopStore::backUpWhatIsAtRisk(bool recovery) {
  for (std::wstring& stranger : state_.strangers(recovery))
    if (std::find(toBackUp_.begin(), toBackUp_.end(), stranger) == toBackUp_.end())
      toBackUp_.push_back(std::move(stranger));
  if (toBackUp_.empty()) return {};
  const BackupResult kept = backUpFiles(files_, dataFolder(), toBackUp_);
  newBackups_.insert(newBackups_.end(), kept.written.begin(), kept.written.end());
  if (!kept.status) return saveFailed(kept.failedFile, kept.status);
  toBackUp_.clear();
  return {};
}

SaveResult DesktopStore::writeJournal(const SavedState& state) {
  std::wstring failedPath;
  FileStatus status = journals_.discardUnreadable(failedPath);
  if (status) status = journals_.write(state, failedPath);
  return status ? SaveResult{} : saveFailed(failedPath, status);
}

// From here on the files may be in any state until all of this is done and flushed;
// the journal stays until then.
SaveResult DesktopStore::carryOut(const SavedState& state) {
  // What the flusher still does is about a state that is not the newest any more.
  flushing_ = false;
  carriedOut_.clear();
  SaveResult result = state_.carryOut(state);
  if (!result) return result;
  carriedOut_ = state_.pathsOf(state);
  startFlushing();
  return result;
}

void DesktopStore::startFlushing() {
  flusher_.begin(carriedOut_);
  flushing_ = true;
}

void DesktopStore::flushed() {
  // A journal that cannot go says what the files say, and goes with a later one.
  files_.losePatience();
  takeFlushed();
}

void DesktopStore::takeFlushed() {
  if (!flushing_) return;
  const std::optional<FileStatus> status = flusher_.result();
  if (!status) return;
  flushing_ = false;
  if (*status) journals_.drop();
}

bool DesktopStore::finish(unsigned milliseconds) {
  files_.renewPatience();
  // What another program held fast the last time may be free by now.
  if (!flushing_ && !journals_.empty() && !carriedOut_.empty()) startFlushing();
  if (flushing_) flusher_.wait(milliseconds);
  takeFlushed();
  return journals_.empty();
}

SaveResult DesktopStore::giveUpRecentChanges() {
  // A journal that stays would bring the changes back.
  if (!finish(kFlushPatience))
    return saveFailed(journals_.held(), {FileStatus::Kind::Other, L"The file is still needed."});
  files_.renewPatience();
  if (const FileStatus gone = files_.discard(recoveryPath()); !gone)
    return saveFailed(recoveryPath(), gone);
  suppressed_ = true;
  return {};
}

// Comes last, because the box lets other things happen, saves among them.
void DesktopStore::tellOfBackups() {
  if (newBackups_.empty()) return;
  const std::wstring names = linesOf(std::exchange(newBackups_, {}));
  msgBox_.show(
      L"Some files could not be read completely. They were copied before saving, so that "
      L"nothing in them is lost.\r\n\r\nThe folder is " +
          backupFolder(dataFolder()) + L"\r\nThe files are:" + names,
      kMsgExclamation, kProgramTitle);
}

}  // namespace varnowick
