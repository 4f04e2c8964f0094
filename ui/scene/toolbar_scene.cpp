#include "ui/scene/toolbar_scene.h"

#include <array>

namespace varnowick {
namespace {

struct Row {
  ControlKind kind;
  Command command;
  const wchar_t* asset;
  const wchar_t* name;
};
// Lock and unlock share a place.
constexpr std::array<Row, 6> kRows{{
    {ControlKind::PicShrinkExpandAllToolbar, Command::mnuShrinkAll, L"shrinkall",
     L"Shrink/Expand All"},
    {ControlKind::PicFoldUnfoldAllToolbar, Command::mnuFoldAll, L"foldall", L"Fold/Unfold All"},
    {ControlKind::PicRSSToolbar, Command::mnuRSSRefreshAll, L"rss", L"Refresh All Feeds"},
    {ControlKind::PicLockToolbar, Command::mnuLock, L"lock", L"Lock"},
    {ControlKind::PicUnlockToolbar, Command::mnuLock, L"unlock", L"Unlock"},
    {ControlKind::PicDockToolbar, Command::mnuDockNow, L"dock", L"Dock Now"},
}};

// Larger than those on the bar: the mouse comes from afar.
constexpr Twips kButton{510};
constexpr Twips kEdge{45};
constexpr Twips kFrame{15};  // of the window, round the ground

}  // namespace

Size<Twips> buildToolbar(Scene& scene, const ToolbarLayout& layout) {
  const NodeId ground{ControlKind::TitleBar, 0};
  scene.create(ground, scene.root());
  Twips along = kEdge - kFrame;
  for (const Row& row : kRows) {
    Node& button = scene.create({row.kind, 0}, ground);
    const Twips x = layout.column ? kEdge - kFrame : along;
    const Twips y = layout.column ? along : kEdge - kFrame;
    button.rect = {x, y, kButton, kButton};
    button.text = row.name;
    button.image = {};
    if (layout.buttonImages) button.image = {ImageRef::Source::Asset, row.asset};
    if (row.kind == ControlKind::PicLockToolbar) {
      button.visible = !layout.locked;
      continue;
    }
    if (row.kind == ControlKind::PicUnlockToolbar) button.visible = layout.locked;
    along += kButton;
  }
  const Twips across = kButton + kEdge + kEdge;
  const Size<Twips> size = layout.column ? Size<Twips>{across, along + kFrame + kEdge}
                                         : Size<Twips>{along + kFrame + kEdge, across};
  scene.find(scene.root())->rect = {{}, {}, size.width, size.height};
  scene.find(ground)->rect = {kFrame, kFrame, size.width - kFrame * 2, size.height - kFrame * 2};
  return size;
}

Command toolbarCommand(ControlKind kind) {
  for (const Row& row : kRows)
    if (row.kind == kind) return row.command;
  return Command::None;
}

}  // namespace varnowick
