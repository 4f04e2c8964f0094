#include "tests/e2e/harness/program_folder.h"

#include <shlobj.h>
#include <windows.h>

#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/win32/handles.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace fs = std::filesystem;
namespace {

std::wstring ownFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring environment(const wchar_t* name) {
  std::wstring value(32768, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

// Where the program to be tested lies: the build puts it in dist beside bin.
std::wstring sourceFolder() {
  const std::wstring named = environment(L"VARNOWICK_EXE_DIR");
  return named.empty() ? ownFolder() + L"\\..\\dist" : named;
}

std::wstring temporaryFolder() {
  wchar_t path[MAX_PATH + 1] = {};
  const DWORD length = GetTempPathW(MAX_PATH, path);
  if (length == 0) failWithLastError(L"GetTempPath");
  return std::wstring(path, length);
}

std::wstring freshFolder() {
  static int count = 0;
  // The blank belongs to the test: a path that is not quoted breaks at it.
  const std::wstring path = temporaryFolder() + L"Varnowick e2e " +
                            std::to_wstring(GetCurrentProcessId()) + L"-" +
                            std::to_wstring(++count);
  fs::remove_all(path);
  fs::create_directories(path);
  return path;
}

// A program that has just been killed may be held open for a moment longer, by
// the system or by a virus scanner.
void removeAll(const std::wstring& path) {
  std::error_code error;
  waitFor([&] { return fs::remove_all(path, error), !error; }, 5000);
}

void addFiles(DataFiles& into, const fs::path& folder, const std::wstring& prefix,
              const std::wstring& extension) {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::wstring name = entry.path().filename().wstring();
    const bool wanted =
        extension.empty() || lstrcmpiW(entry.path().extension().c_str(), extension.c_str()) == 0;
    if (wanted && entry.is_regular_file()) into[prefix + name] = readFile(entry.path().wstring());
  }
}

}  // namespace

std::string readFile(const std::wstring& path) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
  if (!file) failWithLastError(L"reading " + path);
  std::string bytes;
  for (;;) {
    char buffer[65536];
    DWORD got = 0;
    if (!ReadFile(file.get(), buffer, sizeof buffer, &got, nullptr)) {
      failWithLastError(L"reading " + path);
    }
    if (got == 0) return bytes;
    bytes.append(buffer, got);
  }
}

void writeFile(const std::wstring& path, const std::string& bytes) {
  const FileHandle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  DWORD written = 0;
  if (!file ||
      !WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
    failWithLastError(L"writing " + path);
  }
}

bool fileExists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

ProgramFolder::ProgramFolder(DataPlace place) : root_(freshFolder()), place_(place) {
  path_ = root_ + L"\\Program";
  if (!fileExists(sourceFolder() + L"\\Varnowick.exe")) {
    throw HarnessError(L"no Varnowick.exe in " + sourceFolder() + L" (set VARNOWICK_EXE_DIR)");
  }
  fs::copy(sourceFolder(), path_, fs::copy_options::recursive);
  if (place == DataPlace::BesideProgram) {
    data_ = path_;
    writeFile(path_ + L"\\LOCATIONROOT", "");
    return;
  }
  if (appDataTaken()) throw HarnessError(L"the user has a data folder already");
  data_ = appDataFolder();
}

ProgramFolder::~ProgramFolder() {
  if (place_ == DataPlace::AppData) removeAll(data_);
  removeAll(root_);
}

std::wstring ProgramFolder::appDataFolder() {
  wchar_t path[MAX_PATH] = {};
  SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, 0, path);
  return std::wstring(path) + L"\\Varnowick";
}

bool ProgramFolder::appDataTaken() { return fileExists(appDataFolder()); }

void ProgramFolder::write(const std::wstring& name, const std::string& bytes) const {
  fs::create_directories(fs::path(file(name)).parent_path());
  writeFile(file(name), bytes);
}

std::string ProgramFolder::read(const std::wstring& name) const { return readFile(file(name)); }
bool ProgramFolder::exists(const std::wstring& name) const { return fileExists(file(name)); }
void ProgramFolder::remove(const std::wstring& name) const { fs::remove_all(file(name)); }

void ProgramFolder::writeAll(const DataFiles& files) const {
  for (const auto& [name, bytes] : files) write(name, bytes);
}

DataFiles ProgramFolder::state() const {
  DataFiles files;
  addFiles(files, data_, L"", L".ini");
  addFiles(files, data_, L"", L".REC");
  addFiles(files, data_ + L"\\Containers", L"Containers\\", L".con");
  return files;
}

DataFiles ProgramFolder::backups() const {
  DataFiles files;
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(data_ + L"\\Backup", error)) {
    if (!entry.is_regular_file()) continue;
    files[entry.path().filename().wstring()] = readFile(entry.path().wstring());
  }
  return files;
}

std::wstring ProgramFolder::addLaunchProbe() {
  const std::wstring folder = root_ + L"\\Target " + std::to_wstring(++probes_);
  fs::create_directories(folder);
  const std::wstring probe = folder + L"\\launch_probe.exe";
  if (!CopyFileW((ownFolder() + L"\\launch_probe.exe").c_str(), probe.c_str(), FALSE)) {
    failWithLastError(L"copying launch_probe.exe, which lies beside the tests");
  }
  return probe;
}

namespace {
std::wstring reportOf(const std::wstring& probe) {
  return probe.substr(0, probe.find_last_of(L'\\')) + L"\\launches.txt";
}
}  // namespace

bool launched(const std::wstring& probe) { return fileExists(reportOf(probe)); }

Launch waitForLaunch(const std::wstring& probe) {
  std::vector<std::wstring> lines;
  require(L"the start of " + probe, [&] {
    if (!launched(probe)) return false;
    std::wstring text = fromUtf8(readFile(reportOf(probe)));
    lines.clear();
    for (std::size_t end; (end = text.find(L'\n')) != std::wstring::npos;) {
      lines.push_back(text.substr(0, end));
      text.erase(0, end + 1);
    }
    return lines.size() >= 4 && lines.back() == L"end";
  });
  const std::size_t last = lines.size() - 4;
  return {lines[last], lines[last + 1], lines[last + 2]};
}

}  // namespace varnowick::e2e
