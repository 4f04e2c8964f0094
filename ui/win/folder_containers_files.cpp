// What folder containers do with files: opening, copying, moving, renaming, deleting,
// and drops of them.

#include <ole2.h>

#include "containers/folder_operations.h"
#include "containers/folder_path.h"
#include "platform/msg_box.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/accessible.h"
#include "ui/win/file_drag.h"
#include "ui/win/folder_containers.h"
#include "ui/win/win_events.h"

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

bool FolderContainers::busy() {
  // What is just ending needs no question.
  constexpr DWORD kMoment = 20;  // ms
  for (int i = 0; i < 20 && operations_ && operations_->busy(); ++i) Sleep(kMoment);
  return operations_ && operations_->busy();
}

void FolderContainers::openRow(ContainerSlot slot, int row) {
  const Shown* found = shown(slot);
  const FolderPane* pane = paneOf(slot);
  if (found == nullptr || pane == nullptr || found->view.entry(row) == nullptr) return;
  // The entry may go while a message is open.
  const std::wstring path = found->view.pathOf(row);
  const HWND window = pane->window;
  const LaunchResult result =
      LaunchShortcut(platform_, *pane->host, false, nameOf(path), L"", path, false);
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

void FolderContainers::transfer(FileAction action, const std::vector<std::wstring>& from,
                                const std::wstring& folder) {
  if (!start()) return;
  TransferPlan plan = planTransfer(action, from, folder, document_.settings.locked);
  say(std::move(plan.message));
  for (FileOperation& operation : plan.operations) operations_->start(std::move(operation));
}

bool FolderContainers::paste(ContainerSlot slot) {
  const std::wstring folder = folderOf(slot);
  const OfferedFiles files = readClipboardFiles();
  if (folder.empty() || files.paths.empty()) return false;
  if (refusedByLock()) return true;
  const bool cut = (files.preferredEffect & DROPEFFECT_MOVE) != 0 &&
                   (files.preferredEffect & DROPEFFECT_COPY) == 0;
  transfer(cut ? FileAction::Move : FileAction::Copy, files.paths, folder);
  if (cut) clearClipboard();
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
  operations_->start(std::move(*plan.operation));
  return true;
}

void FolderContainers::recycleUnasked(const std::vector<std::wstring>& paths) {
  RecyclePlan plan = planRecycle(paths, document_.settings);
  if (!start()) return;
  say(std::move(plan.message));
  if (plan.operation) operations_->start(std::move(*plan.operation));
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
    if (plan.operation) operations_->start(std::move(*plan.operation));
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
    dragFiles(paths,
              DROPEFFECT_COPY | DROPEFFECT_LINK | (locked ? DROPEFFECT_NONE : DROPEFFECT_MOVE));
  }
  dragging_ = false;
}

std::optional<DWORD> FolderContainers::dropEffect(ContainerSlot slot, IDataObject& data, DWORD keys,
                                                  DWORD allowed) {
  const std::wstring folder = folderOf(slot);
  if (folder.empty()) return std::nullopt;
  // Addresses and texts do not become files.
  if (document_.settings.locked || !offersFiles(data)) return DROPEFFECT_NONE;
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
  const TransferPlan plan = planTransfer(action, in.paths, folder, false);
  // What would be refused is still taken, so that the user is told why.
  const bool nothing = plan.operations.empty() && plan.message.empty();
  in.effect = nothing ? DROPEFFECT_NONE : effectOf(action);
  return in.effect;
}

// The next drag's object may lie at the same address.
void FolderContainers::dragLeft() { incoming_.reset(); }

DWORD FolderContainers::drop(ContainerSlot slot, IDataObject& data, DWORD effect) {
  dragLeft();
  const std::vector<std::wstring> paths = readFiles(data).paths;
  const bool moves = effect == DROPEFFECT_MOVE;
  transfer(moves ? FileAction::Move : FileAction::Copy, paths, folderOf(slot));
  if (!moves) return effect;
  // The files are moved here, and must not be deleted by the source as well.
  tellMoved(data);
  return DROPEFFECT_NONE;
}

}  // namespace varnowick
