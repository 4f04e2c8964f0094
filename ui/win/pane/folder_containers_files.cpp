// What folder containers do with files: opening, copying, moving, renaming, deleting,
// and drops of them.

#include <ole2.h>

#include "containers/folder_operations.h"
#include "containers/folder_path.h"
#include "platform/msg_box.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/pane/folder_containers.h"
#include "ui/win/toolkit/accessible.h"
#include "ui/win/toolkit/file_drag.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

DWORD effectOf(FileAction action) {
  switch (action) {
    case FileAction::Copy:
      return DROPEFFECT_COPY;
    case FileAction::Move:
      return DROPEFFECT_MOVE;
    default:
      return DROPEFFECT_NONE;
  }
}

}  // namespace

bool FolderContainers::busy() { return transfers_ && transfers_->busy(); }

void FolderContainers::openRow(ContainerSlot slot, int row) {
  const Shown* found = shown(slot);
  const FolderPane* pane = paneOf(slot);
  if (found == nullptr || pane == nullptr || found->view.entry(row) == nullptr) return;
  openPath(found->view.pathOf(row), *pane->host, pane->window);
}

// The entry, and the pane, may go while a message is open.
void FolderContainers::openPath(const std::wstring& path, LaunchHost& host, HWND window) {
  const LaunchResult result =
      LaunchShortcut(platform_, host, false, nameOf(path), L"", path, false);
  if (result.outcome == LaunchOutcome::FailedFaulty) say(result.propertiesError);
  if (result.outcome == LaunchOutcome::Started) announce(window, kEventLaunched);
}

void FolderContainers::openSelected(ContainerSlot slot) {
  const Shown* found = shown(slot);
  if (found == nullptr) return;
  // Starting hundreds of programs by one key is hardly ever meant.
  constexpr int kMostAtOnce = 20;
  std::vector<std::wstring> names;
  for (int row = 0; row < found->view.count(); ++row)
    if (found->view.isSelected(row)) names.push_back(found->view.entry(row)->name);
  if (names.empty() && found->view.current() >= 0)
    names.push_back(found->view.entry(found->view.current())->name);
  if (static_cast<int>(names.size()) > kMostAtOnce)
    return say(L"Too many files are selected to be opened at once.");
  for (const std::wstring& name : names)
    if (const Shown* still = shown(slot)) openRow(slot, still->view.rowOf(name));
}

bool FolderContainers::open(NodeId node) {
  const FolderView* view = viewOf(node);
  if (view == nullptr || node.kind != ControlKind::FolderRow) return false;
  openRow(folderContainerOf(node), folderRowOf(node, *view));
  return true;
}

void FolderContainers::openFolder(ContainerSlot slot) {
  const FolderPane* pane = paneOf(slot);
  if (pane != nullptr) OpenFolder(platform_, *pane->host, folderOf(slot));
}

void FolderContainers::copySelected(ContainerSlot slot, bool cut) {
  const Shown* found = shown(slot);
  if (found == nullptr || found->view.selectedCount() == 0 || (cut && refusedByLock())) return;
  if (!putFilesOnClipboard(found->view.selectedPaths(), cut))
    say(L"The clipboard is in use by another program. Please try again.");
}

bool FolderContainers::paste(ContainerSlot slot) {
  const std::wstring folder = folderOf(slot);
  const DWORD clipboard = GetClipboardSequenceNumber();
  const OfferedFiles files = readClipboardFiles();
  if (folder.empty() || files.paths.empty()) return false;
  if (refusedByLock() || !start()) return true;
  const bool cut = (files.preferredEffect & DROPEFFECT_MOVE) != 0 &&
                   (files.preferredEffect & DROPEFFECT_COPY) == 0;
  // They are on their way already.
  if (cut && clipboard == pasting_) return true;
  TransferPlan plan =
      planTransfer(cut ? FileAction::Move : FileAction::Copy, files.paths, folder, false);
  say(std::move(plan.message));
  if (plan.operations.empty()) return true;
  TransferEnd end{.moved = cut};
  if (cut) pasting_ = clipboard;
  transfers_->start(
      std::move(plan.operations),
      [this, end, tell = cut ? takeOffClipboard() : TellSource()](bool complete) mutable {
        if (end.moved) pasting_ = 0;
        end.complete = complete;
        if (tell) tell(end);
      });
  return true;
}

bool FolderContainers::recycle(const std::vector<std::wstring>& paths) {
  RecyclePlan plan = planRecycle(paths, document_.settings);
  if (!plan.message.empty()) say(std::move(plan.message));
  if (!plan.operation || !start()) return false;
  // A question that is torn down with the session has no answer.
  if (!plan.question.empty() && platform_.msgBox.show(plan.question, kMsgYesNo | kMsgExclamation,
                                                      kProgramTitle) != kMsgAnswerYes)
    return false;
  transfers_->start(std::move(*plan.operation));
  return true;
}

void FolderContainers::recycleUnasked(const std::vector<std::wstring>& paths) {
  RecyclePlan plan = planRecycle(paths, document_.settings);
  if (!start()) return;
  say(std::move(plan.message));
  if (plan.operation) transfers_->start(std::move(*plan.operation));
}

void FolderContainers::renameCurrent(ContainerSlot slot) {
  const Shown* found = shown(slot);
  const FolderPane* pane = paneOf(slot);
  if (found == nullptr || pane == nullptr || refusedByLock()) return;
  const int row = found->view.current();
  const FolderEntry* entry = found->view.entry(row);
  const NodeId node = nodeOfFolderRow(slot, found->view, row);
  const Node* shownNode = pane->objects->scene().find(node);
  if (entry == nullptr || shownNode == nullptr) return;
  InPlaceEdit::Request request;
  request.node = node;
  request.text = entry->name;
  constexpr Twips kTextLeft{360};
  request.part = {kTextLeft, {}, shownNode->rect.width - kTextLeft, shownNode->rect.height};
  request.selectStem = !entry->isFolder;
  request.accessibleName = L"Name of the file";
  request.accepted = [this, path = found->view.pathOf(row)](const std::wstring& name) {
    RenamePlan plan = planRename(path, name, document_.settings.locked);
    say(std::move(plan.message));
    if (plan.operation) transfers_->start(std::move(*plan.operation));
  };
  pane->edit->begin(std::move(request));
}

bool FolderContainers::canDrag(NodeId node) const {
  const FolderView* view = viewOf(node);
  return view != nullptr && folderRowOf(node, *view) >= 0;
}

void FolderContainers::drag(NodeId node) {
  const FolderView* view = viewOf(node);
  if (view == nullptr || dragging_) return;
  const std::vector<std::wstring> paths = view->selectedPaths();
  dragging_ = true;
  {
    // The window must not go away while the system runs its loop in here.
    const ModalDepth::Scope scope(modal_);
    const bool locked = document_.settings.locked;
    for (const FolderPane& pane : panes_) pane.drops->expectOwnDrag(true);
    dragFiles(paths,
              DROPEFFECT_COPY | DROPEFFECT_LINK | (locked ? DROPEFFECT_NONE : DROPEFFECT_MOVE));
    for (const FolderPane& pane : panes_) pane.drops->expectOwnDrag(false);
  }
  dragging_ = false;
}

NodeId FolderContainers::dropRow(NodeId node) const {
  const FolderView* view = viewOf(node);
  const FolderEntry* entry = view == nullptr ? nullptr : view->entry(folderRowOf(node, *view));
  return entry != nullptr && entry->isFolder ? node : NodeId{};
}

std::wstring FolderContainers::dropFolder(ContainerSlot slot, NodeId node) const {
  const NodeId row = dropRow(node);
  const FolderView* view = viewOf(folderListNode(slot));
  if (!row.none()) return viewOf(row)->pathOf(folderRowOf(row, *viewOf(row)));
  // Nothing can be put into a folder that is not there.
  return view == nullptr || view->takesFiles() ? folderOf(slot) : std::wstring();
}

std::optional<DWORD> FolderContainers::dropEffect(ContainerSlot slot, NodeId node,
                                                  IDataObject& data, DWORD keys, DWORD allowed) {
  const clsContainer* container = document_.workspace.containers.find(slot);
  if (container == nullptr || containerType(*container) != ContainerType::Folder)
    return std::nullopt;
  const std::wstring folder = dropFolder(slot, node);
  // Addresses and texts do not become files.
  if (document_.settings.locked || folder.empty() || !offersFiles(data)) return DROPEFFECT_NONE;
  if (!incoming_) incoming_ = Incoming{readFiles(data).paths, {}, 0, 0, 0};
  Incoming& in = *incoming_;
  if (in.folder == folder && in.keys == keys && in.allowed == allowed) return in.effect;
  in.folder = folder;
  in.keys = keys;
  in.allowed = allowed;
  const TransferWish wish{.copyAllowed = (allowed & DROPEFFECT_COPY) != 0,
                          .moveAllowed = (allowed & DROPEFFECT_MOVE) != 0,
                          .ctrl = (keys & MK_CONTROL) != 0,
                          .shift = (keys & MK_SHIFT) != 0,
                          .alt = (keys & MK_ALT) != 0};
  const FileAction action = transferAction(in.paths, folder, wish);
  const bool refused = planTransfer(action, in.paths, folder, false).operations.empty();
  in.effect = refused ? DROPEFFECT_NONE : effectOf(action);
  return in.effect;
}

// The next drag's object may lie at the same address.
void FolderContainers::dragLeft() { incoming_.reset(); }

DWORD FolderContainers::drop(ContainerSlot slot, NodeId node, IDataObject& data, DWORD effect) {
  dragLeft();
  const std::wstring folder = dropFolder(slot, node);
  TransferEnd end{.moved = effect == DROPEFFECT_MOVE};
  TransferPlan plan = planTransfer(end.moved ? FileAction::Move : FileAction::Copy,
                                   readFiles(data).paths, folder, document_.settings.locked);
  say(std::move(plan.message));
  if (plan.operations.empty() || !start()) return DROPEFFECT_NONE;
  if (const TellSource tell = finishLater(data)) {
    transfers_->start(std::move(plan.operations), [tell, end](bool complete) mutable {
      end.complete = complete;
      tell(end);
    });
    return end.moved ? DROPEFFECT_NONE : effect;
  }
  // The source may delete what it has offered as soon as it has the answer.
  end.complete = transfers_->carryOut(std::move(plan.operations));
  return tellEnd(data, end);
}

}  // namespace varnowick
