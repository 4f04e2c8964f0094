// Taking changes back: from the line on the bar, by Ctrl+Z in whatever window, many
// steps one after the other; and what is hidden meanwhile.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class UndoTest : public ProgramTest {
 protected:
  void write(SettingsFile settings, const std::vector<ContainerRow>& containers) {
    ProgramTest::write(settings.set("[AutoExpand]", "0").set("[ConfirmDelete]", "0"), containers);
  }
  static ContainerRow tools(const std::string& detached = {}) {
    return {.name = L"Tools",
            .y = 600,
            .shortcuts = {{.caption = L"Inside", .path = L"C:\\x.txt", .y = 600}},
            .detached = detached};
  }
};
using MainUndo = UndoTest;

TEST_F(MainUndo, ManyStepsAndADeletionComeBackByteForByte) {
  write(SettingsFile().add({.caption = L"Loose", .path = L"C:\\none.exe", .x = 360, .y = 4700}),
        {tools(), {.name = L"Other", .y = 3400, .height = 1200}});
  Bar bar = startBar();
  bar.focus();
  for (int i = 0; i < 2; ++i) expectSaved([] { keyboard::chord({VK_CONTROL, 'L'}); });
  const DataFiles before = folder().state();
  const POINT title = bar.onTitle(L"Tools");
  expectSaved([&] { mouse::drag(title, {title.x + toPixels(120), title.y + toPixels(480)}); });
  const POINT loose = centreOf(bar.accessible().waitFor(L"Loose").rect);
  expectSaved([&] { mouse::drag(loose, {loose.x, loose.y + toPixels(360)}); });
  bar.focus();
  keyboard::chord({VK_CONTROL, 'A'});
  expectSaved([] { keyboard::press(VK_DELETE); });
  EXPECT_FALSE(folder().exists(L"Containers\\0.con"));
  EXPECT_FALSE(bar.accessible().find(L"Inside"));

  const std::wstring line = L"Removed 2 containers, 1 shortcut \x00B7 Undo";
  expectSaved([&] { mouse::click(centreOf(bar.accessible().waitFor(line).rect)); });
  EXPECT_TRUE(bar.accessible().find(L"Inside"));
  EXPECT_FALSE(bar.accessible().find(line)) << "it goes with the next change";
  bar.focus();
  for (int i = 0; i < 2; ++i) expectSaved([] { keyboard::chord({VK_CONTROL, 'Z'}); });
  EXPECT_EQ(folder().state(), before);
  expectSaved([] { keyboard::chord({VK_CONTROL, 'Y'}); });
  EXPECT_NE(folder().state(), before);
  closeProgram();
}

TEST_F(MainUndo, WorksAcrossWindows) {
  write(SettingsFile().add({.caption = L"Loose", .path = L"C:\\none.exe", .x = 360, .y = 5000}),
        {tools(detachedLines({}))});
  Bar bar = startBar();
  DetachedWindow window(program(), events(), L"Tools");
  window.waitUntilShown();
  bar.expand();
  const RECT r = window.rect();
  expectSaved([&] {
    mouse::drag(centreOf(bar.accessible().waitFor(L"Loose").rect),
                {r.left + toPixels(1800), r.bottom - toPixels(600)});
  });
  require(L"it to lie in the window",
          [&] { return window.accessible().find(L"Loose").has_value(); });
  EXPECT_EQ(countSavedShortcuts(recovery()), 0U);

  // In the window into which it was dragged.
  mouse::click({r.left + toPixels(600), r.bottom - toPixels(300)});
  expectSaved([] { keyboard::chord({VK_CONTROL, 'Z'}); });
  EXPECT_FALSE(savedShortcut(recovery(), "Loose").empty());
  EXPECT_FALSE(window.accessible().find(L"Loose"));
  if (!bar.isOut()) bar.expand();
  EXPECT_TRUE(bar.accessible().waitFor(L"Loose").shown());

  // The bar offers to take back what was removed there, and the window comes back.
  mouse::click({r.left + toPixels(600), r.bottom - toPixels(300)});
  keyboard::chord({VK_CONTROL, 'A'});
  expectSaved([] { keyboard::press(VK_DELETE); });
  if (!bar.isOut()) bar.expand();
  const AccessibleItem line = bar.accessible().waitFor(L"Removed \"Inside\" \x00B7 Undo");
  expectSaved([&] { bar.accessible().doDefaultAction(line); });
  EXPECT_TRUE(window.accessible().find(L"Inside"));
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
