// Popup menus. While one is open it counts as a menu of the program, and readers are
// told.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/commands/menu_item.h"
#include "ui/win/toolkit/modal.h"

namespace varnowick {

// A caption that shows the text as it is, whatever menus take "&" and tabs for.
std::wstring menuText(const std::wstring& text);

// Where a menu opens on the screen. What opened it by a click is left clear, or the
// second of two quick clicks would choose a row.
struct MenuPlace {
  POINT at{};
  RECT clear{};  // empty: nothing
  MenuPlace(POINT point) : at(point) {}
  explicit MenuPlace(const RECT& button) : at{button.left, button.bottom}, clear(button) {}
};

// Shows the menu there and waits, then calls the function of the chosen row. The command
// of that row, which is still to be run. The owner is brought to the foreground, so that
// a click elsewhere closes the menu; anything may have happened meanwhile.
Command runMenu(HWND owner, ModalDepth& modal, const std::vector<MenuItem>& items,
                const MenuPlace& place);

}  // namespace varnowick
