#include "ui/win/detached/frm_container.h"

#include <windowsx.h>

#include <algorithm>

#include "containers/colours.h"
#include "platform/screen.h"
#include "platform/win32/instance_guard.h"
#include "ui/scene/icon_ref.h"
#include "ui/win/toolkit/full_screen.h"
#include "ui/win/toolkit/system_look.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {

frmContainer::frmContainer(const Desk& desk, ContainerSlot slot, DetachedHost& host)
    : desk_(desk),
      slot_(slot),
      host_(host),
      scene_(desk.document.settings, desk.document.workspace, slot, &desk.measure),
      pane_(desk, scene_, *this, record() == nullptr ? std::wstring() : record()->name),
      tab_(desk.fonts,
           {.clicked = [this] { Undock(true); },
            .touched =
                [this] {
                  decide([this](const DetachedInputs& in) { return rules_.tabTouched(in); });
                },
            .left = [this] { rules_.tabLeft(); },
            .draggedOver = [this](POINT screen) { draggedOver(screen); },
            .dragLeft = [this] { dragLeft(); },
            .menu = [this](POINT at) { showOwnMenu(at); },
            .dragged =
                [this](Point<Pixels> at) {
                  const Density d = density();
                  return dragTab({d.toTwips(at.x), d.toTwips(at.y)},
                                 workAreas(desk_.platform.monitors));
                },
            .dropped = [this](const TabPlace& to) { tabDropped(to); }}),
      tooltip_([this](NodeId node) {
        POINT at{};
        ClientToScreen(handle(), &at);
        return BalloonTooltip::Content{
            tooltipText(node, scene_.scene(), desk_.settings, desk_.document.workspace,
                        &desk_.measure, pane_.view().density()),
            pane_.view().toClient(node).translated(Pixels{static_cast<int>(at.x)},
                                                   Pixels{static_cast<int>(at.y)})};
      }) {
  scene_.setIconSource([this](const clsShortcut& shortcut) {
    return iconRefFor(shortcut, desk_.platform.system).name;
  });
}

frmContainer::~frmContainer() { destroy(); }

Density frmContainer::density() const { return desk_.platform.monitors.density(); }

bool frmContainer::open() {
  if (record() == nullptr) return false;
  lblName_ = record()->name;
  Create options;
  options.className = kDetachedWindowClass;
  options.title = lblName_;
  // Borderless like the bar. Not topmost: it lies on the desktop among other windows.
  options.style = WS_POPUP | WS_CLIPCHILDREN;
  options.exStyle = WS_EX_TOOLWINDOW | WS_EX_LAYERED;
  if (!create(options)) return false;
  SetLayeredWindowAttributes(handle(), 0, 255, LWA_ALPHA);
  timers_.attach(handle());
  pane_.attach(handle());
  tooltip_.attach(handle());
  setPalette();
  place(true);
  return true;
}

void frmContainer::showFirst() {
  ShowWindow(handle(), SW_SHOWNA);
  apply(rules_.start());
  announce(handle(), kEventDetachedShown);
}

DetachedInputs frmContainer::inputs(const clsContainer& record) const {
  RECT r{};
  GetWindowRect(handle(), &r);
  const PixelRect window{{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
  DetachedInputs in{record, window, {}, desk_.platform.cursor.position()};
  if (record.DetachedUseTab) in.tab = toPixels(tabPlace().rect, density());
  in.foreground = GetForegroundWindow() == handle();
  if (tab_.shown()) in.fullScreen = fullScreenProgramAt(in.tab, desk_.platform.monitors) != nullptr;
  in.busy = desk_.modal.active() || pane_.busy() || sizing_.has_value() || tab_.dragging();
  in.animate = desk_.settings.animate;
  in.systemAnimations = systemAnimates();
  return in;
}

void frmContainer::decide(const std::function<DetachedEffects(const DetachedInputs&)>& call) {
  if (gone_ || handle() == nullptr) return;
  if (const clsContainer* c = record()) apply(call(inputs(*c)));
}

void frmContainer::apply(const DetachedEffects& effects) {
  if (effects.tab == TabChange::Hide) tab_.hide();
  if (effects.tab == TabChange::Place) {
    if (tab_.handle() == nullptr) tab_.attach();
    setPalette();
    tab_.showAt(tabPlace());
    keepTabBehind();
  }
  const auto setOpacity = [&] {
    if (effects.opacity)
      SetLayeredWindowAttributes(handle(), 0, static_cast<BYTE>(*effects.opacity), LWA_ALPHA);
  };
  if (effects.show && !*effects.show) {
    pane_.endEditing();
    tooltip_.hide();
    ShowWindow(handle(), SW_HIDE);
    pane_.view().mouseLeft();
    announce(handle(), kEventDetachedHidden);
  }
  setOpacity();
  if (effects.show && *effects.show) {
    bringToFront();
    announce(handle(), kEventDetachedShown);
  }
  timers_.apply(effects.timers);
  if (effects.unload) host_.unload(slot_);
}

// In front of all other windows, though not to stay there, and without the focus.
// Only by way of the topmost ones does the system let a window that is not in the
// foreground rise above one that is.
void frmContainer::bringToFront() {
  constexpr UINT kFlags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
  SetWindowPos(handle(), HWND_TOPMOST, 0, 0, 0, 0, kFlags | SWP_SHOWWINDOW);
  SetWindowPos(handle(), HWND_NOTOPMOST, 0, 0, 0, 0, kFlags);
}

void frmContainer::keepTabBehind() {
  if (!tab_.shown()) return;
  const PixelRect at = toPixels(tab_.rect(), density());
  standBehind(tab_.handle(), fullScreenProgramAt(at, desk_.platform.monitors));
}

void frmContainer::DockMe() {
  decide([this](const DetachedInputs& in) { return rules_.DockMe(in); });
}

void frmContainer::DockNow() {
  decide([this](const DetachedInputs& in) { return rules_.DockNow(in); });
}

void frmContainer::Undock(bool activate) {
  decide([this](const DetachedInputs& in) { return rules_.Undock(in); });
  if (gone_ || rules_.hidden()) return;
  bringToFront();
  if (activate) forceForeground(handle());
}

void frmContainer::close() {
  pane_.endEditing();
  // While it fades it is only to be looked at.
  EnableWindow(handle(), FALSE);
  decide([this](const DetachedInputs& in) { return rules_.unload(in); });
}

void frmContainer::hideForGood() {
  if (gone_) return;
  pane_.endEditing();
  gone_ = true;
  // Another window shows the container from now on, and takes its folder over.
  pane_.detach();
  tooltip_.hide();
  tab_.hide();
  timers_.stopAll();
  ShowWindow(handle(), SW_HIDE);
}

void frmContainer::onTimer(TimerId id) {
  switch (id) {
    case TimerId::TimerDblClickLabelDelay:
      return pane_.clickGuard().TimerDblClickLabelDelayTick();
    case TimerId::TimerExpandUnfoldOnDrag:
      return dragRested();
    case TimerId::DetachedTimerHide:
      keepTabBehind();
      return decide([this](const DetachedInputs& in) { return rules_.TimerHideTick(in); });
    case TimerId::TimerFadeOut:
      return decide([this](const DetachedInputs& in) { return rules_.TimerFadeOutTick(in); });
    default:
      return;
  }
}

void frmContainer::setPalette() {
  pane_.setPalette(host_.palette());
  const clsContainer* c = record();
  if (c == nullptr) return;
  NodeLook look;
  if (const auto own = ownColours(*c)) {
    look.back = own->back;
    look.fore = own->fore;
  }
  tab_.setLook({c->name, inContainer(host_.palette(), look), density()});
}

void frmContainer::refresh() {
  const clsContainer* c = record();
  if (gone_ || c == nullptr) return;
  if (c->name != lblName_) {
    lblName_ = c->name;
    SetWindowTextW(handle(), lblName_.c_str());
  }
  setPalette();
  rebuildScene();
}

void frmContainer::workspaceChanged() {
  const clsContainer* c = record();
  if (c != nullptr && c->name != lblName_) {
    lblName_ = c->name;
    SetWindowTextW(handle(), lblName_.c_str());
  }
  setPalette();
  host_.workspaceChanged();
}

void frmContainer::startClickGuardTimer() { timers_.start(TimerId::TimerDblClickLabelDelay); }

void frmContainer::pressed(NodeId, POINT) { tooltip_.hide(); }

void frmContainer::clicked(NodeId node, POINT) {
  const PixelRect r = pane_.view().toClient(node);
  RECT button{r.left.value, r.top.value, r.right().value, r.bottom().value};
  MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&button), 2);
  switch (node.kind) {
    case ControlKind::ContainerLabel:
      if (desk_.settings.foldOnClick) toggleFolded();
      return;
    case ControlKind::lblFoldUnfold:
    case ControlKind::Container:
      return toggleFolded();
    case ControlKind::cmdConMenu:
      return showOwnMenu(MenuPlace(button));
    case ControlKind::cmdConDetach:
      return AttachMe();
    case ControlKind::cmdConShrink:
      return DockMe();
    default:
      return;
  }
}

bool frmContainer::doubleClicked(NodeId node) {
  if (node.kind != ControlKind::ContainerLabel && node.kind != ControlKind::ContainerFrame)
    return false;
  // Where a single click folds, the first one has done it.
  if (!desk_.settings.foldOnClick) toggleFolded();
  return true;
}

// What rests on the tab calls the window, and on a folded window unfolds it, so that
// the drop can land inside.
void frmContainer::draggedOver(POINT screen) {
  const clsContainer* c = record();
  if (c == nullptr || (!tab_.shown() && !c->DetachedFolded)) return dragLeft();
  if (dragRest_.over({{static_cast<int>(screen.x)}, {static_cast<int>(screen.y)}}))
    timers_.start(TimerId::TimerExpandUnfoldOnDrag);
}

void frmContainer::dragLeft() {
  dragRest_.leave();
  timers_.stop(TimerId::TimerExpandUnfoldOnDrag);
}

void frmContainer::dragRested() {
  if (gone_ || !dragRest_.rested(desk_.platform.cursor.position())) return;
  if (tab_.shown()) return Undock(false);
  const clsContainer* c = record();
  if (c != nullptr && c->DetachedFolded) toggleFolded();
}

void frmContainer::hovered(NodeId node, POINT) {
  // What the body says is about shrinking, which a window does not do.
  tooltip_.hover(node.kind == ControlKind::ContainerFrame ? NodeId{} : node);
}

void frmContainer::moveWindow(const GestureEvent& event) {
  if (event.phase == GesturePhase::Begin) {
    RECT r{};
    GetWindowRect(handle(), &r);
    origin_ = {r.left, r.top};
  }
  const bool cancelled = event.phase == GesturePhase::Cancel;
  const int dx = cancelled ? 0 : (event.now.x - event.start.x).value;
  const int dy = cancelled ? 0 : (event.now.y - event.start.y).value;
  SetWindowPos(handle(), nullptr, origin_.x + dx, origin_.y + dy, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (event.phase != GesturePhase::End) return;
  storeRect();
  host_.workspaceChanged();
}

void frmContainer::removing(const std::vector<ContainerSlot>& slots) {
  if (std::find(slots.begin(), slots.end(), slot_) != slots.end()) host_.unload(slot_);
}

// "&Hide on click": just before what was clicked starts.
void frmContainer::PreLaunch() {
  decide([this](const DetachedInputs& in) { return rules_.launched(in); });
}

OwnerWindow frmContainer::ownerWindow() const {
  return {reinterpret_cast<std::uintptr_t>(handle())};
}

bool frmContainer::runOwn(Command command) { return host_.runProgramCommand(command); }

bool frmContainer::keyDown(Key key) {
  tooltip_.hide();
  const clsContainer* c = record();
  if (key == Key{VK_ESCAPE} && c != nullptr && c->DetachedUseTab) {
    DockMe();
    return true;
  }
  const Command command = commandForKey(key);
  // Here this key closes the window, not the program.
  if (command == Command::None || command == Command::mnuExitMainWin) return false;
  if (!commandRow(command).built) return false;
  pane_.run(command);
  return true;
}

LRESULT frmContainer::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HandlerScope scope(handlers_);
  // Whoever has left the keyboard with it: nobody sees what keys would do.
  if (rules_.hidden() && (message == WM_KEYDOWN || message == WM_CHAR)) return 0;
  if (handleSizing(message, wParam, lParam)) return 0;
  if (const auto answer = pane_.handleMessage(message, wParam, lParam)) return *answer;
  switch (message) {
    case WM_TIMER:
      if (const auto id = timers_.due(wParam)) onTimer(*id);
      return 0;
    case WM_SIZE:
      if (!placing_) rebuildScene();
      return 0;
    case WM_NCHITTEST:
      return onHitTest({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    case WM_ACTIVATE:
      pane_.view().invalidate();
      break;
    case WM_DISPLAYCHANGE:
    case WM_SETTINGCHANGE:
      systemChanged();
      break;
    case WM_POWERBROADCAST:
      // After a rest the machine may have other monitors.
      if (wParam == PBT_APMRESUMESUSPEND || wParam == PBT_APMRESUMECRITICAL ||
          wParam == PBT_APMRESUMEAUTOMATIC)
        systemChanged();
      return TRUE;
    case WM_CLOSE: {
      // Out of the way, and not lost: into its tab, or back on the bar.
      const clsContainer* c = record();
      if (busyElsewhere() || c == nullptr) return 0;
      if (c->DetachedUseTab)
        DockMe();
      else
        AttachMe();
      return 0;
    }
    case WM_DESTROY:
      pane_.detach();
      return 0;
    default:
      break;
  }
  return Window::handleMessage(message, wParam, lParam);
}

}  // namespace varnowick
