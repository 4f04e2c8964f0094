// The commands of the main window as one table: identifier, caption, key, when
// enabled, whether built. Menus are rows of depth and command over that table.
// What a command does is bound by the window, not here.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/key.h"

namespace varnowick {

enum class Command : int {
  None,
  // Adding
  mnuNewFolderLink,
  mnuAddRSS,
  mnuAddLink,
  mnuAddFileLink,
  mnuAddFolderLink,
  mnuAddPicture,
  mnuAddReminder,
  mnuNew,
  mnuNewNote,
  mnuNewCommand,
  // Editing
  mnuPaste,
  mnuSelectAll,
  mnuUnselectAll,
  mnuUndo,
  mnuRedo,
  mnuDeleteSelected,
  mnuAlign,
  mnuAlignSelected,
  mnuSortByName,
  mnuLock,
  // Shortcuts
  mnuShortcutProperties,
  mnuStartSelected,
  mnuStartAll,
  mnuStartAllWTag,
  mnuOpenFileLocation,
  mnuUseRelativePath,
  mnuRefreshShortcuts,
  // Containers
  mnuConRename,
  mnuShowNote,
  mnuConColors,
  mnuConIcon,
  mnuHideToolbar,
  mnuDetachContainer,
  mnuConRemove,
  mnuShrinkAll,
  mnuFoldAll,
  mnuAttach,
  mnuAttachAll,
  mnuShowDetached,
  mnuContainerLibrary,
  // Feeds
  mnuRSSSearch,
  mnuRSSRefresh,
  mnuRSSRefreshAll,
  mnuRSSViewer,
  // The bar
  mnuDockLeft,
  mnuDockRight,
  mnuDockTop,
  mnuDockBottom,
  mnuDockNow,
  mnuSuspendSlideOut,
  mnuTranslucent,
  // The program
  mnuProgramAppearance,
  mnuProgramSettings,
  mnuLoadDefaults,
  mnuRestart,
  mnuSave,
  mnuTips,
  mnuCheckForUpdate,
  mnuAbout,
  mnuExitMainWin,
  Count
};

struct CommandState {
  bool locked = false;
  bool suspended = false;  // auto-collapse
  bool translucent = false;
  bool align = false;
  bool anythingSelected = false;
  bool shortcutSelected = false;
  bool shortcutMeant = false;      // by keys: selected, else in focus
  bool containerSelected = false;  // or the menu is a container's
  bool noteShown = false;          // of that container
  bool toolbarHidden = false;
  bool pictureSelected = false;
  bool anyDetached = false;     // containers in windows of their own
  bool detachedHidden = false;  // one of those windows
  bool canUndo = false;
  bool canRedo = false;
  bool canPaste = false;
  bool anyObjects = false;     // in the window
  bool anyContainers = false;  // on the bar
  bool anyShortcuts = false;   // on the panel that the menu is about
  bool barOut = true;          // not collapsed already
};

// What a command needs to do anything, added together.
enum Needs : unsigned {
  kNeedsNothing = 0,
  kNeedsSelection = 1,
  kNeedsShortcut = 2,
  kNeedsContainer = 4,
  kNeedsContainerOrPicture = 8,
  kNeedsDetached = 16,
  kNeedsHidden = 32,
  kNeedsUndo = 64,
  kNeedsClipboard = 128,
  kNeedsObjects = 256,
  kNeedsContainers = 512,
  kNeedsShortcutsHere = 1024,
  kNeedsBarOut = 2048,
  kNeedsUnlocked = 4096,
  kNeedsShortcutMeant = 8192,
  kNeedsProperties = 16384,  // of a shortcut, a picture or a container
  kNeedsRedo = 32768
};

struct CommandRow {
  Command id;
  const wchar_t* name;     // the identifier as text
  const wchar_t* caption;  // as menus show it
  Key key;
  unsigned needs = kNeedsNothing;
  bool built = false;             // false: neither shown nor reached by its key
  bool CommandState::*checked{};  // check items: what the mark shows
};

const CommandRow& commandRow(Command command);
std::span<const CommandRow> commandRows();  // without None, in the order of the ids
// The command behind a key, built or not; None when there is none.
Command commandForKey(Key key);
bool isEnabled(Command command, const CommandState& state);
// The lock alone keeps it from running: whoever asks for it by key is told so.
bool isLockedAway(Command command, CommandState state);

// "Ctrl+K", "F8"; empty for no key.
std::wstring keyText(Key key);

// Settings and Add are the menus of the buttons at the bottom of the bar.
enum class MenuId { Main, Add, Settings, Shortcut, Container };

struct MenuRow {
  int depth = 0;  // a deeper row belongs to the nearest shallower one above it
  Command command = Command::None;
  const wchar_t* caption = nullptr;  // of the head of a submenu; null in a command's row
  constexpr bool isSeparator() const { return command == Command::None && caption == nullptr; }
  constexpr bool isHead() const { return command == Command::None && caption != nullptr; }
};

// Every row, whether built or not.
std::span<const MenuRow> menuRows(MenuId menu);

struct ShownMenuRow {
  int depth = 0;
  Command command = Command::None;  // None: a separator or the head of a submenu
  std::wstring caption{};           // empty: a separator
  std::wstring key{};
  bool checked = false;
  bool enabled = true;
  bool operator==(const ShownMenuRow&) const = default;
};

// What the menu shows now: without commands that are not built, submenus that
// have become empty, and separators with nothing to separate.
std::vector<ShownMenuRow> shownMenu(MenuId menu, const CommandState& state);

}  // namespace varnowick
