#include "shortcuts/selection.h"

#include <algorithm>

#include "shortcuts/paths.h"

namespace varnowick {
namespace {

// Directly or further below, and by no way round through parent folders.
bool liesIn(std::wstring_view path, std::wstring_view folder) {
  while (!folder.empty() && folder.back() == L'\\') folder.remove_suffix(1);
  return !folder.empty() && path.size() > folder.size() + 1 && path[folder.size()] == L'\\' &&
         sameIgnoringCase(path.substr(0, folder.size()), folder) &&
         path.find(L"\\..") == std::wstring_view::npos;
}

std::wstring fileNameOf(const std::wstring& path) {
  return path.substr(path.find_last_of(L"\\/") + 1);
}

bool isFileOfFolderContainer(const Workspace& workspace, const clsShortcut& shortcut) {
  const clsContainer* container = workspace.containers.find(shortcut.parent.container);
  return container != nullptr && containerType(*container) == ContainerType::Folder &&
         liesIn(shortcut.Path, container->CopyPath);
}

}  // namespace

bool isSelectable(const Workspace& workspace, ObjectId id) {
  if (const auto* slot = std::get_if<ShortcutSlot>(&id)) {
    const clsShortcut* shortcut = workspace.shortcuts.find(*slot);
    return shortcut != nullptr && !shortcut->TagHidden;
  }
  if (const auto* slot = std::get_if<ContainerSlot>(&id)) {
    const clsContainer* container = workspace.containers.find(*slot);
    return container != nullptr && container->visible && !container->Detached;
  }
  return workspace.pictures.contains(std::get<PictureSlot>(id));
}

std::vector<ShortcutSlot> Selection::shortcuts() const {
  std::vector<ShortcutSlot> slots;
  for (const ObjectId& id : objects_)
    if (const auto* slot = std::get_if<ShortcutSlot>(&id)) slots.push_back(*slot);
  return slots;
}

std::optional<ObjectId> Selection::current() const {
  if (last_ && contains(*last_)) return last_;
  return size() == 1 ? std::optional(*objects_.begin()) : std::nullopt;
}

void Selection::select(ObjectId id) {
  objects_.insert(id);
  last_ = id;
}

void Selection::unselect(ObjectId id) {
  objects_.erase(id);
  beforeBand_.erase(id);
}

void Selection::selectNone() {
  objects_.clear();
  beforeBand_.clear();
  last_.reset();
}

void Selection::press(ObjectId id, bool ctrl) {
  keptForDrag_ = false;
  if (ctrl) {
    if (contains(id))
      unselect(id);
    else
      select(id);
    return;
  }
  keptForDrag_ = contains(id);
  if (!keptForDrag_) objects_.clear();
  select(id);
}

void Selection::release(ObjectId id, bool ctrl, bool dragged) {
  // Keys may have removed or unselected it since the press.
  if (keptForDrag_ && !ctrl && !dragged && contains(id)) {
    objects_.clear();
    select(id);
  }
  keptForDrag_ = false;
}

void Selection::pressPanel(bool ctrl) {
  keptForDrag_ = false;
  if (!ctrl) selectNone();
  beforeBand_ = objects_;
}

void Selection::band(const std::vector<ObjectId>& touched) {
  objects_ = beforeBand_;
  for (const ObjectId& id : touched) select(id);
}

void Selection::selectAll(const Workspace& workspace, Panel panel) {
  workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    if (s.parent == panel && !s.TagHidden) objects_.insert(slot);
  });
  workspace.pictures.forEach([&](PictureSlot slot, const clsPicture& p) {
    if (p.parent == panel) objects_.insert(slot);
  });
  if (!panel.isMain()) return;
  workspace.containers.forEach([&](ContainerSlot slot, const clsContainer&) {
    if (isSelectable(workspace, slot)) objects_.insert(slot);
  });
}

void Selection::prune(const Workspace& workspace) {
  const auto gone = [&](const ObjectId& id) { return !isSelectable(workspace, id); };
  std::erase_if(objects_, gone);
  std::erase_if(beforeBand_, gone);
}

std::wstring namesForQuestion(const std::vector<std::wstring>& names) {
  constexpr std::size_t kMostNames = 8;
  constexpr std::size_t kLongestName = 60;
  std::wstring text;
  const std::size_t named = names.size() > kMostNames ? kMostNames - 1 : names.size();
  for (std::size_t i = 0; i < named; ++i) {
    const bool cut = names[i].size() > kLongestName;
    text += names[i].empty() ? L"(no name)" : names[i].substr(0, kLongestName);
    text += cut ? L"...\r\n" : L"\r\n";
  }
  if (named < names.size()) text += L"and " + std::to_wstring(names.size() - named) + L" more\r\n";
  return text;
}

std::wstring countOf(std::size_t count, const wchar_t* thing) {
  return std::to_wstring(count) + L" " + thing + (count == 1 ? L"" : L"s");
}

DeletePlan planDelete(const Workspace& workspace, const Selection& selection,
                      const Settings& settings, const std::vector<ContainerSlot>& removedBefore) {
  DeletePlan plan;
  if (settings.locked) return plan;
  const auto goesAnyway = [&](Panel panel) {
    return std::find(removedBefore.begin(), removedBefore.end(), panel.container) !=
           removedBefore.end();
  };
  std::vector<std::wstring> names;
  for (const ObjectId& id : selection.objects()) {
    if (!isSelectable(workspace, id)) continue;
    if (const auto* picture = std::get_if<PictureSlot>(&id);
        picture != nullptr && !goesAnyway(workspace.pictures[*picture].parent)) {
      plan.pictures.push_back(*picture);
      names.push_back(fileNameOf(workspace.pictures[*picture].Path));
    }
    const auto* slot = std::get_if<ShortcutSlot>(&id);
    if (slot == nullptr || goesAnyway(workspace.shortcuts[*slot].parent)) continue;
    plan.shortcuts.push_back(*slot);
    const clsShortcut& shortcut = workspace.shortcuts[*slot];
    names.push_back(shortcut.FullCaption);
    if (isFileOfFolderContainer(workspace, shortcut)) plan.files.push_back(shortcut.Path);
  }
  if (!settings.confirmDelete || plan.empty()) return plan;
  plan.question = plan.files.empty() ? kRemoveSelectedQuestion : kDeleteSelectedQuestion;
  plan.question += L"\r\n\r\n" + namesForQuestion(names) + L"\r\n";
  if (!plan.shortcuts.empty()) plan.question += countOf(plan.shortcuts.size(), L"shortcut");
  if (!plan.shortcuts.empty() && !plan.pictures.empty()) plan.question += L", ";
  if (!plan.pictures.empty()) plan.question += countOf(plan.pictures.size(), L"picture");
  plan.question += plan.files.empty()
                       ? L". No file is deleted."
                       : L". To the Recycle Bin: " + countOf(plan.files.size(), L"file") + L".";
  return plan;
}

}  // namespace varnowick
