// The commands of the hour, and what happens to records beside the mouse.
#include <iterator>

#include "containers/detached_menu.h"
#include "shortcuts/tags.h"
#include "tests/ui/scene/random_hour.h"

namespace varnowick {
namespace {

constexpr std::size_t kMostContainers = 14;
constexpr std::size_t kMostShortcuts = 90;

}  // namespace

ContainerSlot RandomHour::anyContainer() {
  std::vector<ContainerSlot> slots;
  document_.workspace.containers.forEach(
      [&](ContainerSlot slot, const clsContainer&) { slots.push_back(slot); });
  return slots.empty() ? ContainerSlot{} : dice_.oneOf(slots);
}

Panel RandomHour::anyPanel() {
  const clsContainer* c = nullptr;
  const ContainerSlot slot = anyContainer();
  if (dice_.chance(50)) c = document_.workspace.containers.find(slot);
  return c != nullptr && !c->Detached ? Panel{slot} : picBack;
}

void RandomHour::command() {
  using Hour = RandomHour;
  static constexpr void (*kCommands[])(Hour&) = {
      [](Hour& h) { h.apply(h.rules_.mnuFoldAll(h.inputs())); },
      [](Hour& h) { h.apply(h.rules_.mnuShrinkAll(h.inputs())); },
      [](Hour& h) { h.undo(h.dice_.chance(30)); },
      [](Hour& h) { h.undo(h.dice_.chance(30)); },
      [](Hour& h) { h.finishMove(h.editor_.sortByName(h.anyPanel())); },
      [](Hour& h) { h.finishMove(h.editor_.align()); },
      [](Hour& h) { h.removeSelected(); },
      [](Hour& h) { h.dropIn(); },
      [](Hour& h) { h.addOne(); },
      [](Hour& h) { h.dice_.chance(50) ? h.editor_.selectAll() : h.editor_.selectNone(); },
      [](Hour& h) { h.changeSettings(); },
      [](Hour& h) { h.resizeWindow(); },
      [](Hour& h) { h.workInWindow(); },
      [](Hour& h) { h.workInWindow(); }};
  const int which = dice_.roll(17);
  if (which < static_cast<int>(std::size(kCommands))) return kCommands[which](*this);
  changeRecord();
}

// As the main window does it, whatever window the key was pressed in.
bool RandomHour::undo(bool redo) {
  UndoHistory& history = document_.history;
  if (document_.settings.locked || (redo ? history.redoName() : history.undoName()) == nullptr)
    return false;
  UndoHistory::Taken taken =
      redo ? history.redo(document_.workspace) : history.undo(document_.workspace);
  ++tally[redo ? "redo" : "undo"];
  for (const ContainerSlot slot : taken.removed) {
    rules_.removed(slot);
    windows_.erase(slot);
  }
  for (const ShortcutSlot slot : applyTagFilters(document_.workspace))
    taken.objects.emplace_back(slot);
  editor_.objectsChanged(taken.objects);
  document_.workspace.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
    if (c.Detached && !windows_.contains(slot))
      windows_[slot] = std::make_unique<Window>(document_, slot, measure_);
  });
  for (const auto& [slot, window] : windows_) window->build();
  return true;
}

int RandomHour::takeAll(bool redo) {
  document_.settings.locked = false;
  int steps = 0;
  while (undo(redo)) ++steps;
  return steps;
}

void RandomHour::changeRecord() {
  const ContainerSlot slot = anyContainer();
  clsContainer* c = document_.workspace.containers.find(slot);
  if (c == nullptr || document_.settings.locked) return;
  switch (dice_.roll(4)) {
    case 0: {
      const UndoStep step(document_, L"rename");
      c->name = L"Name " + std::to_wstring(dice_.roll(1000));
    }
      apply(rules_.keepOpen());
      break;
    case 1:
      return detachOrAttach(slot);
    case 2: {
      const std::vector<std::wstring> tags{L"", L"work", L"PLAY", L"none"};
      c->ShowingTag = dice_.oneOf(tags);
      for (const ShortcutSlot changed : applyTagFilter(document_.workspace, {slot}))
        editor_.shortcutChanged(changed);
      break;
    }
    default:
      if (!c->Detached) c->noteVisible = !c->noteVisible;
  }
  view_.updateContainer(slot);
  view_.scrollTo(view_.scroll());
  editor_.sceneRebuilt();
  if (windows_.contains(slot)) windows_[slot]->build();
}

void RandomHour::Window::build() {
  const clsContainer* c = scene.workspace().containers.find(scene.slot());
  if (c == nullptr) return;
  scene.build(c->savedRect.size(), c->savedRect.size(), {});
  editor.sceneRebuilt();
}

void RandomHour::detachOrAttach(ContainerSlot slot) {
  clsContainer& c = document_.workspace.containers[slot];
  ++tally["detached or attached"];
  rules_.removed(slot);
  if (c.Detached) {
    markAttached(c);
    windows_.erase(slot);
  } else {
    markDetached(c);
    windows_[slot] = std::make_unique<Window>(document_, slot, measure_);
    windows_[slot]->build();
  }
  view_.build(view_.layout());
  editor_.sceneRebuilt();
}

void RandomHour::workInWindow() {
  if (windows_.empty()) return;
  auto at = windows_.begin();
  std::advance(at, dice_.roll(static_cast<int>(windows_.size())));
  WorkspaceEditor& editor = at->second->editor;
  const DetachedScene& scene = at->second->scene;
  // Mostly something to take hold of, now and then beyond the border.
  const std::vector<NodeId> nodes = scene.scene().visibleNodes();
  NodeId target = dice_.oneOf(nodes);
  for (int i = 0; i < 8 && shortcutOf(target).none(); ++i) target = dice_.oneOf(nodes);
  const TwipsRect r = scene.scene().windowRect(target);
  const Point<Twips> point{r.left + r.width * (static_cast<float>(dice_.roll(110)) / 100.0F),
                           r.top + r.height * (static_cast<float>(dice_.roll(110)) / 100.0F)};
  const NodeId node = scene.scene().hitTest(point);
  const Point<Twips> distance{{static_cast<float>(dice_.roll(200) - 100) * 15},
                              {static_cast<float>(dice_.roll(200) - 100) * 15}};
  editor.pressed(node, dice_.chance(20));
  switch (dice_.roll(5)) {
    case 0:
      if (editor.dragFrom(node, point) != GestureKind::MoveObjects) return;
      editor.beginDrag();
      editor.drag(distance);
      if (dice_.chance(20)) return editor.cancelDrag();
      editor.drop(distance, {point.x + distance.x, point.y + distance.y});
      ++tally["moved in a window"];
      return;
    case 1:
      if (const DeletePlan plan = editor.planDelete(); plan.shortcuts.size() < 3)
        editor.carryOut(plan);
      return;
    case 2:
      if (document_.workspace.shortcuts.count() < kMostShortcuts) editor.add({{}}, &point);
      return;
    case 3:
      undo(false);
      return;
    default:
      editor.sortByName({at->first});
  }
}

void RandomHour::changeSettings() {
  Settings& s = document_.settings;
  bool Settings::*const flags[] = {&Settings::autoExpand, &Settings::autoShrink,
                                   &Settings::foldOnClick, &Settings::align};
  const auto which = static_cast<std::size_t>(dice_.roll(6));
  if (which < std::size(flags)) {
    s.*flags[which] = !(s.*flags[which]);
  } else if (which == 4) {
    s.autoExpandDelay = dice_.roll(3);
  } else {
    // Seldom for long: little can be done then.
    s.locked = !s.locked && dice_.chance(30);
    FrameLayout layout = view_.layout();
    layout.locked = s.locked;
    view_.setFrame(layout);
  }
}

void RandomHour::resizeWindow() {
  FrameLayout layout = view_.layout();
  layout.window = {{static_cast<float>(2400 + dice_.roll(200) * 15)},
                   {static_cast<float>(4500 + dice_.roll(500) * 15)}};
  if (dice_.chance(60)) layout.window = {{4695}, {10800}};
  view_.setFrame(layout);
}

void RandomHour::dropIn() {
  if (document_.workspace.shortcuts.count() >= kMostShortcuts) return;
  std::vector<clsShortcut> dropped(1 + static_cast<std::size_t>(dice_.roll(3)));
  for (clsShortcut& s : dropped) {
    s.FullCaption = L"Dropped " + std::to_wstring(dice_.roll(1000));
    s.Path = L"http://example.org/" + s.FullCaption;
    s.ShortcutType = static_cast<int>(ShortcutKindCode::WebAddress);
  }
  const Point<Twips> point = at();
  if (dice_.chance(70)) {
    editor_.markDrop(point);
    apply(rules_.draggedOver(inputs(), inputs().underCursor));
    passTime();
    editor_.unmarkDrop();
    apply(rules_.dragLeft());
    editor_.add(std::move(dropped), &point);
  } else {
    editor_.add(std::move(dropped), nullptr);
  }
}

void RandomHour::removeSelected() {
  const std::vector<ContainerSlot> boxes = editor_.selectedContainers();
  if (!boxes.empty() && !document_.settings.locked && dice_.chance(40)) {
    editor_.removeContainers(boxes);
    for (const ContainerSlot slot : boxes) {
      rules_.removed(slot);
      windows_.erase(slot);
    }
    ++tally["containers removed"];
    return;
  }
  // Of everything at once too little would remain to play with.
  const DeletePlan plan = editor_.planDelete();
  if (plan.shortcuts.size() < 6) editor_.carryOut(plan);
}

void RandomHour::addOne() {
  if (document_.workspace.containers.count() >= kMostContainers) return;
  if (dice_.chance(40)) return editor_.setDrawMode(true);
  if (dice_.chance(30) && document_.workspace.pictures.count() < 8) {
    editor_.addPicture({L"C:\\new.png", anyPanel(), {{600}, {600}, {900}, {600}}});
    return;
  }
  clsContainer c;
  c.name = L"New " + std::to_wstring(dice_.roll(1000));
  c.foreColor = rgb(255, 255, 255);
  if (dice_.chance(30)) c.CopyPath = L"C:\\More";
  if (dice_.chance(30)) c.noteVisible = true;
  editor_.addContainer(c, editor_.freePlace({{2400}, {1920}}));
}

}  // namespace varnowick
