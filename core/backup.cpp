#include "core/backup.h"

#include <utility>

namespace varnowick {
namespace {

constexpr int kMostCopies = 9999;

std::wstring numbered(const std::wstring& name, int number) {
  if (number == 1) return name;
  const std::size_t dot = name.rfind(L'.');
  const std::wstring stem = name.substr(0, dot);
  const std::wstring extension = dot == std::wstring::npos ? std::wstring() : name.substr(dot);
  return stem + L" (" + std::to_wstring(number) + L")" + extension;
}

class BackingUp {
 public:
  BackingUp(Files& files, std::wstring folder) : files_(files), folder_(std::move(folder)) {}

  // Empty name when there is a copy already or nothing to copy.
  FileStatus keep(const std::wstring& path, std::wstring& newName, std::wstring& failed) {
    const FileBytes source = files_.read(path);
    if (source.status.kind == FileStatus::Kind::NotFound) return {};
    failed = folder_;
    if (FileStatus made = files_.createFolder(folder_); !made) return made;
    const std::wstring name = path.substr(path.rfind(L'\\') + 1);
    for (int number = 1; number <= kMostCopies; ++number) {
      const std::wstring candidate = numbered(name, number);
      const std::wstring target = folder_ + L"\\" + candidate;
      const FileBytes present = files_.read(target);
      if (present.status && source.status && present.bytes == source.bytes) return {};
      if (present.status.kind != FileStatus::Kind::NotFound) continue;
      newName = candidate;
      failed = source.status ? target : path;
      return source.status ? files_.write(target, source.bytes) : files_.rename(path, target);
    }
    return {FileStatus::Kind::Other, L"There are too many copies of " + name + L" already."};
  }

 private:
  Files& files_;
  std::wstring folder_;
};

}  // namespace

std::wstring backupFolder(const std::wstring& dataFolder) { return dataFolder + L"\\Backup"; }

BackupResult backUpFiles(Files& files, const std::wstring& dataFolder,
                         const std::vector<std::wstring>& paths) {
  BackingUp backup(files, backupFolder(dataFolder));
  BackupResult result;
  for (const std::wstring& path : paths) {
    std::wstring newName;
    result.status = backup.keep(path, newName, result.failedFile);
    if (!result.status) return result;
    if (!newName.empty()) result.written.push_back(std::move(newName));
  }
  return result;
}

}  // namespace varnowick
