// What the tooltip of a node says. Knows scene and workspace, no window; when
// and where it is shown is decided elsewhere.
#pragma once

#include <string>

#include "core/settings.h"
#include "core/workspace.h"
#include "ui/scene/scene.h"

namespace varnowick {

struct TooltipText {
  std::wstring title;  // one line, may be empty
  std::wstring text;   // lines joined by CR LF; empty: no tooltip
  bool operator==(const TooltipText&) const = default;
};

// Shortcuts: caption, target and, with [ShowTags], tags. Buttons: what they do
// and with which key. Pictures: their file. Containers: a name that does not fit,
// and the folder or address behind them. Without a measure the width of a name is
// estimated. All texts are cut to what can be read at a glance; nothing that
// stands in a file can bring in a line break.
TooltipText tooltipText(NodeId node, const Scene& scene, const Settings& settings,
                        const Workspace& workspace, TextMeasure* measure, Density density);

}  // namespace varnowick
