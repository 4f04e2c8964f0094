#include "containers/removal.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_msg_box.h"

namespace varnowick {
namespace {

TEST(Removal, AsksAndTakesOnlyYesForIt) {
  const struct {
    MsgAnswer answer;
    bool removes;
  } cases[] = {{kMsgAnswerYes, true}, {kMsgAnswerNo, false}, {MsgAnswer::None, false}};
  for (const auto& [answer, removes] : cases) {
    FakeMsgBox box;
    box.answers = {answer};
    EXPECT_EQ(confirmRemoval(Settings{}, box, 3), removes);
    ASSERT_EQ(box.shown.size(), 1U);
    EXPECT_EQ(box.shown[0].text, L"Remove Selected Containers?\r\n\r\n3 Container(s) Selected");
    EXPECT_EQ(box.shown[0].caption, L"Remove Containers");
  }
}

TEST(Removal, RemovesUnaskedWhereThatIsWanted) {
  FakeMsgBox box;
  Settings settings;
  settings.confirmDelete = false;
  EXPECT_TRUE(confirmRemoval(settings, box, 1));
  EXPECT_TRUE(box.shown.empty());
}

}  // namespace
}  // namespace varnowick
