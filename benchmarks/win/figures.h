// What the whole-process benchmarks have in common: the clock, the median, a row of
// the table, and the workspace far beyond everyday use.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/e2e/harness/data_files.h"

namespace varnowick::e2e {

inline constexpr double kFrame = 1000.0 / 60;  // ms: a screen's usual frame

inline double now() {  // ms
  LARGE_INTEGER count{};
  LARGE_INTEGER frequency{};
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

inline double quickest(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

inline void row(const std::string& name, double measured, const char* limitName, double limit,
                bool aim) {
  std::printf("%s | %.2f ms | %.1f ms %s | %.2f | %s | %s\n", name.c_str(), measured, limit,
              limitName, measured / limit, aim ? "under 1" : "-",
              !aim               ? "-"
              : measured < limit ? "yes"
                                 : "NO");
  std::fflush(stdout);
}

// 40 containers of 250 shortcuts, with this bar above them.
inline DataFiles largeWorkspace(SettingsFile settings) {
  DataFiles files;
  files[L"Varnowick.ini"] = settings.bytes();
  for (int c = 0; c < 40; ++c) {
    ContainerRow container;
    container.name = L"Container " + std::to_wstring(c);
    container.y = 120 + c * 880;
    container.width = 4200;
    container.height = 850;
    for (int s = 0; s < 250; ++s)
      container.shortcuts.push_back({.caption = L"Shortcut " + std::to_wstring(c * 250 + s),
                                     .path = L"C:\\windows\\notepad.exe",
                                     .x = 60 + s % 5 * 820,
                                     .y = 400 + s / 5 * 500});
    files[L"Containers\\" + std::to_wstring(c) + L".con"] = containerFile(container);
  }
  return files;
}

}  // namespace varnowick::e2e
