// The mouse and the keyboard on the main window.

#include "platform/screen.h"
#include "ui/win/frm_main.h"

namespace varnowick {
namespace {

constexpr int kResizeGrip = 5;  // pixels at 96 dots per inch

}  // namespace

// Where a button went down or up. The cursor itself may be elsewhere by the time
// the message is handled, and a drag would begin at the wrong place.
Point<Pixels> frmMain::toScreen(POINT client) const {
  ClientToScreen(handle(), &client);
  return {{client.x}, {client.y}};
}

LRESULT frmMain::onHitTest(POINT screen) const {
  // Only an expanded or floating bar can be resized, at the side away from its
  // edge; the collapsed strip must stay client area.
  if (docking_.rules().collapseSide() != ScreenEdge::None || document_.settings.locked)
    return HTCLIENT;
  RECT r{};
  GetWindowRect(handle(), &r);
  const int grip = MulDiv(kResizeGrip, platform_.monitors.density().dpi, 96);
  const ScreenEdge edge = docking_.rules().expandedEdge();
  const bool right = edge != ScreenEdge::Right && screen.x >= r.right - grip;
  const bool left = edge != ScreenEdge::Left && screen.x < r.left + grip;
  const bool bottom = edge != ScreenEdge::Bottom && screen.y >= r.bottom - grip;
  const bool top = edge != ScreenEdge::Top && screen.y < r.top + grip;
  if (top && left) return HTTOPLEFT;
  if (top && right) return HTTOPRIGHT;
  if (bottom && left) return HTBOTTOMLEFT;
  if (bottom && right) return HTBOTTOMRIGHT;
  if (right) return HTRIGHT;
  if (left) return HTLEFT;
  if (bottom) return HTBOTTOM;
  if (top) return HTTOP;
  return HTCLIENT;
}

void frmMain::onMouseMove(POINT client) {
  if (!trackingLeave_) {
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, handle(), 0};
    trackingLeave_ = TrackMouseEvent(&track) != FALSE;
  }
  if (const auto event = gestures_.move(platform_.cursor.position())) return onGesture(*event);
  if (gestures_.dragging()) return;
  docking_.apply(docking_.rules().mouseMoved(docking_.inputs()));
  view_.mouseMoved(client);
  extras_.hover(view_.input().hovered());
}

void frmMain::onLeftDown(POINT client) {
  extras_.hideTooltip();
  SetFocus(handle());
  const NodeId node = view_.mousePressed(client);
  SetCapture(handle());
  const bool ctrl = GetKeyState(VK_CONTROL) < 0;
  editor_.pressed(node, ctrl);
  if (!shortcutOf(node).none()) view_.focus(node);
  gestures_.press(node, toScreen(client), ctrl, document_.settings.locked);
  view_.invalidate();
}

// The second press of a double click: it starts a shortcut where the user wants
// double clicks, and on containers it must not start what has just moved there.
void frmMain::onDoubleClick(POINT client) {
  doubleClicked_ = true;
  onLeftDown(client);
  if (!containerOf(view_.input().pressed()).none()) {
    clickGuard_.SetDblClickDelay();
    docking_.startTimer(TimerId::TimerDblClickLabelDelay);
  }
}

void frmMain::onLeftUp(POINT client) {
  const auto event = gestures_.release(toScreen(client));
  const NodeId node = view_.mouseReleased(client);
  ReleaseCapture();
  if (!event) return;
  const bool click = event->kind == GestureKind::Click;
  editor_.released(event->node, event->ctrl, !click);
  view_.invalidate();
  onGesture(*event);
  // Of two quick clicks one starts the shortcut: the one the user has chosen.
  const bool starts = shortcutOf(node).none() || doubleClicked_ == document_.settings.doubleClick;
  if (click && starts && !event->ctrl && !node.none() && !clickGuard_.blocked()) clicked(node);
  launchSuppressed_ = false;
}

void frmMain::onContextMenu(POINT screen) {
  POINT client = screen;
  NodeId node;
  if (screen.x == -1 && screen.y == -1) {
    // From the keyboard: at the focused object, or in the bar's corner.
    node = view_.input().focused();
    const PixelRect r = view_.toClient(node.none() ? NodeId{ControlKind::lblCaption, 0} : node);
    client = {r.left.value + 8, r.bottom().value};
    screen = client;
    ClientToScreen(handle(), &screen);
  } else {
    ScreenToClient(handle(), &client);
    node = workspaceScene_.scene().hitTest(view_.toScene(client));
  }
  const ShortcutSlot shortcut = shortcutOf(node);
  const bool onShortcut = document_.workspace.shortcuts.contains(shortcut);
  if (onShortcut) {
    // The menu is about the selection, which the object under the mouse joins.
    if (!editor_.selection().contains(shortcut)) editor_.selectOnly(shortcut);
    view_.focus(shortcutNode(shortcut));
    view_.invalidate();
    return showMenu(MenuId::Shortcut, screen);
  }
  menuContainer_ = containerOf(node);
  showMenu(menuContainer_.none() ? MenuId::Main : MenuId::Container, screen);
}

// By Tab without a direction. What has the focus is in sight, and selected if it
// is a shortcut, so that keys can act on it.
void frmMain::moveFocus(Point<int> direction, bool backwards) {
  if (direction == Point<int>{})
    view_.focusNext(backwards);
  else
    view_.focusTowards(direction);
  const NodeId focused = view_.input().focused();
  if (const ShortcutSlot slot = shortcutOf(focused); !slot.none()) editor_.selectOnly(slot);
  workspaceScene_.scrollToShow(focused);
  view_.invalidate();
  announce(handle(), EVENT_OBJECT_FOCUS, accessibleItems_.childOf(focused));
}

void frmMain::onKeyDown(int key) {
  const auto down = [](int code) { return GetKeyState(code) < 0; };
  const int modifiers =
      (down(VK_SHIFT) ? kShift : 0) + (down(VK_CONTROL) ? kCtrl : 0) + (down(VK_MENU) ? kAlt : 0);
  if (key == VK_ESCAPE && gestures_.dragging()) {
    ReleaseCapture();
    return;
  }
  const Point<int> direction{(key == VK_RIGHT ? 1 : 0) - (key == VK_LEFT ? 1 : 0),
                             (key == VK_DOWN ? 1 : 0) - (key == VK_UP ? 1 : 0)};
  extras_.hideTooltip();
  const bool jumping = extras_.jump().shown();
  if (!jumping && modifiers == 0 && direction != Point<int>{}) return moveFocus(direction);
  if (key == VK_TAB && (modifiers & ~kShift) == 0) return moveFocus({}, modifiers == kShift);
  if (!jumping && key == VK_RETURN && modifiers == 0) {
    if (const NodeId focused = view_.input().focused(); !focused.none()) clicked(focused);
    return;
  }
  KeyState state;
  state.suppressed = modal_.active();
  state.jumpBoxShown = jumping;
  state.jumpBoxHasText = extras_.jump().hasText();
  state.shortcutSelected = anythingSelected();
  state.barExpanded =
      docking_.rules().expanded() && docking_.rules().collapseSide() == ScreenEdge::None;
  apply(decideKey(key, modifiers, state));
}

void frmMain::apply(const KeyDecision& decision) {
  if (extras_.jump().apply(decision)) return;
  if (decision.closeJumpBox) extras_.jump().close();
  if (decision.action == KeyAction::RunCommand) run(decision.command);
}

}  // namespace varnowick
