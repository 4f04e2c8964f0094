#include "ui/scene/tooltip_text.h"

#include <gtest/gtest.h>

#include "tests/ui/scene/furnished_bar.h"

namespace varnowick {
namespace {

using K = ControlKind;

std::wstring letters(std::size_t count, wchar_t letter = L'w') {
  return std::wstring(count, letter);
}

struct TooltipTextTest : testing::Test, FurnishedBar {
  TooltipText at(NodeId node, bool measured = true) {
    return tooltipText(node, scene, settings, workspace, measured ? &measure : nullptr, Density{});
  }
  TooltipText ofShortcut(std::wstring caption, std::wstring path, std::wstring parameters = {},
                         std::wstring tags = {}) {
    clsShortcut& s = workspace.shortcuts[mail];
    s.FullCaption = std::move(caption);
    s.Path = std::move(path);
    s.Parameters = std::move(parameters);
    s.Tags = std::move(tags);
    return at(shortcutNode(mail));
  }
};

TEST_F(TooltipTextTest, AShortcutTellsWhatItOpens) {
  EXPECT_EQ(ofShortcut(L"Editor", L"C:\\e.exe", L"/n", L"work, text"),
            (TooltipText{L"Editor", L"C:\\e.exe /n\r\nTags: work, text"}));
  EXPECT_EQ(ofShortcut(L"http://x.example/", L"http://x.example/"),
            (TooltipText{L"", L"http://x.example/"}));
  EXPECT_EQ(ofShortcut(L"Help", L"", L"-a"), (TooltipText{L"Help", L"-a"}));
  EXPECT_EQ(ofShortcut(L"", L"", L""), TooltipText{});
  // What stands in files stays within its lines.
  EXPECT_EQ(ofShortcut(L" a\tb\x7F ", L"C:\\a\r\nTags: no"),
            (TooltipText{L"a b", L"C:\\a  Tags: no"}));
  settings.showTags = false;
  EXPECT_EQ(ofShortcut(L"Editor", L"C:\\e.exe", L"", L"work"),
            (TooltipText{L"Editor", L"C:\\e.exe"}));
  EXPECT_EQ(at(pictureNode(picture)), (TooltipText{L"", L"C:\\sea.png"}));
  EXPECT_EQ(at(shortcutNode({77})), TooltipText{});
}

TEST_F(TooltipTextTest, WhatIsTooLongKeepsItsBeginningAndItsEnd) {
  const std::wstring whole = letters(240, L'p');
  const std::wstring cut = letters(77, L'p') + L"..." + letters(150, L'p') + L"report.txt";
  const std::wstring tooLong = letters(500, L'p') + L"report.txt";
  EXPECT_EQ(ofShortcut(letters(60), whole), (TooltipText{letters(60), whole}));
  EXPECT_EQ(ofShortcut(letters(61), tooLong), (TooltipText{L"", letters(61) + L"\r\n" + cut}));
  EXPECT_EQ(ofShortcut(L"a", L"b", L"", tooLong), (TooltipText{L"a", L"b\r\nTags: " + cut}));
  EXPECT_EQ(ofShortcut(tooLong, tooLong), (TooltipText{L"", cut}));
  EXPECT_LT(ofShortcut(letters(5000), letters(5000), L"", letters(5000)).text.size(), 800U);
}

TEST_F(TooltipTextTest, EveryButtonTellsItsAction) {
  for (const K kind : {K::PicShrinkExpandAllToolbar, K::PicFoldUnfoldAllToolbar, K::PicRSSToolbar,
                       K::PicLockToolbar, K::PicUnlockToolbar, K::PicDockToolbar, K::cmdAdd,
                       K::cmdSettings, K::cmdMenu})
    EXPECT_FALSE(at({kind, 0}).text.empty()) << static_cast<int>(kind);
  EXPECT_NE(at({K::PicLockToolbar, 0}).text.find(L"(Ctrl+L)"), std::wstring::npos);
  EXPECT_EQ(at({K::cmdMenu, 0}).text, L"All commands");
  for (const K kind : {K::None, K::picBack, K::DockStrip}) EXPECT_EQ(at({kind, 0}), TooltipText{});
}

TEST_F(TooltipTextTest, ATitleSpeaksOnlyWhenItHasSomethingToAdd) {
  const auto part = [&](K kind, ContainerSlot slot) { return at(containerPart(kind, slot)); };
  EXPECT_EQ(part(K::ContainerLabel, papers), (TooltipText{L"Papers", L"C:\\Papers"}));
  EXPECT_EQ(part(K::ContainerLabel, {77}), TooltipText{});
  EXPECT_EQ(part(K::lblFoldUnfold, folded).text, L"Unfold");
  EXPECT_EQ(part(K::ContainerIcon, work), (TooltipText{L"Work", L"Shrink/Expand"}));
  EXPECT_EQ(part(K::ContainerFrame, papers), (TooltipText{L"", L"Shrink/Expand"}));
  EXPECT_EQ(part(K::ContainerIcon, papers),
            (TooltipText{L"Papers", L"C:\\Papers\r\nShrink/Expand"}));
  // In a window of its own its buttons do the opposite.
  EXPECT_EQ(part(K::cmdConDetach, folded).text.substr(0, 6), L"Detach");
  EXPECT_EQ(part(K::cmdConShrink, folded).text, L"Shrink to a tile");
  workspace.containers[folded].Detached = true;
  EXPECT_EQ(part(K::cmdConDetach, folded).text.substr(0, 6), L"Attach");
  EXPECT_EQ(part(K::cmdConShrink, folded).text, L"Hide");
  EXPECT_EQ(part(K::lblFoldUnfold, folded).text, L"Fold");
  EXPECT_EQ(part(K::cmdConMenu, folded).text, L"Commands for this container");
}

// Six pixels a letter, or seven where nothing measures.
TEST_F(TooltipTextTest, NamesAreToldThatDoNotFit) {
  const struct {
    bool measured;
    std::size_t title, row;  // the most letters that fit
  } rows[] = {{true, 26, 40}, {false, 23, 34}};
  for (const auto& row : rows)
    for (const std::size_t more : {0U, 1U}) {
      const std::wstring name = letters(row.title + more), file = letters(row.row + more);
      workspace.containers[work].name = name;
      EXPECT_EQ(at(containerPart(K::ContainerLabel, work), row.measured).text,
                more == 0 ? L"" : name);
      files.apply({FolderState::Ready, {{file}}});
      layoutFolderRows(scene, papers, files);
      EXPECT_EQ(at(folderRowNode(papers, 0), row.measured).text, more == 0 ? L"" : file);
    }
  EXPECT_EQ(at(folderRowNode(papers, 7)), TooltipText{});
}

}  // namespace
}  // namespace varnowick
