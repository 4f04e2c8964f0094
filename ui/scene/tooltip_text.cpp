#include "ui/scene/tooltip_text.h"

#include "ui/scene/toolbar_scene.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

constexpr std::size_t kLongestTitle = 60;
constexpr std::size_t kLongestTipLine = 240;
constexpr const wchar_t* kShrinkExpand = L"Shrink/Expand";
constexpr const wchar_t* kLineBreak = L"\r\n";

// One line: line breaks and other control characters become blanks.
std::wstring oneLine(const std::wstring& text) {
  std::wstring line;
  for (const wchar_t c : text.substr(0, 4 * kLongestTipLine))
    line += c < 0x20 || c == 0x7F ? L' ' : c;
  const std::size_t first = line.find_first_not_of(L' ');
  if (first == std::wstring::npos) return {};
  return line.substr(first, line.find_last_not_of(L' ') - first + 1);
}

// Of a path the beginning and the end tell most.
std::wstring shortened(const std::wstring& text, std::size_t longest) {
  if (text.size() <= longest) return text;
  const std::size_t tail = longest * 2 / 3;
  return text.substr(0, longest - tail - 3) + L"..." + text.substr(text.size() - tail);
}

void addLine(std::wstring& text, const std::wstring& line) {
  if (line.empty()) return;
  if (!text.empty()) text += kLineBreak;
  text += line;
}

// A title of its own where it is short enough for one line; alone it is the text.
TooltipText compose(const std::wstring& caption, const std::wstring& lines) {
  if (lines.empty()) return {{}, shortened(caption, kLongestTipLine)};
  if (caption.size() <= kLongestTitle) return {caption, lines};
  std::wstring text = shortened(caption, kLongestTipLine);
  addLine(text, lines);
  return {{}, text};
}

TooltipText ofShortcut(const clsShortcut& s, const Settings& settings) {
  const std::wstring caption = oneLine(s.FullCaption);
  std::wstring target = oneLine(s.Path);
  if (const std::wstring parameters = oneLine(s.Parameters); !parameters.empty())
    target += (target.empty() ? L"" : L" ") + parameters;
  std::wstring lines;
  if (target != caption) addLine(lines, shortened(target, kLongestTipLine));
  if (settings.showTags) {
    if (const std::wstring tags = oneLine(s.Tags); !tags.empty())
      addLine(lines, L"Tags: " + shortened(tags, kLongestTipLine));
  }
  return compose(caption, lines);
}

std::wstring ofButton(ControlKind kind) {
  switch (kind) {
    case ControlKind::PicShrinkExpandAllToolbar:
      return L"Shrink or expand all containers";
    case ControlKind::PicFoldUnfoldAllToolbar:
      return L"Fold or unfold all containers";
    case ControlKind::PicRSSToolbar:
      return L"Refresh all feeds";
    case ControlKind::PicLockToolbar:
      return L"Lock editing: nothing can be moved";
    case ControlKind::PicUnlockToolbar:
      return L"Unlock editing: objects can be moved";
    case ControlKind::PicDockToolbar:
      return L"Collapse the bar now (Esc)";
    case ControlKind::cmdAdd:
      return L"Add a shortcut, container, note or picture";
    case ControlKind::cmdSettings:
      return L"Settings and appearance";
    case ControlKind::cmdMenu:
      return L"All commands";
    default:
      return {};
  }
}

class ContainerText {
 public:
  ContainerText(const Scene& scene, const Workspace& workspace, TextMeasure* measure,
                Density density)
      : scene_(scene), workspace_(workspace), measure_(measure), density_(density) {}

  TooltipText of(NodeId node) const {
    const clsContainer* container = workspace_.containers.find(containerOf(node));
    if (container == nullptr) return {};
    const std::wstring name = oneLine(container->name);
    const bool folded = container->Detached ? container->DetachedFolded : container->folded;
    const bool hasSource = container->RSS || containerType(*container) == ContainerType::Folder;
    const std::wstring source =
        hasSource ? shortened(oneLine(container->CopyPath), kLongestTipLine) : std::wstring();
    switch (node.kind) {
      case ControlKind::lblFoldUnfold:
        return {{}, folded ? L"Unfold" : L"Fold"};
      case ControlKind::cmdConShrink:
        return {{}, container->Detached ? L"Hide" : L"Shrink to a tile"};
      case ControlKind::cmdConDetach:
        return {{},
                container->Detached ? L"Attach to the bar" : L"Detach: into a window of its own"};
      case ControlKind::cmdConMenu:
        return {{}, L"Commands for this container"};
      case ControlKind::ContainerFrame:
        // Asked for on its hot spot only.
        return {{}, kShrinkExpand};
      case ControlKind::ContainerIcon: {
        std::wstring lines = source;
        addLine(lines, kShrinkExpand);
        return compose(name.empty() ? L"Container" : name, lines);
      }
      case ControlKind::ContainerLabel:
        if (!source.empty() || !fits(node, name)) return compose(name, source);
        return {};
      default:
        return {};
    }
  }

 private:
  bool fits(NodeId title, const std::wstring& name) const {
    const Node* node = scene_.find(title);
    const Node* fold = scene_.find({ControlKind::lblFoldUnfold, title.slot});
    if (node == nullptr) return true;
    Pixels room = density_.toPixels(node->rect.width - Twips{120});
    if (fold != nullptr) room -= density_.toPixels(fold->rect.width);
    TextStyle style;
    style.bold = true;
    if (measure_ != nullptr) return !(measure_->measure(name, style, {0}).width > room);
    return static_cast<int>(name.size()) * density_.toPixels(Twips{105}).value <= room.value;
  }

  const Scene& scene_;
  const Workspace& workspace_;
  TextMeasure* measure_;
  Density density_;
};

// A file's name where the row is too narrow for it.
TooltipText ofFolderRow(const Node* row, TextMeasure* measure, Density density) {
  if (row == nullptr) return {};
  const Pixels room = density.toPixels(row->rect.width - Twips{465});
  const int width = measure != nullptr
                        ? measure->measure(row->text, {}, {0}).width.value
                        : static_cast<int>(row->text.size()) * density.toPixels(Twips{105}).value;
  if (width <= room.value) return {};
  return {{}, shortened(oneLine(row->text), kLongestTipLine)};
}

}  // namespace

TooltipText tooltipText(NodeId node, const Scene& scene, const Settings& settings,
                        const Workspace& workspace, TextMeasure* measure, Density density) {
  if (node.kind == ControlKind::lblShortcut || node.kind == ControlKind::picShortcut) {
    const clsShortcut* s = workspace.shortcuts.find(shortcutOf(node));
    return s == nullptr ? TooltipText{} : ofShortcut(*s, settings);
  }
  if (node.kind == ControlKind::PicContainer || node.kind == ControlKind::PicImage) {
    const clsPicture* p = workspace.pictures.find(pictureOf(node));
    return p == nullptr ? TooltipText{}
                        : TooltipText{{}, shortened(oneLine(p->Path), kLongestTipLine)};
  }
  if (const std::wstring action = ofButton(node.kind); !action.empty()) {
    const Command command = toolbarCommand(node.kind);
    const std::wstring key =
        command == Command::None ? std::wstring() : keyText(commandRow(command).key);
    return {{}, key.empty() ? action : action + L" (" + key + L")"};
  }
  if (node.kind == ControlKind::FolderRow) return ofFolderRow(scene.find(node), measure, density);
  return ContainerText(scene, workspace, measure, density).of(node);
}

}  // namespace varnowick
