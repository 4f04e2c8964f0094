// Builds the scene of the main window from the settings, the workspace and the
// window's layout, and keeps it up to date slot by slot. Knows nothing of
// windows, files or painting; it reads records and never changes them.
#pragma once

#include <functional>
#include <string>

#include "core/settings.h"
#include "core/workspace.h"
#include "ui/scene/scene.h"

namespace varnowick {

struct Insets {
  Twips left, top, right, bottom;
  bool operator==(const Insets&) const = default;
};

// What the main window tells the scene about itself.
struct FrameLayout {
  Size<Twips> window{{4700}, {11520}};
  Insets insets;  // how much of the window lies off screen on each side while expanded
  ScreenEdge collapsedTo = ScreenEdge::None;
  std::wstring caption = L"Varnowick";
  bool locked = false;
  Twips scroll;           // of the main panel, downwards; kept within the content
  std::wstring progress;  // shown above the bottom bar while not empty
  // True when a button set is loaded: the toolbar shows the assets "shrinkall",
  // "foldall", "rss", "lock", "unlock" and "dock" instead of its own signs.
  bool buttonImages = false;
  Density density;
};

// The nodes of a slot, and back. The inverse gives none for other kinds.
inline NodeId shortcutNode(ShortcutSlot slot) { return {ControlKind::lblShortcut, slot.index}; }
inline NodeId pictureNode(PictureSlot slot) { return {ControlKind::PicContainer, slot.index}; }
inline NodeId containerNode(ContainerSlot slot) { return {ControlKind::Container, slot.index}; }
inline NodeId containerPart(ControlKind kind, ContainerSlot slot) { return {kind, slot.index}; }
ShortcutSlot shortcutOf(NodeId id);
PictureSlot pictureOf(NodeId id);
// For a container's own parts: box, body, title, fold box, tile, note, list.
ContainerSlot containerOf(NodeId id);

class WorkspaceScene {
 public:
  // The settings and the workspace are borrowed and must outlive the scene.
  // Without a measure the room that captions need is estimated.
  WorkspaceScene(const Settings& settings, const Workspace& workspace,
                 TextMeasure* measure = nullptr);

  // Says which file's icon stands for a shortcut; without it the shortcut's own
  // icon file or path is taken as it stands. Set it before build().
  using IconSource = std::function<std::wstring(const clsShortcut&)>;
  void setIconSource(IconSource source) { iconSource_ = std::move(source); }

  Scene& scene() { return scene_; }
  const Scene& scene() const { return scene_; }
  const FrameLayout& layout() const { return layout_; }

  // Lays out everything: after loading and after changed settings.
  void build(const FrameLayout& layout);
  // Lays out the window's own parts; what lies on the panel is placed again
  // only when the panel's size changed.
  void setFrame(const FrameLayout& layout);
  // Scrolls the main panel; the offset is kept within the content and returned.
  Twips scrollTo(Twips offset);
  // Scrolls so far that the node comes into sight; true when it had to.
  bool scrollToShow(NodeId id);
  Twips contentHeight() const;

  // After these scrollTo(layout().scroll) brings the scroll thumb up to date.
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
  // title, else the main panel.
  Panel panelAt(Point<Twips> windowPoint) const;
  // A point of the window as a position on the panel, as records hold it:
  // relative to the container's box, or to the scrolled main panel.
  Point<Twips> toPanel(Panel panel, Point<Twips> windowPoint) const;
  // A point of the window relative to the container's body, as the shrink hot
  // spot is measured; of a shrunk container the whole tile is the body.
  Point<Twips> bodyPoint(ContainerSlot slot, Point<Twips> windowPoint) const;
  // The panel's extent; of a folded or shrunk container that of its open state.
  Size<Twips> panelSize(Panel panel) const;
  // The room to keep free for a new shortcut.
  Size<Twips> shortcutCell(bool small) const;

 private:
  Node& put(ControlKind kind, NodeId parent, TwipsRect rect);
  void layoutTitleBar(const TwipsRect& bar);
  void layoutBottomBar(const TwipsRect& bar);
  void layoutStrip();
  void layoutThumb();
  void relayObjects();
  void layoutParts(ContainerSlot slot, const clsContainer& container, Size<Twips> box);
  void relayPanel(Panel panel);
  NodeId panelNode(Panel panel) const;
  void placeShortcut(Node& node, ShortcutSlot slot, const clsShortcut& shortcut);
  Size<Twips> largeSize(const clsShortcut& shortcut, float points);
  Size<Twips> smallSize(const clsShortcut& shortcut, float points);
  Twips textWidth(const std::wstring& text, float points, bool bold);
  Twips iconSize() const;
  ImageRef iconOf(const clsShortcut& shortcut) const;
  Size<Twips> openSize(const clsContainer& container) const;
  // Where an object is shown, whatever its record says.
  TwipsRect reachable(Panel panel, Point<Twips> at, Size<Twips> size) const;

  const Settings& settings_;
  const Workspace& workspace_;
  TextMeasure* measure_;
  IconSource iconSource_;
  Scene scene_;
  FrameLayout layout_;
  Size<Twips> panelSize_;
  bool built_ = false;
  // One past the highest slots that may have nodes: tables can shrink.
  int containerNodes_ = 0, shortcutNodes_ = 0, pictureNodes_ = 0;
};

// The height of a shortcut's caption in points: the stored 10 stands for the
// usual size on the screen; kept within 6 and 24.
float captionPoints(const Settings& settings, const clsShortcut& shortcut);
// The rectangle with numbers that are not numbers, sizes that are not sizes and
// places out of this world replaced by the nearest that can be shown.
TwipsRect sane(TwipsRect rect, Size<Twips> least);

}  // namespace varnowick
