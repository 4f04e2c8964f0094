#include "containers/container_rules.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <sstream>
#include <string>

namespace varnowick {
namespace {

// A panel with containers beside each other, a mouse, and timers that tick when they
// are told to. It acts stories: words "what:which", with what is expected as "=...".
class World {
 public:
  Workspace workspace;
  Settings settings;
  ContainerRules rules{workspace, settings};
  Size<Twips> surface{{30000}, {9000}};
  Point<Pixels> cursor{{500}, {500}};

  // One letter a container: open, folded, shrunk.
  explicit World(const std::string& states) {
    for (const char state : states) {
      clsContainer c;
      const float left = 2500.0F * static_cast<float>(workspace.containers.count());
      c.savedRect = c.rect = {{left}, {1000}, {2000}, {3000}};
      if (state == 's') shrink(c);
      if (state == 'f') fold(c);
      workspace.containers.add(c);
    }
  }

  clsContainer& at(ContainerSlot slot) { return workspace.containers[slot]; }
  std::string states() const {
    std::string all;
    workspace.containers.forEach([&](ContainerSlot, const clsContainer& c) {
      all += c.shrunk ? 's' : c.folded ? 'f' : 'o';
    });
    return all;
  }

  void play(const std::string& story) {
    std::istringstream words(story);
    for (std::string word; words >> word;) {
      SCOPED_TRACE(word + " in " + story);
      const std::size_t colon = word.find_first_of(":=");
      const std::string what = word.substr(0, colon);
      const std::string which = colon == std::string::npos ? "" : word.substr(colon + 1);
      if (word[0] == '=') {
        EXPECT_EQ(states(), which);
      } else if (colon != std::string::npos && word[colon] == '=') {
        check(what, which);
      } else if (timers().contains(what)) {
        pass(timers().at(what), slotOf(which));
      } else if (settingsByName().contains(what)) {
        settings.*settingsByName().at(what) = which == "on";
      } else {
        act(what, slotOf(which), which);
      }
    }
  }

 private:
  static const std::map<std::string, TimerId>& timers() {
    static const std::map<std::string, TimerId> all{
        {"expandTimer", TimerId::TimerExpandContainer},
        {"dragTimer", TimerId::TimerExpandUnfoldOnDrag},
        {"dontShrink", TimerId::TimerDontShrink},
        {"suspendShrink", TimerId::TimerSuspendShrink},
        {"suspendExpand", TimerId::TimerSuspendAutoExpand},
        {"tileTimer", TimerId::TimerTileClick}};
    return all;
  }
  static const std::map<std::string, bool Settings::*>& settingsByName() {
    static const std::map<std::string, bool Settings::*> all{
        {"autoExpand", &Settings::autoExpand},
        {"autoShrink", &Settings::autoShrink},
        {"foldOnClick", &Settings::foldOnClick}};
    return all;
  }
  // A, B, C; any other is none.
  static ContainerSlot slotOf(const std::string& which) {
    return which.size() == 1 && which[0] >= 'A' && which[0] <= 'C' ? ContainerSlot{which[0] - 'A'}
                                                                   : ContainerSlot{};
  }
  static std::string nameOf(ContainerSlot slot) {
    return slot.none() ? "-" : std::string(1, static_cast<char>('A' + slot.index));
  }

  void check(const std::string& what, const std::string& should) {
    if (timers().contains(what)) {
      const auto at = running_.find(timers().at(what));
      EXPECT_EQ(at == running_.end() ? "off" : std::to_string(at->second), should);
    } else if (what == "auto") {
      EXPECT_EQ(nameOf(rules.autoExpandedContainer()), should);
    } else if (what == "opened") {
      EXPECT_EQ(nameOf(last_.opened), should);
    } else if (what == "started") {
      EXPECT_EQ(std::to_string(last_.timers.size()), should);
    } else if (what == "save") {
      EXPECT_EQ(last_.save ? "now" : "later", should);
    } else if (what == "sounds") {
      EXPECT_EQ(sounds_, should);
      sounds_.clear();
    } else {
      ADD_FAILURE() << "no such word";
    }
  }
  void apply(ContainerEffects effects) {
    for (const TimerAction& t : effects.timers) {
      running_.erase(t.id);
      if (t.start) running_[t.id] = t.interval > 0 ? t.interval : timerRow(t.id).interval;
    }
    for (const wchar_t* sound : effects.sounds) {
      const std::wstring name(sound);
      sounds_ += (sounds_.empty() ? "" : ",") + std::string(name.begin(), name.end() - 4);
    }
    EXPECT_EQ(effects.changed, !effects.reshaped.empty());
    last_ = std::move(effects);
  }
  ContainerInputs in(ContainerSlot under) {
    return {cursor, under, [this](ContainerSlot) { return surface; }, buttonDown_};
  }
  void pass(TimerId id, ContainerSlot under) {
    EXPECT_TRUE(timerRow(id).oneShot && ContainerRules::ownsTimer(id));
    EXPECT_EQ(running_.erase(id), 1U) << "not running";
    apply(rules.tick(id, in(under)));
  }
  void act(const std::string& what, ContainerSlot slot, const std::string& which) {
    const auto clickBody = [&](float x, float y) {
      if (!rules.pressMeantTile(slot)) apply(rules.bodyClicked(in(slot), slot, {{x}, {y}}));
    };
    const std::map<std::string, std::function<void()>> acts{
        {"foldBox", [&] { apply(rules.lblFoldUnfold_Click(in(slot), slot)); }},
        {"title", [&] { apply(rules.titleClicked(in(slot), slot)); }},
        {"double", [&] { apply(rules.doubleClicked(in(slot), slot)); }},
        {"tile", [&] { apply(rules.tileClicked(in(slot), slot)); }},
        {"hotSpot", [&] { clickBody(100, 150); }},
        {"body", [&] { clickBody(1000, 1000); }},
        {"button", [&] { apply(rules.ShrinkExpand(in(slot), slot, {120}, {120})); }},
        {"foldAll", [&] { apply(rules.mnuFoldAll(in({}))); }},
        {"shrinkAll", [&] { apply(rules.mnuShrinkAll(in({}))); }},
        // As the window does it: over the container, and over its hot spot or tile.
        {"over", [&] { apply(rules.mouseOverContainer(in(slot), slot)); }},
        {"spot", [&] { play("over:" + which), apply(rules.mouseOverHotSpot(in(slot), slot)); }},
        {"rest", [&] { play("spot:" + which + " expandTimer:" + which + " dontShrink"); }},
        {"down", [&] { buttonDown_ = true; }},
        {"up", [&] { buttonDown_ = false; }},
        {"press", [&] { apply(rules.titlePressed(false)); }},
        {"rightPress", [&] { apply(rules.titlePressed(true)); }},
        {"release", [&] { apply(rules.titleReleased()); }},
        {"keepOpen", [&] { apply(rules.keepOpen()); }},
        {"drag", [&] { apply(rules.draggedOver(in(slot), slot)); }},
        {"dragLeft", [&] { apply(rules.dragLeft()); }},
        {"away", [&] { cursor.x += Pixels{which.empty() ? 11 : std::stoi(which)}; }},
        {"load", [&] { rules.loadingStarted(); }},
        {"loaded", [&] { rules.loadingEnded(); }},
        {"detach", [&] { at(slot).Detached = true; }},
        {"remove", [&] { workspace.removeContainer(slot), rules.removed(slot); }}};
    ASSERT_TRUE(acts.contains(what)) << "no such word";
    acts.at(what)();
  }

  bool buttonDown_ = false;
  std::map<TimerId, int> running_;  // with their intervals
  std::string sounds_;              // since they were last asked for
  ContainerEffects last_;
};

struct Story {
  const char* states;
  const char* story;
};
void playAll(std::initializer_list<Story> stories) {
  for (const Story& s : stories) World(s.states).play(s.story);
}

TEST(ContainerRules, StatesChangeAsTheirTableSays) {
  const struct {
    const char *event, *from, *to;
  } table[] = {{"foldBox:A", "ofs", "fos"}, {"title:A", "ofs", "fos"},
               {"foldAll", "ofs", "fos"},   {"shrinkAll", "ofs", "sfo"},
               {"hotSpot:A", "ofs", "sfo"}, {"body:A", "ofs", "ofs"},
               {"tile:A", "os", "so"},      {"drag:A dragTimer:A", "fs", "oo"}};
  for (const auto& t : table)
    for (std::size_t i = 0; t.from[i] != '\0'; ++i) {
      const std::string from(1, t.from[i]);
      World(from).play(t.event + std::string(" =") + t.to[i]);
      if (t.event[0] == 'd') continue;
      // Elsewhere than on the workspace nothing happens to a container.
      for (bool hidden : {true, false}) {
        World elsewhere(from);
        elsewhere.at({0}).visible = !hidden;
        elsewhere.at({0}).Detached = !hidden;
        elsewhere.play(t.event + (" sounds= =" + from));
      }
      World("").play(t.event + std::string(" sounds="));
    }
}

TEST(ContainerRules, CommandsToggleEachContainerOnItsOwn) {
  playAll({{"fofoo", "foldAll =ofoff save=now sounds=fold"},
           {"sofos", "shrinkAll =osfso save=now sounds=expand,shrink"},
           // Also when the first to expand shrinks a later one back.
           {"ss", "rest:B keepOpen shrinkAll =os"}});
  // Both the tile and the folded state stand in a file: it opens.
  World both("f");
  both.at({0}).shrunk = true;
  both.play("foldBox:A");
  EXPECT_TRUE(both.at({0}).folded && both.at({0}).shrunk);
  both.play("shrinkAll =o");
}

TEST(ContainerRules, TitlesFoldByOneClickOrByTwo) {
  playAll({{"o", "foldOnClick:off title:A =o double:A =f save=later"},
           {"o", "foldOnClick:on title:A =f double:A =f"}});
}

TEST(ContainerRules, RestingMouseExpandsAfterTheDelay) {
  const struct {
    int delay;
    const char* interval;
  } cases[] = {{1, "100"}, {2, "400"}, {7, "100"}, {-1, "100"}};
  for (const auto& [delay, interval] : cases) {
    World w("s");
    w.settings.autoExpandDelay = delay;
    w.play("spot:A =s expandTimer=" + std::string(interval) +
           " spot:A started=0 expandTimer:A =o auto=A sounds=expand tileTimer=500 dontShrink=20");
  }
  World atOnce("ss");
  atOnce.play("spot:B expandTimer=100");
  atOnce.settings.autoExpandDelay = 0;
  atOnce.play("spot:A =os auto=A expandTimer=off");
  playAll({{"s", "autoExpand:off spot:A expandTimer=off"},
           {"o", "spot:A expandTimer=off"},
           // Another window came between; a click or a drag begins; on to another.
           {"ss",
            "spot:A expandTimer:- =ss spot:A down expandTimer:A =ss up spot:A spot:B "
            "expandTimer:B =so expandTimer=off"}});
}

TEST(ContainerRules, RestIsWithinTenPixelsInEachDirection) {
  for (const auto& [dx, dy] :
       {std::pair{0, 0}, {10, -10}, {-10, 10}, {11, 0}, {-11, 0}, {0, 11}, {0, -11}}) {
    SCOPED_TRACE(testing::Message() << dx << " " << dy);
    const bool rests = std::max(std::abs(dx), std::abs(dy)) < 11;
    const auto move = [&](World& w) {
      w.cursor.x += Pixels{dx};
      w.cursor.y += Pixels{dy};
    };
    World w("s");
    w.play("spot:A");
    move(w);
    // Another move begins another wait.
    w.play(rests ? "expandTimer:A =o" : "expandTimer:A =s rest:A =o");
    World drag("f");
    drag.play("drag:A");
    move(drag);
    drag.play(rests ? "dragTimer:A =o" : "dragTimer:A =f");
  }
  // The ends of the numbers are far from each other too.
  World ends("s");
  ends.cursor.x = Pixels{std::numeric_limits<int>::min()};
  ends.play("spot:A");
  ends.cursor.x = Pixels{std::numeric_limits<int>::max()};
  ends.play("expandTimer:A =s");
}

TEST(ContainerRules, AutoExpandedContainerShrinksBackForTheNext) {
  playAll({// Neither its own body nor the panel; what nobody expanded stays.
           {"sso", "rest:A over:A over:- =oso rest:B =soo spot:C =sso auto=- spot:C =sso"},
           // The expansion may push a container from under the mouse.
           {"so", "spot:A expandTimer:A over:B =oo dontShrink=20 dontShrink over:B =so"},
           // Folded, shrunk or detached by hand it no longer counts.
           {"so", "rest:A foldBox:A auto=- over:B =fo"},
           {"s", "rest:A shrinkAll =s rest:A =o"},
           {"so", "rest:A detach:A over:B =oo auto=-"},
           {"so", "rest:A load loaded over:B =oo"}});
  for (int settings = 0; settings < 4; ++settings) {
    World w("so");
    w.settings.autoExpand = (settings & 1) != 0;
    w.settings.autoShrink = (settings & 2) != 0;
    w.play(settings == 0 ? "tile:A auto=- over:B =oo" : "tile:A auto=A over:B =so");
  }
}

TEST(ContainerRules, KeepOpenActionsHoldForTwoSeconds) {
  for (const std::string action : {"press", "rightPress", "keepOpen"}) {
    World("sso").play("rest:A " + action + " suspendShrink=2000 over:C =oso");
    World("sso").play("rest:A " + action + " suspendShrink over:C =sso");
  }
  // Another that expands meanwhile ends it: by rest it takes the place of the first,
  // by a click it shrinks the first back.
  playAll({{"sso", "rest:A keepOpen rest:B =ooo over:C =oso"},
           {"sso", "rest:A keepOpen tile:B =soo auto=B"}});
}

TEST(ContainerRules, ContainersOfATilesSizeNeverShrinkBack) {
  for (const Size<Twips>& size : {Size<Twips>{{700}, {3000}}, {{2000}, {950}}, {{701}, {951}}}) {
    World w("so");
    w.at({0}).SetSize(size.width, size.height);
    // By hand they do, and open for a rest again.
    w.play(size.width == Twips{701} ? "rest:A =oo over:B =so"
                                    : "rest:A =oo over:B =oo button:A =so");
    w.play("rest:A =oo");
  }
}

TEST(ContainerRules, ClickOnABodyShrinksBackAndHoldsExpansion) {
  playAll({// The first was meant for the tile; the next shrinks once, not back and forth.
           {"ss",
            "rest:A hotSpot:A =os hotSpot:A =ss suspendExpand=500 tile:A spot:A expandTimer:A =ss "
            "spot:B expandTimer:B =ss auto=- suspendExpand rest:B =so tileTimer body:B =ss"},
           {"so", "rest:A tileTimer body:B =so"}});
}

TEST(ContainerRules, FreedSlotsAreForgotten) {
  World w("sso");
  w.play("rest:A spot:B drag:B remove:A remove:B remove:-");
  // Others move in.
  World fresh("os");
  w.workspace.containers.add(fresh.at({0}));
  w.workspace.containers.add(fresh.at({1}));
  w.play("expandTimer:B dragTimer:B over:C =oso");
}

TEST(ContainerRules, DragThatRestsOpensTheContainerUnderIt) {
  playAll({{"fso",
            "drag:A dragTimer=500 away:3 drag:A started=0 away:30 drag:A started=1 "
            "dragTimer:A =oso opened=A drag:B dragTimer:B =ooo opened=B drag:C "
            "dragTimer=off"},
           {"ff",
            "drag:A drag:- dragTimer=off drag:A drag:B dragTimer:A opened=- drag:A dragLeft "
            "started=1 dragTimer=off dragLeft started=0 =ff"}});
}

TEST(ContainerRules, SoundsAndTheirConditions) {
  playAll({{"o",
            "press sounds=container_mousedown release sounds=container_mouseup rightPress "
            "sounds= foldBox:A foldBox:A sounds=fold,fold load tile:A tile:A sounds=expand "
            "loaded tile:A tile:A sounds=shrink,expand"}});
}

TEST(ContainerRules, RoomIsThatOfTheSurface) {
  World w("fs");
  w.at({0}).rect.top = w.at({0}).savedRect.top = Twips{8000};
  w.surface.width = Twips{4000};
  w.play("foldAll tile:B");
  EXPECT_EQ(w.at({0}).rect.top, Twips{5350});
  EXPECT_EQ(w.at({1}).rect.left, Twips{1900});
  World unknown("s");  // nobody knows it
  unknown.rules.tileClicked({}, {0});
  EXPECT_EQ(unknown.at({0}).rect, unknown.at({0}).savedRect);
}

}  // namespace
}  // namespace varnowick
