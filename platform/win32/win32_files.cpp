#include "platform/win32/win32_files.h"

#include <windows.h>

#include <algorithm>
#include <new>

#include "platform/win32/handles.h"
#include "platform/win32/win32_error.h"

namespace varnowick {

namespace {

constexpr std::uint64_t kMaxReadBytes = 256ULL << 20;
constexpr DWORD kChunkBytes = 1U << 20;
// ERROR_DISK_QUOTA_EXCEEDED, which older headers lack.
constexpr DWORD kErrorDiskQuotaExceeded = 1295;
// Folders must leave room for a short file name, hence the lower of both limits.
constexpr std::size_t kClassicPathLimit = 247;

FileStatus lastError() { return fileStatusOf(GetLastError()); }

bool endsWithIgnoringCase(std::wstring name, std::wstring_view extension) {
  if (name.size() < extension.size()) return false;
  std::wstring ending(extension);
  name.erase(0, name.size() - ending.size());
  CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
  CharLowerBuffW(ending.data(), static_cast<DWORD>(ending.size()));
  return name == ending;
}

FileStatus writeAll(HANDLE file, std::string_view bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const DWORD wanted =
        static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, kChunkBytes));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data() + done, wanted, &written, nullptr)) return lastError();
    if (written == 0) return fileStatusOf(ERROR_DISK_FULL);
    done += written;
  }
  return {};
}

// Setting the new length first makes a full disk show before any old byte is
// overwritten.
FileStatus setLength(HANDLE file, std::size_t length) {
  const auto wide = static_cast<std::uint64_t>(length);
  LONG high = static_cast<LONG>(wide >> 32);
  const DWORD low = SetFilePointer(file, static_cast<LONG>(wide & 0xFFFFFFFFU), &high, FILE_BEGIN);
  if (low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR) return lastError();
  if (!SetEndOfFile(file)) return lastError();
  high = 0;
  SetFilePointer(file, 0, &high, FILE_BEGIN);
  return {};
}

}  // namespace

bool hasFolderAttribute(unsigned long attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FileStatus fileStatusOf(unsigned long code) {
  using Kind = FileStatus::Kind;
  switch (code) {
    case ERROR_SUCCESS:
      return {};
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
      return {Kind::NotFound, systemErrorText(code)};
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
      return {Kind::Denied, systemErrorText(code)};
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kErrorDiskQuotaExceeded:
      return {Kind::DiskFull, systemErrorText(code)};
    default:
      return {Kind::Other, systemErrorText(code)};
  }
}

std::wstring pathForSystem(const std::wstring& path) {
  if (path.size() < kClassicPathLimit || path.compare(0, 4, L"\\\\?\\") == 0) return path;
  // The long form takes names literally, so that slashes and dots are settled first.
  const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  if (needed == 0) return path;
  std::wstring full(needed, L'\0');
  const DWORD length = GetFullPathNameW(path.c_str(), needed, full.data(), nullptr);
  if (length == 0 || length >= needed) return path;
  full.resize(length);
  if (full.compare(0, 2, L"\\\\") == 0) return L"\\\\?\\UNC\\" + full.substr(2);
  return L"\\\\?\\" + full;
}

bool Win32Files::exists(const std::wstring& path) {
  return !path.empty() &&
         GetFileAttributesW(pathForSystem(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

FileBytes Win32Files::read(const std::wstring& path) {
  const FileHandle file(CreateFileW(pathForSystem(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file) return {lastError(), {}};
  DWORD high = 0;
  const DWORD low = GetFileSize(file.get(), &high);
  if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR) return {lastError(), {}};
  const std::uint64_t size = (static_cast<std::uint64_t>(high) << 32) | low;
  if (size > kMaxReadBytes) return {fileStatusOf(ERROR_FILE_TOO_LARGE), {}};

  FileBytes result;
  try {
    result.bytes.resize(static_cast<std::size_t>(size));
  } catch (const std::bad_alloc&) {
    return {fileStatusOf(ERROR_NOT_ENOUGH_MEMORY), {}};
  }
  std::size_t done = 0;
  while (done < result.bytes.size()) {
    const DWORD wanted =
        static_cast<DWORD>(std::min<std::size_t>(result.bytes.size() - done, kChunkBytes));
    DWORD got = 0;
    if (!ReadFile(file.get(), result.bytes.data() + done, wanted, &got, nullptr)) {
      return {lastError(), {}};
    }
    if (got == 0) break;  // it was shortened meanwhile
    done += got;
  }
  result.bytes.resize(done);
  return result;
}

namespace {

// Opening instead of creating anew keeps a file's attributes: a hidden file could not
// be created over. Sharing everything lets it be flushed meanwhile.
FileHandle openForWriting(const std::wstring& path, DWORD creation) {
  return FileHandle(CreateFileW(pathForSystem(path).c_str(), GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

FileStatus fill(HANDLE file, std::string_view bytes) {
  if (FileStatus status = setLength(file, bytes.size()); !status) return status;
  return writeAll(file, bytes);
}

}  // namespace

FileStatus Win32Files::write(const std::wstring& path, std::string_view bytes) {
  const FileHandle file = openForWriting(path, OPEN_ALWAYS);
  if (!file) return lastError();
  if (FileStatus status = fill(file.get(), bytes); !status) return status;
  return FlushFileBuffers(file.get()) ? FileStatus{} : lastError();
}

FileStatus Win32Files::writeUnflushed(const std::wstring& path, std::string_view bytes) {
  const FileHandle file = openForWriting(path, OPEN_ALWAYS);
  return file ? fill(file.get(), bytes) : lastError();
}

FileStatus Win32Files::flush(const std::wstring& path) {
  const FileHandle file = openForWriting(path, OPEN_EXISTING);
  return file && FlushFileBuffers(file.get()) ? FileStatus{} : lastError();
}

FileStatus Win32Files::remove(const std::wstring& path) {
  const std::wstring name = pathForSystem(path);
  const bool done = hasFolderAttribute(GetFileAttributesW(name.c_str()))
                        ? RemoveDirectoryW(name.c_str()) != 0
                        : DeleteFileW(name.c_str()) != 0;
  if (done) return {};
  FileStatus status = lastError();
  return status.kind == FileStatus::Kind::NotFound ? FileStatus{} : status;
}

FileStatus Win32Files::rename(const std::wstring& from, const std::wstring& to) {
  // Without waiting for the disk: it keeps the order of such changes by itself.
  return MoveFileExW(pathForSystem(from).c_str(), pathForSystem(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING)
             ? FileStatus{}
             : lastError();
}

FileStatus Win32Files::createFolder(const std::wstring& path) {
  const std::wstring name = pathForSystem(path);
  if (CreateDirectoryW(name.c_str(), nullptr)) return {};
  const DWORD code = GetLastError();
  if (hasFolderAttribute(GetFileAttributesW(name.c_str()))) return {};
  if (code != ERROR_PATH_NOT_FOUND || path.size() < 2) return fileStatusOf(code);
  const std::size_t slash = path.find_last_of(L"\\/", path.size() - 2);
  if (slash == std::wstring::npos || slash < 3) return fileStatusOf(code);
  if (FileStatus status = createFolder(path.substr(0, slash)); !status) return status;
  return CreateDirectoryW(name.c_str(), nullptr) ||
                 hasFolderAttribute(GetFileAttributesW(name.c_str()))
             ? FileStatus{}
             : lastError();
}

std::vector<FileInfo> Win32Files::list(const std::wstring& folder, std::wstring_view extension) {
  std::vector<FileInfo> entries;
  if (folder.empty()) return entries;
  const std::wstring slash = folder.back() == L'\\' ? L"" : L"\\";
  WIN32_FIND_DATAW data{};
  // The pattern takes everything: a pattern with an extension of three letters
  // would also match longer ones through short names.
  const FindHandle search(FindFirstFileW(pathForSystem(folder + slash + L"*").c_str(), &data));
  if (!search) return entries;
  do {
    const std::wstring name = data.cFileName;
    if (name == L"." || name == L".." || !endsWithIgnoringCase(name, extension)) continue;
    FileInfo info;
    info.name = name;
    info.isFolder = hasFolderAttribute(data.dwFileAttributes);
    info.size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    info.modifiedTime = (static_cast<std::uint64_t>(data.ftLastWriteTime.dwHighDateTime) << 32) |
                        data.ftLastWriteTime.dwLowDateTime;
    entries.push_back(std::move(info));
  } while (FindNextFileW(search.get(), &data));
  return entries;
}

}  // namespace varnowick
