// The mouse, the keyboard and the menu on folder containers.

#include <algorithm>

#include "platform/clock.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/toolkit/accessible.h"
#include "ui/win/toolkit/file_drag.h"
#include "ui/win/toolkit/popup_menu.h"
#include "ui/win/toolkit/wheel_lines.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

enum RowCommand { kOpen = 1, kCut, kCopy, kPaste, kRename, kDelete, kSelectAll, kOpenFolder };

std::optional<ListMove> moveOf(int key) {
  switch (key) {
    case VK_UP:
      return ListMove::Up;
    case VK_DOWN:
      return ListMove::Down;
    case VK_PRIOR:
      return ListMove::PageUp;
    case VK_NEXT:
      return ListMove::PageDown;
    case VK_HOME:
      return ListMove::Home;
    case VK_END:
      return ListMove::End;
    default:
      return std::nullopt;
  }
}

bool isLetterKey(int key) {
  return (key >= '0' && key <= 'Z') || (key >= VK_NUMPAD0 && key <= VK_DIVIDE) ||
         (key >= VK_OEM_1 && key <= VK_OEM_102);
}

}  // namespace

void FolderContainers::focus(ContainerSlot slot) {
  if (const FolderPane* pane = paneOf(slot)) pane->view->focus(folderListNode(slot));
}

NodeId FolderContainers::currentRow(NodeId node) const {
  const FolderView* view = viewOf(node);
  if (view == nullptr || node.kind != ControlKind::LstFolder) return node;
  const NodeId row = nodeOfFolderRow(folderContainerOf(node), *view, view->current());
  return row.none() ? node : row;
}

bool FolderContainers::pressed(NodeId node, Modifiers held) {
  FolderView* view = viewOf(node);
  if (view == nullptr) return false;
  const ContainerSlot slot = folderContainerOf(node);
  pressKeys_ = held;
  const int row = folderRowOf(node, *view);
  pressedPath_ = view->pathOf(row);
  view->press(row, held);
  focus(slot);
  changed(slot, false);
  return true;
}

bool FolderContainers::released(NodeId node, bool click) {
  FolderView* view = viewOf(node);
  if (view == nullptr) return false;
  view->release(folderRowOf(node, *view), pressKeys_, !click);
  changed(folderContainerOf(node), false);
  return true;
}

bool FolderContainers::clicked(NodeId node, bool doubleClick) {
  const FolderView* view = viewOf(node);
  if (view == nullptr) return false;
  // Of two quick clicks one opens the file: the one the user has chosen.
  const bool opens =
      doubleClick == document_.settings.doubleClick && !pressKeys_.ctrl && !pressKeys_.shift;
  if (opens && view->pathOf(folderRowOf(node, *view)) == pressedPath_) open(node);
  return true;
}

bool FolderContainers::wheel(NodeId node, int delta) {
  FolderView* view = viewOf(node);
  if (view == nullptr || !view->scrolls()) return false;
  const int page = std::max(1, view->bottom() - view->top() - 1);
  if (view->scrollBy(wheelLines(delta, page, wheelRest_))) changed(folderContainerOf(node), true);
  return true;
}

bool FolderContainers::keyDown(NodeId focused, Key key) {
  FolderView* view = viewOf(focused);
  if (view == nullptr || key.held.alt) return false;
  const ContainerSlot slot = folderContainerOf(focused);
  if (const auto move = moveOf(key.code)) {
    const int top = view->top();
    if (view->move(*move, key.held)) {
      changed(slot, view->top() != top);
      if (const FolderPane* pane = paneOf(slot))
        announce(pane->window, EVENT_OBJECT_FOCUS,
                 pane->items->itemOf(nodeOfFolderRow(slot, *view, view->current())));
    }
    return true;
  }
  if (key.held.ctrl && !key.held.shift) {
    switch (key.code) {
      case 'A':
        run(slot, kSelectAll);
        return true;
      case 'C':
      case VK_INSERT:
        run(slot, kCopy);
        return true;
      case 'X':
        run(slot, kCut);
        return true;
      case 'V':
        run(slot, kPaste);
        return true;
      case VK_SPACE:
        view->toggleCurrent();
        changed(slot, false);
        return true;
      default:
        return false;
    }
  }
  if (key.held.ctrl) return false;
  switch (key.code) {
    case VK_RETURN:
      openSelected(slot);
      return true;
    case VK_DELETE:
      // With Shift it would mean to delete for good, which is not done from here.
      if (!key.held.shift) run(slot, kDelete);
      return true;
    case VK_F2:
      run(slot, kRename);
      return true;
    case VK_SPACE:
      return true;
    default:
      // It comes again as a letter.
      return isLetterKey(key.code);
  }
}

bool FolderContainers::typed(NodeId focused, wchar_t letter) {
  FolderView* view = viewOf(focused);
  if (view == nullptr || letter < L' ') return false;
  if (view->typed(letter, platform_.clock.milliseconds()))
    changed(folderContainerOf(focused), true);
  return true;
}

bool FolderContainers::contextMenu(NodeId node, POINT screen) {
  FolderView* view = viewOf(node);
  const ContainerSlot slot = folderContainerOf(node);
  const FolderPane* pane = paneOf(slot);
  if (view == nullptr || pane == nullptr || modal_.active()) return false;
  // The menu is about the selection, which the row under the mouse joins.
  const int row = folderRowOf(node, *view);
  if (row >= 0 && !view->isSelected(row)) view->selectOnly(row);
  focus(slot);
  changed(slot, false);
  const bool any = view->selectedCount() > 0 && row >= 0;
  const bool locked = document_.settings.locked;
  const auto item = [&](RowCommand command, const wchar_t* caption, const wchar_t* key,
                        bool enabled) {
    return MenuItem{
        .caption = caption, .key = key, .enabled = enabled, .act = [this, slot, command] {
          run(slot, command);
        }};
  };
  const std::vector<MenuItem> items = {
      item(kOpen, L"&Open", L"Enter", any),
      item(kOpenFolder, L"Open &folder", L"", true),
      {},
      item(kCut, L"Cu&t", L"Ctrl+X", any && !locked),
      item(kCopy, L"&Copy", L"Ctrl+C", any),
      item(kPaste, L"&Paste", L"Ctrl+V", !locked && clipboardHasFiles()),
      {},
      item(kRename, L"Rena&me", L"F2", view->selectedCount() == 1 && row >= 0 && !locked),
      item(kDelete, L"&Delete", L"Del", any && !locked),
      {},
      item(kSelectAll, L"Select &all", L"Ctrl+A", view->count() > 0)};
  runMenu(pane->window, modal_, items, screen);
  return true;
}

void FolderContainers::run(ContainerSlot slot, int command) {
  Shown* found = shown(slot);
  if (found == nullptr) return;
  switch (command) {
    case kOpen:
      return openSelected(slot);
    case kOpenFolder:
      return openFolder(slot);
    case kCut:
      return copySelected(slot, true);
    case kCopy:
      return copySelected(slot, false);
    case kPaste:
      paste(slot);
      return;
    case kRename:
      return renameCurrent(slot);
    case kDelete:
      recycle(found->view.selectedPaths());
      return;
    case kSelectAll:
      found->view.selectAll();
      return changed(slot, false);
    default:
      return;
  }
}

}  // namespace varnowick
