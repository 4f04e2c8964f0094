#include "ui/scene/workspace_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/fakes/fake_text_measure.h"
#include "ui/scene/detached_scene.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Point<Twips> point(float x, float y) { return {{x}, {y}}; }

struct WorkspaceEditorTest : testing::Test {
  Document document;
  FakeTextMeasure measure;
  WorkspaceScene view{document.settings, document.workspace, &measure};
  WorkspaceEditor editor{document, view};
  ContainerSlot box;
  ShortcutSlot first, second, inside;

  void SetUp() override {
    clsContainer container;
    container.rect = container.savedRect = {{0}, {3000}, {4200}, {3000}};
    box = document.workspace.containers.add(container);
    first = add(L"First", picBack, 120, 120);
    second = add(L"Second", picBack, 1560, 120);
    inside = add(L"Inside", {box}, 120, 480);
    view.build({});
    editor.sceneRebuilt();
  }
  ShortcutSlot add(const wchar_t* caption, Panel panel, float x, float y) {
    clsShortcut s;
    s.FullCaption = caption;
    s.Path = L"C:\\x.exe";
    s.parent = panel;
    s.position = point(x, y);
    return document.workspace.shortcuts.add(s);
  }
  // The middle of a node, in the window.
  Point<Twips> middle(NodeId id) {
    const TwipsRect r = view.scene().windowRect(id);
    return {r.left + r.width * 0.5F, r.top + r.height * 0.5F};
  }
  // As "left,top widthxheight", "none" for a node that is not shown.
  std::string place(NodeId id) {
    return view.scene().shown(id) ? text(view.scene().windowRect(id)) : "none";
  }
  static std::string text(const TwipsRect& r) {
    std::ostringstream out;
    out << r.left.value << ',' << r.top.value << ' ' << r.width.value << 'x' << r.height.value;
    return out.str();
  }
  clsShortcut& record(ShortcutSlot slot) { return document.workspace.shortcuts[slot]; }
  void press(ShortcutSlot slot, bool ctrl = false) { editor.pressed(shortcutNode(slot), ctrl); }
};

TEST_F(WorkspaceEditorTest, ADropMovesTheSelectionToThePanelUnderThePointer) {
  press(first);
  editor.beginDrag();
  const Point<Twips> from = middle(shortcutNode(first));
  const Point<Twips> to = point(from.x.value + 1440, from.y.value + 3600);
  const Point<Twips> way{to.x - from.x, to.y - from.y};
  const TwipsRect before = view.scene().windowRect(shortcutNode(first));
  editor.drag(way);
  editor.markDrop(to);
  EXPECT_EQ(view.scene().windowRect(shortcutNode(first)), before.translated(way.x, way.y));
  EXPECT_TRUE(view.scene().shown({ControlKind::DropMark, 0}));
  EXPECT_TRUE(record(first).parent.isMain()) << "a drag alone changes no record";

  const Moved moved = editor.drop(way, to);
  EXPECT_EQ(moved.refusal, nullptr);
  EXPECT_EQ(record(first).parent, Panel{box});
  EXPECT_TRUE(record(second).parent.isMain());
  EXPECT_FALSE(view.scene().shown({ControlKind::DropMark, 0}));
  const Node* node = view.scene().find(shortcutNode(first));
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->parent, containerPart(ControlKind::ContainerFrame, box));
  EXPECT_EQ(view.scene().hitTest(middle(shortcutNode(first))), shortcutNode(first));

  // Folded away it is no longer selected.
  document.workspace.containers[box].folded = true;
  view.updateContainer(box);
  editor.sceneRebuilt();
  EXPECT_TRUE(editor.selection().empty());
}

TEST_F(WorkspaceEditorTest, TheBandSelectsWhatItTouchesOnThePanelItBeganOn) {
  editor.pressed({ControlKind::picBack, 0}, false);
  editor.band(point(0, 460), point(4600, 8000));
  EXPECT_THAT(editor.selection().shortcuts(), ElementsAre(first, second));
  EXPECT_TRUE(view.scene().find(shortcutNode(first))->selected);
  editor.band(point(0, 460), point(1500, 8000));
  EXPECT_THAT(editor.selection().shortcuts(), ElementsAre(first));
  EXPECT_FALSE(view.scene().find(shortcutNode(second))->selected);
  editor.endBand();
  EXPECT_FALSE(view.scene().shown({ControlKind::RubberBand, 0}));
}

TEST_F(WorkspaceEditorTest, WhatIsAddedLiesWhereItWasDroppedAndIsSelected) {
  clsShortcut dropped;
  dropped.FullCaption = L"Dropped";
  dropped.Path = L"C:\\dropped.txt";
  const Point<Twips> at = middle(containerPart(ControlKind::ContainerFrame, box));
  const Added added = editor.add({dropped, dropped}, &at);
  ASSERT_EQ(added.slots.size(), 2U);
  for (const ShortcutSlot slot : added.slots) {
    EXPECT_EQ(record(slot).parent, Panel{box});
    EXPECT_TRUE(view.scene().shown(shortcutNode(slot)));
  }
  EXPECT_NE(record(added.slots[0]).position, record(added.slots[1]).position);
  EXPECT_EQ(editor.selection().shortcuts(), added.slots);

  document.settings.locked = true;
  EXPECT_THAT(editor.add({dropped}, &at).slots, IsEmpty());
}

// The window of a detached container has no other panel to paste to, to drop on or
// to select from, wherever the pointer is.
TEST_F(WorkspaceEditorTest, ADetachedWindowKeepsToItsContainer) {
  document.workspace.containers[box].Detached = true;
  DetachedScene scene(document.settings, document.workspace, box, &measure);
  scene.build({{4200}, {3000}}, {{4200}, {3000}}, {});
  WorkspaceEditor window(document, scene);
  window.selectAll();
  EXPECT_THAT(window.selection().shortcuts(), ElementsAre(inside));
  window.beginDrag();
  const Point<Twips> outside = point(-3000, -3000);
  window.drag(outside);
  window.drop(outside, outside);
  EXPECT_EQ(record(inside).parent, Panel{box});
  const Added added = window.add({clsShortcut{}}, nullptr);
  ASSERT_EQ(added.slots.size(), 1U);
  EXPECT_EQ(record(added.slots[0]).parent, Panel{box});
  EXPECT_TRUE(scene.scene().shown(shortcutNode(added.slots[0])));
}

TEST_F(WorkspaceEditorTest, WhatIsDraggedFollowsFromWhatWasPressed) {
  const struct {
    ControlKind pressed;
    bool locked;
    GestureKind expected;
  } cases[] = {
      {ControlKind::lblCaption, false, GestureKind::MoveBar},
      {ControlKind::DockStrip, false, GestureKind::MoveBar},
      {ControlKind::lblShortcut, false, GestureKind::MoveObjects},
      {ControlKind::ContainerFrame, false, GestureKind::RubberBand},
      {ControlKind::picBack, true, GestureKind::RubberBand},
      {ControlKind::lblShortcut, true, GestureKind::None},
      {ControlKind::lblCaption, true, GestureKind::None},
      {ControlKind::cmdMenu, false, GestureKind::None},
  };
  for (const auto& c : cases) {
    document.settings.locked = c.locked;
    EXPECT_EQ(editor.dragFrom({c.pressed, 0}, {}), c.expected) << static_cast<int>(c.pressed);
  }
}

TEST_F(WorkspaceEditorTest, BordersAreTakenHoldOfAndDraggedInTheGrid) {
  const PictureSlot picture =
      document.workspace.pictures.add({L"C:\\p.png", picBack, {{2040}, {1560}, {900}, {600}}});
  view.updatePicture(picture);
  const NodeId title = containerPart(ControlKind::ContainerLabel, box), sea = pictureNode(picture);
  const struct {
    NodeId node;
    float x, y;  // from the corner of its box
    const char* edges;
    Point<Twips> by{};
    bool align = true, free = false;
    const char* becomes = nullptr;
  } rows[] = {{title, 74, 1500, "l"},
              {title, 75, 1500, ""},
              {title, 4125, 1500, "r"},
              {title, 4124, 1500, ""},
              {title, 2000, 2925, "b"},
              {title, 2000, 2924, ""},
              {title, 2000, 10, ""},
              {title, 10, 10, "l"},
              {title, 10, 2820, "lb"},
              {title, 10, 2819, "l"},
              {title, 179, 2990, "lb"},
              {title, 180, 2990, "b"},
              {title, 4020, 2990, "rb"},
              {title, 4019, 2990, "b"},
              {title, 4201, 1500, ""},
              {sea, 450, 75, ""},
              {sea, 180, 10, "t"},
              {sea, 720, 10, "tr"},
              {sea, 10, 420, "lb"},
              {shortcutNode(inside), 10, 10, ""},
              {title, 4190, 1500, "r", point(130, 500), true, false, "0,3000 4320x3000"},
              {title, 4190, 1500, "r", point(130, 500), false, false, "0,3000 4330x3000"},
              {title, 10, 2990, "lb", point(130, 500), true, false, "120,3000 4080x3480"},
              {title, 2000, 2990, "b", point(0, 0), true, false, "0,3000 4200x3000"},
              // A picture keeps its shape.
              {sea, 890, 590, "rb", point(300, 10), true, false, "2040,1560 1200x800"},
              {sea, 890, 590, "rb", point(300, 10), true, true, "2040,1560 1200x600"},
              {sea, 179, 10, "lt", point(-290, 10), false, false, "1750,1366.67 1190x793.333"},
              {sea, 10, 419, "l", point(290, 0), false, false, "2330,1560 610x600"},
              {sea, 450, 74, "t", point(0, 5000), false, false, "2040,1920 900x240"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const bool isBox = row.node == title;
    const NodeId whole = isBox ? containerNode(box) : row.node;
    const TwipsRect r = view.scene().windowRect(whole);
    const Point<Twips> at{r.left + Twips{row.x}, r.top + Twips{row.y}};
    const Edges e = editor.borderAt(row.node, at);
    const std::string edges = std::string(e.left ? "l" : "") + (e.top ? "t" : "") +
                              (e.right ? "r" : "") + (e.bottom ? "b" : "");
    EXPECT_EQ(edges, row.edges);
    EXPECT_EQ(editor.dragFrom(row.node, at) == GestureKind::Resize, !edges.empty());
    if (row.becomes == nullptr) continue;
    const auto rect = [&] {
      return isBox ? document.workspace.containers[box].rect
                   : document.workspace.pictures[picture].rect;
    };
    const std::string before = text(rect());
    document.settings.align = row.align;
    for (const bool cancelled : {true, false}) {
      editor.beginResize(row.node, at);
      editor.resize(point(90, -90), row.free);
      editor.resize(row.by, row.free);
      EXPECT_EQ(text(rect()), row.becomes);
      EXPECT_EQ(view.scene().find(whole)->rect.size(), rect().size());
      if (cancelled) {
        editor.cancelResize();
        EXPECT_EQ(text(rect()), before);
      } else {
        EXPECT_EQ(editor.endResize(), before != row.becomes);
      }
      EXPECT_FALSE(editor.endResize());
    }
    if (document.history.undoName() != nullptr) document.history.undo(document.workspace);
    EXPECT_EQ(text(rect()), before);
    view.build({});
  }
  document.workspace.containers[box].folded = true;
  EXPECT_EQ(editor.borderAt(title, point(10, 3460)), Edges{}) << "a title has no size";
}

// Dragged along a row of shortcuts: what is marked, and so what a drop would do.
TEST_F(WorkspaceEditorTest, ADragMarksWhereItWouldGoIn) {
  const ShortcutSlot third = add(L"Third", picBack, 3000, 120);
  const ShortcutSlot small = add(L"Small", {box}, 120, 1680);
  add(L"Left", picBack, 120, 2000);
  add(L"Right", picBack, 2940, 2000);
  const ShortcutSlot lower = add(L"Lower", {box}, 120, 2130);
  record(small).FontSize = record(lower).FontSize = kSmallFontSize;
  view.build({});
  press(third);
  editor.beginDrag();
  std::string all;
  const auto mark = [&](float x, float y) {
    editor.markDrop(point(x, y));
    all += std::to_string(static_cast<int>(x)) + ',' + std::to_string(static_cast<int>(y)) + ": " +
           place({ControlKind::DropMark, 0}) + "\n";
  };
  for (const float x : {130.0F, 440.0F, 460.0F, 1100.0F, 1120.0F, 1430.0F, 1450.0F, 1550.0F,
                        1570.0F, 2870.0F, 2890.0F})
    mark(x, 900);
  for (const float x : {1600.0F, 2600.0F}) mark(x, 2800);  // too far from one of the two
  // A gap reaches as far as those beside it.
  for (const float y : {569.0F, 570.0F, 1414.0F, 1415.0F}) mark(1500, y);
  for (const float x : {119.0F, 120.0F, 1049.0F, 1050.0F}) mark(x, 5500);
  for (const float y : {3600.0F, 4960.0F, 5170.0F, 5290.0F, 5440.0F, 5600.0F}) mark(300, y);
  EXPECT_EQ(editor.openWithTarget(point(1110, 900)), first);
  EXPECT_TRUE(editor.openWithTarget(point(1111, 900)).none());
  EXPECT_EQ(all, R"(130,900: 90,570 60x845
440,900: 90,570 60x845
460,900: 120,570 1320x845
1100,900: 120,570 1320x845
1120,900: 1410,570 60x845
1430,900: 1410,570 60x845
1450,900: 1530,570 60x845
1550,900: 1530,570 60x845
1570,900: 1530,570 60x845
2870,900: 2850,570 60x845
2890,900: 0,450 4700x10560
1600,2800: 0,450 4700x10560
2600,2800: 0,450 4700x10560
1500,569: 0,450 4700x10560
1500,570: 1530,570 60x845
1500,1414: 1530,570 60x845
1500,1415: 0,450 4700x10560
119,5500: 0,3450 4200x3000
120,5500: 120,5550 930x60
1049,5500: 120,5550 930x60
1050,5500: 0,3450 4200x3000
300,3600: 0,3450 4200x3000
300,4960: 0,3450 4200x3000
300,5170: 120,5100 930x60
300,5290: 120,5130 930x330
300,5440: 120,5430 930x60
300,5600: 120,5550 930x60
)");
  editor.cancelDrag();
  EXPECT_EQ(place(shortcutNode(third)), "3000,570 1320x845");
  EXPECT_EQ(document.history.undoName(), nullptr);
  // Where the mark stands is where it goes in.
  press(third);
  editor.beginDrag();
  editor.drag(point(-2400, 0));
  editor.markDrop(point(460, 900));
  editor.markDrop(point(130, 900));
  editor.drop(point(-2400, 0), point(130, 900));
  EXPECT_EQ(record(third).position, point(120, 120));
  EXPECT_GT(record(first).position.x, record(third).position.x);
  press(second, true);
  editor.beginDrag();
  EXPECT_TRUE(editor.openWithTarget(point(460, 900)).none()) << "only one opens with another";
}

TEST_F(WorkspaceEditorTest, NewBoxesAreDrawnOrFindAPlace) {
  document.settings.align = true;
  editor.setDrawMode(true);
  EXPECT_EQ(editor.dragFrom({ControlKind::picBack, 0}, point(600, 7600)),
            GestureKind::DrawContainer);
  editor.showDrawn(point(600, 7600), point(2000, 9000));
  EXPECT_EQ(place({ControlKind::RubberBand, 0}), "600,7600 1400x1400");
  EXPECT_EQ(text(editor.drawn(point(600, 7600), point(2000, 9000))), "600,7200 1400x1400");
  EXPECT_EQ(place({ControlKind::RubberBand, 0}), "none");
  EXPECT_FALSE(editor.drawMode());
  EXPECT_EQ(text(editor.drawnAt(point(600, 7600))), "600,7200 2640x2400");
  EXPECT_EQ(text(editor.drawnAt(point(3000, 7600))), "2040,7200 2640x2400");
  EXPECT_EQ(text(editor.freePlace({{2000}, {1000}})), "120,1200 2000x1000");
  EXPECT_EQ(text(editor.freePlace({{2000}, {1000}}, {box})), "1440,480 2000x1000");
  document.settings.align = false;
  EXPECT_EQ(text(editor.drawn(point(615, 7600), point(2000, 9000))), "615,7150 1385x1400");

  const ContainerSlot added = editor.addContainer({}, {{600}, {7200}, {2000}, {1000}});
  EXPECT_EQ(place(containerNode(added)), "600,7650 2000x1000");
  EXPECT_THAT(editor.selectedContainers(), ElementsAre(added));
  const PictureSlot picture = editor.addPicture({L"", picBack, {{600}, {9000}, {900}, {600}}});
  EXPECT_EQ(place(pictureNode(picture)), "600,9450 900x600");
  EXPECT_TRUE(editor.selection().contains(picture));
  document.settings.locked = true;
  EXPECT_TRUE(editor.addContainer({}, {}).none());
  EXPECT_TRUE(editor.addPicture({}).none());
}

TEST_F(WorkspaceEditorTest, WhatIsRemovedIsNeitherShownNorSelected) {
  const PictureSlot picture =
      document.workspace.pictures.add({L"", {box}, {{1500}, {600}, {600}, {600}}});
  view.updatePicture(picture);
  editor.selectOnly(inside);
  editor.selectAll();  // on the panel of what is selected
  EXPECT_TRUE(editor.selection().contains(inside) && editor.selection().contains(picture));
  EXPECT_FALSE(editor.selection().contains(first));
  editor.removeContainers({box});
  EXPECT_TRUE(editor.selection().empty());
  for (const NodeId id : {shortcutNode(inside), pictureNode(picture), containerNode(box)})
    EXPECT_EQ(place(id), "none");
  editor.selectAll();
  EXPECT_THAT(editor.selection().shortcuts(), ElementsAre(first, second));
  editor.carryOut(editor.planDelete());
  EXPECT_EQ(place(shortcutNode(first)), "none");
  EXPECT_EQ(document.workspace.shortcuts.count(), 0);
}

TEST_F(WorkspaceEditorTest, ContainersAreDraggedByTheirTitles) {
  editor.pressed(containerPart(ControlKind::ContainerLabel, box), false);
  EXPECT_EQ(editor.dragFrom(containerPart(ControlKind::ContainerLabel, box), point(2000, 3500)),
            GestureKind::MoveContainers);
  for (const bool dropped : {false, true}) {
    editor.beginContainerDrag();
    editor.dragContainers(point(120, 240));
    EXPECT_EQ(place(containerNode(box)), "120,3690 4200x3000");
    EXPECT_EQ(document.workspace.containers[box].rect.top, Twips{3000});
    if (dropped)
      editor.dropContainers(point(120, 240));
    else
      editor.cancelDrag();
    EXPECT_EQ(place(containerNode(box)), dropped ? "120,3690 4200x3000" : "0,3450 4200x3000");
  }
  EXPECT_EQ(document.workspace.containers[box].savedRect.top, Twips{3240});
  EXPECT_EQ(place(shortcutNode(inside)).substr(0, 8), "240,4170");
}

TEST_F(WorkspaceEditorTest, WhatIsDroppedOnAnotherWindowGoesOver) {
  const ContainerSlot away = document.workspace.containers.add();
  document.workspace.containers[away].Detached = true;
  DetachedScene window(document.settings, document.workspace, away);
  window.build({{3000}, {3000}}, {{3000}, {3000}}, {});
  WorkspaceEditor other(document, window);
  const ShortcutSlot slot = document.workspace.shortcuts.add();
  view.updateShortcut(slot);
  editor.selectOnly(slot);

  const Moved moved = other.take(editor, {{600}, {1200}});
  ASSERT_EQ(moved.objects.size(), 1U);
  EXPECT_EQ(document.workspace.shortcuts[slot].parent, Panel{away});
  EXPECT_TRUE(window.scene().shown(shortcutNode(slot)));
  EXPECT_FALSE(view.scene().shown(shortcutNode(slot)));
  EXPECT_TRUE(editor.selection().empty());
  EXPECT_TRUE(other.selection().contains(slot));
}

}  // namespace
}  // namespace varnowick
