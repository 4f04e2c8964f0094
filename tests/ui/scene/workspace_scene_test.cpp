#include "ui/scene/workspace_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/fakes/fake_text_measure.h"
#include "ui/scene/metrics.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using K = ControlKind;

TwipsRect at(float x, float y, float w, float h) { return {{x}, {y}, {w}, {h}}; }

struct WorkspaceSceneTest : testing::Test {
  Settings settings;
  Workspace workspace;
  FakeTextMeasure measure;
  WorkspaceScene view{settings, workspace, &measure};
  Scene& scene = view.scene();
  FrameLayout layout;

  ContainerSlot addContainer(TwipsRect rect, const wchar_t* name = L"Work") {
    clsContainer c;
    c.name = name;
    c.rect = c.savedRect = rect;
    return workspace.containers.add(c);
  }
  ShortcutSlot addShortcut(Panel panel, float x, float y, const wchar_t* caption = L"Mail") {
    clsShortcut s;
    s.FullCaption = caption;
    s.parent = panel;
    s.position = {{x}, {y}};
    return workspace.shortcuts.add(s);
  }
  TwipsRect inPanel(NodeId id) {
    const TwipsRect panel = scene.windowRect({K::picBack, 0});
    return scene.windowRect(id).translated(-panel.left, -panel.top);
  }
  bool shown(K kind, ContainerSlot slot) { return scene.shown(containerPart(kind, slot)); }
};

TEST_F(WorkspaceSceneTest, BarsAndPanelKeepToThePartOfTheWindowOnScreen) {
  const struct {
    Insets insets;
    TwipsRect title, panel, bottom;
  } rows[] = {
      {{}, at(0, 0, 4700, 450), at(0, 450, 4700, 10560), at(0, 11010, 4700, 510)},
      {{{200}, {}, {}, {}},
       at(200, 0, 4500, 450),
       at(200, 450, 4500, 10560),
       at(200, 11010, 4500, 510)},
      {{{}, {100}, {}, {}},
       at(0, 100, 4700, 450),
       at(0, 550, 4700, 10460),
       at(0, 11010, 4700, 510)},
      {{{}, {}, {200}, {200}},
       at(0, 0, 4500, 450),
       at(0, 450, 4500, 10360),
       at(0, 10810, 4500, 510)},
  };
  for (const auto& row : rows) {
    layout.insets = row.insets;
    view.setFrame(layout);
    EXPECT_EQ(scene.windowRect({K::TitleBar, 0}), row.title);
    EXPECT_EQ(scene.windowRect({K::picBack, 0}), row.panel);
    EXPECT_EQ(scene.windowRect({K::BottomBar, 0}), row.bottom);
  }
  // A bar too low for everything keeps its title and its panel.
  layout.insets = {};
  for (const float height : {1310.0F, 1311.0F}) {
    layout.window = {{4700}, {height}};
    view.setFrame(layout);
    EXPECT_EQ(scene.shown({K::BottomBar, 0}), height > 1310);
  }
  layout.window = {{100}, {60}};  // smaller than any bar
  view.setFrame(layout);
  EXPECT_FALSE(scene.shown({K::BottomBar, 0}));
  EXPECT_GE(scene.find({K::picBack, 0})->rect.height.value, 0);
}

TEST_F(WorkspaceSceneTest, TheStripIsWhereTheBarWillComeFrom) {
  const struct {
    ScreenEdge edge;
    TwipsRect strip;
  } rows[] = {{ScreenEdge::Left, at(4660, 0, 40, 11520)},
              {ScreenEdge::Right, at(0, 0, 40, 11520)},
              {ScreenEdge::Top, at(0, 11480, 4700, 40)},
              {ScreenEdge::Bottom, at(0, 0, 4700, 40)}};
  for (const auto& row : rows) {
    layout.collapsedTo = row.edge;
    view.setFrame(layout);
    EXPECT_TRUE(scene.shown({K::DockStrip, 0}));
    EXPECT_EQ(scene.windowRect({K::DockStrip, 0}), row.strip);
  }
  layout.collapsedTo = ScreenEdge::None;
  view.setFrame(layout);
  EXPECT_FALSE(scene.shown({K::DockStrip, 0}));
}

TEST_F(WorkspaceSceneTest, ContentsFollowTheirContainerUntouched) {
  const ContainerSlot slot = addContainer(at(120, 240, 3000, 2000));
  const ShortcutSlot link = addShortcut({slot}, 120, 480);
  view.build(layout);
  // Positions on a container count from its own corner, its title included.
  EXPECT_EQ(inPanel(shortcutNode(link)).topLeft(), (Point<Twips>{{240}, {720}}));
  const Point<Twips> window = scene.windowRect(shortcutNode(link)).topLeft();
  EXPECT_EQ(view.panelAt(window), (Panel{slot}));
  EXPECT_EQ(view.toPanel({slot}, window), (Point<Twips>{{120}, {480}}));
  EXPECT_EQ(view.bodyPoint(slot, window), (Point<Twips>{{120}, {130}}));
  measure.measured = 0;
  workspace.containers[slot].rect.left = {600};
  view.moveContainer(slot);
  EXPECT_EQ(inPanel(shortcutNode(link)).left, (Twips{720}));
  EXPECT_EQ(measure.measured, 0);
  // As a tile its whole box is the body, and elsewhere it is not here.
  workspace.containers[slot].shrunk = true;
  view.updateContainer(slot);
  EXPECT_EQ(scene.find(containerNode(slot))->rect, at(600, 240, 700, 950));
  EXPECT_EQ(view.bodyPoint(slot, scene.windowRect(containerNode(slot)).topLeft()), Point<Twips>{});
  workspace.containers[slot].Detached = true;
  view.updateContainer(slot);
  EXPECT_FALSE(scene.shown(containerNode(slot)) || scene.shown(shortcutNode(link)));
}

TEST_F(WorkspaceSceneTest, SlotsAreHiddenWithTheirObjectsAndReused) {
  const ContainerSlot slot = addContainer(at(0, 0, 3000, 2000));
  addShortcut(picBack, 0, 0, L"First");
  const ShortcutSlot link = addShortcut({slot}, 120, 480);
  view.build(layout);
  workspace.shortcuts.remove(link);
  view.updateShortcut(link);
  EXPECT_NE(scene.find(shortcutNode(link)), nullptr);
  EXPECT_FALSE(scene.shown(shortcutNode(link)));

  EXPECT_EQ(addShortcut(picBack, 120, 3000, L"Again"), link);
  view.updateShortcut(link);
  EXPECT_EQ(scene.find(shortcutNode(link))->parent, (NodeId{K::picBack, 0}));
  EXPECT_EQ(scene.find(shortcutNode(link))->text, L"Again");
  // Shortcuts lie behind containers, in the order of their slots.
  EXPECT_THAT(scene.find({K::picBack, 0})->children,
              ElementsAre(shortcutNode({0}), shortcutNode(link), containerNode(slot)));

  workspace = {};  // another file is loaded, with nothing in it
  view.build(layout);
  EXPECT_FALSE(scene.shown(containerNode(slot)));
  EXPECT_FALSE(scene.shown(shortcutNode({0})));
  EXPECT_EQ(view.contentHeight(), Twips{});
}

TEST_F(WorkspaceSceneTest, WhateverAFileSaysStaysWithinReach) {
  const float huge = std::numeric_limits<float>::max();
  const float nan = std::nanf("");
  const float inf = std::numeric_limits<float>::infinity();
  const TwipsRect rects[] = {
      at(0, 0, 0, 0),       at(-9000, -9000, -5, -5), at(huge, huge, huge, huge),
      at(-huge, 0, 10, 10), at(nan, nan, nan, nan),   at(inf, -inf, inf, 0)};
  for (const TwipsRect& rect : rects) {
    workspace = {};
    const ContainerSlot slot = addContainer(rect);
    const ShortcutSlot inside = addShortcut({slot}, rect.left.value, rect.top.value);
    const ShortcutSlot outside = addShortcut(picBack, rect.left.value, rect.top.value);
    const PictureSlot picture = workspace.pictures.add({L"C:\\a\\b.png", picBack, rect});
    view.build(layout);
    const auto reachable = [&](NodeId id) {
      view.scrollToShow(id);
      const TwipsRect seen = scene.seenRect(id);
      return seen.width >= Twips{100} && seen.height >= Twips{100};
    };
    EXPECT_TRUE(reachable(containerPart(K::ContainerLabel, slot)));
    EXPECT_TRUE(reachable(shortcutNode(outside)));
    EXPECT_TRUE(reachable(pictureNode(picture)));
    if (!std::isnan(rect.left.value)) {
      EXPECT_EQ(workspace.containers[slot].rect, rect);  // the record keeps its values
    }
    workspace.containers[slot].rect = workspace.containers[slot].savedRect = at(0, 0, 2000, 2000);
    view.build(layout);
    EXPECT_TRUE(reachable(shortcutNode(inside)));
  }
  // An object on a container that does not exist is not shown, nothing more.
  const ShortcutSlot orphan = addShortcut({ContainerSlot{99}}, 0, 0);
  view.updateShortcut(orphan);
  view.updateShortcut({-1});
  view.updateContainer({500});
  EXPECT_FALSE(scene.shown(shortcutNode(orphan)));
}

TEST_F(WorkspaceSceneTest, CaptionsOfAnyKindKeepTheirCell) {
  const std::wstring arabic = L"\x0645\x0631\x062D\x0628\x0627 \x0628\x0643";
  const std::wstring captions[] = {L"", L"Mail", arabic, std::wstring(1000, L'W'),
                                   std::wstring(1000, L'\n')};
  for (const std::wstring& caption : captions)
    for (const float size : {8.0F, 10.0F, -4.0F, 4000.0F, std::nanf("")}) {
      const ShortcutSlot slot = addShortcut(picBack, 120, 120, caption.c_str());
      workspace.shortcuts[slot].FontSize = size;
      view.build(layout);
      const Node& node = *scene.find(shortcutNode(slot));
      EXPECT_EQ(node.text, caption);
      EXPECT_LE(node.rect.right(), Twips{4700});
      EXPECT_LE(node.rect.height, Twips{2000});
      EXPECT_GE(node.look.points, 6);
      EXPECT_LE(node.look.points, 24);
      workspace.shortcuts.remove(slot);
    }
}

TEST_F(WorkspaceSceneTest, LongCaptionsGetASecondLineAndBigIconsABiggerCell) {
  const ShortcutSlot brief = addShortcut(picBack, 0, 0, L"Mail");
  const ShortcutSlot lengthy = addShortcut(picBack, 0, 0, L"A caption of many words");
  const auto heights = [&] {
    view.build(layout);
    return std::pair{scene.find(shortcutNode(brief))->rect.height.value,
                     scene.find(shortcutNode(lengthy))->rect.height.value};
  };
  EXPECT_EQ(heights(), (std::pair{845.0F, 1040.0F}));
  WorkspaceScene guessed(settings, workspace);  // where nothing measures
  guessed.build(layout);
  EXPECT_EQ(guessed.scene().find(shortcutNode(brief))->rect.height, Twips{850});
  settings.largeIconSize = 64;
  EXPECT_EQ(heights(), (std::pair{1325.0F, 1520.0F}));
  EXPECT_EQ(view.shortcutCell(false), (Size<Twips>{{1800}, {1530}}));
  EXPECT_EQ(view.shortcutCell(true), (Size<Twips>{{2700}, {330}}));
  // Letters of 16 pixels: six need a second line.
  settings.fontSize = 30;
  settings.largeIconSize = 32;
  workspace.shortcuts[brief].FullCaption = L"Wwwww";
  workspace.shortcuts[lengthy].FullCaption = L"Wwwwww";
  EXPECT_EQ(heights(), (std::pair{1235.0F, 1820.0F}));
  EXPECT_EQ(view.shortcutCell(true), (Size<Twips>{{2700}, {675}}));
  workspace.shortcuts[brief].FontSize = kSmallFontSize;
  EXPECT_EQ(heights().first, 675);
}

TEST_F(WorkspaceSceneTest, ScrollingStaysWithinTheContent) {
  addContainer(at(120, 9500, 3000, 2000));  // the panel is 10560 high
  view.build(layout);
  const Twips most{9500 + 2000 + 120 - 10560};
  for (const auto& [asked, given] :
       {std::pair{-50.0F, 0.0F}, {300.0F, 300.0F}, {1e30F, most.value}, {std::nanf(""), 0.0F}})
    EXPECT_EQ(view.scrollTo({asked}), (Twips{given}));
  EXPECT_TRUE(scene.shown({K::ScrollThumb, 0}));
  EXPECT_TRUE(view.scrollToShow(containerNode({0})));
  EXPECT_FALSE(view.scrollToShow(containerNode({0})));
  EXPECT_EQ(view.layout().scroll, most);
  EXPECT_FALSE(view.scrollToShow({K::cmdAdd, 0}));
  const TwipsRect thumb = scene.windowRect({K::ScrollThumb, 0});
  EXPECT_EQ(thumb.left, Twips{4610});
  EXPECT_NEAR(thumb.bottom().value, 11010, 0.1);
  EXPECT_NEAR(thumb.height.value, 10560.0 * 10560 / 11620, 0.1);
  layout.window.height = {2000};  // a thumb too short to be taken hold of
  view.setFrame(layout);
  EXPECT_EQ(scene.find({K::ScrollThumb, 0})->rect.height, Twips{300});
  layout.window.height = {11520};
  layout.scroll = most;
  view.setFrame(layout);
  // What is in sight ends where the panel does; a title out of sight has all the room.
  EXPECT_EQ(view.surfaceFor(workspace.containers[{0}]), (Size<Twips>{{4700}, {10560 + 1060}}));
  clsContainer above;
  above.rect = at(0, 1059, 100, 100);
  EXPECT_EQ(view.surfaceFor(above).height, Twips{150000});
  workspace.containers[{0}].rect.top = {100};
  view.moveContainer({0});
  view.scrollTo(view.layout().scroll);
  EXPECT_EQ(view.layout().scroll, Twips{});
  EXPECT_FALSE(scene.shown({K::ScrollThumb, 0}));
}

TEST_F(WorkspaceSceneTest, FeedsTellTheirStatusUntilAnother) {
  const ContainerSlot slot = addContainer(at(0, 0, 3000, 2000));
  workspace.containers[slot].RSS = true;
  view.build(layout);
  EXPECT_FALSE(shown(K::lblRSSLastUpdate, slot));
  view.setFeedPrompt(slot, L"Downloading latest headlines...");
  view.setFeedStatus(slot, L"Last Update 4 minutes ago");
  view.updateContainer(slot);  // keeps both
  EXPECT_EQ(scene.find(containerPart(K::LstRSS, slot))->text, L"Downloading latest headlines...");
  EXPECT_TRUE(shown(K::lblRSSLastUpdate, slot));
}

}  // namespace
}  // namespace varnowick
