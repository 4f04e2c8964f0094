#include "ui/win/pane/folder_containers.h"

#include <algorithm>

#include "containers/folder_operations.h"
#include "containers/folder_path.h"
#include "platform/clock.h"
#include "platform/msg_box.h"
#include "platform/win32/win32_system.h"
#include "shortcuts/paths.h"
#include "shortcuts/selection.h"
#include "ui/scene/folder_rows.h"
#include "ui/win/toolkit/accessible.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

// A dialog is open: messages are tried again then.
constexpr UINT_PTR kTellTimer = 1;
constexpr UINT kTellMilliseconds = 500;
// What is in sight changes by scrolling, by sliding, and by other windows' doing.
constexpr UINT_PTR kSightTimer = 2;
constexpr UINT kSightMilliseconds = 250;

}  // namespace

FolderContainers::FolderContainers(const Platform& platform, Document& document, ModalDepth& modal,
                                   Doorbell& doorbell)
    : platform_(platform), document_(document), modal_(modal), doorbell_(doorbell) {}

FolderContainers::~FolderContainers() { destroy(); }

// Only who has a folder container pays for one.
bool FolderContainers::start() {
  if (source_) return true;
  Create options;
  options.className = L"VarnowickFolders";
  options.style = WS_POPUP;  // never shown
  options.exStyle = WS_EX_TOOLWINDOW;
  if (handle() == nullptr && !create(options)) return false;
  source_ = std::make_unique<Win32FolderSource>(handle(), kMsgFolderNews, &sortEntries);
  SetTimer(handle(), kSightTimer, kSightMilliseconds, nullptr);
  transfers_ =
      std::make_unique<FolderTransfers>(doorbell_, handle(), modal_, [this] { takeEnded(); });
  return true;
}

LRESULT FolderContainers::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kMsgFolderNews:
      takeNews();
      return 0;
    case WM_TIMER:
      if (wParam == kSightTimer) {
        question();
        for (auto& [slot, container] : shown_) watch({slot}, container);
        return 0;
      }
      KillTimer(handle(), kTellTimer);
      tellWaiting();
      return 0;
    case WM_DEVICECHANGE:
      if (source_ && source_->deviceChanged(wParam, lParam)) return TRUE;
      return Window::handleMessage(message, wParam, lParam);
    case kMsgFolderTell:
      tellWaiting();
      return 0;
    default:
      return Window::handleMessage(message, wParam, lParam);
  }
}

void FolderContainers::attach(const FolderPane& pane) { panes_.push_back(pane); }

void FolderContainers::detach(HWND window) {
  std::erase_if(panes_, [window](const FolderPane& pane) { return pane.window == window; });
  for (auto& [slot, container] : shown_)
    if (paneOf({slot}) == nullptr) stop({slot});
}

const FolderPane* FolderContainers::paneOf(ContainerSlot slot) const {
  for (const FolderPane& pane : panes_)
    if (pane.objects->scene().shown(folderListNode(slot))) return &pane;
  return nullptr;
}

FolderContainers::Shown* FolderContainers::shown(ContainerSlot slot) {
  const auto at = shown_.find(slot.index);
  return at == shown_.end() ? nullptr : &at->second;
}

FolderView* FolderContainers::viewOf(NodeId node) {
  const auto at = shown_.find(folderContainerOf(node).index);
  return at == shown_.end() ? nullptr : &at->second.view;
}

const FolderView* FolderContainers::viewOf(NodeId node) const {
  const auto at = shown_.find(folderContainerOf(node).index);
  return at == shown_.end() ? nullptr : &at->second.view;
}

std::wstring FolderContainers::folderOf(ContainerSlot slot) const {
  const clsContainer* container = document_.workspace.containers.find(slot);
  if (container == nullptr || containerType(*container) != ContainerType::Folder) return {};
  return folderPath(
      container->CopyPath, platform_.system.programFolder(), [this](const std::wstring& text) {
        return ExpandAsWritten(text, &expandEnvironment, [this](const std::wstring& path) {
          return platform_.files.exists(path);
        });
      });
}

void FolderContainers::laidOut(ContainerSlot slot) {
  const clsContainer* container = document_.workspace.containers.find(slot);
  const bool isFolder = container != nullptr && containerType(*container) == ContainerType::Folder;
  if (!isFolder) {
    stop(slot);
    shown_.erase(slot.index);
    return;
  }
  if (paneOf(slot) == nullptr) return stop(slot);
  if (!start()) return;
  Shown* found = shown(slot);
  if (found == nullptr || found->text != container->CopyPath) {
    const std::wstring path = folderOf(slot);
    // What is no path is shown as it stands, and said to be missing.
    Shown fresh{FolderView(path.empty() ? container->CopyPath : path), container->CopyPath};
    if (path.empty()) fresh.view.apply({FolderState::Missing});
    found = &(shown_.insert_or_assign(slot.index, std::move(fresh)).first->second);
    if (path.empty()) source_->unwatch(slot.index);
  }
  watch(slot, *found);
  show(slot);
}

Sight FolderContainers::sightOf(ContainerSlot slot) const {
  const FolderPane* pane = paneOf(slot);
  if (pane == nullptr) return Sight::None;
  const NodeId list = folderListNode(slot);
  RECT rect{};
  RECT client{};
  const PixelRect seen = toPixels(pane->objects->scene().seenRect(list), pane->view->density());
  SetRect(&rect, seen.left.value, seen.top.value, seen.right().value, seen.bottom().value);
  GetClientRect(pane->window, &client);
  if (!IsWindowVisible(pane->window) || !IntersectRect(&rect, &rect, &client)) return Sight::Hidden;
  MapWindowPoints(pane->window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  return MonitorFromRect(&rect, MONITOR_DEFAULTTONULL) == nullptr ? Sight::Hidden : Sight::Seen;
}

void FolderContainers::watch(ContainerSlot slot, Shown& shown) {
  if (!isPlainFullPath(shown.view.path())) return;
  if (shown.sight.watch(sightOf(slot), platform_.clock.milliseconds()))
    source_->watch(slot.index, shown.view.path());
  else
    source_->unwatch(slot.index);
}

// Out of sight it is not watched; what was seen last is kept for the next time.
void FolderContainers::stop(ContainerSlot slot) {
  if (source_) source_->unwatch(slot.index);
}

void FolderContainers::show(ContainerSlot slot) {
  const FolderPane* pane = paneOf(slot);
  Shown* found = shown(slot);
  if (pane != nullptr && found != nullptr)
    layoutFolderRows(pane->objects->scene(), slot, found->view);
}

// The view has changed: its rows follow.
void FolderContainers::changed(ContainerSlot slot, bool rowsCameOrWent) {
  const FolderPane* pane = paneOf(slot);
  if (pane == nullptr) return;
  show(slot);
  pane->view->invalidate(folderListNode(slot));
  pane->edit->arrange();
  if (rowsCameOrWent) announce(pane->window, kEventSceneChanged);
}

void FolderContainers::takeNews() {
  for (FolderNews& news : source_->take()) {
    const ContainerSlot slot{news.id};
    Shown* found = shown(slot);
    if (found == nullptr || !found->view.apply(std::move(news.listing))) continue;
    changed(slot, true);
  }
}

void FolderContainers::takeEnded() {
  for (const FileOperationResult& result : transfers_->take()) say(failureMessage(result));
}

// Messages wait until no dialog is open, and for whoever is dragging.
void FolderContainers::say(std::wstring message) {
  if (message.empty() || handle() == nullptr) return;
  messages_.push_back(std::move(message));
  PostMessageW(handle(), kMsgFolderTell, 0, 0);
}

void FolderContainers::tellWaiting() {
  if (telling_) return;
  telling_ = true;
  while (!messages_.empty() && !modal_.active()) {
    const std::wstring message = messages_.front();
    messages_.pop_front();
    platform_.msgBox.show(message, kMsgOkOnly | kMsgExclamation, kProgramTitle);
  }
  telling_ = false;
  if (!messages_.empty()) SetTimer(handle(), kTellTimer, kTellMilliseconds, nullptr);
}

bool FolderContainers::refusedByLock() {
  if (document_.settings.locked) say(kLockedMessage);
  return document_.settings.locked;
}

}  // namespace varnowick
