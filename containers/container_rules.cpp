#include "containers/container_rules.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace varnowick {
namespace {

constexpr const wchar_t* kFoldSound = L"fold.wav";
constexpr const wchar_t* kShrinkSound = L"shrink.wav";
constexpr const wchar_t* kExpandSound = L"expand.wav";
constexpr const wchar_t* kPressSound = L"container_mousedown.wav";
constexpr const wchar_t* kReleaseSound = L"container_mouseup.wav";

void play(ContainerEffects& effects, const wchar_t* sound) {
  const auto same = [&](const wchar_t* s) { return std::wstring_view(s) == sound; };
  if (std::none_of(effects.sounds.begin(), effects.sounds.end(), same))
    effects.sounds.push_back(sound);
}

void reshaped(ContainerEffects& effects, ContainerSlot slot) {
  if (std::find(effects.reshaped.begin(), effects.reshaped.end(), slot) == effects.reshaped.end())
    effects.reshaped.push_back(slot);
  effects.changed = true;
}

void startTimer(ContainerEffects& effects, TimerId id, int interval = 0) {
  effects.timers.push_back({id, true, interval});
}
void stopTimer(ContainerEffects& effects, TimerId id) { effects.timers.push_back({id, false}); }

Size<Twips> surfaceOf(const ContainerInputs& in, ContainerSlot slot) {
  return in.surface ? in.surface(slot) : Size<Twips>{};
}

bool near(Pixels a, Pixels b) {
  return std::abs(static_cast<long long>(a.value) - b.value) <= kContainerRestTolerance.value;
}
bool near(Point<Pixels> a, Point<Pixels> b) { return near(a.x, b.x) && near(a.y, b.y); }

// As exact sizes: a container that is as wide as a tile is deliberately never
// taken for an open one.
bool countsAsShrunk(const clsContainer& c) {
  return c.rect.width == kShrunkSize.width || c.rect.height == kShrunkSize.height;
}

}  // namespace

clsContainer* ContainerRules::find(ContainerSlot slot) {
  clsContainer* c = workspace_.containers.find(slot);
  return c != nullptr && onWorkspace(*c) ? c : nullptr;
}

void ContainerRules::toggleFold(const ContainerInputs& in, ContainerSlot slot,
                                ContainerEffects& effects) {
  clsContainer* c = find(slot);
  if (c == nullptr || c->shrunk) return;
  const Size<Twips> surface = surfaceOf(in, slot);
  if (isFolded(*c)) {
    unfold(*c, surface, in.firstInSight);
  } else {
    fold(*c, surface);
    if (slot == autoExpandedContainer_) autoExpandedContainer_ = {};
  }
  play(effects, kFoldSound);
  reshaped(effects, slot);
}

void ContainerRules::toggleShrink(const ContainerInputs& in, ContainerSlot slot, Point<Twips> at,
                                  ContainerEffects& effects) {
  clsContainer* c = find(slot);
  if (c == nullptr || !IsOnShrinkHotSpot(*c, at)) return;
  if (isOpen(*c)) {
    if (!workspaceLoading_) play(effects, kShrinkSound);
    shrink(*c);
    // A tile that still counted as expanded would not open for a resting mouse.
    if (slot == autoExpandedContainer_) autoExpandedContainer_ = {};
    reshaped(effects, slot);
  } else if (c->shrunk && !autoExpandSuspended_) {
    play(effects, kExpandSound);
    expand(*c, surfaceOf(in, slot), in.firstInSight);
    reshaped(effects, slot);
    if (shrinkBackSuspended_) {
      shrinkBackSuspended_ = false;
      if (autoExpandedContainer_ != slot) shrinkBack(in, effects);
    }
    const bool byItself = settings_.autoShrink || settings_.autoExpand;
    autoExpandedContainer_ = byItself ? slot : ContainerSlot{};
  }
}

void ContainerRules::shrinkBack(const ContainerInputs& in, ContainerEffects& effects) {
  if (shrinkBackSuspended_ || autoExpandedContainer_.none()) return;
  const clsContainer* c = find(autoExpandedContainer_);
  if (c != nullptr && countsAsShrunk(*c)) return;
  const ContainerSlot slot = std::exchange(autoExpandedContainer_, {});
  toggleShrink(in, slot, kSyntheticClick, effects);
}

void ContainerRules::expandByItself(const ContainerInputs& in, ContainerSlot slot,
                                    ContainerEffects& effects) {
  const clsContainer* c = find(slot);
  if (!settings_.autoExpand || slot == autoExpandedContainer_ || in.underCursor != slot) return;
  if (in.buttonDown) return;
  if (c == nullptr || !c->shrunk || autoExpandSuspended_) return;
  shrinkBack(in, effects);
  autoExpandedContainer_ = slot;
  justExpanded_ = true;
  toggleShrink(in, slot, kSyntheticClick, effects);
  startTimer(effects, TimerId::TimerDontShrink);
  pressMeantTile_ = true;
  startTimer(effects, TimerId::TimerTileClick);
}

ContainerEffects ContainerRules::lblFoldUnfold_Click(const ContainerInputs& in,
                                                     ContainerSlot slot) {
  ContainerEffects effects;
  toggleFold(in, slot, effects);
  return effects;
}

ContainerEffects ContainerRules::titleClicked(const ContainerInputs& in, ContainerSlot slot) {
  return settings_.foldOnClick ? lblFoldUnfold_Click(in, slot) : ContainerEffects{};
}

// Where a single click folds, the first one has done it.
ContainerEffects ContainerRules::doubleClicked(const ContainerInputs& in, ContainerSlot slot) {
  return settings_.foldOnClick ? ContainerEffects{} : lblFoldUnfold_Click(in, slot);
}

bool ContainerRules::pressMeantTile(ContainerSlot slot) {
  return std::exchange(pressMeantTile_, false) && slot == autoExpandedContainer_;
}

ContainerEffects ContainerRules::ShrinkExpand(const ContainerInputs& in, ContainerSlot slot,
                                              Twips x, Twips y) {
  ContainerEffects effects;
  toggleShrink(in, slot, {x, y}, effects);
  return effects;
}

ContainerEffects ContainerRules::ShrinkBackContainer(const ContainerInputs& in) {
  ContainerEffects effects;
  shrinkBack(in, effects);
  return effects;
}

ContainerEffects ContainerRules::ExpandAutomatically(const ContainerInputs& in,
                                                     ContainerSlot slot) {
  ContainerEffects effects;
  expandByItself(in, slot, effects);
  return effects;
}

ContainerEffects ContainerRules::mnuFoldAll(const ContainerInputs& in) {
  ContainerEffects effects;
  workspace_.containers.forEach(
      [&](ContainerSlot slot, const clsContainer&) { toggleFold(in, slot, effects); });
  effects.save = true;
  return effects;
}

ContainerEffects ContainerRules::mnuShrinkAll(const ContainerInputs& in) {
  ContainerEffects effects;
  // Expanding one may shrink another back, which must not be toggled once more.
  std::vector<std::pair<ContainerSlot, bool>> before;
  workspace_.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
    if (!isFolded(c)) before.emplace_back(slot, c.shrunk);
  });
  for (const auto& [slot, shrunk] : before)
    if (workspace_.containers[slot].shrunk == shrunk)
      toggleShrink(in, slot, kSyntheticClick, effects);
  effects.save = true;
  return effects;
}

ContainerEffects ContainerRules::mouseOverContainer(const ContainerInputs& in, ContainerSlot slot) {
  ContainerEffects effects;
  // An expansion may have moved the container from under the mouse, which is over
  // another one now without having been moved there.
  if (!slot.none() && slot != autoExpandedContainer_ && !justExpanded_) shrinkBack(in, effects);
  return effects;
}

ContainerEffects ContainerRules::mouseOverHotSpot(const ContainerInputs& in, ContainerSlot slot) {
  ContainerEffects effects;
  const clsContainer* c = find(slot);
  if (c == nullptr || !c->shrunk || !settings_.autoExpand || hover_.slot == slot) return effects;
  if (settings_.autoExpandDelay == 0) {
    if (!hover_.slot.none()) stopTimer(effects, TimerId::TimerExpandContainer);
    hover_ = {};
    expandByItself(in, slot, effects);
    return effects;
  }
  hover_ = {slot, in.cursor};
  startTimer(effects, TimerId::TimerExpandContainer,
             settings_.autoExpandDelay == 2 ? kLongExpandDelay : 0);
  return effects;
}

ContainerEffects ContainerRules::bodyClicked(const ContainerInputs& in, ContainerSlot slot,
                                             Point<Twips> bodyPoint) {
  ContainerEffects effects;
  if (find(slot) == nullptr) return effects;
  shrinkBack(in, effects);
  if (std::find(effects.reshaped.begin(), effects.reshaped.end(), slot) == effects.reshaped.end())
    toggleShrink(in, slot, bodyPoint, effects);
  autoExpandSuspended_ = true;
  startTimer(effects, TimerId::TimerSuspendAutoExpand);
  return effects;
}

ContainerEffects ContainerRules::tileClicked(const ContainerInputs& in, ContainerSlot slot) {
  return ShrinkExpand(in, slot, kSyntheticClick.x, kSyntheticClick.y);
}

ContainerEffects ContainerRules::titlePressed(bool rightButton) {
  ContainerEffects effects = keepOpen();
  if (!rightButton) play(effects, kPressSound);
  return effects;
}

ContainerEffects ContainerRules::titleReleased() const {
  ContainerEffects effects;
  play(effects, kReleaseSound);
  return effects;
}

ContainerEffects ContainerRules::keepOpen() {
  ContainerEffects effects;
  shrinkBackSuspended_ = true;
  startTimer(effects, TimerId::TimerSuspendShrink);
  return effects;
}

ContainerEffects ContainerRules::draggedOver(const ContainerInputs& in, ContainerSlot slot) {
  const clsContainer* c = find(slot);
  if (c == nullptr || isOpen(*c)) return dragLeft();
  ContainerEffects effects;
  // A drag that comes to rest elsewhere on the container sends no more moves, so
  // that each one that leaves the place begins the wait anew.
  if (drag_.slot == slot && near(in.cursor, drag_.cursor)) return effects;
  drag_ = {slot, in.cursor};
  startTimer(effects, TimerId::TimerExpandUnfoldOnDrag);
  return effects;
}

ContainerEffects ContainerRules::dragLeft() {
  ContainerEffects effects;
  if (!drag_.slot.none()) stopTimer(effects, TimerId::TimerExpandUnfoldOnDrag);
  drag_ = {};
  return effects;
}

ContainerEffects ContainerRules::TimerExpandContainerTick(const ContainerInputs& in) {
  ContainerEffects effects;
  const Rest rest = std::exchange(hover_, {});
  if (!rest.slot.none() && near(in.cursor, rest.cursor)) expandByItself(in, rest.slot, effects);
  return effects;
}

ContainerEffects ContainerRules::TimerExpandUnfoldOnDragTick(const ContainerInputs& in) {
  ContainerEffects effects;
  const Rest rest = std::exchange(drag_, {});
  const clsContainer* c = find(rest.slot);
  if (c == nullptr || in.underCursor != rest.slot || !near(in.cursor, rest.cursor)) return effects;
  if (c->shrunk)
    toggleShrink(in, rest.slot, kSyntheticClick, effects);
  else if (isFolded(*c))
    toggleFold(in, rest.slot, effects);
  if (isOpen(*c)) effects.opened = rest.slot;
  return effects;
}

bool ContainerRules::ownsTimer(TimerId id) {
  switch (id) {
    case TimerId::TimerExpandContainer:
    case TimerId::TimerExpandUnfoldOnDrag:
    case TimerId::TimerDontShrink:
    case TimerId::TimerSuspendShrink:
    case TimerId::TimerSuspendAutoExpand:
    case TimerId::TimerTileClick:
      return true;
    default:
      return false;
  }
}

ContainerEffects ContainerRules::tick(TimerId id, const ContainerInputs& in) {
  if (id == TimerId::TimerExpandContainer) return TimerExpandContainerTick(in);
  if (id == TimerId::TimerExpandUnfoldOnDrag) return TimerExpandUnfoldOnDragTick(in);
  if (id == TimerId::TimerDontShrink) TimerDontShrinkTick();
  if (id == TimerId::TimerSuspendShrink) TimerSuspendShrinkTick();
  if (id == TimerId::TimerSuspendAutoExpand) TimerSuspendAutoExpandTick();
  if (id == TimerId::TimerTileClick) pressMeantTile_ = false;
  return {};
}

void ContainerRules::loadingStarted() {
  workspaceLoading_ = true;
  autoExpandedContainer_ = {};
  hover_ = drag_ = {};
}

void ContainerRules::removed(ContainerSlot slot) {
  if (slot.none()) return;
  if (autoExpandedContainer_ == slot) autoExpandedContainer_ = {};
  if (hover_.slot == slot) hover_ = {};
  if (drag_.slot == slot) drag_ = {};
}

}  // namespace varnowick
