// The part of ObjectScene that lays out containers and what belongs to them.
#include <algorithm>
#include <utility>

#include "containers/colours.h"
#include "ui/scene/metrics.h"
#include "ui/scene/object_scene.h"

namespace varnowick {
namespace {

constexpr const wchar_t* kFeedPrompt = L"Click to download headlines [F5]";
constexpr Twips kStatusHeight{300};

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

ImageRef tileImage(const clsContainer& container) {
  if (!container.ShrinkPath.empty()) return {ImageRef::Source::IconOf, container.ShrinkPath};
  return {ImageRef::Source::Asset, tileAsset(container)};
}

void ObjectScene::moveContainer(ContainerSlot slot) {
  const clsContainer* container = workspace_.containers.find(slot);
  Node* node = scene_.find(containerNode(slot));
  if (container == nullptr || node == nullptr) return;
  node->rect = boxRect(*container, node->rect.size());
}

void ObjectScene::updateContainer(ContainerSlot slot) {
  const NodeId id = containerNode(slot);
  const clsContainer* container = workspace_.containers.find(slot);
  const ContainerShape shape = container == nullptr ? ContainerShape{} : shapeOf(slot, *container);
  const bool isNew = scene_.find(id) == nullptr;
  if (container == nullptr || (isNew && !shape.visible)) {
    if (!isNew) scene_.find(id)->visible = false;
    if (contentLayout_) contentLayout_(slot);
    return;
  }
  Node& node = scene_.create(id, containerParent());
  containerNodes_ = std::max(containerNodes_, slot.index + 1);
  if (isNew) scene_.sink(id, liesBehind);
  node.visible = shape.visible;
  node.clipsChildren = true;
  node.text = container->name;
  node.look.back.reset();
  node.look.fore.reset();
  if (const auto own = ownColours(*container)) {
    node.look.back = own->back;
    node.look.fore = own->fore;
  }
  Size<Twips> box = openSize(*container);
  if (shape.folded) box.height = kTitleStripHeight;
  if (shape.shrunk) box = kShrunkSize;
  node.rect = boxRect(*container, box);
  layoutParts(slot, *container, shape, box);
  if (isNew && !updatingAll_) updateContents({slot});
}

// What lay here while the container was shown elsewhere.
void ObjectScene::updateContents(Panel panel) {
  workspace_.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& shortcut) {
    if (shortcut.parent == panel) updateShortcut(slot);
  });
  workspace_.pictures.forEach([&](PictureSlot slot, const clsPicture& picture) {
    if (picture.parent == panel) updatePicture(slot);
  });
}

Node& ObjectScene::part(ControlKind kind, ContainerSlot slot, NodeId parent, TwipsRect rect,
                        bool visible) {
  Node& node = scene_.create(containerPart(kind, slot), parent);
  node.rect = rect;
  node.visible = visible;
  return node;
}

void ObjectScene::layoutParts(ContainerSlot slot, const clsContainer& container,
                              const ContainerShape& shape, Size<Twips> box) {
  const NodeId id = containerNode(slot);
  // The body keeps its open size while folded, so that nothing in it moves.
  const Size<Twips> open = openSize(container);
  const TwipsRect body{{}, kTitleStripHeight, open.width, open.height - kTitleStripHeight};
  const NodeId frame = containerPart(ControlKind::ContainerFrame, slot);
  const bool resized = scene_.find(frame) == nullptr || scene_.find(frame)->rect != body;
  part(ControlKind::ContainerFrame, slot, id, body, !shape.folded && !shape.shrunk).clipsChildren =
      true;
  layoutTitle(slot, container, shape, box);
  layoutLists(slot, container, body);
  Node& note =
      part(ControlKind::ContainerNote, slot, frame,
           {kNoteMargin, kNoteMargin, body.width - kNoteMargin * 2, body.height - kNoteMargin * 2},
           shape.noteShown);
  noteLayouts_.update(note, container.note, shape.noteShown, measure_, density_);
  note.focusable = true;
  if (resized) relayPanel({slot});
  if (contentLayout_) contentLayout_(slot);
}

void ObjectScene::layoutTitle(ContainerSlot slot, const clsContainer& container,
                              const ContainerShape& shape, Size<Twips> box) {
  const NodeId id = containerNode(slot);
  Node& label = part(ControlKind::ContainerLabel, slot, id, {{}, {}, box.width, kTitleStripHeight},
                     !shape.shrunk);
  label.text = container.name;
  label.focusable = true;
  Twips left = box.width - kFoldBoxWidth;
  Node& fold = part(ControlKind::lblFoldUnfold, slot, id,
                    {left, {}, kFoldBoxWidth, kTitleStripHeight}, !shape.shrunk);
  fold.folded = shape.folded;
  // The name keeps some room; the buttons that still fit stand before the fold box.
  for (const ControlKind kind :
       {ControlKind::cmdConMenu, ControlKind::cmdConDetach, ControlKind::cmdConShrink}) {
    left -= kTitleButtonWidth;
    const bool fits = left > kTitleButtonWidth * 3;
    part(kind, slot, id, {left, {}, kTitleButtonWidth, kTitleStripHeight},
         shape.toolbar && !shape.shrunk && fits)
        .look.edge = shape.edge;
  }
  Node& tile =
      part(ControlKind::ContainerIcon, slot, id, {{}, {}, box.width, box.height}, shape.shrunk);
  tile.text = container.name;
  tile.focusable = true;
  tile.image = tileImage(container);
}

void ObjectScene::layoutLists(ContainerSlot slot, const clsContainer& container,
                              const TwipsRect& body) {
  const NodeId frame = containerPart(ControlKind::ContainerFrame, slot);
  const bool isNewList = scene_.find(containerPart(ControlKind::LstRSS, slot)) == nullptr;
  // Beside the lists a margin of the body stays in reach for the shrink hot spot.
  Node& list = part(ControlKind::LstRSS, slot, frame,
                    {kPad, {}, body.width - kPad, body.height - kStatusHeight}, container.RSS);
  if (isNewList) list.text = kFeedPrompt;
  list.focusable = true;
  list.clipsChildren = true;
  Node& status =
      part(ControlKind::lblRSSLastUpdate, slot, frame,
           {kPad, body.height - kStatusHeight, body.width - kPad * 2, kStatusHeight}, false);
  status.visible = container.RSS && !status.text.empty();
  Node& folder = part(ControlKind::LstFolder, slot, frame,
                      {kPad, kNoteMargin, body.width - kPad, body.height - kNoteMargin * 2},
                      containerType(container) == ContainerType::Folder);
  folder.focusable = true;
  folder.clipsChildren = true;
}

void ObjectScene::relayPanel(Panel panel) {
  // The list is copied: updating may reorder the children.
  const Node* frame = scene_.find(panelNode(panel));
  const std::vector<NodeId> children = frame->children;
  for (const NodeId child : children) {
    if (!shortcutOf(child).none()) updateShortcut(shortcutOf(child));
    if (!pictureOf(child).none()) updatePicture(pictureOf(child));
  }
}

void ObjectScene::setFeedPrompt(ContainerSlot slot, std::wstring text) {
  if (Node* node = scene_.find(containerPart(ControlKind::LstRSS, slot)))
    node->text = std::move(text);
}

void ObjectScene::setFeedStatus(ContainerSlot slot, std::wstring text) {
  const clsContainer* container = workspace_.containers.find(slot);
  Node* node = scene_.find(containerPart(ControlKind::lblRSSLastUpdate, slot));
  if (node == nullptr || container == nullptr) return;
  node->text = std::move(text);
  node->visible = container->RSS && !node->text.empty();
}

}  // namespace varnowick
