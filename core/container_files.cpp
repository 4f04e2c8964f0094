#include "core/container_files.h"

#include <array>

namespace varnowick {
namespace {

constexpr std::string_view kFeedKey = "[RSS]";
constexpr std::string_view kContainerKey = "[Container]";
constexpr std::string_view kTopLevel = "-1";  // a nesting marker in older versions
constexpr std::string_view kNameKey = "[Name]";

using C = clsContainer;
using When = ContainerRow::When;

// Extents that are saved while folded or shrunk are whole; the record in its
// form for the file has them rounded already.
constexpr std::array<ContainerRow, 36> kContainerRows{{
    {field<&C::name>(kNameKey)},
    {field<&C::backColor>("[Backcolor]")},
    {field<&C::foreColor>("[Forecolor]")},
    {field<&C::ShrinkPath>("[Icon]")},
    {field<&C::CopyPath>("[CopyPath]")},
    {field<&C::AutoRefresh>("[AutoRefresh]")},
    {field<&C::noteVisible>("[NOTE ON]")},
    {field<&C::note>("[START Note]", ValueKind::Note)},
    {field<&C::reminder, &Reminder::set>("[Reminder]")},
    {field<&C::reminder, &Reminder::time>("[ReminderTime]")},
    {field<&C::reminder, &Reminder::date>("[ReminderDate]")},
    {field<&C::reminder, &Reminder::readable>("[Readable]"), When::Always, true},
    {field<&C::folded>("[Folded]")},
    {field<&C::CloseToEdgeY>("[Flipped]")},
    {field<&C::Detached>("[Detached]"), When::Detached},
    {field<&C::DetachedUseTab>("[DetachedTab]"), When::Detached},
    {field<&C::DetachedAutoShow>("[DetachedAutoShow]"), When::Detached},
    {field<&C::DetachedAutoHide>("[DetachedAutoHide]"), When::Detached},
    {field<&C::DetachedCollapseOnClick>("[DetachedCollapseOnClick]"), When::Detached},
    {field<&C::DetachedFadeOut>("[DetachedFadeOut]"), When::Detached},
    {field<&C::detachedLabelRect, &TwipsRect::left>("[DetachedTabX]", ValueKind::WholePosition),
     When::Detached},
    {field<&C::detachedLabelRect, &TwipsRect::top>("[DetachedTabY]", ValueKind::WholePosition),
     When::Detached},
    {field<&C::detachedLabelRect, &TwipsRect::height>("[DetachedTabH]", ValueKind::WholeExtent),
     When::Detached},
    {field<&C::detachedLabelRect, &TwipsRect::width>("[DetachedTabW]", ValueKind::WholeExtent),
     When::Detached},
    {field<&C::DetachedTabDockedWhere>("[DetachedTabDocked]"), When::Detached},
    {field<&C::detachedRect, &TwipsRect::left>("[DetachedX]", ValueKind::WholePosition),
     When::Detached},
    {field<&C::detachedRect, &TwipsRect::top>("[DetachedY]", ValueKind::WholePosition),
     When::Detached},
    {field<&C::detachedRect, &TwipsRect::height>("[DetachedH]", ValueKind::WholeExtent),
     When::Detached},
    {field<&C::detachedRect, &TwipsRect::width>("[DetachedW]", ValueKind::WholeExtent),
     When::Detached},
    {field<&C::HideToolbar>("[HideToolbar]"), When::ToolbarHidden},
    {field<&C::shrunk>("[Shrink]")},
    {field<&C::savedRect, &TwipsRect::left>("[X]")},
    {field<&C::savedRect, &TwipsRect::top>("[Y]")},
    {field<&C::savedRect, &TwipsRect::width>("[W]", ValueKind::Extent)},
    {field<&C::savedRect, &TwipsRect::height>("[H]", ValueKind::Extent)},
    {field<&C::ShowingTag>("[ShowTag]"), When::ShowingTag},
}};

bool applies(When when, const clsContainer& c) {
  switch (when) {
    case When::Detached:
      return c.Detached;
    case When::ToolbarHidden:
      return c.HideToolbar;
    case When::ShowingTag:
      return c.ShowingTag.find_first_not_of(L" \r\n") != std::wstring::npos;
    case When::Always:
      break;
  }
  return true;
}

Twips whole(Twips t) { return {static_cast<float>(roundHalfToEven(static_cast<double>(t.value)))}; }

// The record as its file shows it: savedRect is the box where it stands now, but
// with the size that it has when neither folded nor shrunk.
clsContainer inFileForm(const clsContainer& container) {
  clsContainer c = container;
  c.savedRect = container.rect;
  if (container.folded || container.shrunk) {
    c.savedRect.width = whole(container.savedRect.width);
    c.savedRect.height = whole(container.savedRect.height);
  }
  c.noteVisible = container.noteVisible || container.Detached_Note_Visible;
  return c;
}

// Until its file tells otherwise a container can be seen and read.
clsContainer blankContainer() {
  clsContainer c;
  c.savedRect = {{0}, {0}, {3000}, {2400}};
  c.foreColor = rgb(255, 255, 255);
  return c;
}

class ContainerReading {
 public:
  ContainerReading(FileReading& in, const Progress& progress, Workspace& workspace)
      : in_(in), progress_(progress), workspace_(workspace) {}

  ContainerSlot run() {
    const ContainerSlot slot = workspace_.containers.add(blankContainer());
    panel_ = Panel{slot};
    std::string_view line;
    if (in_.lines.next(line)) {
      const std::string_view version = trimBlanks(line);
      if (!isKnownVersion(version)) in_.problem(L"The version of the file is not known.");
      shortcutRows_ = shortcutRowsOfVersion(version);
      while (in_.lines.next(line)) readItem(trimBlanks(line));
    } else {
      in_.problem(L"The file is empty.");
    }
    finish();
    return slot;
  }

 private:
  // Fetched anew each time: it does not survive the adding of containers.
  clsContainer& container() { return workspace_.containers[panel_.container]; }

  void readItem(std::string_view key) {
    if (key == kShortcutRecord) return readShortcut(in_, shortcutRows_, panel_, workspace_, count_);
    if (key == kPictureRecord) return readPicture(in_, panel_, workspace_);
    const std::size_t row =
        findRow(kContainerRows, key, expected_, [](const ContainerRow& r) { return r.field.key; });
    if (row < kContainerRows.size()) {
      readField(kContainerRows[row].field, container(), in_);
      expected_ = row + 1 < kContainerRows.size() ? row + 1 : 0;
      if (key == kNameKey && progress_) progress_(L"Loading " + container().name + L"...");
    } else if (key == kFeedKey) {
      readFeed();
    } else if (!key.empty() && key != kContainerKey && key != kTopLevel && key != kReservedLine) {
      in_.problem(L"This line is not known.");
    }
  }

  void readFeed() {
    container().RSS = true;
    // The caption stands in the pair of the name as well, which comes later.
    for (std::wstring* text : {&feedAddress_, &container().name}) {
      std::string_view value;
      if (!in_.lines.next(value)) return in_.problem(L"The file ends within the feed's address.");
      if (!in_.lines.decode(trimBlanks(value), *text))
        in_.problem(L"The feed has bytes that stand for no character.");
    }
  }

  void finish() {
    clsContainer& c = container();
    // A feed's own key holds its address; the folder key is empty in its file.
    if (c.RSS && !feedAddress_.empty()) c.CopyPath = feedAddress_;
    c.Detached_Note_Visible = c.Detached && c.noteVisible;
    c.rect = c.savedRect;
    if (c.shrunk) {
      c.rect.width = kShrunkSize.width;
      c.rect.height = kShrunkSize.height;
    } else if (c.folded) {
      c.rect.height = kTitleStripHeight;
    }
  }

  FileReading& in_;
  const Progress& progress_;
  Workspace& workspace_;
  Panel panel_;
  std::size_t shortcutRows_ = 0;
  std::size_t count_ = 0;
  std::size_t expected_ = 0;
  std::wstring feedAddress_;
};

void writeContainer(const clsContainer& container, const PanelContents& contents, LineWriter& out) {
  clsContainer c = inFileForm(container);
  out.line(kCurrentVersion);
  if (c.RSS) {
    out.line(kFeedKey);
    out.text(c.CopyPath);
    out.text(c.name);
    c.CopyPath.clear();
  } else {
    out.line(kContainerKey);
  }
  out.line(kTopLevel);
  for (const ContainerRow& row : kContainerRows) {
    if (!applies(row.when, c)) continue;
    writeField(row.field, c, out);
    if (row.reservedLineFollows) out.line(kReservedLine);
  }
  writeContents(contents, RecordPlace::ContainerFile, out);
}

}  // namespace

std::span<const ContainerRow> containerTable() { return kContainerRows; }

ContainerSlot readContainerFile(std::string_view bytes, const std::wstring& path, TextCodec& codec,
                                const Progress& progress, Workspace& workspace,
                                LoadReport& report) {
  FileReading in{LineReader(bytes, codec), path, report};
  return ContainerReading(in, progress, workspace).run();
}

bool isSaved(const clsContainer& container) { return container.visible || container.Detached; }

std::string renderContainerFile(const clsContainer& container, const PanelContents& contents,
                                TextCodec& codec) {
  return renderFile(codec, sizeHint(contents) + container.note.size(),
                    [&](LineWriter& out) { writeContainer(container, contents, out); });
}

std::vector<std::string> renderContainerFiles(const Workspace& workspace,
                                              const ContentsByPanel& contents, TextCodec& codec) {
  std::vector<std::string> files;
  workspace.containers.forEach([&](ContainerSlot slot, const clsContainer& container) {
    if (isSaved(container))
      files.push_back(renderContainerFile(container, contents.of(Panel{slot}), codec));
  });
  return files;
}

}  // namespace varnowick
