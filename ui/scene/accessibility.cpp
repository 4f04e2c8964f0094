#include "ui/scene/accessibility.h"

#include <algorithm>

namespace varnowick {

namespace {

std::wstring orElse(const std::wstring& text, const wchar_t* fallback) {
  const bool blank = text.find_first_not_of(L" \t\r\n") == std::wstring::npos;
  return blank ? fallback : text;
}

class Describer {
 public:
  Describer(const Scene& scene, const InputState& input)
      : scene_(scene), pressed_(input.pressed()), focused_(input.focused()) {}

  // False when the node means nothing on its own.
  bool describe(const Node& node, AccessibleItem& item) const;
  unsigned states(const Node& node) const;

 private:
  // A node of the same slot, or nothing at all.
  const Node& sibling(const Node& node, ControlKind kind) const {
    static const Node none;
    const Node* found = scene_.find({kind, node.id.slot});
    return found == nullptr ? none : *found;
  }
  std::wstring containerName(const Node& part) const {
    return orElse(sibling(part, ControlKind::Container).text, L"Container");
  }
  bool folded(const Node& part) const {
    return sibling(part, ControlKind::lblFoldUnfold).text == L"+";
  }
  bool shrunk(const Node& part) const {
    return sibling(part, ControlKind::ContainerIcon).visible &&
           !sibling(part, ControlKind::ContainerLabel).visible;
  }

  const Scene& scene_;
  NodeId pressed_, focused_;
};

bool Describer::describe(const Node& node, AccessibleItem& item) const {
  const auto as = [&item](AccessibleRole role, std::wstring name, const wchar_t* action) {
    item.role = role;
    item.name = std::move(name);
    item.defaultAction = action;
    return true;
  };
  const wchar_t* foldAction = folded(node) ? L"Unfold" : L"Fold";
  // In a window of its own the buttons on the title do the opposite.
  const bool alone = scene_.find({ControlKind::picBack, 0}) == nullptr;
  switch (node.id.kind) {
    case ControlKind::DockStrip:
      return as(AccessibleRole::Button, L"Docking strip", L"Expand");
    case ControlKind::lblCaption:
      return as(AccessibleRole::StaticText, orElse(node.text, L"Varnowick"), L"");
    case ControlKind::PicShrinkExpandAllToolbar:
    case ControlKind::PicFoldUnfoldAllToolbar:
    case ControlKind::PicRSSToolbar:
    case ControlKind::PicLockToolbar:
    case ControlKind::PicUnlockToolbar:
    case ControlKind::PicDockToolbar:
    case ControlKind::cmdAdd:
    case ControlKind::cmdSettings:
    case ControlKind::cmdMenu:
      return as(AccessibleRole::Button, orElse(node.text, L"Button"), L"Press");
    case ControlKind::picBack:
      return as(AccessibleRole::Grouping, L"Workspace", L"");
    case ControlKind::lblShortcut: {
      const std::wstring& target = sibling(node, ControlKind::picShortcut).image.name;
      return as(AccessibleRole::Link, orElse(node.text, orElse(target, L"Shortcut").c_str()),
                L"Open");
    }
    case ControlKind::PicContainer:
      return as(AccessibleRole::Graphic, orElse(node.text, L"Picture"), L"Open");
    case ControlKind::Container:
      return as(AccessibleRole::Grouping, containerName(node),
                shrunk(node) ? L"Expand" : foldAction);
    case ControlKind::ContainerLabel:
      return as(AccessibleRole::StaticText, containerName(node), foldAction);
    case ControlKind::lblFoldUnfold:
      return as(AccessibleRole::Button, foldAction + (L" " + containerName(node)), foldAction);
    case ControlKind::cmdConShrink:
      return as(AccessibleRole::Button, (alone ? L"Hide " : L"Shrink ") + containerName(node),
                L"Press");
    case ControlKind::cmdConDetach:
      return as(AccessibleRole::Button, (alone ? L"Attach " : L"Detach ") + containerName(node),
                L"Press");
    case ControlKind::cmdConMenu:
      return as(AccessibleRole::Button, L"Menu of " + containerName(node), L"Press");
    case ControlKind::ContainerIcon:
      return as(AccessibleRole::Button, containerName(node), L"Expand");
    case ControlKind::ContainerNote:
      item.value = node.text;
      return as(AccessibleRole::Text, L"Note of " + containerName(node), L"");
    case ControlKind::LstRSS:
      item.value = node.text;
      return as(AccessibleRole::List, L"Headlines of " + containerName(node),
                node.children.empty() ? L"Press" : L"");
    case ControlKind::LstFolder:
      item.value = node.text;
      return as(AccessibleRole::List, L"Folder of " + containerName(node), L"");
    case ControlKind::FolderRow:
      return as(AccessibleRole::ListItem, orElse(node.text, L"File"), L"Open");
    case ControlKind::lblRSSLastUpdate:
    case ControlKind::ProgressText:
      return as(AccessibleRole::StaticText, orElse(node.text, L"Status"), L"");
    default:
      return false;
  }
}

unsigned Describer::states(const Node& node) const {
  unsigned states = 0;
  const auto set = [&states](bool on, unsigned bit) { states |= on ? bit : 0U; };
  set(node.id == focused_ || (node.current && node.parent == focused_), kStateFocused);
  set(node.focusable, kStateFocusable);
  set(node.selected, kStateSelected);
  set(node.id == pressed_, kStatePressed);
  set(!node.enabled, kStateUnavailable);
  set(scene_.seenRect(node.id).empty(), kStateOffscreen);
  if (node.id.kind == ControlKind::Container || node.id.kind == ControlKind::ContainerLabel)
    states |= folded(node) || shrunk(node) ? kStateCollapsed : kStateExpanded;
  return states;
}

}  // namespace

std::vector<AccessibleItem> accessibleItems(const Scene& scene, const InputState& input) {
  const Describer describer(scene, input);
  std::vector<AccessibleItem> items;
  for (const NodeId id : scene.visibleNodes()) {
    const Node& node = *scene.find(id);
    AccessibleItem item;
    if (!describer.describe(node, item)) continue;
    item.id = id;
    item.states = describer.states(node);
    item.rect = scene.windowRect(id);
    items.push_back(std::move(item));
  }
  return items;
}

int accessibleAt(const Scene& scene, const std::vector<AccessibleItem>& items,
                 Point<Twips> windowPoint) {
  for (const Node* node = scene.find(scene.hitTest(windowPoint)); node != nullptr;
       node = scene.find(node->parent)) {
    const auto at = std::find_if(items.begin(), items.end(), [node](const AccessibleItem& item) {
      return item.id == node->id;
    });
    if (at != items.end()) return static_cast<int>(at - items.begin());
  }
  return -1;
}

}  // namespace varnowick
