#include "core/state_files.h"

#include <algorithm>
#include <utility>

namespace varnowick {
namespace {

bool equalsIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const auto lower = [](wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

}  // namespace

SaveResult saveFailed(const std::wstring& file, const FileStatus& status) {
  return {SaveResult::Outcome::Failed, file, status.reason};
}

StateFiles::StateFiles(PatientFiles& files, std::wstring dataFolder)
    : files_(files), dataFolder_(std::move(dataFolder)) {}

std::wstring StateFiles::containerPath(std::size_t number) const {
  return containersFolder() + L"\\" + std::to_wstring(number) + L".con";
}

bool StateFiles::isNumbered(std::wstring_view name, std::size_t below) const {
  std::size_t number = 0;
  std::size_t digits = 0;
  for (; digits < name.size() && digits < 9 && name[digits] >= L'0' && name[digits] <= L'9';
       ++digits)
    number = number * 10 + static_cast<std::size_t>(name[digits] - L'0');
  return digits > 0 && number < below &&
         equalsIgnoringCase(name, std::to_wstring(number) + L".con");
}

std::vector<std::wstring> StateFiles::strangersAmong(const std::vector<FileInfo>& inFolder) const {
  std::vector<std::wstring> paths;
  for (const FileInfo& info : inFolder)
    if (!info.isFolder && !isNumbered(info.name, ownContainerFiles_))
      paths.push_back(containersFolder() + L"\\" + info.name);
  std::sort(paths.begin(), paths.end());
  return paths;
}

// A folder of that name is no file to be kept, but an obstacle to be told of.
bool StateFiles::isFile(const std::wstring& path, const wchar_t* extension) {
  const std::vector<FileInfo> listed = files_.list(dataFolder_, extension);
  return std::any_of(listed.begin(), listed.end(), [&](const FileInfo& info) {
    return !info.isFolder && equalsIgnoringCase(dataFolder_ + L"\\" + info.name, path);
  });
}

std::vector<std::wstring> StateFiles::strangers(bool recovery) {
  std::vector<std::wstring> paths = strangersAmong(inContainersFolder());
  if (!ownsRecovery_ && isFile(recoveryPath(), L".REC")) paths.push_back(recoveryPath());
  if (!recovery && !ownsSettings_ && isFile(settingsPath(), L".ini"))
    paths.push_back(settingsPath());
  return paths;
}

std::vector<std::wstring> StateFiles::otherThan(const SavedState& state) {
  std::vector<std::wstring> paths;
  const auto compare = [&](const std::wstring& path, const std::string& bytes) {
    const FileBytes present = files_.read(path);
    if (present.status.kind != FileStatus::Kind::NotFound &&
        (!present.status || present.bytes != bytes))
      paths.push_back(path);
  };
  compare(mainPath(state.recovery), state.mainFile);
  for (std::size_t i = 0; i < state.containers.size(); ++i)
    compare(containerPath(i), state.containers[i]);
  if (!state.recovery && files_.exists(recoveryPath())) paths.push_back(recoveryPath());
  for (const FileInfo& info : inContainersFolder())
    if (!info.isFolder && !isNumbered(info.name, state.containers.size()))
      paths.push_back(containersFolder() + L"\\" + info.name);
  return paths;
}

// Files are written over in place: deleting them first would leave their names
// taken for as long as another program has them open.
SaveResult StateFiles::carryOut(const SavedState& state) {
  const std::wstring folder = containersFolder();
  if (const FileStatus made = files_.createFolder(folder); !made) return saveFailed(folder, made);
  if (!state.recovery) {
    if (const FileStatus gone = files_.discard(recoveryPath()); !gone)
      return saveFailed(recoveryPath(), gone);
    ownsRecovery_ = false;
  }
  const auto write = [&](const std::wstring& path, const std::string& bytes) {
    const FileStatus status = files_.writeUnflushed(path, bytes);
    return status ? SaveResult{} : saveFailed(path, status);
  };
  if (SaveResult result = write(mainPath(state.recovery), state.mainFile); !result) return result;
  ownMainFile(state.recovery);
  ownContainerFiles_ = std::max(ownContainerFiles_, state.containers.size());
  for (std::size_t i = 0; i < state.containers.size(); ++i)
    if (SaveResult result = write(containerPath(i), state.containers[i]); !result) return result;
  for (const FileInfo& info : inContainersFolder()) {
    const std::wstring path = folder + L"\\" + info.name;
    if (info.isFolder || isNumbered(info.name, state.containers.size())) continue;
    if (const FileStatus gone = files_.discard(path); !gone) return saveFailed(path, gone);
  }
  ownContainerFiles_ = state.containers.size();
  return {};
}

std::vector<std::wstring> StateFiles::pathsOf(const SavedState& state) const {
  std::vector<std::wstring> paths{mainPath(state.recovery)};
  for (std::size_t i = 0; i < state.containers.size(); ++i) paths.push_back(containerPath(i));
  return paths;
}

}  // namespace varnowick
