#include "core/object_records.h"

#include <array>
#include <utility>

#include "core/usual_form.h"

namespace varnowick {
namespace {

constexpr std::array<Field<clsPicture>, 6> kPictureFields{{
    constantField<clsPicture>("[Locked]", "0"),
    field<&clsPicture::rect, &TwipsRect::left>("[PicX]"),
    field<&clsPicture::rect, &TwipsRect::top>("[PicY]"),
    field<&clsPicture::rect, &TwipsRect::width>("[PicW]", ValueKind::Extent),
    field<&clsPicture::rect, &TwipsRect::height>("[PicH]", ValueKind::Extent),
    field<&clsPicture::Path>("[PicPath]"),
}};

constexpr std::array<Field<clsShortcut>, 15> kShortcutFields{{
    field<&clsShortcut::FontSize>("[Size]"),
    field<&clsShortcut::position, &Point<Twips>::x>("[LinkX]"),
    field<&clsShortcut::position, &Point<Twips>::y>("[LinkY]"),
    field<&clsShortcut::FullCaption>("[LinkLabel]"),
    field<&clsShortcut::ShortcutType>("[LinkType]", ValueKind::ShortInteger),
    field<&clsShortcut::Path>("[LinkPath]"),
    field<&clsShortcut::Parameters>("[LinkParam]"),
    field<&clsShortcut::Color>("[Color]"),
    field<&clsShortcut::FontBold>("[Bold]"),
    field<&clsShortcut::Confirm>("[Confirm]"),
    field<&clsShortcut::Command>("[Command]", ValueKind::Word),
    field<&clsShortcut::Icon>("[Icon]"),
    field<&clsShortcut::Tags>("[GROUP]"),
    constantField<clsShortcut>("[EXCLUSIVE]", "0"),
    field<&clsShortcut::TagStart>("[TAGSTART]"),
}};

// The fields stand by position, so a line that is not the expected key is only
// worth a remark: what follows it is the value all the same.
[[gnu::noinline]] bool readRow(const Field<clsShortcut>& row, FileReading& in,
                               clsShortcut& shortcut) {
  if (!in.lines.nextIs(row.key)) {
    std::string_view line;
    if (!in.lines.next(line)) return false;
    if (trimBlanks(line) != row.key) in.problem(L"Expected " + widen(row.key) + L" here.");
  }
  return readField(row, shortcut, in);
}

// Walks the table at compile time, because shortcuts are nearly all there is in
// a large desktop. Gives the number of rows read.
template <std::size_t... Row>
std::size_t readRows(FileReading& in, std::size_t rows, clsShortcut& shortcut,
                     std::index_sequence<Row...>) {
  const bool ascii = in.lines.ascii();
  const char* const end = in.lines.rest().data() + in.lines.rest().size();
  const char* settled = in.lines.rest().data();
  const char* at = settled;
  std::size_t count = 0;
  std::size_t lines = 0;  // between settled and at
  const auto read = [&](const Field<clsShortcut>& row) __attribute__((always_inline)) {
    if (count == rows) return false;
    if (const char* next = usual::pair(row, shortcut, at, end, ascii)) {
      at = next;
      lines += 2;
    } else {
      in.lines.skip(static_cast<std::size_t>(at - settled), lines);
      const bool whole = readRow(row, in, shortcut);
      settled = at = in.lines.rest().data();
      lines = 0;
      if (!whole) return false;
    }
    ++count;
    return true;
  };
  static_cast<void>((read(kShortcutFields[Row]) && ...));
  in.lines.skip(static_cast<std::size_t>(at - settled), lines);
  return count;
}

}  // namespace

std::span<const Field<clsPicture>> pictureFields() { return kPictureFields; }
std::span<const Field<clsShortcut>> shortcutFields() { return kShortcutFields; }

bool isKnownVersion(std::string_view version) {
  return version == kCurrentVersion || version == "[1.05]" || version == "[1.04]" ||
         version == "[1.01]";
}

std::size_t shortcutRowsOfVersion(std::string_view version) {
  if (version == kCurrentVersion) return 15;
  if (version == "[1.05]") return 14;  // no [TAGSTART] yet
  if (version == "[1.04]") return 13;  // no [EXCLUSIVE] yet
  if (version == "[1.01]") return 9;   // ends with [Bold]
  return 12;
}

void readPicture(FileReading& in, Panel panel, Workspace& workspace) {
  clsPicture picture;
  picture.parent = panel;
  std::size_t rowsRead = 0;
  std::array<bool, kPictureFields.size()> seen{};
  std::size_t expected = 0;
  for (;;) {
    const LineReader::Mark before = in.lines.mark();
    std::string_view line;
    if (!in.lines.next(line)) break;
    const std::size_t row =
        findRow(kPictureFields, trimBlanks(line), expected, [](const auto& f) { return f.key; });
    if (row == kPictureFields.size() || seen[row]) {
      in.lines.goBackTo(before);
      break;
    }
    if (!readField(kPictureFields[row], picture, in)) break;
    seen[row] = true;
    ++rowsRead;
    expected = row + 1 < kPictureFields.size() ? row + 1 : 0;
  }
  if (rowsRead < kPictureFields.size()) in.problem(L"A picture is not complete.");
  if (rowsRead > 0) workspace.pictures.add(std::move(picture));
}

void readShortcut(FileReading& in, std::size_t rows, Panel panel, Workspace& workspace,
                  std::size_t& count) {
  // Filled where it will lie, which spares moving its texts about.
  const ShortcutSlot slot = workspace.shortcuts.add();
  clsShortcut& shortcut = workspace.shortcuts[slot];
  shortcut.parent = panel;
  const std::size_t read =
      readRows(in, rows, shortcut, std::make_index_sequence<kShortcutFields.size()>());
  if (read < rows) in.problem(L"A shortcut is not complete.");
  if (read == 0) return workspace.shortcuts.remove(slot);
  if (shortcut.Icon == std::wstring_view(L"TEMP")) shortcut.Icon.clear();

  const std::size_t limit = panel.isMain() ? kMaxShortcutsOnMainPanel : kMaxShortcutsInContainer;
  if (count >= limit) {
    in.problem(L"There are more than " + std::to_wstring(limit) +
               L" shortcuts, which is as many as fit here. The rest was not loaded.");
    return workspace.shortcuts.remove(slot);
  }
  ++count;
}

void writePicture(const clsPicture& picture, RecordPlace place, LineWriter& out) {
  out.line(kPictureRecord);
  for (const Field<clsPicture>& row : kPictureFields) writeField(row, picture, out);
  const int reserved = place == RecordPlace::SettingsFile ? 4 : 1;
  for (int i = 0; i < reserved; ++i) out.line(kReservedLine);
}

void writeShortcut(const clsShortcut& shortcut, RecordPlace place, LineWriter& out) {
  out.line(kShortcutRecord);
  for (const Field<clsShortcut>& row : kShortcutFields) {
    // The one word value is a flag on the main panel; both forms are in files in
    // the field.
    if (row.kind == ValueKind::Word && place == RecordPlace::SettingsFile) {
      out.line(row.key);
      out.flag(shortcut.Command);
    } else {
      writeField(row, shortcut, out);
    }
  }
}

void writeContents(const PanelContents& contents, RecordPlace place, LineWriter& out) {
  for (const clsPicture* picture : contents.pictures) writePicture(*picture, place, out);
  for (const clsShortcut* shortcut : contents.shortcuts) writeShortcut(*shortcut, place, out);
}

std::size_t sizeHint(const PanelContents& contents) {
  std::size_t bytes = 2048 + contents.pictures.size() * 320;
  for (const clsShortcut* s : contents.shortcuts)
    bytes += 240 + s->FullCaption.size() + s->Path.size() + s->Parameters.size() + s->Icon.size() +
             s->Tags.size();
  return bytes;
}

ContentsByPanel::ContentsByPanel(const Workspace& workspace)
    : panels_(static_cast<std::size_t>(workspace.containers.bound()) + 1) {
  const auto bucket = [this](Panel panel) -> PanelContents* {
    const std::size_t at = static_cast<std::size_t>(panel.container.index + 1);
    return panel.container.index >= -1 && at < panels_.size() ? &panels_[at] : nullptr;
  };
  workspace.pictures.forEach([&](PictureSlot, const clsPicture& picture) {
    if (PanelContents* panel = bucket(picture.parent)) panel->pictures.push_back(&picture);
  });
  workspace.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& shortcut) {
    if (PanelContents* panel = bucket(shortcut.parent)) panel->shortcuts.push_back(&shortcut);
  });
}

}  // namespace varnowick
