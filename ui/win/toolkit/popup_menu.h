// Popup menus from rows of depth, command, caption and state. Knows nothing of
// what the commands do; the caller runs the one that comes back. While one is open it
// counts as a menu of the program, and readers are told.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/win/toolkit/modal.h"

namespace varnowick {

struct MenuItem {
  int depth = 0;           // 0: the menu itself; a deeper row belongs to the row above it
  int command = 0;         // 0: a separator, or the head of a submenu
  std::wstring caption{};  // "&" marks the mnemonic; empty: a separator
  std::wstring key{};      // shown at the right, such as "F8"
  bool checked = false;
  bool enabled = true;
};

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

// Shows the menu there and waits. The command chosen, or 0. The owner is brought to the
// foreground, so that a click elsewhere closes it.
int chooseFromMenu(HWND owner, ModalDepth& modal, const std::vector<MenuItem>& items,
                   const MenuPlace& place);

}  // namespace varnowick
