#include "core/settings_file.h"

#include <array>
#include <optional>

#include "core/settings_table.h"

namespace varnowick {
namespace {

constexpr std::string_view kCaptureKey = "[Capture]";  // nesting of containers, in older versions
constexpr std::string_view kSearchKeyStart = "[RSS Search";

bool isBlankWithSubstitute(const SettingRow& row, const Settings& settings) {
  return !row.whenBlank.empty() && static_cast<const std::wstring*>(row.field.memberOf(settings))
                                           ->find_first_not_of(L" \t\r\n") == std::wstring::npos;
}

class SettingsReading {
 public:
  SettingsReading(FileReading& in, MsgBox& msgBox, const Progress& progress, Document& document)
      : in_(in), msgBox_(msgBox), progress_(progress), document_(document) {}

  void run() {
    std::string_view line;
    if (!in_.lines.next(line)) return in_.problem(L"The file is empty.");
    const std::string_view version = trimBlanks(line);
    if (!isKnownVersion(version)) in_.problem(L"The version of the file is not known.");
    shortcutRows_ = shortcutRowsOfVersion(version);
    while (in_.lines.next(line)) readItem(trimBlanks(line));
    takeSearches();
  }

 private:
  void readItem(std::string_view key) {
    const std::span<const SettingRow> table = settingsTable();
    if (key == kShortcutRecord)
      readShortcut(in_, shortcutRows_, picBack, document_.workspace, shortcuts_);
    else if (key == kPictureRecord)
      readPictureRecord();
    else if (const std::size_t row =
                 findRow(table, key, expected_, [](const SettingRow& r) { return r.field.key; });
             row < table.size())
      readSetting(row);
    else if (key.starts_with(kSearchKeyStart))
      readSearch(key);
    else if (key == kCaptureKey)
      readCapture();
    else if (!key.empty() && key != kReservedLine)
      in_.problem(L"This line is not known.");
  }

  void readSetting(std::size_t row) {
    const SettingRow& setting = settingsTable()[row];
    expected_ = row + 1 < settingsTable().size() ? row + 1 : 0;
    if (setting.writeOnly())
      passOverValue();
    else
      readField(setting.field, document_.settings, in_);
    // What would be written for a blank value counts from the start.
    if (isBlankWithSubstitute(setting, document_.settings))
      *static_cast<std::wstring*>(setting.field.member(document_.settings)) =
          widen(setting.whenBlank);
  }

  // Nobody looks for a key that is only written, so its value may be any; a key line
  // that follows at once is one like any other.
  void passOverValue() {
    const LineReader::Mark before = in_.lines.mark();
    std::string_view value;
    if (in_.lines.next(value) && trimBlanks(value).starts_with('[')) in_.lines.goBackTo(before);
  }

  void readPictureRecord() {
    if (!picturesAnnounced_ && progress_) progress_(L"Loading Pictures...");
    picturesAnnounced_ = true;
    readPicture(in_, picBack, document_.workspace);
  }

  void readSearch(std::string_view key) {
    std::size_t position = 0;
    while (position < kMaxRecentSearches && recentSearchKey(position) != key) ++position;
    if (position == kMaxRecentSearches) return in_.problem(L"This line is not known.");
    std::string_view value;
    if (!in_.lines.next(value)) return in_.problem(L"The file ends where a search should stand.");
    searches_[position].emplace();
    if (!in_.lines.decode(trimBlanks(value), *searches_[position]))
      in_.problem(L"A search has bytes that stand for no character.");
  }

  void readCapture() {
    std::string_view value;
    if (!in_.lines.next(value) || trimBlanks(value) != "1" || captureTold_) return;
    captureTold_ = true;
    msgBox_.show(
        L"Sorry, but the nested containers feature has been removed from this version. "
        L"It was too buggy and slowed down Varnowick's development. From now on, you can use the "
        L"new Containers Tags feature"
        L", which allows you (in a much more intuitive way) to keep multiple shortcuts in a single "
        L"container."
        L" Unfortunately this means that you will probably need to re-organize the workspace.",
        kMsgExclamation | kMsgSystemModal, L"Nested Containers");
  }

  // The run of searches has no gaps, whatever the file left out.
  void takeSearches() {
    std::vector<std::wstring> taken;
    for (std::optional<std::wstring>& search : searches_)
      if (search && *search != kNoRecentSearch) taken.push_back(std::move(*search));
    if (!taken.empty()) document_.settings.recentSearches = std::move(taken);
  }

  FileReading& in_;
  MsgBox& msgBox_;
  const Progress& progress_;
  Document& document_;
  std::size_t shortcutRows_ = 0;
  std::size_t shortcuts_ = 0;
  std::size_t expected_ = 0;
  bool picturesAnnounced_ = false;
  bool captureTold_ = false;
  std::array<std::optional<std::wstring>, kMaxRecentSearches> searches_;
};

void writeSetting(const SettingRow& row, const Settings& settings, LineWriter& out) {
  if (!isBlankWithSubstitute(row, settings)) return writeField(row.field, settings, out);
  out.line(row.field.key);
  out.line(row.whenBlank);
}

void writeSearches(const std::vector<std::wstring>& searches, LineWriter& out) {
  if (!searches.empty() && searches.front() == kNoRecentSearch) return;
  for (std::size_t i = 0; i < searches.size() && i < kMaxRecentSearches; ++i) {
    out.line(recentSearchKey(i));
    out.text(searches[i]);
  }
}

}  // namespace

void readSettingsFile(std::string_view bytes, const std::wstring& path, TextCodec& codec,
                      MsgBox& msgBox, const Progress& progress, Document& document,
                      LoadReport& report) {
  if (progress) progress(L"Loading Settings...");
  FileReading in{LineReader(bytes, codec), path, report};
  SettingsReading(in, msgBox, progress, document).run();
}

std::string renderSettingsFile(const Settings& settings, const PanelContents& mainPanel,
                               TextCodec& codec) {
  return renderFile(codec, sizeHint(mainPanel), [&](LineWriter& out) {
    out.line(kCurrentVersion);
    for (const SettingRow& row : settingsTable()) writeSetting(row, settings, out);
    writeSearches(settings.recentSearches, out);
    writeContents(mainPanel, RecordPlace::SettingsFile, out);
  });
}

}  // namespace varnowick
