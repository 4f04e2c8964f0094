// The list of a folder container as nodes: a row for each entry that is in sight and
// none for the others, a thumb, and the message where there are no entries. Reads
// the view and never changes anything but its room; knows no window and no disk.
#pragma once

#include "ui/scene/folder_view.h"
#include "ui/scene/object_scene.h"

namespace varnowick {

inline constexpr Twips kFolderRowHeight{330};

inline NodeId folderListNode(ContainerSlot slot) { return {ControlKind::LstFolder, slot.index}; }
// The node of the n-th row in sight, counted from 0; rows further down than any
// screen reaches have none.
NodeId folderRowNode(ContainerSlot slot, int n);
// The container of a list or of one of its rows; none for other nodes.
ContainerSlot folderContainerOf(NodeId id);
// The row of the view behind a node; -1 for other nodes and for what is gone.
int folderRowOf(NodeId id, const FolderView& view);
// The node of the view's row; none when the row is out of sight.
NodeId nodeOfFolderRow(ContainerSlot slot, const FolderView& view, int row);

// The icon of the row, of its kind where it has none of its own.
ImageRef iconOfFolderRow(const FolderView& view, int row);

// Brings the rows below the container's list up to date, and tells the view how
// much room there is. The list must exist.
void layoutFolderRows(Scene& scene, ContainerSlot slot, FolderView& view);

}  // namespace varnowick
