// Everything that the data files hold, as one value.
#pragma once

#include "core/settings.h"
#include "core/workspace.h"

namespace varnowick {

struct Document {
  Settings settings;
  Workspace workspace;
};

}  // namespace varnowick
