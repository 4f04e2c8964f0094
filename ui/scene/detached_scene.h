// The scene of a detached container: one container that fills a window of its own.
// Knows the record's detached state; nothing of windows, tabs or the bar.
#pragma once

#include "ui/scene/object_scene.h"

namespace varnowick {

class DetachedScene final : public ObjectScene {
 public:
  DetachedScene(const Settings& settings, const Workspace& workspace, ContainerSlot slot,
                TextMeasure* measure = nullptr)
      : ObjectScene(settings, workspace, measure), slot_(slot) {}

  ContainerSlot slot() const { return slot_; }
  Panel homePanel() const override { return {slot_}; }
  // Lays out everything for a client area of that size. While the window shows only
  // its title, `open` is the size that the container has when unfolded.
  void build(Size<Twips> client, Size<Twips> open, Density density);

 private:
  ContainerShape shapeOf(ContainerSlot slot, const clsContainer& container) const override;
  NodeId containerParent() const override { return scene_.root(); }
  Size<Twips> mainPanelSize() const override { return windowSize(); }
  Size<Twips> openSize(const clsContainer&) const override { return open_; }
  TwipsRect boxRect(const clsContainer& container, Size<Twips> box) const override;

  ContainerSlot slot_;
  Size<Twips> open_;
};

}  // namespace varnowick
