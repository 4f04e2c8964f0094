#include "ui/scene/folder_rows.h"

#include <algorithm>
#include <array>

#include "containers/folder_path.h"
#include "shortcuts/paths.h"
#include "ui/scene/metrics.h"

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
  const NodeId listId = folderListNode(slot);
  Node* list = scene.find(listId);
  if (list == nullptr) return;
  const Size<Twips> room = list->rect.size();
  view.setRoom(room.height, kFolderRowHeight);
  list->text = view.message();
  const bool scrolls = view.thumb().length < 1;
  const Twips width = room.width - (scrolls ? kScrollThumbWidth + kNoteMargin : kNoteMargin);

  const int shown = std::min(view.bottom() - view.top(), kMostRows);
  for (int n = 0; n < shown; ++n) {
    const int row = view.top() + n;
    Node& node = scene.create(folderRowNode(slot, n), listId);
    node.rect = {{}, kFolderRowHeight * static_cast<float>(n), width, kFolderRowHeight};
    node.visible = true;
    node.text = shownName(view.entry(row)->name);
    node.image = iconOfFolderRow(view, row);
    node.selected = view.isSelected(row);
    node.current = row == view.current();
  }
  // The rows of a longer list stay for later; they come one after the other.
  for (int n = shown; n < kMostRows; ++n) {
    Node* node = scene.find(folderRowNode(slot, n));
    if (node == nullptr) break;
    node->visible = false;
  }

  Node& thumb = scene.create(thumbNode(slot), listId);
  const FolderView::Thumb at = view.thumb();
  thumb.visible = scrolls;
  thumb.hitTarget = false;
  thumb.rect = {room.width - kScrollThumbWidth - Twips{15}, room.height * at.start,
                kScrollThumbWidth, room.height * at.length};
}

}  // namespace varnowick
