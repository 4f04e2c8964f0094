#include "tests/fakes/memory_files.h"

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

}  // namespace

FileStatus MemoryFiles::begin(Operation operation, const std::wstring& path, const wchar_t* verb) {
  if (operationsUntilCut == 0) throw PowerCut{};
  if (operationsUntilCut > 0) --operationsUntilCut;
  log.push_back(std::wstring(verb) + L" " + path);
  return failure ? failure(operation, path) : FileStatus{};
}

bool MemoryFiles::exists(const std::wstring& path) {
  return findIn(contents, path) != contents.end() || folders.count(path) != 0;
}

FileBytes MemoryFiles::read(const std::wstring& path) {
  const auto it = findIn(contents, path);
  if (it == contents.end()) return {notFound(), {}};
  if (unreadable.count(it->first) != 0)
    return {{FileStatus::Kind::Denied, L"Access is denied."}, {}};
  return {{}, it->second};
}

FileStatus MemoryFiles::write(const std::wstring& path, std::string_view bytes) {
  const bool lastBeforeCut = operationsUntilCut == 1;
  if (FileStatus status = begin(Operation::Write, path, L"write"); !status) return status;
  const auto it = findIn(contents, path);
  std::string& file = it == contents.end() ? contents[path] : it->second;
  // Half of a write may be all that reaches the disk.
  file = lastBeforeCut ? bytes.substr(0, bytes.size() / 2) : bytes;
  if (lastBeforeCut) throw PowerCut{};
  return {};
}

FileStatus MemoryFiles::remove(const std::wstring& path) {
  if (findIn(contents, path) == contents.end()) return {};
  if (FileStatus status = begin(Operation::Remove, path, L"remove"); !status) return status;
  contents.erase(findIn(contents, path));
  return {};
}

FileStatus MemoryFiles::rename(const std::wstring& from, const std::wstring& to) {
  if (FileStatus status = begin(Operation::Rename, from, L"rename"); !status) return status;
  const auto it = findIn(contents, from);
  if (it == contents.end()) return notFound();
  std::string bytes = std::move(it->second);
  contents.erase(it);
  if (const auto old = findIn(contents, to); old != contents.end()) contents.erase(old);
  contents[to] = std::move(bytes);
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
