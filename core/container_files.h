// The container files, one for each container with what lies in it, numbered
// from 0. Works on bytes; where they come from and go to is desktop_store's
// business.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/load_report.h"
#include "core/object_records.h"
#include "core/workspace.h"
#include "platform/text_codec.h"

namespace varnowick {

// One pair of the container file between its head and its contents.
struct ContainerRow {
  enum class When { Always, Detached, ToolbarHidden, ShowingTag };
  Field<clsContainer> field;
  When when = When::Always;  // when the pair is written; it is always read
  bool reservedLineFollows = false;
};
std::span<const ContainerRow> containerTable();

// Adds the file's container and its contents to the workspace. Whatever cannot
// be read keeps its default and is reported under the path.
ContainerSlot readContainerFile(std::string_view bytes, const std::wstring& path, TextCodec& codec,
                                const Progress& progress, Workspace& workspace, LoadReport& report);

// A container is saved while it is visible on the sidebar or detached.
bool isSaved(const clsContainer& container);

// The container file's bytes.
std::string renderContainerFile(const clsContainer& container, const PanelContents& contents,
                                TextCodec& codec);
// The bytes of the files 0.con, 1.con, ... in slot order.
std::vector<std::string> renderContainerFiles(const Workspace& workspace,
                                              const ContentsByPanel& contents, TextCodec& codec);

}  // namespace varnowick
