// Ties the rules of folding, shrinking and expanding to the bar: gathers their
// inputs, shows, sounds and times what they ask for. Decides nothing itself.
#pragma once

#include <windows.h>

#include <functional>

#include "containers/container_rules.h"
#include "ui/scene/workspace_scene.h"
#include "ui/win/pane/desk.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/window_timers.h"

namespace varnowick {

class ContainerDriver {
 public:
  struct Hooks {
    // Another thing lies under the mouse than before.
    std::function<void()> reshaped;
    // The workspace is to be written, though not before what the user waits for has
    // been painted.
    std::function<void()> changed;
  };
  // All are borrowed and must outlive the driver.
  ContainerDriver(const Desk& desk, WorkspaceScene& scene, WorkspacePane& pane,
                  WindowTimers& timers, Hooks hooks)
      : desk_(desk),
        scene_(scene),
        pane_(pane),
        timers_(timers),
        hooks_(std::move(hooks)),
        rules_(desk.document.workspace, desk.document.settings) {}

  void attach(HWND window) { window_ = window; }
  ContainerRules& rules() { return rules_; }
  ContainerInputs inputs() const;
  void apply(const ContainerEffects& effects);
  // The same for what returns nothing to be done at once.
  bool tick(TimerId id);

  void pressed(NodeId node);
  void released(NodeId node, bool click);
  // True when the click was about a container.
  bool clicked(NodeId node, POINT client);
  bool doubleClicked(NodeId node);
  bool pressMeantTile(POINT client) { return rules_.pressMeantTile(containerAt(client)); }
  void hovered(NodeId node, POINT client);
  void draggedOver(POINT screen);
  void dragLeft() { apply(rules_.dragLeft()); }
  // The part of an open container's body, or of its tile, that shrinks and expands.
  bool onHotSpot(NodeId node, POINT client) const;

 private:
  ContainerSlot containerAt(POINT client) const;

  Desk desk_;
  WorkspaceScene& scene_;
  WorkspacePane& pane_;
  WindowTimers& timers_;
  Hooks hooks_;
  ContainerRules rules_;
  HWND window_ = nullptr;
};

}  // namespace varnowick
