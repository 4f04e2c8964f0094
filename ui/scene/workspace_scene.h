// The scene of the main window: title bar, main panel, bottom bar and strip around
// the objects of the workspace. Knows nothing of windows, files or painting; it
// reads records and never changes them.
#pragma once

#include <string>

#include "ui/scene/object_scene.h"

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
  ScreenEdge edge = ScreenEdge::None;  // at which it stands, or would collapse to
  bool toolbar = true;                 // the buttons on the title; false while they float
  std::wstring caption = L"Varnowick";
  bool locked = false;
  Twips scroll;           // of the main panel, downwards; kept within the content
  std::wstring progress;  // shown above the bottom bar while not empty
  std::wstring undoLine;  // shown there too, for a while after something was removed
  // True when a button set is loaded: the toolbar shows the assets "shrinkall",
  // "foldall", "rss", "lock", "unlock" and "dock" instead of its own signs.
  bool buttonImages = false;
  Density density;
};

class WorkspaceScene final : public ObjectScene {
 public:
  WorkspaceScene(const Settings& settings, const Workspace& workspace,
                 TextMeasure* measure = nullptr)
      : ObjectScene(settings, workspace, measure) {}

  const FrameLayout& layout() const { return layout_; }

  // Lays out everything: after loading and after changed settings.
  void build(const FrameLayout& layout);
  // Lays out the window's own parts; what lies on the panel is placed again
  // only when the panel's size changed.
  void setFrame(const FrameLayout& layout);
  Twips scroll() const override { return layout_.scroll; }
  Twips scrollTo(Twips offset) override;
  bool scrollToShow(NodeId id) override;
  Twips contentHeight() const;
  // Where the part of the main panel ends that is in sight, as a container with
  // this title is to open within; far below for a title that is out of sight.
  Size<Twips> surfaceFor(const clsContainer& container) const;

 private:
  ContainerShape shapeOf(ContainerSlot slot, const clsContainer& container) const override;
  NodeId containerParent() const override { return {ControlKind::picBack, 0}; }
  Size<Twips> mainPanelSize() const override { return panelSize_; }
  Size<Twips> openSize(const clsContainer& container) const override;
  TwipsRect boxRect(const clsContainer& container, Size<Twips> box) const override;

  Node& put(ControlKind kind, NodeId parent, TwipsRect rect);
  void layoutTitleBar(const TwipsRect& bar);
  void layoutBottomBar(const TwipsRect& bar);
  void layoutStrip();
  void layoutThumb();

  FrameLayout layout_;
  Size<Twips> panelSize_;
  bool built_ = false;
};

}  // namespace varnowick
