// The scene of the floating toolbar: the buttons of the bar's own toolbar, in the
// same order, on a window of their own. Knows no window.
#pragma once

#include <array>

#include "ui/commands/commands.h"
#include "ui/scene/scene.h"

namespace varnowick {

struct ToolbarButton {
  ControlKind kind;
  Command command;
  const wchar_t* asset;
  const wchar_t* name;
};
// The buttons of both toolbars in their order. Lock and unlock share a place.
inline constexpr std::array<ToolbarButton, 6> kToolbarButtons{{
    {ControlKind::PicShrinkExpandAllToolbar, Command::mnuShrinkAll, L"shrinkall",
     L"Shrink/Expand All"},
    {ControlKind::PicFoldUnfoldAllToolbar, Command::mnuFoldAll, L"foldall", L"Fold/Unfold All"},
    {ControlKind::PicRSSToolbar, Command::mnuRSSRefreshAll, L"rss", L"Refresh All Feeds"},
    {ControlKind::PicLockToolbar, Command::mnuLock, L"lock", L"Lock"},
    {ControlKind::PicUnlockToolbar, Command::mnuLock, L"unlock", L"Unlock"},
    {ControlKind::PicDockToolbar, Command::mnuDockNow, L"dock", L"Dock Now"},
}};
struct ToolbarLook {
  bool locked = false;
  bool buttonImages = false;           // as in FrameLayout
  ScreenEdge edge = ScreenEdge::None;  // that the bar stands at
};
// Gives the node the button's text, image and state; whether it takes up a place,
// which the hidden one of lock and unlock does not.
bool dressToolbarButton(Node& node, const ToolbarButton& button, const ToolbarLook& look);

struct ToolbarLayout {
  bool column = true;  // else a row
  ToolbarLook look{};
};

// Lays the buttons out, and gives the size of the window.
Size<Twips> buildToolbar(Scene& scene, const ToolbarLayout& layout);
// The command behind a button of a toolbar; None for other kinds.
Command toolbarCommand(ControlKind kind);

}  // namespace varnowick
