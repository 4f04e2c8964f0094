// Data files as the tests write them: a settings file and container files in the
// program's own form, from rows that a test changes where it cares. Builds bytes
// and knows nothing of the program's code, so that it can tell it wrong.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/harness/program_folder.h"

namespace varnowick::e2e {

// A number as the files write it: a blank where a plus sign would stand.
std::string number(int value);
// Text in the system's ANSI code page, which has to hold it.
std::string ansi(const std::wstring& text);

struct ShortcutRow {
  // Every member has an initial value, so that rows name only what they need.
  std::wstring caption{};
  std::wstring path{};
  std::wstring parameters{};
  int x = 300;
  int y = 300;  // twips on its panel
  bool confirm = false;
  bool command = false;
  bool web = false;
};

struct ContainerRow {
  std::wstring name{};
  int x = 120;
  int y = 120;
  int width = 2600;
  int height = 2600;   // twips
  std::string note{};  // lines ended by CR LF
  std::vector<ShortcutRow> shortcuts{};
  bool folded = false;
  bool shrunk = false;
  std::wstring folder{};   // of a folder container
  std::string detached{};  // the lines of the detached block, ended by CR LF
};

class SettingsFile {
 public:
  // What the program writes for a workspace of these tests: a bar 3000 twips
  // wide at the left edge, collapsed, without animation, global hotkey, tray
  // icon and floating toolbar.
  SettingsFile();
  SettingsFile& set(const std::string& key, const std::string& value);
  SettingsFile& window(int x, int y, int width, int height);
  SettingsFile& add(const ShortcutRow& shortcut);
  std::string bytes() const;

 private:
  std::vector<std::pair<std::string, std::string>> rows_;
  std::string records_;
};

std::string containerFile(const ContainerRow& container);

// The lines of the shortcut of that caption in a file that the program has
// written, by key: "[LinkPath]" and so on. Empty when there is none.
std::map<std::string, std::string> savedShortcut(const std::string& file,
                                                 const std::string& caption);
// The value line below the first such key line; empty when there is none.
std::string savedValue(const std::string& file, const std::string& key);
std::size_t countSavedShortcuts(const std::string& file);

// The left edge of the collapsed bar, in twips.
inline constexpr int kBarWidth = 3000;
inline constexpr int kBarTop = 1500;
inline constexpr int kBarHeight = 9000;
inline constexpr int kCollapsedLeft = -kBarWidth + 40;
inline constexpr int kExpandedLeft = -200;

}  // namespace varnowick::e2e
