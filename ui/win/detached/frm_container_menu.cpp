// The menu of a detached container: its own rows, then those of every container.

#include <algorithm>

#include "platform/msg_box.h"
#include "ui/win/detached/frm_container.h"

namespace varnowick {
namespace {

// Rows of the container's menu on the bar that the window has its own of.
bool isReplaced(Command command) {
  return command == Command::mnuDetachContainer || command == Command::mnuConRemove;
}

// Takes the submenu of that caption, and the separator before it, out of the rows.
std::vector<MenuItem> takeSubmenu(std::vector<MenuItem>& items, const std::wstring& caption) {
  auto from = std::find_if(items.begin(), items.end(),
                           [&](const MenuItem& i) { return i.caption == caption; });
  if (from == items.end()) return {};
  auto to = std::find_if(from + 1, items.end(),
                         [&](const MenuItem& i) { return i.depth <= from->depth; });
  std::vector<MenuItem> taken(from, to);
  items.erase(from, to);
  return taken;
}

void tidySeparators(std::vector<MenuItem>& items) {
  const auto isSeparator = [](const MenuItem& i) { return i.caption.empty(); };
  items.erase(std::unique(items.begin(), items.end(),
                          [&](const MenuItem& a, const MenuItem& b) {
                            return isSeparator(a) && isSeparator(b);
                          }),
              items.end());
  if (!items.empty() && isSeparator(items.back())) items.pop_back();
}

}  // namespace

bool frmContainer::ownMenu(NodeId, POINT screen) {
  showOwnMenu(screen);
  return true;
}

void frmContainer::showOwnMenu(const MenuPlace& place) {
  tooltip_.hide();
  const HWND before = GetForegroundWindow();
  pane_.showMenu(MenuId::Container, place, slot_);
  // The menu of a tab takes the keyboard to a window that nobody sees.
  if (rules_.hidden() && GetForegroundWindow() == handle() && IsWindow(before))
    SetForegroundWindow(before);
}

void frmContainer::completeMenu(MenuId menu, std::vector<MenuItem>& items) {
  const clsContainer* c = record();
  if (menu != MenuId::Container || c == nullptr) return;
  const bool shown = !rules_.hidden();
  const std::vector<MenuItem> tags =
      takeSubmenu(items, commandRow(Command::mnuStartAllWTag).caption);
  std::vector<MenuItem> own;
  for (const ShownDetachedRow& row :
       shownDetachedMenu(*c, {.shortcutSelected = pane_.commandState().shortcutSelected,
                             .locked = desk_.settings.locked,
                             .shown = shown})) {
    if (row.item == DetachedItem::mnuStartAllWTag && !tags.empty()) {
      own.insert(own.end(), tags.begin(), tags.end());
      continue;
    }
    const bool head = row.item == DetachedItem::mnuShowAndHide ||
                      row.item == DetachedItem::mnuTabEdge ||
                      row.item == DetachedItem::mnuStartAllWTag;
    own.push_back({.depth = row.depth,
                   .caption = row.caption,
                   .checked = row.checked,
                   .enabled = row.enabled && row.item != DetachedItem::mnuStartAllWTag});
    if (!row.caption.empty() && !head) own.back().act = [this, item = row.item] { runItem(item); };
  }
  std::erase_if(items, [](const MenuItem& i) { return isReplaced(i.command); });
  // About what lies in a window that cannot be seen there is nothing to be done.
  if (!shown) items.clear();
  // Before the last row, which stands apart.
  items.insert(items.begin(), MenuItem{});
  own.insert(own.end() - 2, items.begin(), items.end());
  items = std::move(own);
  tidySeparators(items);
}

void frmContainer::runItem(DetachedItem item) {
  clsContainer* c = record();
  if (c == nullptr || gone_) return;
  switch (item) {
    case DetachedItem::mnuStartSelected:
      return pane_.run(Command::mnuStartSelected);
    case DetachedItem::mnuDockMe:
      return DockMe();
    case DetachedItem::mnuAttach:
      return AttachMe();
    case DetachedItem::mnuCloseAndDelete:
      if (pane_.refuseWhileLocked()) return;
      if (confirmCloseAndDelete(desk_.settings, desk_.platform.msgBox))
        host_.deleteContainer(slot_);
      return host_.workspaceChanged();
    default:
      switch (changeDetached(item, *c, desk_.settings, desk_.platform.msgBox)) {
        case DetachedChange::None:
          return;
        case DetachedChange::Settings:
          applyRecord();
          return host_.changeSettings([](Settings& s) { s.animate = true; });
        case DetachedChange::Record:
          applyRecord();
          return host_.workspaceChanged();
      }
  }
}

void frmContainer::applyRecord() {
  decide([this](const DetachedInputs& in) { return rules_.recordChanged(in); });
  decide([this](const DetachedInputs& in) { return rules_.systemChanged(in); });
}

}  // namespace varnowick
