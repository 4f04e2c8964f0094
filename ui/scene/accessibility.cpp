#include "ui/scene/accessibility.h"

#include <algorithm>
#include <unordered_map>

namespace varnowick {

namespace {

std::wstring orElse(const std::wstring& text, const wchar_t* fallback) {
  const bool blank = text.find_first_not_of(L" \t\r\n") == std::wstring::npos;
  return blank ? fallback : text;
}

bool isSelectableKind(ControlKind kind) {
  return kind == ControlKind::lblShortcut || kind == ControlKind::PicContainer ||
         kind == ControlKind::Container || kind == ControlKind::FolderRow;
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
  bool folded(const Node& part) const { return sibling(part, ControlKind::lblFoldUnfold).folded; }
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
    case ControlKind::UndoLine:
      return as(AccessibleRole::Button, orElse(node.text, L"Undo"), L"Undo");
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
  set(isSelectableKind(node.id.kind), kStateSelectable);
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
  std::unordered_map<NodeId, int, NodeIdHash> places;
  for (const NodeId id : scene.visibleNodes()) {
    const Node& node = *scene.find(id);
    AccessibleItem item;
    if (!describer.describe(node, item)) continue;
    item.id = id;
    for (const Node* above = scene.find(node.parent); above != nullptr && item.parent < 0;
         above = scene.find(above->parent))
      if (const auto place = places.find(above->id); place != places.end())
        item.parent = place->second;
    places[id] = static_cast<int>(items.size());
    item.states = describer.states(node);
    item.rect = scene.windowRect(id);
    items.push_back(std::move(item));
  }
  return items;
}

AccessibleChanges accessibleChanges(const std::vector<AccessibleItem>& before,
                                    const std::vector<AccessibleItem>& now) {
  using What = AccessibleChange::What;
  constexpr std::size_t kMostSelections = 20;
  AccessibleChanges changes;
  std::unordered_map<NodeId, const AccessibleItem*, NodeIdHash> known;
  for (const AccessibleItem& item : before) known[item.id] = &item;
  changes.order = before.size() != now.size();
  std::vector<AccessibleChange> selections;
  std::size_t selected = 0;
  for (std::size_t i = 0; i < now.size(); ++i) {
    const AccessibleItem& item = now[i];
    const bool isSelected = (item.states & kStateSelected) != 0;
    selected += isSelected ? 1 : 0;
    const auto at = known.find(item.id);
    changes.order = changes.order || at == known.end() || before[i].id != item.id;
    // What is new is read as it is; only its selection needs to be told.
    const AccessibleItem* old = at == known.end() ? nullptr : at->second;
    if (isSelected != (old != nullptr && (old->states & kStateSelected) != 0))
      selections.push_back({item.id, isSelected ? What::Selected : What::Unselected});
    if (old == nullptr) continue;
    if (old->name != item.name) changes.items.push_back({item.id, What::Name});
    if (old->value != item.value) changes.items.push_back({item.id, What::Value});
    // The focus has an event of its own.
    constexpr unsigned kTold = ~unsigned{kStateSelected | kStateFocused};
    if (((old->states ^ item.states) & kTold) != 0) changes.items.push_back({item.id, What::State});
  }
  const auto gained = std::find_if(selections.begin(), selections.end(), [](const auto& change) {
    return change.what == What::Selected;
  });
  if (selected == 1 && gained != selections.end())
    changes.items.push_back({gained->id, What::OnlySelected});
  else if (selections.size() > kMostSelections)
    changes.manySelected = true;
  else
    changes.items.insert(changes.items.end(), selections.begin(), selections.end());
  return changes;
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
