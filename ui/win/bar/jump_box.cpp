#include "ui/win/bar/jump_box.h"

#include <windowsx.h>

#include <algorithm>

#include "platform/win32/common_controls.h"
#include "ui/scene/jump_row.h"

namespace varnowick {
namespace {

constexpr int kSearchId = 1;
constexpr int kListId = 2;
constexpr int kMostTyped = 64;
// Nobody reads on further; typing one more letter is quicker.
constexpr std::size_t kMostListed = 200;
constexpr int kMostVisible = 12;

}  // namespace

PicJumpToLink::~PicJumpToLink() { destroy(); }

void PicJumpToLink::attach(HWND parent, Density density) {
  parent_ = parent;
  density_ = density;
}

bool PicJumpToLink::makeWindows() {
  if (handle() != nullptr) return true;
  Create options;
  options.className = L"VarnowickJumpBox";
  options.title = L"Jump to";
  options.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  options.owner = parent_;
  if (!create(options)) return false;
  CommonControls::get();
  // Screen readers take the label before a control for its name.
  addChild(L"STATIC", L"Jump to", 0, -1);
  cboSearch_ = addChild(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, kSearchId);
  addChild(L"STATIC", L"Matches", 0, -1);
  list_ =
      addChild(L"LISTBOX", L"Matches",
               LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, kListId);
  if (cboSearch_ == nullptr || list_ == nullptr) return false;
  SendMessageW(cboSearch_, EM_LIMITTEXT, kMostTyped, 0);
  // A hint in the empty field, where the system knows such (Windows XP and later).
  constexpr UINT kSetCueBanner = 0x1501;
  SendMessageW(cboSearch_, kSetCueBanner, TRUE,
               reinterpret_cast<LPARAM>(L"Shortcut, container or file"));
  for (const HWND control : {cboSearch_, list_})
    SetWindowLongPtrW(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  editBase_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(cboSearch_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&editProcedure)));
  listBase_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&listProcedure)));
  makeFont();
  SendMessageW(list_, LB_SETITEMHEIGHT, 0, scaled(kJumpRowHeight));
  return true;
}

HWND PicJumpToLink::addChild(const wchar_t* windowClass, const wchar_t* title, DWORD style,
                             int id) {
  return CreateWindowExW(0, windowClass, title, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, handle(),
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                         GetModuleHandleW(nullptr), nullptr);
}

// A font of its own: those of the cache may be gone when the field next needs it.
void PicJumpToLink::makeFont() {
  TextStyle style;
  style.points = kJumpPoints;
  LOGFONTW description{};
  if (GetObjectW(fonts_.get(style, density_), sizeof description, &description) == 0) return;
  FontHandle font(CreateFontIndirectW(&description));
  SendMessageW(cboSearch_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  font_ = std::move(font);
}

void PicJumpToLink::setPalette(const Palette& palette) {
  palette_ = palette;
  const auto brush = [](Colour colour) {
    return BrushHandle(CreateSolidBrush(static_cast<COLORREF>(colour.bgr)));
  };
  fieldBrush_ = brush(jumpFieldGround(palette));
  listBrush_ = brush(jumpListGround(palette));
  if (handle() == nullptr) return;
  makeFont();
  invalidate();
}

void PicJumpToLink::place(const PixelRect& panel) {
  panel_ = panel;
  if (handle() != nullptr) arrange();
}

RECT PicJumpToLink::field() const {
  const int margin = scaled(kJumpMargin);
  return {margin, margin, std::max(margin, panel_.width.value - margin),
          margin + scaled(kJumpFieldHeight)};
}

PicJumpToLink::Geometry PicJumpToLink::geometry() const {
  Geometry g;
  const int margin = scaled(kJumpMargin);
  const int width = panel_.width.value;
  const int fieldHeight = scaled(kJumpFieldHeight);
  const int rowHeight = scaled(kJumpRowHeight);
  const RECT frame = field();
  int height = fieldHeight + 2 * margin;
  const int fitting = std::max(0, (panel_.height.value - height - margin) / rowHeight);
  const int listed = static_cast<int>(std::min(matches_.size(), kMostListed));
  g.visibleRows = std::min({listed, kMostVisible, fitting});
  // The margin at the right is where the thumb shows how far the list goes.
  g.list = {margin, height, std::max(margin, width - margin), height + g.visibleRows * rowHeight};
  if (g.visibleRows > 0) height += g.visibleRows * rowHeight + margin;
  g.box = {panel_.left.value, panel_.top.value, panel_.right().value,
           panel_.top.value + std::min(height, panel_.height.value)};

  TextStyle style;
  style.points = kJumpPoints;
  const WindowDc dc(handle());
  const int line = measureGdiText(dc.get(), fonts_, density_, L"Hg", style, Pixels{0}).height.value;
  const int top = frame.top + std::max(0, (fieldHeight - line) / 2);
  g.edit = {frame.left + scaled(kJumpFieldTextLeft), top, 0, top + line};
  GdiTextMeasure measure(density_);
  const Pixels wordsWidth = jumpWordsWidth(measure, words(), density_);
  g.edit.right = std::max<LONG>(g.edit.left, frame.right - wordsWidth.value - scaled(8));
  return g;
}

void PicJumpToLink::arrange() {
  const Geometry g = geometry();
  const auto put = [](HWND window, const RECT& r) {
    SetWindowPos(window, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  };
  put(cboSearch_, g.edit);
  put(list_, g.list);
  ShowWindow(list_, g.visibleRows > 0 ? SW_SHOWNA : SW_HIDE);
  SetWindowPos(handle(), HWND_TOP, g.box.left, g.box.top, g.box.right - g.box.left,
               g.box.bottom - g.box.top, SWP_NOACTIVATE);
  InvalidateRect(handle(), nullptr, FALSE);
}

void PicJumpToLink::invalidate() {
  if (!shown_) return;
  InvalidateRect(handle(), nullptr, FALSE);
  InvalidateRect(cboSearch_, nullptr, TRUE);
  InvalidateRect(list_, nullptr, FALSE);
}

void PicJumpToLink::open() {
  if (!makeWindows()) return;
  if (!shown_) {
    shown_ = true;
    SetWindowTextW(cboSearch_, L"");
    refresh();
    ShowWindow(handle(), SW_SHOWNA);
  }
  SetFocus(cboSearch_);
}

void PicJumpToLink::close() {
  if (!shown_) return;
  const bool focused = hasFocus();
  shown_ = false;
  // The focus first: hiding the window that has it would give it to nobody.
  if (focused) SetFocus(parent_);
  ShowWindow(handle(), SW_HIDE);
  clear();
}

bool PicJumpToLink::hasFocus() const {
  const HWND focus = GetFocus();
  return shown_ && focus != nullptr && (focus == handle() || IsChild(handle(), focus));
}

void PicJumpToLink::refresh() {
  if (!shown_) return;
  jumpTo_.setEntries(callbacks_.entries ? callbacks_.entries() : std::vector<JumpEntry>{});
  const int row = static_cast<int>(SendMessageW(list_, LB_GETCURSEL, 0, 0));
  search();
  if (row > 0 && row < static_cast<int>(matches_.size())) select(row);
}

void PicJumpToLink::clear() { SetWindowTextW(cboSearch_, L""); }

std::wstring PicJumpToLink::text() const {
  std::wstring typed(static_cast<std::size_t>(kMostTyped) + 1, L'\0');
  const int length = GetWindowTextW(cboSearch_, typed.data(), kMostTyped + 1);
  typed.resize(static_cast<std::size_t>(std::max(0, length)));
  return typed;
}

std::wstring PicJumpToLink::words() const {
  if (query_.find_first_not_of(L' ') == std::wstring::npos) return {};
  if (matches_.empty()) return L"No match";
  return std::to_wstring(matches_.size()) + (matches_.size() == 1 ? L" match" : L" matches");
}

void PicJumpToLink::search() {
  query_ = text();
  matches_ = jumpTo_.find(query_);
  position_.reset();
  hovered_ = pressed_ = -1;
  SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list_, LB_RESETCONTENT, 0, 0);
  const std::size_t listed = std::min(matches_.size(), kMostListed);
  for (std::size_t i = 0; i < listed; ++i) {
    std::wstring item = jumpTo_.caption(matches_[i]);
    const std::wstring where =
        callbacks_.place ? callbacks_.place(jumpTo_.target(matches_[i])) : std::wstring();
    if (!where.empty()) item += L" (" + where + L")";
    SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  }
  arrange();
  SendMessageW(list_, LB_SETCURSEL, listed == 0 ? static_cast<WPARAM>(-1) : 0, 0);
  SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list_, nullptr, FALSE);
}

void PicJumpToLink::select(int row) {
  SendMessageW(list_, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
  InvalidateRect(handle(), nullptr, FALSE);
  // The focus stays in the field; readers are to follow the choice all the same.
  NotifyWinEvent(EVENT_OBJECT_FOCUS, list_, OBJID_CLIENT, row + 1);
}

JumpTarget PicJumpToLink::current() const {
  const auto row = static_cast<int>(SendMessageW(list_, LB_GETCURSEL, 0, 0));
  if (!shown_ || row < 0 || row >= static_cast<int>(matches_.size())) return {};
  return jumpTo_.target(matches_[static_cast<std::size_t>(row)]);
}

void PicJumpToLink::startCurrent() {
  const JumpTarget target = current();
  if (target.none()) return;
  close();
  if (callbacks_.start) callbacks_.start(target);
}

bool PicJumpToLink::apply(const KeyDecision& decision) {
  const int listed = static_cast<int>(SendMessageW(list_, LB_GETCOUNT, 0, 0));
  const auto show = [this](int row) {
    if (row < 0) return;
    select(row);
    if (callbacks_.showMatch)
      callbacks_.showMatch(jumpTo_.target(matches_[static_cast<std::size_t>(row)]));
  };
  const auto step = [&](int by) {
    if (listed == 0) return;
    const int from = static_cast<int>(SendMessageW(list_, LB_GETCURSEL, 0, 0));
    const int row = std::clamp(from + by, 0, listed - 1);
    select(row);
    position_.moveTo(row);
  };
  switch (decision.action) {
    case KeyAction::JumpType: {
      // The character that the key stands for on this keyboard waits already.
      MSG typed{};
      const bool waits = PeekMessageW(&typed, parent_, WM_CHAR, WM_CHAR, PM_REMOVE) != FALSE;
      open();
      SendMessageW(cboSearch_, WM_CHAR, waits ? typed.wParam : decision.typed, 1);
      return true;
    }
    case KeyAction::JumpClear:
      clear();
      return true;
    case KeyAction::JumpClose:
      close();
      return true;
    case KeyAction::JumpNext:
      show(position_.showNext(listed));
      return true;
    case KeyAction::JumpPrevious:
      show(position_.showPrevious(listed));
      return true;
    case KeyAction::JumpUp:
      step(-1);
      return true;
    case KeyAction::JumpDown:
      step(1);
      return true;
    case KeyAction::JumpStart:
      startCurrent();
      return true;
    case KeyAction::None:
    case KeyAction::RunCommand:
      return false;
  }
  return false;
}

LRESULT PicJumpToLink::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint();
      return 0;
    case WM_DRAWITEM:
      drawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_CTLCOLOREDIT: {
      const auto dc = reinterpret_cast<HDC>(wParam);
      SetTextColor(dc, static_cast<COLORREF>(palette_.text.bgr));
      SetBkColor(dc, static_cast<COLORREF>(jumpFieldGround(palette_).bgr));
      return reinterpret_cast<LRESULT>(fieldBrush_.get());
    }
    case WM_CTLCOLORLISTBOX:
      return reinterpret_cast<LRESULT>(listBrush_.get());
    case WM_COMMAND: {
      const int id = LOWORD(wParam);
      const int code = HIWORD(wParam);
      if (id == kSearchId && code == EN_CHANGE) search();
      if (id == kSearchId && (code == EN_SETFOCUS || code == EN_KILLFOCUS))
        InvalidateRect(handle(), nullptr, FALSE);
      // How screen readers start an item.
      if (id == kListId && code == LBN_DBLCLK) startCurrent();
      return 0;
    }
    case WM_LBUTTONDOWN:
      SetFocus(cboSearch_);
      return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_CONTEXTMENU:
      return 0;  // the bar behind the box is not meant
    default:
      return Window::handleMessage(message, wParam, lParam);
  }
}

}  // namespace varnowick
