// What clicks, the resting mouse, drags and timers do to containers: folding,
// shrinking, expanding by themselves and shrinking back. Each call takes what the
// window has gathered and returns what it shall do; there is no window, timer,
// clock or sound in here.
#pragma once

#include <functional>
#include <vector>

#include "containers/layout.h"
#include "core/settings.h"
#include "core/workspace.h"
#include "platform/timers.h"

namespace varnowick {

// A mouse that stays within this of where the wait began rests.
inline constexpr Pixels kContainerRestTolerance{10};
inline constexpr int kLongExpandDelay = 400;  // ms, [AutoExpandDelay] 2

struct ContainerInputs {
  Point<Pixels> cursor;       // on the screen
  ContainerSlot underCursor;  // the container over which the cursor lies now
  // The room that the container has on the workspace; see layout.h. May be empty.
  std::function<Size<Twips>(ContainerSlot)> surface = {};
  // A press has begun, of which a click or a drag will come: nothing expands by
  // itself from under it.
  bool buttonDown = false;
  Twips firstInSight = {};  // line of the workspace, as it is scrolled
};

struct ContainerEffects {
  std::vector<ContainerSlot> reshaped;  // each once: to be shown and filled anew
  std::vector<const wchar_t*> sounds;   // bare file names, each once
  std::vector<TimerAction> timers;      // to be applied in their order
  bool changed = false;                 // the workspace is to be written
  bool save = false;                    // at once
  ContainerSlot opened;                 // by a drag that rests on it: the drop target
};

class ContainerRules {
 public:
  // Both are borrowed and must outlive the rules.
  ContainerRules(Workspace& workspace, const Settings& settings)
      : workspace_(workspace), settings_(settings) {}

  // Containers that are gone, hidden or detached are left alone by all of these.
  ContainerEffects lblFoldUnfold_Click(const ContainerInputs& in, ContainerSlot slot);
  // Pressed and released on the same title, without a move.
  ContainerEffects titleClicked(const ContainerInputs& in, ContainerSlot slot);
  // x and y are relative to the body, kSyntheticClick when there was no click.
  ContainerEffects ShrinkExpand(const ContainerInputs& in, ContainerSlot slot, Twips x, Twips y);
  ContainerEffects ShrinkBackContainer(const ContainerInputs& in);
  ContainerEffects ExpandAutomatically(const ContainerInputs& in, ContainerSlot slot);
  ContainerEffects mnuFoldAll(const ContainerInputs& in);
  ContainerEffects mnuShrinkAll(const ContainerInputs& in);

  // The mouse has moved over any part of the container.
  ContainerEffects mouseOverContainer(const ContainerInputs& in, ContainerSlot slot);
  // The mouse has moved over its hot spot, or its tile.
  ContainerEffects mouseOverHotSpot(const ContainerInputs& in, ContainerSlot slot);
  // The second click of a double click on a title or body.
  ContainerEffects doubleClicked(const ContainerInputs& in, ContainerSlot slot);
  // A press on the container or on anything in it. True when it was meant for the
  // tile that has just opened under the mouse: it is to do nothing more.
  bool pressMeantTile(ContainerSlot slot);
  ContainerEffects bodyClicked(const ContainerInputs& in, ContainerSlot slot,
                               Point<Twips> bodyPoint);
  ContainerEffects tileClicked(const ContainerInputs& in, ContainerSlot slot);
  ContainerEffects titlePressed(bool rightButton);
  ContainerEffects titleReleased() const;  // the left button
  // The user does something that the container must stay open for.
  ContainerEffects keepOpen();

  // Something is being dragged over the container (none: over no container).
  ContainerEffects draggedOver(const ContainerInputs& in, ContainerSlot slot);
  ContainerEffects dragLeft();

  ContainerEffects TimerExpandContainerTick(const ContainerInputs& in);
  ContainerEffects TimerExpandUnfoldOnDragTick(const ContainerInputs& in);
  void TimerDontShrinkTick() { justExpanded_ = false; }
  void TimerSuspendShrinkTick() { shrinkBackSuspended_ = false; }
  void TimerSuspendAutoExpandTick() { autoExpandSuspended_ = false; }
  // True for the timers above, whose ticks all come through tick().
  static bool ownsTimer(TimerId id);
  ContainerEffects tick(TimerId id, const ContainerInputs& in);

  // From the start of loading until loadingEnded(). Slots mean other containers
  // from now on.
  void loadingStarted();
  void loadingEnded() { workspaceLoading_ = false; }
  // The slot has been freed: another container may get it.
  void removed(ContainerSlot slot);

  // The container that shrinks back when the mouse comes over another one.
  ContainerSlot autoExpandedContainer() const { return autoExpandedContainer_; }

 private:
  // Null unless the container lies on the workspace.
  clsContainer* find(ContainerSlot slot);
  void toggleFold(const ContainerInputs& in, ContainerSlot slot, ContainerEffects& effects);
  void toggleShrink(const ContainerInputs& in, ContainerSlot slot, Point<Twips> at,
                    ContainerEffects& effects);
  void shrinkBack(const ContainerInputs& in, ContainerEffects& effects);
  void expandByItself(const ContainerInputs& in, ContainerSlot slot, ContainerEffects& effects);

  Workspace& workspace_;
  const Settings& settings_;
  ContainerSlot autoExpandedContainer_;
  bool justExpanded_ = false;
  bool shrinkBackSuspended_ = false;
  bool autoExpandSuspended_ = false;
  bool workspaceLoading_ = false;
  bool pressMeantTile_ = false;  // for a moment after a tile has opened by itself
  // Where the wait began, and for which container; none while nothing waits.
  struct Rest {
    ContainerSlot slot;
    Point<Pixels> cursor;
  };
  Rest hover_;
  Rest drag_;
};

}  // namespace varnowick
