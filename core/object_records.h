// The picture and shortcut records, which stand alike in the settings file (for
// the main panel) and in the container files. Knows the records' lines; the
// files around them are others' business.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "core/field_table.h"
#include "core/workspace.h"

namespace varnowick {

inline constexpr std::string_view kCurrentVersion = "106";
inline constexpr std::string_view kPictureRecord = "[Picture]";
inline constexpr std::string_view kShortcutRecord = "[Link]";
inline constexpr std::string_view kReservedLine = "TEMP";

// Where a record stands decides its irregular lines.
enum class RecordPlace { SettingsFile, ContainerFile };

std::span<const Field<clsPicture>> pictureFields();
std::span<const Field<clsShortcut>> shortcutFields();

// How many of the shortcutFields() a file of this version holds for a shortcut.
std::size_t shortcutRowsOfVersion(std::string_view version);
bool isKnownVersion(std::string_view version);

// Each reads the lines after the record's first line and adds the object to the
// panel. A record that is cut off is added with what it has, unless that is
// nothing, and reported.
void readPicture(FileReading& in, Panel panel, Workspace& workspace);
// count is the number of shortcuts that the panel holds; when the panel is full
// the record is read, reported and not added.
void readShortcut(FileReading& in, std::size_t rows, Panel panel, Workspace& workspace,
                  std::size_t& count);

void writePicture(const clsPicture& picture, RecordPlace place, LineWriter& out);
void writeShortcut(const clsShortcut& shortcut, RecordPlace place, LineWriter& out);

// What lies on one panel, in slot order.
struct PanelContents {
  std::vector<const clsPicture*> pictures;
  std::vector<const clsShortcut*> shortcuts;
};
void writeContents(const PanelContents& contents, RecordPlace place, LineWriter& out);
// A guess at the bytes that writing the contents takes.
std::size_t sizeHint(const PanelContents& contents);

// The contents of every panel, sorted out in one pass. The workspace must not
// change while they are in use.
class ContentsByPanel {
 public:
  explicit ContentsByPanel(const Workspace& workspace);
  const PanelContents& of(Panel panel) const {
    return panels_[static_cast<std::size_t>(panel.container.index + 1)];
  }

 private:
  std::vector<PanelContents> panels_;  // the main panel, then by container slot
};

// Receives the progress text to show while loading; may be empty.
using Progress = std::function<void(const std::wstring& text)>;

}  // namespace varnowick
