// Where a detached container's window and its tab stand.

#include <windowsx.h>

#include <algorithm>

#include "platform/screen.h"
#include "platform/sound.h"
#include "platform/win32/handles.h"
#include "ui/win/detached/frm_container.h"
#include "ui/win/toolkit/sizing_edges.h"

namespace varnowick {
namespace {

constexpr int kCornerRadius = 5;  // as the painter draws the box

}  // namespace

TwipsRect frmContainer::rect() const {
  RECT r{};
  GetWindowRect(handle(), &r);
  return toTwips({{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}}, density());
}

void frmContainer::place(bool whole) {
  const clsContainer* c = record();
  if (c == nullptr) return;
  const std::vector<TwipsRect> works = workAreas(desk_.platform.monitors);
  TwipsRect shown = c->detachedRect;
  if (whole && c->DetachedFolded) shown.height = kTitleStripHeight;
  shown = whole ? fitToWork(shown, works) : clampToWork(shown, works);
  if (c->DetachedFolded) shown.height = kTitleStripHeight;
  placed_ = toPixels(shown, density());
  placing_ = true;
  SetWindowPos(handle(), nullptr, placed_.left.value, placed_.top.value, placed_.width.value,
               placed_.height.value, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  placing_ = false;
  rebuildScene();
}

// After the user has moved or sized the window. What the system or place() did is not
// worth keeping: the monitor that has gone may come back.
void frmContainer::storeRect() {
  clsContainer* c = record();
  if (c == nullptr) return;
  RECT r{};
  GetWindowRect(handle(), &r);
  const PixelRect now{{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
  if (now == placed_) return;
  const TwipsRect t = toTwips(now, density());
  constexpr Twips kKeep{-1};
  const bool sized = now.size() != placed_.size() || needsDefaultRect(c->detachedRect);
  c->SetDetachedSize(t.left, t.top, sized ? t.width : kKeep,
                     sized && !c->DetachedFolded ? t.height : kKeep);
  placed_ = now;
}

void frmContainer::rebuildScene() {
  const clsContainer* c = record();
  if (c == nullptr || handle() == nullptr) return;
  const Density d = density();
  RECT client{};
  GetClientRect(handle(), &client);
  const Size<Twips> size{d.toTwips(Pixels{static_cast<int>(client.right)}),
                         d.toTwips(Pixels{static_cast<int>(client.bottom)})};
  const Size<Twips> open{size.width, c->DetachedFolded ? c->detachedRect.height : size.height};
  pane_.view().setDensity(d);
  pane_.accessibleItems().setDensity(d);
  scene_.build(size, open, d);
  roundCorners();
  pane_.arrangeEditing();
  pane_.refresh();
}

void frmContainer::roundCorners() {
  RECT client{};
  GetClientRect(handle(), &client);
  const int round = MulDiv(kCornerRadius, density().dpi, 96) * 2;
  RegionHandle region(CreateRoundRectRgn(0, 0, client.right + 1, client.bottom + 1, round, round));
  // The system owns the region from then on.
  if (region && SetWindowRgn(handle(), region.get(), TRUE)) static_cast<void>(region.release());
}

void frmContainer::toggleFolded() {
  clsContainer* c = record();
  if (c == nullptr) return;
  pane_.endEditing();
  c->DetachedFolded = !c->DetachedFolded;
  desk_.platform.sound.play(L"fold.wav");
  place(false);
  host_.workspaceChanged();
}

TabPlace frmContainer::tabPlace() const {
  const clsContainer* c = record();
  if (c == nullptr) return {};
  return placeTab({c->DetachedTabDockedWhere, c->detachedLabelRect, rect()},
                  workAreas(desk_.platform.monitors), host_.otherTabs(slot_));
}

void frmContainer::tabDropped(const TabPlace& to) {
  clsContainer* c = record();
  if (c == nullptr) return;
  c->DetachedTabDockedWhere = static_cast<int>(to.LabelLocation);
  c->SetDetachedLabelPos(to.rect.left, to.rect.top, to.rect.width, to.rect.height);
  tab_.showAt(tabPlace());
  host_.workspaceChanged();
}

void frmContainer::systemChanged() {
  if (gone_) return;
  place(true);
  decide([this](const DetachedInputs& in) { return rules_.systemChanged(in); });
}

LRESULT frmContainer::onHitTest(POINT screen) const {
  const clsContainer* c = record();
  if (c == nullptr || desk_.settings.locked) return HTCLIENT;
  const bool open = !c->DetachedFolded;
  return hitOnSides(handle(), screen, {.top = open, .bottom = open}, density().dpi);
}

// The system sizes windows with a sizing border only, which this one must not have.
bool frmContainer::handleSizing(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCLBUTTONDOWN && wParam >= HTLEFT && wParam <= HTBOTTOMRIGHT) {
    if (desk_.modal.active()) return false;
    // Of the message: the cursor may have gone on since.
    const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    SetForegroundWindow(handle());
    sizing_ = {static_cast<LRESULT>(wParam), at, toPixels(rect(), density())};
    SetCapture(handle());
    return true;
  }
  if (!sizing_) return false;
  switch (message) {
    case WM_MOUSEMOVE: {
      POINT at{};
      GetCursorPos(&at);
      sizeTo(at);
      return true;
    }
    case WM_LBUTTONUP: {
      POINT at{};
      GetCursorPos(&at);
      sizeTo(at);
      endSizing(true);
      return true;
    }
    case WM_CAPTURECHANGED:
      endSizing(false);
      return true;
    case WM_KEYDOWN:
      if (wParam == VK_ESCAPE) endSizing(false);
      return true;
    default:
      return false;
  }
}

void frmContainer::sizeTo(POINT cursor) {
  const LRESULT border = sizing_->border;
  const auto isOne = [border](LRESULT a, LRESULT b, LRESULT c) {
    return border == a || border == b || border == c;
  };
  const Density d = density();
  const Pixels leastWidth = d.toPixels(kLeastDetached.width);
  const Pixels leastHeight = d.toPixels(kLeastDetached.height);
  const Pixels dx{static_cast<int>(cursor.x - sizing_->from.x)};
  const Pixels dy{static_cast<int>(cursor.y - sizing_->from.y)};
  PixelRect r = sizing_->start;
  const Pixels right = r.right();
  const Pixels bottom = r.bottom();
  if (isOne(HTLEFT, HTTOPLEFT, HTBOTTOMLEFT)) {
    r.left = std::min(r.left + dx, right - leastWidth);
    r.width = right - r.left;
  }
  if (isOne(HTRIGHT, HTTOPRIGHT, HTBOTTOMRIGHT)) r.width = std::max(r.width + dx, leastWidth);
  if (isOne(HTTOP, HTTOPLEFT, HTTOPRIGHT)) {
    r.top = std::min(r.top + dy, bottom - leastHeight);
    r.height = bottom - r.top;
  }
  if (isOne(HTBOTTOM, HTBOTTOMLEFT, HTBOTTOMRIGHT)) r.height = std::max(r.height + dy, leastHeight);
  SetWindowPos(handle(), nullptr, r.left.value, r.top.value, r.width.value, r.height.value,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void frmContainer::endSizing(bool keep) {
  const PixelRect start = sizing_->start;
  sizing_.reset();
  if (GetCapture() == handle()) ReleaseCapture();
  if (!keep)
    SetWindowPos(handle(), nullptr, start.left.value, start.top.value, start.width.value,
                 start.height.value, SWP_NOZORDER | SWP_NOACTIVATE);
  if (!keep || toPixels(rect(), density()) == start) return;
  storeRect();
  pane_.editor().keepContentsWithin({slot_});
  host_.workspaceChanged();
}

}  // namespace varnowick
