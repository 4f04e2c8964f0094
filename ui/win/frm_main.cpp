#include "ui/win/frm_main.h"

#include <windowsx.h>

#include "platform/screen.h"
#include "platform/win32/instance_guard.h"
#include "shortcuts/tags.h"
#include "ui/win/resource.h"
#include "ui/win/system_look.h"
#include "ui/win/win_events.h"

namespace varnowick {
namespace {

constexpr int kResizeGrip = 5;  // pixels at 96 dots per inch
constexpr Size<Twips> kLeastWindow{{2400}, {1800}};

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

// A first start: at the left edge of the primary monitor, expanded, as high as
// the work area, with the part that stays off screen added to the width.
TwipsRect firstRect(Monitors& monitors) {
  const Density density = monitors.density();
  const TwipsRect work = toTwips(monitors.all().front().work, density);
  const FrameInsets insets = frameInsets(ScreenEdge::Left);
  const Twips width = Settings{}.window.width;
  return {work.left - insets.left, work.top, width, work.height};
}

}  // namespace

frmMain::frmMain(const Platform& platform, DesktopStore& store, ModalDepth& modal)
    : platform_(platform),
      store_(store),
      modal_(modal),
      images_(platform.system.programFolder() + L"\\Images"),
      measure_(platform.monitors.density()),
      workspaceScene_(document_.settings, document_.workspace, &measure_),
      view_(workspaceScene_.scene(), images_, fonts_),
      editor_(document_, workspaceScene_),
      dropTarget_({.over = [this](POINT at) { return dropIsWelcome(at); },
                   .drop = [this](POINT at, const Dropped& data) { return acceptDrop(at, data); },
                   .leave =
                       [this] {
                         editor_.unmarkDrop();
                         view_.invalidate();
                       }}),
      accessibleItems_(workspaceScene_.scene(), view_.input(), kProgramTitle,
                       [this](NodeId node) {
                         return PostMessageW(handle(), kMsgAction, static_cast<WPARAM>(node.kind),
                                             node.slot) != FALSE;
                       }),
      accessible_(accessibleItems_),
      docking_(platform, document_.settings,
               {.keepOpen =
                    [this] {
                      return modal_.active() || gestures_.dragging() || dropTarget_.dragActive() ||
                             extras_.jump().hasFocus();
                    },
                .prepareCollapse = [this] { extras_.hidePopups(); },
                .captionChanged = [this](bool) { relayout(); },
                .changed =
                    [this](DockChange change) {
                      relayout();
                      if (change == DockChange::Expanded) announce(handle(), kEventExpanded);
                      if (change == DockChange::Collapsed) announce(handle(), kEventCollapsed);
                    }}),
      extras_({platform_, document_, workspaceScene_, view_, images_, fonts_, measure_, docking_},
              {.run = [this](Command command) { run(command); },
               .menu = [this](MenuId menu, POINT at) { showMenu(menu, at); },
               .start = [this](ShortcutSlot slot) { launch(slot); },
               .showShortcut = [this](ShortcutSlot slot) { showShortcut(slot); },
               .key = [this](const KeyDecision& decision) { apply(decision); },
               .open = [this] { bringForward(); },
               .toggle =
                   [this] {
                     docking_.apply(docking_.rules().toggle(docking_.inputs()));
                     if (docking_.rules().collapseSide() == ScreenEdge::None)
                       forceForeground(handle());
                   }}) {
  workspaceScene_.setIconSource([this](const clsShortcut& shortcut) {
    return EffectivePath(shortcut, true, platform_.system);
  });
}

frmMain::~frmMain() { destroy(); }

bool frmMain::open() {
  document_.settings.window = firstRect(platform_.monitors);
  Create options;
  options.className = kMainWindowClass;
  options.title = kProgramTitle;
  // Borderless: with a sizing border the collapsed strip would be non-client
  // area, which never sees the mouse move.
  options.style = WS_POPUP | WS_CLIPCHILDREN;
  options.exStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_LAYERED;
  if (!create(options)) return false;
  SetLayeredWindowAttributes(handle(), 0, 255, LWA_ALPHA);
  view_.attach(handle(), platform_.monitors.density());
  docking_.attach(handle());
  accessibleItems_.attach(handle());
  dropTarget_.attach(handle());
  extras_.attach(handle());
  gestures_.setThreshold({{GetSystemMetrics(SM_CXDRAG)}, {GetSystemMetrics(SM_CYDRAG)}});
  return true;
}

void frmMain::load(const Progress& progress) {
  store_.LoadSettings(document_, [&](const std::wstring& text) {
    progress_ = text;
    progress(text);
  });
  progress_.clear();
  applyTagFilters(document_.workspace);
}

void frmMain::show() {
  applyPalette();
  TwipsRect rect = document_.settings.window;
  if (rect.width < kLeastWindow.width) rect.width = kLeastWindow.width;
  if (rect.height < kLeastWindow.height) rect.height = kLeastWindow.height;
  docking_.start(rect, document_.settings.hidden);
  rebuildScene();
  ShowWindow(handle(), SW_SHOWNA);
  UpdateWindow(handle());
  announce(handle(), kEventLoaded);
  images_.start(handle(), kMsgImages);
  extras_.applySettings();
}

LRESULT frmMain::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      view_.paint();
      return 0;
    case WM_TIMER:
      onTimer(static_cast<TimerId>(wParam - 1));
      return 0;
    case WM_WINDOWPOSCHANGED:
      docking_.noteWindowRect();
      break;
    case WM_SIZE:
      onSize();
      return 0;
    case WM_GETMINMAXINFO: {
      auto* info = reinterpret_cast<MINMAXINFO*>(lParam);
      const Density density = platform_.monitors.density();
      info->ptMinTrackSize = {density.toPixels(kLeastWindow.width).value,
                              density.toPixels(kLeastWindow.height).value};
      return 0;
    }
    case WM_NCHITTEST:
      return onHitTest(pointOf(lParam));
    case WM_EXITSIZEMOVE:
      docking_.apply(docking_.rules().movedByUser(docking_.inputs()));
      workspaceChanged();
      return 0;
    case WM_MOUSEMOVE:
      onMouseMove(pointOf(lParam));
      return 0;
    case WM_MOUSELEAVE:
      trackingLeave_ = false;
      view_.mouseLeft();
      extras_.hideTooltip();
      return 0;
    case WM_LBUTTONDOWN:
      doubleClicked_ = false;
      onLeftDown(pointOf(lParam));
      return 0;
    case WM_LBUTTONDBLCLK:
      onDoubleClick(pointOf(lParam));
      return 0;
    case WM_LBUTTONUP:
      onLeftUp(pointOf(lParam));
      return 0;
    case WM_CAPTURECHANGED:
      if (const auto event = gestures_.cancel()) onGesture(*event);
      view_.captureLost();
      return 0;
    case WM_MOUSEWHEEL: {
      const int notches = GET_WHEEL_DELTA_WPARAM(wParam);
      workspaceScene_.scrollTo(workspaceScene_.layout().scroll -
                               Twips{static_cast<float>(notches) * 6.0F});
      view_.invalidate();
      return 0;
    }
    case WM_CONTEXTMENU:
      onContextMenu(pointOf(lParam));
      return 0;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      onKeyDown(static_cast<int>(wParam));
      if (message == WM_KEYDOWN || wParam == VK_F4) return 0;
      break;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) docking_.rules().lostFocus();
      view_.invalidate();
      break;
    case WM_POWERBROADCAST:
      // After a rest the machine may have other monitors.
      if (wParam == PBT_APMRESUMESUSPEND || wParam == PBT_APMRESUMECRITICAL)
        docking_.apply(docking_.rules().screenChanged(docking_.inputs()));
      return TRUE;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      applyPalette();
      [[fallthrough]];
    case WM_DISPLAYCHANGE:
      docking_.apply(docking_.rules().screenChanged(docking_.inputs()));
      break;
    case WM_GETOBJECT:
      if (const LRESULT answer = accessible_.getObject(handle(), wParam, lParam); answer != 0)
        return answer;
      break;
    case WM_CLOSE:
      exitProgram();
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      // The process may be ended as soon as this returns.
      if (wParam != FALSE) endSession();
      return 0;
    case WM_DESTROY:
      onDestroy();
      return 0;
    default:
      if (message == kMsgAction) {
        if (!modal_.active()) clicked({static_cast<ControlKind>(wParam), static_cast<int>(lParam)});
        return 0;
      }
      if (message == kMsgDropped) {
        takePendingDrops();
        return 0;
      }
      if (message == kMsgImages) {
        if (images_.deliver()) {
          view_.invalidate();
          extras_.imagesDelivered();
        }
        return 0;
      }
      if (message == InstanceGuard::message()) {
        bringForward();
        return 0;
      }
      break;
  }
  return Window::handleMessage(message, wParam, lParam);
}

void frmMain::onTimer(TimerId id) {
  if (timerRow(id).oneShot) docking_.stopTimer(id);
  if (docking_.tick(id)) return;
  if (id == TimerId::TimerDblClickLabelDelay) clickGuard_.TimerDblClickLabelDelayTick();
  if (id == TimerId::TimeLock) {
    lockTold_ = false;
    relayout();
  }
}

void frmMain::onSize() {
  docking_.noteWindowRect();
  relayout();
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
  gestures_.press(node, platform_.cursor.position(), ctrl, document_.settings.locked);
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
  const auto event = gestures_.release(platform_.cursor.position());
  const NodeId node = view_.mouseReleased(client);
  ReleaseCapture();
  if (!event) return;
  const bool click = event->kind == GestureKind::Click;
  editor_.released(event->node, event->ctrl, !click);
  view_.invalidate();
  onGesture(*event);
  if (click && !event->ctrl && !node.none() && !clickGuard_.blocked()) clicked(node);
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
    doubleClicked_ = true;  // Enter starts, whatever clicks do
    launchSuppressed_ = false;
    if (const NodeId focused = view_.input().focused(); !focused.none()) clicked(focused);
    return;
  }
  KeyState state;
  state.suppressed = modal_.active();
  state.jumpBoxShown = jumping;
  state.jumpBoxHasText = extras_.jump().hasText();
  state.shortcutSelected = !currentShortcut().none();
  state.barExpanded = docking_.rules().collapseSide() == ScreenEdge::None;
  apply(decideKey(key, modifiers, state));
}

void frmMain::apply(const KeyDecision& decision) {
  if (extras_.jump().apply(decision)) return;
  if (decision.closeJumpBox) extras_.jump().close();
  if (decision.action == KeyAction::RunCommand) run(decision.command);
}

// Opened by a second start, the hotkey or the tray icon.
void frmMain::bringForward() {
  docking_.apply(docking_.rules().open(docking_.inputs()));
  forceForeground(handle());
}

std::wstring frmMain::captionNow() const {
  if (lockTold_) return document_.settings.locked ? L"EDITING LOCKED" : L"EDITING UNLOCKED";
  return docking_.rules().suspended() ? kSuspendedCaption : kProgramTitle;
}

FrameLayout frmMain::frameLayout() const {
  FrameLayout layout = workspaceScene_.layout();
  const Density density = platform_.monitors.density();
  RECT client{};
  GetClientRect(handle(), &client);
  layout.window = {density.toTwips(Pixels{client.right}), density.toTwips(Pixels{client.bottom})};
  ScreenEdge edge = docking_.rules().collapseSide();
  if (edge == ScreenEdge::None) edge = docking_.rules().expandedEdge();
  const FrameInsets insets = frameInsets(edge);
  layout.insets = {insets.left, insets.top, insets.right, insets.bottom};
  layout.collapsedTo = docking_.rules().collapseSide();
  layout.caption = captionNow();
  layout.locked = document_.settings.locked;
  layout.progress = progress_;
  layout.density = density;
  return layout;
}

void frmMain::rebuildScene() {
  laidOut_ = true;
  workspaceScene_.build(frameLayout());
  editor_.sceneRebuilt();
  extras_.arrange();
  view_.invalidate();
  announce(handle(), kEventSceneChanged);
}

void frmMain::relayout() {
  // Placing the window sets off one layout after the other, and each measures
  // every caption; until it is shown only the last one counts.
  if (!laidOut_) return;
  workspaceScene_.setFrame(frameLayout());
  extras_.arrange();
  view_.invalidate();
}

void frmMain::applyPalette() {
  const Palette palette = systemIsHighContrast()
                              ? makeHighContrastPalette(document_.settings, systemColours())
                              : makePalette(document_.settings);
  view_.setPalette(palette);
  extras_.setPalette(palette);
}

void frmMain::onDestroy() {
  dropTarget_.revoke();
  accessible_.disconnect();
  PostQuitMessage(0);
}

}  // namespace varnowick
