#include "core/workspace.h"

#include <utility>

namespace varnowick {

ContainerType containerType(const clsContainer& container) {
  if (container.RSS) return ContainerType::Feed;
  if (!container.CopyPath.empty()) return ContainerType::Folder;
  if (container.reminder.set) return ContainerType::Reminder;
  if (container.noteVisible || container.Detached_Note_Visible) return ContainerType::Note;
  return ContainerType::Shortcuts;
}

bool takesShortcuts(const clsContainer& container) {
  const ContainerType type = containerType(container);
  return type != ContainerType::Feed && type != ContainerType::Folder;
}

std::size_t Workspace::shortcutsOn(Panel panel) const {
  std::size_t n = 0;
  shortcuts.forEach([&](ShortcutSlot, const clsShortcut& s) { n += s.parent == panel ? 1U : 0U; });
  return n;
}

ShortcutSlot Workspace::addShortcut(clsShortcut shortcut, const wchar_t*& refusal) {
  refusal = nullptr;
  const std::size_t limit =
      shortcut.parent.isMain() ? kMaxShortcutsOnMainPanel : kMaxShortcutsInContainer;
  if (shortcutsOn(shortcut.parent) >= limit) {
    refusal = shortcut.parent.isMain() ? kMainPanelFullMessage : kContainerFullMessage;
    return {};
  }
  return shortcuts.add(std::move(shortcut));
}

void Workspace::removeContainer(ContainerSlot slot) {
  const Panel panel{slot};
  shortcuts.forEach([&](ShortcutSlot at, clsShortcut& s) {
    if (s.parent == panel) shortcuts.remove(at);
  });
  pictures.forEach([&](PictureSlot at, clsPicture& p) {
    if (p.parent == panel) pictures.remove(at);
  });
  containers.remove(slot);
}

}  // namespace varnowick
