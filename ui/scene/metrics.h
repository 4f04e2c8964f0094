// The measures of the scene, in twips: bars, cells, gaps. Everything keeps to a
// rhythm of 120 twips, which is 8 pixels at 96 dots per inch.
#pragma once

#include "core/units.h"

namespace varnowick {

inline constexpr Twips kGrid{120};
inline constexpr Twips kPad{120};

inline constexpr Twips kTitleBarHeight{450};
inline constexpr Twips kBottomBarHeight{510};
inline constexpr Twips kToolbarButton{360};
inline constexpr Twips kScrollThumbWidth{75};
inline constexpr Twips kProgressHeight{300};

// A shortcut in the large style with the usual icon of 32 pixels; a bigger icon
// makes a bigger cell.
inline constexpr Size<Twips> kShortcutCell{{1320}, {1050}};
inline constexpr Size<Twips> kSmallShortcutCell{{2700}, {330}};
inline constexpr Twips kSmallIcon{240};

inline constexpr Twips kFoldBoxWidth{345};
inline constexpr Twips kTitleButtonWidth{300};
// The note's box stands this far from the body's edges.
inline constexpr Twips kNoteMargin{60};

// At least this much of everything can be reached with the mouse, wherever a
// file says that it lies.
inline constexpr Twips kReach{350};
// Files may hold any number; beyond this nothing is shown.
inline constexpr Twips kFarthest{150000};

}  // namespace varnowick
