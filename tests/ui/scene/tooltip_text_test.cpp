#include "ui/scene/tooltip_text.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_text_measure.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

class TooltipTextTest : public testing::Test {
 protected:
  TooltipText at(NodeId node) {
    scene_.build({});
    return tooltipText(node, scene_.scene(), settings_, workspace_, &measure_, Density{});
  }
  TooltipText ofShortcut(clsShortcut s) {
    const wchar_t* refusal = nullptr;
    return at(shortcutNode(workspace_.addShortcut(std::move(s), refusal)));
  }
  ContainerSlot addContainer(const std::wstring& name) {
    clsContainer c;
    c.name = name;
    c.rect = c.savedRect = {{0}, {0}, {3000}, {2000}};
    return workspace_.containers.add(std::move(c));
  }

  Settings settings_;
  Workspace workspace_;
  FakeTextMeasure measure_;
  WorkspaceScene scene_{settings_, workspace_, &measure_};
};

clsShortcut shortcut(std::wstring caption, std::wstring path, std::wstring parameters = {},
                     std::wstring tags = {}) {
  clsShortcut s;
  s.FullCaption = std::move(caption);
  s.Path = std::move(path);
  s.Parameters = std::move(parameters);
  s.Tags = std::move(tags);
  return s;
}

TEST_F(TooltipTextTest, AShortcutTellsWhatItOpens) {
  EXPECT_EQ(ofShortcut(shortcut(L"Editor", L"C:\\e.exe", L"/n", L"work, text")),
            (TooltipText{L"Editor", L"C:\\e.exe /n\r\nTags: work, text"}));
  EXPECT_EQ(ofShortcut(shortcut(L"http://x.example/", L"http://x.example/")),
            (TooltipText{L"", L"http://x.example/"}));
  EXPECT_EQ(ofShortcut(shortcut(L"", L"", L"")), TooltipText{});
  settings_.showTags = false;
  EXPECT_EQ(ofShortcut(shortcut(L"Editor", L"C:\\e.exe", L"", L"work")),
            (TooltipText{L"Editor", L"C:\\e.exe"}));
}

TEST_F(TooltipTextTest, WhatStandsInFilesStaysWithinItsLines) {
  const TooltipText t = ofShortcut(shortcut(
      std::wstring(5000, L'c'), L"C:\\a\r\nTags: no" + std::wstring(5000, L'p') + L"end.exe", L"",
      std::wstring(5000, L't')));
  EXPECT_TRUE(t.title.empty()) << "too long for a title";
  EXPECT_LT(t.text.size(), 800U);
  EXPECT_EQ(t.text.find(L"\r\nTags: no"), std::wstring::npos);
}

TEST_F(TooltipTextTest, ALongPathKeepsItsEnd) {
  const std::wstring path = L"C:\\" + std::wstring(500, L'x') + L"\\report.txt";
  const TooltipText t = ofShortcut(shortcut(L"Report", path));
  EXPECT_EQ(t.text.substr(0, 3), L"C:\\");
  EXPECT_EQ(t.text.substr(t.text.size() - 10), L"report.txt");
}

TEST_F(TooltipTextTest, EveryButtonTellsItsAction) {
  for (const ControlKind kind :
       {ControlKind::PicShrinkExpandAllToolbar, ControlKind::PicFoldUnfoldAllToolbar,
        ControlKind::PicRSSToolbar, ControlKind::PicLockToolbar, ControlKind::PicUnlockToolbar,
        ControlKind::PicDockToolbar, ControlKind::cmdAdd, ControlKind::cmdSettings,
        ControlKind::cmdMenu})
    EXPECT_FALSE(at({kind, 0}).text.empty()) << static_cast<int>(kind);
  EXPECT_NE(at({ControlKind::PicLockToolbar, 0}).text.find(L"Ctrl+L"), std::wstring::npos);
  for (const ControlKind kind : {ControlKind::None, ControlKind::picBack, ControlKind::DockStrip})
    EXPECT_EQ(at({kind, 0}), TooltipText{});
}

TEST_F(TooltipTextTest, ATitleSpeaksOnlyWhenItHasSomethingToAdd) {
  const ContainerSlot plain = addContainer(L"Work");
  const ContainerSlot longOne = addContainer(std::wstring(80, L'w'));
  const ContainerSlot folder = addContainer(L"Music");
  workspace_.containers[folder].CopyPath = L"D:\\Music";
  workspace_.containers[folder].folded = true;
  EXPECT_EQ(at(containerPart(ControlKind::ContainerLabel, plain)), TooltipText{});
  EXPECT_EQ(at(containerPart(ControlKind::ContainerLabel, longOne)).text, std::wstring(80, L'w'));
  EXPECT_EQ(at(containerPart(ControlKind::ContainerLabel, folder)),
            (TooltipText{L"Music", L"D:\\Music"}));
  EXPECT_EQ(at(containerPart(ControlKind::lblFoldUnfold, folder)).text, L"Unfold");
  EXPECT_EQ(at(containerPart(ControlKind::ContainerIcon, plain)),
            (TooltipText{L"Work", L"Shrink/Expand"}));
  EXPECT_EQ(at(containerPart(ControlKind::ContainerLabel, {77})), TooltipText{});
  // In a window of its own its buttons do the opposite.
  const NodeId detach = containerPart(ControlKind::cmdConDetach, folder);
  EXPECT_EQ(at(detach).text.substr(0, 6), L"Detach");
  workspace_.containers[folder].Detached = true;
  EXPECT_EQ(at(detach).text.substr(0, 6), L"Attach");
  EXPECT_EQ(at(containerPart(ControlKind::lblFoldUnfold, folder)).text, L"Fold");
}

}  // namespace
}  // namespace varnowick
