#include "ui/win/bar/frm_toolbar.h"

#include <windowsx.h>

#include "sidebar/toolbar_place.h"
#include "ui/win/toolkit/messages.h"

namespace varnowick {
namespace {

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

}  // namespace

frmToolbar::frmToolbar(ImageSource& images, GdiFonts& fonts, Callbacks callbacks)
    : callbacks_(std::move(callbacks)),
      view_(scene_, images, fonts),
      items_(scene_, view_.input(), L"Varnowick toolbar",
             [this](NodeId node) {
               return PostMessageW(handle(), kMsgAction, static_cast<WPARAM>(node.kind), 0) !=
                      FALSE;
             }),
      accessible_(items_),
      tooltip_([this](NodeId node) {
        const PixelRect r = view_.toClient(node);
        POINT origin{};
        ClientToScreen(handle(), &origin);
        return BalloonTooltip::Content{
            tooltipText(node, scene_, {}, {}, nullptr, view_.density()),
            r.translated(Pixels{static_cast<int>(origin.x)}, Pixels{static_cast<int>(origin.y)})};
      }) {}

frmToolbar::~frmToolbar() { destroy(); }

bool frmToolbar::makeWindow() {
  if (handle() != nullptr) return true;
  Create options;
  options.className = L"VarnowickToolbar";
  options.title = L"Varnowick toolbar";
  options.exStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;
  options.owner = owner_;
  if (!create(options)) return false;
  view_.attach(handle(), view_.density());
  items_.attach(handle());
  tooltip_.attach(handle());
  return true;
}

std::optional<PixelRect> frmToolbar::placeOf(const State& state) {
  if (!state.on) return std::nullopt;
  Scene scene;
  const Size<Twips> twips = buildToolbar(scene, {toolbarIsColumn(state.edge), state.look});
  return toolbarPlace(state.bar, state.edge, state.work,
                      {state.density.toPixels(twips.width), state.density.toPixels(twips.height)});
}

void frmToolbar::update(const State& state) {
  const auto place = placeOf(state);
  if (!place) return hide();
  if (!makeWindow()) return;
  buildToolbar(scene_, {toolbarIsColumn(state.edge), state.look});
  view_.setDensity(state.density);
  items_.setDensity(state.density);
  SetWindowPos(handle(), nullptr, place->left.value, place->top.value, place->width.value,
               place->height.value, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
  view_.invalidate();
  if (!shown()) ShowWindow(handle(), SW_SHOWNA);
}

void frmToolbar::hide() {
  tooltip_.hide();
  if (!shown()) return;
  ShowWindow(handle(), SW_HIDE);
  view_.mouseLeft();
}

bool frmToolbar::shown() const { return handle() != nullptr && IsWindowVisible(handle()); }

void frmToolbar::clicked(NodeId node) {
  const Command command = toolbarCommand(node.kind);
  if (command != Command::None && callbacks_.clicked) callbacks_.clicked(command);
}

LRESULT frmToolbar::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      view_.paint();
      return 0;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_MOUSEMOVE: {
      TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, handle(), 0};
      TrackMouseEvent(&track);
      view_.mouseMoved(pointOf(lParam));
      tooltip_.hover(view_.input().hovered());
      return 0;
    }
    case WM_MOUSELEAVE:
      tooltip_.hover({});
      view_.mouseLeft();
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      tooltip_.hide();
      view_.mousePressed(pointOf(lParam));
      SetCapture(handle());
      return 0;
    case WM_LBUTTONUP: {
      const NodeId node = view_.mouseReleased(pointOf(lParam));
      ReleaseCapture();
      clicked(node);
      return 0;
    }
    case WM_CAPTURECHANGED:
      view_.captureLost();
      return 0;
    case WM_CONTEXTMENU:
      tooltip_.hide();
      if (callbacks_.menu) callbacks_.menu(pointOf(lParam));
      return 0;
    case WM_GETOBJECT:
      if (const LRESULT answer = accessible_.getObject(handle(), wParam, lParam); answer != 0)
        return answer;
      break;
    case WM_CLOSE:
      return 0;  // it lives as long as the bar
    case WM_DESTROY:
      accessible_.disconnect();
      return 0;
    case kMsgAction:
      clicked({static_cast<ControlKind>(wParam), 0});
      return 0;
    default:
      break;
  }
  return Window::handleMessage(message, wParam, lParam);
}

}  // namespace varnowick
