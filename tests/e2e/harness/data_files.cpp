#include "tests/e2e/harness/data_files.h"

#include <windows.h>

#include <algorithm>
#include <sstream>

#include "tests/e2e/harness/waiting.h"
#include "tests/support/golden_files.h"

namespace varnowick::e2e {
namespace {

constexpr const char* kEnd = "\r\n";

std::string line(const std::string& text) { return text + kEnd; }

std::string shortcutRecord(const ShortcutRow& s, bool inContainer) {
  const std::string command =
      inContainer ? (s.command ? "True" : "False") : (s.command ? "1" : "0");
  const std::pair<const char*, std::string> rows[] = {
      {"[Size]", number(10)},
      {"[LinkX]", number(s.x)},
      {"[LinkY]", number(s.y)},
      {"[LinkLabel]", ansi(s.caption)},
      {"[LinkType]", number(s.command ? 3
                            : s.web   ? 1
                                      : 2)},
      {"[LinkPath]", ansi(s.path)},
      {"[LinkParam]", ansi(s.parameters)},
      {"[Color]", "-1"},
      {"[Bold]", "0"},
      {"[Confirm]", s.confirm ? "1" : "0"},
      {"[Command]", command},
      {"[Icon]", ""},
      {"[GROUP]", ""},
      {"[EXCLUSIVE]", "0"},
      {"[TAGSTART]", "0"},
  };
  std::string record = line("[Link]");
  for (const auto& [key, value] : rows) record += line(key) + line(value);
  return record;
}

}  // namespace

std::string number(int value) { return (value < 0 ? "" : " ") + std::to_string(value); }

std::string ansi(const std::wstring& text) {
  BOOL lost = FALSE;
  std::string bytes(text.size() * 2 + 1, '\0');
  const int used =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.c_str(), static_cast<int>(text.size()),
                          bytes.data(), static_cast<int>(bytes.size()), nullptr, &lost);
  if (lost) throw HarnessError(L"the code page of this system cannot hold: " + text);
  bytes.resize(static_cast<std::size_t>(used));
  return bytes;
}

SettingsFile::SettingsFile() {
  for (const GoldenSetting& row : goldenSettings())
    if (row.usual != nullptr) rows_.emplace_back(row.key, row.usual);
}

SettingsFile& SettingsFile::set(const std::string& key, const std::string& value) {
  const auto row =
      std::find_if(rows_.begin(), rows_.end(), [&](const auto& r) { return r.first == key; });
  if (row == rows_.end()) {
    rows_.emplace_back(key, value);
  } else {
    row->second = value;
  }
  return *this;
}

SettingsFile& SettingsFile::window(int x, int y, int width, int height) {
  return set("[X]", number(x))
      .set("[Y]", number(y))
      .set("[W]", number(width))
      .set("[H]", number(height));
}

SettingsFile& SettingsFile::add(const ShortcutRow& shortcut) {
  records_ += shortcutRecord(shortcut, false);
  return *this;
}

std::string SettingsFile::bytes() const {
  std::string all = line("106");
  for (const auto& [key, value] : rows_) all += line(key) + line(value);
  return all + records_;
}

std::string containerFile(const ContainerRow& c) {
  const std::pair<const char*, std::string> rows[] = {{"[Name]", ansi(c.name)},
                                                      {"[Backcolor]", " 4798005"},
                                                      {"[Forecolor]", " 16777215"},
                                                      {"[Icon]", ""},
                                                      {"[CopyPath]", ansi(c.folder)},
                                                      {"[AutoRefresh]", " 0"},
                                                      {"[NOTE ON]", c.note.empty() ? "0" : "1"}};
  std::string file = line("106") + line("[Container]") + line("-1");
  for (const auto& [key, value] : rows) file += line(key) + line(value);
  file += line("[START Note]") + c.note + line("[END Note]");
  file +=
      "[Reminder]\r\n0\r\n[ReminderTime]\r\n\r\n[ReminderDate]\r\n\r\n[Readable]\r\n\r\nTEMP\r\n";
  file += line("[Folded]") + line(c.folded ? "1" : "0") + "[Flipped]\r\n0\r\n" + c.detached +
          line("[Shrink]") + line(c.shrunk ? "1" : "0");
  const std::pair<const char*, int> sizes[] = {
      {"[X]", c.x}, {"[Y]", c.y}, {"[W]", c.width}, {"[H]", c.height}};
  for (const auto& [key, value] : sizes) file += line(key) + line(number(value));
  for (const ShortcutRow& s : c.shortcuts) file += shortcutRecord(s, true);
  return file;
}

std::map<std::string, std::string> savedShortcut(const std::string& file,
                                                 const std::string& caption) {
  std::istringstream lines(file);
  std::map<std::string, std::string> record;
  std::string text;
  const auto next = [&] {
    if (!std::getline(lines, text)) return false;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    return true;
  };
  bool more = next();
  while (more) {
    if (text != "[Link]") {
      more = next();
      continue;
    }
    record.clear();
    while ((more = next()) && text != "[Link]") {
      const std::string key = text;
      if (!(more = next())) break;
      record.emplace(key, text);
    }
    if (record["[LinkLabel]"] == caption) return record;
  }
  return {};
}

std::string savedValue(const std::string& file, const std::string& key) {
  const std::string start = "\r\n" + key + "\r\n";
  const std::size_t at = file.find(start);
  if (at == std::string::npos) return {};
  const std::size_t from = at + start.size();
  return file.substr(from, file.find("\r\n", from) - from);
}

std::size_t countSavedShortcuts(const std::string& file) {
  const std::string start = "\r\n[Link]\r\n";
  std::size_t count = 0;
  for (std::size_t at = file.find(start); at != std::string::npos; at = file.find(start, at + 1))
    ++count;
  return count;
}

}  // namespace varnowick::e2e
