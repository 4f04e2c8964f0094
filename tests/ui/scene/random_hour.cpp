#include "tests/ui/scene/random_hour.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "shortcuts/tags.h"

namespace varnowick {
namespace {

constexpr Density kDensity{};

bool isNumber(const TwipsRect& r) {
  return std::isfinite(r.left.value) && std::isfinite(r.top.value) &&
         std::isfinite(r.width.value) && std::isfinite(r.height.value);
}

std::string text(const TwipsRect& r) {
  std::string all;
  for (const Twips t : {r.left, r.top, r.width, r.height})
    all += std::to_string(std::lround(t.value * 10)) + " ";
  return all;
}

// All texts of the hour are.
std::string ascii(const std::wstring& wide) {
  std::string all;
  for (const wchar_t c : wide) all += static_cast<char>(c);
  return all;
}

std::string text(NodeId id) {
  return std::to_string(static_cast<int>(id.kind)) + "/" + std::to_string(id.slot);
}

bool isHandle(NodeId id) {
  return id.kind == ControlKind::lblShortcut || id.kind == ControlKind::ContainerLabel ||
         id.kind == ControlKind::ContainerIcon || id.kind == ControlKind::lblFoldUnfold;
}

clsContainer box(const wchar_t* name, float left, float top, float width, float height) {
  clsContainer c;
  c.name = name;
  c.backColor = rgb(30, 40, 50);
  c.foreColor = rgb(255, 255, 255);
  c.rect = c.savedRect = {{left}, {top}, {width}, {height}};
  return c;
}

}  // namespace

std::vector<std::string> shownOn(const Scene& scene) {
  std::vector<std::string> lines;
  for (const NodeId id : scene.visibleNodes()) {
    const Node& node = *scene.find(id);
    std::string line = std::to_string(static_cast<int>(id.kind)) + " " +
                       std::to_string(static_cast<int>(node.parent.kind)) + " " +
                       text(scene.windowRect(id));
    lines.push_back(line + ascii(node.text) + " " + ascii(node.image.name));
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

std::string difference(const std::vector<std::string>& is, const std::vector<std::string>& should) {
  std::vector<std::string> only;
  std::set_difference(is.begin(), is.end(), should.begin(), should.end(), std::back_inserter(only));
  std::string all;
  for (const std::string& line : only) all += "is     " + line + "\n";
  only.clear();
  std::set_difference(should.begin(), should.end(), is.begin(), is.end(), std::back_inserter(only));
  for (const std::string& line : only) all += "should " + line + "\n";
  return all;
}

RandomHour::RandomHour(unsigned seed) : dice_(seed) {
  furnish();
  FrameLayout layout;
  layout.window = {{4695}, {10800}};
  view_.build(layout);
  editor_.sceneRebuilt();
  detachOrAttach({7});
}

void RandomHour::furnish() {
  Workspace& w = document_.workspace;
  const ContainerSlot plain = w.containers.add(box(L"Plain", 120, 240, 3000, 2400));
  clsContainer low = box(L"Low", 1200, 8400, 2400, 3000);
  fold(low);
  w.containers.add(low);
  clsContainer right = box(L"Right", 3600, 3000, 2640, 2040);
  shrink(right);
  w.containers.add(right);
  clsContainer feed = box(L"Feed", 0, 3000, 3360, 2520);
  feed.RSS = true;
  feed.CopyPath = L"http://example.org/feed";
  w.containers.add(feed);
  clsContainer folder = box(L"Folder", 240, 5640, 2880, 2040);
  folder.CopyPath = L"C:\\Papers";
  w.containers.add(folder);
  clsContainer note = box(L"Note", 360, 12000, 3000, 2160);
  note.noteVisible = true;
  note.note = L"Milk\r\nhttp://example.org/\r\n";
  w.containers.add(note);
  clsContainer reminder = box(L"Reminder", 600, 15000, 2400, 1800);
  reminder.reminder = {true, L"10:15:00", L"2/3/2008", L"Sunday, 3 February"};
  fold(reminder);
  w.containers.add(reminder);
  clsContainer away = box(L"Away", 600, 6000, 2400, 1800);
  away.detachedRect = {{3000}, {3000}, {2400}, {1800}};
  w.containers.add(away);
  clsContainer narrow = box(L"Narrow", 3480, 700, 700, 1800);
  w.containers.add(narrow);
  for (int i = 0; i < 40; ++i) {
    clsShortcut s;
    s.FullCaption = L"Shortcut " + std::to_wstring(i);
    s.Path = L"C:\\Programs\\" + std::to_wstring(i) + L".exe";
    s.Tags = i % 3 == 0 ? L"work" : L"home, play";
    s.FontSize = i % 4 == 0 ? 8.25F : 10.0F;
    s.parent = i % 2 == 0 ? picBack : Panel{i % 5 == 0 ? ContainerSlot{7} : plain};
    s.position = {{static_cast<float>(i % 7) * 480}, {360 + static_cast<float>(i) * 240}};
    w.shortcuts.add(s);
  }
  w.pictures.add({L"C:\\sea.bmp", picBack, {{240}, {2400}, {1200}, {900}}});
  w.pictures.add({L"C:\\sky.bmp", Panel{plain}, {{1500}, {600}, {300}, {240}}});
}

Point<Twips> RandomHour::at() const {
  return {kDensity.toTwips(mouse_.x), kDensity.toTwips(mouse_.y)};
}

ContainerInputs RandomHour::inputs() {
  return {
      mouse_, editor_.dropPanel(at()).container,
      [this](ContainerSlot slot) { return view_.surfaceFor(document_.workspace.containers[slot]); },
      gestures_.pressed()};
}

void RandomHour::apply(const ContainerEffects& effects) {
  for (const ContainerSlot slot : effects.reshaped) {
    view_.updateContainer(slot);
    const clsContainer& c = document_.workspace.containers[slot];
    ++tally[c.shrunk         ? "shrunk"
            : c.folded       ? "folded"
            : c.CloseToEdgeY ? "unfolded upward"
                             : "open"];
  }
  if (!effects.reshaped.empty()) view_.scrollTo(view_.scroll());
  if (!effects.opened.none()) ++tally["opened by a drag"];
  for (const TimerAction& t : effects.timers) {
    due_.erase(t.id);
    if (t.start) due_[t.id] = now_ + (t.interval > 0 ? t.interval : timerRow(t.id).interval);
  }
}

void RandomHour::passTime() {
  const long long until =
      now_ + dice_.roll(dice_.chance(gestures_.dragging() ? 40 : 10) ? 2500 : 120);
  while (!due_.empty()) {
    const auto next = std::min_element(
        due_.begin(), due_.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    if (next->second > until) break;
    const TimerId id = next->first;
    now_ = next->second;
    due_.erase(next);
    apply(rules_.tick(id, inputs()));
  }
  now_ = until;
}

void RandomHour::moveMouse() {
  Point<Pixels> to = mouse_;
  const std::vector<NodeId> nodes = view_.scene().visibleNodes();
  NodeId node = dice_.oneOf(nodes);
  // Oftener to what can be taken hold of, and to where a drag may open something.
  for (int i = 0; i < 6 && !isHandle(node); ++i) node = dice_.oneOf(nodes);
  const TwipsRect seen = view_.scene().seenRect(node);
  if (dice_.chance(25)) {
    to.x += Pixels{dice_.roll(25) - 12};
    to.y += Pixels{dice_.roll(25) - 12};
  } else if (!seen.empty() && !dice_.chance(15)) {
    // Borders and corners as often as the middle.
    const PixelRect r = toPixels(seen, kDensity);
    const int edge = dice_.roll(4);
    const int x = dice_.roll(std::max(1, edge == 1 ? std::min(8, r.width.value) : r.width.value));
    const int y =
        dice_.roll(std::max(1, edge == 2 ? std::min(12, r.height.value) : r.height.value));
    to = {r.left + Pixels{x}, r.top + Pixels{y}};
    if (edge == 3) to = {r.right() - Pixels{1 + x % 4}, r.bottom() - Pixels{1 + y % 4}};
  } else {
    to = {{dice_.roll(400) - 40}, {dice_.roll(900) - 90}};
  }
  mouseTo(to);
}

void RandomHour::mouseTo(Point<Pixels> to) {
  mouse_ = to;
  if (const auto event = gestures_.move(mouse_)) return gesture(*event);
  if (gestures_.dragging()) return;
  input_.mouseMoved(at());
  hover();
}

void RandomHour::hover() {
  const NodeId node = view_.scene().hitTest(at());
  const ContainerSlot slot = view_.panelAt(at()).container;
  const clsContainer* c = document_.workspace.containers.find(slot);
  if (c == nullptr) return;
  apply(rules_.mouseOverContainer(inputs(), slot));
  if (node.kind == ControlKind::ContainerIcon ||
      (node.kind == ControlKind::ContainerFrame &&
       IsOnShrinkHotSpot(*c, view_.bodyPoint(slot, at()))))
    apply(rules_.mouseOverHotSpot(inputs(), slot));
}

void RandomHour::press() {
  if (gestures_.pressed()) return release();
  input_.mousePressed(at());
  const NodeId node = input_.pressed();
  const bool ctrl = dice_.chance(15);
  const GestureKind drag = editor_.dragFrom(node, at());
  editor_.pressed(node, ctrl);
  gestures_.press(node, drag, mouse_, ctrl);
  if (node.kind == ControlKind::ContainerLabel) apply(rules_.titlePressed(dice_.chance(10)));
}

void RandomHour::release() {
  const auto event = gestures_.release(mouse_);
  const NodeId node = input_.mouseReleased(at());
  input_.captureLost();
  if (!event) return;
  const bool isClick = event->kind == GestureKind::Click;
  editor_.released(event->node, event->ctrl, !isClick);
  gesture(*event);
  if (event->node.kind == ControlKind::ContainerLabel) apply(rules_.titleReleased());
  if (isClick && !event->ctrl && !node.none()) click(node);
}

void RandomHour::click(NodeId node) {
  const ContainerSlot slot = containerOf(node);
  ++tally["click"];
  switch (node.kind) {
    case ControlKind::lblFoldUnfold:
      return apply(rules_.lblFoldUnfold_Click(inputs(), slot));
    case ControlKind::ContainerLabel:
      return apply(rules_.titleClicked(inputs(), slot));
    case ControlKind::ContainerIcon:
      return apply(rules_.tileClicked(inputs(), slot));
    case ControlKind::ContainerFrame:
      return apply(rules_.bodyClicked(inputs(), slot, view_.bodyPoint(slot, at())));
    case ControlKind::cmdConShrink:
      return apply(rules_.ShrinkExpand(inputs(), slot, kSyntheticClick.x, kSyntheticClick.y));
    case ControlKind::PicFoldUnfoldAllToolbar:
      return apply(rules_.mnuFoldAll(inputs()));
    case ControlKind::PicShrinkExpandAllToolbar:
      return apply(rules_.mnuShrinkAll(inputs()));
    case ControlKind::lblRSSLastUpdate:
      return apply(rules_.keepOpen());
    default:
      return;
  }
}

void RandomHour::finishMove(const Moved& moved) {
  if (moved.objects.empty()) return;
  for (const ShortcutSlot changed : applyTagFilters(document_.workspace))
    editor_.shortcutChanged(changed);
}

void RandomHour::dragObjects(const GestureEvent& event, Point<Twips> distance) {
  switch (event.phase) {
    case GesturePhase::Begin:
      editor_.beginDrag();
      [[fallthrough]];
    case GesturePhase::Update:
      editor_.drag(distance);
      editor_.markDrop(at());
      return apply(rules_.draggedOver(inputs(), inputs().underCursor));
    case GesturePhase::End:
      editor_.openWithTarget(at());
      finishMove(editor_.drop(distance, at()));
      break;
    case GesturePhase::Cancel:
      editor_.cancelDrag();
      break;
  }
  apply(rules_.dragLeft());
}

void RandomHour::gesture(const GestureEvent& event) {
  const Point<Twips> distance{kDensity.toTwips(event.now.x - event.start.x),
                              kDensity.toTwips(event.now.y - event.start.y)};
  const Point<Twips> from{kDensity.toTwips(event.start.x), kDensity.toTwips(event.start.y)};
  const bool begins = event.phase == GesturePhase::Begin;
  const bool ends = event.phase == GesturePhase::End;
  if (ends) ++tally["gesture " + std::to_string(static_cast<int>(event.kind))];
  switch (event.kind) {
    case GestureKind::MoveObjects:
      return dragObjects(event, distance);
    case GestureKind::MoveContainers:
      if (begins) editor_.beginContainerDrag();
      if (ends) finishMove(editor_.dropContainers(distance));
      if (event.phase == GesturePhase::Cancel) return editor_.cancelDrag();
      if (!ends) editor_.dragContainers(distance);
      return;
    case GestureKind::Resize:
      if (begins) editor_.beginResize(event.node, from);
      if (event.phase == GesturePhase::Cancel) return editor_.cancelResize();
      editor_.resize(distance, dice_.chance(50));
      if (ends) editor_.endResize();
      return;
    case GestureKind::RubberBand:
      if (event.phase != GesturePhase::Cancel) editor_.band(from, at());
      if (ends || event.phase == GesturePhase::Cancel) editor_.endBand();
      return;
    case GestureKind::DrawContainer:
      if (event.phase == GesturePhase::Cancel) return editor_.endBand();
      if (!ends) return editor_.showDrawn(from, at());
      editor_.addContainer(box(L"Drawn", 0, 0, 0, 0), editor_.drawn(from, at()));
      return;
    default:
      return;
  }
}

void RandomHour::settleDown() {
  if (const auto event = gestures_.cancel()) gesture(*event);
  input_.captureLost();
  view_.scrollTo({});
}

void RandomHour::step() {
  const int what = dice_.roll(100);
  if (what < 45)
    moveMouse();
  else if (what < 70)
    press();
  else if (what < 85)
    passTime();
  else if (what < 88)
    view_.scrollTo(view_.scroll() + Twips{static_cast<float>(dice_.roll(13) - 6) * 120});
  else if (what < 90)
    settleDown();
  else if (!gestures_.pressed() || dice_.chance(15))  // keys go on during a drag
    command();
}

std::string RandomHour::faultNow() {
  std::string fault;
  const Workspace& w = document_.workspace;
  const Scene& scene = view_.scene();
  const auto used = [&w](const ObjectId& id) {
    if (const auto* s = std::get_if<ShortcutSlot>(&id)) return w.shortcuts.contains(*s);
    if (const auto* p = std::get_if<PictureSlot>(&id)) return w.pictures.contains(*p);
    return w.containers.contains(std::get<ContainerSlot>(id));
  };
  const auto checkSelection = [&](const WorkspaceEditor& editor) {
    for (const ObjectId& id : editor.selection().objects())
      if (!used(id)) fault += "a freed slot is selected; ";
  };
  checkSelection(editor_);
  for (const auto& [slot, window] : windows_) checkSelection(window->editor);
  const Size<Twips> panel = view_.panelSize(picBack);
  w.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
    const std::string name = "container " + std::to_string(slot.index) + ": ";
    if (!isNumber(c.rect) || !isNumber(c.savedRect)) fault += name + "not a number; ";
    if (isOpen(c) && c.rect.size() != c.savedRect.size()) fault += name + "open, another size; ";
    if (c.shrunk && c.rect.size() != kShrunkSize) fault += name + "not a tile; ";
    if (isFolded(c) && c.rect.height != kTitleStripHeight) fault += name + "not a title; ";
    const Node* node = scene.find(containerNode(slot));
    const bool shown = node != nullptr && node->visible;
    if (shown != onWorkspace(c)) fault += name + "shown or not; ";
    if (!shown || gestures_.dragging()) return;
    const TwipsRect& r = node->rect;
    const bool reachable = r.top >= Twips{} && r.bottom() <= view_.contentHeight() &&
                           r.right() >= kTitleStripHeight &&
                           r.left <= panel.width - kTitleStripHeight;
    if (!reachable) fault += name + "out of reach at " + text(r) + "; ";
  });
  for (const NodeId id : scene.visibleNodes()) {
    if (!isNumber(scene.find(id)->rect)) fault += text(id) + ": not a number; ";
    const bool gone = (!shortcutOf(id).none() && !w.shortcuts.contains(shortcutOf(id))) ||
                      (!pictureOf(id).none() && !w.pictures.contains(pictureOf(id))) ||
                      (!containerOf(id).none() && !w.containers.contains(containerOf(id)));
    if (gone) fault += text(id) + ": shown, but gone; ";
  }
  if (!gestures_.dragging())
    for (const ControlKind kind :
         {ControlKind::DragLayer, ControlKind::RubberBand, ControlKind::DropMark})
      if (scene.shown({kind, 0})) fault += text({kind, 0}) + ": left over; ";
  return fault;
}

std::string RandomHour::faultAgainstNewScene() {
  WorkspaceScene fresh(document_.settings, document_.workspace, &measure_);
  fresh.build(view_.layout());
  std::string fault = difference(shownOn(view_.scene()), shownOn(fresh.scene()));
  for (const auto& [slot, window] : windows_) {
    Window again(document_, slot, measure_);
    again.build();
    fault += difference(shownOn(window->scene.scene()), shownOn(again.scene.scene()));
  }
  return fault;
}

}  // namespace varnowick
