// The records of the workspace as nodes: shortcuts, pictures and containers with
// their parts, brought up to date slot by slot. What stands around them, and which
// containers are shown how, is told by the scene of the window. Reads records and
// never changes them; knows nothing of windows, files or painting.
#pragma once

#include <functional>
#include <string>

#include "core/settings.h"
#include "core/workspace.h"
#include "ui/scene/note_view.h"
#include "ui/scene/scene.h"

namespace varnowick {

// The nodes of a slot, and back. The inverse gives none for other kinds.
inline NodeId shortcutNode(ShortcutSlot slot) { return {ControlKind::lblShortcut, slot.index}; }
inline NodeId pictureNode(PictureSlot slot) { return {ControlKind::PicContainer, slot.index}; }
inline NodeId containerNode(ContainerSlot slot) { return {ControlKind::Container, slot.index}; }
inline NodeId containerPart(ControlKind kind, ContainerSlot slot) { return {kind, slot.index}; }
ShortcutSlot shortcutOf(NodeId id);
PictureSlot pictureOf(NodeId id);
// For a container's own parts: box, body, title, fold box, tile, note, list.
ContainerSlot containerOf(NodeId id);

class ObjectScene {
 public:
  // The settings and the workspace are borrowed and must outlive the scene.
  // Without a measure the room that captions need is estimated.
  ObjectScene(const Settings& settings, const Workspace& workspace, TextMeasure* measure);
  ObjectScene(const ObjectScene&) = delete;
  ObjectScene& operator=(const ObjectScene&) = delete;
  virtual ~ObjectScene() = default;

  // Says which file's icon stands for a shortcut; without it the shortcut's own
  // icon file or path is taken as it stands. Set it before anything is laid out.
  using IconSource = std::function<std::wstring(const clsShortcut&)>;
  void setIconSource(IconSource source) { iconSource_ = std::move(source); }
  // Called after the parts of a container have been laid out, for whoever fills
  // them with more than records.
  using ContentLayout = std::function<void(ContainerSlot)>;
  void setContentLayout(ContentLayout layout) { contentLayout_ = std::move(layout); }

  Scene& scene() { return scene_; }
  const Scene& scene() const { return scene_; }
  const Workspace& workspace() const { return workspace_; }
  Density density() const { return density_; }
  Size<Twips> windowSize() const { return scene_.find(scene_.root())->rect.size(); }

  // The panel that is meant where none is pointed at.
  virtual Panel homePanel() const { return picBack; }
  // How far the main panel is scrolled down, where there is one.
  virtual Twips scroll() const { return {}; }
  // Scrolls; the offset is kept within the content and returned.
  virtual Twips scrollTo(Twips) { return {}; }
  // Scrolls so far that the node comes into sight; true when it had to.
  virtual bool scrollToShow(NodeId) { return false; }

  // After these scrollTo(scroll()) brings the scroll thumb up to date.
  //
  // Bring one slot up to date, creating its nodes when it has none. A slot not
  // in use is hidden. Shortcuts and pictures need their container's first.
  void updateShortcut(ShortcutSlot slot);
  void updatePicture(PictureSlot slot);
  void updateContainer(ContainerSlot slot);
  // Only the position: what lies in the container moves along untouched.
  void moveContainer(ContainerSlot slot);
  // The line shown in place of headlines; empty for none.
  void setFeedPrompt(ContainerSlot slot, std::wstring text);
  void setFeedStatus(ContainerSlot slot, std::wstring text);

  // The panel under a point of the window: a container that shows its body or
  // title, else the home panel.
  Panel panelAt(Point<Twips> windowPoint) const;
  // A point of the window as a position on the panel, as records hold it:
  // relative to the container's box, or to the scrolled main panel.
  Point<Twips> toPanel(Panel panel, Point<Twips> windowPoint) const;
  // A point of the window relative to the container's body, as the shrink hot
  // spot is measured; of a shrunk container the whole tile is the body.
  Point<Twips> bodyPoint(ContainerSlot slot, Point<Twips> windowPoint) const;
  // The panel's extent; of a folded or shrunk container that of its open state.
  Size<Twips> panelSize(Panel panel) const;
  // The room to keep free for a new shortcut, whatever its caption.
  Size<Twips> shortcutCell(bool small) const;

 protected:
  // How a window shows a container.
  struct ContainerShape {
    bool visible = false;
    bool folded = false;
    bool shrunk = false;
    bool noteShown = false;
    bool toolbar = false;                // the buttons on its title
    ScreenEdge edge = ScreenEdge::None;  // what the arrows on them are about
  };
  virtual ContainerShape shapeOf(ContainerSlot slot, const clsContainer& container) const = 0;
  // The node in which containers lie.
  virtual NodeId containerParent() const = 0;
  virtual Size<Twips> mainPanelSize() const = 0;
  virtual Size<Twips> openSize(const clsContainer& container) const = 0;
  // Where a box of that size is shown.
  virtual TwipsRect boxRect(const clsContainer& container, Size<Twips> box) const = 0;

  // In which order siblings on a panel are painted.
  static bool liesBehind(NodeId a, NodeId b);
  // Visits every slot that may have nodes, in use or not.
  void updateAll();
  NodeId panelNode(Panel panel) const;
  // Where an object is shown, whatever its record says.
  TwipsRect reachable(Panel panel, Point<Twips> at, Size<Twips> size) const;

  const Settings& settings_;
  const Workspace& workspace_;
  Scene scene_;
  Density density_;

 private:
  void layoutParts(ContainerSlot slot, const clsContainer& container, const ContainerShape& shape,
                   Size<Twips> box);
  void layoutTitle(ContainerSlot slot, const clsContainer& container, const ContainerShape& shape,
                   Size<Twips> box);
  void layoutLists(ContainerSlot slot, const clsContainer& container, const TwipsRect& body);
  Node& part(ControlKind kind, ContainerSlot slot, NodeId parent, TwipsRect rect, bool visible);
  void relayPanel(Panel panel);
  void updateContents(Panel panel);
  void placeShortcut(Node& node, ShortcutSlot slot, const clsShortcut& shortcut);
  Size<Twips> largeSize(const clsShortcut& shortcut, float points, Twips line);
  Size<Twips> smallSize(const clsShortcut& shortcut, float points, Twips line);
  Twips textWidth(const std::wstring& text, float points, bool bold);
  Twips lineHeight(float points, bool bold) const;
  Twips iconSize() const;
  ImageRef iconOf(const clsShortcut& shortcut) const;

  TextMeasure* measure_;
  IconSource iconSource_;
  ContentLayout contentLayout_;
  NoteLayouts noteLayouts_;
  bool updatingAll_ = false;
  // One past the highest slots that may have nodes: tables can shrink.
  int containerNodes_ = 0, shortcutNodes_ = 0, pictureNodes_ = 0;
};

// What stands for a container on its tile.
ImageRef tileImage(const clsContainer& container);
// The height of a shortcut's caption in points: the stored 10 stands for the
// usual size on the screen; kept within 6 and 24.
float captionPoints(const Settings& settings, const clsShortcut& shortcut);
// The rectangle with numbers that are not numbers, sizes that are not sizes and
// places out of this world replaced by the nearest that can be shown.
TwipsRect sane(TwipsRect rect, Size<Twips> least);

}  // namespace varnowick
