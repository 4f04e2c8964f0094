#include "ui/win/toolkit/reader_selection.h"

// This relies on windows.h.
#include <oleacc.h>

#include "ui/win/toolkit/messages.h"

namespace varnowick {
namespace {

constexpr int kFlagShift = 16;

}  // namespace

bool postSelection(HWND window, const Scene& scene, NodeId node, long flags) {
  const bool object = node.kind == ControlKind::lblShortcut ||
                      node.kind == ControlKind::PicContainer || node.kind == ControlKind::Container;
  const Node* found = scene.find(node);
  const bool focus = (flags & SELFLAG_TAKEFOCUS) != 0;
  if (found == nullptr || (!object && flags != SELFLAG_TAKEFOCUS) || (focus && !found->focusable))
    return false;
  const WPARAM what = static_cast<WPARAM>(node.kind) | static_cast<WPARAM>(flags) << kFlagShift;
  return PostMessageW(window, kMsgSelect, what, node.slot) != FALSE;
}

NodeId takeSelection(WorkspaceEditor& editor, const Scene& scene, WPARAM wParam, LPARAM lParam) {
  constexpr WPARAM kKind = (1U << kFlagShift) - 1;
  const NodeId node{static_cast<ControlKind>(wParam & kKind), static_cast<int>(lParam)};
  const auto flags = static_cast<long>(wParam >> kFlagShift);
  // It may have gone since it was posted.
  const Node* found = scene.find(node);
  if (found == nullptr) return {};
  const bool selected = found->selected;
  // A container is pressed at its title.
  const NodeId handle =
      node.kind == ControlKind::Container ? NodeId{ControlKind::ContainerLabel, node.slot} : node;
  const auto click = [&](bool ctrl) {
    editor.pressed(handle, ctrl);
    editor.released(handle, ctrl, false);
  };
  // Keys are about what has the focus, so that is selected.
  if ((flags & SELFLAG_TAKESELECTION) != 0 || (flags == SELFLAG_TAKEFOCUS && !selected))
    click(false);
  if (((flags & SELFLAG_ADDSELECTION) != 0 && !selected) ||
      ((flags & SELFLAG_REMOVESELECTION) != 0 && selected))
    click(true);
  return (flags & SELFLAG_TAKEFOCUS) != 0 ? node : NodeId{};
}

}  // namespace varnowick
