#include "shortcuts/nearest_place.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/shortcuts/panel_world.h"

namespace varnowick {
namespace {

class NearestPlaceTest : public PanelWorld {
 protected:
  void SetUp() override {
    room = {{4920}, {9000}};
    cell.width = Twips{1200};
  }
  void move(ShortcutSlot slot, Point<Twips> by, Panel to, std::optional<Gap> gap = {}) {
    selection.selectNone();
    selection.select(slot);
    moveSelection(workspace, settings, measures, {selection, by, &to, gap});
  }
  void expectApart() {
    workspace.shortcuts.forEach([&](ShortcutSlot a, const clsShortcut& one) {
      const Twips width = measures.panelSize(one.parent).width;
      EXPECT_LE(rectOf(one).right().value, std::max(width, rectOf(one).width).value + 1);
      for (const TwipsRect& other : takenOn(workspace, measures, one.parent, false))
        EXPECT_FALSE(overlap(rectOf(one), other)) << a.index;
      workspace.shortcuts.forEach([&](ShortcutSlot b, const clsShortcut& two) {
        if (a.index >= b.index || one.parent != two.parent) return;
        EXPECT_FALSE(overlap(rectOf(one), rectOf(two))) << a.index << " and " << b.index;
      });
    });
  }
};

TEST_F(NearestPlaceTest, DropsLieNearestAndNothingEverLiesOnAnother) {
  const ContainerSlot box = addContainer({{240}, {2400}, {3000}, {3000}});
  workspace.containers[box].Detached = true;  // whatever its size, it covers nothing
  addContainer({{240}, {2400}, {3000}, {3000}});
  addContainer({{120}, {6000}, {3600}, {4000}}, true);
  workspace.pictures.add({L"", picBack, {{2400}, {120}, {1500}, {900}}});
  std::mt19937 dice(7);
  const auto roll = [&](int most) {
    return static_cast<float>(dice() % static_cast<unsigned>(most));
  };
  std::vector<ShortcutSlot> slots;
  for (int step = 0; step < 400; ++step) {
    SCOPED_TRACE(step);
    settings.align = roll(4) != 0;
    const Panel panel = roll(2) == 0 ? picBack : Panel{box};
    const Point<Twips> wanted{{roll(6000) - 600}, {roll(7000) - 600}};
    const bool small = roll(3) == 0;
    const int what = slots.size() < 25 ? 0 : static_cast<int>(roll(4));
    if (what == 0 && slots.size() < 40) {
      const Size<Twips> size = small ? smallCell : cell;
      const auto taken = takenOn(workspace, measures, panel, true);
      const Point<Twips> at = nearestPlace(measures, panel, size, wanted, settings.align, taken);
      // No free place of the grid is nearer.
      const Point<Twips> from = placeWithin(measures, panel, size, wanted, settings.align);
      const float way = std::hypot((at.x - from.x).value, (at.y - from.y).value);
      const PlaceLimits limits = placeLimits(measures, panel, size, true);
      for (Twips x = limits.first.x; x <= limits.last.x; x += measures.grid)
        for (Twips y = limits.first.y; y <= limits.last.y && y < Twips{20000}; y += measures.grid) {
          if (std::hypot((x - from.x).value, (y - from.y).value) + 1 >= way) continue;
          const TwipsRect nearer{x, y, size.width, size.height};
          EXPECT_TRUE(std::any_of(taken.begin(), taken.end(),
                                  [&](const TwipsRect& other) { return overlap(nearer, other); }))
              << x.value << " " << y.value << " is nearer than " << at.x.value << " " << at.y.value;
        }
      slots.push_back(add(panel, at, L"", small));
    } else if (what == 1) {
      TwipsRect& rect = workspace.containers[box].savedRect;
      const auto places = placesOf(workspace, {box});
      rect.width = Twips{1200 + roll(20) * 120};
      rect.height = Twips{1440 + roll(20) * 120};
      keepWithin(workspace, measures, {box}, settings.align, places);
    } else {
      const ShortcutSlot slot = slots[dice() % slots.size()];
      const ShortcutSlot other = slots[dice() % slots.size()];
      const Panel to = workspace.shortcuts[other].parent;
      move(slot, wanted, to, other == slot ? std::optional<Gap>() : Gap{other, small});
    }
    expectApart();
    if (HasFailure()) return;
  }
}

// Four places in a row: what is dragged goes before (<) or after (>) a neighbour, and the
// fewest make room.
TEST_F(NearestPlaceTest, ShortcutsPartForWhatIsPutBetweenThem) {
  const struct {
    const char* before;
    const char* drop;
    const char* after;
  } rows[] = {
      {"ABCD", "D<B", "ADBC"},      {"ABCD", "A>C", "BCAD"},       {"ABCD", "A<B", "ABCD"},
      {"A..B", "A<B", "..AB"},      {"AB.C", "C>A", "ACB."},       {"ABCDEF", "F<A", "FABCDE"},
      {"A..BCD", "A<C", "...BACD"}, {"ABCD....E", "E<B", "AEBCD"}, {"AB", "B>A", "AB"},
      {"A.CD", "D>A", "ADC"},
  };
  const auto at = [](std::size_t place) {
    return Point<Twips>{{120 + 1200 * static_cast<float>(place % 4)},
                        {120 + 1080 * static_cast<float>(place / 4)}};
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.before) + " " + row.drop);
    workspace = Workspace{};
    std::map<char, ShortcutSlot> slots;
    const std::string before = row.before;
    for (std::size_t i = 0; i < before.size(); ++i)
      if (before[i] != '.') slots[before[i]] = add(picBack, at(i));
    move(slots[row.drop[0]], {}, picBack, Gap{slots[row.drop[2]], row.drop[1] == '>'});
    std::string after;
    for (const auto& [letter, slot] : slots)
      for (std::size_t i = 0; i < 24; ++i)
        if (workspace.shortcuts[slot].position == at(i)) {
          after.resize(std::max(after.size(), i + 1), '.');
          after[i] = letter;
        }
    std::string expected = row.after;
    while (expected.back() == '.') expected.pop_back();
    EXPECT_EQ(after, expected);
  }
}

}  // namespace
}  // namespace varnowick
