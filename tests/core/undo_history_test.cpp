#include "core/undo_history.h"

#include <gtest/gtest.h>

#include <random>

#include "core/container_files.h"
#include "core/settings_file.h"
#include "tests/core/reference_document.h"
#include "tests/fakes/fake_codec.h"

namespace varnowick {
namespace {

// Everything that is saved, slot by slot.
std::string saved(const Document& document) {
  FakeCodec codec;
  const ContentsByPanel contents(document.workspace);
  std::string all = renderSettingsFile(document.settings, contents.of(picBack), codec);
  for (const std::string& file : renderContainerFiles(document.workspace, contents, codec))
    all += "\n--\n" + file;
  return all;
}

class Changes {
 public:
  Changes(Document& document, unsigned seed) : w_(document.workspace), engine_(seed) {}

  void one() {
    const Twips far{static_cast<float>(roll(9000))};
    switch (roll(8)) {
      case 0:
        w_.shortcuts[w_.shortcuts.add()].parent = panel();
        break;
      case 1:
        w_.pictures.add({L"C:\\new.png", panel(), {{}, {}, far, far}});
        break;
      case 2: {
        clsContainer& c = w_.containers[w_.containers.add()];
        c.rect = c.savedRect = {far, far, far, far};
        c.note = L"a note";
        break;
      }
      case 3:
        w_.removeContainer(any(w_.containers));
        break;
      case 4:
        w_.shortcuts.remove(any(w_.shortcuts));
        w_.pictures.remove(any(w_.pictures));
        break;
      case 5:
        if (clsShortcut* s = w_.shortcuts.find(any(w_.shortcuts))) {
          s->parent = panel();
          s->position = {far, far};
          s->FullCaption = std::to_wstring(roll(99));
        }
        break;
      case 6:
        if (clsPicture* p = w_.pictures.find(any(w_.pictures))) p->parent = panel();
        break;
      default:
        if (clsContainer* c = w_.containers.find(any(w_.containers))) {
          c->rect.left = c->savedRect.left = far;
          c->backColor = {roll(99)};
          c->name = std::to_wstring(roll(99));
        }
    }
  }
  int roll(int sides) { return static_cast<int>(engine_() % static_cast<unsigned>(sides)); }

 private:
  template <class Record, class SlotType>
  SlotType any(const SlotTable<Record, SlotType>& table) {
    return {roll(table.bound() + 1)};
  }
  Panel panel() {
    const ContainerSlot slot = any(w_.containers);
    return w_.containers.contains(slot) ? Panel{slot} : picBack;
  }
  Workspace& w_;
  std::mt19937 engine_;
};

TEST(UndoHistory, TakenBackOneByOneEverythingIsAsItWasAndCanBeDoneAgain) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    Document document = referenceDocument();
    Changes changes(document, seed);
    std::vector<std::string> states{saved(document)};
    while (states.size() < 60) {
      {
        const UndoStep step(document, L"change");
        for (int i = changes.roll(3); i >= 0; --i) changes.one();
      }
      if (saved(document) != states.back()) states.push_back(saved(document));
    }
    const std::size_t last = states.size() - 1;
    for (std::size_t i = last; document.history.undoName() != nullptr;) {
      EXPECT_FALSE(document.history.undo(document.workspace).kept);
      if (i > 0 && saved(document) != states[i]) --i;
      ASSERT_EQ(saved(document), states[i]);
    }
    ASSERT_EQ(saved(document), states[0]);
    while (document.history.redoName() != nullptr) document.history.redo(document.workspace);
    ASSERT_EQ(saved(document), states[last]);
  }
}

class UndoHistoryTest : public testing::Test {
 protected:
  Document document;
  Workspace& w = document.workspace;
  ContainerSlot box = w.containers.add();
  ShortcutSlot inside = w.shortcuts.add();
  void SetUp() override {
    w.shortcuts[inside].parent = {box};
    w.containers[box].rect = w.containers[box].savedRect = {{0}, {600}, {3000}, {2400}};
  }
  UndoHistory::Taken undo() { return document.history.undo(w); }
};

// What no step knows of: another part of the program, say, has taken the slots.
TEST_F(UndoHistoryTest, NothingIsLostWhereTheSlotIsTakenOrTheContainerGone) {
  {
    const UndoStep step(document, L"delete");
    w.shortcuts.remove(inside);
  }
  w.removeContainer(box);
  const ContainerSlot other = w.containers.add();
  ASSERT_EQ(other, box);
  w.shortcuts[w.shortcuts.add()].FullCaption = L"another";
  undo();
  ASSERT_EQ(w.shortcuts.count(), 2U);
  EXPECT_EQ(w.shortcuts[inside].FullCaption, L"another");
  EXPECT_TRUE(w.shortcuts[{1}].parent.isMain()) << "not in the stranger of the same slot";

  // What was added stays when something came into it that no step knows of.
  {
    const UndoStep step(document, L"add");
    w.containers[w.containers.add()].name = L"new";
  }
  w.containers[{1}].note = L"typed since";
  const UndoHistory::Taken taken = undo();
  EXPECT_TRUE(taken.kept && taken.removed.empty());
  EXPECT_EQ(w.containers.count(), 2U);
}

TEST_F(UndoHistoryTest, OnlyWhatTheStepHasChangedIsTakenBack) {
  clsContainer& c = w.containers[box];
  {
    const UndoStep outer(document, L"move");
    const UndoStep inner(document, L"part of it");
    c.rect.left = c.savedRect.left = {900};
    EXPECT_EQ(document.history.undoName(), nullptr) << "not while it is being made";
    undo();
  }
  EXPECT_EQ(*document.history.undoName(), L"move");
  // Folded, written in and detached since.
  c.folded = true;
  c.rect.height = kTitleStripHeight;
  c.note = L"text";
  c.Detached = true;
  c.name = L"renamed elsewhere";
  EXPECT_EQ(undo().objects, std::vector<ObjectId>{box});
  EXPECT_EQ(c.rect, (TwipsRect{{0}, {600}, {3000}, kTitleStripHeight}));
  EXPECT_EQ(c.savedRect.left, Twips{});
  EXPECT_TRUE(c.folded && c.Detached && c.note == L"text" && c.name == L"renamed elsewhere");
  EXPECT_TRUE(undo().objects.empty());

  for (int i = 0; i < 150; ++i) {
    const UndoStep step(document, L"size");
    c.savedRect.width += Twips{1};
  }
  int steps = 0;
  while (!undo().objects.empty()) ++steps;
  EXPECT_EQ(steps, 100);
}

}  // namespace
}  // namespace varnowick
