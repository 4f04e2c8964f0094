#include "ui/win/toolkit/popup_menu.h"

#include <algorithm>
#include <cstddef>

#include "platform/win32/handles.h"
#include "ui/win/toolkit/accessible.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

// Appends the rows from `at` that are as deep as `depth`, and those below them, each
// with its place in the list, counted from 1.
HMENU build(const std::vector<MenuItem>& items, std::size_t& at, int depth) {
  const HMENU menu = CreatePopupMenu();
  while (at < items.size() && items[at].depth >= depth) {
    const MenuItem& item = items[at++];
    if (item.caption.empty()) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const UINT state = static_cast<UINT>((item.checked ? MF_CHECKED : MF_UNCHECKED) |
                                         (item.enabled ? MF_ENABLED : MF_GRAYED));
    if (at < items.size() && items[at].depth > depth) {
      const HMENU below = build(items, at, depth + 1);
      AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(below), item.caption.c_str());
      continue;
    }
    const std::wstring text = item.key.empty() ? item.caption : item.caption + L"\t" + item.key;
    AppendMenuW(menu, MF_STRING | state, static_cast<UINT_PTR>(at), text.c_str());
  }
  return menu;
}

// Not every system finds out by itself where a menu has room beside the button.
bool opensUpward(const RECT& button) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (IsRectEmpty(&button) ||
      !GetMonitorInfoW(MonitorFromRect(&button, MONITOR_DEFAULTTONEAREST), &monitor))
    return false;
  return button.top - monitor.rcWork.top > monitor.rcWork.bottom - button.bottom;
}

// The row's place, counted from 1; 0 for none.
std::size_t choose(HWND owner, ModalDepth& modal, const std::vector<MenuItem>& items,
                   const MenuPlace& place) {
  std::size_t at = 0;
  const MenuHandle menu(build(items, at, 0));
  const ModalDepth::MenuScope scope(modal);
  announce(owner, kEventMenuOpened);
  SetForegroundWindow(owner);
  TPMPARAMS keepClear{sizeof keepClear, place.clear};
  const bool above = opensUpward(place.clear);
  const UINT flags =
      TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_VERTICAL | (above ? TPM_BOTTOMALIGN : TPM_TOPALIGN);
  const int chosen =
      TrackPopupMenuEx(menu.get(), flags, place.at.x, above ? place.clear.top : place.at.y, owner,
                       IsRectEmpty(&place.clear) ? nullptr : &keepClear);
  // As documented for menus that are not opened from a menu bar: without a
  // message behind it the next menu could close at once.
  PostMessageW(owner, WM_NULL, 0, 0);
  announce(owner, kEventMenuClosed);
  return static_cast<std::size_t>(std::max(0, chosen));
}

}  // namespace

std::wstring menuText(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t c : text) result += c == L'&' ? L"&&" : std::wstring(1, c == L'\t' ? L' ' : c);
  return result;
}

Command runMenu(HWND owner, ModalDepth& modal, const std::vector<MenuItem>& items,
                const MenuPlace& place) {
  const std::size_t chosen = choose(owner, modal, items, place);
  if (chosen == 0 || chosen > items.size()) return Command::None;
  const MenuItem& item = items[chosen - 1];
  if (item.act) item.act();
  return item.command;
}

}  // namespace varnowick
