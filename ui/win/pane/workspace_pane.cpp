#include "ui/win/pane/workspace_pane.h"

#include <windowsx.h>

#include <algorithm>

#include "platform/screen.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/toolkit/held_keys.h"
#include "ui/win/toolkit/reader_selection.h"
#include "ui/win/toolkit/wheel_lines.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

// Where the system has none, the arrow does.
HCURSOR handCursor() {
  const HCURSOR hand = LoadCursorW(nullptr, IDC_HAND);
  return hand != nullptr ? hand : LoadCursorW(nullptr, IDC_ARROW);
}

bool beginsSomething(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN ||
         message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
}

}  // namespace

WorkspacePane::WorkspacePane(const Desk& desk, ObjectScene& scene, PaneOwner& owner,
                             std::wstring title)
    : desk_(desk),
      scene_(scene),
      owner_(owner),
      view_(scene.scene(), desk.images, desk.fonts),
      editor_(desk.document, scene),
      dropTarget_(
          {.over = [this](POINT at) { return dropIsWelcome(at); },
           .drop = [this](POINT at, const Dropped& data) { return acceptDrop(at, data); },
           .leave =
               [this] {
                 if (desk_.folders != nullptr) desk_.folders->dragLeft();
                 dragLeft();
               },
           .effect = [this](POINT at, IDataObject& data, DWORD keys,
                            DWORD allowed) { return folderDropEffect(at, data, keys, allowed); },
           .take = [this](POINT at, IDataObject& data,
                          DWORD effect) { return dropOnFolder(at, data, effect); }}),
      accessibleItems_(
          scene.scene(), view_.input(), std::move(title),
          [this](NodeId node) {
            return PostMessageW(window_, kMsgAction, static_cast<WPARAM>(node.kind), node.slot) !=
                   FALSE;
          },
          [this](NodeId node, long flags) {
            return postSelection(window_, scene_.scene(), node, flags);
          }),
      accessible_(accessibleItems_),
      nameEdit_(scene.scene(), desk.fonts),
      noteEdit_(scene.scene(), desk.fonts, noteHooks()),
      dragTrail_([this](HWND window) { return owner_.dragStop(window); }) {
  editor_.setSelectionShown([this] {
    view_.focus(focusFor(scene_.scene(), editor_.selection(), view_.input().focused()));
  });
}

void WorkspacePane::attach(HWND window) {
  window_ = window;
  const Density density = desk_.platform.monitors.density();
  view_.attach(window, density);
  accessibleItems_.attach(window);
  accessibleItems_.setDensity(density);
  PostMessageW(window, kMsgAcceptDrops, 0, 0);
  nameEdit_.attach(window, density);
  noteEdit_.attach(window, density);
  gestures_.setThreshold({{GetSystemMetrics(SM_CXDRAG)}, {GetSystemMetrics(SM_CYDRAG)}});
  attachFolders();
}

void WorkspacePane::setPalette(const Palette& palette) {
  view_.setPalette(palette);
  nameEdit_.setPalette(palette);
  noteEdit_.setPalette(palette);
}

void WorkspacePane::detach() {
  detachFolders();
  dropTarget_.revoke();
  accessible_.disconnect();
}

std::optional<LRESULT> WorkspacePane::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  // A dialog has disabled its own window, and not the others.
  if (desk_.modal.active() && beginsSomething(message)) {
    owner_.busyElsewhere();
    return 0;
  }
  if (desk_.modal.active() && message == WM_MOUSEWHEEL) return 0;
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      view_.paint();
      accessibleItems_.announceSoon();
      return 0;
    case kMsgAcceptDrops:
      dropTarget_.attach(window_);
      return 0;
    case kMsgReaders:
      accessibleItems_.announceChanges();
      return 0;
    case WM_MOUSEMOVE:
      // The release has gone astray: a button that is up drags nothing.
      // What it sets off may take long, and then the place is an old one.
      if (gestures_.pressed() && (wParam & MK_LBUTTON) == 0)
        onLeftUp(pointOf(lParam));
      else
        onMouseMove(pointOf(lParam));
      return 0;
    case WM_MOUSELEAVE:
      trackingLeave_ = false;
      view_.mouseLeft();
      owner_.hovered({}, {});
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      onLeftDown(pointOf(lParam), message == WM_LBUTTONDBLCLK);
      return 0;
    case WM_LBUTTONUP:
      onLeftUp(pointOf(lParam));
      return 0;
    case WM_CAPTURECHANGED:
      if (const auto event = gestures_.cancel()) onGesture(*event);
      view_.captureLost();
      return 0;
    case WM_MOUSEWHEEL:
      if (wheelOverNote(pointOf(lParam), GET_WHEEL_DELTA_WPARAM(wParam))) return 0;
      if (wheelOverFolder(pointOf(lParam), GET_WHEEL_DELTA_WPARAM(wParam))) return 0;
      onWheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return 0;
    case WM_CONTEXTMENU:
      onContextMenu(pointOf(lParam));
      return 0;
    case WM_SETCURSOR: {
      if (LOWORD(lParam) != HTCLIENT) return std::nullopt;
      POINT at{};
      GetCursorPos(&at);
      ScreenToClient(window_, &at);
      const HCURSOR cursor = cursorAt(at);
      if (cursor == nullptr) return std::nullopt;
      SetCursor(cursor);
      return TRUE;
    }
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (onKeyDown(static_cast<int>(wParam)) || message == WM_KEYDOWN) return 0;
      return std::nullopt;
    case WM_CHAR:
      if (gestures_.dragging() || typedInFolder(static_cast<wchar_t>(wParam))) return 0;
      return std::nullopt;
    case WM_GETOBJECT:
      if (const LRESULT answer = accessible_.getObject(window_, wParam, lParam); answer != 0)
        return answer;
      return std::nullopt;
    case kMsgAction:
      if (!owner_.busyElsewhere()) {
        activate({static_cast<ControlKind>(wParam), static_cast<int>(lParam)});
      }
      return 0;
    case kMsgSelect:
      if (desk_.modal.active()) return 0;
      if (const NodeId node = takeSelection(editor_, scene_.scene(), wParam, lParam); !node.none())
        view_.focus(node);
      view_.invalidate();
      return 0;
    case WM_DROPFILES:
      dropTarget_.filesDropped(reinterpret_cast<HDROP>(wParam));
      return 0;
    case WM_TIMER:
      if (wParam != kDropTimer) return std::nullopt;
      takePendingDrops();
      return 0;
    case kMsgDropped:
      takePendingDrops();
      return 0;
    default:
      return std::nullopt;
  }
}

// Where a button went down or up. The cursor itself may be elsewhere by the time
// the message is handled, and a drag would begin at the wrong place.
Point<Pixels> WorkspacePane::toScreen(POINT client) const {
  ClientToScreen(window_, &client);
  return {{client.x}, {client.y}};
}

Point<Twips> WorkspacePane::toScene(Point<Pixels> screen) const {
  POINT client{screen.x.value, screen.y.value};
  ScreenToClient(window_, &client);
  return view_.toScene(client);
}

HCURSOR WorkspacePane::cursorAt(POINT client) {
  const Point<Twips> at = view_.toScene(client);
  const NodeId node = scene_.scene().hitTest(at);
  if (editor_.drawMode() && node.kind == ControlKind::picBack)
    return LoadCursorW(nullptr, IDC_CROSS);
  const Edges e = desk_.settings.locked ? Edges{} : editor_.borderAt(node, at);
  if ((e.left && e.top) || (e.right && e.bottom)) return LoadCursorW(nullptr, IDC_SIZENWSE);
  if ((e.right && e.top) || (e.left && e.bottom)) return LoadCursorW(nullptr, IDC_SIZENESW);
  if (e.left || e.right) return LoadCursorW(nullptr, IDC_SIZEWE);
  if (e.top || e.bottom) return LoadCursorW(nullptr, IDC_SIZENS);
  if (overNoteLink(node, client)) return handCursor();
  if (node.kind == ControlKind::ContainerNote && !desk_.settings.locked &&
      !overThumbOf(node, client))
    return LoadCursorW(nullptr, IDC_IBEAM);
  return owner_.cursorOver(node, client);
}

void WorkspacePane::onMouseMove(POINT client) {
  if (!trackingLeave_) {
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, window_, 0};
    trackingLeave_ = TrackMouseEvent(&track) != FALSE;
  }
  if (const auto event = gestures_.move(desk_.platform.cursor.position())) return onGesture(*event);
  if (gestures_.dragging()) return;
  owner_.mouseMoved();
  view_.mouseMoved(client);
  owner_.hovered(view_.input().hovered(), client);
}

void WorkspacePane::onLeftDown(POINT client, bool second) {
  SetFocus(window_);
  const bool meantOther = owner_.pressMeantOther(client);
  clicks_.press(meantOther ? NodeId{} : scene_.scene().hitTest(view_.toScene(client)), second);
  if (meantOther || clicks_.strayed()) return;
  const NodeId node = view_.mousePressed(client);
  SetCapture(window_);
  const bool ctrl = heldModifiers().ctrl;
  const GestureKind drag = canDragFiles(node) ? GestureKind::DragFiles
                           : overThumbOf(node, client)
                               ? GestureKind::ScrollNote
                               : editor_.dragFrom(node, view_.toScene(client));
  if (!pressedFolder(node)) editor_.pressed(node, ctrl);
  if (const auto object = objectOf(node); object && editor_.selection().contains(*object))
    view_.focus(handleOf(scene_.scene(), *object));
  gestures_.press(node, drag, toScreen(client), ctrl);
  owner_.pressed(node, client);
  view_.invalidate();
  // What the double click moves under the pointer must not be started by a third.
  if (second && !containerOf(node).none()) {
    clickGuard_.SetDblClickDelay();
    owner_.startClickGuardTimer();
  }
}

void WorkspacePane::onLeftUp(POINT client) {
  const auto event = gestures_.release(toScreen(client));
  const NodeId node = view_.mouseReleased(client);
  ReleaseCapture();
  if (!event) return;
  const bool click = event->kind == GestureKind::Click;
  if (!releasedFolder(event->node, click)) editor_.released(event->node, event->ctrl, !click);
  owner_.released(event->node, click);
  view_.invalidate();
  onGesture(*event);
  if (!click || clickedFolder(node) || event->ctrl || node.none()) return;
  if (editor_.drawMode() && node.kind == ControlKind::picBack)
    return endDrawing(editor_.drawnAt(view_.toScene(client)), true);
  if (clicks_.second() && !pictureOf(node).none()) return openPicture(pictureOf(node));
  if (clicks_.second() && owner_.doubleClicked(node)) return;
  // Of two quick clicks one starts the shortcut: the one the user has chosen.
  const bool starts = shortcutOf(node).none() || clicks_.second() == desk_.settings.doubleClick;
  if (starts && !clickGuard_.blocked()) clicked(node, client);
}

void WorkspacePane::clicked(NodeId node, POINT at) {
  if (!shortcutOf(node).none()) return launch(shortcutOf(node));
  if (clickedNote(node, at)) return;
  owner_.clicked(node, at);
}

// The default action of a node, which does not depend on what clicks are set to do.
void WorkspacePane::activate(NodeId node) {
  if (!pictureOf(node).none()) return openPicture(pictureOf(node));
  if (node.none() || openFile(node)) return;
  if (node.kind == ControlKind::ContainerLabel) node.kind = ControlKind::lblFoldUnfold;
  const PixelRect r = view_.toClient(node);
  clicked(node, {r.left.value + r.width.value / 2, r.top.value + r.height.value / 2});
}

void WorkspacePane::onContextMenu(POINT screen) {
  POINT client = screen;
  NodeId node;
  if (screen.x == -1 && screen.y == -1) {
    // From the keyboard: at the focused object, or in the window's corner.
    node = currentOf(view_.input().focused());
    const PixelRect r = node.none() ? PixelRect{{0}, {0}, {0}, {24}} : view_.toClient(node);
    client = {r.left.value + 8, r.bottom().value};
    screen = client;
    ClientToScreen(window_, &screen);
  } else {
    ScreenToClient(window_, &client);
    node = scene_.scene().hitTest(view_.toScene(client));
  }
  const ShortcutSlot shortcut = shortcutOf(node);
  if (desk_.document.workspace.shortcuts.contains(shortcut)) {
    // The menu is about the selection, which the object under the mouse joins.
    if (!editor_.selection().contains(shortcut)) editor_.selectOnly(shortcut);
    view_.focus(shortcutNode(shortcut));
    view_.invalidate();
    return showMenu(MenuId::Shortcut, screen);
  }
  if (pictureMenu(node, screen)) return;
  if (!folderContainerOf(node).none()) editor_.selectNone();
  if (folderMenu(node, screen) || owner_.ownMenu(node, screen)) return;
  const ContainerSlot container = containerOf(node);
  const bool onTitle =
      node.kind == ControlKind::ContainerLabel || node.kind == ControlKind::ContainerIcon;
  if (onTitle) owner_.keepOpen();
  if (onTitle && !editor_.selection().contains(container)) {
    editor_.selectOnly(container);
    view_.invalidate();
  }
  showMenu(container.none() ? MenuId::Main : MenuId::Container, screen, container);
}

void WorkspacePane::onWheel(int delta) {
  constexpr Twips kLine{240};
  const float lines = scene_.panelSize(picBack).height.value / kLine.value;
  const int page = std::max(1, static_cast<int>(lines) - 1);
  scene_.scrollTo(scene_.scroll() +
                  kLine * static_cast<float>(wheelLines(delta, page, panelWheelRest_)));
  arrangeEditing();
  view_.invalidate();
}

// By Tab without a direction. What has the focus is in sight, and selected if it
// is an object: what keys act on. Anything else stands alone.
void WorkspacePane::moveFocus(Point<int> direction, bool backwards) {
  if (direction == Point<int>{})
    view_.focusNext(backwards);
  else
    view_.focusTowards(direction);
  const NodeId focused = view_.input().focused();
  if (const auto object = objectOf(focused);
      object && isSelectable(desk_.document.workspace, *object))
    editor_.selectOnly(*object);
  else
    editor_.selectNone();
  view_.focus(focused);
  scene_.scrollToShow(focused);
  view_.invalidate();
}

bool WorkspacePane::onKeyDown(int key) {
  const Key pressed{key, heldModifiers()};
  menuContainer_ = {};  // keys are about what is selected
  // Alone these mostly go with the mouse.
  if (key != VK_SHIFT && key != VK_CONTROL && key != VK_MENU) view_.keyUsed();
  // What is being dragged must not be changed or go meanwhile.
  if (gestures_.dragging()) {
    if (key == VK_ESCAPE) ReleaseCapture();
    return true;
  }
  if (key == VK_ESCAPE && editor_.drawMode()) {
    editor_.setDrawMode(false);
    owner_.drawModeEnded();
    return true;
  }
  if (keyInFolder(pressed) || owner_.keyDown(pressed)) return true;
  const Point<int> direction{(key == VK_RIGHT ? 1 : 0) - (key == VK_LEFT ? 1 : 0),
                             (key == VK_DOWN ? 1 : 0) - (key == VK_UP ? 1 : 0)};
  if (pressed.held.none() && direction != Point<int>{}) {
    moveFocus(direction, false);
  } else if (pressed == Key{VK_TAB} || pressed == Key{VK_TAB, kShift}) {
    moveFocus({}, pressed.held.shift);
  } else if (pressed == Key{VK_RETURN}) {
    const auto object = current().object;
    activate(object ? handleOf(scene_.scene(), *object) : view_.input().focused());
  } else {
    return false;
  }
  return true;
}

void WorkspacePane::refresh() {
  editor_.sceneRebuilt();
  sceneChanged();
}

void WorkspacePane::sceneChanged() {
  noteEdit_.forgetGone();
  view_.invalidate();
  announce(window_, kEventSceneChanged);
}

}  // namespace varnowick
