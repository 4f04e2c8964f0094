#include "ui/scene/workspace_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST_F(WorkspaceEditorTest, ACancelledDragLeavesNoTrace) {
  press(first);
  const TwipsRect before = view.scene().windowRect(shortcutNode(first));
  editor.beginDrag();
  editor.drag(point(900, 900));
  editor.cancelDrag();
  EXPECT_EQ(view.scene().windowRect(shortcutNode(first)), before);
  EXPECT_EQ(view.scene().find({ControlKind::DragLayer, 0}), nullptr);
  EXPECT_EQ(document.history.undoName(), nullptr);
}

TEST_F(WorkspaceEditorTest, OpenWithLooksBeneathWhatIsDragged) {
  press(first);
  editor.beginDrag();
  const Point<Twips> target = middle(shortcutNode(second));
  editor.drag(point(1440, 0));
  EXPECT_EQ(editor.openWithTarget(target), second);
  editor.cancelDrag();
  press(second, true);
  editor.beginDrag();
  EXPECT_TRUE(editor.openWithTarget(target).none()) << "only one file can be opened with another";
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
