#include "ui/scene/painter.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_canvas.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

using K = ControlKind;

struct PainterTest : testing::Test {
  Settings settings;
  Workspace workspace;
  WorkspaceScene view{settings, workspace};
  Scene& scene = view.scene();
  InputState input{scene};
  ContainerSlot box;
  ShortcutSlot mail, small;

  PainterTest() {
    clsContainer c;
    c.name = L"Work";
    c.rect = c.savedRect = {{120}, {1320}, {3000}, {1500}};
    box = workspace.containers.add(c);
    mail = add(picBack, L"Mail", 120, 120, 10);
    small = add({box}, L"Build server", 120, 480, 8);
    FrameLayout layout;
    layout.window = {{3300}, {4500}};
    view.build(layout);
  }
  ShortcutSlot add(Panel panel, const wchar_t* caption, float x, float y, float fontSize) {
    clsShortcut s;
    s.FullCaption = s.Path = caption;
    s.parent = panel;
    s.position = {{x}, {y}};
    s.FontSize = fontSize;
    return workspace.shortcuts.add(s);
  }
  RecordingCanvas paint(PixelRect dirty = {{0}, {0}, {220}, {300}}, int dpi = 96) {
    RecordingCanvas canvas;
    paintScene(scene, input, makePalette(settings), Density{dpi}, dirty, canvas);
    EXPECT_TRUE(canvas.clips.empty());
    return canvas;
  }
};

TEST_F(PainterTest, PaintsAReferenceWorkspace) {
  input.focus(containerPart(K::ContainerLabel, box));
  input.keyUsed();
  scene.find(shortcutNode(mail))->selected = true;
  EXPECT_EQ(paint().written({"gradient", "box", "text", "image", "focus"}),
            R"(gradient 0,0 220x30 #1b212a #171d25
text 8,0 88x30 Varnowick bold #c6cbd1
gradient 0,30 220x236 #1d242e #262e3a
box 8,38 88x57 #294259 #4fa3e0 0
text 11,77 82x18 Mail #ebf0f6
image 36,42 32x32 Mail
box 8,118 200x100 #33404e #4a5662 0
text 43,150 74x22 Build server #ebf0f6
image 21,153 16x16 Build server
box 8,118 200x23 #4a627a #4a5662 12
text 16,118 169x23 Work bold #ebf0f6
focus 10,120 196x19
box 190,123 13x13 #4a627a #99a8b6 0
gradient 0,266 220x34 #1b212a #171d25
text 35,266 36x34 Add #c6cbd1
text 91,266 54x34 Settings #c6cbd1
text 178,266 40x34 Menu #c6cbd1
)");
}

struct CanvasWithoutPictures : RecordingCanvas {
  ImageState state = ImageState::Failed;
  ImageState imageState(const PixelRect&, const ImageRef&) override { return state; }
};

TEST_F(PainterTest, APictureThatCannotBeShownTellsItsPath) {
  const PictureSlot picture =
      workspace.pictures.add({L"C:\\gone.png", picBack, {{120}, {1200}, {1800}, {1500}}});
  view.updatePicture(picture);
  const auto painted = [&](ImageState state) {
    CanvasWithoutPictures canvas;
    canvas.state = state;
    paintScene(scene, input, makePalette(settings), {}, {{0}, {0}, {220}, {300}}, canvas);
    return canvas.written({"text", "image"});
  };
  EXPECT_NE(painted(ImageState::Failed).find("gone.png?C:\\gone.png #"), std::string::npos);
  EXPECT_EQ(painted(ImageState::Waiting).find("C:\\gone.png"), std::string::npos);
  EXPECT_NE(painted(ImageState::Waiting).find("32x32 picture"), std::string::npos);
  EXPECT_NE(painted(ImageState::Ready).find("112x92 C:\\gone.png"), std::string::npos);
}

TEST_F(PainterTest, TouchesOnlyWhatLiesInTheDirtyRectangle) {
  const PixelRect dirty = toPixels(scene.windowRect(shortcutNode(small)), Density{96});
  const RecordingCanvas canvas = paint(dirty);
  EXPECT_NE(canvas.findText("Build server"), nullptr);
  for (const char* elsewhere : {"Mail", "Varnowick", "Settings"})
    EXPECT_EQ(canvas.findText(elsewhere), nullptr) << elsewhere;
  for (const auto& call : canvas.calls)
    if (call.verb == "box") {
      EXPECT_FALSE(call.seen.empty());
    }
  EXPECT_TRUE(paint({{5}, {5}, {0}, {10}}).calls.empty());
}

TEST_F(PainterTest, ContentsAreClippedToTheirContainer) {
  workspace.shortcuts[small].position = {{1800}, {1250}};  // across the lower edge
  view.updateShortcut(small);
  const RecordingCanvas canvas = paint();
  const PixelRect body =
      toPixels(scene.windowRect(containerPart(K::ContainerFrame, box)), Density{96});
  const auto* text = canvas.findText("Build server");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->seen, text->seen.intersect(body));
}

TEST_F(PainterTest, HoverPressSelectionAndFocusAreAllVisible) {
  const NodeId id = shortcutNode(mail);
  const TwipsRect rect = scene.windowRect(id);
  const PixelRect dirty = toPixels(rect, Density{96});
  const Point<Twips> inside{rect.left + Twips{30}, rect.top + Twips{30}};
  const std::vector<std::string> all{"box", "focus", "text"};
  std::vector<std::string> looks{paint(dirty).written(all)};
  input.mouseMoved(inside);
  looks.push_back(paint(dirty).written(all));
  input.mousePressed(inside);
  looks.push_back(paint(dirty).written(all));
  input.mouseReleased(inside);
  input.mouseLeft();
  input.focus(id);
  EXPECT_EQ(paint(dirty).written(all), looks.front()) << "the mouse needs no ring";
  input.keyUsed();
  looks.push_back(paint(dirty).written(all));
  input.focus({});
  scene.find(id)->selected = true;
  looks.push_back(paint(dirty).written(all));
  for (std::size_t i = 0; i < looks.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(looks[i], looks[j]) << i << " " << j;
  const TwipsRect button = scene.windowRect({K::PicDockToolbar, 0});
  input.mousePressed({button.left + Twips{30}, button.top + Twips{30}});
  EXPECT_EQ(paint().written({"focus"}), "") << "the mouse is in use again";
  EXPECT_NE(paint().written({"invert"}), "");
}

TEST_F(PainterTest, SettingsDecideOnTheDockStripAndTheWallpaper) {
  FrameLayout layout = view.layout();
  layout.collapsedTo = ScreenEdge::Left;
  settings.dockingColor = rgb(1, 2, 3);
  settings.wallpaper = L"C:\\hills.jpg";
  for (const bool visible : {true, false}) {
    settings.visibleBorderCollapsed = settings.stretch = visible;
    view.build(layout);
    const std::string drawn = paint().written({"fill", "image", "unscaled"});
    EXPECT_EQ(drawn.find("fill 217,0 3x300 #010203") != std::string::npos, visible) << drawn;
    EXPECT_NE(
        drawn.find(std::string(visible ? "image" : "unscaled") + " 0,30 220x236 C:\\hills.jpg"),
        std::string::npos)
        << drawn;
  }
}

TEST_F(PainterTest, EveryDensityKeepsCaptionsInTheirCells) {
  for (const int dpi : {96, 120, 144, 192, 288}) {
    const Density density{dpi};
    const PixelRect all{{0}, {0}, {220 * dpi / 96 + 1}, {300 * dpi / 96 + 1}};
    const RecordingCanvas canvas = paint(all, dpi);
    const PixelRect cell = toPixels(scene.windowRect(shortcutNode(mail)), density);
    const auto* text = canvas.findText("Mail");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->rect, text->rect.intersect(cell)) << dpi;
    // Room for the line at its height, leading included.
    EXPECT_GE(text->rect.height.value * 72, 8 * dpi) << dpi;
  }
}

// Places come from files, and from times when the font was smaller.
TEST_F(PainterTest, CaptionsEndWhereTheRowBelowBegins) {
  settings.fontSize = 16;
  const ShortcutSlot upper = add(picBack, L"Two lines of words", 1560, 120, 10);
  const ShortcutSlot lower = add(picBack, L"Below", 1560, 1080, 10);
  for (const int dpi : {96, 120, 144, 192}) {
    FrameLayout layout = view.layout();
    layout.density = {dpi};
    view.build(layout);
    const RecordingCanvas canvas = paint({{0}, {0}, {220 * dpi / 96}, {300 * dpi / 96}}, dpi);
    const auto* text = canvas.findText("Two lines of words");
    ASSERT_NE(text, nullptr);
    const PixelRect below = toPixels(scene.windowRect(shortcutNode(lower)), Density{dpi});
    EXPECT_LE(text->rect.bottom(), below.top + Pixels{1}) << dpi;
    EXPECT_GT(scene.windowRect(shortcutNode(upper)).bottom(),
              scene.windowRect(shortcutNode(lower)).top);
  }
  EXPECT_GE(view.shortcutCell(false).height, scene.find(shortcutNode(upper))->rect.height);
}

}  // namespace
}  // namespace varnowick
