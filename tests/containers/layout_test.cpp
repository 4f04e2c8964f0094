#include "containers/layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace varnowick {
namespace {

constexpr Size<Twips> kSurface{{4500}, {9000}};
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

TwipsRect at(float left, float top, float width, float height) {
  return {{left}, {top}, {width}, {height}};
}

clsContainer open(const TwipsRect& rect) {
  clsContainer c;
  c.savedRect = c.rect = rect;
  return c;
}

clsContainer folded(TwipsRect rect) {
  clsContainer c = open(rect);
  c.folded = true;
  c.rect.height = kTitleStripHeight;
  return c;
}

clsContainer tile(const TwipsRect& rect) {
  clsContainer c = open(rect);
  c.shrunk = true;
  c.rect.width = kShrunkSize.width;
  c.rect.height = kShrunkSize.height;
  return c;
}

TEST(Layout, UnfoldsTowardTheRoomThereIs) {
  const struct {
    const char* what;
    float top, height;
    float unfoldedTop, savedTop;
  } cases[] = {
      {"room below", 1000, 3000, 1000, 1000},
      {"ends exactly at the surface's end", 6000, 3000, 6000, 6000},
      {"one twip too far: the title's bottom stays", 6001, 3000, 3351, 3351},
      {"the title at the very bottom", 8650, 3000, 6000, 6000},
      {"upward, to the very top", 5650, 6000, 0, 0},
      {"not even upward: at the top", 4000, 6000, 0, 4000},
      {"taller than the surface, title at the top", 0, 12000, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    clsContainer box = folded(at(300, c.top, 2000, c.height));
    ASSERT_TRUE(unfold(box, kSurface));
    EXPECT_EQ(box.rect, at(300, c.unfoldedTop, 2000, c.height));
    EXPECT_EQ(box.savedRect, at(300, c.savedTop, 2000, c.height));
    ASSERT_TRUE(fold(box, kSurface));
    EXPECT_EQ(box.rect, at(300, c.top, 2000, 350)) << "the title goes back";
    EXPECT_EQ(box.savedRect, at(300, c.top, 2000, c.height));
    EXPECT_FALSE(box.CloseToEdgeY);
  }
}

TEST(Layout, FoldingOftenMovesNothing) {
  for (float top : {0.0F, 37.35F, 5650.7F, 6000.1F, 8333.3F, 8650.0F, 8999.0F})
    for (float height : {350.0F, 1111.1F, 3000.0F, 8999.9F, 20000.0F}) {
      clsContainer box = folded(at(-120, top, 1500.5F, height));
      for (int i = 0; i < 100; ++i) {
        unfold(box, kSurface);
        ASSERT_GE(box.rect.top, Twips{});
        fold(box, kSurface);
      }
      EXPECT_NEAR(box.rect.top.value, top, 0.01F) << height;
      EXPECT_EQ(box.rect.left, Twips{-120});
      EXPECT_EQ(box.savedRect.size(), (Size<Twips>{{1500.5F}, {height}}));
    }
}

TEST(Layout, FoldedTitleFollowsMovesAndStaysOnTheSurface) {
  // Moved while it was open, also when adding the distance was not exact.
  clsContainer moved = folded(at(0, 8000.3F, 2000, 3000.7F));
  unfold(moved, kSurface);
  moved.savedRect.top = moved.rect.top + Twips{-1000.1F} + Twips{0.0006F};
  moved.rect.top += Twips{-1000.1F};
  fold(moved, kSurface);
  EXPECT_NEAR(moved.rect.top.value, 7000.2F, 0.01F);
  // The surface has shrunk since; the mark may come from a file; nobody knows a surface.
  const struct {
    TwipsRect rect;
    Size<Twips> surface;
    float top;
  } rows[] = {{at(0, 6000, 2000, 3000), {{4500}, {5000}}, 4650},
              {at(0, 0, 2000, 12000), {{4500}, {5000}}, 4650},
              {at(0, 6000, 2000, 3000), {}, 8650}};
  for (const auto& row : rows) {
    clsContainer box = open(row.rect);
    box.CloseToEdgeY = true;
    fold(box, row.surface);
    EXPECT_EQ(box.rect.top, Twips{row.top});
  }
}

TEST(Layout, ExpandsWithinTheSurfaceAndShrinksToItsPlace) {
  const struct {
    const char* what;
    TwipsRect saved;
    Point<Twips> expanded;
  } cases[] = {
      {"fits", at(100, 200, 2000, 3000), {{100}, {200}}},
      {"fits exactly", at(2500, 6000, 2000, 3000), {{2500}, {6000}}},
      {"too far right", at(2501, 200, 2000, 3000), {{2400}, {200}}},
      {"too far down", at(100, 6001, 2000, 3000), {{100}, {5900}}},
      {"both", at(3800, 8050, 2000, 3000), {{2400}, {5900}}},
      {"larger than the surface", at(3800, 8050, 6000, 12000), {{0}, {0}}},
      {"leaves no margin", at(100, 50, 4450, 8950), {{0}, {50}}},
      {"as wide as a tile", at(100, 200, 700, 950), {{100}, {200}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    clsContainer box = tile(c.saved);
    for (int i = 0; i < 3; ++i) {
      ASSERT_TRUE(expand(box, kSurface));
      EXPECT_EQ(box.rect.topLeft(), c.expanded);
      EXPECT_EQ(box.rect.size(), c.saved.size());
      ASSERT_TRUE(shrink(box));
      EXPECT_EQ(box.rect, at(c.saved.left.value, c.saved.top.value, 700, 950));
      EXPECT_EQ(box.savedRect, c.saved);
      EXPECT_FALSE(box.CloseToEdge);
    }
  }
}

TEST(Layout, ShrinkingKeepsALeftThatTheUserChoseAndTheTitlesPlace) {
  clsContainer box = open(at(100, 200, 2000, 3000));
  box.rect.left = Twips{900};  // moved by someone who told the saved layout nothing
  shrink(box);
  EXPECT_EQ(box.rect.left, Twips{900});
  // Fold, unfold upward, shrink, expand, fold: the title is where it was.
  clsContainer up = folded(at(0, 8000, 2000, 3000)), top = folded(at(0, 4000, 2000, 6000));
  for (clsContainer* c : {&up, &top}) {
    const Twips title = c->rect.top;
    unfold(*c, kSurface);
    shrink(*c);
    expand(*c, c == &top ? Size<Twips>{{4500}, {30000}} : kSurface);
    fold(*c, kSurface);
    EXPECT_EQ(c->rect.top, title);
  }
}

// A bar that is scrolled down: what opens upward stops at the first line in sight.
TEST(Layout, OpensNoHigherThanTheFirstLineInSight) {
  for (const auto& [first, top] :
       {std::pair{5000.0F, 6000.0F}, {6000.0F, 6000.0F}, {6001.0F, 6001.0F}}) {
    clsContainer box = folded(at(0, 8650, 2000, 3000));
    unfold(box, kSurface, Twips{first});
    EXPECT_EQ(box.rect.top, Twips{top});
  }
  clsContainer box = tile(at(0, 8000, 2000, 3000));
  expand(box, kSurface, Twips{5901});
  EXPECT_EQ(box.rect.top, Twips{5901});
}

TEST(Layout, EveryStateHasOnlyItsOwnWaysOut) {
  const TwipsRect rect = at(100, 200, 2000, 3000);
  clsContainer o = open(rect), f = folded(rect), t = tile(rect), both = tile(rect);
  both.folded = true;  // from a file: a tile, which opens as one
  EXPECT_FALSE(unfold(o, kSurface));
  EXPECT_FALSE(expand(o, kSurface));
  for (clsContainer* c : {&f, &t, &both}) {
    const TwipsRect before = c->rect;
    EXPECT_FALSE(fold(*c, kSurface));
    EXPECT_FALSE(shrink(*c));
    EXPECT_FALSE(resize(*c, {.right = true}, {{500}, {}}, kLeastContainer, kSurface));
    EXPECT_EQ(c->rect, before);
  }
  EXPECT_FALSE(expand(f, kSurface));
  EXPECT_FALSE(unfold(t, kSurface));
  EXPECT_FALSE(unfold(both, kSurface));
  EXPECT_TRUE(expand(both, kSurface));
  EXPECT_TRUE(isOpen(both));
}

TEST(Layout, HotSpotLiesAtTheBodysLeftEnds) {
  // The body of the open box is 2650 high, the tile 950; where a note is shown the
  // lower end is its own.
  const clsContainer box = open(at(0, 0, 2000, 3000)), small = tile(at(0, 0, 2000, 3000));
  const struct {
    const clsContainer& c;
    float x, y;
    bool on, onWithNote;
  } cases[] = {{box, 100, 150, true, true},     {box, 229, 199, true, true},
               {box, 230, 199, false, false},   {box, 229, 200, false, false},
               {box, 0, 0, true, true},         {box, 100, 2350, false, false},
               {box, 100, 2351, true, false},   {box, 230, 2600, false, false},
               {box, -1, 100, false, false},    {box, 100, -1, false, false},
               {box, kNaN, 100, false, false},  {box, 100, kNaN, false, false},
               {small, 100, 650, false, false}, {small, 100, 651, true, false}};
  for (const auto& [container, x, y, on, onWithNote] : cases) {
    clsContainer c = container;
    EXPECT_EQ(IsOnShrinkHotSpot(c, {{x}, {y}}), on) << x << " " << y;
    c.noteVisible = true;
    EXPECT_EQ(IsOnShrinkHotSpot(c, {{x}, {y}}), onWithNote) << x << " " << y;
  }
}

TEST(Layout, DraggingABorderKeepsTheOppositeOne) {
  const Edges right{.right = true}, left{.left = true}, bottom{.bottom = true}, top{.top = true};
  const struct {
    const char* what;
    Edges edges;
    Point<Twips> distance;
    TwipsRect result;
  } cases[] = {
      {"wider", right, {{500}, {900}}, at(1000, 2000, 2500, 3000)},
      {"not beyond the surface", right, {{9000}, {}}, at(1000, 2000, 3500, 3000)},
      {"not under the least width", right, {{-9000}, {}}, at(1000, 2000, 1080, 3000)},
      {"to the left", left, {{-400}, {}}, at(600, 2000, 2400, 3000)},
      {"not over the left end", left, {{-5000}, {}}, at(0, 2000, 3000, 3000)},
      {"not over the right border", left, {{5000}, {}}, at(1920, 2000, 1080, 3000)},
      {"taller", bottom, {{700}, {700}}, at(1000, 2000, 2000, 3700)},
      {"not over the bottom border", top, {{}, {9000}}, at(1000, 3920, 2000, 1080)},
      {"not over the top", top, {{}, {-9000}}, at(1000, 0, 2000, 5000)},
      {"a corner", {.top = true, .right = true}, {{100}, {-100}}, at(1000, 1900, 2100, 3100)},
      {"no edge", {}, {{100}, {100}}, at(1000, 2000, 2000, 3000)},
      {"no distance", right, {{kNaN}, {kNaN}}, at(1000, 2000, 2000, 3000)},
      {"an enormous one", bottom, {{}, {kInf}}, at(1000, 2000, 2000, 7000)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    clsContainer box = open(at(1000, 2000, 2000, 3000));
    box.CloseToEdge = box.CloseToEdgeY = true;
    const bool changes = c.result != box.rect;
    EXPECT_EQ(resize(box, c.edges, c.distance, kLeastContainer, kSurface), changes);
    EXPECT_EQ(box.rect, c.result);
    EXPECT_EQ(box.savedRect, c.result);
    if (!changes) continue;
    // Placed by hand: its title folds where it is.
    fold(box, kSurface);
    EXPECT_EQ(box.rect.topLeft(), c.result.topLeft());
  }
  // What is small or partly off the surface already does not jump.
  const TwipsRect odd = at(-200, -100, 700, 400);
  const Edges all{.right = true, .bottom = true};
  EXPECT_EQ(resized(odd, all, {}, kLeastContainer, kSurface), odd);
  EXPECT_EQ(resized(odd, left, {{-50}, {}}, kLeastContainer, kSurface), odd);
  EXPECT_EQ(resized(at(10, 10, 300, 240), right, {{100}, {}}, {{240}, {240}}, kSurface),
            at(10, 10, 400, 240));
  EXPECT_EQ(resized(at(4000, 0, 2000, 400), right, {{500}, {}}, kLeastContainer, kSurface),
            at(4000, 0, 2000, 400));
}

TEST(Layout, ABoxIsDrawnInAnyDirection) {
  const TwipsRect box = at(1000, 2000, 2000, 3000);
  const struct {
    Point<Twips> from, to;
    TwipsRect result;
  } cases[] = {
      {{{1000}, {2000}}, {{3000}, {5000}}, box},
      {{{3000}, {5000}}, {{1000}, {2000}}, box},
      {{{3000}, {2000}}, {{1000}, {5000}}, box},
      // Too small: away from where it began.
      {{{2000}, {3000}}, {{2000}, {3000}}, at(2000, 3000, 1080, 1080)},
      {{{2000}, {3000}}, {{1900}, {2900}}, at(920, 1920, 1080, 1080)},
      {{{200}, {300}}, {{100}, {200}}, at(0, 0, 1080, 1080)},
      {{{4400}, {8900}}, {{4450}, {8950}}, at(3420, 7920, 1080, 1080)},
      // From outside, and from nowhere.
      {{{-500}, {-700}}, {{2000}, {3000}}, at(0, 0, 2000, 3000)},
      {{{2000}, {3000}}, {{99999}, {99999}}, at(2000, 3000, 2500, 6000)},
      {{{kNaN}, {kInf}}, {{2000}, {-kInf}}, at(0, 0, 2000, 9000)},
  };
  for (const auto& c : cases)
    EXPECT_EQ(drawnRect(c.from, c.to, kLeastContainer, kSurface), c.result)
        << c.from.x.value << " " << c.from.y.value;
  EXPECT_EQ(drawnRect({{100}, {100}}, {{9000}, {20000}}, kLeastContainer).size(),
            (Size<Twips>{{8900}, {19900}}));
}

bool usable(const TwipsRect& r) {
  for (const Twips t : {r.left, r.top, r.width, r.height})
    if (!(std::abs(t.value) <= 300000)) return false;
  return r.width >= kShrunkSize.width && r.height >= kTitleStripHeight;
}

TEST(Layout, NumbersThatAreNoneDoNotSpread) {
  const float bad[] = {kNaN, kInf, -kInf, 0, -1, -5000, 3e38F, 1e-30F};
  for (const float a : bad)
    for (const float b : bad)
      for (const Size<Twips>& surface : {kSurface, Size<Twips>{{a}, {b}}}) {
        const TwipsRect rect = at(a, b, b, a);
        clsContainer box = folded(rect);
        box.rect = rect;
        const auto isUsable = [&] { return usable(box.rect) && usable(box.savedRect); };
        EXPECT_TRUE(unfold(box, surface) && isUsable()) << a << " " << b;
        EXPECT_TRUE(fold(box, surface) && isUsable()) << a << " " << b;
        box = open(rect);
        EXPECT_TRUE(shrink(box) && isUsable()) << a << " " << b;
        EXPECT_TRUE(expand(box, surface) && isUsable()) << a << " " << b;
        resize(box, {.top = true, .right = true}, {{a}, {b}}, kLeastContainer, surface);
        EXPECT_TRUE(isUsable()) << a << " " << b;
        EXPECT_TRUE(usable(drawnRect({{a}, {b}}, {{b}, {a}}, kLeastContainer, surface)));
      }
}

}  // namespace
}  // namespace varnowick
