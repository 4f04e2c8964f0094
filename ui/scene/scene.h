// The scene: everything that lies on one window, as a tree of nodes. It finds,
// hit-tests and keeps the input state; it neither paints (painter.h) nor knows
// where nodes come from (workspace_scene.h) nor any window.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/units.h"
#include "core/workspace.h"
#include "ui/scene/canvas.h"

namespace varnowick {

// The kinds of control, by the names the program knows them under. Kinds that
// exist once have slot 0.
// GCC 12 takes a scoped enumerator for a shadow of the panel constant picBack.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
enum class ControlKind : unsigned char {
  None,
  Frame,      // the window itself, root of the tree
  DockStrip,  // what stays visible when collapsed
  TitleBar,
  lblCaption,
  PicShrinkExpandAllToolbar,
  PicFoldUnfoldAllToolbar,
  PicRSSToolbar,
  PicLockToolbar,
  PicUnlockToolbar,
  PicDockToolbar,
  picBack,  // the main panel
  BottomBar,
  cmdAdd,
  cmdSettings,
  cmdMenu,
  lblShortcut,   // caption; the clickable whole of a shortcut, parent of its icon
  picShortcut,   // icon
  PicContainer,  // frame of a picture
  PicImage,      // its image
  Container,
  ContainerFrame,  // its body
  ContainerLabel,  // its title text
  lblFoldUnfold,
  cmdConShrink,  // the buttons on the title, seen while the mouse is there
  cmdConDetach,
  cmdConMenu,
  ContainerIcon,  // the tile picture while shrunk
  ContainerNote,
  LstRSS,
  lblRSSLastUpdate,
  LstFolder,  // the entries of a folder container
  FolderRow,  // one of them
  ProgressText,
  UndoLine,  // what was removed just now, and that it can come back
  ScrollThumb,
  DragLayer,  // above everything: what is being dragged
  RubberBand,
  DropMark  // around the panel that would take the drop
};
#pragma GCC diagnostic pop

// Names a node. An id whose node is gone or hidden resolves to none.
struct NodeId {
  ControlKind kind = ControlKind::None;
  int slot = 0;
  auto operator<=>(const NodeId&) const = default;
  bool none() const { return kind == ControlKind::None; }
};

struct NodeIdHash {
  std::size_t operator()(const NodeId& id) const {
    return static_cast<std::size_t>(id.kind) * 1000003U + static_cast<std::size_t>(id.slot);
  }
};

class NoteLayout;

// What a node's own record says about its look; the palette says the rest.
struct NodeLook {
  std::optional<Colour> back;
  std::optional<Colour> fore;
  float points = 0;  // height of the text; 0: the kind's usual height
  bool bold = false;
  bool small = false;                  // shortcuts: caption beside the icon instead of under it
  Twips line;                          // of a caption that may have two lines: the height of one
  ScreenEdge edge = ScreenEdge::None;  // what its arrow is about
  bool stretched = true;               // wallpaper: fills the node instead of keeping its size
};

struct Node {
  NodeId id;
  NodeId parent;
  TwipsRect rect;  // relative to the parent
  std::wstring text;
  ImageRef image;
  bool visible = true;
  bool enabled = true;
  bool hitTarget = true;  // false: the mouse sees what lies behind
  bool focusable = false;
  bool selected = false;
  bool folded = false;   // of a fold box: unfolds its container
  bool current = false;  // of a list: what keys act on while the list has the focus
  bool clipsChildren = false;
  std::vector<NodeId> children;  // in painting order
  Point<Twips> scroll;           // the children lie this much further left and up
  NodeLook look;
  std::shared_ptr<const NoteLayout> note;  // of a note that is shown; its text is `text`
};

class Scene {
 public:
  Scene();  // holds the root {Frame, 0}

  // Adds a node as the last child of its parent, or returns the one with that id
  // (moved under the given parent). The reference is good until the node is
  // removed. A parent that does not exist stands for the root; a node is never
  // put below itself.
  Node& create(NodeId id, NodeId parent);
  // Removes the node with everything below it. Removing none is harmless.
  void remove(NodeId id);
  Node* find(NodeId id);
  const Node* find(NodeId id) const;
  NodeId root() const { return {ControlKind::Frame, 0}; }
  // Another number whenever a node may have changed since: whoever keeps what it
  // made from the scene compares it.
  std::uint64_t version() const { return version_; }
  // Moves the node to the front among its siblings.
  void raise(NodeId id);
  // Moves the node back past the siblings that `before(node, sibling)` puts in
  // front of it. Costs nothing when nodes are added in that order.
  template <class Before>
  void sink(NodeId id, Before&& before);

  // True when the node and all above it exist and are visible.
  bool shown(NodeId id) const;
  // The node's rectangle relative to the window. Empty when there is none.
  TwipsRect windowRect(NodeId id) const;
  // The part of windowRect that no ancestor clips away; empty when out of sight.
  TwipsRect seenRect(NodeId id) const;
  // A point of the window relative to the node.
  Point<Twips> toNode(NodeId id, Point<Twips> windowPoint) const;
  // The topmost visible hit target at a point of the window; none outside all.
  NodeId hitTest(Point<Twips> windowPoint) const;
  // Nodes in painting order, parents before children, visible ones only.
  std::vector<NodeId> visibleNodes() const;

 private:
  NodeId hitTestBelow(const Node& node, Point<Twips> local) const;
  void collectVisible(const Node& node, std::vector<NodeId>& into) const;
  void eraseBelow(NodeId id);
  void unlink(const Node& node);
  bool isBelow(NodeId id, NodeId ancestor) const;
  std::unordered_map<NodeId, Node, NodeIdHash> nodes_;
  std::uint64_t version_ = 0;
};

template <class Before>
void Scene::sink(NodeId id, Before&& before) {
  const Node* node = find(id);
  if (node == nullptr || node->parent.none()) return;
  std::vector<NodeId>& row = find(node->parent)->children;
  std::size_t at = 0;
  while (at < row.size() && row[row.size() - 1 - at] != id) ++at;
  std::size_t i = row.size() - 1 - at;
  while (i > 0 && before(id, row[i - 1])) {
    std::swap(row[i], row[i - 1]);
    --i;
  }
}

// The four ids of input state. Ids whose node has gone resolve to none.
class InputState {
 public:
  explicit InputState(const Scene& scene) : scene_(&scene) {}
  NodeId hovered() const { return resolve(hovered_); }
  NodeId pressed() const { return resolve(pressed_); }
  NodeId captured() const { return resolve(captured_); }
  NodeId focused() const { return resolve(focused_); }
  // Whoever uses the mouse sees what is meant; the keyboard needs the ring.
  NodeId ringed() const { return keysInUse_ ? focused() : NodeId{}; }

  // Each returns true when something that is drawn differently has changed.
  // While a node is captured nothing else is hovered.
  bool mouseMoved(Point<Twips> at);
  bool mouseLeft();
  bool mousePressed(Point<Twips> at);
  // The node that was clicked: pressed and released on the same node, else none.
  NodeId mouseReleased(Point<Twips> at);
  // Losing the capture cancels a press or drag.
  void captureLost();
  void capture(NodeId id) { captured_ = id; }
  bool focus(NodeId id);
  // A key has been pressed; the next press of the mouse ends it.
  bool keyUsed();
  // Steps through focusable nodes in painting order, wrapping round.
  bool focusNext(bool backwards);
  // To the nearest focusable node in a direction, such as {1, 0} for right. With
  // nothing in focus yet, to the first one. Stays where there is none.
  bool focusTowards(Point<int> direction);

 private:
  NodeId resolve(NodeId id) const { return scene_->shown(id) ? id : NodeId{}; }
  const Scene* scene_;
  NodeId hovered_, pressed_, captured_, focused_;
  bool keysInUse_ = false;
};

}  // namespace varnowick
