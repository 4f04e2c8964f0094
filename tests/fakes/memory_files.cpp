#include "tests/fakes/memory_files.h"

#include <algorithm>
#include <utility>

namespace varnowick {
namespace {

std::wstring lower(std::wstring text) {
  for (wchar_t& c : text)
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  return text;
}

// Names that differ only by case are the same file.
using Contents = std::map<std::wstring, std::string>;
Contents::iterator findIn(Contents& map, const std::wstring& path) {
  auto it = map.find(path);
  if (it != map.end()) return it;
  const std::wstring wanted = lower(path);
  for (it = map.begin(); it != map.end(); ++it)
    if (lower(it->first) == wanted) break;
  return it;
}

FileStatus notFound() { return {FileStatus::Kind::NotFound, L"File not found."}; }
FileStatus denied() { return {FileStatus::Kind::Denied, L"Access is denied."}; }

}  // namespace

FileStatus MemoryFiles::begin(Operation operation, const std::wstring& path, const wchar_t* verb) {
  if (operationsUntilCut == 0) throw PowerCut{};
  if (operationsUntilCut > 0) --operationsUntilCut;
  log.push_back(std::wstring(verb) + L" " + path);
  return failure ? failure(operation, path) : FileStatus{};
}

FileStatus MemoryFiles::access(const std::wstring& path) const {
  const auto it = open_.find(path);
  return deletePending_.contains(path) || (it != open_.end() && !it->second) ? denied()
                                                                             : FileStatus{};
}

void MemoryFiles::closeElsewhere() {
  open_.clear();
  deletePending_.clear();
}

void MemoryFiles::losePower(Loss loss) {
  int count = 0;
  for (const auto& [path, onDisk] : unflushed_) {
    const bool lost = loss == Loss::All || (loss == Loss::EverySecond && ++count % 2 == 0);
    std::string& file = contents[path];
    if (lost) file = onDisk;
    // As long as it should be, with nothing in a part of it.
    if (loss == Loss::Halves) std::fill(file.begin() + file.size() / 2, file.end(), '\0');
  }
  unflushed_.clear();
  closeElsewhere();
  operationsUntilCut = -1;
}

bool MemoryFiles::exists(const std::wstring& path) {
  return findIn(contents, path) != contents.end() || folders.count(path) != 0;
}

FileBytes MemoryFiles::read(const std::wstring& path) {
  if (const FileStatus open = access(path); !open) return {open, {}};
  const auto it = findIn(contents, path);
  if (it == contents.end()) return {notFound(), {}};
  if (unreadable.count(it->first) != 0) return {denied(), {}};
  return {{}, it->second};
}

FileStatus MemoryFiles::write(const std::wstring& path, std::string_view bytes) {
  if (FileStatus status = writeUnflushed(path, bytes); !status) return status;
  ++flushes;
  unflushed_.erase(findIn(contents, path)->first);
  return {};
}

FileStatus MemoryFiles::writeUnflushed(const std::wstring& path, std::string_view bytes) {
  const bool lastBeforeCut = operationsUntilCut == 1;
  if (FileStatus status = begin(Operation::Write, path, L"write"); !status) return status;
  if (FileStatus open = access(path); !open) return open;
  const auto it = findIn(contents, path);
  std::string& file = it == contents.end() ? contents[path] : it->second;
  unflushed_.try_emplace(it == contents.end() ? path : it->first, file);
  // Half of a write may be all that reaches the disk.
  file = lastBeforeCut ? bytes.substr(0, bytes.size() / 2) : bytes;
  if (lastBeforeCut) throw PowerCut{};
  return {};
}

FileStatus MemoryFiles::flush(const std::wstring& path) {
  if (FileStatus status = begin(Operation::Flush, path, L"flush"); !status) return status;
  if (FileStatus open = access(path); !open) return open;
  const auto it = findIn(contents, path);
  if (it == contents.end()) return notFound();
  ++flushes;
  unflushed_.erase(it->first);
  return {};
}

FileStatus MemoryFiles::remove(const std::wstring& path) {
  const auto it = findIn(contents, path);
  if (it == contents.end()) return {};
  if (FileStatus status = begin(Operation::Remove, path, L"remove"); !status) return status;
  if (FileStatus open = access(it->first); !open) return open;
  if (open_.contains(it->first)) deletePending_.insert(it->first);
  unflushed_.erase(it->first);
  contents.erase(it);
  return {};
}

FileStatus MemoryFiles::rename(const std::wstring& from, const std::wstring& to) {
  const auto it = findIn(contents, from);
  if (it == contents.end()) return notFound();
  if (FileStatus status = begin(Operation::Rename, from, L"rename"); !status) return status;
  if (FileStatus open = access(it->first); !open) return open;
  if (open_.contains(to) || deletePending_.contains(to)) return denied();
  if (const auto old = findIn(contents, to); old != contents.end()) {
    unflushed_.erase(old->first);
    contents.erase(old);
  }
  // Whoever has it open, and what of it is on the disk, go with the file.
  const auto move = [&](auto& map) {
    if (auto node = map.extract(it->first)) {
      node.key() = to;
      map.insert(std::move(node));
    }
  };
  move(unflushed_);
  move(open_);
  contents[to] = std::move(it->second);
  contents.erase(it);
  return {};
}

FileStatus MemoryFiles::createFolder(const std::wstring& path) {
  if (folders.count(path) != 0) return {};
  if (FileStatus status = begin(Operation::CreateFolder, path, L"create"); !status) return status;
  folders.insert(path);
  return {};
}

std::vector<FileInfo> MemoryFiles::list(const std::wstring& folder, std::wstring_view extension) {
  std::vector<FileInfo> found;
  const std::wstring prefix = lower(folder) + L"\\";
  for (const auto& [path, bytes] : contents) {
    const std::wstring name = lower(path);
    if (name.starts_with(prefix) && name.find(L'\\', prefix.size()) == std::wstring::npos &&
        name.ends_with(lower(std::wstring(extension))))
      found.push_back({path.substr(prefix.size()), false, bytes.size(), 0});
  }
  return found;
}

}  // namespace varnowick
