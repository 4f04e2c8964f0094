// What screen readers and tests are told about a scene: the visible nodes that
// mean something to a user, each below the nearest such node around it, and what
// has changed from one look to the next. Knows no window and no COM.
#pragma once

#include <string>
#include <vector>

#include "ui/scene/scene.h"

namespace varnowick {

enum class AccessibleRole {
  Window,
  Button,
  Link,
  Graphic,
  Grouping,
  StaticText,
  Text,
  List,
  ListItem
};

// Bits of AccessibleItem::states.
enum AccessibleState : unsigned {
  kStateFocused = 1,
  kStateFocusable = 2,
  kStateSelected = 4,
  kStatePressed = 8,
  kStateExpanded = 16,
  kStateCollapsed = 32,
  kStateUnavailable = 64,
  kStateOffscreen = 128,  // exists, but scrolled or clipped out of sight
  kStateSelectable = 256
};

struct AccessibleItem {
  NodeId id;
  int parent = -1;     // among the items, always an earlier one; -1: the window
  std::wstring name;   // never empty
  std::wstring value;  // the text of notes and lists
  AccessibleRole role = AccessibleRole::StaticText;
  unsigned states = 0;
  TwipsRect rect;              // of the window, not clipped
  std::wstring defaultAction;  // empty for none
};

// In painting order, which is also the order of the focus.
std::vector<AccessibleItem> accessibleItems(const Scene& scene, const InputState& input);
// What has become of an item between two lists.
struct AccessibleChange {
  enum class What { Name, Value, State, Selected, Unselected, OnlySelected };
  NodeId id;
  What what = What::Name;
  bool operator==(const AccessibleChange&) const = default;
};
struct AccessibleChanges {
  std::vector<AccessibleChange> items;  // of those in both lists, in their order
  bool order = false;                   // some have come, gone or changed their place
  bool manySelected = false;            // too many to tell one by one, and left out
};
AccessibleChanges accessibleChanges(const std::vector<AccessibleItem>& before,
                                    const std::vector<AccessibleItem>& now);

// The index of the item under a point of the window, -1 for none: the node that
// the mouse would hit, or the nearest above it that is listed.
int accessibleAt(const Scene& scene, const std::vector<AccessibleItem>& items,
                 Point<Twips> windowPoint);

}  // namespace varnowick
