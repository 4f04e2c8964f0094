// What the system underneath says of a process, where the programs run on Linux:
// Wine gives no private memory, and processor time only in steps of 10 ms. On
// Windows there is nothing to find, and the caller asks Windows.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {

class HostProcess {
 public:
  // Finds the process of this Wine prefix that was started with that path.
  static std::optional<HostProcess> find(const std::wstring& exe) {
    const std::string own = prefixOf(read(kProc + L"\\self\\environ"));
    if (own.empty()) return std::nullopt;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(kProc, error)) {
      const std::wstring name = entry.path().filename().wstring();
      if (name.find_first_not_of(L"0123456789") != std::wstring::npos) continue;
      const std::wstring folder = kProc + L"\\" + name;
      if (read(folder + L"\\cmdline").find(toUtf8(exe)) == std::string::npos) continue;
      if (prefixOf(read(folder + L"\\environ")) == own) return HostProcess(folder);
    }
    return std::nullopt;
  }

  // Memory that the process has written to and shares with nobody, in bytes.
  double privateBytes() const {
    const std::string rollup = read(folder_ + L"\\smaps_rollup");
    double sum = 0;
    for (const char* key : {"Private_Dirty:", "Swap:"}) {
      const std::size_t at = rollup.find(key);
      if (at == std::string::npos) continue;
      sum += std::strtod(rollup.c_str() + at + std::char_traits<char>::length(key), nullptr);
    }
    return sum * 1024;
  }

  // The processor time of all its threads that are alive, in ms.
  double processorTime() const {
    double sum = 0;
    std::error_code error;
    for (const auto& task : std::filesystem::directory_iterator(folder_ + L"\\task", error)) {
      sum += std::strtod(read(task.path().wstring() + L"\\schedstat").c_str(), nullptr);
    }
    return sum / 1e6;
  }

 private:
  explicit HostProcess(std::wstring folder) : folder_(std::move(folder)) {}

  static std::string read(const std::wstring& path) {
    try {
      return readFile(path);
    } catch (const HarnessError&) {
      return {};  // ended meanwhile
    }
  }
  static std::string prefixOf(const std::string& environment) {
    constexpr const char* kName = "WINEPREFIX=";
    const std::size_t at = environment.find(kName);
    return at == std::string::npos ? std::string() : std::string(environment.c_str() + at);
  }

  static inline const std::wstring kProc = L"Z:\\proc";
  std::wstring folder_;
};

}  // namespace varnowick::e2e
