// What the main window does with the containers on it.

#include "ui/win/bar/frm_main.h"
#include "ui/win/toolkit/resource.h"

namespace varnowick {

void frmMain::pressed(NodeId node, POINT) {
  extras_.hideTooltip();
  containers_.pressed(node);
}

void frmMain::released(NodeId node, bool click) { containers_.released(node, click); }

void frmMain::hovered(NodeId node, POINT at) {
  containers_.hovered(node, at);
  const bool quiet =
      node.none() || (node.kind == ControlKind::ContainerFrame && !containers_.onHotSpot(node, at));
  if (quiet)
    extras_.hideTooltip();
  else
    extras_.hover(node);
}

HCURSOR frmMain::cursorOver(NodeId node, POINT at) {
  if (!containers_.onHotSpot(node, at)) return nullptr;
  static const HCURSOR hotSpot =
      LoadCursorW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDC_HOTSPOT));
  return hotSpot;
}

void frmMain::draggedOver(POINT screen) {
  docking_.draggedOver();
  containers_.draggedOver(screen);
}

void frmMain::keepOpen() { containers_.apply(containers_.rules().keepOpen()); }

void frmMain::removing(const std::vector<ContainerSlot>& slots) {
  for (const ContainerSlot slot : slots) {
    containers_.rules().removed(slot);
    detached_.removed(slot);
  }
}

void frmMain::startDrawMode() {
  pane_.editor().setDrawMode(true);
  relayout();
}

// Folding and shrinking are written a moment later, together with what follows.
void frmMain::saveSoon() { timers_.start(TimerId::TimerSave); }

}  // namespace varnowick
