#include "ui/scene/note_view.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_text_measure.h"
#include "tests/fakes/recording_canvas.h"

namespace varnowick {
namespace {

class NoteViewTest : public testing::Test {
 protected:
  NoteViewTest() {
    scene_.find(scene_.root())->rect = {{}, {}, {6000}, {6000}};
    Node& note = scene_.create(id_, scene_.root());
    note.rect = {{300}, {300}, {1500}, {1500}};  // 20, 20, 100 x 100 pixels
  }
  Node& note() { return *scene_.find(id_); }
  void show(const std::wstring& text) { layouts_.update(note(), text, true, &measure_, density_); }
  std::string painted() {
    RecordingCanvas canvas;
    paintNoteText(canvas, note(), toPixels(note().rect, density_), makePalette({}), density_);
    return canvas.written({"text"});
  }
  int thumbTop() const {
    const Node& node = *scene_.find(id_);
    return noteThumb(node, toPixels(node.rect, density_), density_).top.value;
  }

  const NodeId id_{ControlKind::ContainerNote, 0};
  Density density_;
  FakeTextMeasure measure_;
  Scene scene_;
  NoteLayouts layouts_;
};

TEST_F(NoteViewTest, IsLaidOutAgainOnlyWhenSomethingHasChanged) {
  show(L"some text");
  const auto* first = note().note.get();
  show(L"some text");
  EXPECT_EQ(note().note.get(), first);
  note().rect.height = Twips{900};
  show(L"some text");
  EXPECT_EQ(note().note.get(), first) << "lines depend on the width alone";
  note().rect.width = Twips{900};
  show(L"some text");
  EXPECT_NE(note().note.get(), first);
  layouts_.update(note(), L"another", false, &measure_, density_);
  EXPECT_EQ(note().note, nullptr) << "what nobody sees is not laid out";
  EXPECT_EQ(note().text, L"another");
}

TEST_F(NoteViewTest, PaintsOnlyTheLinesInSight) {
  std::wstring text;
  for (int i = 0; i < 5000; ++i) text += L"line " + std::to_wstring(i) + L"\n";
  show(text);
  EXPECT_TRUE(scrollNote(scene_, id_, 1000, density_));
  const std::string seen = painted();
  EXPECT_NE(seen.find("line 1000 "), std::string::npos);
  EXPECT_EQ(seen.find("line 999 "), std::string::npos);
  EXPECT_NE(seen.find("line 1005 "), std::string::npos);
  EXPECT_EQ(seen.find("line 1006 "), std::string::npos) << "only whole lines";
}

TEST_F(NoteViewTest, ScrollsWithinItsText) {
  show(L"short");
  EXPECT_FALSE(scrollNote(scene_, id_, 3, density_)) << "the panel may scroll instead";
  std::wstring text;
  for (int i = 0; i < 100; ++i) text += L"line\n";
  show(text);
  EXPECT_FALSE(scrollNote(scene_, id_, -3, density_));
  EXPECT_EQ(thumbTop(), 20);
  EXPECT_TRUE(scrollNote(scene_, id_, 1'000'000, density_));
  EXPECT_NE(painted().find("line"), std::string::npos) << "no further than the last line";
  EXPECT_FALSE(scrollNote(scene_, id_, 3, density_));
  EXPECT_EQ(thumbTop() + noteThumb(note(), toPixels(note().rect, density_), density_).height.value,
            120);
  // By the thumb, which is as high as it stands for: to the middle.
  const PixelRect rect = toPixels(note().rect, density_);
  const PixelRect thumb = noteThumb(note(), rect, density_);
  EXPECT_TRUE(overNoteThumb(note(), rect, {thumb.left - Pixels{2}, thumb.top}, density_));
  EXPECT_FALSE(overNoteThumb(note(), rect, {thumb.left, thumb.top - Pixels{1}}, density_));
  const Pixels middle{20 + (100 - thumb.height.value) / 2};
  EXPECT_TRUE(dragNoteThumb(scene_, id_, rect, middle, density_));
  EXPECT_NEAR(thumbTop(), middle.value, 1);
  show(L"short again");
  EXPECT_EQ(note().scroll.y, Twips{});
}

TEST(NoteThumb, StandsForWhatIsInSight) {
  const PixelRect rect{{10}, {20}, {100}, {200}};
  const struct {
    double first, shown;
    int dpi, left, top, width, height;
  } rows[] = {{0, 0.5, 96, 107, 20, 3, 100},    {0.5, 0.5, 96, 107, 120, 3, 100},
              {0.25, 0.5, 96, 107, 70, 3, 100}, {0.9, 0.5, 96, 107, 120, 3, 100},
              {0.5, 0.01, 96, 107, 113, 3, 16}, {0, 0.01, 192, 104, 20, 6, 32},
              {0, 0.08, 96, 107, 20, 3, 16},    {0, 0.085, 96, 107, 20, 3, 17}};
  for (const auto& r : rows) {
    const PixelRect thumb = noteThumb(rect, r.first, r.shown, {r.dpi});
    EXPECT_EQ(thumb, (PixelRect{{r.left}, {r.top}, {r.width}, {r.height}})) << r.first;
    EXPECT_NEAR(noteThumbShare(rect, thumb, thumb.top), std::min(1.0, r.first / (1 - r.shown)),
                0.01);
  }
  EXPECT_TRUE(noteThumb(rect, 0, 1, {}).empty());
  EXPECT_TRUE(noteThumb({{0}, {0}, {100}, {15}}, 0, 0.5, {}).empty());
  EXPECT_FALSE(noteThumb({{0}, {0}, {100}, {16}}, 0, 0.5, {}).empty());
}

TEST_F(NoteViewTest, LinesAreFoundByTheirOffset) {
  std::wstring text;
  for (int i = 0; i < 100; ++i) text += L"abcd\n";
  show(text);
  EXPECT_EQ(noteTopOffset(scene_, id_, density_), 0U);
  scrollNoteTo(scene_, id_, 53, density_);
  EXPECT_EQ(noteTopOffset(scene_, id_, density_), 50U);
  // The second line in sight: margin 4, line 15, letters 6 wide.
  const NoteHit hit = noteHit(scene_, id_, {300_tw + Twips{15 * 16}, 300_tw + Twips{15 * 20}}, {});
  EXPECT_EQ(hit.offset, 57U);
  EXPECT_EQ(noteHit(scene_, scene_.root(), {}, {}).offset, 0U);
}

TEST_F(NoteViewTest, TellsTheLinkUnderTheMouse) {
  std::wstring text;
  for (int i = 0; i < 50; ++i) text += L"line\n";
  show(text + L"www.example.org");
  scrollNote(scene_, id_, 1'000'000, density_);
  const Point<Twips> last{400_tw, 1500_tw};
  EXPECT_EQ(noteLinkAt(scene_, id_, last, density_), L"http://www.example.org");
  EXPECT_EQ(noteLinkAt(scene_, id_, {400_tw, 1300_tw}, density_), L"");
  EXPECT_EQ(noteLinkAt(scene_, id_, {400_tw, 1750_tw}, density_), L"") << "below the last line";
  EXPECT_EQ(noteLinkAt(scene_, {ControlKind::picBack, 0}, last, density_), L"");
  EXPECT_NE(painted().find("www.example.org"), std::string::npos);
}

}  // namespace
}  // namespace varnowick
