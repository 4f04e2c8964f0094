#include <algorithm>
#include <cmath>

#include "ui/scene/scene.h"

namespace varnowick {

namespace {
bool acceptsPress(const Scene& scene, NodeId id) {
  const Node* node = scene.find(id);
  return node != nullptr && node->enabled;
}
}  // namespace

bool InputState::mouseMoved(Point<Twips> at) {
  NodeId over = scene_->hitTest(at);
  if (const NodeId holder = captured(); !holder.none() && over != holder) over = {};
  const bool changed = over != hovered_;
  hovered_ = over;
  return changed;
}

bool InputState::mouseLeft() {
  const bool changed = !hovered_.none();
  hovered_ = {};
  return changed;
}

bool InputState::mousePressed(Point<Twips> at) {
  keysInUse_ = false;
  const NodeId before = pressed_;
  const NodeId hit = scene_->hitTest(at);
  hovered_ = hit;
  pressed_ = acceptsPress(*scene_, hit) ? hit : NodeId{};
  return pressed_ != before;
}

NodeId InputState::mouseReleased(Point<Twips> at) {
  const NodeId was = pressed();
  pressed_ = {};
  captured_ = {};
  const NodeId hit = scene_->hitTest(at);
  hovered_ = hit;
  return !was.none() && hit == was && acceptsPress(*scene_, was) ? was : NodeId{};
}

void InputState::captureLost() {
  pressed_ = {};
  captured_ = {};
}

bool InputState::focus(NodeId id) {
  const Node* node = scene_->find(id);
  const NodeId next = node != nullptr && node->focusable && node->enabled ? id : NodeId{};
  const bool changed = next != focused_;
  focused_ = next;
  return changed;
}

bool InputState::keyUsed() {
  const bool changed = !keysInUse_ && !focused().none();
  keysInUse_ = true;
  return changed;
}

bool InputState::focusNext(bool backwards) {
  std::vector<NodeId> stops;
  for (const NodeId id : scene_->visibleNodes()) {
    const Node& node = *scene_->find(id);
    if (node.focusable && node.enabled) stops.push_back(id);
  }
  if (stops.empty()) return focus({});
  if (backwards) std::reverse(stops.begin(), stops.end());
  const auto at = std::find(stops.begin(), stops.end(), focused());
  if (at == stops.end() || std::next(at) == stops.end()) return focus(stops.front());
  return focus(*std::next(at));
}

bool InputState::focusTowards(Point<int> direction) {
  const NodeId from = focused();
  if (from.none()) return focusNext(false);
  const auto middle = [&](NodeId id) {
    const TwipsRect r = scene_->windowRect(id);
    return Point<float>{r.left.value + r.width.value / 2, r.top.value + r.height.value / 2};
  };
  const Point<float> start = middle(from);
  NodeId best;
  float bestCost = 0;
  for (const NodeId id : scene_->visibleNodes()) {
    const Node& node = *scene_->find(id);
    if (id == from || !node.focusable || !node.enabled) continue;
    const Point<float> at = middle(id);
    const float dx = at.x - start.x;
    const float dy = at.y - start.y;
    const float along = dx * static_cast<float>(direction.x) + dy * static_cast<float>(direction.y);
    const float aside = std::abs(direction.x != 0 ? dy : dx);
    // What lies more aside than ahead belongs to another direction.
    if (along <= 0 || aside > along * 2) continue;
    const float cost = along + aside * 2;
    if (best.none() || cost < bestCost) {
      best = id;
      bestCost = cost;
    }
  }
  return !best.none() && focus(best);
}

}  // namespace varnowick
