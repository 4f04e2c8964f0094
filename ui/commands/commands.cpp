#include "ui/commands/commands.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace varnowick {
namespace {

constexpr int kF1 = 112;
constexpr Key ctrl(char letter) { return {letter, kCtrl}; }
constexpr Key function(int number, Modifiers held = {}) { return {kF1 + number - 1, held}; }
constexpr Key kNoKey{};
constexpr int kDeleteKey = 46;

#define VARNOWICK_COMMAND(id) Command::id, L## #id

constexpr bool kBuilt = true;

constexpr unsigned kAlways = kNeedsNothing;
constexpr unsigned kEditing = kNeedsUnlocked;
constexpr unsigned kContainer = kNeedsContainer;

constexpr std::array kCommands{
    CommandRow{VARNOWICK_COMMAND(mnuNewFolderLink), L"Fo&lder container", ctrl('K'), kEditing,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAddRSS), L"R&SS News Feed", ctrl('E')},
    CommandRow{VARNOWICK_COMMAND(mnuAddLink), L"&Web URL", ctrl('W'), kEditing, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAddFileLink), L"&File shortcut", ctrl('F'), kEditing, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAddFolderLink), L"&Directory shortcut", ctrl('D'), kEditing,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAddPicture), L"&Picture", ctrl('P'), kEditing, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAddReminder), L"&Reminder", ctrl('R')},
    // Ctrl+C deliberately begins a container; it does not copy.
    CommandRow{VARNOWICK_COMMAND(mnuNew), L"&Container", ctrl('C'), kEditing, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuNewNote), L"&Note", ctrl('N'), kEditing, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuNewCommand), L"&System command", ctrl('O'), kEditing, kBuilt},

    CommandRow{VARNOWICK_COMMAND(mnuPaste), L"Past&e", ctrl('V'), kEditing | kNeedsClipboard,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuSelectAll), L"&Select all", ctrl('A'), kNeedsObjects, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuUnselectAll), L"&Unselect all", ctrl('U'), kNeedsSelection,
               kBuilt},
    // The window adds what would be undone.
    CommandRow{VARNOWICK_COMMAND(mnuUndo), L"Und&o", ctrl('Z'), kEditing | kNeedsUndo, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuRedo), L"&Redo", ctrl('Y'), kEditing | kNeedsRedo, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuDeleteSelected), L"&Delete", Key{kDeleteKey},
               kEditing | kNeedsSelection, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAlign), L"Align to &grid", kNoKey, kAlways, kBuilt,
               &CommandState::align},
    CommandRow{VARNOWICK_COMMAND(mnuAlignSelected), L"Align se&lected to grid", kNoKey,
               kEditing | kNeedsSelection, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuSortByName), L"Sort b&y name", kNoKey,
               kEditing | kNeedsShortcutsHere, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuLock), L"Lock editing", ctrl('L'), kAlways, kBuilt,
               &CommandState::locked},

    CommandRow{VARNOWICK_COMMAND(mnuShortcutProperties), L"&Properties", function(2),
               kEditing | kNeedsProperties, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuStartSelected), L"Sta&rt selected", kNoKey, kNeedsShortcut,
               kBuilt},
    // The window puts startAllCaption in place of the caption.
    CommandRow{VARNOWICK_COMMAND(mnuStartAll), L"&Start all", kNoKey, kNeedsShortcutsHere, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuStartAllWTag), L"&Tag start", kNoKey},
    CommandRow{VARNOWICK_COMMAND(mnuOpenFileLocation), L"Open file &location", kNoKey,
               kNeedsShortcutMeant, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuUseRelativePath), L"&Use a relative path", kNoKey,
               kEditing | kNeedsShortcut, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuRefreshShortcuts), L"Refresh &icons", function(5, kShift),
               kAlways, kBuilt},

    CommandRow{VARNOWICK_COMMAND(mnuConRename), L"Re&name", kNoKey, kEditing | kContainer, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuShowNote), L"Sh&ow note", kNoKey, kContainer, kBuilt,
               &CommandState::noteShown},
    CommandRow{VARNOWICK_COMMAND(mnuConColors), L"Co&lours...", kNoKey, kEditing | kContainer,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuConIcon), L"Change &icon...", kNoKey, kEditing | kContainer,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuHideToolbar), L"Hide tool&bar", kNoKey, kContainer, kBuilt,
               &CommandState::toolbarHidden},
    // Pictures cannot be detached; the command says so.
    CommandRow{VARNOWICK_COMMAND(mnuDetachContainer), L"&Detach", kNoKey, kNeedsContainerOrPicture,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuConRemove), L"&Remove containers", kNoKey,
               kEditing | kContainer, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuShrinkAll), L"S&hrink/Expand All", function(1, kCtrl),
               kNeedsContainers, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuFoldAll), L"&Fold/Unfold All", function(2, kCtrl),
               kNeedsContainers, kBuilt},
    // The window makes it a submenu of the detached containers.
    CommandRow{VARNOWICK_COMMAND(mnuAttach), L"A&ttach...", kNoKey, kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuAttachAll), L"&Attach all", function(3, kCtrl), kNeedsDetached,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuShowDetached), L"Sho&w hidden", kNoKey, kNeedsHidden, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuContainerLibrary), L"Container &Library...", function(6)},

    CommandRow{VARNOWICK_COMMAND(mnuRSSSearch), L"&Search...", ctrl('S')},
    CommandRow{VARNOWICK_COMMAND(mnuRSSRefresh), L"Refresh &feed", function(5)},
    CommandRow{VARNOWICK_COMMAND(mnuRSSRefreshAll), L"&Refresh all", function(11)},
    CommandRow{VARNOWICK_COMMAND(mnuRSSViewer), L"&Viewer", function(12)},

    CommandRow{VARNOWICK_COMMAND(mnuDockLeft), L"&Left", kNoKey, kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuDockRight), L"&Right", kNoKey, kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuDockTop), L"&Top", kNoKey, kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuDockBottom), L"&Bottom", kNoKey, kAlways, kBuilt},
    // Its caption names the key, which also has other duties: keys.cpp.
    CommandRow{VARNOWICK_COMMAND(mnuDockNow), L"&Collapse now (Esc)", kNoKey, kNeedsBarOut, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuSuspendSlideOut), L"Suspend auto-collapse", kNoKey, kAlways,
               kBuilt, &CommandState::suspended},
    CommandRow{VARNOWICK_COMMAND(mnuTranslucent), L"Trans&parency", function(9), kAlways, kBuilt,
               &CommandState::translucent},

    CommandRow{VARNOWICK_COMMAND(mnuProgramAppearance), L"&Appearance", function(4)},
    CommandRow{VARNOWICK_COMMAND(mnuProgramSettings), L"&Settings", function(3)},
    CommandRow{VARNOWICK_COMMAND(mnuLoadDefaults), L"Load &default settings", kNoKey, kAlways,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuRestart), L"&Restart without recent changes", kNoKey, kAlways,
               kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuSave), L"&Save workspace", function(8), kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuTips), L"Online &help", function(1)},
    CommandRow{VARNOWICK_COMMAND(mnuCheckForUpdate), L"Check for &update", kNoKey},
    CommandRow{VARNOWICK_COMMAND(mnuAbout), L"&About", kNoKey, kAlways, kBuilt},
    CommandRow{VARNOWICK_COMMAND(mnuExitMainWin), L"E&xit", function(4, kAlt), kAlways, kBuilt},
};
#undef VARNOWICK_COMMAND

consteval bool commandsStandAtTheirIds() {
  if (kCommands.size() + 1 != static_cast<std::size_t>(Command::Count)) return false;
  for (std::size_t i = 0; i < kCommands.size(); ++i)
    if (static_cast<std::size_t>(kCommands[i].id) != i + 1) return false;
  return true;
}
static_assert(commandsStandAtTheirIds());

consteval bool commandsAreUnique() {
  for (std::size_t i = 0; i < kCommands.size(); ++i)
    for (std::size_t k = 0; k < i; ++k) {
      if (std::wstring_view(kCommands[i].name) == kCommands[k].name) return false;
      if (kCommands[i].key.code != 0 && kCommands[i].key == kCommands[k].key) return false;
    }
  return true;
}
static_assert(commandsAreUnique(), "two commands share a name or a key");

constexpr const CommandRow& row(Command command) {
  return kCommands[static_cast<std::size_t>(command) - 1];
}

constexpr MenuRow head(int depth, const wchar_t* caption) {
  return {depth, Command::None, caption};
}
constexpr MenuRow item(int depth, Command command) { return {depth, command, nullptr}; }
constexpr MenuRow separator(int depth) { return {depth, Command::None, nullptr}; }

constexpr std::array kMainMenu{
    head(0, L"A&dd"),
    item(1, Command::mnuAddLink),
    item(1, Command::mnuAddFileLink),
    item(1, Command::mnuAddFolderLink),
    item(1, Command::mnuNewCommand),
    item(1, Command::mnuAddPicture),
    separator(1),
    item(1, Command::mnuNew),
    item(1, Command::mnuNewFolderLink),
    item(1, Command::mnuAddRSS),
    item(1, Command::mnuNewNote),
    item(1, Command::mnuAddReminder),
    head(0, L"&Edit"),
    item(1, Command::mnuPaste),
    item(1, Command::mnuUndo),
    item(1, Command::mnuRedo),
    item(1, Command::mnuDeleteSelected),
    separator(1),
    item(1, Command::mnuSelectAll),
    item(1, Command::mnuUnselectAll),
    separator(1),
    item(1, Command::mnuAlign),
    item(1, Command::mnuAlignSelected),
    item(1, Command::mnuSortByName),
    item(1, Command::mnuRefreshShortcuts),
    head(0, L"&Containers"),
    item(1, Command::mnuFoldAll),
    item(1, Command::mnuShrinkAll),
    separator(1),
    item(1, Command::mnuDetachContainer),
    item(1, Command::mnuAttach),
    item(1, Command::mnuAttachAll),
    item(1, Command::mnuShowDetached),
    item(1, Command::mnuConRemove),
    separator(1),
    item(1, Command::mnuContainerLibrary),
    head(0, L"&RSS"),
    item(1, Command::mnuRSSRefreshAll),
    item(1, Command::mnuRSSSearch),
    item(1, Command::mnuRSSViewer),
    separator(0),
    head(0, L"Doc&k"),
    item(1, Command::mnuDockLeft),
    item(1, Command::mnuDockRight),
    item(1, Command::mnuDockTop),
    item(1, Command::mnuDockBottom),
    separator(1),
    item(1, Command::mnuDockNow),
    item(0, Command::mnuSuspendSlideOut),
    item(0, Command::mnuLock),
    item(0, Command::mnuTranslucent),
    separator(0),
    head(0, L"Se&ttings"),
    item(1, Command::mnuProgramSettings),
    item(1, Command::mnuProgramAppearance),
    separator(1),
    item(1, Command::mnuLoadDefaults),
    item(1, Command::mnuRestart),
    item(0, Command::mnuSave),
    separator(0),
    item(0, Command::mnuTips),
    item(0, Command::mnuCheckForUpdate),
    item(0, Command::mnuAbout),
    item(0, Command::mnuExitMainWin),
};

constexpr std::array kShortcutMenu{
    item(0, Command::mnuStartSelected),      item(0, Command::mnuOpenFileLocation), separator(0),
    item(0, Command::mnuUseRelativePath),    item(0, Command::mnuDeleteSelected),   separator(0),
    item(0, Command::mnuShortcutProperties),
};

// Submenus of tags stand below it; the window adds them.
constexpr std::array kContainerMenu{
    item(0, Command::mnuStartAll),
    item(0, Command::mnuSortByName),
    item(0, Command::mnuPaste),
    item(0, Command::mnuAddPicture),
    separator(0),
    item(0, Command::mnuConRename),
    item(0, Command::mnuShowNote),
    item(0, Command::mnuConColors),
    item(0, Command::mnuConIcon),
    item(0, Command::mnuHideToolbar),
    separator(0),
    item(0, Command::mnuDetachContainer),
    item(0, Command::mnuConRemove),
};

// The rows below a head, in their own right: the menus of buttons.
constexpr std::span<const MenuRow> below(std::wstring_view caption) {
  std::size_t from = 0;
  while (!kMainMenu[from].isHead() || caption != kMainMenu[from].caption) ++from;
  std::size_t to = ++from;
  while (to < kMainMenu.size() && kMainMenu[to].depth > 0) ++to;
  return std::span(kMainMenu).subspan(from, to - from);
}

constexpr std::wstring_view captionOf(const MenuRow& r) {
  if (r.isHead()) return r.caption;
  return r.command == Command::None ? std::wstring_view{} : row(r.command).caption;
}

// No menu holds the same caption twice among rows that are shown together.
consteval bool captionsAreUnique(std::span<const MenuRow> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t k = i + 1; k < rows.size() && rows[k].depth >= rows[i].depth; ++k)
      if (rows[k].depth == rows[i].depth && !rows[i].isSeparator() &&
          captionOf(rows[i]) == captionOf(rows[k]))
        return false;
  return true;
}
static_assert(captionsAreUnique(kMainMenu) && captionsAreUnique(kShortcutMenu) &&
              captionsAreUnique(kContainerMenu));
static_assert(!below(L"A&dd").empty() && !below(L"Se&ttings").empty());

bool isShown(std::span<const MenuRow> rows, std::size_t at) {
  const MenuRow& r = rows[at];
  if (r.isSeparator()) return true;
  if (!r.isHead()) return row(r.command).built;
  for (std::size_t i = at + 1; i < rows.size() && rows[i].depth > r.depth; ++i)
    if (!rows[i].isSeparator() && isShown(rows, i)) return true;
  return false;
}

}  // namespace

const CommandRow& commandRow(Command command) { return row(command); }
std::span<const CommandRow> commandRows() { return kCommands; }

Command commandForKey(Key key) {
  if (key.code == 0) return Command::None;
  const auto found = std::find_if(kCommands.begin(), kCommands.end(),
                                  [key](const CommandRow& r) { return r.key == key; });
  return found == kCommands.end() ? Command::None : found->id;
}

bool isEnabled(Command command, const CommandState& state) {
  if (command == Command::None) return false;
  const std::array<std::pair<unsigned, bool>, 16> met{{
      {kNeedsSelection, state.anythingSelected},
      {kNeedsShortcut, state.shortcutSelected},
      {kNeedsShortcutMeant, state.shortcutMeant},
      {kNeedsProperties, state.shortcutMeant || state.containerSelected || state.pictureSelected},
      {kNeedsContainer, state.containerSelected},
      {kNeedsContainerOrPicture, state.containerSelected || state.pictureSelected},
      {kNeedsDetached, state.anyDetached},
      {kNeedsHidden, state.detachedHidden},
      {kNeedsUndo, state.canUndo},
      {kNeedsRedo, state.canRedo},
      {kNeedsClipboard, state.canPaste},
      {kNeedsObjects, state.anyObjects},
      {kNeedsContainers, state.anyContainers},
      {kNeedsShortcutsHere, state.anyShortcuts},
      {kNeedsBarOut, state.barOut},
      {kNeedsUnlocked, !state.locked},
  }};
  const unsigned needs = row(command).needs;
  return std::all_of(met.begin(), met.end(),
                     [needs](const auto& m) { return (needs & m.first) == 0 || m.second; });
}

bool isLockedAway(Command command, CommandState state) {
  if (!state.locked || isEnabled(command, state)) return false;
  state.locked = false;
  return isEnabled(command, state);
}

std::wstring keyText(Key key) {
  if (key.code == 0) return {};
  std::wstring text;
  if (key.held.ctrl) text += L"Ctrl+";
  if (key.held.alt) text += L"Alt+";
  if (key.held.shift) text += L"Shift+";
  if (key.code >= kF1 && key.code < kF1 + 12)
    return text + L"F" + std::to_wstring(key.code - kF1 + 1);
  if (key.code == kDeleteKey) return text + L"Del";
  return text + static_cast<wchar_t>(key.code);
}

std::span<const MenuRow> menuRows(MenuId menu) {
  switch (menu) {
    case MenuId::Add:
      return below(L"A&dd");
    case MenuId::Settings:
      return below(L"Se&ttings");
    case MenuId::Shortcut:
      return kShortcutMenu;
    case MenuId::Container:
      return kContainerMenu;
    default:
      return kMainMenu;
  }
}

std::vector<ShownMenuRow> shownMenu(MenuId menu, const CommandState& state) {
  const std::span<const MenuRow> rows = menuRows(menu);
  std::vector<ShownMenuRow> shown;
  const int base = rows.empty() ? 0 : rows.front().depth;
  // A separator waits until something follows it in its own menu.
  bool separatorWaits = false;
  int separatorDepth = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const MenuRow& r = rows[i];
    if (!isShown(rows, i)) continue;
    const int depth = r.depth - base;
    if (separatorWaits && depth < separatorDepth) separatorWaits = false;
    if (r.isSeparator()) {
      const bool first = shown.empty() || shown.back().depth < depth;
      separatorWaits = separatorWaits || !first;
      separatorDepth = depth;
      continue;
    }
    if (separatorWaits) shown.push_back({.depth = separatorDepth});
    separatorWaits = false;
    if (r.isHead()) {
      shown.push_back({.depth = depth, .command = Command::None, .caption = r.caption});
      continue;
    }
    const CommandRow& c = row(r.command);
    shown.push_back({.depth = depth,
                     .command = c.id,
                     .caption = c.caption,
                     .key = keyText(c.key),
                     .checked = c.checked != nullptr && state.*c.checked,
                     .enabled = isEnabled(c.id, state)});
  }
  return shown;
}

}  // namespace varnowick
