// Containers in windows of their own: how they come there and back, their tabs, and
// when they hide.
#include "tests/e2e/harness/detached.h"

#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class DetachedTest : public ProgramTest {
 protected:
  bool detached(int number) { return value(number, "[Detached]") == "1"; }
  // So that a wait in vain tells which.
  static std::wstring inLine(int line) { return L" in line " + std::to_wstring(line); }
  void expectHidden(const std::function<void()>& action, int line = __builtin_LINE()) {
    events().expect(kEventDetachedHidden, L"hidden" + inLine(line), action);
  }
  void expectShown(const std::function<void()>& action, int line = __builtin_LINE()) {
    events().expect(kEventDetachedShown, L"shown" + inLine(line), action);
  }
  static ContainerRow tools(const DetachedRow& row) {
    return {.name = L"Tools",
            .y = 600,
            .shortcuts = {{.caption = L"Inside", .path = L"C:\\x.txt", .y = 600}},
            .detached = detachedLines(row)};
  }
  DetachedWindow window(const std::wstring& name = L"Tools") {
    return DetachedWindow(program(), events(), name);
  }
  bool onBar(const Bar& bar, const std::wstring& name) {
    return bar.accessible().find(name, ROLE_SYSTEM_GROUPING).has_value();
  }
  void chooseOnBar(Bar& bar, const std::wstring& name, const std::wstring& mnemonics) {
    openMenuAt(bar.onTitle(name));
    bar.choose(mnemonics);
  }
};
using MainDetached = DetachedTest;

TEST_F(MainDetached, LeavesTheBarByMenuAndComesBackByItsOwn) {
  write(SettingsFile(), {{.name = L"Tools",
                          .x = 120,
                          .y = 600,
                          .width = 2400,
                          .height = 2000,
                          .shortcuts = {{.caption = L"Inside", .path = L"C:\\x.txt", .y = 600}}}});
  Bar bar = startBar();
  bar.expand();
  expectSaved([&] { chooseOnBar(bar, L"Tools", L"d"); });
  DetachedWindow tools = window();
  tools.waitUntilShown();
  EXPECT_TRUE(detached(0));
  EXPECT_FALSE(onBar(bar, L"Tools"));
  EXPECT_TRUE(tools.accessible().find(L"Inside"));
  RECT both{};
  const RECT own = tools.rect();
  const RECT main = bar.rect();
  EXPECT_FALSE(IntersectRect(&both, &own, &main)) << "it does not cover the bar";
  EXPECT_EQ(own.right - own.left, toPixels(2400));
  EXPECT_EQ(GetWindowLongW(tools.window(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);

  expectSaved([&] { tools.choose(L"a"); });
  EXPECT_FALSE(detached(0));
  EXPECT_EQ(file(0).find("[Detached"), std::string::npos);
  EXPECT_TRUE(onBar(bar, L"Tools"));
  require(L"the window to go", [&] { return !tools.shown(); });
  closeProgram();
}

TEST_F(MainDetached, HidesIntoItsTabAndComesOutByAClick) {
  write(SettingsFile(), {tools({.useTab = true, .edge = 2})});
  startBar();
  DetachedWindow tools = window();
  tools.waitUntilShown();
  EXPECT_FALSE(tools.tabShown());
  expectHidden([&] { tools.choose(L"w"); });
  ASSERT_TRUE(tools.tabShown());
  EXPECT_FALSE(tools.shown());
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const RECT tab = tools.tabRect();
  EXPECT_EQ(tab.right, work.right);
  EXPECT_EQ(tab.bottom - tab.top, toPixels(1600));
  EXPECT_EQ(AccessibleWindow(tools.tab()).name(), L"Tools");

  mouse::moveTo(centreOf(tab));
  letTimePass(300);
  EXPECT_FALSE(tools.shown()) << "it does not show itself unless it is to";
  expectShown([&] { mouse::click(centreOf(tab)); });
  EXPECT_TRUE(tools.shown());
  EXPECT_FALSE(tools.tabShown());
  EXPECT_EQ(GetForegroundWindow(), tools.window());

  expectHidden([] { keyboard::chord({VK_MENU, VK_F4}); });
  EXPECT_TRUE(program().running()) << "closing it ends nothing";
  // Dragged to another edge it stays there.
  const POINT from = centreOf(tools.tabRect());
  expectSaved([&] { mouse::drag(from, {work.right / 2, work.bottom - 4}); });
  EXPECT_EQ(value(0, "[DetachedTabDocked]"), number(4));
  EXPECT_EQ(tools.tabRect().bottom, work.bottom);
  EXPECT_FALSE(tools.shown());
  closeProgram();
}

TEST_F(MainDetached, ComesWhenTheMouseTouchesItsTabAndGoesWithTheMouse) {
  write(SettingsFile(), {tools({.useTab = true, .autoShow = true, .autoHide = true, .edge = 2})});
  startBar();
  DetachedWindow tools = window();
  events().waitForFirst(kEventDetachedHidden, L"hidden by itself", program().process());
  require(L"the tab", [&] { return tools.tabShown(); });
  const HWND before = GetForegroundWindow();
  expectShown([&] { mouse::moveTo(centreOf(tools.tabRect())); });
  EXPECT_EQ(GetForegroundWindow(), before) << "it takes no focus away";
  EXPECT_EQ(WindowFromPoint(tools.onTitle()), tools.window()) << "in front of the others";
  mouse::moveTo(tools.onTitle());
  letTimePass(2500);
  EXPECT_TRUE(tools.shown());
  expectHidden([&] { mouse::moveAwayFrom(tools.rect()); });
  EXPECT_TRUE(tools.tabShown());
  closeProgram();
}

TEST_F(DetachedTest, FadesOutAndComesBackOpaque) {
  write(SettingsFile().set("[Animate]", "1"), {tools({.useTab = true, .fadeOut = true})});
  startBar();
  DetachedWindow tools = window();
  tools.waitUntilShown();
  const HWND handle = tools.window();
  bool fades = false;
  tools.choose(L"w");
  require(L"the end of the fade", [&] {
    fades = fades || (IsWindowVisible(handle) && opacityOf(handle) < 255);
    return !IsWindowVisible(handle);
  });
  EXPECT_TRUE(fades);
  EXPECT_TRUE(tools.tabShown());
  expectShown([&] { mouse::click(centreOf(tools.tabRect())); });
  EXPECT_EQ(opacityOf(handle), 255);
  closeProgram();
}

TEST_F(MainDetached, CloseAndDeleteDeletesOnlyAfterAYes) {
  write(SettingsFile(), {tools({})});
  Bar bar = startBar();
  DetachedWindow tools = window();
  tools.waitUntilShown();
  tools.choose(L"d");
  const auto question = [&] { return dialog(L"Close & Delete"); };
  EXPECT_EQ(question().text(), L"Close detached container and delete it from the workspace?");
  EXPECT_TRUE(question().hasIcon());
  expectSaved([&] { question().press(IDNO); });
  EXPECT_TRUE(tools.shown());
  EXPECT_TRUE(detached(0));
  tools.choose(L"d");
  expectSaved([&] { question().press(IDYES); });
  EXPECT_FALSE(tools.shown());
  EXPECT_FALSE(folder().exists(L"Containers\\0.con"));
  bar.expand();
  EXPECT_FALSE(onBar(bar, L"Tools"));
  closeProgram();
}

TEST_F(MainDetached, TheBarAttachesOneOrAll) {
  write(SettingsFile(),
        {tools({.x = 9000, .y = 1500}),
         {.name = L"Mail", .y = 3000, .detached = detachedLines({.x = 9000, .y = 4500})},
         {.name = L"News",
          .y = 4800,
          .detached = detachedLines({.x = 13000, .y = 4500, .useTab = true, .autoHide = true})}});
  Bar bar = startBar();
  for (const wchar_t* name : {L"Tools", L"Mail"}) window(name).waitUntilShown();
  require(L"the tab of the third", [&] { return window(L"News").tabShown(); });
  bar.openMenu();
  bar.choose(L"ct");
  expectSaved([] {
    keyboard::press(VK_DOWN);
    keyboard::press(VK_RETURN);
  });
  EXPECT_FALSE(window(L"Mail").shown());
  EXPECT_TRUE(window().shown());
  EXPECT_EQ(detached(0) + detached(1) * 10 + detached(2) * 100, 101);
  bar.focus();
  expectSaved([] { keyboard::chord({VK_CONTROL, VK_F3}); });
  EXPECT_FALSE(window().shown() || window(L"News").tabShown());
  EXPECT_FALSE(detached(0) || detached(2));
  for (const wchar_t* name : {L"Tools", L"Mail", L"News"}) EXPECT_TRUE(onBar(bar, name));
  closeProgram();
}

TEST_F(MainDetached, ATitleDraggedOffTheBarBecomesAWindowThere) {
  for (const bool on : {true, false}) {
    SCOPED_TRACE(on);
    write(SettingsFile().set("[DragToDetach]", on ? "1" : "0"),
          {{.name = L"Tools", .y = 600, .width = 2400, .height = 2000}});
    Bar bar = startBar();
    bar.expand();
    const POINT to{toPixels(10500), toPixels(3000)};
    const auto drag = [&] { mouse::drag(bar.onTitle(L"Tools"), to); };
    on ? expectSaved(drag) : drag();
    EXPECT_EQ(detached(0), on);
    EXPECT_EQ(window().shown(), on);
    if (on) {
      EXPECT_EQ(WindowFromPoint(to), window().window());
      // By its title it is moved on, and by its border made larger.
      expectSaved([&] { mouse::drag(to, {to.x + 60, to.y + 45}); });
      EXPECT_EQ(value(0, "[DetachedY]"), number(static_cast<int>(toTwips(window().rect().top))));
      EXPECT_EQ(WindowFromPoint({to.x + 60, to.y + 45}), window().window());
      const RECT r = window().rect();
      const POINT corner{r.right - 4, r.bottom - 4};
      expectSaved([&] { mouse::drag(corner, {corner.x + 40, corner.y + 20}); });
      EXPECT_EQ(window().rect(), (RECT{r.left, r.top, r.right + 40, r.bottom + 20}));
      EXPECT_EQ(value(0, "[DetachedW]"), number(2400 + 600));
    }
    closeProgram();
  }
}

TEST_F(DetachedTest, WorksOnItsOwnContents) {
  const std::wstring probe = folder().addLaunchProbe();
  ContainerRow row = tools({.useTab = true, .hideOnClick = true});
  row.shortcuts.push_back({.caption = L"Probe", .path = probe, .x = 1600, .y = 600});
  write(SettingsFile(), {row});
  startBar();
  DetachedWindow tools = window();
  tools.waitUntilShown();
  // Folding.
  const RECT open = tools.rect();
  const RECT r = tools.rect();
  expectSaved([&] { mouse::click({r.right - toPixels(170), r.top + toPixels(175)}); });
  EXPECT_EQ(tools.rect().bottom - tools.rect().top, toPixels(350));
  letTimePass(700);  // two quick clicks are one double click
  expectSaved([&] { mouse::click({r.right - toPixels(170), r.top + toPixels(175)}); });
  EXPECT_EQ(tools.rect(), open);
  // Pasting and deleting.
  putOnClipboard(offerText(L"http://example.org/"));
  mouse::click({r.left + toPixels(1500), r.bottom - toPixels(300)});
  expectSaved([] { keyboard::chord({VK_CONTROL, 'V'}); });
  EXPECT_EQ(countSavedShortcuts(file(0)), 3U);
  mouse::click({r.left + toPixels(1500), r.bottom - toPixels(300)});
  keyboard::down(VK_CONTROL);
  mouse::click(centreOf(tools.accessible().waitFor(L"Inside").rect));
  keyboard::up(VK_CONTROL);
  keyboard::press(VK_DELETE);
  const DialogWindow question = message();
  expectSaved([&] { question.press(IDYES); });
  EXPECT_EQ(countSavedShortcuts(file(0)), 2U);
  letTimePass(700);  // the last two clicks on the body were a double click
  // A click starts, and hides.
  mouse::click(centreOf(tools.accessible().waitFor(L"Probe").rect));
  waitForLaunch(probe);
  require(L"the window to hide", [&] { return !tools.shown(); });
  EXPECT_TRUE(tools.tabShown());
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
