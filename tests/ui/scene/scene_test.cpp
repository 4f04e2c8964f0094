#include "ui/scene/scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnowick {
namespace {

using testing::ElementsAre;
using K = ControlKind;

constexpr NodeId kPanel{K::picBack, 0};
constexpr NodeId kBox{K::Container, 3};
constexpr NodeId kBody{K::ContainerFrame, 3};
constexpr NodeId kLink{K::lblShortcut, 7};
constexpr NodeId kIcon{K::picShortcut, 7};

TwipsRect at(float x, float y, float w, float h) { return {{x}, {y}, {w}, {h}}; }
Point<Twips> pt(float x, float y) { return {{x}, {y}}; }

// A window with a panel that holds a box whose body holds a link.
struct SceneTest : testing::Test {
  Scene scene;
  InputState input{scene};

  SceneTest() {
    scene.find(scene.root())->rect = at(0, 0, 1000, 1000);
    Node& panel = scene.create(kPanel, scene.root());
    panel.rect = at(100, 100, 800, 500);
    panel.clipsChildren = true;
    scene.create(kBox, kPanel).rect = at(50, 50, 300, 300);
    Node& body = scene.create(kBody, kBox);
    body.rect = at(0, 40, 300, 260);
    body.clipsChildren = true;
    scene.create(kLink, kBody).rect = at(10, 10, 500, 50);
    Node& icon = scene.create(kIcon, kLink);
    icon.rect = at(5, 5, 20, 20);
    icon.hitTarget = false;
    scene.find(kLink)->focusable = scene.find(kBox)->focusable = true;
  }
};

TEST_F(SceneTest, HitTestFindsTheTopmostUnclippedTarget) {
  const struct {
    Point<Twips> point;
    NodeId hit;
  } rows[] = {
      {pt(-1, 5), {}},        {pt(1000, 5), {}},      {pt(5, 5), {K::Frame, 0}},
      {pt(101, 101), kPanel}, {pt(151, 151), kBox},   {pt(151, 241), kBody},
      {pt(161, 201), kLink},  {pt(168, 208), kLink},   // the icon lets the mouse through
      {pt(449, 201), kLink},  {pt(451, 201), kPanel},  // the body clips the link
  };
  for (const auto& row : rows) EXPECT_EQ(scene.hitTest(row.point), row.hit) << row.point.x.value;
}

TEST_F(SceneTest, MovingScrollingAndRaisingMoveWhatLiesBelow) {
  EXPECT_EQ(scene.windowRect(kIcon), at(165, 205, 20, 20));
  EXPECT_EQ(scene.seenRect(kLink), at(160, 200, 290, 50));
  scene.find(kBox)->rect.left = {60};
  scene.find(kPanel)->scroll.y = {100};
  EXPECT_EQ(scene.windowRect(kIcon), at(175, 105, 20, 20));
  EXPECT_EQ(scene.toNode(kLink, pt(175, 105)), pt(5, 5));
  EXPECT_EQ(scene.hitTest(pt(175, 105)), kLink);
  EXPECT_EQ(scene.hitTest(pt(175, 99)), (NodeId{K::Frame, 0}));  // scrolled out, clipped

  const NodeId other{K::Container, 4};
  scene.create(other, kPanel).rect = at(60, 50, 300, 300);
  EXPECT_EQ(scene.hitTest(pt(175, 105)), other);
  scene.raise(kBox);
  EXPECT_EQ(scene.hitTest(pt(175, 105)), kLink);
  EXPECT_THAT(scene.find(kPanel)->children, ElementsAre(other, kBox));
}

TEST_F(SceneTest, NodesKeepOneParentAndNeverFormACircle) {
  scene.create(kLink, kPanel);
  EXPECT_THAT(scene.find(kBody)->children, ElementsAre());
  EXPECT_EQ(scene.find(kLink)->rect, at(10, 10, 500, 50));
  scene.create(kBox, kBody);  // below itself
  EXPECT_EQ(scene.find(kBox)->parent, scene.root());
  scene.create({K::lblShortcut, 9}, {K::Container, 99});  // no such parent
  EXPECT_TRUE(scene.shown({K::lblShortcut, 9}));
  scene.remove(scene.root());
  EXPECT_NE(scene.find(scene.root()), nullptr);
}

TEST_F(SceneTest, IdsThatVanishResolveToNone) {
  for (const bool hideOnly : {true, false}) {
    input.mousePressed(pt(161, 201));
    input.capture(kLink);
    input.focus(kLink);
    EXPECT_EQ(input.hovered(), kLink);
    if (hideOnly)
      scene.find(kBox)->visible = false;
    else
      scene.remove(kBox);
    for (const NodeId id : {input.hovered(), input.pressed(), input.captured(), input.focused()})
      EXPECT_TRUE(id.none());
    EXPECT_FALSE(scene.shown(kIcon));
    EXPECT_TRUE(input.mouseReleased(pt(161, 201)).none());
    scene.find(kPanel)->visible = true;
    if (hideOnly) scene.find(kBox)->visible = true;
  }
  EXPECT_EQ(scene.find(kIcon), nullptr);
  EXPECT_TRUE(scene.windowRect(kIcon).empty());
}

TEST_F(SceneTest, AClickIsPressAndReleaseOnTheSameNode) {
  const auto click = [&](Point<Twips> down, Point<Twips> up) {
    input.mousePressed(down);
    input.mouseMoved(up);
    return input.mouseReleased(up);
  };
  EXPECT_EQ(click(pt(161, 201), pt(300, 210)), kLink);
  EXPECT_TRUE(click(pt(161, 201), pt(151, 151)).none());
  EXPECT_TRUE(input.mouseReleased(pt(161, 201)).none());  // never pressed
  input.mousePressed(pt(161, 201));
  input.captureLost();
  EXPECT_TRUE(input.mouseReleased(pt(161, 201)).none());
  scene.find(kLink)->enabled = false;
  EXPECT_TRUE(click(pt(161, 201), pt(161, 201)).none());
}

TEST_F(SceneTest, OnlyTheCapturedNodeIsHovered) {
  input.mousePressed(pt(161, 201));
  input.capture(kLink);
  EXPECT_TRUE(input.mouseMoved(pt(151, 151)));
  EXPECT_TRUE(input.hovered().none());
  EXPECT_FALSE(input.mouseMoved(pt(101, 101)));
  EXPECT_TRUE(input.mouseMoved(pt(161, 201)));
  EXPECT_EQ(input.hovered(), kLink);
  EXPECT_TRUE(input.mouseLeft());
  EXPECT_FALSE(input.mouseLeft());
}

TEST_F(SceneTest, FocusWalksVisibleEnabledStopsAndWraps) {
  scene.create({K::cmdAdd, 0}, scene.root()).focusable = true;
  std::vector<NodeId> forwards, backwards;
  for (int i = 0; i < 4; ++i) {
    input.focusNext(false);
    forwards.push_back(input.focused());
  }
  EXPECT_THAT(forwards, ElementsAre(kBox, kLink, (NodeId{K::cmdAdd, 0}), kBox));
  scene.find(kLink)->enabled = false;
  input.focusNext(true);
  EXPECT_EQ(input.focused(), (NodeId{K::cmdAdd, 0}));
  EXPECT_TRUE(input.focus(kPanel));  // not focusable: nothing has the focus
  EXPECT_TRUE(input.focused().none());
}

// Letters where nodes lie, 100 by 100 with a gap between them; D is wider and E higher.
TEST(Focus, GoesToTheNearestNodeInADirection) {
  const char* const rows[] = {"A.B..", "..C.D", "E...."};
  Scene scene;
  InputState input{scene};
  scene.find(scene.root())->rect = at(0, 0, 1000, 1000);
  const auto node = [](char c) { return NodeId{K::cmdAdd, c}; };
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 5; ++x)
      if (rows[y][x] != '.') {
        Node& made = scene.create(node(rows[y][x]), scene.root());
        made.rect = at(static_cast<float>(x) * 120, static_cast<float>(y) * 120,
                       rows[y][x] == 'D' ? 300 : 100, rows[y][x] == 'E' ? 340 : 100);
        made.focusable = true;
      }
  const struct {
    char from;
    const char* to;  // left, right, up, down; itself where there is none
  } cases[] = {{'A', "ABAE"}, {'B', "ADBC"}, {'C', "ADBE"}, {'D', "CDDD"}, {'E', "ECAE"}};
  for (const auto& c : cases) {
    std::string to;
    for (const Point<int> direction : {Point<int>{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
      input.focus(node(c.from));
      const bool moved = input.focusTowards(direction);
      to += static_cast<char>(input.focused().slot);
      EXPECT_EQ(moved, to.back() != c.from);
    }
    EXPECT_EQ(to, c.to) << c.from;
  }
  input.focus({});
  EXPECT_TRUE(input.focusTowards({0, 1}));
  EXPECT_EQ(input.focused(), node('A')) << "the first one";
  scene.find(node('B'))->enabled = false;
  EXPECT_FALSE(input.focusTowards({0, -1}));
}

}  // namespace
}  // namespace varnowick
