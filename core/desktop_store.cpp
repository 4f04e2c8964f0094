#include "core/desktop_store.h"

#include <algorithm>
#include <optional>

#include "core/backup.h"
#include "core/container_files.h"
#include "core/settings_file.h"
#include "core/settings_table.h"

namespace varnowick {
namespace {

constexpr const wchar_t* kNewJournalSuffix = L".new";

constexpr std::uint64_t kMostBytesToReserveFor = 16U << 20U;
constexpr std::uint64_t kBytesOfAShortcut = 270;  // about what one takes in a file

SaveResult failed(const std::wstring& file, const FileStatus& status) {
  return {SaveResult::Outcome::Failed, file, status.reason};
}

// For trying out a file without asking anything.
class NoMsgBox : public MsgBox {
 public:
  MsgAnswer show(const std::wstring&, unsigned, const std::wstring&) override { return {}; }
};

bool equalsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const auto lower = [](wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
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

DesktopStore::DesktopStore(Files& files, TextCodec& codec, MsgBox& msgBox, std::wstring dataFolder)
    : files_(files), codec_(codec), msgBox_(msgBox), dataFolder_(std::move(dataFolder)) {}

std::wstring DesktopStore::containerPath(std::size_t number) const {
  return containersFolder() + L"\\" + std::to_wstring(number) + L".con";
}

void DesktopStore::tell(const std::wstring& what, const std::wstring& file,
                        const std::wstring& reason) {
  msgBox_.show(what + L"\r\n\r\n" + file + L"\r\n" + reason, kMsgExclamation, kProgramTitle);
}

// ---- Loading

std::optional<LoadReport> DesktopStore::LoadSettings(Document& document, const Progress& progress) {
  loading_ = true;
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

  const std::vector<std::wstring>& partly = loading.report.filesNotReadWhole();
  toBackUp_.insert(toBackUp_.end(), partly.begin(), partly.end());
  loading_ = false;
  return std::move(loading.report);
}

std::optional<SavedState> DesktopStore::finishLastSave() {
  files_.remove(journalPath() + kNewJournalSuffix);
  const FileBytes journal = files_.read(journalPath());
  if (journal.status.kind == FileStatus::Kind::NotFound) return std::nullopt;
  if (!journal.status) {
    // It may be all that is left of the last save, so no save may replace it.
    toBackUp_.push_back(journalPath());
    tell(L"The record of the last save could not be read.", journalPath(), journal.status.reason);
    return std::nullopt;
  }
  std::optional<SavedState> state = parseJournal(journal.bytes);
  if (state) {
    if (const SaveResult result = carryOut(*state); !result) {
      tell(
          L"The last save was cut off and could not be finished. It will be tried again with the "
          L"next save.",
          result.file, result.reason);
      return state;
    }
  }
  // One that is cut off was never acted on: the files are as they were before.
  files_.remove(journalPath());
  return std::nullopt;
}

std::optional<std::wstring> DesktopStore::settleRecovery() {
  std::wstring mainPath = settingsPath();
  if (!files_.exists(recoveryPath())) return mainPath;
  const MsgAnswer answer = msgBox_.show(
      L"RECOVERY: Varnowick was not closed properly. Load the newer backed-up recovery file?"
      L"\r\n\r\n"
      L"The file name is Varnowick.REC",
      kMsgYesNo | kMsgExclamation | kMsgSystemModal, L"Varnowick - Recover Last Session");
  if (answer == MsgAnswer::None) return std::nullopt;
  if (answer == kMsgAnswerNo)
    files_.remove(recoveryPath());
  else
    adoptRecovery(mainPath);
  return mainPath;
}

// Puts the recovery copy in place of the settings file. Where that fails nothing
// is deleted, and the copy is read from where it is, if it can be read at all.
bool DesktopStore::adoptRecovery(std::wstring& mainPath) {
  const FileBytes copy = files_.read(recoveryPath());
  if (!copy.status) {
    toBackUp_.push_back(recoveryPath());
    tell(L"The recovery file could not be read. The last saved state is loaded instead.",
         recoveryPath(), copy.status.reason);
    return false;
  }
  Document tried;
  LoadReport report;
  NoMsgBox noMsgBox;
  readSettingsFile(copy.bytes, recoveryPath(), codec_, noMsgBox, {}, tried, report);
  FileStatus status;
  if (!report.empty()) {
    // A damaged copy must not be the end of a sound settings file.
    BackupResult kept = backUpFiles(files_, dataFolder_, {settingsPath()});
    newBackups_.insert(newBackups_.end(), kept.written.begin(), kept.written.end());
    status = kept.status;
  }
  if (status) status = files_.rename(recoveryPath(), settingsPath());
  if (status) return true;
  mainPath = recoveryPath();
  tell(L"The recovery file could not take the place of the settings file. Both are kept.",
       settingsPath(), status.reason);
  return false;
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
  if (mainFile.status)
    readSettingsFile(mainFile.bytes, mainPath, codec_, msgBox_, loading.progress, loading.document,
                     loading.report);
  else if (mainFile.status.kind != FileStatus::Kind::NotFound)
    loading.report.add(mainPath, 0, L"The file cannot be read. " + mainFile.status.reason);

  const std::vector<FileInfo> inFolder = files_.list(containersFolder(), L".con");
  std::uint64_t bytes = 0;
  for (const FileInfo& info : inFolder) bytes += info.size;
  // A guess that saves moving everything about as the table grows.
  loading.document.workspace.shortcuts.reserve(
      static_cast<std::size_t>(std::min(bytes, kMostBytesToReserveFor) / kBytesOfAShortcut));

  ownContainerFiles_ = 0;
  for (;; ++ownContainerFiles_) {
    const std::wstring path = containerPath(ownContainerFiles_);
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
  for (const std::wstring& stranger : strangersAmong(inFolder))
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
  ownContainerFiles_ = state.containers.size();
}

// ---- Saving

bool DesktopStore::isOwnContainerFile(std::wstring_view name) const {
  std::size_t number = 0;
  std::size_t digits = 0;
  for (; digits < name.size() && digits < 9 && name[digits] >= L'0' && name[digits] <= L'9';
       ++digits)
    number = number * 10 + static_cast<std::size_t>(name[digits] - L'0');
  return digits > 0 && number < ownContainerFiles_ &&
         equalsIgnoringCase(name, std::to_wstring(number) + L".con");
}

// Container files that the next save would delete although nobody has read them.
std::vector<std::wstring> DesktopStore::strangersAmong(
    const std::vector<FileInfo>& inFolder) const {
  std::vector<std::wstring> paths;
  for (const FileInfo& info : inFolder)
    if (!info.isFolder && !isOwnContainerFile(info.name))
      paths.push_back(containersFolder() + L"\\" + info.name);
  std::sort(paths.begin(), paths.end());
  return paths;
}

SaveResult DesktopStore::SaveDesktop(const Document& document, bool recovery) {
  if (savingSuppressed()) return {SaveResult::Outcome::Suppressed, {}, {}};
  const ContentsByPanel contents(document.workspace);
  SavedState state;
  state.recovery = recovery;
  state.mainFile = renderSettingsFile(document.settings, contents.of(picBack), codec_);
  state.containers = renderContainerFiles(document.workspace, contents, codec_);

  if (!files_.exists(dataFolder_))
    if (const FileStatus status = files_.createFolder(dataFolder_); !status)
      return failed(dataFolder_, status);
  if (SaveResult result = backUpWhatIsAtRisk(); !result) return result;
  if (SaveResult result = writeJournal(state); !result) return result;
  // From here on the files may be in any state until all of this is done; the
  // journal stays until then.
  if (SaveResult result = carryOut(state); !result) return result;
  files_.remove(journalPath());
  tellOfBackups();
  return {};
}

SaveResult DesktopStore::backUpWhatIsAtRisk() {
  for (std::wstring& stranger : strangersAmong(files_.list(containersFolder(), L".con")))
    if (std::find(toBackUp_.begin(), toBackUp_.end(), stranger) == toBackUp_.end())
      toBackUp_.push_back(std::move(stranger));
  if (toBackUp_.empty()) return {};
  const BackupResult kept = backUpFiles(files_, dataFolder_, toBackUp_);
  newBackups_.insert(newBackups_.end(), kept.written.begin(), kept.written.end());
  if (!kept.status) return failed(kept.failedFile, kept.status);
  toBackUp_.clear();
  return {};
}

SaveResult DesktopStore::writeJournal(const SavedState& state) {
  const std::string journal = renderJournal(state);
  const std::wstring path = journalPath();
  // A journal that is still there belongs to a save that came half-way. It may
  // only go when the new one is whole.
  const bool replacing = files_.exists(path);
  const std::wstring target = replacing ? path + kNewJournalSuffix : path;
  FileStatus status = files_.write(target, journal);
  if (status && replacing) status = files_.rename(target, path);
  if (status) return {};
  files_.remove(target);
  return failed(target, status);
}

// The fixed order of writing. It can be carried out again at any time.
SaveResult DesktopStore::carryOut(const SavedState& state) {
  const auto check = [](const std::wstring& file, const FileStatus& status) {
    return status ? SaveResult{} : failed(file, status);
  };
  if (!state.recovery)
    if (SaveResult result = check(recoveryPath(), files_.remove(recoveryPath())); !result)
      return result;
  const std::wstring mainPath = state.recovery ? recoveryPath() : settingsPath();
  if (SaveResult result = check(mainPath, files_.write(mainPath, state.mainFile)); !result)
    return result;

  const std::wstring folder = containersFolder();
  if (SaveResult result = check(folder, files_.createFolder(folder)); !result) return result;
  ownContainerFiles_ = std::max(ownContainerFiles_, state.containers.size());
  for (const FileInfo& info : files_.list(folder, L".con")) {
    const std::wstring path = folder + L"\\" + info.name;
    if (info.isFolder) continue;
    if (SaveResult result = check(path, files_.remove(path)); !result) return result;
  }
  for (std::size_t i = 0; i < state.containers.size(); ++i) {
    const std::wstring path = containerPath(i);
    if (SaveResult result = check(path, files_.write(path, state.containers[i])); !result)
      return result;
  }
  ownContainerFiles_ = state.containers.size();
  return {};
}

// Comes last, because the box lets other things happen, saves among them.
void DesktopStore::tellOfBackups() {
  if (newBackups_.empty()) return;
  std::wstring names;
  for (const std::wstring& name : newBackups_) names += L"\r\n" + name;
  newBackups_.clear();
  msgBox_.show(
      L"Some files could not be read completely. They were copied before saving, so that "
      L"nothing in them is lost.\r\n\r\nThe folder is " +
          backupFolder(dataFolder_) + L"\r\nThe files are:" + names,
      kMsgExclamation, kProgramTitle);
}

}  // namespace varnowick
