// A window, a mouse and monitors for the docking rules: gathers inputs as the
// main window does and applies effects to plain fields.
#pragma once

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "sidebar/docking.h"
#include "tests/fakes/fake_screen.h"

namespace varnowick {

struct DockingWorld {
  Docking rules;
  FakeMonitors monitors;
  FakeCursor cursor{};
  TwipsRect window{{3000}, {1500}, {3000}, {3000}};
  DockInputs conditions;  // the flags; the rest is gathered anew
  std::set<TimerId> running;
  std::vector<int> opacities;
  CaptionChange caption = CaptionChange::None;
  DockChange lastChange = DockChange::None;
  // As on a real screen: the window can only stand at whole pixels.
  bool wholePixels = false;

  DockInputs inputs() {
    DockInputs in = conditions;
    in.window = window;
    in.density = monitors.density();
    in.screen = screenExtents(monitors);
    in.cursor = cursor.at;
    in.leftButtonDown = cursor.down;
    const PixelRect px = toPixels(window, in.density);
    const ProgramWindow main{px.topLeft(), window.size()};
    in.mouseOnWindow = MouseOnWindow({&main, 1}, cursor.at, in.density);
    return in;
  }

  void apply(const DockEffects& effects) {
    if (effects.opacity) opacities.push_back(*effects.opacity);
    if (effects.resize)
      window = {window.left, window.top, effects.resize->width, effects.resize->height};
    if (effects.moveTo) placeAt(effects.moveTo->x, effects.moveTo->y);
    for (const TimerAction& t : effects.timers) {
      if (t.start)
        running.insert(t.id);
      else
        running.erase(t.id);
    }
    if (effects.caption != CaptionChange::None) caption = effects.caption;
    if (effects.change != DockChange::None) lastChange = effects.change;
  }

  void placeAt(Twips left, Twips top) {
    window.left = left;
    window.top = top;
    if (!wholePixels) return;
    const Density d = monitors.density();
    window.left = d.toTwips(d.toPixels(left));
    window.top = d.toTwips(d.toPixels(top));
  }

  void start(bool hidden = false) { apply(rules.start(inputs(), hidden)); }
  void dockTo(ScreenEdge edge) { apply(rules.dockTo(inputs(), edge)); }
  void moveMouse(int x, int y) {
    cursor.at = {{x}, {y}};
    if (inputs().mouseOnWindow) apply(rules.mouseMoved(inputs()));
  }
  // Let go there with the pointer on its middle, or at a point of the screen.
  void drag(Twips left, Twips top) {
    const PixelRect px = toPixels({left, top, window.width, window.height}, monitors.density());
    drag(left, top, {px.left + Pixels{px.width.value / 2}, px.top + Pixels{px.height.value / 2}});
  }
  void drag(Twips left, Twips top, Point<Pixels> pointer) {
    cursor.at = {{640}, {400}};
    rules.dragBegan(inputs());
    placeAt(left, top);
    cursor.at = pointer;
    rules.dragged(inputs());
    apply(rules.dropped(inputs()));
  }
  void changeMonitors(std::vector<PixelRect> bounds) {
    monitors.bounds = std::move(bounds);
    apply(rules.screenChanged(inputs()));
  }

  bool runs(TimerId id) const { return running.contains(id); }
  // A tick of a timer that runs; nothing when it has been stopped.
  void tick(TimerId id) {
    if (!runs(id)) return;
    if (id == TimerId::TimerShow) apply(rules.TimerShowTick(inputs()));
    if (id == TimerId::TimerSlide) apply(rules.TimerSlideTick(inputs()));
    if (id == TimerId::TimerHide) apply(rules.TimerHideTick(inputs()));
  }
  int slide(int atMost = 1000) {
    int ticks = 0;
    while (runs(TimerId::TimerSlide) && ticks < atMost) {
      tick(TimerId::TimerSlide);
      ++ticks;
    }
    return ticks;
  }
  // What somebody does, in words.
  void play(const std::string& steps);
  bool collapsed() const { return rules.collapseSide() != ScreenEdge::None && !rules.sliding(); }
};

// A point of the strip that a bar of the world leaves on its edge.
inline void moveOntoStrip(DockingWorld& w, int dx = 0, int dy = 0) {
  const PixelRect px = toPixels(w.window, w.monitors.density());
  const PixelRect shown = px.intersect(w.monitors.virtualScreen());
  w.moveMouse(shown.left.value + shown.width.value / 2 + dx,
              shown.top.value + shown.height.value / 2 + dy);
}

constexpr Point<Pixels> kFarAway{{640}, {790}};

inline void DockingWorld::play(const std::string& steps) {
  using W = DockingWorld;
  static const std::map<std::string, void (*)(W&)> kSteps{
      {"strip", [](W& w) { moveOntoStrip(w); }},
      {"enter", [](W& w) { w.moveMouse(20, 200); }},
      {"over",
       [](W& w) {
         w.cursor.at = {{50}, {200}};
       }},
      {"far", [](W& w) { w.cursor.at = kFarAway; }},
      {"press", [](W& w) { w.cursor.down = true; }},
      {"wander", [](W& w) { w.cursor.down = false, w.cursor.at.y += 100_px; }},
      {"show", [](W& w) { w.tick(TimerId::TimerShow); }},
      {"hide", [](W& w) { w.tick(TimerId::TimerHide); }},
      {"slide", [](W& w) { w.slide(); }},
      {"drag", [](W& w) { w.drag(4000_tw, 1500_tw); }},
      {"atOnce", [](W& w) { w.conditions.undockImmediately = true; }},
      {"maximised", [](W& w) { w.conditions.maximised = true; }},
      {"blocked", [](W& w) { w.conditions.blocked = true; }},
      {"keepOpen", [](W& w) { w.conditions.keepOpen = true; }},
      {"dialog", [](W& w) { w.rules.dialogClosed(); }},
      {"unfocus", [](W& w) { w.rules.lostFocus(); }},
      {"expand", [](W& w) { w.apply(w.rules.ExpandFromEdge(w.inputs())); }},
      {"toggle", [](W& w) { w.apply(w.rules.toggle(w.inputs())); }},
      {"dockNow", [](W& w) { w.apply(w.rules.dockNow(w.inputs())); }},
      {"launch", [](W& w) { w.apply(w.rules.preLaunch(w.inputs())); }},
      {"suspend", [](W& w) { w.apply(w.rules.mnuSuspendSlideOut()); }},
      {"right", [](W& w) { w.dockTo(ScreenEdge::Right); }}};
  std::istringstream in(steps);
  for (std::string step; in >> step;) kSteps.at(step)(*this);
}

constexpr ScreenEdge kAllEdges[] = {ScreenEdge::Left, ScreenEdge::Right, ScreenEdge::Top,
                                    ScreenEdge::Bottom};

// A bar that is collapsed without sliding, the mouse elsewhere.
inline DockingWorld collapsedAt(ScreenEdge edge, DockingWorld w = {}) {
  w.conditions.animate = false;
  w.start();
  w.cursor.at = kFarAway;
  w.dockTo(edge);
  w.conditions.animate = true;
  w.opacities.clear();
  return w;
}

}  // namespace varnowick
