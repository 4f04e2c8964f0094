// The part of WorkspaceScene that places shortcuts, pictures and containers.
#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "ui/scene/metrics.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {

namespace {

constexpr const wchar_t* kFeedPrompt = L"Click to download headlines [F5]";
constexpr Twips kLineHeightPerPoint{25};  // one line of text, with its leading
constexpr Twips kIconTop{60};
constexpr Twips kStatusHeight{300};

// What lies on a panel, from the back to the front.
int layerOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::ContainerNote:
    case ControlKind::LstRSS:
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
// Containers keep the order in which they were raised among themselves.
bool liesBehind(NodeId a, NodeId b) {
  const int layerA = layerOf(a.kind);
  const int layerB = layerOf(b.kind);
  return std::tie(layerA, a.slot) < std::tie(layerB, b.slot);
}

float number(float value, float least, float most) {
  return std::isnan(value) ? least : std::clamp(value, least, most);
}

const wchar_t* tileAsset(const clsContainer& container) {
  switch (containerType(container)) {
    case ContainerType::Feed:
      return L"feed";
    case ContainerType::Folder:
      return L"folder";
    case ContainerType::Note:
      return L"note";
    case ContainerType::Reminder:
      return L"reminder";
    case ContainerType::Shortcuts:
      break;
  }
  return L"container";
}

}  // namespace

TwipsRect sane(TwipsRect rect, Size<Twips> least) {
  const float far = kFarthest.value;
  return {{number(std::isnan(rect.left.value) ? 0 : rect.left.value, -far, far)},
          {number(std::isnan(rect.top.value) ? 0 : rect.top.value, -far, far)},
          {number(rect.width.value, least.width.value, far)},
          {number(rect.height.value, least.height.value, far)}};
}

ImageRef WorkspaceScene::iconOf(const clsShortcut& shortcut) const {
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
      return {id.slot};
    default:
      return {};
  }
}

NodeId WorkspaceScene::panelNode(Panel panel) const {
  if (panel.isMain()) return {ControlKind::picBack, 0};
  return containerPart(ControlKind::ContainerFrame, panel.container);
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

Size<Twips> WorkspaceScene::panelSize(Panel panel) const {
  const clsContainer* container = workspace_.containers.find(panel.container);
  return container == nullptr ? panelSize_ : openSize(*container);
}

TwipsRect WorkspaceScene::reachable(Panel panel, Point<Twips> at, Size<Twips> size) const {
  TwipsRect rect = sane({at.x, at.y, size.width, size.height}, size);
  const Size<Twips> room = panelSize(panel);
  const Twips leftMost = std::min(Twips{}, kReach - rect.width);
  rect.left = std::clamp(rect.left, leftMost, std::max(leftMost, room.width - kReach));
  // The main panel scrolls down to whatever lies below; a container does not,
  // and its title covers the top.
  const Twips top = panel.isMain() ? Twips{} : kTitleStripHeight;
  const Twips lowest = panel.isMain() ? kFarthest : std::max(top, room.height - kReach * 0.5F);
  rect.top = std::clamp(rect.top, top, lowest);
  return rect;
}

Twips WorkspaceScene::iconSize() const {
  return Twips{15} * static_cast<float>(std::clamp(settings_.largeIconSize, 16, 128));
}

Size<Twips> WorkspaceScene::shortcutCell(bool small) const {
  if (small) return kSmallShortcutCell;
  const Twips more = iconSize() - Twips{480};
  return {std::max(kShortcutCell.width, kShortcutCell.width + more), kShortcutCell.height + more};
}

Twips WorkspaceScene::textWidth(const std::wstring& text, float points, bool bold) {
  // What is surely short or surely long is not worth measuring: thousands of
  // captions are laid out at once.
  const float length = static_cast<float>(std::min<std::size_t>(text.size(), 400));
  const Twips guess{length * points * 11.0F};
  if (measure_ == nullptr || text.size() > 60) return guess;
  TextStyle style;
  style.face = settings_.fontName;
  style.points = points;
  style.bold = bold;
  return layout_.density.toTwips(measure_->measure(text, style, Pixels{10000}).width);
}

Size<Twips> WorkspaceScene::largeSize(const clsShortcut& shortcut, float points) {
  Size<Twips> size = shortcutCell(false);
  const Twips line = kLineHeightPerPoint * points;
  const bool twoLines =
      shortcut.FullCaption.size() > 5 &&
      textWidth(shortcut.FullCaption, points, shortcut.FontBold) > size.width - Twips{90};
  size.height = kIconTop + iconSize() + Twips{60} + line * (twoLines ? 2.0F : 1.0F) + Twips{50};
  return size;
}

Size<Twips> WorkspaceScene::smallSize(const clsShortcut& shortcut, float points) {
  const Twips text = textWidth(shortcut.FullCaption, points, shortcut.FontBold);
  const Twips line = kLineHeightPerPoint * points;
  return {std::clamp(text + kSmallIcon + Twips{285}, Twips{900}, Twips{4500}),
          std::max(kSmallShortcutCell.height, line + Twips{90})};
}

void WorkspaceScene::placeShortcut(Node& node, ShortcutSlot slot, const clsShortcut& shortcut) {
  const bool small = isSmall(shortcut);
  node.look.points = captionPoints(settings_, shortcut);
  node.look.small = small;
  node.look.bold = shortcut.FontBold;
  node.look.fore.reset();
  if (shortcut.Color >= 0) node.look.fore = Colour{shortcut.Color & 0xFFFFFF};
  Size<Twips> size =
      small ? smallSize(shortcut, node.look.points) : largeSize(shortcut, node.look.points);
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

void WorkspaceScene::updateShortcut(ShortcutSlot slot) {
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

void WorkspaceScene::updatePicture(PictureSlot slot) {
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

void WorkspaceScene::moveContainer(ContainerSlot slot) {
  const clsContainer* container = workspace_.containers.find(slot);
  Node* node = scene_.find(containerNode(slot));
  if (container == nullptr || node == nullptr) return;
  node->rect = reachable(picBack, container->rect.topLeft(), node->rect.size());
}

void WorkspaceScene::updateContainer(ContainerSlot slot) {
  const NodeId id = containerNode(slot);
  const clsContainer* container = workspace_.containers.find(slot);
  if (container == nullptr) {
    if (Node* node = scene_.find(id)) node->visible = false;
    return;
  }
  const bool isNew = scene_.find(id) == nullptr;
  Node& node = scene_.create(id, {ControlKind::picBack, 0});
  containerNodes_ = std::max(containerNodes_, slot.index + 1);
  if (isNew) scene_.sink(id, liesBehind);
  node.visible = container->visible && !container->Detached;
  node.clipsChildren = true;
  node.text = container->name;
  node.look.back.reset();
  node.look.fore.reset();
  // A record with one colour for both has none of its own: it could not be read.
  if (container->backColor != container->foreColor) {
    node.look.back = Colour{container->backColor.bgr & 0xFFFFFF};
    node.look.fore = Colour{container->foreColor.bgr & 0xFFFFFF};
  }
  Size<Twips> box = openSize(*container);
  if (container->folded) box.height = kTitleStripHeight;
  if (container->shrunk) box = kShrunkSize;
  node.rect = reachable(picBack, container->rect.topLeft(), box);
  layoutParts(slot, *container, box);
}

void WorkspaceScene::layoutParts(ContainerSlot slot, const clsContainer& container,
                                 Size<Twips> box) {
  const NodeId id = containerNode(slot);
  const auto part = [&](ControlKind kind, NodeId parent, TwipsRect rect, bool visible) -> Node& {
    Node& node = scene_.create(containerPart(kind, slot), parent);
    node.rect = rect;
    node.visible = visible;
    return node;
  };
  // The body keeps its open size while folded, so that nothing in it moves.
  const Size<Twips> open = openSize(container);
  const TwipsRect body{{}, kTitleStripHeight, open.width, open.height - kTitleStripHeight};
  const NodeId frame = containerPart(ControlKind::ContainerFrame, slot);
  const bool resized = scene_.find(frame) == nullptr || scene_.find(frame)->rect != body;
  part(ControlKind::ContainerFrame, id, body, !container.folded && !container.shrunk)
      .clipsChildren = true;

  Node& label = part(ControlKind::ContainerLabel, id, {{}, {}, box.width, kTitleStripHeight},
                     !container.shrunk);
  label.text = container.name;
  label.focusable = true;
  Node& fold =
      part(ControlKind::lblFoldUnfold, id,
           {box.width - kFoldBoxWidth, {}, kFoldBoxWidth, kTitleStripHeight}, !container.shrunk);
  fold.text = container.folded ? L"+" : L"-";
  Node& tile =
      part(ControlKind::ContainerIcon, id, {{}, {}, box.width, box.height}, container.shrunk);
  tile.text = container.name;
  tile.focusable = true;
  tile.image = {ImageRef::Source::Asset, tileAsset(container)};
  if (!container.ShrinkPath.empty()) tile.image = {ImageRef::Source::IconOf, container.ShrinkPath};

  Node& note =
      part(ControlKind::ContainerNote, frame,
           {kNoteMargin, kNoteMargin, body.width - kNoteMargin * 2, body.height - kNoteMargin * 2},
           container.noteVisible);
  note.text = container.note;
  note.focusable = true;
  const bool isNewList = scene_.find(containerPart(ControlKind::LstRSS, slot)) == nullptr;
  Node& list = part(ControlKind::LstRSS, frame, {{}, {}, body.width, body.height - kStatusHeight},
                    container.RSS);
  if (isNewList) list.text = kFeedPrompt;
  list.focusable = true;
  list.clipsChildren = true;
  Node& status = part(ControlKind::lblRSSLastUpdate, frame,
                      {kPad, body.height - kStatusHeight, body.width - kPad * 2, kStatusHeight},
                      container.RSS);
  status.visible = container.RSS && !status.text.empty();
  if (resized) relayPanel({slot});
}

void WorkspaceScene::relayPanel(Panel panel) {
  // The list is copied: updating may reorder the children.
  const Node* frame = scene_.find(panelNode(panel));
  const std::vector<NodeId> children = frame->children;
  for (const NodeId child : children) {
    if (!shortcutOf(child).none()) updateShortcut(shortcutOf(child));
    if (!pictureOf(child).none()) updatePicture(pictureOf(child));
  }
}

void WorkspaceScene::setFeedPrompt(ContainerSlot slot, std::wstring text) {
  if (Node* node = scene_.find(containerPart(ControlKind::LstRSS, slot)))
    node->text = std::move(text);
}

void WorkspaceScene::setFeedStatus(ContainerSlot slot, std::wstring text) {
  const clsContainer* container = workspace_.containers.find(slot);
  Node* node = scene_.find(containerPart(ControlKind::lblRSSLastUpdate, slot));
  if (node == nullptr || container == nullptr) return;
  node->text = std::move(text);
  node->visible = container->RSS && !node->text.empty();
}

}  // namespace varnowick
