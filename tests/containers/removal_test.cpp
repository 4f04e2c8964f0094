#include "containers/removal.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_msg_box.h"

namespace varnowick {
namespace {

TEST(Removal, AsksAndTakesOnlyYesForIt) {
  Workspace workspace;
  const ContainerSlot plain = workspace.containers.add({}), music = workspace.containers.add({});
  workspace.containers[plain].name = L"Tools";
  workspace.containers[music].CopyPath = L"D:\\Music";
  workspace.shortcuts.add();
  workspace.shortcuts[{0}].parent = {plain};
  for (const MsgAnswer answer : {kMsgAnswerYes, kMsgAnswerNo, MsgAnswer::None}) {
    FakeMsgBox box;
    box.answers = {answer};
    EXPECT_EQ(confirmRemoval(Settings{}, box, workspace, {plain, music}), answer == kMsgAnswerYes);
    ASSERT_EQ(box.shown.size(), 1U);
    EXPECT_EQ(box.shown[0].text,
              L"Remove Selected Containers?\r\n\r\n2 Container(s) Selected\r\n\r\n"
              L"Tools\r\n(no name)\r\n\r\nWith what lies in them: 1 shortcut, 0 pictures."
              L"\r\nThe files in their folders stay.");
    EXPECT_EQ(box.shown[0].caption, L"Remove Containers");
  }
  FakeMsgBox box;
  workspace.containers[music].CopyPath.clear();
  confirmRemoval(Settings{}, box, workspace, {music});
  EXPECT_EQ(box.shown[0].text,
            L"Remove Selected Containers?\r\n\r\n1 Container(s) Selected\r\n\r\n(no name)\r\n");
  box.shown.clear();
  Settings unasked;
  unasked.confirmDelete = false;
  EXPECT_TRUE(confirmRemoval(unasked, box, {}, {{0}}));
  EXPECT_TRUE(box.shown.empty());
}

}  // namespace
}  // namespace varnowick
