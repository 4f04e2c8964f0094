#include "ui/win/bar/frm_main.h"

#include <windowsx.h>

#include <algorithm>

#include "core/settings_table.h"
#include "platform/files.h"
#include "platform/screen.h"
#include "platform/win32/instance_guard.h"
#include "shortcuts/tags.h"
#include "ui/scene/icon_ref.h"
#include "ui/win/toolkit/open_dialog.h"
#include "ui/win/toolkit/resource.h"
#include "ui/win/toolkit/system_look.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

constexpr const wchar_t* kDrawHint = L"Drag out or click; Esc cancels";
constexpr Size<Twips> kLeastWindow{{2400}, {1800}};

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

frmMain::frmMain(const Platform& platform, DesktopStore& store, ModalDepth& modal,
                 Doorbell& doorbell, Fetchers& fetchers)
    : platform_(platform),
      store_(store),
      modal_(modal),
      doorbell_(doorbell),
      fetchers_(fetchers),
      images_(platform.system.programFolder() + L"\\Images"),
      measure_(platform.monitors.density()),
      workspaceScene_(document_.settings, document_.workspace, &measure_),
      folders_(platform, document_, modal, doorbell),
      pane_(desk(), workspaceScene_, *this, kProgramTitle),
      docking_(platform, document_.settings, timers_,
               {.keepOpen =
                    [this] {
                      // The shell may have asked something only just now.
                      return folders_.question() != nullptr || modal_.active() || sizing_ ||
                             pane_.busy() || pane_.editor().drawMode() || extras_.jump().hasFocus();
                    },
                .prepareCollapse =
                    [this] {
                      pane_.endEditing();
                      extras_.hidePopups();
                      PostMessageW(handle(), kMsgAway, 0, 0);
                    },
                .captionChanged = [this](bool) { relayout(); },
                .changed =
                    [this](DockChange change) {
                      relayout();
                      if (change == DockChange::Expanded) announce(handle(), kEventExpanded);
                      if (change == DockChange::Collapsed) announce(handle(), kEventCollapsed);
                    }}),
      containers_(
          desk(), workspaceScene_, pane_, timers_,
          {.reshaped = [this] { extras_.hideTooltip(); }, .changed = [this] { saveSoon(); }}),
      detached_(desk(), *this, detachedHooks()),
      extras_({platform_, document_, workspaceScene_, pane_.view(), images_, fonts_, measure_,
               docking_, folders_},
              {.run =
                   [this](Command command) {
                     if (!busyElsewhere()) pane_.run(command);
                   },
               .menu = [this](MenuId menu, POINT at) { pane_.showMenu(menu, at); },
               .start =
                   [this](const JumpTarget& target) {
                     if (!busyElsewhere()) startMatch(target);
                   },
               .show = [this](const JumpTarget& target) { showMatch(target); },
               .properties =
                   [this](ShortcutSlot slot) {
                     if (busyElsewhere()) return;
                     showShortcut(slot);
                     paneWith(slot).properties(slot);
                   },
               .key = [this](const KeyDecision& decision) { apply(decision); },
               .open = [this] { bringForward(); },
               .toggle = [this] { toggle(); }}),
      undo_(desk(), pane_, detached_,
            {.removed = [this](const std::vector<ContainerSlot>& slots) { removing(slots); },
             .workspaceChanged = [this] { workspaceChanged(); },
             .lineChanged = [this] { relayout(); },
             .timer =
                 [this](bool start) {
                   start ? timers_.start(TimerId::TimerUndoLine)
                         : timers_.stop(TimerId::TimerUndoLine);
                 }}) {
  workspaceScene_.setIconSource(
      [this](const clsShortcut& shortcut) { return iconRefFor(shortcut, platform_.system).name; });
}

frmMain::~frmMain() {
  modal_.whenDone(nullptr);
  destroy();
}

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
  pane_.attach(handle());
  timers_.attach(handle());
  docking_.attach(handle());
  containers_.attach(handle());
  extras_.attach(handle());
  foreground_.attach(handle());
  modal_.whenDone([this] {
    if (GetForegroundWindow() == handle()) docking_.rules().dialogClosed();
  });
  return true;
}

bool frmMain::load(const Progress& progress) {
  firstStart_ = !platform_.files.exists(store_.settingsPath());
  containers_.rules().loadingStarted();
  if (!store_.LoadSettings(document_, progress)) return false;
  containers_.rules().loadingEnded();
  applyTagFilters(document_.workspace);
  detached_.detachLoaded(progress);
  // The session may have ended while a message of the loading was open.
  return handle() != nullptr;
}

void frmMain::show() {
  applyPalette();
  TwipsRect rect = document_.settings.window;
  const TwipsRect screen =
      toTwips(platform_.monitors.virtualScreen(), platform_.monitors.density());
  rect.width = std::clamp(rect.width, kLeastWindow.width, screen.width * 2);
  rect.height = std::clamp(rect.height, kLeastWindow.height, screen.height * 2);
  docking_.start(rect, document_.settings.hidden, document_.settings.windowState);
  rebuildScene();
  ShowWindow(handle(), docking_.showCommand());
  UpdateWindow(handle());
  // A new user shall see the bar before it goes away for the first time.
  if (firstStart_) docking_.apply(docking_.rules().open(docking_.inputs()));
  detached_.showLoaded();
}

void frmMain::begin() {
  store_.tellOfDamage();
  if (handle() == nullptr) return;  // the session has ended meanwhile
  announce(handle(), kEventShown);
  images_.useCache(store_.dataFolder());
  applySettings(kAffectsTray | kAffectsHotkey | kAffectsWeb);
  images_.start(doorbell_, fetchers_, [this] { imagesCame(); });
  docking_.lookForAutoHideBars();
  announce(handle(), kEventLoaded);
}

LRESULT frmMain::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  // A strip is not typed into, whoever has left the keyboard with it; keys with Alt
  // are the system's, to end the program for one.
  const bool endsDrag = message == WM_KEYDOWN && wParam == VK_ESCAPE && pane_.busy();
  if (hasGone() && (message == WM_KEYDOWN || message == WM_CHAR) && !endsDrag) return 0;
  if (hasGone() && message == WM_SYSKEYDOWN) return Window::handleMessage(message, wParam, lParam);
  if (const auto answer = pane_.handleMessage(message, wParam, lParam)) return *answer;
  switch (message) {
    case WM_MOUSEACTIVATE:
      foreground_.look();
      break;
    case WM_TIMER:
      if (const auto id = timers_.due(wParam)) onTimer(*id);
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
      // Of a window without a caption the system would cover the taskbar, too.
      MONITORINFO monitor{};
      monitor.cbSize = sizeof monitor;
      if (GetMonitorInfoW(MonitorFromWindow(handle(), MONITOR_DEFAULTTONEAREST), &monitor)) {
        const RECT& work = monitor.rcWork;
        info->ptMaxPosition = {work.left - monitor.rcMonitor.left,
                               work.top - monitor.rcMonitor.top};
        info->ptMaxSize = {work.right - work.left, work.bottom - work.top};
      }
      info->ptMinTrackSize = {density.toPixels(kLeastWindow.width).value,
                              density.toPixels(kLeastWindow.height).value};
      return 0;
    }
    case WM_NCHITTEST:
      return onHitTest({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    case WM_ENTERSIZEMOVE:
      rectBeforeSizing_ = docking_.rect();
      sizing_ = true;
      return 0;
    case WM_EXITSIZEMOVE:
      sizing_ = false;
      if (docking_.rect() == rectBeforeSizing_) return 0;
      docking_.apply(docking_.rules().sized(docking_.inputs()));
      workspaceChanged();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) docking_.rules().lostFocus();
      pane_.view().invalidate();
      break;
    case WM_POWERBROADCAST:
      // After a rest the machine may have other monitors.
      if (wParam == PBT_APMRESUMESUSPEND || wParam == PBT_APMRESUMECRITICAL ||
          wParam == PBT_APMRESUMEAUTOMATIC)
        screenChanged();
      return TRUE;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      applyPalette();
      [[fallthrough]];
    case WM_DISPLAYCHANGE:
      screenChanged();
      break;
    case WM_CLOSE:
      if (!busyElsewhere()) exitProgram();
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
      if (message == kMsgAway) {
        // Not before a question that has been put meanwhile is answered.
        if (hasGone() && !modal_.active() && !foreground_.starting()) foreground_.giveBack();
        return 0;
      }
      if (message == kMsgSweep) {
        detached_.sweep();
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

// Tray, hotkey and toolbar answer while a dialog of ours is open: then that comes
// forward instead.
bool frmMain::busyElsewhere() {
  const HWND question = folders_.question();
  if (!modal_.active()) return ended_;
  const HWND waiting = question != nullptr ? question : waitingDialog();
  forceForeground(waiting != nullptr ? waiting : GetLastActivePopup(handle()));
  return true;
}

void frmMain::onTimer(TimerId id) {
  detached_.sweep();
  if (id == TimerId::TimerLook) {
    // Also what a started program or a closed dialog has left with it.
    foreground_.look();
    if (hasGone() && !modal_.active()) foreground_.giveBack();
  }
  if (docking_.tick(id) || containers_.tick(id)) return;
  if (id == TimerId::TimerSave) workspaceChanged();
  if (id == TimerId::TimerUndoLine) undo_.lineTimeUp();
  if (id == TimerId::TimerDblClickLabelDelay) pane_.clickGuard().TimerDblClickLabelDelayTick();
  if (id == TimerId::TimeLock) {
    lockTold_ = false;
    relayout();
  }
}

void frmMain::imagesCame() {
  if (handle() == nullptr || !images_.deliver()) return;
  pane_.view().invalidate();
  detached_.invalidate();
  extras_.imagesDelivered();
}

void frmMain::screenChanged() {
  docking_.screenChanged();
  relayout();
}

void frmMain::onSize() {
  docking_.noteWindowRect();
  relayout();
}

// Opened by a second start or the tray icon.
void frmMain::bringForward() {
  if (busyElsewhere()) return;
  foreground_.look();
  docking_.apply(docking_.rules().open(docking_.inputs()));
  forceForeground(handle());
}

// By the hotkey.
void frmMain::toggle() {
  if (busyElsewhere()) return;
  foreground_.look();
  docking_.apply(docking_.rules().toggle(docking_.inputs()));
  if (hasGone()) return;
  if (document_.settings.globalHotkeyDetached) detached_.showAll();
  forceForeground(handle());
}

std::wstring frmMain::captionNow() const {
  if (pane_.editor().drawMode()) return L"CONTAINER DRAW MODE";
  if (lockTold_) return document_.settings.locked ? L"EDITING LOCKED" : L"EDITING UNLOCKED";
  return docking_.rules().suspended() ? kSuspendedCaption : kProgramTitle;
}

FrameLayout frmMain::frameLayout() {
  FrameLayout layout = workspaceScene_.layout();
  const Density density = platform_.monitors.density();
  RECT client{};
  GetClientRect(handle(), &client);
  layout.window = {density.toTwips(Pixels{client.right}), density.toTwips(Pixels{client.bottom})};
  ScreenEdge edge = docking_.rules().collapseSide();
  if (edge == ScreenEdge::None) edge = docking_.rules().expandedEdge();
  layout.edge =
      edge != ScreenEdge::None ? edge : docking_.rules().edgeToCollapseTo(docking_.surroundings());
  layout.toolbar = !extras_.toolbarFloats();
  const FrameInsets insets = frameInsets(edge);
  layout.insets = {insets.left, insets.top, insets.right, insets.bottom};
  layout.collapsedTo = docking_.rules().collapseSide();
  layout.caption = captionNow();
  if (pane_.editor().drawMode())
    layout.progress = kDrawHint;
  else if (layout.progress == kDrawHint)
    layout.progress.clear();
  layout.locked = document_.settings.locked;
  layout.undoLine = undo_.line();
  layout.density = density;
  return layout;
}

void frmMain::rebuildScene() {
  laidOut_ = true;
  workspaceScene_.build(frameLayout());
  extras_.arrange();
  pane_.refresh();
}

void frmMain::relayout() {
  // Placing the window sets off one layout after the other, and each measures
  // every caption; until it is shown only the last one counts.
  if (!laidOut_) return;
  workspaceScene_.setFrame(frameLayout());
  pane_.arrangeEditing();
  extras_.arrange();
  pane_.view().invalidate();
}

void frmMain::applyPalette() {
  const Palette palette = systemIsHighContrast()
                              ? makeHighContrastPalette(document_.settings, systemColours())
                              : makePalette(document_.settings);
  pane_.setPalette(palette);
  detached_.setPalette(palette);
  extras_.setPalette(palette);
}

void frmMain::onDestroy() {
  pane_.detach();
  PostQuitMessage(0);
}

}  // namespace varnowick
