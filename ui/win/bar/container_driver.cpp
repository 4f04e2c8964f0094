#include "ui/win/bar/container_driver.h"

#include "platform/screen.h"
#include "platform/sound.h"

namespace varnowick {

ContainerSlot ContainerDriver::containerAt(POINT client) const {
  return pane_.editor().dropPanel(pane_.view().toScene(client)).container;
}

ContainerInputs ContainerDriver::inputs() const {
  ContainerInputs in;
  in.cursor = desk_.platform.cursor.position();
  in.buttonDown = desk_.platform.cursor.leftButtonDown();
  POINT at{in.cursor.x.value, in.cursor.y.value};
  if (WindowFromPoint(at) == window_) {
    ScreenToClient(window_, &at);
    in.underCursor = containerAt(at);
  }
  in.firstInSight = scene_.scroll();
  in.surface = [this](ContainerSlot slot) {
    const clsContainer* container = desk_.document.workspace.containers.find(slot);
    return container == nullptr ? Size<Twips>{} : scene_.surfaceFor(*container);
  };
  return in;
}

void ContainerDriver::apply(const ContainerEffects& effects) {
  timers_.apply(effects.timers);
  if (!effects.reshaped.empty()) {
    pane_.containersChanged(effects.reshaped);
    hooks_.reshaped();
    // What has opened may cover its neighbours, and not the other way round.
    std::vector<ContainerSlot> opened;
    for (const ContainerSlot slot : effects.reshaped) {
      const clsContainer* container = desk_.document.workspace.containers.find(slot);
      if (container == nullptr || !isOpen(*container)) continue;
      scene_.scene().raise(containerNode(slot));
      opened.push_back(slot);
    }
    if (opened.size() == 1 && scene_.scrollToShow(containerNode(opened.front())))
      pane_.sceneChanged();
    // Saving takes longer than painting, and nobody waits for it.
    UpdateWindow(window_);
  }
  for (const wchar_t* sound : effects.sounds) desk_.platform.sound.play(sound);
  if (effects.changed || effects.save) hooks_.changed();
}

bool ContainerDriver::tick(TimerId id) {
  if (!ContainerRules::ownsTimer(id)) return false;
  apply(rules_.tick(id, inputs()));
  return true;
}

bool ContainerDriver::onHotSpot(NodeId node, POINT client) const {
  if (node.kind == ControlKind::ContainerIcon) return true;
  const clsContainer* container = desk_.document.workspace.containers.find(containerOf(node));
  return node.kind == ControlKind::ContainerFrame && container != nullptr &&
         IsOnShrinkHotSpot(*container,
                           scene_.bodyPoint(containerOf(node), pane_.view().toScene(client)));
}

void ContainerDriver::pressed(NodeId node) {
  if (node.kind == ControlKind::ContainerLabel) apply(rules_.titlePressed(false));
}

void ContainerDriver::released(NodeId node, bool) {
  if (node.kind == ControlKind::ContainerLabel) apply(rules_.titleReleased());
}

bool ContainerDriver::clicked(NodeId node, POINT client) {
  const ContainerSlot slot = containerOf(node);
  switch (node.kind) {
    case ControlKind::lblFoldUnfold:
      apply(rules_.lblFoldUnfold_Click(inputs(), slot));
      return true;
    case ControlKind::Container: {
      // The default action of the whole, for screen readers.
      const clsContainer* container = desk_.document.workspace.containers.find(slot);
      const bool tile = container != nullptr && container->shrunk;
      apply(tile ? rules_.tileClicked(inputs(), slot) : rules_.lblFoldUnfold_Click(inputs(), slot));
      return true;
    }
    case ControlKind::ContainerLabel:
      apply(rules_.titleClicked(inputs(), slot));
      return true;
    case ControlKind::ContainerIcon:
      apply(rules_.tileClicked(inputs(), slot));
      return true;
    case ControlKind::cmdConShrink:
      apply(rules_.ShrinkExpand(inputs(), slot, kSyntheticClick.x, kSyntheticClick.y));
      return true;
    case ControlKind::ContainerFrame:
      apply(
          rules_.bodyClicked(inputs(), slot, scene_.bodyPoint(slot, pane_.view().toScene(client))));
      return true;
    default:
      return false;
  }
}

bool ContainerDriver::doubleClicked(NodeId node) {
  if (node.kind != ControlKind::ContainerLabel && node.kind != ControlKind::ContainerFrame)
    return false;
  apply(rules_.doubleClicked(inputs(), containerOf(node)));
  return true;
}

void ContainerDriver::hovered(NodeId node, POINT client) {
  if (node.none()) return;
  const ContainerSlot slot = containerAt(client);
  if (slot.none()) return;
  apply(rules_.mouseOverContainer(inputs(), slot));
  if (onHotSpot(node, client)) apply(rules_.mouseOverHotSpot(inputs(), slot));
}

void ContainerDriver::draggedOver(POINT screen) {
  ScreenToClient(window_, &screen);
  apply(rules_.draggedOver(inputs(), containerAt(screen)));
}

}  // namespace varnowick
