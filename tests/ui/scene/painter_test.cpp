#include "ui/scene/painter.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_canvas.h"
#include "tests/ui/scene/furnished_bar.h"
#include "ui/scene/detached_scene.h"

namespace varnowick {
namespace {

using K = ControlKind;

// All but the strokes of signs, which have pictures of their own.
const std::vector<std::string> kVerbs{"fill", "gradient", "box",   "frame",   "invert",
                                      "text", "image",    "focus", "unscaled"};

const SystemColours kSystem{rgb(0, 0, 0),    rgb(255, 255, 255), rgb(0, 255, 255), rgb(0, 0, 0),
                            rgb(16, 16, 16), rgb(240, 240, 240), rgb(0, 255, 0)};

struct PainterTest : testing::Test, FurnishedBar {
  Palette palette() const { return makePalette(settings); }
  RecordingCanvas paint(PixelRect dirty = {{0}, {0}, {300}, {560}}) {
    RecordingCanvas canvas;
    paintScene(scene, input, palette(), layout.density, dirty, canvas);
    EXPECT_TRUE(canvas.clips.empty());
    return canvas;
  }
};

std::string written(const Scene& scene, const InputState& input, const Palette& palette,
                    const std::vector<std::string>& verbs = kVerbs) {
  RecordingCanvas canvas;
  paintScene(scene, input, palette, {}, {{0}, {0}, {300}, {560}}, canvas);
  return canvas.written(verbs);
}

TEST_F(PainterTest, PaintsAReferenceWorkspace) {
  layout.collapsedTo = ScreenEdge::Left;
  layout.progress = L"Saving";
  layout.undoLine = L"Removed";
  layout.locked = layout.buttonImages = true;
  view.setFrame(layout);
  EXPECT_EQ(written(scene, input, palette()), R"(fill 0,0 300x560 #1d242e
frame 0,0 300x560 #11151b r0
gradient 0,0 300x30 #1b212a #171d25
fill 0,29 300x1 #11151b
text 8,0 168x30 Varnowick bold #c6cbd1 9pt midway
image 180,7 16x16 shrinkall
image 204,7 16x16 foldall
image 228,7 16x16 rss
image 252,7 16x16 unlock
image 276,7 16x16 dock
gradient 0,30 300x496 #1d242e #262e3a
text 11,77 82x17 Mail #ebf0f6 8pt centred
image 36,42 32x32 Mail
text 107,77 82x30 Quarterly report bold #ffff80 8pt centred wrapped
image 132,42 32x32 Quarterly report
text 35,122 68x22 Build server #ebf0f6 8pt midway
image 13,125 16x16 Build server
box 200,38 88x70 #33404e#293543 in #465a6e r4
image 204,42 80x62 C:\sea.png
box 8,150 192x100 #5f2525#531c1c in #7b4b4b r5
text 19,221 82x17 Notes #ffffff 8pt centred
image 44,186 32x32 Notes
box 8,150 192x23 #774545#613232 in #7b4b4b r5 square 12
fill 9,172 190x1 #312124
text 16,150 161x23 Work bold #ffffff 9pt midway
box 182,155 13x13 #774545 in #b9a0a0 r3
box 208,150 84x23 #33404e#293543 in #4a5662 r5
box 208,150 84x23 #4a627a#374d64 in #4a5662 r5
text 216,150 53x23 Folded bold #ebf0f6 9pt midway
box 274,155 13x13 #4a627a in #99a8b6 r3
box 208,182 47x63 #33404e#293543 in #4a5662 r5
box 208,182 47x63 #374d64#33404e in #4a5662 r5
image 217,199 28x28 feed
box 8,258 140x100 #33404e#293543 in #4a5662 r5
box 8,281 140x77 #fff4c8 in #4a5662 r5 square 3
text 16,289 26x15 Milk #3c3214 9pt
text 16,319 92x15 www.example.org #466b7a 9pt underlined
text 16,334 32x15 Bread #3c3214 9pt
box 141,285 3x55 #bbb089 r1
box 8,258 140x23 #4a627a#374d64 in #4a5662 r5 square 12
fill 9,280 138x1 #202b38
text 16,258 109x23 List bold #ebf0f6 9pt midway
box 130,263 13x13 #4a627a in #99a8b6 r3
box 156,258 136x80 #33404e#293543 in #4a5662 r5
text 172,289 112x21 Click to download headlines [F5] #a5adb6 8pt centred midway wrapped
text 164,318 120x20 Last Update 4 minutes ago #a5adb6 8pt midway
box 156,258 136x23 #4a627a#374d64 in #4a5662 r5 square 12
fill 157,280 134x1 #202b38
text 164,258 105x23 Feed bold #ebf0f6 9pt midway
box 274,263 13x13 #4a627a in #99a8b6 r3
box 8,366 284x96 #33404e#293543 in #4a5662 r5
frame 16,393 267x22 #4a5662 r5
image 21,396 16x16 *.txt
text 43,393 236x22 a.txt #ebf0f6 9pt midway
image 21,418 16x16 C:\Papers\b.exe
text 43,415 236x22 b.exe #ebf0f6 9pt midway
image 21,440 16x16 *.txt
text 43,437 236x22 c.txt #ebf0f6 9pt midway
box 286,410 5x47 #5a6470 r2
box 8,366 284x23 #4a627a#374d64 in #4a5662 r5 square 12
fill 9,388 282x1 #202b38
text 16,366 253x23 Papers bold #ebf0f6 9pt midway
box 274,371 13x13 #4a627a in #99a8b6 r3
fill 0,506 300x20 #1b212a
text 8,506 284x20 Saving #c6cbd1 8pt midway
box 1,487 298x18 #191f28 in #4fa3e0 r4
text 8,486 284x20 Removed #c6cbd1 8pt midway
gradient 0,526 300x34 #1b212a #171d25
fill 0,526 300x1 #11151b
text 48,526 50x34 Add #c6cbd1 9pt midway
text 131,526 67x34 Settings #c6cbd1 9pt midway
text 245,526 53x34 Menu #c6cbd1 9pt midway
box 294,30 5x380 #575f69 r2
fill 297,0 3x560 #4fa3e0
)");
}

// What a state of a node adds to the picture, and nothing that stays.
struct States : FurnishedBar {
  std::string all;
  bool highContrast = false;

  std::string now(const Scene& on, const InputState& state) {
    const Palette p =
        highContrast ? makeHighContrastPalette(settings, kSystem) : makePalette(settings);
    std::vector<std::string> verbs = kVerbs;
    if (&on != &scene) verbs.emplace_back("stroke");
    return written(on, state, p, verbs);
  }
  void mouse(const std::string& name, NodeId id, bool press = true) {
    const std::string before = now(scene, input);
    input.mouseMoved(middle(id));
    all += RecordingCanvas::added(name + " under the mouse", before, now(scene, input));
    if (press) {
      input.mousePressed(middle(id));
      all += RecordingCanvas::added(name + " pressed", before, now(scene, input));
      input.captureLost();
    }
    input.mouseLeft();
  }
  void select(const std::string& name, NodeId id) {
    const std::string before = now(scene, input);
    scene.find(id)->selected = true;
    all += RecordingCanvas::added(name + " selected", before, now(scene, input));
    scene.find(id)->selected = false;
  }
  void focus(const std::string& name, NodeId id) {
    const std::string before = now(scene, input);
    input.focus(id);
    const std::string byMouse = now(scene, input);
    EXPECT_EQ(byMouse.find("focus "), std::string::npos) << "the mouse needs no ring";
    input.keyUsed();
    all += RecordingCanvas::added(name + " focused", before, now(scene, input));
    input.mousePressed(middle(id));
    input.captureLost();
    input.mouseLeft();
    EXPECT_EQ(now(scene, input), byMouse) << "the mouse is in use again";
    if (id.kind == K::LstFolder) all += RecordingCanvas::added("by mouse", before, byMouse);
    input.focus({});
  }
};

TEST(PainterStates, ShowWhatTheMouseAndTheKeysAreAbout) {
  States s;
  const auto title = [](ContainerSlot slot) { return containerPart(K::ContainerLabel, slot); };
  const NodeId tool{K::PicDockToolbar, 0}, button{K::cmdAdd, 0}, thumb{K::ScrollThumb, 0};
  const NodeId mail = shortcutNode(s.mail), picture = pictureNode(s.picture);
  const NodeId tile = containerPart(K::ContainerIcon, s.tile);
  const NodeId feed = containerPart(K::LstRSS, s.feed);
  s.mouse("tool", tool);
  s.mouse("button", button);
  s.mouse("shortcut", mail);
  s.mouse("picture", picture, false);
  s.mouse("title", title(s.work), false);
  s.mouse("fold box", containerPart(K::lblFoldUnfold, s.work));
  s.mouse("body", containerPart(K::ContainerFrame, s.work), false);
  s.mouse("tile", tile, false);
  s.mouse("headlines", feed, false);
  s.mouse("row", folderRowNode(s.papers, 0));
  s.mouse("thumb", thumb, false);
  s.select("shortcut", shortcutNode(s.tool));
  s.select("picture", picture);
  s.select("container", containerNode(s.work));
  s.select("tile", containerNode(s.tile));
  const NodeId note = containerPart(K::ContainerNote, s.note), folder = folderListNode(s.papers);
  for (const auto& [name, id] : {std::pair{"tool", tool},
                                 {"button", button},
                                 {"shortcut", mail},
                                 {"picture", picture},
                                 {"title", title(s.work)},
                                 {"tile", tile},
                                 {"note", note},
                                 {"headlines", feed},
                                 {"folder", folder}})
    s.focus(name, id);
  for (const auto& [name, rect] : {std::pair{"line to drop on", s.box(1500, 600, 60, 900)},
                                   {"panel to drop on", s.box(0, 450, 4500, 7440)}}) {
    const std::string before = s.now(s.scene, s.input);
    s.scene.create({K::DropMark, 0}, s.scene.root()).rect = rect;
    s.all += RecordingCanvas::added(name, before, s.now(s.scene, s.input));
    s.scene.remove({K::DropMark, 0});
  }
  s.layout.undoLine = L"Removed";
  s.view.setFrame(s.layout);
  s.mouse("undo line", {K::UndoLine, 0}, false);
  s.focus("undo line", {K::UndoLine, 0});
  EXPECT_EQ(s.all, R"(tool under the mouse: box 273,4 22x22 #32373f r4
tool pressed: box 273,4 22x22 #32373f r4; invert 275,6 18x18
button under the mouse: box 3,529 94x28 #32373f r4; text 48,526 50x34 Add #ebf0f6 9pt midway
button pressed: box 3,529 94x28 #242a33 in #4fa3e0 r4; text 48,526 50x34 Add #ebf0f6 9pt midway
shortcut under the mouse: box 8,38 88x56 #323842 in #4a515a r5
shortcut pressed: box 8,38 88x56 #2e4f6b#345672 in #4fa3e0 r5
picture under the mouse: box 200,38 88x70 #33404e#293543 in #4fa3e0 r4
title under the mouse: box 8,150 192x23 #815252#6c4040 in #7b4b4b r5 square 12;
  box 159,152 16x19 #6c3c3c r3; box 139,152 16x19 #6c3c3c r3; box 119,152 16x19 #6c3c3c r3;
  fill 125,162 2x2 #ffffff
fold box under the mouse: box 182,155 13x13 #774545 in #cfbebe r3; box 159,152 16x19 #6c3c3c r3;
  box 139,152 16x19 #6c3c3c r3; box 119,152 16x19 #6c3c3c r3; fill 125,162 2x2 #ffffff
fold box pressed: box 182,155 13x13 #997474 in #cfbebe r3; box 159,152 16x19 #6c3c3c r3;
  box 139,152 16x19 #6c3c3c r3; box 119,152 16x19 #6c3c3c r3; fill 125,162 2x2 #ffffff
body under the mouse: fill 11,176 6x1 #a78787; fill 11,177 5x1 #a78787; fill 11,178 4x1 #a78787;
  fill 11,179 3x1 #a78787; fill 11,180 2x1 #a78787; fill 11,181 1x1 #a78787
tile under the mouse: box 208,182 47x63 #4b5f74#33404e in #4fa3e0 r5
headlines under the mouse:
  text 172,289 112x21 Click to download headlines [F5] #4fa3e0 8pt centred midway wrapped
row under the mouse: box 16,393 267x22 #45525f in #5b6773 r5
row pressed: box 16,393 267x22 #3d6280#365a78 in #4fa3e0 r5
thumb under the mouse: box 294,30 5x380 #7f858f r2
shortcut selected: box 8,122 99x22 #294259#304a62 in #4fa3e0 r5
picture selected: box 200,38 88x70 #33404e#293543 in #4fa3e0 r4
container selected: box 8,150 192x100 #5f2525#531c1c in #4fa3e0 r5;
  box 8,150 192x23 #774545#613232 in #4fa3e0 r5 square 12
tile selected: box 208,182 47x63 #33404e#293543 in #4fa3e0 r5;
  box 208,182 47x63 #374d64#33404e in #4fa3e0 r5
tool focused: focus 274,5 20x20
button focused: focus 4,530 92x26
shortcut focused: focus 10,40 84x52
picture focused: focus 201,39 86x68
title focused: focus 10,152 188x19
tile focused: focus 210,184 43x59
note focused: focus 9,282 138x75
headlines focused: focus 166,283 124x33
folder focused: box 16,393 267x22 #3a5871#324f69 in #4fa3e0 r5; focus 17,394 265x20
by mouse: box 16,393 267x22 #3a5871#324f69 in #4fa3e0 r5
line to drop on: box 100,40 4x60 #4fa3e0 r2
panel to drop on: frame 0,30 300x496 #4fa3e0 r3
undo line under the mouse: box 1,507 298x18 #32373f in #4fa3e0 r4;
  text 8,506 284x20 Removed #ebf0f6 8pt midway
undo line focused: focus 2,508 296x16
)");

  s.all.clear();
  s.highContrast = true;
  s.mouse("high contrast tool", {K::PicDockToolbar, 0}, false);
  s.mouse("button", {K::cmdAdd, 0}, false);
  s.mouse("shortcut", shortcutNode(s.mail));
  s.select("shortcut", shortcutNode(s.tool));
  s.mouse("title", title(s.work), false);
  s.select("tile", containerNode(s.tile));
  EXPECT_EQ(s.all, R"(high contrast tool under the mouse: box 273,4 22x22 #101010 in #00ffff r4
button under the mouse: box 3,529 94x28 #101010 in #00ffff r4;
  text 48,526 50x34 Add #ffffff 9pt midway
shortcut under the mouse: box 8,38 88x56 #000000 in #00ffff r5
shortcut pressed: box 8,38 88x56 #00ffff r5; text 11,77 82x17 Mail #000000 8pt centred
shortcut selected: box 8,122 99x22 #00ffff r5; text 35,122 68x22 Build server #000000 8pt midway
title under the mouse: box 159,152 16x19 #101010 r3; box 139,152 16x19 #101010 r3;
  box 119,152 16x19 #101010 r3; fill 125,162 2x2 #f0f0f0
tile selected: box 208,182 47x63 #000000 in #00ffff r5; box 208,182 47x63 #000000 in #00ffff r5
)");
}

// In a window of its own the title's buttons are of another kind.
TEST(PainterStates, ButtonsComeWithTheMouseOnTheTitle) {
  States s;
  s.workspace.containers[s.work].Detached = s.workspace.containers[s.work].DetachedUseTab = true;
  const auto titleOf = [&](int edge) {
    s.workspace.containers[s.work].DetachedTabDockedWhere = edge;
    DetachedScene window(s.settings, s.workspace, s.work);
    window.build({{2880}, {1500}}, {{2880}, {1500}}, {});
    InputState mouse{window.scene()};
    const std::string before = s.now(window.scene(), mouse);
    mouse.mouseMoved({{600}, {100}});
    return RecordingCanvas::added("title", before, s.now(window.scene(), mouse));
  };
  for (const int none : {-1, 5}) EXPECT_EQ(titleOf(none), titleOf(0)) << none;
  for (const int edge : {1, 2, 4}) EXPECT_NE(titleOf(edge), titleOf(0)) << edge;
  EXPECT_EQ(
      titleOf(0) + titleOf(3),
      R"(title: box 0,0 192x23 #815252#6c4040 in #7b4b4b r5 square 12; box 151,2 16x19 #6c3c3c r3;
  stroke 154,7 11x1 #ffffff; stroke 154,11 11x1 #ffffff; stroke 154,15 11x1 #ffffff;
  box 131,2 16x19 #6c3c3c r3; stroke 135,8 8x8 #ffffff; stroke 138,7 6x6 #ffffff;
  stroke 138,9 4x4 #ffffff; box 111,2 16x19 #6c3c3c r3; stroke 115,14 9x1 #ffffff
title: box 0,0 192x23 #815252#6c4040 in #7b4b4b r5 square 12; box 151,2 16x19 #6c3c3c r3;
  stroke 154,7 11x1 #ffffff; stroke 154,11 11x1 #ffffff; stroke 154,15 11x1 #ffffff;
  box 131,2 16x19 #6c3c3c r3; stroke 135,8 8x8 #ffffff; stroke 138,7 6x6 #ffffff;
  stroke 138,9 4x4 #ffffff; box 111,2 16x19 #6c3c3c r3; stroke 114,5 11x1 #ffffff;
  stroke 119,8 1x10 #ffffff; stroke 115,8 9x5 #ffffff
)");
}

struct CanvasWithoutPictures : RecordingCanvas {
  ImageState state = ImageState::Failed;
  ImageState imageState(const PixelRect&, const ImageRef&) override { return state; }
};

TEST_F(PainterTest, APictureThatCannotBeShownTellsItsPath) {
  const auto painted = [&](ImageState state, float height) {
    workspace.pictures[picture].rect.height = Twips{height};
    view.updatePicture(picture);
    CanvasWithoutPictures canvas;
    canvas.state = state;
    const PixelRect dirty = toPixels(scene.windowRect(pictureNode(picture)), Density{});
    paintScene(scene, input, palette(), {}, dirty, canvas);
    return canvas.written({"text", "image"});
  };
  const std::string sign = "image 228,50 32x32 picture\n";
  EXPECT_EQ(painted(ImageState::Failed, 1200),
            sign + "text 208,88 72x22 sea.png?C:\\sea.png #9fa5ad 8pt centred wrapped\n");
  EXPECT_EQ(painted(ImageState::Failed, 900), "image 228,52 32x32 picture\n") << "no room for it";
  EXPECT_EQ(painted(ImageState::Waiting, 1200), sign);
}

TEST_F(PainterTest, TouchesOnlyWhatLiesInTheDirtyRectangle) {
  const RecordingCanvas canvas = paint(toPixels(scene.windowRect(shortcutNode(inside)), Density{}));
  EXPECT_NE(canvas.findText("Notes"), nullptr);
  for (const char* elsewhere : {"Mail", "Varnowick", "Settings"})
    EXPECT_EQ(canvas.findText(elsewhere), nullptr) << elsewhere;
  EXPECT_TRUE(paint({{5}, {5}, {0}, {10}}).calls.empty());
}

TEST_F(PainterTest, ContentsAreClippedToTheirContainer) {
  workspace.shortcuts[inside].position = {{1800}, {1250}};  // across the lower edge
  view.updateShortcut(inside);
  const RecordingCanvas canvas = paint();
  const PixelRect body =
      toPixels(scene.windowRect(containerPart(K::ContainerFrame, work)), Density{});
  const auto* text = canvas.findText("Notes");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->seen, text->seen.intersect(body));
}

TEST_F(PainterTest, SettingsDecideOnTheDockStripAndTheWallpaper) {
  layout.collapsedTo = ScreenEdge::Left;
  settings.wallpaper = L"C:\\hills.jpg";
  const auto shows = [&](const Palette& p, const char* what) {
    return written(scene, input, p).find(what) != std::string::npos;
  };
  for (const bool on : {true, false}) {
    settings.visibleBorderCollapsed = settings.stretch = on;
    view.setFrame(layout);
    EXPECT_EQ(shows(palette(), "fill 297,0 3x560"), on);
    EXPECT_EQ(shows(palette(), "image 0,30 300x496 C:\\hills.jpg"), on);
    EXPECT_EQ(shows(palette(), "unscaled 0,30 300x496"), !on);
    EXPECT_FALSE(shows(makeHighContrastPalette(settings, kSystem), "hills"));
  }
}

// Also where places come from files, and from times when the font was smaller.
TEST_F(PainterTest, CaptionsStayInTheirCellsAndEndWhereTheRowBelowBegins) {
  settings.fontSize = 16;
  workspace.shortcuts[tool] = workspace.shortcuts[mail];
  workspace.shortcuts[tool].position = {{1560}, {1080}};
  WorkspaceScene unmeasured(settings, workspace);
  const Scene& all = unmeasured.scene();
  for (const int dpi : {96, 120, 144, 192, 288}) {
    layout.density = {dpi};
    unmeasured.build(layout);
    RecordingCanvas canvas;
    paintScene(all, InputState(all), palette(), layout.density,
               {{0}, {0}, {300 * dpi / 96}, {560 * dpi / 96}}, canvas);
    const auto cell = [&](ShortcutSlot slot) {
      return toPixels(all.windowRect(shortcutNode(slot)), layout.density);
    };
    const auto* text = canvas.findText("Mail");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->rect, text->rect.intersect(cell(mail))) << dpi;
    // Room for the line at its height, leading included.
    EXPECT_GE(text->rect.height.value * 72, 8 * dpi) << dpi;
    text = canvas.findText("Quarterly report");
    ASSERT_NE(text, nullptr);
    EXPECT_LE(text->rect.bottom(), cell(tool).top + Pixels{1}) << dpi;
    EXPECT_GT(cell(report).bottom(), cell(tool).top);
  }
  EXPECT_GE(unmeasured.shortcutCell(false).height, all.find(shortcutNode(report))->rect.height);
}

}  // namespace
}  // namespace varnowick
