// The workspace: everything the sidebar shows. Records and their slot tables,
// and the limits on them. Knows nothing of windows, files or the screen.
#pragma once

#include <cstddef>
#include <string>

#include "core/slots.h"
#include "core/units.h"

namespace varnowick {

// The panel on which a shortcut or picture lies: the main panel picBack, or a
// container's panel.
struct Panel {
  ContainerSlot container;  // none: the main panel
  constexpr bool operator==(const Panel&) const = default;
  constexpr bool isMain() const { return container.none(); }
};
inline constexpr Panel picBack{};

// Values of clsShortcut::ShortcutType. 1 and 2 are fixed by existing files; 2 is
// the kind whose path can be made relative, which files and folders share.
enum class ShortcutKindCode : int { Other = 0, WebAddress = 1, FileOrFolder = 2, Command = 3 };

struct clsShortcut {
  std::wstring Path;
  std::wstring FullCaption;
  int ShortcutType = static_cast<int>(ShortcutKindCode::FileOrFolder);  // 16-bit range
  std::wstring Parameters;
  bool FontBold = false;
  int Color = -1;       // 0x00BBGGRR; -1: the panel's colour
  float FontSize = 10;  // points; kSmallFontSize or less: the small style
  bool Confirm = false;
  bool Command = false;
  bool TagHidden = false;  // hidden at present by the tag filter; not saved
  bool TagStart = false;
  std::wstring Icon;
  std::wstring Tags;  // separated by commas

  Panel parent;
  Point<Twips> position;  // relative to the parent panel
};

// A shortcut in the small style has a 16-pixel icon with the caption beside it;
// in the large style the caption stands under the icon.
inline constexpr float kSmallFontSize = 8;
inline bool isSmall(const clsShortcut& s) { return s.FontSize <= kSmallFontSize; }

struct clsPicture {
  std::wstring Path;

  Panel parent;
  TwipsRect rect;  // relative to the parent panel
};

struct Reminder {
  bool set = false;
  std::wstring time;
  std::wstring date;
  std::wstring readable;
  bool operator==(const Reminder&) const = default;
};

// A screen edge as the files number it; 0 is none.
enum class ScreenEdge : int { None = 0, Left = 1, Right = 2, Top = 3, Bottom = 4 };

inline constexpr Twips kTitleStripHeight{350};
inline constexpr Size<Twips> kShrunkSize{{700}, {950}};

struct clsContainer {
  std::wstring ShrinkPath;    // icon file of the tile
  std::wstring CopyPath;      // folder containers: the folder; feeds: stands with their address
  bool CloseToEdgeY = false;  // saved as "[Flipped]"
  bool CloseToEdge = false;
  std::wstring tag;
  bool Detached = false;
  bool RSS = false;
  TwipsRect detachedRect;       // screen twips
  TwipsRect detachedLabelRect;  // screen twips
  int DetachedTabDockedWhere = 0;
  bool Detached_Note_Visible = false;
  bool DetachedFolded = false;
  bool DetachedUseTab = false;
  bool DetachedAutoShow = false;
  bool DetachedAutoHide = false;
  bool DetachedCollapseOnClick = false;
  bool DetachedFadeOut = false;
  int AutoRefresh = 0;  // minutes; 0: off
  std::wstring ShowingTag;
  bool HideToolbar = false;
  Reminder reminder;
  int RSSListIndex = -1;

  std::wstring name;  // caption of ContainerLabel
  Colour backColor{};
  Colour foreColor{};
  std::wstring note;  // lines joined by CR LF
  bool noteVisible = false;
  bool folded = false;
  bool shrunk = false;
  bool visible = true;  // false while being deleted: not saved

  // The unfolded, unshrunk layout. Only position moves while folded or shrunk.
  TwipsRect savedRect;
  // Where the box stands now, in whatever state it is.
  TwipsRect rect;

  void SetSize(Twips width, Twips height) {
    savedRect.width = width;
    savedRect.height = height;
  }
  // Each component that is passed as -1 keeps its value.
  void SetRect(Twips left, Twips top, Twips height, Twips width) {
    assign(savedRect, left, top, height, width);
  }
  void SetDetachedSize(Twips x, Twips y, Twips width, Twips height) {
    assign(detachedRect, x, y, height, width);
  }
  void SetDetachedLabelPos(Twips x, Twips y, Twips width, Twips height) {
    assign(detachedLabelRect, x, y, height, width);
  }

 private:
  static void assign(TwipsRect& r, Twips left, Twips top, Twips height, Twips width) {
    constexpr Twips keep{-1};
    if (left != keep) r.left = left;
    if (top != keep) r.top = top;
    if (height != keep) r.height = height;
    if (width != keep) r.width = width;
  }
};

enum class ContainerType { Shortcuts, Feed, Folder, Note, Reminder };
// A feed wins over a folder, a folder over a reminder, a reminder over a note.
ContainerType containerType(const clsContainer& container);
// Feeds and folders show a list of their own in the place of shortcuts. Those that a
// file holds are kept.
bool takesShortcuts(const clsContainer& container);

inline constexpr std::size_t kMaxShortcutsInContainer = 250;
inline constexpr std::size_t kMaxShortcutsOnMainPanel = 350;
inline constexpr const wchar_t* kContainerFullMessage =
    L"There's a limit of 250 shortcuts pair container (much less is recommended!)";
inline constexpr const wchar_t* kListContainerMessage =
    L"This container shows a list of its own. Please use the workspace or another container.";
inline constexpr const wchar_t* kMainPanelFullMessage =
    L"There's a limit of 350 shortcuts in the workspace. Please use containers instead.";

struct Workspace {
  SlotTable<clsPicture, PictureSlot> pictures;
  SlotTable<clsShortcut, ShortcutSlot> shortcuts;
  SlotTable<clsContainer, ContainerSlot> containers;

  std::size_t shortcutsOn(Panel panel) const;
  // Adds the shortcut to its parent panel. When the panel is full nothing is
  // added, the result is none and refusal holds the message to show.
  ShortcutSlot addShortcut(clsShortcut shortcut, const wchar_t*& refusal);
  // Removes the container with the shortcuts and pictures that lie in it.
  void removeContainer(ContainerSlot slot);
};

}  // namespace varnowick
