#include "ui/scene/folder_rows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/fakes/recording_canvas.h"
#include "ui/scene/painter.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

using K = ControlKind;

struct FolderRowsTest : testing::Test {
  Settings settings;
  Workspace workspace;
  WorkspaceScene objects{settings, workspace};
  Scene& scene = objects.scene();
  ContainerSlot slot;
  FolderView view{L"C:\\f"};

  FolderRowsTest() {
    workspace.containers.add();  // the folder's slot is not the first
    clsContainer c;
    c.name = L"Files";
    c.CopyPath = L"C:\\f";
    c.rect = c.savedRect = {{120}, {120}, {3000}, {350 + 1440}};
    slot = workspace.containers.add(c);
    FrameLayout layout;
    layout.window = {{3300}, {4500}};
    objects.build(layout);
  }
  void show(int count) {
    FolderListing listing{FolderState::Ready};
    for (int i = 0; i < count; ++i)
      listing.entries.push_back({L"file " + std::to_wstring(i) + L".txt"});
    view.apply(listing);
    layoutFolderRows(scene, slot, view);
  }
  int visibleRows() {
    const auto nodes = scene.visibleNodes();
    return static_cast<int>(std::count_if(nodes.begin(), nodes.end(),
                                          [](NodeId id) { return id.kind == K::FolderRow; }));
  }
  std::wstring textOfRow(int n) {
    const Node* node = scene.find(folderRowNode(slot, n));
    return node == nullptr || !node->visible ? L"(none)" : node->text;
  }
};

TEST_F(FolderRowsTest, OnlyRowsInSightAreNodes) {
  show(20'000);
  EXPECT_EQ(visibleRows(), 4) << "the last is seen in part";
  EXPECT_EQ(textOfRow(0), L"file 0.txt");
  view.scrollBy(15'000);
  layoutFolderRows(scene, slot, view);
  EXPECT_EQ(visibleRows(), 4);
  EXPECT_EQ(textOfRow(2), L"file 15002.txt");
  EXPECT_EQ(folderRowOf(folderRowNode(slot, 2), view), 15'002);
  EXPECT_EQ(nodeOfFolderRow(slot, view, 15'002), folderRowNode(slot, 2));
  EXPECT_EQ(nodeOfFolderRow(slot, view, 15'000), folderRowNode(slot, 0));
  for (const int unseen : {3, 14'999, 15'004})
    EXPECT_TRUE(nodeOfFolderRow(slot, view, unseen).none()) << unseen;
  const TwipsRect thumb = scene.windowRect({K::ScrollThumb, slot.index + 1});
  EXPECT_NE(scene.hitTest({thumb.left + 30_tw, thumb.top + 30_tw}).kind, K::ScrollThumb);
  EXPECT_TRUE(scene.shown({K::ScrollThumb, slot.index + 1}));
  show(1);
  EXPECT_EQ(visibleRows(), 1);
  EXPECT_EQ(folderRowOf(folderRowNode(slot, 2), view), -1);
  EXPECT_FALSE(scene.shown({K::ScrollThumb, slot.index + 1}));
  show(3);
  EXPECT_EQ(visibleRows(), 3);
}

TEST_F(FolderRowsTest, NodesLeadBackToTheirContainer) {
  EXPECT_EQ(folderContainerOf(folderListNode(slot)), slot);
  EXPECT_EQ(folderContainerOf(folderRowNode(slot, 999)), slot);
  EXPECT_EQ(folderContainerOf(folderRowNode({32766}, 0)), ContainerSlot{32766});
  for (const NodeId none : {folderRowNode(slot, 1000), folderRowNode({40000}, 0),
                            folderRowNode({}, 0), NodeId{K::Container, 1}})
    EXPECT_TRUE(folderContainerOf(none).none());
}

TEST_F(FolderRowsTest, RowsAreHitAndTheMarginBesideThemIsNot) {
  show(10);
  const TwipsRect list = scene.windowRect(folderListNode(slot));
  EXPECT_EQ(scene.hitTest({list.left + 100_tw, list.top + 340_tw}), folderRowNode(slot, 1));
  EXPECT_EQ(scene.hitTest({list.left - 30_tw, list.top + 340_tw}).kind, K::ContainerFrame)
      << "where the shrink hot spot is";
}

TEST_F(FolderRowsTest, WithoutEntriesTheListSaysWhy) {
  show(3);
  view.apply({FolderState::Missing});
  layoutFolderRows(scene, slot, view);
  EXPECT_EQ(visibleRows(), 0);
  RecordingCanvas canvas;
  paintScene(scene, InputState(scene), makePalette(settings), {}, {{0}, {0}, {220}, {300}}, canvas);
  EXPECT_NE(canvas.findText("Folder not found: C:\\f"), nullptr);
}

TEST_F(FolderRowsTest, IconsAreThoseOfFilesOnlyWhereFilesHaveTheirOwn) {
  const struct {
    const wchar_t* name;
    bool folder;
    const wchar_t* icon;
  } rows[] = {{L"a.txt", false, L"*.txt"},          {L"a.b.TXT", false, L"*.TXT"},
              {L"a.exe", false, L"C:\\f\\a.exe"},   {L"a.LNK", false, L"C:\\f\\a.LNK"},
              {L"plain", false, L"C:\\f\\plain"},   {L"dot.", false, L"C:\\f\\dot."},
              {L"sub.txt", true, L"C:\\f\\sub.txt"}};
  for (const auto& row : rows) {
    view.apply({FolderState::Ready, {{row.name, row.folder}}});
    layoutFolderRows(scene, slot, view);
    EXPECT_EQ(scene.find(folderRowNode(slot, 0))->image.name, row.icon);
  }
}

TEST_F(FolderRowsTest, AListTooFlatForARowStillShowsOne) {
  scene.find(folderListNode(slot))->rect.height = 20_tw;
  show(5);
  EXPECT_LE(visibleRows(), 1);
  layoutFolderRows(scene, {77}, view);  // no such list
}

}  // namespace
}  // namespace varnowick
