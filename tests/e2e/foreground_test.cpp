// Who has the keyboard when the bar comes and goes.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/harness/other_program.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

class ForegroundTest : public ProgramTest {
 protected:
  static SettingsFile withHotkey() {
    return SettingsFile()
        .set("[GlobalHotkey]", "1")
        .set("[GlobalHotkeyChar]", "J")
        .set("[GlobalHotkeyMod]", " 3");
  }
  // As fast as fingers are: the program waits until it has been let go.
  static void hotkey() {
    letTimePass(300);
    keyboard::chord({VK_CONTROL, VK_MENU, 'J'});
  }
  void startAgain() {
    const RunningProgram again(folder(), events());
    EXPECT_EQ(again.waitForExit(), 0U);
  }
};
using MainForeground = ForegroundTest;

TEST_F(MainForeground, WhoHadTheKeyboardGetsItBackWheneverTheBarGoes) {
  const std::wstring probe = folder().addLaunchProbe();
  write(withHotkey().add({.caption = L"Def", .path = probe}));
  Bar bar = startBar();
  const auto open = [&] {
    events().expect(kEventExpanded, L"opened", hotkey);
    require(L"the bar in front", [&] { return GetForegroundWindow() == bar.window(); });
  };
  const struct {
    const char* name;
    std::function<void()> collapse;
  } ways[] = {
      {"Esc", [] { keyboard::press(VK_ESCAPE); }},
      {"hotkey", hotkey},
      {"jump-to box open and left",
       [&] {
         keyboard::type(L"x");
         keyboard::press(VK_ESCAPE);
         keyboard::press(VK_ESCAPE);
         keyboard::press(VK_ESCAPE);
       }},
      {"the mouse leaves",
       [&] {
         mouse::moveTo(centreOf(bar.rect()));
         letTimePass(kSeveralTicks / 2);
         mouse::moveAwayFrom(bar.rect());
       }},
      {"something starts", [&] { bar.click(L"Def"); }},
  };
  for (const auto& way : ways) {
    OtherProgram other;
    mouse::moveAwayFrom(bar.rect());
    open();
    events().expect(kEventCollapsed, std::wstring(L"collapsed: ") + fromUtf8(way.name),
                    way.collapse);
    ASSERT_TRUE(waitFor([&] { return other.inFront(); }))
        << way.name << ": " << toUtf8(classOf(GetForegroundWindow())) << " has the keyboard";
    mouse::moveAwayFrom(bar.rect());
    keyboard::type(L"def");
    require(L"the letters to arrive there", [&] { return textOf(other.window()) == L"def"; });
    bar.expand();
    EXPECT_TRUE(other.inFront()) << "looking takes nothing away";
    bar.leave();
  }
  // Nobody is left to get it: nothing that is typed does anything behind the edge.
  OtherProgram other;
  open();
  other.close();
  events().expect(kEventCollapsed, L"collapsed", ways[0].collapse);
  SetForegroundWindow(bar.window());
  keyboard::type(L"def");
  keyboard::press(VK_RETURN);
  bar.expand();
  EXPECT_FALSE(bar.accessible().find(L"Jump to"));
  closeProgram();
}

TEST_F(MainForeground, AnOpenMessageComesForwardInsteadOfTheBar) {
  write(SettingsFile());
  Bar bar = startBar();
  bar.focus();
  keyboard::press(VK_F8);
  const DialogWindow saved = message();
  const OtherProgram other;
  startAgain();
  require(L"the message in front", [&] { return GetForegroundWindow() == saved.handle(); });
  // Its button is elsewhere: the bar waits for the mouse to have been on it.
  mouse::moveAwayFrom(bar.rect());
  keyboard::press(VK_RETURN);
  require(L"the message to go", [&] { return !saved.open(); });
  letTimePass(kSeveralTicks);
  EXPECT_TRUE(bar.isOut());
  mouse::moveTo(centreOf(bar.rect()));
  letTimePass(kSeveralTicks / 2);
  bar.leave();
  closeProgram();
}

TEST_F(MainForeground, TheHotkeyRaisesDetachedWindowsOnTheWayOutOnly) {
  write(withHotkey().set("[GlobalHotkeyDetached]", "1"),
        {{.name = L"Tools", .detached = detachedLines({.x = 9000})}});
  const Bar bar = startBar();
  const DetachedWindow tools(program(), events(), L"Tools");
  tools.waitUntilShown();
  OtherProgram other(tools.rect(), WS_POPUP);
  const auto covered = [&] { return WindowFromPoint(tools.onTitle()) == other.window(); };
  require(L"the container to be covered", covered);
  events().expect(kEventExpanded, L"opened", &hotkey);
  require(L"the container in front", [&] { return !covered(); });
  // The last step of it, or it would be raised once more below.
  require(L"the bar to have the keyboard", [&] { return GetForegroundWindow() == bar.window(); });
  for (const HWND place : {HWND_TOPMOST, HWND_NOTOPMOST})
    SetWindowPos(other.window(), place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  require(L"the container to be covered again", covered);
  events().expect(kEventCollapsed, L"collapsed", &hotkey);
  letTimePass(200);
  EXPECT_TRUE(covered());
  closeProgram();
}

TEST_F(MainForeground, StripAndTabStayBehindAProgramThatFillsTheScreen) {
  write(SettingsFile(),
        {{.name = L"Tools",
          .detached = detachedLines({.useTab = true, .autoShow = true, .autoHide = true})}});
  Bar bar = startBar();
  const DetachedWindow tools(program(), events(), L"Tools");
  require(L"the tab", [&] { return tools.tabShown(); });
  const POINT strip = centreOf(bar.seen());
  const POINT tab = centreOf(tools.tabRect());
  const auto isOnTop = [](POINT at, HWND window) { return WindowFromPoint(at) == window; };
  {
    const OtherProgram film({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)},
                            WS_POPUP);
    require(L"the film above all",
            [&] { return isOnTop(strip, film.window()) && isOnTop(tab, film.window()); });
    mouse::moveTo(tab);
    letTimePass(kSeveralTicks / 2);
    EXPECT_FALSE(tools.shown());
    mouse::moveTo({GetSystemMetrics(SM_CXSCREEN) / 2, 300});
  }
  require(L"the strip and the tab",
          [&] { return isOnTop(strip, bar.window()) && isOnTop(tab, tools.tab()); });
  // A maximised window is no film.
  const OtherProgram large({}, WS_OVERLAPPEDWINDOW | WS_MAXIMIZE);
  letTimePass(kSeveralTicks / 2);
  EXPECT_TRUE(isOnTop(strip, bar.window()));
  bar.expand();
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
