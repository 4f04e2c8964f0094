#include "ui/win/toolkit/scene_accessible.h"

#include <windows.h>
// This relies on it.
#include <oleacc.h>

#include <utility>

#include "ui/win/toolkit/messages.h"

namespace varnowick {

namespace {

long roleOf(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::Window:
      return ROLE_SYSTEM_WINDOW;
    case AccessibleRole::Button:
      return ROLE_SYSTEM_PUSHBUTTON;
    case AccessibleRole::Link:
      return ROLE_SYSTEM_LINK;
    case AccessibleRole::Graphic:
      return ROLE_SYSTEM_GRAPHIC;
    case AccessibleRole::Grouping:
      return ROLE_SYSTEM_GROUPING;
    case AccessibleRole::StaticText:
      return ROLE_SYSTEM_STATICTEXT;
    case AccessibleRole::Text:
      return ROLE_SYSTEM_TEXT;
    case AccessibleRole::List:
      return ROLE_SYSTEM_LIST;
    case AccessibleRole::ListItem:
      return ROLE_SYSTEM_LISTITEM;
  }
  return ROLE_SYSTEM_CLIENT;
}

long statesOf(unsigned states) {
  struct Row {
    unsigned ours;
    long theirs;
  };
  static constexpr Row kRows[] = {
      {kStateFocused, STATE_SYSTEM_FOCUSED},
      {kStateFocusable, STATE_SYSTEM_FOCUSABLE},
      {kStateSelected, STATE_SYSTEM_SELECTED},
      {kStatePressed, STATE_SYSTEM_PRESSED},
      {kStateExpanded, STATE_SYSTEM_EXPANDED},
      {kStateCollapsed, STATE_SYSTEM_COLLAPSED},
      {kStateUnavailable, STATE_SYSTEM_UNAVAILABLE},
      {kStateOffscreen, STATE_SYSTEM_OFFSCREEN},
      {kStateSelectable, STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_MULTISELECTABLE}};
  long result = 0;
  for (const Row& row : kRows) {
    if ((states & row.ours) != 0) result |= row.theirs;
  }
  return result;
}

// A positive number out of a node's name, and back.
constexpr int kSlotBits = 20;
long numberOf(NodeId node) {
  return (static_cast<long>(node.kind) << kSlotBits | (node.slot & ((1 << kSlotBits) - 1))) + 1;
}

DWORD eventOf(AccessibleChange::What what) {
  switch (what) {
    case AccessibleChange::What::Name:
      return EVENT_OBJECT_NAMECHANGE;
    case AccessibleChange::What::Value:
      return EVENT_OBJECT_VALUECHANGE;
    case AccessibleChange::What::Selected:
      return EVENT_OBJECT_SELECTIONADD;
    case AccessibleChange::What::Unselected:
      return EVENT_OBJECT_SELECTIONREMOVE;
    case AccessibleChange::What::OnlySelected:
      return EVENT_OBJECT_SELECTION;
    case AccessibleChange::What::State:
      break;
  }
  return EVENT_OBJECT_STATECHANGE;
}

}  // namespace

POINT SceneAccessible::clientOrigin() const {
  POINT origin{};
  ClientToScreen(window_, &origin);
  return origin;
}

const std::vector<AccessibleItem>& SceneAccessible::items() const {
  if (version_ != scene_.version() || focused_ != input_.focused() ||
      pressed_ != input_.pressed()) {
    items_ = accessibleItems(scene_, input_);
    ++made_;
    places_.clear();
    for (std::size_t i = 0; i < items_.size(); ++i) places_[numberOf(items_[i].id)] = i;
    version_ = scene_.version();
    focused_ = input_.focused();
    pressed_ = input_.pressed();
  }
  return items_;
}

const AccessibleItem* SceneAccessible::find(long item) const {
  const std::vector<AccessibleItem>& all = items();
  const auto at = places_.find(item);
  return at == places_.end() ? nullptr : &all[at->second];
}

long SceneAccessible::itemOf(NodeId node) const {
  return find(numberOf(node)) == nullptr ? kAccessibleWindow : numberOf(node);
}

void SceneAccessible::announceSoon() {
  if (!posted_) posted_ = PostMessageW(window_, kMsgReaders, 0, 0) != FALSE;
}

void SceneAccessible::announceChanges() {
  posted_ = false;
  const bool listening = window_ != nullptr && (somebodyHears(EVENT_OBJECT_SELECTION) ||
                                                somebodyHears(EVENT_OBJECT_FOCUS));
  if (!listening) told_.clear();
  const bool first = !std::exchange(listening_, listening);
  if (!listening) return;
  const std::vector<AccessibleItem>& all = items();
  if (!first && std::exchange(toldMade_, made_) == made_) return;
  toldMade_ = made_;
  if (!first) {
    const AccessibleChanges changes = accessibleChanges(told_, all);
    if (changes.order) announce(window_, EVENT_OBJECT_REORDER);
    for (const AccessibleChange& change : changes.items)
      announce(window_, eventOf(change.what), numberOf(change.id));
    if (changes.manySelected) announce(window_, EVENT_OBJECT_SELECTIONWITHIN);
    if (focused_ != toldFocus_ && GetFocus() == window_)
      announce(window_, EVENT_OBJECT_FOCUS, itemOf(focused_));
  }
  told_ = all;
  toldFocus_ = focused_;
}

std::vector<long> SceneAccessible::children(long parent) {
  std::vector<long> found;
  const AccessibleItem* above = parent == kAccessibleWindow ? nullptr : find(parent);
  if (parent != kAccessibleWindow && above == nullptr) return found;
  const std::vector<AccessibleItem>& all = items();
  const int place = above == nullptr ? -1 : static_cast<int>(above - all.data());
  for (const AccessibleItem& item : all)
    if (item.parent == place) found.push_back(numberOf(item.id));
  return found;
}

bool SceneAccessible::info(long number, AccessibleInfo& out) {
  const POINT origin = clientOrigin();
  const Pixels left{static_cast<int>(origin.x)};
  const Pixels top{static_cast<int>(origin.y)};
  if (number == kAccessibleWindow) {
    RECT client{};
    GetClientRect(window_, &client);
    out.name = title_;
    out.value = windowValue_;
    out.role = ROLE_SYSTEM_CLIENT;
    out.states = STATE_SYSTEM_FOCUSABLE;
    out.screenRect = {
        left, top, {static_cast<int>(client.right)}, {static_cast<int>(client.bottom)}};
    return true;
  }
  const AccessibleItem* item = find(number);
  if (item == nullptr) return false;
  out.name = item->name;
  out.value = item->value;
  out.defaultAction = item->defaultAction;
  out.role = roleOf(item->role);
  out.states = statesOf(item->states);
  if (item->parent >= 0) out.parent = numberOf(items()[static_cast<std::size_t>(item->parent)].id);
  out.screenRect = toPixels(item->rect, density_).translated(left, top);
  return true;
}

bool SceneAccessible::doDefaultAction(long number) {
  const AccessibleItem* item = find(number);
  return item != nullptr && action_ && action_(item->id);
}

bool SceneAccessible::select(long number, long flags) {
  const AccessibleItem* item = find(number);
  return item != nullptr && select_ && select_(item->id, flags);
}

long SceneAccessible::itemAt(Point<Pixels> screen) {
  const POINT origin = clientOrigin();
  const Point<Twips> at{density_.toTwips({screen.x.value - static_cast<int>(origin.x)}),
                        density_.toTwips({screen.y.value - static_cast<int>(origin.y)})};
  const int place = accessibleAt(scene_, items(), at);
  return place < 0 ? kAccessibleWindow : numberOf(items()[static_cast<std::size_t>(place)].id);
}

long SceneAccessible::focusedItem() {
  if (GetFocus() != window_) return -1;
  return itemOf(input_.focused());
}

}  // namespace varnowick
