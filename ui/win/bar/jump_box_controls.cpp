// The field and the list of the jump-to box: what their keys and clicks mean, and
// how they are drawn.

#include <windowsx.h>

#include <algorithm>

#include "ui/scene/jump_row.h"
#include "ui/win/bar/jump_box.h"
#include "ui/win/toolkit/gdi_canvas.h"
#include "ui/win/toolkit/held_keys.h"
#include "ui/win/toolkit/wheel_lines.h"

namespace varnowick {
namespace {

PixelRect pixels(const RECT& r) {
  return {{r.left}, {r.top}, {r.right - r.left}, {r.bottom - r.top}};
}

PicJumpToLink* ownerOf(HWND control) {
  return reinterpret_cast<PicJumpToLink*>(GetWindowLongPtrW(control, GWLP_USERDATA));
}

// Editing keys mean in a field of text what they mean in every other.
bool belongsToEditing(Key key) {
  const auto is = [&](int code) { return key.code == code; };
  return is(VK_DELETE) ||
         (key.held == kCtrl && (is('C') || is('V') || is('X') || is('Z') || is(VK_INSERT)));
}

// Characters from the blank down, but for Backspace, copy, paste, cut and undo;
// 0x7F is what Ctrl+Backspace types.
bool isForField(WPARAM character) {
  constexpr WPARAM kTaken[] = {VK_BACK, 0x03, 0x16, 0x18, 0x1A};
  if (character <= L' ')
    return std::find(std::begin(kTaken), std::end(kTaken), character) != std::end(kTaken);
  return character != 0x7F;
}

}  // namespace

LRESULT CALLBACK PicJumpToLink::editProcedure(HWND edit, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  PicJumpToLink* owner = ownerOf(edit);
  if (owner == nullptr) return DefWindowProcW(edit, message, wParam, lParam);
  // Nothing may unwind into the system's dispatcher.
  try {
    return owner->onEdit(message, wParam, lParam);
  } catch (...) {
    return 0;
  }
}

LRESULT CALLBACK PicJumpToLink::listProcedure(HWND list, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  PicJumpToLink* owner = ownerOf(list);
  if (owner == nullptr) return DefWindowProcW(list, message, wParam, lParam);
  try {
    return owner->onList(message, wParam, lParam);
  } catch (...) {
    return 0;
  }
}

LRESULT PicJumpToLink::onEdit(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_KEYDOWN:
      if (onEditKey(static_cast<int>(wParam))) return 0;
      break;
    case WM_CHAR:
      // The keys behind these have been dealt with; the field would beep or, for
      // the blank, take it in.
      if (!isForField(wParam)) return 0;
      break;
    case WM_MOUSEWHEEL: {
      const int page = std::max(1, geometry().visibleRows - 1);
      const int rows = wheelLines(GET_WHEEL_DELTA_WPARAM(wParam), page, wheelRest_);
      const auto top = static_cast<int>(SendMessageW(list_, LB_GETTOPINDEX, 0, 0));
      SendMessageW(list_, LB_SETTOPINDEX, static_cast<WPARAM>(std::max(0, top + rows)), 0);
      InvalidateRect(handle(), nullptr, FALSE);
      return 0;
    }
    default:
      break;
  }
  return CallWindowProcW(editBase_, cboSearch_, message, wParam, lParam);
}

bool PicJumpToLink::onEditKey(int code) {
  const Key key{code, heldModifiers()};
  if (belongsToEditing(key)) return false;
  if (key == Key{'A', kCtrl}) {
    SendMessageW(cboSearch_, EM_SETSEL, 0, -1);
    return true;
  }
  if (code == VK_TAB) {
    SetFocus(GetParent(handle()));
    return true;
  }
  KeyState state;
  state.jumpBoxShown = true;
  state.jumpBoxHasText = hasText();
  const ShortcutSlot match = current().shortcut;
  state.shortcutSelected = !match.none();
  state.barExpanded = true;
  const KeyDecision decision = decideKey(key, state);
  // Letters reach the field as characters, in whatever language they are typed.
  if (decision.action == KeyAction::JumpType || decision.action == KeyAction::None) return false;
  // About the match that is highlighted, and not what is selected on the bar.
  if (decision.command == Command::mnuShortcutProperties) {
    close();
    if (callbacks_.properties) callbacks_.properties(match);
    return true;
  }
  if (!apply(decision) && callbacks_.key) callbacks_.key(decision);
  return true;
}

int PicJumpToLink::rowAt(LPARAM point) const {
  const LRESULT hit = SendMessageW(list_, LB_ITEMFROMPOINT, 0, point);
  const int row = LOWORD(hit);
  const auto count = static_cast<int>(SendMessageW(list_, LB_GETCOUNT, 0, 0));
  return HIWORD(hit) != 0 || row >= count ? -1 : row;
}

void PicJumpToLink::hoverRow(int row) {
  if (row == hovered_) return;
  for (const int changed : {hovered_, row}) {
    RECT r{};
    if (changed >= 0 && SendMessageW(list_, LB_GETITEMRECT, static_cast<WPARAM>(changed),
                                     reinterpret_cast<LPARAM>(&r)) != LB_ERR)
      InvalidateRect(list_, &r, FALSE);
  }
  hovered_ = row;
}

LRESULT PicJumpToLink::onList(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
      SetFocus(cboSearch_);
      return 0;
    case WM_MOUSEACTIVATE:
      return MA_ACTIVATE;
    case WM_MOUSEMOVE: {
      TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, list_, 0};
      TrackMouseEvent(&track);
      hoverRow(rowAt(lParam));
      return 0;
    }
    case WM_MOUSELEAVE:
      hoverRow(-1);
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      SetFocus(cboSearch_);
      pressed_ = rowAt(lParam);
      if (pressed_ >= 0) {
        select(pressed_);
        position_.moveTo(pressed_);
      }
      return 0;
    case WM_LBUTTONUP: {
      const int row = rowAt(lParam);
      const bool clicked = row >= 0 && row == pressed_;
      pressed_ = -1;
      if (clicked) startCurrent();
      return 0;
    }
    case WM_MOUSEWHEEL:
      return SendMessageW(cboSearch_, message, wParam, lParam);
    default:
      return CallWindowProcW(listBase_, list_, message, wParam, lParam);
  }
}

PixelRect PicJumpToLink::thumb() const {
  RECT r{};
  GetWindowRect(list_, &r);
  MapWindowPoints(nullptr, handle(), reinterpret_cast<POINT*>(&r), 2);
  const auto count = static_cast<int>(SendMessageW(list_, LB_GETCOUNT, 0, 0));
  const int rows = (r.bottom - r.top) / std::max(1, scaled(kJumpRowHeight));
  if (rows == 0 || count <= rows) return {};
  const auto top = static_cast<int>(SendMessageW(list_, LB_GETTOPINDEX, 0, 0));
  const int height = r.bottom - r.top;
  const int length = std::max(scaled(16), height * rows / count);
  const int way = (height - length) * std::min(top, count - rows) / (count - rows);
  return {{r.right + scaled(2)}, {r.top + way}, {scaled(4)}, {length}};
}

void PicJumpToLink::paint() {
  const PaintDc dc(handle());
  RECT client{};
  GetClientRect(handle(), &client);
  const PixelRect whole = pixels(client);
  buffer_.resize(whole.size());
  if (!buffer_.ready()) return;
  {
    GdiCanvas canvas(buffer_, fonts_, &images_, density_);
    paintJumpPanel(canvas, canvas, whole, pixels(field()), thumb(), words(), hasFocus(), palette_,
                   density_);
  }
  buffer_.blit(dc.get(), whole);
}

void PicJumpToLink::drawItem(const DRAWITEMSTRUCT& item) {
  const std::size_t at = item.itemID;
  const PixelRect place = pixels(item.rcItem);
  const PixelRect row{{0}, {0}, place.width, place.height};
  rowBuffer_.resize(row.size());
  if (!rowBuffer_.ready() || place.empty()) return;
  JumpRow look;
  if (at < matches_.size()) {
    look.caption = jumpTo_.caption(matches_[at]);
    look.matched = jumpTo_.highlighted(matches_[at], query_);
    if (callbacks_.icon) look.icon = callbacks_.icon(jumpTo_.target(matches_[at]));
    if (callbacks_.place) look.place = callbacks_.place(jumpTo_.target(matches_[at]));
    look.selected = (item.itemState & ODS_SELECTED) != 0;
    look.hovered = static_cast<int>(at) == hovered_;
  }
  {
    GdiCanvas canvas(rowBuffer_, fonts_, &images_, density_);
    paintJumpRow(canvas, canvas, row, look, palette_, density_);
  }
  POINT former{};
  SetViewportOrgEx(item.hDC, place.left.value, place.top.value, &former);
  rowBuffer_.blit(item.hDC, row);
  SetViewportOrgEx(item.hDC, former.x, former.y, nullptr);
}

}  // namespace varnowick
