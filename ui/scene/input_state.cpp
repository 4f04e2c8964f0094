#include <algorithm>

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

}  // namespace varnowick
