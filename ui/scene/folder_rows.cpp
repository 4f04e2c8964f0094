#include "ui/scene/folder_rows.h"

#include <algorithm>
#include <array>

#include "containers/folder_path.h"
#include "shortcuts/paths.h"
#include "ui/scene/list_rows.h"

namespace varnowick {
namespace {

constexpr int kRowsPerContainer = 65536;
constexpr int kMostRows = 1000;  // in sight at once

NodeId thumbNode(ContainerSlot slot) {
  // Slot 0 is the main panel's.
  return {ControlKind::ScrollThumb, slot.index + 1};
}

// Files that have icons of their own. The others have that of their kind, which is
// loaded once however many there are.
bool hasOwnIcon(const FolderEntry& entry) {
  if (entry.isFolder) return true;
  const std::size_t dot = entry.name.rfind(L'.');
  if (dot == std::wstring::npos || dot + 1 == entry.name.size()) return true;
  const std::wstring_view extension = std::wstring_view(entry.name).substr(dot);
  constexpr std::array<std::wstring_view, 12> kOwn = {L".exe", L".lnk", L".ico", L".url",
                                                      L".cur", L".ani", L".scr", L".cpl",
                                                      L".dll", L".pif", L".com", L".msc"};
  return std::any_of(kOwn.begin(), kOwn.end(),
                     [&](std::wstring_view own) { return sameIgnoringCase(own, extension); });
}

}  // namespace

ImageRef iconOfFolderRow(const FolderView& view, int row) {
  const FolderEntry& entry = *view.entry(row);
  if (hasOwnIcon(entry)) return {ImageRef::Source::IconOf, view.pathOf(row)};
  return {ImageRef::Source::IconOf, L"*" + entry.name.substr(entry.name.rfind(L'.'))};
}

NodeId folderRowNode(ContainerSlot slot, int n) {
  if (slot.none() || slot.index >= 32767 || n < 0 || n >= kMostRows) return {};
  return {ControlKind::FolderRow, slot.index * kRowsPerContainer + n};
}

ContainerSlot folderContainerOf(NodeId id) {
  if (id.kind == ControlKind::LstFolder) return {id.slot};
  if (id.kind == ControlKind::FolderRow && id.slot >= 0) return {id.slot / kRowsPerContainer};
  return {};
}

int folderRowOf(NodeId id, const FolderView& view) {
  if (id.kind != ControlKind::FolderRow || id.slot < 0) return -1;
  const int row = view.top() + id.slot % kRowsPerContainer;
  return view.entry(row) != nullptr ? row : -1;
}

NodeId nodeOfFolderRow(ContainerSlot slot, const FolderView& view, int row) {
  if (row < view.top() || row >= view.bottom()) return {};
  return folderRowNode(slot, row - view.top());
}

void layoutFolderRows(Scene& scene, ContainerSlot slot, FolderView& view) {
  Node* list = scene.find(folderListNode(slot));
  if (list == nullptr) return;
  list->text = view.message();
  layoutRows(scene, {list->id, thumbNode(slot), [slot](int n) { return folderRowNode(slot, n); }},
             view, kFolderRowHeight, [&view](int row) {
               return RowLook{shownName(view.entry(row)->name), iconOfFolderRow(view, row)};
             });
}

}  // namespace varnowick
