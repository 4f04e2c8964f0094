// A bar with one of everything on it, as many tests of the scene need it: 300 by 560
// pixels, with objects of each kind and containers in each state.
#pragma once

#include "containers/layout.h"
#include "core/document.h"
#include "tests/fakes/fake_text_measure.h"
#include "ui/scene/folder_rows.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {

struct FurnishedBar {
  Document document;
  Settings& settings = document.settings;
  Workspace& workspace = document.workspace;
  FakeTextMeasure measure;
  WorkspaceScene view{settings, workspace, &measure};
  Scene& scene = view.scene();
  InputState input{scene};
  FrameLayout layout;
  FolderView files{L"C:\\Papers"};

  ShortcutSlot mail = add(picBack, L"Mail", 120, 120);
  ShortcutSlot report = add(picBack, L"Quarterly report", 1560, 120);
  ShortcutSlot tool = add(picBack, L"Build server", 120, 1380, kSmallFontSize);
  PictureSlot picture =
      workspace.pictures.add({L"C:\\sea.png", picBack, box(3000, 120, 1320, 1050)});
  ContainerSlot work = add(L"Work", box(120, 1800, 2880, 1500));
  ContainerSlot folded = add(L"Folded", box(3120, 1800, 1260, 900));
  ContainerSlot tile = add(L"News", box(3120, 2280, 1260, 1500));
  ContainerSlot note = add(L"List", box(120, 3420, 2100, 1500));
  ContainerSlot feed = add(L"Feed", box(2340, 3420, 2040, 1200));
  ContainerSlot papers = add(L"Papers", box(120, 5040, 4260, 1440));
  ContainerSlot low = add(L"Low", box(600, 8400, 2100, 1200));
  ShortcutSlot inside = add({work}, L"Notes", 120, 480);

  FurnishedBar() {
    workspace.shortcuts[report].FontBold = true;
    workspace.shortcuts[report].Color = 0x80FFFF;
    workspace.containers[work].backColor = rgb(90, 30, 30);
    workspace.containers[work].foreColor = rgb(255, 255, 255);
    fold(workspace.containers[folded]);
    shrink(workspace.containers[tile]);
    workspace.containers[tile].RSS = workspace.containers[feed].RSS = true;
    workspace.containers[note].noteVisible = true;
    workspace.containers[note].note = L"Milk\r\n\r\nwww.example.org\r\nBread\r\nSalt";
    workspace.containers[papers].CopyPath = L"C:\\Papers";
    layout.window = {{4500}, {8400}};
    view.build(layout);
    view.setFeedStatus(feed, L"Last Update 4 minutes ago");
    files.apply({FolderState::Ready, {{L"Old", true}, {L"a.txt"}, {L"b.exe"}, {L"c.txt"}}});
    files.selectOnly(1);
    layoutFolderRows(scene, papers, files);
  }
  static TwipsRect box(float left, float top, float width, float height) {
    return {{left}, {top}, {width}, {height}};
  }
  ShortcutSlot add(Panel panel, const wchar_t* caption, float x, float y, float fontSize = 10) {
    clsShortcut s;
    s.FullCaption = s.Path = caption;
    s.parent = panel;
    s.position = {{x}, {y}};
    s.FontSize = fontSize;
    return workspace.shortcuts.add(s);
  }
  ContainerSlot add(const wchar_t* name, const TwipsRect& rect) {
    clsContainer c;
    c.name = name;
    c.rect = c.savedRect = rect;
    return workspace.containers.add(c);
  }
  // The middle of a node, in the window.
  Point<Twips> middle(NodeId id) const {
    const TwipsRect r = view.scene().windowRect(id);
    return {r.left + r.width * 0.5F, r.top + r.height * 0.5F};
  }
};

}  // namespace varnowick
