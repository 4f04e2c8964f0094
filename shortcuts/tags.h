// Tags of shortcuts and the filter of a container that shows one tag only. Tags
// are equal whatever the case of their ASCII letters. Starts nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/workspace.h"

namespace varnowick {

bool carriesTag(const clsShortcut& shortcut, std::wstring_view tag);

// The tags that occur on the panel, or in the whole workspace; each once, as its
// first shortcut writes it, sorted for people.
std::vector<std::wstring> allTags(const Workspace& workspace,
                                  const std::optional<Panel>& panel = std::nullopt);

// A list of tags as the user typed it: each tag once, trimmed, one comma and a
// blank between two.
std::wstring tidyTags(std::wstring_view typed);

// Brings TagHidden of the container's shortcuts in line with its ShowingTag;
// gives those that changed. To be called whenever either may have changed. The
// main panel has no filter: on it everything is shown.
std::vector<ShortcutSlot> applyTagFilter(Workspace& workspace, Panel panel);
// The same for all panels, as after loading.
std::vector<ShortcutSlot> applyTagFilters(Workspace& workspace);

}  // namespace varnowick
