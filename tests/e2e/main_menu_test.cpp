// Every row of the menus, and the restart that gives up the changes since the last save.
#include <algorithm>

#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainMenu = ProgramTest;

// What is seen once a row has been chosen.
enum class Effect { Saves, Asks, Collapses, Launches, Selects, Edits, Draws, Ends };

struct MenuRow {
  MenuId menu;
  Command command;
  Effect effect;
  const wchar_t* title = L"";  // of the question; empty: any
};

// In an order in which each finds what it needs.
constexpr MenuRow kRows[] = {
    {MenuId::Main, Command::mnuAddLink, Effect::Asks, L"Web URL"},
    {MenuId::Main, Command::mnuAddFileLink, Effect::Asks, L"File shortcut"},
    {MenuId::Main, Command::mnuAddFolderLink, Effect::Asks},
    {MenuId::Main, Command::mnuNewCommand, Effect::Asks, L"System command"},
    {MenuId::Main, Command::mnuAddPicture, Effect::Asks, L"The picture to show"},
    {MenuId::Main, Command::mnuNew, Effect::Draws},
    {MenuId::Main, Command::mnuNewFolderLink, Effect::Asks},
    {MenuId::Main, Command::mnuSelectAll, Effect::Selects},
    {MenuId::Main, Command::mnuAlignSelected, Effect::Saves},
    {MenuId::Main, Command::mnuUnselectAll, Effect::Selects},
    {MenuId::Main, Command::mnuSortByName, Effect::Saves},
    {MenuId::Main, Command::mnuUndo, Effect::Saves},
    {MenuId::Main, Command::mnuRedo, Effect::Saves},
    {MenuId::Main, Command::mnuPaste, Effect::Saves},
    {MenuId::Main, Command::mnuAlign, Effect::Saves},
    {MenuId::Main, Command::mnuNewNote, Effect::Edits},
    {MenuId::Main, Command::mnuFoldAll, Effect::Saves},
    {MenuId::Main, Command::mnuFoldAll, Effect::Saves},
    {MenuId::Main, Command::mnuShrinkAll, Effect::Saves},
    {MenuId::Main, Command::mnuShrinkAll, Effect::Saves},
    {MenuId::Main, Command::mnuTranslucent, Effect::Saves},
    {MenuId::Main, Command::mnuLock, Effect::Saves},
    {MenuId::Main, Command::mnuLock, Effect::Saves},
    {MenuId::Main, Command::mnuDockNow, Effect::Collapses},
    {MenuId::Main, Command::mnuLoadDefaults, Effect::Asks, kTitle},
    {MenuId::Main, Command::mnuRestart, Effect::Asks, kTitle},
    {MenuId::Main, Command::mnuAbout, Effect::Asks},
    {MenuId::Shortcut, Command::mnuShortcutProperties, Effect::Asks, L"Shortcut properties"},
    {MenuId::Shortcut, Command::mnuDeleteSelected, Effect::Asks, kTitle},
    {MenuId::Shortcut, Command::mnuUseRelativePath, Effect::Asks, kTitle},
    {MenuId::Shortcut, Command::mnuStartSelected, Effect::Launches},
    {MenuId::Container, Command::mnuStartAll, Effect::Asks, kTitle},
    {MenuId::Container, Command::mnuSortByName, Effect::Saves},
    {MenuId::Container, Command::mnuPaste, Effect::Saves},
    {MenuId::Container, Command::mnuAddPicture, Effect::Asks, L"The picture to show"},
    {MenuId::Container, Command::mnuConRename, Effect::Edits},
    {MenuId::Container, Command::mnuShowNote, Effect::Saves},
    {MenuId::Container, Command::mnuConColors, Effect::Asks},
    {MenuId::Container, Command::mnuConIcon, Effect::Asks},
    {MenuId::Container, Command::mnuHideToolbar, Effect::Saves},
    {MenuId::Container, Command::mnuConRemove, Effect::Asks},
    {MenuId::Container, Command::mnuDetachContainer, Effect::Saves},
    {MenuId::Main, Command::mnuAttachAll, Effect::Saves},
    {MenuId::Main, Command::mnuSave, Effect::Asks, kTitle},
    {MenuId::Main, Command::mnuExitMainWin, Effect::Ends}};

// Shown by suites of their own: detached, docking, shortcuts; a folder's window is the
// system's.
constexpr Command kElsewhere[] = {
    Command::mnuAttach,          Command::mnuShowDetached,     Command::mnuDockLeft,
    Command::mnuDockTop,         Command::mnuDockRight,        Command::mnuDockBottom,
    Command::mnuSuspendSlideOut, Command::mnuRefreshShortcuts, Command::mnuOpenFileLocation};

TEST_F(MainMenu, EveryRowIsCarriedOut) {
  for (const MenuId menu : {MenuId::Main, MenuId::Shortcut, MenuId::Container})
    for (const ShownMenuRow& shown : shownMenu(menu, {})) {
      const bool known =
          shown.command == Command::None ||
          std::count(std::begin(kElsewhere), std::end(kElsewhere), shown.command) > 0 ||
          std::any_of(std::begin(kRows), std::end(kRows),
                      [&](const MenuRow& row) { return row.command == shown.command; });
      EXPECT_TRUE(known) << toUtf8(shown.caption);
    }

  const std::wstring probe = folder().addLaunchProbe();
  const auto two = [&](int y) {
    return std::vector<ShortcutRow>{{.caption = L"Zebra", .path = probe, .x = 330, .y = y},
                                    {.caption = L"Ant", .path = probe, .x = 1530, .y = y}};
  };
  SettingsFile settings;
  for (const char* key : {"[ConfirmDelete]", "[ConfirmStartAllShortcuts]"}) settings.set(key, "1");
  settings.set("[AutoExpand]", "0").window(kCollapsedLeft, 0, kBarWidth, 11'500);
  for (const ShortcutRow& shortcut : two(330)) settings.add(shortcut);
  write(settings, {{.name = L"Work", .y = 2600, .height = 2200, .shortcuts = two(630)}});
  Bar bar = startBar();
  putOnClipboard(offerText(L"http://example.org/"));
  const auto selected = [&] { return bar.accessible().selection(L"Workspace"); };
  for (const MenuRow& row : kRows) {
    // Where a dialog has been, the mouse may be off the bar; a click on the panel would
    // take the selection away.
    mouse::moveTo(bar.emptyPlace());
    if (!bar.isOut() || GetForegroundWindow() != bar.window()) bar.focus();
    POINT at = bar.emptyPlace();
    if (row.menu == MenuId::Shortcut)
      at = centreOf(bar.accessible().waitFor(L"Zebra", ROLE_SYSTEM_LINK).rect);
    if (row.menu == MenuId::Container) at = bar.onTitle(L"Work");
    const auto choose = [&] { chooseFromMenu(at, row.menu, row.command); };
    std::printf("%s\n", toUtf8(commandRow(row.command).name).c_str());
    const std::vector<std::wstring> before = selected();
    switch (row.effect) {
      case Effect::Saves:
        expectSaved(choose);
        break;
      case Effect::Collapses:
        events().expect(kEventCollapsed, L"collapsed", choose);
        break;
      case Effect::Launches:
        choose();
        waitForLaunch(probe);
        break;
      case Effect::Asks: {
        choose();
        const DialogWindow question = dialog(row.title);
        const std::vector<int> buttons = question.buttons();
        const bool cancels = std::count(buttons.begin(), buttons.end(), IDCANCEL) > 0;
        question.press(cancels ? static_cast<int>(IDCANCEL) : buttons.back());
        bar.waitUntilInFront();
        break;
      }
      case Effect::Selects:
        choose();
        require(L"another selection", [&] { return selected() != before; });
        break;
      case Effect::Edits:
        choose();
        require(L"the text to be edited", [&] {
          return IsWindowVisible(
              FindWindowExW(bar.window(), nullptr, L"VarnowickEditOverlay", nullptr));
        });
        keyboard::press(VK_ESCAPE);
        break;
      case Effect::Draws:
        choose();
        bar.accessible().waitFor(L"CONTAINER DRAW MODE");
        keyboard::press(VK_ESCAPE);
        break;
      case Effect::Ends:
        choose();
        EXPECT_EQ(program().waitForExit(), 0U);
        break;
    }
  }
}

// Where there is no room below its button, a menu must not open under the pointer.
TEST_F(MainMenu, ADoubleClickOnAButtonChoosesNothing) {
  const int height = 6000;
  const int top = static_cast<int>(toTwips(GetSystemMetrics(SM_CYSCREEN))) - height;
  write(SettingsFile().window(kCollapsedLeft, top, kBarWidth, height));
  Bar bar = startBar();
  for (const wchar_t* button : {L"Add", L"Settings", L"Menu"}) {
    SCOPED_TRACE(toUtf8(button));
    bar.focus();
    const DataFiles before = folder().state();
    events().expect(kEventMenuOpened, L"menu opened", [&] {
      mouse::doubleClick(centreOf(bar.accessible().waitFor(button, ROLE_SYSTEM_PUSHBUTTON).rect));
    });
    letTimePass(300);
    ASSERT_TRUE(program().running());
    EXPECT_FALSE(anyDialog(program().process()).open());
    EXPECT_EQ(folder().state(), before);
    keyboard::press(VK_ESCAPE);
    letTimePass(100);
  }
  bar.leave();
}

TEST_F(MainMenu, ARestartGivesUpTheChangesSinceTheLastSave) {
  write(SettingsFile());
  Bar bar = startBar();
  bar.focus();
  expectSaved([] { keyboard::chord({VK_CONTROL, 'L'}); });
  bar.openMenu();
  bar.choose(L"tr");
  const DialogWindow question = message();
  EXPECT_EQ(question.text(), L"Ignore all recent changes and restart the program?");
  EXPECT_EQ(question.buttons(), (std::vector<int>{IDYES, IDNO}));
  question.press(IDYES);
  EXPECT_EQ(program().waitForExit(), 0U);
  const HWND again = program().waitForSuccessor();
  DWORD process = 0;
  GetWindowThreadProcessId(again, &process);
  events().waitForFirst(kEventLoaded, L"loaded", process);
  EXPECT_FALSE(anyDialog(process).open());
  EXPECT_EQ(folder().state(), (DataFiles{{L"Varnowick.ini", SettingsFile().bytes()}}));
}

}  // namespace
}  // namespace varnowick::e2e
