#include "ui/scene/object_scene.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "ui/scene/metrics.h"

namespace varnowick {

namespace {

constexpr Twips kLineHeightPerPoint{25};  // one line of text, with its leading; a guess
constexpr Twips kIconTop{60};             // and as much between icon and caption
constexpr Twips kLineGap{90};             // above and below a caption beside its icon

// What lies on a panel, from the back to the front.
int layerOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::ContainerNote:
    case ControlKind::LstRSS:
    case ControlKind::LstFolder:
      return 0;
    case ControlKind::lblRSSLastUpdate:
      return 1;
    case ControlKind::lblShortcut:
      return 2;
    case ControlKind::PicContainer:
      return 3;
    default:
      return 4;
  }
}
// Of a shortcut with its caption below the icon.
Twips largeHeight(Twips icon, Twips line, int lines) {
  return kIconTop + icon + kIconTop + line * static_cast<float>(lines) + Twips{50};
}

float number(float value, float least, float most) {
  return std::isnan(value) ? least : std::clamp(value, least, most);
}

}  // namespace

// Containers keep the order in which they were raised among themselves.
bool ObjectScene::liesBehind(NodeId a, NodeId b) {
  const int layerA = layerOf(a.kind);
  const int layerB = layerOf(b.kind);
  return std::tie(layerA, a.slot) < std::tie(layerB, b.slot);
}

ObjectScene::ObjectScene(const Settings& settings, const Workspace& workspace, TextMeasure* measure)
    : settings_(settings), workspace_(workspace), measure_(measure) {}

TwipsRect sane(TwipsRect rect, Size<Twips> least) {
  const float far = kFarthest.value;
  return {{number(std::isnan(rect.left.value) ? 0 : rect.left.value, -far, far)},
          {number(std::isnan(rect.top.value) ? 0 : rect.top.value, -far, far)},
          {number(rect.width.value, least.width.value, far)},
          {number(rect.height.value, least.height.value, far)}};
}

ImageRef ObjectScene::iconOf(const clsShortcut& shortcut) const {
  if (iconSource_) return {ImageRef::Source::IconOf, iconSource_(shortcut)};
  if (!shortcut.Icon.empty()) return {ImageRef::Source::IconOf, shortcut.Icon};
  if (shortcut.Command || shortcut.Path.empty()) return {ImageRef::Source::Asset, L"terminal"};
  return {ImageRef::Source::IconOf, shortcut.Path};
}

float captionPoints(const Settings& settings, const clsShortcut& shortcut) {
  constexpr float kUsual = 8;  // points on the screen for the stored 10
  const float base = number(static_cast<float>(settings.fontSize), 6, 30) / 10.0F;
  const float own = number(shortcut.FontSize, 6, 30) / (isSmall(shortcut) ? kSmallFontSize : 10.0F);
  return number(std::round(kUsual * base * own * 4.0F) / 4.0F, 6, 24);
}

ShortcutSlot shortcutOf(NodeId id) {
  const bool mine = id.kind == ControlKind::lblShortcut || id.kind == ControlKind::picShortcut;
  return mine ? ShortcutSlot{id.slot} : ShortcutSlot{};
}

PictureSlot pictureOf(NodeId id) {
  const bool mine = id.kind == ControlKind::PicContainer || id.kind == ControlKind::PicImage;
  return mine ? PictureSlot{id.slot} : PictureSlot{};
}

ContainerSlot containerOf(NodeId id) {
  switch (id.kind) {
    case ControlKind::Container:
    case ControlKind::ContainerFrame:
    case ControlKind::ContainerLabel:
    case ControlKind::lblFoldUnfold:
    case ControlKind::ContainerIcon:
    case ControlKind::ContainerNote:
    case ControlKind::LstRSS:
    case ControlKind::lblRSSLastUpdate:
    case ControlKind::LstFolder:
    case ControlKind::cmdConShrink:
    case ControlKind::cmdConDetach:
    case ControlKind::cmdConMenu:
      return {id.slot};
    default:
      return {};
  }
}

NodeId ObjectScene::panelNode(Panel panel) const {
  if (panel.isMain()) return {ControlKind::picBack, 0};
  return containerPart(ControlKind::ContainerFrame, panel.container);
}

Size<Twips> ObjectScene::panelSize(Panel panel) const {
  const clsContainer* container = workspace_.containers.find(panel.container);
  return container == nullptr ? mainPanelSize() : openSize(*container);
}

TwipsRect ObjectScene::reachable(Panel panel, Point<Twips> at, Size<Twips> size) const {
  TwipsRect rect = sane({at.x, at.y, size.width, size.height}, size);
  const Size<Twips> room = panelSize(panel);
  const Twips leftMost = std::min(Twips{}, kReach - rect.width);
  rect.left = std::clamp(rect.left, leftMost, std::max(leftMost, room.width - kReach));
  // The main panel scrolls down to whatever lies below. In a container what found no room
  // lies below the body, and stays apart; but nothing of ours is that far down that a
  // file may say. Its title covers the top.
  constexpr Twips kFarthestOverflow{60'000};
  const Twips top = panel.isMain() ? Twips{} : kTitleStripHeight;
  const bool strayed = !panel.isMain() && rect.top > room.height + kFarthestOverflow;
  const Twips lowest = strayed ? std::max(top, room.height - kReach * 0.5F) : kFarthest;
  rect.top = std::clamp(rect.top, top, lowest);
  return rect;
}

Twips ObjectScene::iconSize() const {
  return Twips{15} * static_cast<float>(std::clamp(settings_.largeIconSize, 16, 128));
}

Size<Twips> ObjectScene::shortcutCell(bool small) const {
  clsShortcut usual;
  const Twips line = lineHeight(captionPoints(settings_, usual), false);
  if (small)
    return {kSmallShortcutCell.width, std::max(kSmallShortcutCell.height, line + kLineGap)};
  const Twips more = iconSize() - Twips{480};
  return {std::max(kShortcutCell.width, kShortcutCell.width + more),
          std::max(kShortcutCell.height + more, largeHeight(iconSize(), line, 2))};
}

Twips ObjectScene::lineHeight(float points, bool bold) const {
  if (measure_ == nullptr) return kLineHeightPerPoint * points;
  TextStyle style;
  style.face = settings_.fontName;
  style.points = points;
  style.bold = bold;
  return density_.toTwips(measure_->measure(L"Ag", style, Pixels{0}).height);
}

Twips ObjectScene::textWidth(const std::wstring& text, float points, bool bold) {
  // What is surely short or surely long is not worth measuring: thousands of
  // captions are laid out at once.
  const float length = static_cast<float>(std::min<std::size_t>(text.size(), 400));
  const Twips guess{length * points * 11.0F};
  if (measure_ == nullptr || text.size() > 60) return guess;
  TextStyle style;
  style.face = settings_.fontName;
  style.points = points;
  style.bold = bold;
  return density_.toTwips(measure_->measure(text, style, Pixels{10000}).width);
}

Size<Twips> ObjectScene::largeSize(const clsShortcut& shortcut, float points, Twips line) {
  Size<Twips> size = shortcutCell(false);
  const bool twoLines =
      shortcut.FullCaption.size() > 5 &&
      textWidth(shortcut.FullCaption, points, shortcut.FontBold) > size.width - Twips{90};
  size.height = largeHeight(iconSize(), line, twoLines ? 2 : 1);
  return size;
}

Size<Twips> ObjectScene::smallSize(const clsShortcut& shortcut, float points, Twips line) {
  const Twips text = textWidth(shortcut.FullCaption, points, shortcut.FontBold);
  return {std::clamp(text + kSmallIcon + Twips{285}, Twips{900}, Twips{4500}),
          std::max(kSmallShortcutCell.height, line + kLineGap)};
}

void ObjectScene::placeShortcut(Node& node, ShortcutSlot slot, const clsShortcut& shortcut) {
  const bool small = isSmall(shortcut);
  node.look.points = captionPoints(settings_, shortcut);
  node.look.small = small;
  node.look.bold = shortcut.FontBold;
  node.look.fore.reset();
  if (shortcut.Color >= 0) node.look.fore = Colour{shortcut.Color & 0xFFFFFF};
  const Twips line = lineHeight(node.look.points, node.look.bold);
  node.look.line = line;
  const Size<Twips> size = small ? smallSize(shortcut, node.look.points, line)
                                 : largeSize(shortcut, node.look.points, line);
  TwipsRect rect = reachable(shortcut.parent, shortcut.position, size);
  if (small) {
    const Twips room = panelSize(shortcut.parent).width - rect.left - kPad * 0.5F;
    rect.width = std::max(std::min(rect.width, room), kReach);
  }
  if (!shortcut.parent.isMain()) rect.top -= kTitleStripHeight;
  node.rect = rect;

  Node& icon = scene_.create({ControlKind::picShortcut, slot.index}, node.id);
  icon.hitTarget = false;
  icon.image = iconOf(shortcut);
  const Twips side = small ? kSmallIcon : iconSize();
  icon.rect = {small ? Twips{75} : (rect.width - side) * 0.5F,
               small ? (rect.height - side) * 0.5F : kIconTop, side, side};
}

void ObjectScene::updateShortcut(ShortcutSlot slot) {
  const NodeId id = shortcutNode(slot);
  const clsShortcut* shortcut = workspace_.shortcuts.find(slot);
  // A shortcut whose container is missing has no panel to lie on.
  const bool placed = shortcut != nullptr && scene_.find(panelNode(shortcut->parent)) != nullptr;
  if (!placed) {
    if (Node* node = scene_.find(id)) node->visible = false;
    return;
  }
  Node& node = scene_.create(id, panelNode(shortcut->parent));
  shortcutNodes_ = std::max(shortcutNodes_, slot.index + 1);
  scene_.sink(id, liesBehind);
  node.visible = !shortcut->TagHidden;
  node.focusable = true;
  node.text = shortcut->FullCaption;
  placeShortcut(node, slot, *shortcut);
}

void ObjectScene::updatePicture(PictureSlot slot) {
  const NodeId id = pictureNode(slot);
  const clsPicture* picture = workspace_.pictures.find(slot);
  if (picture == nullptr || scene_.find(panelNode(picture->parent)) == nullptr) {
    if (Node* node = scene_.find(id)) node->visible = false;
    return;
  }
  Node& node = scene_.create(id, panelNode(picture->parent));
  pictureNodes_ = std::max(pictureNodes_, slot.index + 1);
  scene_.sink(id, liesBehind);
  node.visible = true;
  node.focusable = true;
  node.clipsChildren = true;
  const TwipsRect rect = sane(picture->rect, {{240}, {240}});
  node.rect = reachable(picture->parent, rect.topLeft(), rect.size());
  if (!picture->parent.isMain()) node.rect.top -= kTitleStripHeight;
  node.text = picture->Path.substr(picture->Path.find_last_of(L"\\/") + 1);
  Node& image = scene_.create({ControlKind::PicImage, slot.index}, id);
  image.rect = {{60}, {60}, rect.width - Twips{120}, rect.height - Twips{120}};
  image.hitTarget = false;
  image.image = {ImageRef::Source::PictureFile, picture->Path};
}

void ObjectScene::updateAll() {
  // Slots not in use are visited too, so that nodes of objects that are gone
  // are hidden.
  containerNodes_ = std::max(containerNodes_, workspace_.containers.bound());
  shortcutNodes_ = std::max(shortcutNodes_, workspace_.shortcuts.bound());
  pictureNodes_ = std::max(pictureNodes_, workspace_.pictures.bound());
  updatingAll_ = true;
  for (int i = 0; i < containerNodes_; ++i) updateContainer({i});
  updatingAll_ = false;
  for (int i = 0; i < shortcutNodes_; ++i) updateShortcut({i});
  for (int i = 0; i < pictureNodes_; ++i) updatePicture({i});
}

Panel ObjectScene::panelAt(Point<Twips> windowPoint) const {
  for (const Node* node = scene_.find(scene_.hitTest(windowPoint)); node != nullptr;
       node = scene_.find(node->parent)) {
    if (node->id.kind == ControlKind::Container) return {containerOf(node->id)};
  }
  return homePanel();
}

Point<Twips> ObjectScene::bodyPoint(ContainerSlot slot, Point<Twips> windowPoint) const {
  const NodeId tile = containerPart(ControlKind::ContainerIcon, slot);
  const bool shrunk = scene_.find(tile) != nullptr && scene_.find(tile)->visible;
  return scene_.toNode(shrunk ? tile : containerPart(ControlKind::ContainerFrame, slot),
                       windowPoint);
}

Point<Twips> ObjectScene::toPanel(Panel panel, Point<Twips> windowPoint) const {
  const NodeId id =
      panel.isMain() ? NodeId{ControlKind::picBack, 0} : containerNode(panel.container);
  const Point<Twips> local = scene_.toNode(id, windowPoint);
  const Node* node = scene_.find(id);
  return node == nullptr ? local : Point<Twips>{local.x + node->scroll.x, local.y + node->scroll.y};
}

}  // namespace varnowick
