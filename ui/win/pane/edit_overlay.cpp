#include "ui/win/pane/edit_overlay.h"

#include "ui/win/toolkit/dialog.h"
#include "ui/win/toolkit/held_keys.h"
#include "ui/win/toolkit/messages.h"

namespace varnowick {
namespace {

COLORREF colourOf(Colour colour) { return static_cast<COLORREF>(colour.bgr); }

EditOverlay* overlayOf(HWND control) {
  return reinterpret_cast<EditOverlay*>(GetWindowLongPtrW(control, GWLP_USERDATA));
}

}  // namespace

EditOverlay::~EditOverlay() { destroy(); }

void EditOverlay::attach(HWND owner, Density density) {
  owner_ = owner;
  density_ = density;
}

void EditOverlay::setDensity(Density density) {
  density_ = density;
  if (!active_) return;
  makeFont();
  arrange();
}

void EditOverlay::setPalette(const Palette& palette) {
  palette_ = palette;
  groundBrush_.reset(CreateSolidBrush(colourOf(ground(palette_))));
  if (handle() == nullptr) return;
  InvalidateRect(handle(), nullptr, TRUE);
  InvalidateRect(control_, nullptr, TRUE);
}

bool EditOverlay::makeWindows() {
  if (handle() != nullptr) return true;
  Create options;
  options.className = L"VarnowickEditOverlay";
  options.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  options.owner = owner_;
  if (!create(options)) return false;
  // Screen readers take the label before a control for its name.
  label_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 0, 0, handle(), nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  control_ = makeControl();
  if (control_ == nullptr) {
    destroy();
    return false;
  }
  SetWindowLongPtrW(control_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  controlBase_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(control_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&controlProcedure)));
  return true;
}

// A font of its own: those of the cache may be gone when the control next needs it.
void EditOverlay::makeFont() {
  LOGFONTW description{};
  if (GetObjectW(fonts_.get(style_, density_), sizeof description, &description) == 0) return;
  FontHandle font(CreateFontIndirectW(&description));
  SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  font_ = std::move(font);
  fontSet();
}

Pixels EditOverlay::lineHeight() const {
  const WindowDc dc(nullptr);
  return measureGdiText(dc.get(), fonts_, density_, {}, style_, Pixels{0}).height;
}

// Where the panel cuts the node off, it cuts the frame off.
void EditOverlay::clipTo(const PixelRect& frame, const PixelRect& node, const PixelRect& seen) {
  const bool clip = seen != node;
  if (!clip && !clipped_) return;
  clipped_ = clip;
  RegionHandle region;
  if (clip) {
    const int top = seen.top > node.top ? (seen.top - frame.top).value : 0;
    const int bottom =
        seen.bottom() < node.bottom() ? (seen.bottom() - frame.top).value : frame.height.value;
    region.reset(CreateRectRgn(0, top, frame.width.value, bottom));
  }
  // The system takes it over.
  SetWindowRgn(handle(), region.release(), TRUE);
}

bool EditOverlay::place() {
  const PixelRect seen = toPixels(scene_.seenRect(node_), density_);
  if (!scene_.shown(node_) || seen.empty()) return false;
  const PixelRect node = toPixels(scene_.windowRect(node_), density_);
  const PixelRect frame = frameRect(node);
  clipTo(frame, node, seen);
  const PixelRect inner = controlRect(frame.size());
  SetWindowPos(control_, nullptr, inner.left.value, inner.top.value, inner.width.value,
               inner.height.value, SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(handle(), HWND_TOP, frame.left.value, frame.top.value, frame.width.value,
               frame.height.value, SWP_NOACTIVATE);
  return true;
}

bool EditOverlay::show(NodeId node, const std::wstring& text, const TextStyle& style,
                       const std::wstring& accessibleName) {
  const HandlerScope scope(handlers_);
  accept();
  if (scene_.seenRect(node).empty() || !makeWindows()) return false;
  node_ = node;
  style_ = style;
  style_.rotation = 0;
  makeFont();
  SetWindowTextW(label_, accessibleName.c_str());
  SetWindowTextW(control_, text.c_str());
  if (!place()) return false;
  active_ = true;
  ShowWindow(handle(), SW_SHOWNA);
  SetFocus(control_);
  return true;
}

void EditOverlay::arrange() {
  if (!active_) return;
  const HandlerScope scope(handlers_);
  if (scene_.find(node_) == nullptr || !scene_.shown(node_)) return vanished();
  if (!place()) accept();
}

bool EditOverlay::hasFocus() const {
  const HWND focus = GetFocus();
  return active_ && focus != nullptr && (focus == handle() || IsChild(handle(), focus));
}

std::wstring EditOverlay::text() const {
  return control_ == nullptr ? std::wstring() : windowText(control_);
}

void EditOverlay::end(bool accepted) {
  if (!active_) return;
  const HandlerScope scope(handlers_);
  ending();
  std::wstring entered = accepted ? text() : std::wstring();
  const bool focused = hasFocus();
  active_ = false;
  // The focus first: hiding the window that has it would give it to nobody.
  if (focused) SetFocus(owner_);
  ShowWindow(handle(), SW_HIDE);
  // A long text is not kept for nothing, nor to be undone into another one.
  SetWindowTextW(control_, L"");
  SendMessageW(control_, EM_EMPTYUNDOBUFFER, 0, 0);
  ended(accepted, std::move(entered));
}

LRESULT EditOverlay::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HandlerScope scope(handlers_);
  switch (message) {
    case WM_ERASEBKGND: {
      RECT client{};
      GetClientRect(handle(), &client);
      const auto dc = reinterpret_cast<HDC>(wParam);
      FillRect(dc, &client, groundBrush_.get());
      const BrushHandle edge(CreateSolidBrush(colourOf(palette_.accent)));
      FrameRect(dc, &client, edge.get());
      return 1;
    }
    case WM_CTLCOLOREDIT: {
      const auto dc = reinterpret_cast<HDC>(wParam);
      SetTextColor(dc, colourOf(ink(palette_)));
      SetBkColor(dc, colourOf(ground(palette_)));
      return reinterpret_cast<LRESULT>(groundBrush_.get());
    }
    case WM_COMMAND:
      if (HIWORD(wParam) == EN_CHANGE && active_) textChanged();
      return 0;
    case WM_SETFOCUS:
    case WM_LBUTTONDOWN:
      SetFocus(control_);
      return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_CONTEXTMENU:
      return 0;  // the scene behind is not meant
    case kMsgEditFocusGone:
      if (active_ && !hasFocus()) accept();
      return 0;
    case WM_NCDESTROY:
      label_ = control_ = nullptr;
      active_ = false;
      break;
    default:
      break;
  }
  return Window::handleMessage(message, wParam, lParam);
}

LRESULT CALLBACK EditOverlay::controlProcedure(HWND control, UINT message, WPARAM wParam,
                                               LPARAM lParam) {
  EditOverlay* overlay = overlayOf(control);
  if (overlay == nullptr) return DefWindowProcW(control, message, wParam, lParam);
  const HandlerScope scope(overlay->handlers_);
  // Nothing may unwind into the system's dispatcher.
  try {
    return overlay->onControl(message, wParam, lParam);
  } catch (...) {
    return 0;
  }
}

LRESULT EditOverlay::onControl(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
      if (wParam == 'A' && heldModifiers().ctrlAlone()) {
        selectAll();
        return 0;
      }
      if (keyDown(static_cast<int>(wParam))) return 0;
      break;
    case WM_CHAR: {
      // What Ctrl+A, Ctrl+Backspace and Escape would type.
      const bool control = wParam == 0x01 || wParam == 0x7F || wParam == VK_ESCAPE;
      if (control || refuses(static_cast<wchar_t>(wParam))) return 0;
      break;
    }
    case WM_KILLFOCUS:
      // Posted, because what follows may ask the user, and must not do so while the
      // system is still passing the focus on.
      if (active_) PostMessageW(handle(), kMsgEditFocusGone, 0, 0);
      break;
    default:
      break;
  }
  // What was done above may have ended the window.
  if (control_ == nullptr) return 0;
  return CallWindowProcW(controlBase_, control_, message, wParam, lParam);
}

}  // namespace varnowick
