#include "containers/container_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ContainerSlot kNone{};
constexpr ContainerSlot A{0}, B{1}, C{2};
constexpr TimerId kExpand = TimerId::TimerExpandContainer;
constexpr TimerId kOnDrag = TimerId::TimerExpandUnfoldOnDrag;

// A panel with containers beside each other, a mouse, and timers that tick when
// they are told to.
struct World {
  Workspace workspace;
  Settings settings;
  ContainerRules rules{workspace, settings};
  Size<Twips> surface{{30000}, {9000}};
  Point<Pixels> cursor{{500}, {500}};
  bool buttonDown = false;
  std::map<TimerId, int> running;  // with their intervals
  std::vector<std::wstring> sounds;
  ContainerEffects last;

  // One letter a container: open, folded, shrunk.
  explicit World(const char* states) {
    for (; *states != '\0'; ++states) {
      clsContainer c;
      const float left = 2500.0F * static_cast<float>(workspace.containers.count());
      c.savedRect = c.rect = {{left}, {1000}, {2000}, {3000}};
      if (*states == 's') shrink(c);
      if (*states == 'f') fold(c);
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

  ContainerInputs in(ContainerSlot under = kNone) {
    return {cursor, under, [this](ContainerSlot) { return surface; }, buttonDown};
  }
  const ContainerEffects& apply(ContainerEffects effects) {
    for (const TimerAction& t : effects.timers) {
      running.erase(t.id);
      if (t.start) running[t.id] = t.interval > 0 ? t.interval : timerRow(t.id).interval;
    }
    sounds.insert(sounds.end(), effects.sounds.begin(), effects.sounds.end());
    EXPECT_EQ(effects.changed, !effects.reshaped.empty());
    return last = std::move(effects);
  }
  // As the window does it: over the container, and over its hot spot or tile.
  void moveOver(ContainerSlot slot, bool hotSpot = true) {
    apply(rules.mouseOverContainer(in(slot), slot));
    if (hotSpot) apply(rules.mouseOverHotSpot(in(slot), slot));
  }
  void move(int dx, int dy) {
    cursor.x += Pixels{dx};
    cursor.y += Pixels{dy};
  }
  bool tick(TimerId id, ContainerSlot under = kNone) {
    if (running.erase(id) == 0) return false;
    EXPECT_TRUE(timerRow(id).oneShot && ContainerRules::ownsTimer(id));
    apply(rules.tick(id, in(under)));
    return true;
  }
  void restOn(ContainerSlot slot) {
    moveOver(slot);
    tick(kExpand, slot);
    tick(TimerId::TimerDontShrink);
  }
  void clickBody(ContainerSlot slot, float x, float y) {
    if (!rules.pressMeantTile(slot)) apply(rules.bodyClicked(in(slot), slot, {{x}, {y}}));
  }
};

struct Transition {
  const char* event;
  void (*happens)(World& w);
  const char* from;
  const char* to;
};

TEST(ContainerRules, StatesChangeAsTheirTableSays) {
  const auto foldBox = [](World& w) { w.apply(w.rules.lblFoldUnfold_Click(w.in(A), A)); };
  const auto title = [](World& w) { w.apply(w.rules.titleClicked(w.in(A), A)); };
  const auto foldAll = [](World& w) { w.apply(w.rules.mnuFoldAll(w.in())); };
  const auto shrinkAll = [](World& w) { w.apply(w.rules.mnuShrinkAll(w.in())); };
  const auto hotSpot = [](World& w) { w.clickBody(A, 100, 150); };
  const auto besideIt = [](World& w) { w.clickBody(A, 300, 150); };
  const auto tile = [](World& w) { w.apply(w.rules.tileClicked(w.in(A), A)); };
  const auto rest = [](World& w) { w.restOn(A); };
  const Transition table[] = {
      {"fold box", foldBox, "ofs", "fos"},
      {"title", title, "ofs", "fos"},
      {"fold all", foldAll, "ofs", "fos"},
      {"shrink all", shrinkAll, "ofs", "sfo"},
      {"click on the hot spot", hotSpot, "ofs", "sfo"},
      {"click beside it", besideIt, "ofs", "ofs"},
      {"click on the tile", tile, "os", "so"},
      {"rest", rest, "ofs", "ofo"},
  };
  for (const Transition& t : table)
    for (std::size_t i = 0; t.from[i] != '\0'; ++i) {
      const std::string from(1, t.from[i]);
      SCOPED_TRACE(t.event + (" from " + from));
      World w(from.c_str());
      t.happens(w);
      EXPECT_EQ(w.states(), std::string(1, t.to[i]));
      // Elsewhere than on the workspace nothing happens to a container.
      for (bool hidden : {true, false}) {
        World elsewhere(from.c_str());
        elsewhere.at(A).visible = !hidden;
        elsewhere.at(A).Detached = !hidden;
        t.happens(elsewhere);
        EXPECT_EQ(elsewhere.states(), from);
        EXPECT_THAT(elsewhere.sounds, IsEmpty());
      }
      World none("");
      t.happens(none);
      EXPECT_THAT(none.sounds, IsEmpty());
    }
}

TEST(ContainerRules, CommandsToggleEachContainerOnItsOwn) {
  World fold("fofoo");
  fold.apply(fold.rules.mnuFoldAll(fold.in()));
  EXPECT_EQ(fold.states(), "ofoff");
  EXPECT_TRUE(fold.last.save);
  EXPECT_THAT(fold.sounds, ElementsAre(L"fold.wav"));
  EXPECT_EQ(fold.last.reshaped.size(), 5U);

  World shrunk("sofos");
  shrunk.apply(shrunk.rules.mnuShrinkAll(shrunk.in()));
  EXPECT_EQ(shrunk.states(), "osfso");
  EXPECT_TRUE(shrunk.last.save);
  EXPECT_THAT(shrunk.sounds, ElementsAre(L"expand.wav", L"shrink.wav"));

  // Also when the first to expand shrinks a later one back.
  World back("ss");
  back.restOn(B);
  back.apply(back.rules.keepOpen());
  back.apply(back.rules.mnuShrinkAll(back.in()));
  EXPECT_EQ(back.states(), "os");
}

TEST(ContainerRules, TitleFoldsOnlyWhenASettingSaysSo) {
  World w("o");
  w.settings.foldOnClick = false;
  w.apply(w.rules.titleClicked(w.in(A), A));
  EXPECT_EQ(w.states(), "o");
  // Both the tile and the folded state stand in a file: it opens.
  w.at(A).folded = w.at(A).shrunk = true;
  w.apply(w.rules.lblFoldUnfold_Click(w.in(A), A));
  EXPECT_TRUE(w.at(A).folded && w.at(A).shrunk);
  w.apply(w.rules.mnuShrinkAll(w.in()));
  EXPECT_TRUE(isOpen(w.at(A)));
}

struct DelayCase {
  int delay, interval;
};

TEST(ContainerRules, RestingMouseExpandsAfterTheDelay) {
  for (const DelayCase& c : {DelayCase{0, 0}, {1, 100}, {2, 400}, {7, 100}, {-1, 100}}) {
    SCOPED_TRACE(c.delay);
    World w("s");
    w.settings.autoExpandDelay = c.delay;
    w.moveOver(A);
    if (c.interval > 0) {
      EXPECT_EQ(w.states(), "s");
      ASSERT_EQ(w.running[kExpand], c.interval);
      w.moveOver(A);
      EXPECT_THAT(w.last.timers, IsEmpty()) << "one wait at a time";
      w.tick(kExpand, A);
    }
    EXPECT_EQ(w.states(), "o");
    EXPECT_EQ(w.rules.autoExpandedContainer(), A);
    EXPECT_THAT(w.sounds, ElementsAre(L"expand.wav"));
    EXPECT_FALSE(w.running.contains(kExpand));
  }
  World off("s");
  off.settings.autoExpand = false;
  off.moveOver(A);
  EXPECT_THAT(off.running, IsEmpty());
}

struct RestCase {
  int dx, dy;
  bool rests;
};

TEST(ContainerRules, RestIsWithinTenPixelsInEachDirection) {
  const RestCase cases[] = {{0, 0, true},    {10, -10, true}, {-10, 10, true}, {11, 0, false},
                            {-11, 0, false}, {0, 11, false},  {0, -11, false}};
  for (const RestCase& c : cases) {
    SCOPED_TRACE(testing::Message() << c.dx << " " << c.dy);
    World w("s");
    w.moveOver(A);
    w.move(c.dx, c.dy);
    w.tick(kExpand, A);
    EXPECT_EQ(w.states(), c.rests ? "o" : "s");
    // Another move begins another wait.
    w.moveOver(A);
    w.tick(kExpand, A);
    EXPECT_EQ(w.states(), "o");

    World drag("f");
    drag.apply(drag.rules.draggedOver(drag.in(A), A));
    drag.move(c.dx, c.dy);
    drag.tick(kOnDrag, A);
    EXPECT_EQ(drag.states(), c.rests ? "o" : "f");
  }
  // The ends of the numbers are far from each other too.
  World ends("s");
  ends.cursor.x = Pixels{std::numeric_limits<int>::min()};
  ends.moveOver(A);
  ends.cursor.x = Pixels{std::numeric_limits<int>::max()};
  ends.tick(kExpand, A);
  EXPECT_EQ(ends.states(), "s");
}

TEST(ContainerRules, WaitEndsWhenTheMouseIsElsewhere) {
  World w("ss");
  w.moveOver(A);
  w.tick(kExpand, kNone);  // another window came between
  EXPECT_EQ(w.states(), "ss");
  w.moveOver(A);
  w.buttonDown = true;
  w.tick(kExpand, A);
  EXPECT_EQ(w.states(), "ss") << "a click or a drag begins";
  w.buttonDown = false;
  w.moveOver(A);
  w.moveOver(B);
  w.tick(kExpand, B);
  EXPECT_EQ(w.states(), "so");
  EXPECT_FALSE(w.tick(kExpand, A));
}

TEST(ContainerRules, AutoExpandedContainerShrinksBackForTheNext) {
  World w("sso");
  w.restOn(A);
  w.moveOver(A, false);
  w.moveOver(kNone, false);
  EXPECT_EQ(w.states(), "oso") << "neither its own body nor the panel";
  w.restOn(B);
  EXPECT_EQ(w.states(), "soo");
  w.moveOver(C);
  EXPECT_EQ(w.states(), "sso");
  EXPECT_EQ(w.rules.autoExpandedContainer(), kNone);
  w.moveOver(C);
  EXPECT_EQ(w.states(), "sso") << "what nobody expanded stays";
}

TEST(ContainerRules, NothingShrinksBackUnlessASettingSaysSo) {
  for (int settings = 0; settings < 4; ++settings) {
    World w("so");
    w.settings.autoExpand = (settings & 1) != 0;
    w.settings.autoShrink = (settings & 2) != 0;
    w.apply(w.rules.tileClicked(w.in(A), A));
    EXPECT_EQ(w.rules.autoExpandedContainer(), settings == 0 ? kNone : A);
    w.moveOver(B);
    EXPECT_EQ(w.states(), settings == 0 ? "oo" : "so");
  }
}

// The expansion may push a container from under the mouse.
TEST(ContainerRules, ExpansionIsNotTakenForAMoveToAnotherContainer) {
  World w("so");
  w.moveOver(A);
  w.tick(kExpand, A);
  w.moveOver(B);
  EXPECT_EQ(w.states(), "oo");
  EXPECT_EQ(w.running[TimerId::TimerDontShrink], 20);
  w.tick(TimerId::TimerDontShrink);
  w.moveOver(B);
  EXPECT_EQ(w.states(), "so");
}

TEST(ContainerRules, KeepOpenActionsHoldForTwoSeconds) {
  void (*const actions[])(World&) = {
      [](World& w) { w.apply(w.rules.titlePressed(false)); },
      [](World& w) { w.apply(w.rules.titlePressed(true)); },
      [](World& w) { w.apply(w.rules.keepOpen()); },
  };
  for (const auto action : actions) {
    World w("sso");
    w.restOn(A);
    action(w);
    EXPECT_EQ(w.running[TimerId::TimerSuspendShrink], 2000);
    w.moveOver(C);
    EXPECT_EQ(w.states(), "oso");
    World expired("sso");
    expired.restOn(A);
    action(expired);
    expired.tick(TimerId::TimerSuspendShrink);
    expired.moveOver(C);
    EXPECT_EQ(expired.states(), "sso");
  }
  // Another that expands meanwhile ends it: by rest it takes the place of the
  // first, by a click it shrinks the first back.
  World rest("sso");
  rest.restOn(A);
  rest.apply(rest.rules.keepOpen());
  rest.restOn(B);
  EXPECT_EQ(rest.states(), "ooo");
  rest.moveOver(C);
  EXPECT_EQ(rest.states(), "oso");
  World click("sso");
  click.restOn(A);
  click.apply(click.rules.keepOpen());
  click.apply(click.rules.tileClicked(click.in(B), B));
  EXPECT_EQ(click.states(), "soo");
  EXPECT_EQ(click.rules.autoExpandedContainer(), B);
}

TEST(ContainerRules, ContainersOfATilesSizeNeverShrinkBack) {
  const Size<Twips> sizes[] = {{{700}, {3000}}, {{2000}, {950}}, {{701}, {951}}};
  for (const Size<Twips>& size : sizes) {
    World w("so");
    w.at(A).SetSize(size.width, size.height);
    w.restOn(A);
    ASSERT_EQ(w.states(), "oo");
    w.moveOver(B);
    EXPECT_EQ(w.states(), size.width == Twips{701} ? "so" : "oo");
    // By hand they do, and open for a rest again.
    if (w.states() == "oo") w.apply(w.rules.ShrinkExpand(w.in(A), A, {120}, {120}));
    EXPECT_EQ(w.states(), "so");
    w.restOn(A);
    EXPECT_EQ(w.states(), "oo");
  }
}

TEST(ContainerRules, ClickOnABodyShrinksBackAndHoldsExpansion) {
  World w("ss");
  w.restOn(A);
  w.clickBody(A, 100, 150);
  EXPECT_EQ(w.states(), "os") << "the click was meant for the tile";
  w.clickBody(A, 100, 150);
  EXPECT_EQ(w.states(), "ss") << "shrunk once, not back and forth";
  EXPECT_EQ(w.running[TimerId::TimerSuspendAutoExpand], 500);
  w.apply(w.rules.tileClicked(w.in(A), A));
  w.restOn(A);
  w.restOn(B);
  EXPECT_EQ(w.states(), "ss");
  EXPECT_EQ(w.rules.autoExpandedContainer(), kNone);
  w.tick(TimerId::TimerSuspendAutoExpand);
  w.restOn(B);
  EXPECT_EQ(w.states(), "so");
  w.tick(TimerId::TimerTileClick);
  w.clickBody(B, 1000, 1000);
  EXPECT_EQ(w.states(), "ss");
}

// Folding or shrinking the auto-expanded container by hand ends its part in it.
TEST(ContainerRules, StateChangedByHandIsForgotten) {
  World folded("so");
  folded.restOn(A);
  folded.apply(folded.rules.lblFoldUnfold_Click(folded.in(A), A));
  EXPECT_EQ(folded.rules.autoExpandedContainer(), kNone);
  folded.moveOver(B);
  EXPECT_EQ(folded.states(), "fo");

  World byCommand("s");
  byCommand.restOn(A);
  byCommand.apply(byCommand.rules.mnuShrinkAll(byCommand.in()));
  EXPECT_EQ(byCommand.states(), "s");
  byCommand.restOn(A);
  EXPECT_EQ(byCommand.states(), "o");

  World detached("so");
  detached.restOn(A);
  detached.at(A).Detached = true;
  detached.moveOver(B);
  EXPECT_EQ(detached.states(), "oo");
  EXPECT_EQ(detached.rules.autoExpandedContainer(), kNone);
}

TEST(ContainerRules, FreedSlotsAreForgotten) {
  World w("sso");
  w.restOn(A);
  w.moveOver(B);
  w.apply(w.rules.draggedOver(w.in(B), B));
  for (const ContainerSlot slot : {A, B, kNone}) {
    w.workspace.removeContainer(slot);
    w.rules.removed(slot);
  }
  // Others move in.
  World fresh("os");
  w.workspace.containers.add(fresh.at(A));
  w.workspace.containers.add(fresh.at(B));
  w.tick(kExpand, B);
  w.tick(kOnDrag, B);
  w.moveOver(C, false);
  EXPECT_EQ(w.states(), "oso");
}

TEST(ContainerRules, DragThatRestsOpensTheContainerUnderIt) {
  World w("fso");
  w.apply(w.rules.draggedOver(w.in(A), A));
  EXPECT_EQ(w.running[kOnDrag], 500);
  w.move(3, 3);
  w.apply(w.rules.draggedOver(w.in(A), A));
  EXPECT_THAT(w.last.timers, IsEmpty());
  w.move(30, 0);
  w.apply(w.rules.draggedOver(w.in(A), A));
  EXPECT_FALSE(w.last.timers.empty()) << "it rests from here on";
  w.tick(kOnDrag, A);
  EXPECT_EQ(w.states(), "oso");
  EXPECT_EQ(w.last.opened, A);

  w.apply(w.rules.draggedOver(w.in(B), B));
  w.tick(kOnDrag, B);
  EXPECT_EQ(w.states(), "ooo");
  EXPECT_EQ(w.last.opened, B);

  w.apply(w.rules.draggedOver(w.in(C), C));
  EXPECT_FALSE(w.running.contains(kOnDrag)) << "open already";
}

TEST(ContainerRules, DragThatGoesOnOpensNothing) {
  World w("ff");
  w.apply(w.rules.draggedOver(w.in(A), A));
  w.apply(w.rules.draggedOver(w.in(), kNone));
  EXPECT_FALSE(w.tick(kOnDrag, A));
  w.apply(w.rules.draggedOver(w.in(A), A));
  w.apply(w.rules.draggedOver(w.in(B), B));
  w.tick(kOnDrag, A);  // gone back within the tolerance
  EXPECT_EQ(w.last.opened, kNone);
  w.apply(w.rules.draggedOver(w.in(A), A));
  w.apply(w.rules.dragLeft());
  EXPECT_FALSE(w.tick(kOnDrag, A));
  EXPECT_EQ(w.states(), "ff");
}

TEST(ContainerRules, SoundsAndTheirConditions) {
  World w("o");
  w.apply(w.rules.titlePressed(false));
  w.apply(w.rules.titleReleased());
  w.apply(w.rules.titlePressed(true));
  EXPECT_THAT(w.sounds, ElementsAre(L"container_mousedown.wav", L"container_mouseup.wav"));
  w.sounds.clear();
  w.apply(w.rules.lblFoldUnfold_Click(w.in(A), A));
  w.apply(w.rules.lblFoldUnfold_Click(w.in(A), A));
  EXPECT_THAT(w.sounds, ElementsAre(L"fold.wav", L"fold.wav"));
  w.sounds.clear();
  // While loading only the expansion is heard.
  w.rules.loadingStarted();
  w.apply(w.rules.tileClicked(w.in(A), A));
  w.apply(w.rules.tileClicked(w.in(A), A));
  EXPECT_THAT(w.sounds, ElementsAre(L"expand.wav"));
  w.rules.loadingEnded();
  w.apply(w.rules.tileClicked(w.in(A), A));
  EXPECT_THAT(w.sounds, ElementsAre(L"expand.wav", L"shrink.wav"));
}

TEST(ContainerRules, LoadingForgetsTheContainersBefore) {
  World w("so");
  w.restOn(A);
  w.rules.loadingStarted();
  w.rules.loadingEnded();
  w.moveOver(B);
  EXPECT_EQ(w.states(), "oo");
}

TEST(ContainerRules, RoomIsThatOfTheSurface) {
  World w("fs");
  w.at(A).rect.top = w.at(A).savedRect.top = Twips{8000};
  w.surface.width = Twips{4000};
  w.apply(w.rules.mnuFoldAll(w.in()));
  EXPECT_EQ(w.at(A).rect.top, Twips{5350});
  w.apply(w.rules.tileClicked(w.in(B), B));
  EXPECT_EQ(w.at(B).rect.left, Twips{1900});
  // Nobody knows it.
  World unknown("s");
  unknown.apply(unknown.rules.tileClicked({}, A));
  EXPECT_EQ(unknown.at(A).rect, unknown.at(A).savedRect);
}

}  // namespace
}  // namespace varnowick
