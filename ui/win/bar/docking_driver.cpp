#include "ui/win/bar/docking_driver.h"

#include <algorithm>
#include <vector>

#include "platform/screen.h"
#include "platform/win32/callback.h"
#include "platform/win32/handles.h"
#include "ui/win/toolkit/full_screen.h"
#include "ui/win/toolkit/system_look.h"

namespace varnowick {
namespace {

constexpr int kFullOpacity = 255;
constexpr int kTranslucentOpacity = 200;
// Of "[WindowState]".
constexpr int kNormal = 0;
constexpr int kMinimised = 1;
constexpr int kMaximised = 2;

// Of the rectangle of a window, the part that its region leaves. What is cut off
// lies on a monitor where other windows are.
void cutToRegion(HWND window, POINT& origin, RECT& rect) {
  const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
  RECT box{};
  if (!region || GetWindowRgn(window, region.get()) == ERROR ||
      GetRgnBox(region.get(), &box) <= NULLREGION)
    return;
  OffsetRect(&box, rect.left, rect.top);
  RECT part{};
  if (!IntersectRect(&part, &rect, &box)) return;
  origin.x += part.left - rect.left;
  origin.y += part.top - rect.top;
  rect = part;
}

BOOL CALLBACK addProgramWindow(HWND window, LPARAM list) {
  if (!IsWindowVisible(window)) return TRUE;
  RECT rect{};
  POINT origin{};
  GetWindowRect(window, &rect);
  ClientToScreen(window, &origin);
  cutToRegion(window, origin, rect);
  return guardedCallback(TRUE, [&] {
    reinterpret_cast<std::vector<std::pair<POINT, RECT>>*>(list)->push_back({origin, rect});
    return TRUE;
  });
}

}  // namespace

Density DockingDriver::density() const { return platform_.monitors.density(); }

PixelRect DockingDriver::windowPixels() const {
  RECT r{};
  GetWindowRect(window_, &r);
  return {{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
}

void DockingDriver::start(const TwipsRect& rect, bool hidden, int windowState) {
  readScreen();
  place(rect);
  startsMaximised_ = windowState == kMaximised;
  DockInputs in = inputs();
  in.maximised = startsMaximised_;
  apply(rules_.start(in, hidden || windowState == kMinimised));
}

int DockingDriver::windowState() const {
  if (IsZoomed(window_)) return kMaximised;
  return IsIconic(window_) ? kMinimised : kNormal;
}

void DockingDriver::restore() {
  if (!IsZoomed(window_)) return;
  ShowWindow(window_, SW_RESTORE);
  noteWindowRect();
  apply(rules_.start(inputs(), false));
}

void DockingDriver::dockTo(ScreenEdge edge) {
  restore();
  apply(rules_.dockTo(inputs(), edge));
}

void DockingDriver::dockNow() {
  restore();
  apply(rules_.dockNow(inputs()));
}

// A bar of the desktop that hides itself comes out when the mouse is pushed against
// the edge: a pixel of it stays free.
void DockingDriver::readScreen() {
  screen_ = screenExtents(platform_.monitors);
  const Twips pixel = density().toTwips(Pixels{1});
  for (std::size_t i = 0; i < screen_.monitors.size(); ++i) {
    TwipsRect& work = screen_.monitors[i].work;
    const AutoHideBars::Edges edges = autoHideBars_.on(i);
    if (edges.left) work.left += pixel;
    if (edges.top) work.top += pixel;
    if (edges.left || edges.right) work.width -= pixel;
    if (edges.top || edges.bottom) work.height -= pixel;
  }
}

DockInputs DockingDriver::surroundings() const {
  DockInputs in;
  in.window = rect_;
  in.density = density();
  in.screen = screen_;
  return in;
}

DockInputs DockingDriver::inputs() const {
  DockInputs in = surroundings();
  in.cursor = platform_.cursor.position();
  in.leftButtonDown = platform_.cursor.leftButtonDown();
  std::vector<std::pair<POINT, RECT>> found;
  EnumThreadWindows(GetCurrentThreadId(), &addProgramWindow, reinterpret_cast<LPARAM>(&found));
  std::vector<ProgramWindow> windows;
  windows.reserve(found.size());
  for (const auto& [origin, r] : found)
    windows.push_back({{{origin.x}, {origin.y}},
                       {in.density.toTwips(Pixels{r.right - r.left}),
                        in.density.toTwips(Pixels{r.bottom - r.top})}});
  in.mouseOnWindow = MouseOnWindow(windows, in.cursor, in.density);
  in.maximised = IsZoomed(window_) || IsIconic(window_);
  in.keepOpen = hooks_.keepOpen && hooks_.keepOpen();
  in.blocked = in.keepOpen;
  in.animate = settings_.animate;
  in.systemAnimations = systemAnimates();
  in.undockImmediately = settings_.undockImmediately;
  in.visibleBorderCollapsed = settings_.visibleBorderCollapsed;
  in.shownOpacity = settings_.translucent ? kTranslucentOpacity : kFullOpacity;
  return in;
}

// A strip is mostly beyond its monitor: where it is says nothing.
HWND DockingDriver::fullScreenProgram(const DockInputs& in) const {
  const ScreenMonitor own = rules_.monitor(in);
  return fullScreenProgramOn({toPixels(own.bounds, in.density), toPixels(own.work, in.density)});
}

void DockingDriver::place(const TwipsRect& rect) {
  rect_ = rect;
  const PixelRect px = toPixels(rect, density());
  SetWindowPos(window_, nullptr, px.left.value, px.top.value, px.width.value, px.height.value,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void DockingDriver::apply(const DockEffects& effects) {
  if (effects.prepareCollapse && hooks_.prepareCollapse) hooks_.prepareCollapse();
  if (effects.opacity)
    SetLayeredWindowAttributes(window_, 0, static_cast<BYTE>(*effects.opacity), LWA_ALPHA);
  if ((effects.moveTo || effects.resize) && IsZoomed(window_)) ShowWindow(window_, SW_RESTORE);
  TwipsRect to = rect_;
  if (effects.moveTo) to = {effects.moveTo->x, effects.moveTo->y, to.width, to.height};
  if (effects.resize) to = {to.left, to.top, effects.resize->width, effects.resize->height};
  if (effects.resize) {
    place(to);
  } else if (effects.moveTo) {
    rect_ = to;
    // On its way out it is cut off first, on its way in only when it is there. The
    // system tells of a new region as of a move, with the place it still has.
    placing_ = true;
    if (rules_.collapseSide() != ScreenEdge::None) updateClip();
    placing_ = false;
    const PixelRect px = toPixels(rect_, density());
    SetWindowPos(window_, nullptr, px.left.value, px.top.value, 0, 0,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE | SWP_NOOWNERZORDER);
  }
  updateClip();
  timers_.apply(effects.timers);
  if (effects.caption != CaptionChange::None && hooks_.captionChanged)
    hooks_.captionChanged(effects.caption == CaptionChange::Suspended);
  if (effects.change == DockChange::Expanded) standBehind(window_, nullptr);
  if (effects.change != DockChange::None && hooks_.changed) hooks_.changed(effects.change);
}

// What slides over a border must not show on the monitor behind it.
void DockingDriver::updateClip() {
  std::optional<PixelRect> clip;
  if (!dragging_ && !IsZoomed(window_)) {
    const DockInputs in = surroundings();
    if (const auto seen = rules_.clip(in)) {
      const PixelRect window = toPixels(rect_, in.density);
      clip = toPixels(*seen, in.density).translated(-window.left, -window.top);
    }
  }
  if (clip == clip_) return;
  clip_ = clip;
  if (!clip) {
    SetWindowRgn(window_, nullptr, TRUE);
    return;
  }
  RegionHandle region(
      CreateRectRgn(clip->left.value, clip->top.value, clip->right().value, clip->bottom().value));
  // The system owns the region from then on.
  if (region && SetWindowRgn(window_, region.get(), TRUE)) static_cast<void>(region.release());
}

void DockingDriver::lookForAutoHideBars() {
  autoHideBars_.look(platform_.monitors);
  if (autoHideBars_.any()) adaptToScreen();
}

void DockingDriver::screenChanged() {
  autoHideBars_.look(platform_.monitors);
  adaptToScreen();
}

void DockingDriver::adaptToScreen() {
  readScreen();
  apply(rules_.screenChanged(inputs()));
}

void DockingDriver::dragBegan() {
  dragging_ = true;
  updateClip();
  rules_.dragBegan(inputs());
}

std::optional<PixelRect> DockingDriver::dragged() {
  const std::optional<TwipsRect> place = rules_.dragged(inputs());
  return place ? std::optional(toPixels(*place, density())) : std::nullopt;
}

void DockingDriver::dragEnded(bool dropped) {
  dragging_ = false;
  apply(dropped ? rules_.dropped(inputs()) : DockEffects{});
}

// Looking through all windows of the system takes too long for every tick.
void DockingDriver::mouseMoved() {
  DockInputs in = inputs();
  in.blocked = in.keepOpen || fullScreenProgram(in) != nullptr;
  apply(rules_.mouseMoved(in));
}

void DockingDriver::draggedOver() {
  DockInputs in = inputs();
  in.blocked = false;
  apply(rules_.mouseMoved(in));
}

bool DockingDriver::tick(TimerId id) {
  switch (id) {
    case TimerId::TimerShow:
      if (!dragging_) apply(rules_.TimerShowTick(inputs()));
      return true;
    case TimerId::TimerSlide:
      apply(rules_.TimerSlideTick(inputs()));
      return true;
    case TimerId::TimerHide:
      apply(rules_.TimerHideTick(inputs()));
      return true;
    case TimerId::TimerLook: {
      const bool strip = rules_.collapseSide() != ScreenEdge::None;
      standBehind(window_, strip ? fullScreenProgram(surroundings()) : nullptr);
      return true;
    }
    default:
      return false;
  }
}

void DockingDriver::noteWindowRect() {
  // A minimised window lies far off every screen, and a maximised one covers it;
  // neither is a place to save.
  if (placing_ || IsIconic(window_) || IsZoomed(window_)) return;
  const PixelRect now = windowPixels();
  if (now == toPixels(rect_, density())) return;
  rect_ = toTwips(now, density());
  updateClip();
}

}  // namespace varnowick
