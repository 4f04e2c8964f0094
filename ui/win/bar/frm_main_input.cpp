// The mouse and the keyboard on the main window.

#include "platform/screen.h"
#include "ui/win/bar/frm_main.h"
#include "ui/win/toolkit/sizing_edges.h"

namespace varnowick {

LRESULT frmMain::onHitTest(POINT screen) const {
  // Only an expanded or floating bar can be resized, at the side away from its
  // edge; the collapsed strip must stay client area.
  if (docking_.rules().collapseSide() != ScreenEdge::None || document_.settings.locked)
    return HTCLIENT;
  const ScreenEdge edge = docking_.rules().expandedEdge();
  return hitOnSides(handle(), screen,
                    {.left = edge != ScreenEdge::Left,
                     .top = edge != ScreenEdge::Top,
                     .right = edge != ScreenEdge::Right,
                     .bottom = edge != ScreenEdge::Bottom},
                    platform_.monitors.density().dpi);
}

void frmMain::mouseMoved() {
  foreground_.look();
  docking_.mouseMoved();
}

void frmMain::startClickGuardTimer() { timers_.start(TimerId::TimerDblClickLabelDelay); }

void frmMain::moveWindow(const GestureEvent& event) {
  if (IsZoomed(handle())) return;
  if (event.phase == GesturePhase::Begin) {
    RECT r{};
    GetWindowRect(handle(), &r);
    barOrigin_ = {r.left, r.top};
    docking_.dragBegan();
  }
  const bool cancelled = event.phase == GesturePhase::Cancel;
  const int dx = cancelled ? 0 : (event.now.x - event.start.x).value;
  const int dy = cancelled ? 0 : (event.now.y - event.start.y).value;
  SetWindowPos(handle(), nullptr, barOrigin_.x + dx, barOrigin_.y + dy, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  const bool ended = event.phase == GesturePhase::End;
  if (!ended && !cancelled)
    return preview_.show(handle(), docking_.dragged(), pane_.view().palette().accent);
  preview_.show(handle(), std::nullopt, {});
  docking_.dragEnded(ended);
  if (cancelled) return;
  relayout();
  workspaceChanged();
}

bool frmMain::keyDown(Key key) {
  extras_.hideTooltip();
  const bool jumping = extras_.jump().shown();
  const bool arrow = key.code >= VK_LEFT && key.code <= VK_DOWN;
  // Unless the jump-to box wants them, these move the focus and open what has it.
  if (key == Key{VK_TAB} || key == Key{VK_TAB, kShift}) return false;
  if (!jumping && key.held.none() && (arrow || key.code == VK_RETURN)) return false;
  const CommandState commands = pane_.commandState();
  KeyState state;
  state.suppressed = modal_.active();
  state.jumpBoxShown = jumping;
  state.jumpBoxHasText = extras_.jump().hasText();
  state.shortcutSelected = commands.anythingSelected || commands.shortcutMeant;
  state.barExpanded = IsZoomed(handle()) || (docking_.rules().expanded() && !hasGone());
  const KeyDecision decision = decideKey(key, state);
  apply(decision);
  return decision.action != KeyAction::None;
}

void frmMain::apply(const KeyDecision& decision) {
  if (extras_.jump().apply(decision)) return;
  if (decision.closeJumpBox) extras_.jump().close();
  if (decision.action == KeyAction::RunCommand) pane_.run(decision.command);
}

}  // namespace varnowick
