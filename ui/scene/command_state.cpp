#include "ui/scene/command_state.h"

#include <algorithm>

namespace varnowick {

CommandState commandStateOf(const Document& document, const Selection& selection,
                            const CommandTargets& targets) {
  const Workspace& workspace = document.workspace;
  CommandState state;
  state.locked = document.settings.locked;
  state.translucent = document.settings.translucent;
  state.align = document.settings.align;
  state.anythingSelected = !selection.empty();
  state.shortcutSelected = !selection.shortcuts().empty();
  state.shortcutMeant = !targets.shortcut.none();
  state.pictureSelected =
      std::any_of(selection.objects().begin(), selection.objects().end(),
                  [](const ObjectId& id) { return std::holds_alternative<PictureSlot>(id); });
  state.containerSelected = !targets.containers.empty();
  if (!targets.containers.empty()) {
    const clsContainer& first = workspace.containers[targets.containers.front()];
    state.noteShown = first.Detached ? first.Detached_Note_Visible : first.noteVisible;
    state.toolbarHidden = first.HideToolbar;
  }
  workspace.containers.forEach([&](ContainerSlot, const clsContainer& c) {
    state.anyDetached = state.anyDetached || c.Detached;
    state.anyContainers = state.anyContainers || (c.visible && !c.Detached);
  });
  workspace.shortcuts.forEach([&](ShortcutSlot, const clsShortcut& s) {
    state.anyShortcuts = state.anyShortcuts || s.parent == Panel{targets.menu};
  });
  // What "Select all" would find: on the panel of the current shortcut.
  const std::optional<ObjectId> current = selection.current();
  const auto* shortcut = current ? std::get_if<ShortcutSlot>(&*current) : nullptr;
  Selection all;
  all.selectAll(workspace,
                shortcut == nullptr ? targets.home : workspace.shortcuts[*shortcut].parent);
  state.anyObjects = !all.empty();
  return state;
}

}  // namespace varnowick
