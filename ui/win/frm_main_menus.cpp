// The menus of the main window: rows from the tables, and the tags of a container.

#include "shortcuts/paths.h"
#include "shortcuts/tags.h"
#include "ui/win/frm_main.h"

namespace varnowick {
namespace {

// Commands of menu rows that the tables do not have: tags, by their place in the
// list of the container's tags.
constexpr int kStartTag = 10'000;
constexpr int kShowTag = 20'000;
constexpr std::size_t kMostTagRows = 60;

// A tag may hold what menus take for a mnemonic or a key.
std::wstring menuText(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t c : text) result += c == L'&' ? L"&&" : std::wstring(1, c == L'\t' ? L' ' : c);
  return result;
}

}  // namespace

CommandState frmMain::commandState() const {
  CommandState state;
  state.locked = document_.settings.locked;
  state.suspended = docking_.rules().suspended();
  state.translucent = document_.settings.translucent;
  state.align = document_.settings.align;
  state.shortcutSelected = anythingSelected();
  state.canUndo = editor_.canUndo() && !document_.settings.locked;
  return state;
}

void frmMain::addTagMenus(std::vector<MenuItem>& items, std::vector<std::wstring>& tags) const {
  const clsContainer* container = document_.workspace.containers.find(menuContainer_);
  if (container == nullptr || !document_.settings.showTags) return;
  tags = allTags(document_.workspace, Panel{menuContainer_});
  if (tags.size() > kMostTagRows) tags.resize(kMostTagRows);
  if (tags.empty()) return;
  items.push_back({});
  items.push_back({.depth = 0, .caption = commandRow(Command::mnuStartAllWTag).caption});
  for (std::size_t i = 0; i < tags.size(); ++i)
    items.push_back(
        {.depth = 1, .command = kStartTag + static_cast<int>(i), .caption = menuText(tags[i])});
  items.push_back({.depth = 0, .caption = L"S&how tag"});
  items.push_back({.depth = 1,
                   .command = kShowTag,
                   .caption = L"&All",
                   .checked = container->ShowingTag.empty()});
  for (std::size_t i = 0; i < tags.size(); ++i)
    items.push_back({.depth = 1,
                     .command = kShowTag + 1 + static_cast<int>(i),
                     .caption = menuText(tags[i]),
                     .checked = sameIgnoringCase(container->ShowingTag, tags[i])});
}

void frmMain::showMenu(MenuId menu, POINT screen) {
  if (busyElsewhere()) return;
  if (menu != MenuId::Container) menuContainer_ = {};
  std::vector<MenuItem> items;
  std::vector<std::wstring> tags;
  for (const ShownMenuRow& row : shownMenu(menu, commandState())) {
    items.push_back(
        {row.depth, static_cast<int>(row.command), row.caption, row.key, row.checked, row.enabled});
    if (row.command == Command::mnuStartAll)
      items.back().caption = startAllCaption(document_.workspace, menuContainer_);
  }
  if (menu == MenuId::Container) addTagMenus(items, tags);
  if (items.empty()) return;
  int chosen = 0;
  {
    const ModalDepth::Scope scope(modal_);
    announce(handle(), kEventMenuOpened);
    chosen = showPopupMenu(handle(), items, screen);
    announce(handle(), kEventMenuClosed);
  }
  if (chosen > kShowTag)
    setTagFilter(menuContainer_, tags[static_cast<std::size_t>(chosen - kShowTag - 1)]);
  else if (chosen == kShowTag)
    setTagFilter(menuContainer_, L"");
  else if (chosen >= kStartTag)
    startMany([&](StartMany& start) {
      StartByTag(start, tags[static_cast<std::size_t>(chosen - kStartTag)]);
    });
  else if (chosen != 0)
    run(static_cast<Command>(chosen));
}

}  // namespace varnowick
