// The files of folder containers for the jump-to box: what has been listed, and no disk.
#include "ui/scene/folder_rows.h"
#include "ui/win/pane/folder_containers.h"

namespace varnowick {

void FolderContainers::forEachListed(const Listed& visit) const {
  for (const auto& [slot, found] : shown_)
    for (const FolderEntry& entry : found.view.entries()) visit({slot}, entry.name);
}

ImageRef FolderContainers::iconOf(ContainerSlot slot, const std::wstring& name) const {
  const auto found = shown_.find(slot.index);
  const int row = found == shown_.end() ? -1 : found->second.view.rowOf(name);
  return row < 0 ? ImageRef{} : iconOfFolderRow(found->second.view, row);
}

void FolderContainers::openFile(ContainerSlot slot, const std::wstring& name, LaunchHost& bar) {
  const Shown* found = shown(slot);
  const int row = found == nullptr ? -1 : found->view.rowOf(name);
  if (row < 0) return;
  // A list that is folded away has no pane.
  if (paneOf(slot) != nullptr) return openRow(slot, row);
  openPath(found->view.pathOf(row), bar, reinterpret_cast<HWND>(bar.ownerWindow().value));
}

void FolderContainers::showFile(ContainerSlot slot, const std::wstring& name) {
  Shown* found = shown(slot);
  const int row = found == nullptr ? -1 : found->view.rowOf(name);
  if (row < 0) return;
  found->view.selectOnly(row);
  found->view.show(row);
  focus(slot);
  changed(slot, true);
}

}  // namespace varnowick
