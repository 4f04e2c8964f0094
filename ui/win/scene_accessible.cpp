#include "ui/win/scene_accessible.h"

#include <windows.h>
// This relies on it.
#include <oleacc.h>

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
      {kStateFocused, STATE_SYSTEM_FOCUSED},         {kStateFocusable, STATE_SYSTEM_FOCUSABLE},
      {kStateSelected, STATE_SYSTEM_SELECTED},       {kStatePressed, STATE_SYSTEM_PRESSED},
      {kStateExpanded, STATE_SYSTEM_EXPANDED},       {kStateCollapsed, STATE_SYSTEM_COLLAPSED},
      {kStateUnavailable, STATE_SYSTEM_UNAVAILABLE}, {kStateOffscreen, STATE_SYSTEM_OFFSCREEN}};
  long result = 0;
  for (const Row& row : kRows) {
    if ((states & row.ours) != 0) result |= row.theirs;
  }
  return result;
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
    version_ = scene_.version();
    focused_ = input_.focused();
    pressed_ = input_.pressed();
  }
  return items_;
}

int SceneAccessible::childOf(NodeId node) const {
  const std::vector<AccessibleItem>& all = items();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].id == node) return static_cast<int>(i) + 1;
  }
  return 0;
}

int SceneAccessible::childCount() { return static_cast<int>(items().size()); }

bool SceneAccessible::info(int child, AccessibleInfo& out) {
  const POINT origin = clientOrigin();
  const Pixels left{static_cast<int>(origin.x)};
  const Pixels top{static_cast<int>(origin.y)};
  if (child == 0) {
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
  const std::vector<AccessibleItem>& all = items();
  if (child < 0 || static_cast<std::size_t>(child) > all.size()) return false;
  const AccessibleItem& item = all[static_cast<std::size_t>(child) - 1];
  out.name = item.name;
  out.value = item.value;
  out.defaultAction = item.defaultAction;
  out.role = roleOf(item.role);
  out.states = statesOf(item.states);
  out.screenRect = toPixels(item.rect, density_).translated(left, top);
  return true;
}

bool SceneAccessible::doDefaultAction(int child) {
  const std::vector<AccessibleItem>& all = items();
  if (child < 1 || static_cast<std::size_t>(child) > all.size()) return false;
  return action_ && action_(all[static_cast<std::size_t>(child) - 1].id);
}

int SceneAccessible::childAt(Point<Pixels> screen) {
  const POINT origin = clientOrigin();
  const Point<Twips> at{density_.toTwips({screen.x.value - static_cast<int>(origin.x)}),
                        density_.toTwips({screen.y.value - static_cast<int>(origin.y)})};
  return accessibleAt(scene_, items(), at) + 1;
}

int SceneAccessible::focusedChild() {
  if (GetFocus() != window_) return -1;
  return childOf(input_.focused());
}

}  // namespace varnowick
