#include "core/undo_history.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace varnowick {
namespace {

// What of each record is part of a step. Of a container also its place, see below.
constexpr auto fieldsOf(const clsShortcut&) {
  using R = clsShortcut;
  return std::tuple{&R::Path,  &R::FullCaption, &R::ShortcutType, &R::Parameters, &R::FontBold,
                    &R::Color, &R::FontSize,    &R::Confirm,      &R::Command,    &R::TagStart,
                    &R::Icon,  &R::Tags,        &R::position};
}
constexpr auto fieldsOf(const clsPicture&) {
  return std::tuple{&clsPicture::Path, &clsPicture::rect};
}
constexpr auto fieldsOf(const clsContainer&) {
  using R = clsContainer;
  return std::tuple{&R::name,        &R::ShrinkPath, &R::CopyPath,  &R::RSS,
                    &R::AutoRefresh, &R::backColor,  &R::foreColor, &R::reminder};
}

// Bit by bit: a number that is none differs from itself otherwise.
template <class T>
bool same(const T& a, const T& b) {
  if constexpr (std::is_trivially_copyable_v<T>)
    return std::memcmp(&a, &b, sizeof a) == 0;
  else
    return a == b;
}

template <class Record>
bool sameFields(const Record& a, const Record& b) {
  return std::apply([&](auto... field) { return (same(a.*field, b.*field) && ...); }, fieldsOf(a));
}
bool sameRecord(const clsContainer& a, const clsContainer& b) {
  return sameFields(a, b) && same(a.rect, b.rect) && same(a.savedRect, b.savedRect);
}
template <class Record>
bool sameRecord(const Record& a, const Record& b) {
  return sameFields(a, b) && a.parent == b.parent;
}

// Only what the step has changed: the rest may have been changed since.
template <class Record>
void takeBackFields(Record& now, const Record& to, const Record& from) {
  const auto one = [&](auto field) {
    if (!same(to.*field, from.*field)) now.*field = to.*field;
  };
  std::apply([&](auto... field) { (one(field), ...); }, fieldsOf(now));
}

void takeBackPlace(clsContainer& now, const clsContainer& to, const clsContainer& from) {
  if (same(to.rect, from.rect) && same(to.savedRect, from.savedRect)) return;
  const auto shape = [](const clsContainer& c) { return std::pair{c.folded, c.shrunk}; };
  const bool asLeft = shape(now) == shape(from) && shape(now) == shape(to) &&
                      same(now.rect, from.rect) && same(now.savedRect, from.savedRect);
  now.savedRect = to.savedRect;
  if (asLeft) {
    now.rect = to.rect;
    now.CloseToEdge = to.CloseToEdge;
    now.CloseToEdgeY = to.CloseToEdgeY;
    return;
  }
  // It has been folded, shrunk or opened since, and stands at that place as it is now.
  now.rect.left = to.savedRect.left;
  now.rect.top = to.savedRect.top;
  if (!now.folded && !now.shrunk) now.rect = to.savedRect;
  now.CloseToEdge = now.CloseToEdgeY = false;
}

// Finds many objects by their use: a search of the table for each would take too long
// where thousands come back.
template <class Table>
class UseIndex {
 public:
  explicit UseIndex(const Table& table) : table_(table) {}
  auto find(unsigned use, decltype(Table{}.slotOfUse(0, {})) likely) {
    using Slot = decltype(likely);
    if (use == 0 || table_.use(likely) == use) return use == 0 ? Slot{} : likely;
    if (slots_.empty())
      table_.forEach([&](Slot slot, const auto&) { slots_.emplace(table_.use(slot), slot.index); });
    const auto found = slots_.find(use);
    if (found == slots_.end()) return Slot{};
    const Slot slot{found->second};
    return table_.use(slot) == use ? slot : Slot{};
  }

 private:
  const Table& table_;
  std::unordered_map<unsigned, int> slots_;  // as they were at the first search
};

Panel panelNow(const Workspace& workspace, Panel then, unsigned use) {
  return {workspace.containers.slotOfUse(use, then.container)};
}

bool isEmpty(const Workspace& workspace, ContainerSlot slot) {
  bool empty = workspace.shortcutsOn({slot}) == 0;
  workspace.pictures.forEach([&](PictureSlot, const clsPicture& p) {
    if (p.parent.container == slot) empty = false;
  });
  return empty;
}

// A note may be long, and is no part of a change: its memory goes, too.
void forgetNote(clsContainer& container) { std::wstring().swap(container.note); }
template <class Record>
void forgetNote(Record&) {}

unsigned parentUse(const Workspace&, const clsContainer&) { return 0; }
template <class Record>
unsigned parentUse(const Workspace& workspace, const Record& record) {
  return workspace.containers.use(record.parent.container);
}

template <class Change, class Record, class SlotType>
void compare(const Workspace& before, const Workspace& after,
             SlotTable<Record, SlotType> Workspace::*table, std::vector<Change>& changes) {
  const auto add = [&](SlotType slot, unsigned use, const Record* old, const Record* now) {
    Change change;
    change.slot = slot;
    change.use = use;
    if (old != nullptr) {
      change.before = *old;
      change.parentBefore = parentUse(before, *old);
    }
    if (now != nullptr) {
      change.after = *now;
      change.parentAfter = parentUse(after, *now);
    }
    if (old != nullptr && now != nullptr) {
      forgetNote(*change.before);
      forgetNote(*change.after);
    }
    changes.push_back(std::move(change));
  };
  (before.*table).forEach([&](SlotType slot, const Record& old) {
    const unsigned use = (before.*table).use(slot);
    const bool stays = (after.*table).use(slot) == use;
    const Record* now = stays ? (after.*table).find(slot) : nullptr;
    if (now == nullptr || !sameRecord(old, *now)) add(slot, use, &old, now);
  });
  (after.*table).forEach([&](SlotType slot, const Record& now) {
    const unsigned use = (after.*table).use(slot);
    if ((before.*table).use(slot) != use) add(slot, use, nullptr, &now);
  });
}

}  // namespace

void UndoHistory::begin(const Workspace& workspace) {
  if (depth_ == 0) before_ = workspace;
  ++depth_;
}

void UndoHistory::end(const Workspace& workspace, const std::wstring& name) {
  if (--depth_ != 0) return;
  const std::optional<Workspace> before = std::exchange(before_, std::nullopt);
  Step step = difference(*before, workspace, name);
  if (step.empty()) return;
  done_.push_back(std::move(step));
  if (done_.size() > kMostSteps) done_.pop_front();
  undone_.clear();
  ++version_;
  lastWasMade_ = true;
}

const std::wstring* UndoHistory::undoName() const {
  return depth_ != 0 || done_.empty() ? nullptr : &done_.back().name;
}

const std::wstring* UndoHistory::redoName() const {
  return depth_ != 0 || undone_.empty() ? nullptr : &undone_.back().name;
}

UndoHistory::Step UndoHistory::difference(const Workspace& before, const Workspace& after,
                                          std::wstring name) {
  Step step{.name = std::move(name), .containers = {}, .shortcuts = {}, .pictures = {}};
  compare(before, after, &Workspace::containers, step.containers);
  compare(before, after, &Workspace::shortcuts, step.shortcuts);
  compare(before, after, &Workspace::pictures, step.pictures);
  return step;
}

UndoHistory::Taken UndoHistory::take(Workspace& workspace, std::deque<Step>& from,
                                     std::deque<Step>& to) {
  Taken taken;
  if (depth_ != 0 || from.empty()) return taken;
  Step step = std::move(from.back());
  from.pop_back();
  const Workspace before = workspace;
  apply(step, workspace, taken);
  Step back = difference(before, workspace, std::move(step.name));
  if (!back.empty()) to.push_back(std::move(back));
  ++version_;
  lastWasMade_ = false;
  return taken;
}

// First everything goes that is to go, so that slots are free for what comes back.
void UndoHistory::apply(Step& step, Workspace& workspace, Taken& taken) {
  const auto clear = [&](auto& table, const auto& changes) {
    UseIndex index(table);
    for (const auto& change : changes) {
      const bool moves = change.after && change.parentBefore != change.parentAfter;
      if (change.before && !moves) continue;
      const auto slot = index.find(change.use, change.slot);
      if (slot.none()) continue;
      if (change.before) {
        table[slot].parent = picBack;  // out of a container that may go, see below
      } else {
        table.remove(slot);
        taken.objects.emplace_back(slot);
      }
    }
  };
  clear(workspace.shortcuts, step.shortcuts);
  clear(workspace.pictures, step.pictures);
  for (const auto& change : step.containers) {
    const ContainerSlot slot = workspace.containers.slotOfUse(change.use, change.slot);
    if (change.before || slot.none()) continue;
    if (!isEmpty(workspace, slot) || workspace.containers[slot].note != change.after->note) {
      taken.kept = true;
      continue;
    }
    workspace.containers.remove(slot);
    taken.objects.emplace_back(slot);
    taken.removed.push_back(slot);
  }

  const auto putBack = [&](auto& table, auto& index, auto& change, const auto& modify) {
    if (!change.before) return;
    auto slot = index.find(change.use, change.slot);
    // Gone since, or there already: another part of the program did that.
    if (slot.none() == change.after.has_value()) return;
    if (slot.none()) slot = table.restore(change.slot, change.use, *change.before);
    modify(table[slot]);
    taken.objects.emplace_back(slot);
  };
  UseIndex containers(workspace.containers);
  for (auto& change : step.containers)
    putBack(workspace.containers, containers, change, [&](clsContainer& now) {
      if (!change.after) return;
      takeBackFields(now, *change.before, *change.after);
      takeBackPlace(now, *change.before, *change.after);
    });
  const auto contents = [&](auto& table, auto& changes) {
    UseIndex index(table);
    for (auto& change : changes)
      putBack(table, index, change, [&](auto& now) {
        if (change.after) takeBackFields(now, *change.before, *change.after);
        if (!change.after || change.parentBefore != change.parentAfter)
          now.parent = panelNow(workspace, change.before->parent, change.parentBefore);
      });
  };
  contents(workspace.shortcuts, step.shortcuts);
  contents(workspace.pictures, step.pictures);
}

UndoHistory::Removed UndoHistory::removedLast() const {
  Removed removed;
  if (!lastWasMade_ || done_.empty()) return removed;
  const Step& step = done_.back();
  for (const auto& change : step.containers) {
    if (change.after) continue;
    ++removed.containers;
    removed.names.push_back(change.before->name);
  }
  const auto gone = [&](unsigned use) {
    return use != 0 && std::any_of(step.containers.begin(), step.containers.end(),
                                   [&](const auto& c) { return c.use == use && !c.after; });
  };
  for (const auto& change : step.shortcuts) {
    if (change.after || gone(change.parentBefore)) continue;
    ++removed.shortcuts;
    removed.names.push_back(change.before->FullCaption);
  }
  for (const auto& change : step.pictures)
    if (!change.after && !gone(change.parentBefore)) ++removed.pictures;
  return removed;
}

}  // namespace varnowick
