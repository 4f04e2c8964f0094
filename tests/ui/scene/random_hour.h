// An hour of use by chance: a bar with every kind of object, a mouse that goes
// anywhere, timers on a clock of its own, and what must hold after each step. It
// wires editor, gestures and container rules as the main window does.
#pragma once

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "containers/container_rules.h"
#include "tests/fakes/fake_text_measure.h"
#include "ui/scene/detached_scene.h"
#include "ui/scene/gestures.h"
#include "ui/scene/workspace_editor.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {

// The same numbers for a seed with every library.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  // 0 to sides - 1.
  int roll(int sides) { return static_cast<int>(engine_() % static_cast<unsigned>(sides)); }
  bool chance(int percent) { return roll(100) < percent; }
  template <class List>
  auto& oneOf(List& list) {
    return list[static_cast<std::size_t>(roll(static_cast<int>(list.size())))];
  }

 private:
  std::mt19937 engine_;
};

// The nodes that can be seen and what they show, one line each, sorted. Without
// slots, which loading numbers anew.
std::vector<std::string> shownOn(const Scene& scene);
// The lines that are on one side only; empty when both sides are the same.
std::string difference(const std::vector<std::string>& is, const std::vector<std::string>& should);

class RandomHour {
 public:
  explicit RandomHour(unsigned seed);

  void step();
  // What must not be, or nothing.
  std::string faultNow();
  // The same, compared with a scene made anew from the records.
  std::string faultAgainstNewScene();
  // Ends whatever is under way.
  void settleDown();
  // Everything that can be undone or done again; how many steps.
  int takeAll(bool redo);

  const Document& document() const { return document_; }
  WorkspaceScene& view() { return view_; }
  // How often each kind of gesture ended and each container state was reached:
  // proof that the hour reaches what it is to try.
  std::map<std::string, int> tally;

 private:
  void furnish();
  // Input (random_hour.cpp)
  ContainerInputs inputs();
  void apply(const ContainerEffects& effects);
  void moveMouse();
  void mouseTo(Point<Pixels> to);
  void hover();
  void press();
  void release();
  void click(NodeId node);
  void gesture(const GestureEvent& event);
  void finishMove(const Moved& moved);
  void dragObjects(const GestureEvent& event, Point<Twips> distance);
  void passTime();
  // Commands (random_hour_commands.cpp)
  void command();
  void changeRecord();
  void changeSettings();
  void dropIn();
  void removeSelected();
  bool undo(bool redo);
  void resizeWindow();
  void addOne();
  void detachOrAttach(ContainerSlot slot);
  void workInWindow();
  ContainerSlot anyContainer();
  Panel anyPanel();  // of the bar

  Point<Twips> at() const;

  Dice dice_;
  Document document_;
  FakeTextMeasure measure_;
  WorkspaceScene view_{document_.settings, document_.workspace, &measure_};
  WorkspaceEditor editor_{document_, view_};
  ContainerRules rules_{document_.workspace, document_.settings};
  Gestures gestures_;
  // A detached container, with a selection of its own.
  struct Window {
    DetachedScene scene;
    WorkspaceEditor editor;
    Window(Document& document, ContainerSlot slot, TextMeasure& measure)
        : scene(document.settings, document.workspace, slot, &measure), editor(document, scene) {}
    void build();
  };
  std::map<ContainerSlot, std::unique_ptr<Window>> windows_;
  InputState input_{view_.scene()};
  Point<Pixels> mouse_{{100}, {100}};
  long long now_ = 0;
  std::map<TimerId, long long> due_;
};

}  // namespace varnowick
