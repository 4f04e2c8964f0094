// A document whose every saved field differs from its default, and helpers to
// look at the files that come from it.
#pragma once

#include <string>

#include "core/document.h"

namespace varnowick {

// Three containers (a detached shortcut container with everything set, a folded
// feed, a shrunk folder), pictures and shortcuts in them and on the main panel.
Document referenceDocument();

}  // namespace varnowick
