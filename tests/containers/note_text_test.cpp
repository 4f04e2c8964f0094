#include "containers/note_text.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace varnowick {
namespace {

// Against a model that keeps the whole text after every change. No two changes lie
// side by side here, so that each is one of its own.
TEST(NoteText, GoesBackAndForthLikeAModelThatKeepsEverything) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  NoteText note;
  note.open(L"the text that it began with");
  std::vector<std::wstring> states{note.text()};
  std::size_t now = 0;
  for (int step = 0; step < 5000; ++step) {
    switch (below(4)) {
      case 0:
        EXPECT_EQ(note.undo().has_value(), now > 0);
        if (now > 0) --now;
        break;
      case 1:
        EXPECT_EQ(note.redo().has_value(), now + 1 < states.size());
        if (now + 1 < states.size()) ++now;
        break;
      default: {
        std::wstring model = states[now];
        const std::size_t start = below(model.size() + 1);
        const std::size_t end = start + below(model.size() - start + 1) % 9;
        const std::wstring by(below(12), static_cast<wchar_t>(L'a' + step % 26));
        model.replace(start, end - start, by);
        note.endRun();
        ASSERT_TRUE(note.replace(start, end, by));
        if (start == end && by.empty()) break;
        states.resize(now + 1);
        states.push_back(model);
        ++now;
      }
    }
    ASSERT_EQ(note.text(), states[now]) << step;
    ASSERT_EQ(note.canUndo(), now > 0);
    ASSERT_EQ(note.canRedo(), now + 1 < states.size());
  }
}

TEST(NoteText, JoinsWhatIsTypedAndEndsItWithTheLine) {
  NoteText note;
  note.open(L"");
  const auto type = [&](const std::wstring& letters) {
    for (const wchar_t c : letters) note.replace(note.text().size(), note.text().size(), {&c, 1});
  };
  type(L"one");
  note.replace(3, 3, L"\r\n");
  type(L"two");
  note.replace(7, 8, L"");
  note.replace(6, 7, L"");
  type(L"en");
  note.endRun();
  type(L"ty");
  for (const wchar_t* text : {L"one\r\nten", L"one\r\nt", L"one\r\ntwo", L"one\r\n", L""}) {
    EXPECT_TRUE(note.undo());
    EXPECT_EQ(note.text(), text);
  }
  EXPECT_FALSE(note.undo());
}

TEST(NoteText, KeepsNoMoreThanItMay) {
  NoteText note;
  note.open(std::wstring(kMostNoteText - 1, L'x'));
  EXPECT_FALSE(note.replace(0, 0, L"yy")) << "too long, and left as it was";
  EXPECT_TRUE(note.replace(0, note.text().size(), std::wstring(kMostNoteText, L'y')));
  ASSERT_TRUE(note.undo()) << "the last change can be undone, however long it is";
  EXPECT_EQ(note.text().front(), L'x');
  ASSERT_TRUE(note.redo());
  note.replace(0, 1, L"z");
  EXPECT_TRUE(note.undo());
  EXPECT_FALSE(note.undo()) << "the oldest has gone";
}

}  // namespace
}  // namespace varnowick
