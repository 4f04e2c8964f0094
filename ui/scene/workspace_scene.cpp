#include "ui/scene/workspace_scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "sidebar/docking.h"
#include "ui/scene/metrics.h"
#include "ui/scene/toolbar_scene.h"

namespace varnowick {

namespace {

constexpr NodeId one(ControlKind kind) { return {kind, 0}; }
constexpr NodeId kMainPanel = one(ControlKind::picBack);

// In the order on screen; lock and unlock share a place.
constexpr float kToolbarPlaces = 5;

}  // namespace

Node& WorkspaceScene::put(ControlKind kind, NodeId parent, TwipsRect rect) {
  Node& node = scene_.create(one(kind), parent);
  node.rect = rect;
  return node;
}

void WorkspaceScene::build(const FrameLayout& layout) {
  built_ = false;
  setFrame(layout);
}

void WorkspaceScene::setFrame(const FrameLayout& layout) {
  layout_ = layout;
  density_ = layout.density;
  const NodeId frame = scene_.root();
  scene_.find(frame)->rect = {{}, {}, layout.window.width, layout.window.height};
  scene_.find(frame)->text = layout.caption;

  const Insets& in = layout.insets;
  const Twips zero{};
  const Twips width = std::max(zero, layout.window.width - in.left - in.right);
  const Twips height = std::max(zero, layout.window.height - in.top - in.bottom);
  const Twips titleHeight = std::min(kTitleBarHeight, height);
  // A bar too low for everything keeps its title and its panel.
  const bool roomForBottom = height > kTitleBarHeight + kBottomBarHeight + kReach;
  const Twips bottomHeight = roomForBottom ? kBottomBarHeight : zero;
  const Twips panelHeight = height - titleHeight - bottomHeight;

  layoutTitleBar({in.left, in.top, width, titleHeight});
  Node& panel =
      put(ControlKind::picBack, frame, {in.left, in.top + titleHeight, width, panelHeight});
  panel.clipsChildren = true;
  panel.image = {};
  if (!settings_.wallpaper.empty())
    panel.image = {ImageRef::Source::PictureFile, settings_.wallpaper};
  panel.look.stretched = settings_.stretch;
  Node& progress =
      put(ControlKind::ProgressText, frame,
          {in.left, in.top + titleHeight + panelHeight - kProgressHeight, width, kProgressHeight});
  progress.text = layout.progress;
  progress.visible = !layout.progress.empty();
  progress.hitTarget = false;
  Node& undo = put(ControlKind::UndoLine, frame,
                   progress.rect.translated({}, progress.visible ? -kProgressHeight : Twips{}));
  undo.text = layout.undoLine;
  undo.visible = !layout.undoLine.empty() && panelHeight > kProgressHeight * 2;
  undo.focusable = true;
  layoutBottomBar({in.left, in.top + titleHeight + panelHeight, width, bottomHeight});

  const Size<Twips> size{width, panelHeight};
  if (!built_ || size != panelSize_) {
    panelSize_ = size;
    updateAll();
    built_ = true;
  }
  put(ControlKind::ScrollThumb, frame, {}).focusable = false;
  layoutStrip();
  scrollTo(layout.scroll);
}

void WorkspaceScene::layoutTitleBar(const TwipsRect& bar) {
  put(ControlKind::TitleBar, scene_.root(), bar).clipsChildren = true;
  const NodeId titleBar = one(ControlKind::TitleBar);
  const Twips toolbar = layout_.toolbar ? kToolbarButton * kToolbarPlaces + Twips{60} : kPad;
  const Twips toolbarLeft = std::max(kPad, bar.width - toolbar);
  Node& caption =
      put(ControlKind::lblCaption, titleBar, {kPad, {}, toolbarLeft - kPad, bar.height});
  caption.text = layout_.caption;
  // The title bar behind it is what the window is dragged by.
  caption.hitTarget = false;

  Twips left = toolbarLeft;
  for (const ToolbarButton& row : kToolbarButtons) {
    Node& button =
        put(row.kind, titleBar,
            {left, (bar.height - kToolbarButton) * 0.5F, kToolbarButton, kToolbarButton});
    button.focusable = true;
    if (dressToolbarButton(button, row, {layout_.locked, layout_.buttonImages, layout_.edge}))
      left += kToolbarButton;
    button.visible = button.visible && layout_.toolbar;
  }
}

void WorkspaceScene::layoutBottomBar(const TwipsRect& bar) {
  Node& node = put(ControlKind::BottomBar, scene_.root(), bar);
  node.clipsChildren = true;
  node.visible = !bar.empty();
  const std::array<std::pair<ControlKind, const wchar_t*>, 3> buttons{
      {{ControlKind::cmdAdd, L"Add"},
       {ControlKind::cmdSettings, L"Settings"},
       {ControlKind::cmdMenu, L"Menu"}}};
  const Twips width = bar.width * (1.0F / 3.0F);
  Twips left{};
  for (const auto& [kind, text] : buttons) {
    Node& button = put(kind, one(ControlKind::BottomBar), {left, {}, width, bar.height});
    button.text = text;
    button.focusable = true;
    left += width;
  }
}

void WorkspaceScene::layoutStrip() {
  Node& strip = put(ControlKind::DockStrip, scene_.root(), {});
  const auto [width, height] = layout_.window;
  strip.visible = layout_.collapsedTo != ScreenEdge::None;
  switch (layout_.collapsedTo) {
    case ScreenEdge::None:
      break;
    case ScreenEdge::Left:
      strip.rect = {width - kCollapsedStrip, {}, kCollapsedStrip, height};
      break;
    case ScreenEdge::Right:
      strip.rect = {{}, {}, kCollapsedStrip, height};
      break;
    case ScreenEdge::Top:
      strip.rect = {{}, height - kCollapsedStrip, width, kCollapsedStrip};
      break;
    case ScreenEdge::Bottom:
      strip.rect = {{}, {}, width, kCollapsedStrip};
      break;
  }
}

Twips WorkspaceScene::contentHeight() const {
  Twips height{};
  for (const NodeId id : scene_.find(kMainPanel)->children) {
    const Node& node = *scene_.find(id);
    if (node.visible) height = std::max(height, node.rect.bottom());
  }
  return height > Twips{} ? height + kPad : height;
}

Twips WorkspaceScene::scrollTo(Twips offset) {
  Node* panel = scene_.find(kMainPanel);
  if (panel == nullptr) return {};
  const Twips most = std::max(Twips{}, contentHeight() - panel->rect.height);
  layout_.scroll = std::isnan(offset.value) ? Twips{} : std::clamp(offset, Twips{}, most);
  panel->scroll.y = layout_.scroll;
  layoutThumb();
  return layout_.scroll;
}

void WorkspaceScene::layoutThumb() {
  const TwipsRect panel = scene_.find(kMainPanel)->rect;
  const Twips content = contentHeight();
  Node& thumb = *scene_.find(one(ControlKind::ScrollThumb));
  thumb.visible = content > panel.height && !panel.empty();
  if (!thumb.visible) return;
  const float share = panel.height.value / content.value;
  const Twips height = std::min(panel.height, std::max(Twips{300}, panel.height * share));
  const float way = layout_.scroll.value / (content - panel.height).value;
  thumb.rect = {panel.right() - kScrollThumbWidth - Twips{15},
                panel.top + (panel.height - height) * way, kScrollThumbWidth, height};
}

bool WorkspaceScene::scrollToShow(NodeId id) {
  bool onPanel = false;
  for (const Node* node = scene_.find(id); node != nullptr; node = scene_.find(node->parent))
    onPanel = onPanel || node->parent == kMainPanel;
  if (!onPanel) return false;
  const TwipsRect panel = scene_.windowRect(kMainPanel);
  const TwipsRect rect = scene_.windowRect(id);
  const Twips before = layout_.scroll;
  if (rect.top < panel.top || rect.height > panel.height)
    scrollTo(before + rect.top - panel.top - kPad);
  else if (rect.bottom() > panel.bottom())
    scrollTo(before + rect.bottom() - panel.bottom() + kPad);
  return layout_.scroll != before;
}

WorkspaceScene::ContainerShape WorkspaceScene::shapeOf(ContainerSlot, const clsContainer& c) const {
  const bool shrunk = c.shrunk;
  return {.visible = c.visible && !c.Detached,
          .folded = c.folded && !shrunk,
          .shrunk = shrunk,
          .noteShown = c.noteVisible,
          .toolbar = !c.HideToolbar,
          .edge = layout_.edge};
}

Size<Twips> WorkspaceScene::openSize(const clsContainer& container) const {
  const bool open = !container.folded && !container.shrunk && !container.rect.empty();
  Size<Twips> size =
      sane(open ? container.rect : container.savedRect, {kShrunkSize.width, kTitleStripHeight})
          .size();
  // Wider than the main panel, the fold box and the contents were out of reach.
  if (panelSize_.width > kShrunkSize.width) size.width = std::min(size.width, panelSize_.width);
  return size;
}

TwipsRect WorkspaceScene::boxRect(const clsContainer& container, Size<Twips> box) const {
  return reachable(picBack, container.rect.topLeft(), box);
}

Size<Twips> WorkspaceScene::surfaceFor(const clsContainer& container) const {
  const Twips bottom = layout_.scroll + panelSize_.height;
  const bool inSight = container.rect.top < bottom && container.rect.top >= layout_.scroll;
  return {panelSize_.width, inSight ? bottom : kFarthest};
}

}  // namespace varnowick
