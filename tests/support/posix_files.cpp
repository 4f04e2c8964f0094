#include "tests/support/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace varnowick {
namespace {

std::string nativePath(const std::wstring& path) {
  std::string native;
  for (const wchar_t c : path) native.push_back(c == L'\\' ? '/' : static_cast<char>(c));
  return native;
}

FileStatus lastError() {
  const int error = errno;
  const char* const text = std::strerror(error);
  FileStatus status{FileStatus::Kind::Other, {text, text + std::strlen(text)}};
  if (error == ENOENT || error == ENOTDIR) status.kind = FileStatus::Kind::NotFound;
  if (error == EACCES || error == EPERM) status.kind = FileStatus::Kind::Denied;
  if (error == ENOSPC) status.kind = FileStatus::Kind::DiskFull;
  return status;
}

// Closes the file when it goes out of scope.
struct Descriptor {
  int value;
  explicit Descriptor(int v) : value(v) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (value >= 0) ::close(value);
  }
};

}  // namespace

bool PosixFiles::exists(const std::wstring& path) {
  struct stat info {};
  return ::stat(nativePath(path).c_str(), &info) == 0;
}

FileBytes PosixFiles::read(const std::wstring& path) {
  const Descriptor file(::open(nativePath(path).c_str(), O_RDONLY | O_CLOEXEC));
  struct stat info {};
  if (file.value < 0 || ::fstat(file.value, &info) != 0) return {lastError(), {}};
  FileBytes result;
  result.bytes.resize(static_cast<std::size_t>(info.st_size));
  std::size_t done = 0;
  while (done < result.bytes.size()) {
    const ssize_t n = ::read(file.value, result.bytes.data() + done, result.bytes.size() - done);
    if (n < 0) return {lastError(), {}};
    if (n == 0) break;
    done += static_cast<std::size_t>(n);
  }
  result.bytes.resize(done);
  return result;
}

FileStatus PosixFiles::write(const std::wstring& path, std::string_view bytes) {
  if (FileStatus status = writeUnflushed(path, bytes); !status) return status;
  return flush(path);
}

FileStatus PosixFiles::flush(const std::wstring& path) {
  if (!flush_) return {};
  const Descriptor file(::open(nativePath(path).c_str(), O_WRONLY | O_CLOEXEC));
  return file.value < 0 || ::fsync(file.value) != 0 ? lastError() : FileStatus{};
}

FileStatus PosixFiles::writeUnflushed(const std::wstring& path, std::string_view bytes) {
  const Descriptor file(
      ::open(nativePath(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (file.value < 0) return lastError();
  while (!bytes.empty()) {
    const ssize_t n = ::write(file.value, bytes.data(), bytes.size());
    if (n < 0) return lastError();
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return {};
}

FileStatus PosixFiles::remove(const std::wstring& path) {
  if (::unlink(nativePath(path).c_str()) == 0 || errno == ENOENT) return {};
  return lastError();
}

FileStatus PosixFiles::rename(const std::wstring& from, const std::wstring& to) {
  if (::rename(nativePath(from).c_str(), nativePath(to).c_str()) == 0) return {};
  return lastError();
}

FileStatus PosixFiles::createFolder(const std::wstring& path) {
  std::error_code error;
  std::filesystem::create_directories(nativePath(path), error);
  if (!error) return {};
  const std::string text = error.message();
  return {FileStatus::Kind::Other, {text.begin(), text.end()}};
}

std::vector<FileInfo> PosixFiles::list(const std::wstring& folder, std::wstring_view extension) {
  std::vector<FileInfo> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(nativePath(folder), error)) {
    const std::wstring name = entry.path().filename().wstring();
    if (!name.ends_with(extension)) continue;
    const bool isFolder = entry.is_directory(error);
    found.push_back({name, isFolder, isFolder ? 0 : entry.file_size(error), 0});
  }
  return found;
}

}  // namespace varnowick
