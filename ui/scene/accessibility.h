// What screen readers and tests are told about a scene: a flat list of the
// visible nodes that mean something to a user. Knows no window and no COM; the
// window code publishes item i as child i + 1.
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
  kStateOffscreen = 128  // exists, but scrolled or clipped out of sight
};

struct AccessibleItem {
  NodeId id;
  std::wstring name;   // never empty
  std::wstring value;  // the text of notes and lists
  AccessibleRole role = AccessibleRole::StaticText;
  unsigned states = 0;
  TwipsRect rect;              // of the window, not clipped
  std::wstring defaultAction;  // empty for none
};

// In painting order, which is also the order of the focus.
std::vector<AccessibleItem> accessibleItems(const Scene& scene, const InputState& input);
// The index of the item under a point of the window, -1 for none: the node that
// the mouse would hit, or the nearest above it that is listed.
int accessibleAt(const Scene& scene, const std::vector<AccessibleItem>& items,
                 Point<Twips> windowPoint);

}  // namespace varnowick
