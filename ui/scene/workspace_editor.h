// Editing the workspace on its scene: selecting, dragging between panels, sizing,
// drawing containers, rubber band, deleting, sorting, adding what was dropped. Works on the
// document and the scene, and makes each change a step of the document's history; it
// saves nothing, asks nothing and knows no window. What is hidden is not selected.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "containers/layout.h"
#include "core/document.h"
#include "shortcuts/arrange.h"
#include "shortcuts/dropped.h"
#include "shortcuts/selection.h"
#include "ui/scene/gestures.h"
#include "ui/scene/object_scene.h"

namespace varnowick {

class WorkspaceEditor {
 public:
  // Both are borrowed and must outlive the editor. A scene without a main panel shows
  // one container, which is its window and no object on it.
  WorkspaceEditor(Document& document, ObjectScene& scene) : document_(document), scene_(scene) {}

  const Selection& selection() const { return selection_; }
  // Called when something is selected, or nothing any more: the focus is to follow.
  void setSelectionShown(std::function<void()> shown) { selectionShown_ = std::move(shown); }

  // What a drag begins that starts at this node and point of the window.
  GestureKind dragFrom(NodeId node, Point<Twips> at) const;
  // A press on a node and the release on the same one.
  void pressed(NodeId node, bool ctrl);
  void released(NodeId node, bool ctrl, bool dragged);

  // Dragging the selected objects: they follow by the distance from the start,
  // above everything else. The drop moves the records to the panel under the
  // point; a refusal is a message for the user.
  void beginDrag();
  void drag(Point<Twips> distance);
  Moved drop(Point<Twips> distance, Point<Twips> pointer);
  void cancelDrag();
  // Takes over what is being dragged in another window, onto the panel at that point,
  // and ends the drag there. The other window is to be shown anew.
  Moved take(WorkspaceEditor& from, Point<Twips> at);
  // The shortcut whose middle is under the pointer, and that is not being dragged,
  // while one shortcut alone is: dropping it there opens it with that one. Beside the
  // middle, and between two shortcuts, a drop goes in before or after.
  ShortcutSlot openWithTarget(Point<Twips> pointer);

  // The panel that a drop at the point goes to, whatever is being dragged there.
  Panel dropPanel(Point<Twips> pointer);

  // Dragging the selected containers of the main panel by a title or tile.
  void beginContainerDrag();
  void dragContainers(Point<Twips> distance);
  Moved dropContainers(Point<Twips> distance);

  // The border of the container or picture at a point of the window by which it can
  // be sized; no edge where there is none.
  Edges borderAt(NodeId node, Point<Twips> at) const;
  // Sizing it by that border. A picture keeps its shape unless `free`.
  void beginResize(NodeId node, Point<Twips> at);
  void resize(Point<Twips> distance, bool free);
  // True when something has changed.
  bool endResize();
  // The container that fills the window has become smaller.
  void keepContentsWithin(Panel panel);
  void cancelResize();

  // In draw mode the next drag on the main panel makes a container.
  void setDrawMode(bool on) { drawMode_ = on; }
  bool drawMode() const { return drawMode_; }
  void showDrawn(Point<Twips> from, Point<Twips> to);
  // The place of the container dragged out between two points of the window. Ends
  // the draw mode.
  TwipsRect drawn(Point<Twips> from, Point<Twips> to);

  // The place of a container of the usual size at a point of the window. The same.
  TwipsRect drawnAt(Point<Twips> at);

  // A free place of that size on the panel; on the main one in sight where there is
  // one.
  TwipsRect freePlace(Size<Twips> size, Panel panel = picBack) const;
  // Adds a container at that place of the main panel and selects it. None, and
  // nothing happens, while editing is locked.
  ContainerSlot addContainer(clsContainer container, const TwipsRect& rect);
  // Adds a picture to the panel and selects it; the same.
  PictureSlot addPicture(const clsPicture& picture);
  // With what lies in them. Files of a folder container are never touched.
  void removeContainers(const std::vector<ContainerSlot>& slots);
  std::vector<ContainerSlot> selectedContainers() const;

  // The rubber band between two points of the window, on the panel pressed.
  void band(Point<Twips> from, Point<Twips> to);
  void endBand();

  void selectAll();
  void selectNone();
  void selectOnly(ObjectId id);
  Moved sortByName(Panel panel);
  Moved align();
  DeletePlan planDelete(const std::vector<ContainerSlot>& removedBefore = {}) const;
  void carryOut(const DeletePlan& plan);

  // Adds new shortcuts at a point of the window, or without one at the start of
  // the panel, of the main one as it is scrolled. They end up selected.
  Added add(std::vector<clsShortcut> shortcuts, const Point<Twips>* at) {
    return add(std::move(shortcuts), at, scene_.homePanel());
  }
  Added add(std::vector<clsShortcut> shortcuts, const Point<Twips>* at, Panel panel);
  // Marks the panel at the point as the one that would take a drop.
  void markDrop(Point<Twips> pointer);
  void markDrop(NodeId node);
  void unmarkDrop();

  // After a shortcut's record was changed in place.
  void shortcutChanged(ShortcutSlot slot);
  // After records were changed in place, came back or went: containers first.
  void objectsChanged(const std::vector<ObjectId>& objects) { refresh(objects); }
  // After the scene has been built anew, or something on it may have been hidden.
  void sceneRebuilt() { showSelection(); }

 private:
  PanelMeasures measures() const;
  // Where a drop at the pointer goes in between shortcuts.
  std::optional<Gap> gapAt(Point<Twips> pointer);
  // How far along a shortcut the pointer is, 0 to 1, in the direction of reading.
  float alongAt(ShortcutSlot slot, Point<Twips> pointer) const;
  ShortcutSlot shortcutAt(Point<Twips> pointer);
  NodeId nodeOf(ObjectId id) const;
  std::optional<ObjectId> objectAt(NodeId node) const;
  bool hasMainPanel() const { return scene_.scene().find({ControlKind::picBack, 0}) != nullptr; }
  void keepContents(ContainerSlot slot);
  void showBand(Point<Twips> from, Point<Twips> to);
  Point<Twips> onGrid(const TwipsRect& start, Edges edges, Point<Twips> distance) const;
  void update(const std::vector<ObjectId>& objects);
  void refresh(const std::vector<ObjectId>& objects);
  void showSelection();
  void endDrag();
  // Runs the question with what is being dragged out of the way.
  template <class Question>
  auto beneathDrag(Question&& question);

  Document& document_;
  ObjectScene& scene_;
  Selection selection_;
  std::function<void()> selectionShown_;
  std::vector<NodeId> shownSelected_;
  struct Dragged {
    ObjectId id;
    TwipsRect start;  // of the window
  };
  std::vector<Dragged> dragged_;
  Panel bandPanel_;
  bool drawMode_ = false;
  struct Resizing {
    ObjectId id;
    Edges edges;
    clsContainer container;  // as it was
    TwipsRect picture;
    std::vector<PlacedShortcut> contents;  // of the container
    std::unique_ptr<UndoStep> step;
  };
  std::optional<Resizing> resizing_;
};

}  // namespace varnowick
