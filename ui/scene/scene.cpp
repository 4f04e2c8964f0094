#include "ui/scene/scene.h"

#include <algorithm>

namespace varnowick {

Scene::Scene() { nodes_[root()].id = root(); }

// Who asks for a node that can be changed may change it.
Node* Scene::find(NodeId id) {
  ++version_;
  const auto at = nodes_.find(id);
  return at == nodes_.end() ? nullptr : &at->second;
}

const Node* Scene::find(NodeId id) const {
  const auto at = nodes_.find(id);
  return at == nodes_.end() ? nullptr : &at->second;
}

bool Scene::isBelow(NodeId id, NodeId ancestor) const {
  for (const Node* node = find(id); node != nullptr; node = find(node->parent))
    if (node->id == ancestor) return true;
  return false;
}

void Scene::unlink(const Node& node) {
  Node* parent = find(node.parent);
  if (parent == nullptr) return;
  // Recent nodes stand last, so the search starts there.
  auto& row = parent->children;
  const auto at = std::find(row.rbegin(), row.rend(), node.id);
  if (at != row.rend()) row.erase(std::next(at).base());
}

Node& Scene::create(NodeId id, NodeId parent) {
  ++version_;
  Node& made = nodes_[id];
  if (id == root()) return made;
  if (find(parent) == nullptr || isBelow(parent, id)) parent = root();
  if (!made.id.none() && made.parent == parent) return made;
  if (!made.id.none()) unlink(made);
  made.id = id;
  made.parent = parent;
  find(parent)->children.push_back(id);
  return made;
}

void Scene::eraseBelow(NodeId id) {
  const auto at = nodes_.find(id);
  if (at == nodes_.end()) return;
  const std::vector<NodeId> children = std::move(at->second.children);
  nodes_.erase(at);
  for (const NodeId child : children) eraseBelow(child);
}

void Scene::remove(NodeId id) {
  const Node* node = find(id);
  if (node == nullptr || id == root()) return;
  unlink(*node);
  eraseBelow(id);
}

void Scene::raise(NodeId id) {
  const Node* node = find(id);
  if (node == nullptr) return;
  Node* parent = find(node->parent);
  if (parent == nullptr) return;
  unlink(*node);
  parent->children.push_back(id);
}

bool Scene::shown(NodeId id) const {
  const Node* node = find(id);
  if (node == nullptr) return false;
  for (; node != nullptr; node = find(node->parent)) {
    if (!node->visible) return false;
    if (node->id == root()) return true;
  }
  return false;
}

TwipsRect Scene::windowRect(NodeId id) const {
  const Node* node = find(id);
  if (node == nullptr) return {};
  TwipsRect rect = node->rect;
  for (const Node* above = find(node->parent); above != nullptr; above = find(above->parent))
    rect = rect.translated(above->rect.left - above->scroll.x, above->rect.top - above->scroll.y);
  return rect;
}

TwipsRect Scene::seenRect(NodeId id) const {
  const Node* node = find(id);
  if (node == nullptr) return {};
  TwipsRect rect = node->rect;
  for (const Node* above = find(node->parent); above != nullptr; above = find(above->parent)) {
    rect = rect.translated(-above->scroll.x, -above->scroll.y);
    if (above->clipsChildren || above->id == root())
      rect = rect.intersect({{}, {}, above->rect.width, above->rect.height});
    rect = rect.translated(above->rect.left, above->rect.top);
  }
  return rect;
}

Point<Twips> Scene::toNode(NodeId id, Point<Twips> windowPoint) const {
  const TwipsRect rect = windowRect(id);
  return {windowPoint.x - rect.left, windowPoint.y - rect.top};
}

NodeId Scene::hitTest(Point<Twips> windowPoint) const {
  const Node& frame = *find(root());
  if (!frame.visible || !frame.rect.contains(windowPoint)) return {};
  return hitTestBelow(frame, {windowPoint.x - frame.rect.left, windowPoint.y - frame.rect.top});
}

// `local` is relative to the node.
NodeId Scene::hitTestBelow(const Node& node, Point<Twips> local) const {
  const bool inside = TwipsRect{{}, {}, node.rect.width, node.rect.height}.contains(local);
  if (inside || !node.clipsChildren) {
    const Point<Twips> scrolled{local.x + node.scroll.x, local.y + node.scroll.y};
    for (auto at = node.children.rbegin(); at != node.children.rend(); ++at) {
      const Node* child = find(*at);
      if (child == nullptr || !child->visible) continue;
      const NodeId hit =
          hitTestBelow(*child, {scrolled.x - child->rect.left, scrolled.y - child->rect.top});
      if (!hit.none()) return hit;
    }
  }
  return inside && node.hitTarget ? node.id : NodeId{};
}

std::vector<NodeId> Scene::visibleNodes() const {
  std::vector<NodeId> ids;
  ids.reserve(nodes_.size());
  collectVisible(*find(root()), ids);
  return ids;
}

void Scene::collectVisible(const Node& node, std::vector<NodeId>& into) const {
  if (!node.visible) return;
  into.push_back(node.id);
  for (const NodeId child : node.children)
    if (const Node* below = find(child)) collectVisible(*below, into);
}

}  // namespace varnowick
