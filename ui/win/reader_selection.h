// What screen readers do to the selection (IAccessible::accSelect), posted to the
// window, for they wait for the answer.
#pragma once

#include <windows.h>

#include "ui/scene/workspace_editor.h"

namespace varnowick {

inline constexpr UINT kMsgSelect = WM_APP + 8;

// False for what cannot be selected.
bool postSelection(HWND window, const Scene& scene, NodeId node, long flags);
// Carries out a kMsgSelect. The node that is to take the focus, or none.
NodeId takeSelection(WorkspaceEditor& editor, const Scene& scene, WPARAM wParam, LPARAM lParam);

}  // namespace varnowick
