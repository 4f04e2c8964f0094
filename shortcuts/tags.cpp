#include "shortcuts/tags.h"

#include <algorithm>

#include "shortcuts/launch.h"
#include "shortcuts/natural_order.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

void addOnce(std::vector<std::wstring>& tags, std::wstring tag) {
  const bool known = std::any_of(tags.begin(), tags.end(), [&](const std::wstring& other) {
    return sameIgnoringCase(other, tag);
  });
  if (!known) tags.push_back(std::move(tag));
}

const clsContainer* filterOf(const Workspace& workspace, Panel panel) {
  const clsContainer* container = workspace.containers.find(panel.container);
  return container != nullptr && !container->ShowingTag.empty() ? container : nullptr;
}

bool applyFilter(const clsContainer* filter, clsShortcut& shortcut) {
  const bool hidden = filter != nullptr && !carriesTag(shortcut, filter->ShowingTag);
  const bool changed = hidden != shortcut.TagHidden;
  shortcut.TagHidden = hidden;
  return changed;
}

}  // namespace

bool carriesTag(const clsShortcut& shortcut, std::wstring_view tag) {
  const std::vector<std::wstring> tags = tagsOf(shortcut);
  return std::any_of(tags.begin(), tags.end(),
                     [&](const std::wstring& own) { return sameIgnoringCase(own, tag); });
}

std::vector<std::wstring> allTags(const Workspace& workspace, const std::optional<Panel>& panel) {
  std::vector<std::wstring> tags;
  workspace.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& shortcut) {
    if (panel && shortcut.parent != *panel) return;
    for (std::wstring& tag : tagsOf(shortcut)) addOnce(tags, std::move(tag));
  });
  std::sort(tags.begin(), tags.end(), naturalLess);
  return tags;
}

std::wstring tidyTags(std::wstring_view typed) {
  clsShortcut shortcut;
  shortcut.Tags = typed;
  // A line break ends a tag, as the comma does.
  std::replace_if(
      shortcut.Tags.begin(), shortcut.Tags.end(), [](wchar_t c) { return c < L' '; }, L',');
  std::vector<std::wstring> tags;
  for (std::wstring& tag : tagsOf(shortcut)) addOnce(tags, std::move(tag));
  std::wstring text;
  for (const std::wstring& tag : tags) text += (text.empty() ? L"" : L", ") + tag;
  return text;
}

std::vector<ShortcutSlot> applyTagFilter(Workspace& workspace, Panel panel) {
  std::vector<ShortcutSlot> changed;
  const clsContainer* filter = filterOf(workspace, panel);
  workspace.shortcuts.forEach([&](ShortcutSlot slot, clsShortcut& shortcut) {
    if (shortcut.parent == panel && applyFilter(filter, shortcut)) changed.push_back(slot);
  });
  return changed;
}

std::vector<ShortcutSlot> applyTagFilters(Workspace& workspace) {
  std::vector<ShortcutSlot> changed;
  workspace.shortcuts.forEach([&](ShortcutSlot slot, clsShortcut& shortcut) {
    if (applyFilter(filterOf(workspace, shortcut.parent), shortcut)) changed.push_back(slot);
  });
  return changed;
}

}  // namespace varnowick
