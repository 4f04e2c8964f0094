// The reference workspace, byte for byte: every kind of record, and hardly a value at
// its default. It stands as text, and is not built from the rows that other tests use,
// so that neither can hide a fault of the other.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace varnowick {

struct GoldenSetting {
  const char* key;
  // In the settings file of tests that do not care; null where the key is not in it.
  const char* usual;
  const char* golden;
};
// In the order of the file.
std::span<const GoldenSetting> goldenSettings();

// As the program writes it: settings, picture and shortcuts on the panel.
std::string goldenSettingsFile();
// A detached container with everything in it, a folded feed, and a shrunk folder.
std::vector<std::string> goldenContainerFiles();

}  // namespace varnowick
