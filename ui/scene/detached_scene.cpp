#include "ui/scene/detached_scene.h"

#include <algorithm>

namespace varnowick {

void DetachedScene::build(Size<Twips> client, Size<Twips> open, Density density) {
  density_ = density;
  open_ = {std::max(open.width, kShrunkSize.width), std::max(open.height, kTitleStripHeight)};
  scene_.find(scene_.root())->rect = {{}, {}, client.width, client.height};
  const clsContainer* container = workspace_.containers.find(slot_);
  scene_.find(scene_.root())->text = container == nullptr ? std::wstring() : container->name;
  updateAll();
}

namespace {

ScreenEdge tabEdge(const clsContainer& c) {
  const auto edge = static_cast<ScreenEdge>(c.DetachedTabDockedWhere);
  return c.DetachedUseTab && edge >= ScreenEdge::Left && edge <= ScreenEdge::Bottom
             ? edge
             : ScreenEdge::None;
}

}  // namespace

// The other containers are on the bar or in windows of their own.
DetachedScene::ContainerShape DetachedScene::shapeOf(ContainerSlot slot,
                                                     const clsContainer& c) const {
  return {.visible = slot == slot_,
          .folded = c.DetachedFolded,
          .noteShown = c.Detached_Note_Visible,
          .toolbar = !c.HideToolbar,
          .edge = tabEdge(c)};
}

TwipsRect DetachedScene::boxRect(const clsContainer&, Size<Twips> box) const {
  return {{}, {}, box.width, box.height};
}

}  // namespace varnowick
