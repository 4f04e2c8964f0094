#include "shortcuts/removed_line.h"

#include <gtest/gtest.h>

#include "core/document.h"

namespace varnowick {
namespace {

TEST(RemovedLine, TellsOfTheLastRemovalUntilTheNextChange) {
  Document document;
  Workspace& w = document.workspace;
  RemovedLine line;
  const ContainerSlot box = w.containers.add();
  for (int i = 0; i < 4; ++i) w.shortcuts[w.shortcuts.add()].FullCaption = L"Alpha";
  w.shortcuts[{0}].parent = {box};
  const auto change = [&](const auto& what) {
    {
      const UndoStep step(document, L"change");
      what();
    }
    return line.update(document.history);
  };
  EXPECT_TRUE(change([&] { w.shortcuts.remove({1}); }));
  EXPECT_EQ(line.text(), L"Removed \"Alpha\" \x00B7 Undo");
  EXPECT_FALSE(change([] {})) << "a save without a change";
  EXPECT_TRUE(change([&] { w.shortcuts[{0}].Path = L"x"; }));
  EXPECT_EQ(line.text(), L"");
  change([&] {
    w.removeContainer(box);
    w.shortcuts.remove({2});
    w.shortcuts.remove({3});
  });
  EXPECT_EQ(line.text(), L"Removed 1 container, 2 shortcuts \x00B7 Undo");
  document.history.undo(w);
  EXPECT_TRUE(line.update(document.history));
  EXPECT_FALSE(line.end());
}

}  // namespace
}  // namespace varnowick
