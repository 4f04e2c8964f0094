#include "ui/win/detached/frm_container_label.h"

#include <oleacc.h>
#include <windowsx.h>

#include <cstdlib>

#include "platform/win32/handles.h"
#include "ui/win/toolkit/gdi_canvas.h"
#include "ui/win/toolkit/messages.h"

namespace varnowick {
namespace {

constexpr Twips kRadius{60};
constexpr Twips kTextMargin{90};
// 12 and 11 pixels at the usual density: what the narrow sides of tabs leave.
constexpr float kVerticalPoints = 9;
constexpr float kHorizontalPoints = 8.25F;

// The corners at the screen's edge are square: 1 top left, 2 top right, 4 bottom
// right, 8 bottom left.
unsigned squareCorners(ScreenEdge edge) {
  switch (edge) {
    case ScreenEdge::Left:
      return 1 + 8;
    case ScreenEdge::Right:
      return 2 + 4;
    case ScreenEdge::Top:
      return 1 + 2;
    default:
      return 4 + 8;
  }
}

POINT cursor() {
  POINT at{};
  GetCursorPos(&at);
  return at;
}

}  // namespace

frmContainerLabel::frmContainerLabel(GdiFonts& fonts, Callbacks callbacks)
    : fonts_(fonts),
      callbacks_(std::move(callbacks)),
      accessible_(*this),
      dropTarget_({.over =
                       [this](POINT screen) {
                         draggedOver(screen);
                         return false;
                       },
                   .drop = [](POINT, const Dropped&) { return false; },
                   .leave = [this] { dragLeft(); },
                   .takesNothing = true}) {}

frmContainerLabel::~frmContainerLabel() { destroy(); }

bool frmContainerLabel::attach() {
  Create options;
  options.className = kTabWindowClass;
  options.title = look_.name;
  options.exStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;
  if (!create(options)) return false;
  dropTarget_.attach(handle());
  return true;
}

void frmContainerLabel::draggedOver(POINT screen) {
  if (callbacks_.touched) callbacks_.touched();
  if (callbacks_.draggedOver) callbacks_.draggedOver(screen);
}

void frmContainerLabel::dragLeft() {
  if (callbacks_.dragLeft) callbacks_.dragLeft();
}

void frmContainerLabel::setLook(Look look) {
  look_ = std::move(look);
  if (handle() == nullptr) return;
  SetWindowTextW(handle(), look_.name.c_str());
  InvalidateRect(handle(), nullptr, FALSE);
}

void frmContainerLabel::move(const TabPlace& place) {
  place_ = place;
  // All tabs are of one size, whatever the pixels that their borders fall between.
  const Density d = look_.density;
  PixelRect r = toPixels(place.rect, d);
  if (place.LabelLocation == ScreenEdge::Right) r.left = r.right() - d.toPixels(place.rect.width);
  if (place.LabelLocation == ScreenEdge::Bottom) r.top = r.bottom() - d.toPixels(place.rect.height);
  r.width = d.toPixels(place.rect.width);
  r.height = d.toPixels(place.rect.height);
  SetWindowPos(handle(), HWND_TOPMOST, r.left.value, r.top.value, r.width.value, r.height.value,
               SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  roundCorners(r.size());
  InvalidateRect(handle(), nullptr, FALSE);
}

// Those away from the screen's edge; at the edge the round ones lie beyond it.
void frmContainerLabel::roundCorners(Size<Pixels> size) {
  const int radius = look_.density.toPixels(kRadius).value;
  RECT r{0, 0, size.width.value + 1, size.height.value + 1};
  if (place_.LabelLocation == ScreenEdge::Left) r.left -= radius;
  if (place_.LabelLocation == ScreenEdge::Right) r.right += radius;
  if (place_.LabelLocation == ScreenEdge::Top) r.top -= radius;
  if (place_.LabelLocation == ScreenEdge::Bottom) r.bottom += radius;
  RegionHandle region(CreateRoundRectRgn(r.left, r.top, r.right, r.bottom, radius * 2, radius * 2));
  // The system owns the region from then on.
  if (region && SetWindowRgn(handle(), region.get(), TRUE)) static_cast<void>(region.release());
}

void frmContainerLabel::showAt(const TabPlace& place) {
  if (handle() == nullptr) return;
  cancelDrag();
  move(place);
  if (!shown()) ShowWindow(handle(), SW_SHOWNA);
}

void frmContainerLabel::hide() {
  if (!shown()) return;
  cancelDrag();
  ShowWindow(handle(), SW_HIDE);
  // A window that is hidden under the mouse is not told that the mouse has left.
  hot_ = tracking_ = false;
}

void frmContainerLabel::setHot(bool hot) {
  if (hot_ == hot) return;
  hot_ = hot;
  InvalidateRect(handle(), nullptr, FALSE);
}

// Where a button went down or up; the cursor itself may have gone on since.
POINT frmContainerLabel::toScreen(LPARAM client) const {
  POINT at{GET_X_LPARAM(client), GET_Y_LPARAM(client)};
  ClientToScreen(handle(), &at);
  return at;
}

void frmContainerLabel::paint() {
  const PaintDc dc(handle());
  RECT client{};
  GetClientRect(handle(), &client);
  const PixelRect whole{{0}, {0}, {client.right}, {client.bottom}};
  buffer_.resize(whole.size());
  if (!buffer_.ready()) return;
  const Palette& p = look_.palette;
  const Colour ground = hot_ ? mix(p.titleTop, p.titleText, 0.16F) : p.titleTop;
  const Colour text = readable(p.titleText, ground);
  {
    GdiCanvas canvas(buffer_, fonts_, nullptr, look_.density);
    // The rounded corners lie on the frame's colour: there is no seeing through.
    canvas.fill(whole, p.border);
    canvas.box(whole, look_.density.toPixels(kRadius), ground,
               hot_ ? ground : mix(p.titleTop, p.titleBottom, 0.6F), p.border,
               squareCorners(place_.LabelLocation));
    const bool vertical = isVerticalTab(place_.LabelLocation);
    const Pixels margin = look_.density.toPixels(kTextMargin);
    PixelRect inside = whole;
    if (vertical) {
      inside.top += margin;
      inside.height -= margin * 2;
    } else {
      inside.left += margin;
      inside.width -= margin * 2;
    }
    TextStyle style;
    style.face = L"Verdana";
    style.points = vertical ? kVerticalPoints : kHorizontalPoints;
    style.colour = text;
    style.horizontal = HAlign::Centre;
    style.vertical = VAlign::Centre;
    // Read with the head towards the screen's middle.
    if (vertical) style.rotation = place_.LabelLocation == ScreenEdge::Left ? 90 : 270;
    canvas.text(inside, look_.name, style);
  }
  buffer_.blit(dc.get(), whole);
}

void frmContainerLabel::onMouseMove() {
  const POINT at = cursor();
  if (!tracking_) {
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, handle(), 0};
    tracking_ = TrackMouseEvent(&track) != FALSE;
  }
  if (!dragFrom_) {
    setHot(true);
    if (callbacks_.touched) callbacks_.touched();
    return;
  }
  const bool still = std::abs(at.x - dragFrom_->x) < GetSystemMetrics(SM_CXDRAG) &&
                     std::abs(at.y - dragFrom_->y) < GetSystemMetrics(SM_CYDRAG);
  if (!moved_ && still) return;
  moved_ = true;
  if (!callbacks_.dragged) return;
  const bool vertical = isVerticalTab(place_.LabelLocation);
  Point<Pixels> pointer{{static_cast<int>(at.x)}, {static_cast<int>(at.y)}};
  // It is held where it was taken hold of, as far as it lies the same way.
  if (vertical == isVerticalTab(placeBeforeDrag_.LabelLocation)) {
    if (vertical)
      pointer.y.value -= static_cast<int>(grip_.y);
    else
      pointer.x.value -= static_cast<int>(grip_.x);
  }
  const TabPlace place = callbacks_.dragged(pointer);
  if (place.rect != place_.rect) move(place);
}

void frmContainerLabel::onRelease(POINT screen) {
  if (!dragFrom_) return;
  const bool moved = moved_;
  dragFrom_.reset();
  moved_ = false;
  ReleaseCapture();
  if (moved) {
    if (callbacks_.dropped) callbacks_.dropped(place_);
    return;
  }
  RECT r{};
  GetWindowRect(handle(), &r);
  if (PtInRect(&r, screen) && callbacks_.clicked) callbacks_.clicked();
}

void frmContainerLabel::cancelDrag() {
  if (!dragFrom_) return;
  const bool moved = moved_;
  dragFrom_.reset();
  moved_ = false;
  if (GetCapture() == handle()) ReleaseCapture();
  if (moved) move(placeBeforeDrag_);
}

bool frmContainerLabel::info(long item, AccessibleInfo& out) {
  if (item != kAccessibleWindow) return false;
  out.name = look_.name;
  out.role = ROLE_SYSTEM_PUSHBUTTON;
  out.defaultAction = L"Show";
  out.states = shown() ? 0 : STATE_SYSTEM_INVISIBLE;
  RECT r{};
  GetWindowRect(handle(), &r);
  out.screenRect = {{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
  return true;
}

bool frmContainerLabel::doDefaultAction(long item) {
  return item == kAccessibleWindow && PostMessageW(handle(), kMsgAction, 0, 0) != FALSE;
}

LRESULT frmContainerLabel::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HandlerScope scope(handlers_);
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_MOUSEMOVE:
      onMouseMove();
      return 0;
    case WM_MOUSELEAVE:
      tracking_ = false;
      setHot(false);
      if (callbacks_.left) callbacks_.left();
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      RECT r{};
      GetWindowRect(handle(), &r);
      const POINT at = toScreen(lParam);
      dragFrom_ = at;
      grip_ = {at.x - (r.left + r.right) / 2, at.y - (r.top + r.bottom) / 2};
      placeBeforeDrag_ = place_;
      moved_ = false;
      SetCapture(handle());
      return 0;
    }
    case WM_LBUTTONUP:
      onRelease(toScreen(lParam));
      return 0;
    case WM_CAPTURECHANGED:
      cancelDrag();
      return 0;
    case WM_CONTEXTMENU:
      if (callbacks_.menu) callbacks_.menu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return 0;
    case WM_GETOBJECT:
      if (const LRESULT answer = accessible_.getObject(handle(), wParam, lParam); answer != 0)
        return answer;
      break;
    case WM_CLOSE:
      return 0;  // it goes with its container
    case WM_DESTROY:
      dropTarget_.revoke();
      accessible_.disconnect();
      return 0;
    case kMsgAction:
      if (callbacks_.clicked) callbacks_.clicked();
      return 0;
    default:
      break;
  }
  return Window::handleMessage(message, wParam, lParam);
}

}  // namespace varnowick
