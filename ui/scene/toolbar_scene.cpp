#include "ui/scene/toolbar_scene.h"

namespace varnowick {
namespace {

// Larger than those on the bar: the mouse comes from afar.
constexpr Twips kButton{510};
constexpr Twips kEdge{45};
constexpr Twips kFrame{15};  // of the window, round the ground

}  // namespace

bool dressToolbarButton(Node& node, const ToolbarButton& button, const ToolbarLook& look) {
  node.text = button.name;
  node.image = look.buttonImages ? ImageRef{ImageRef::Source::Asset, button.asset} : ImageRef{};
  node.enabled = commandRow(button.command).built;
  node.look.edge = look.edge;
  node.visible = button.kind == ControlKind::PicLockToolbar     ? !look.locked
                 : button.kind == ControlKind::PicUnlockToolbar ? look.locked
                                                                : true;
  return node.visible;
}

Size<Twips> buildToolbar(Scene& scene, const ToolbarLayout& layout) {
  const NodeId ground{ControlKind::TitleBar, 0};
  scene.create(ground, scene.root());
  Twips along = kEdge - kFrame;
  for (const ToolbarButton& row : kToolbarButtons) {
    Node& button = scene.create({row.kind, 0}, ground);
    const Twips x = layout.column ? kEdge - kFrame : along;
    const Twips y = layout.column ? along : kEdge - kFrame;
    button.rect = {x, y, kButton, kButton};
    if (dressToolbarButton(button, row, layout.look)) along += kButton;
  }
  const Twips across = kButton + kEdge + kEdge;
  const Size<Twips> size = layout.column ? Size<Twips>{across, along + kFrame + kEdge}
                                         : Size<Twips>{along + kFrame + kEdge, across};
  scene.find(scene.root())->rect = {{}, {}, size.width, size.height};
  scene.find(ground)->rect = {kFrame, kFrame, size.width - kFrame * 2, size.height - kFrame * 2};
  return size;
}

Command toolbarCommand(ControlKind kind) {
  for (const ToolbarButton& row : kToolbarButtons)
    if (row.kind == kind) return row.command;
  return Command::None;
}

}  // namespace varnowick
