// What screen readers do to the selection (IAccessible::accSelect), posted to the
// window as kMsgSelect, for they wait for the answer.
#pragma once

#include <windows.h>

#include "ui/scene/workspace_editor.h"

namespace varnowick {

// False for what cannot be selected.
bool postSelection(HWND window, const Scene& scene, NodeId node, long flags);
// Carries out a kMsgSelect. The node that is to take the focus, or none.
NodeId takeSelection(WorkspaceEditor& editor, const Scene& scene, WPARAM wParam, LPARAM lParam);

}  // namespace varnowick
