#include "ui/win/detached/detached_windows.h"

#include <algorithm>

#include "platform/screen.h"

namespace varnowick {
namespace {

// Where the pointer holds a title that has just been dragged off the bar.
constexpr Twips kHeldAt{600};

}  // namespace

frmContainer* DetachedWindows::find(ContainerSlot slot) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& w) { return w->slot() == slot; });
  return found == windows_.end() ? nullptr : found->get();
}

frmContainer* DetachedWindows::open(ContainerSlot slot) {
  windows_.push_back(std::make_unique<frmContainer>(desk_, slot, *this));
  if (windows_.back()->open()) return windows_.back().get();
  windows_.pop_back();
  return nullptr;
}

void DetachedWindows::giveFirstRect(ContainerSlot slot, std::optional<Point<Pixels>> at) {
  clsContainer& c = desk_.document.workspace.containers[slot];
  const std::vector<TwipsRect> works = workAreas(desk_.platform.monitors);
  TwipsRect r = c.detachedRect;
  if (needsDefaultRect(r)) {
    std::vector<TwipsRect> others;
    for (const auto& window : windows_) others.push_back(window->rect());
    r = defaultDetachedRect(hooks_.boxOnScreen(slot), hooks_.barOnScreen(), works, others);
  }
  if (at) {
    const Density d = desk_.platform.monitors.density();
    r.left = d.toTwips(at->x) - std::min(kHeldAt, r.width * 0.5F);
    r.top = d.toTwips(at->y) - kTitleStripHeight * 0.5F;
  }
  c.detachedRect = r;
}

void DetachedWindows::detach(const std::vector<ContainerSlot>& slots,
                             std::optional<Point<Pixels>> at) {
  std::vector<ContainerSlot> detached;
  for (const ContainerSlot slot : slots) {
    clsContainer* c = desk_.document.workspace.containers.find(slot);
    if (c == nullptr || c->Detached) continue;
    giveUp(slot);  // the former one may still be fading
    giveFirstRect(slot, at);
    at.reset();
    markDetached(*c);
    if (frmContainer* window = open(slot)) {
      window->showFirst();
      detached.push_back(slot);
    } else {
      markAttached(*c);
    }
  }
  if (detached.empty()) return;
  hooks_.barChanged(detached);
  hooks_.workspaceChanged();
}

void DetachedWindows::detachLoaded(const Progress& progress) {
  int number = 0;
  desk_.document.workspace.containers.forEach([&](ContainerSlot slot, clsContainer& c) {
    if (!c.Detached || find(slot) != nullptr) return;
    if (progress) progress(L"Detaching Containers... " + std::to_wstring(++number));
    // A place that was never set stands for the one that a first detaching gives.
    if (needsDefaultRect(c.detachedRect)) giveFirstRect(slot, std::nullopt);
    markDetached(c);
    // A window that the system refuses must not take the container with it.
    if (open(slot) == nullptr) markAttached(c);
  });
}

// By slot: what is done to one may save, and while a failed save is told of, the list may
// change.
void DetachedWindows::each(const std::function<void(frmContainer&)>& act) {
  std::vector<ContainerSlot> slots;
  for (const auto& window : windows_) slots.push_back(window->slot());
  for (const ContainerSlot slot : slots)
    if (frmContainer* window = find(slot)) act(*window);
}

void DetachedWindows::showLoaded() {
  each([](frmContainer& window) { window.showFirst(); });
}

void DetachedWindows::reopen() {
  const std::size_t before = windows_.size();
  detachLoaded({});
  for (std::size_t i = before; i < windows_.size(); ++i) windows_[i]->showFirst();
}

// Takes the window off the list. Its own handlers may be running.
void DetachedWindows::giveUp(ContainerSlot slot) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& w) { return w->slot() == slot; });
  if (found == windows_.end()) return;
  // Off the list first: what is typed there is saved, which may make others go.
  std::unique_ptr<frmContainer> window = std::move(*found);
  windows_.erase(found);
  window->hideForGood();
  closed_.push_back(std::move(window));
  hooks_.sweepSoon();
}

void DetachedWindows::attach(ContainerSlot slot) { attachThese({slot}); }

void DetachedWindows::attachAll() {
  std::vector<ContainerSlot> slots;
  for (const Row& row : rows()) slots.push_back(row.slot);
  attachThese(slots);
}

void DetachedWindows::attachThese(std::vector<ContainerSlot> slots) {
  std::erase_if(slots, [this](ContainerSlot slot) {
    frmContainer* window = find(slot);
    if (window == nullptr || window->rules().unloading()) return true;
    window->pane().endEditing();
    clsContainer* c = desk_.document.workspace.containers.find(slot);
    if (find(slot) == nullptr || c == nullptr) return true;
    markAttached(*c);
    return false;
  });
  if (slots.empty()) return;
  hooks_.barChanged(slots);
  for (const ContainerSlot slot : slots)
    if (frmContainer* window = find(slot)) window->close();
  hooks_.workspaceChanged();
}

void DetachedWindows::showAll() {
  each([](frmContainer& window) { window.Undock(false); });
}

bool DetachedWindows::anyHidden() const {
  return std::any_of(windows_.begin(), windows_.end(),
                     [](const auto& w) { return w->rules().hidden(); });
}

void DetachedWindows::sweep() {
  std::erase_if(closed_, [](const auto& window) { return !window->handling(); });
}

void DetachedWindows::removed(ContainerSlot slot) { giveUp(slot); }

void DetachedWindows::deleteContainer(ContainerSlot slot) {
  giveUp(slot);
  hooks_.removeContainer(slot);
}

void DetachedWindows::closeAll() {
  while (!windows_.empty()) giveUp(windows_.back()->slot());
  sweep();
}

std::vector<DetachedWindows::Row> DetachedWindows::rows() const {
  std::vector<Row> rows;
  for (const auto& window : windows_)
    if (!window->rules().unloading()) rows.push_back({window->slot(), window->lblName()});
  return rows;
}

std::vector<TwipsRect> DetachedWindows::otherTabs(ContainerSlot slot) const {
  std::vector<TwipsRect> tabs;
  for (const auto& window : windows_)
    if (window->slot() != slot && window->tab().shown()) tabs.push_back(window->tab().rect());
  return tabs;
}

bool DetachedWindows::runProgramCommand(Command command) {
  switch (command) {
    case Command::mnuSave:
    case Command::mnuUndo:
    case Command::mnuRedo:
    case Command::mnuLock:
    case Command::mnuAlign:
    case Command::mnuAttachAll:
    case Command::mnuRefreshShortcuts:
      return hooks_.runCommand(command);
    default:
      return false;
  }
}

WorkspacePane* DetachedWindows::paneOf(HWND window) {
  for (const auto& candidate : windows_)
    if (candidate->handle() == window && window != nullptr) return &candidate->pane();
  return nullptr;
}

DragStop* DetachedWindows::dragStopOf(HWND window) {
  if (WorkspacePane* pane = paneOf(window)) return pane;
  for (const auto& candidate : windows_)
    if (candidate->tab().handle() == window && window != nullptr) return &candidate->tab();
  return nullptr;
}

void DetachedWindows::refreshAll() {
  each([](frmContainer& window) { window.refresh(); });
}

void DetachedWindows::setPalette(const Palette& palette) {
  palette_ = palette;
  each([](frmContainer& window) { window.setPalette(); });
}

void DetachedWindows::invalidate() {
  for (const auto& window : windows_) window->invalidate();
}

void DetachedWindows::endEditing() {
  each([](frmContainer& window) { window.pane().endEditing(); });
}

}  // namespace varnowick
