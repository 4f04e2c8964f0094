// The question before containers are removed from the workspace. Removes nothing.
#pragma once

#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "platform/msg_box.h"

namespace varnowick {

// True when the containers are to go: after a Yes, or unasked with [ConfirmDelete]
// off.
bool confirmRemoval(const Settings& settings, MsgBox& msgBox, const Workspace& workspace,
                    const std::vector<ContainerSlot>& slots);

}  // namespace varnowick
