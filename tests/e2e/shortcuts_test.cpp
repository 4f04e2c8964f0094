// Working on shortcuts: dragging, opening one with another, deleting, editing,
// adding, and the same with the keyboard alone.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"
#include "ui/win/dialogs/frm_shortcut_properties.h"

namespace varnowick::e2e {
namespace {

using Record = std::map<std::string, std::string>;

class ShortcutsTest : public ProgramTest {
 protected:
  POINT placeOf(const Bar& bar, const std::wstring& name) {
    return centreOf(bar.accessible().waitFor(name).rect);
  }
  // Replaces the text of a dialog's field.
  void enter(const DialogWindow& in, int field, const std::wstring& text) {
    const HWND control = GetDlgItem(in.handle(), field);
    RECT rect{};
    ASSERT_TRUE(GetWindowRect(control, &rect));
    mouse::click(centreOf(rect));
    keyboard::press(VK_END);
    keyboard::chord({VK_SHIFT, VK_HOME});
    keyboard::press(VK_DELETE);
    keyboard::type(text);
    require(L"the field to hold the text", [&] { return textOf(control) == text; });
  }
  bool focused(const Bar& bar, const std::wstring& name) {
    const auto item = bar.accessible().find(name, ROLE_SYSTEM_LINK);
    return item && (item->state & STATE_SYSTEM_FOCUSED) != 0;
  }
};
using MainShortcuts = ShortcutsTest;

TEST_F(MainShortcuts, DraggedIntoAContainerAndPastedFromItsMenu) {
  const std::wstring target = folder().addLaunchProbe();
  write(SettingsFile().add({.caption = L"Moves", .path = target, .x = 360, .y = 3600}),
        {{.name = L"Tools"}});
  Bar bar = startBar();
  bar.expand();
  const RECT tools = bar.box(L"Tools");
  expectSaved([&] { mouse::drag(placeOf(bar, L"Moves"), centreOf(tools)); });
  EXPECT_EQ(savedShortcut(file(0), "Moves")["[LinkPath]"], ansi(target));
  EXPECT_EQ(countSavedShortcuts(recovery()), 0U);
  EXPECT_FALSE(launched(target)) << "a drag is no click";

  putOnClipboard(offerText(L"http://example.org/"));
  openMenuAt({tools.left + toPixels(300), tools.top + toPixels(175)});
  expectSaved([&] { bar.choose(L"e"); });
  EXPECT_FALSE(savedShortcut(file(0), "example.org").empty());
}

TEST_F(MainShortcuts, DroppedOnAnotherOneOpensWithTheOther) {
  const std::wstring probe = folder().addLaunchProbe();
  const std::wstring document = folder().file(L"a document.txt");
  write(SettingsFile()
            .add({.caption = L"Doc", .path = document, .x = 360, .y = 360})
            .add({.caption = L"Probe", .path = probe, .x = 360, .y = 3600}));
  Bar bar = startBar();
  bar.expand();
  const DataFiles before = folder().state();
  const auto dragOver = [&] {
    const POINT from = placeOf(bar, L"Doc"), to = placeOf(bar, L"Probe");
    mouse::moveTo(from);
    mouse::press();
    mouse::moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    mouse::moveTo(to);
    // What is being dragged stays what it was.
    for (const WORD key : {'U', 'A', 'Z'}) keyboard::chord({VK_CONTROL, key});
    mouse::release();
  };
  dragOver();
  const DialogWindow question = message();
  EXPECT_EQ(question.text(), L"Open: Doc with: Probe?");
  question.press(IDNO);
  dragOver();
  message().press(IDYES);
  const Launch launch = waitForLaunch(probe);
  EXPECT_TRUE(launch.commandLine.ends_with(L" \"" + document + L"\""))
      << toUtf8(launch.commandLine);
  EXPECT_EQ(folder().state(), before) << "neither has moved";
}

// Off every window of the program, or with Esc, a drag ends where it began; and what
// follows starts as if there had been none.
TEST_F(MainShortcuts, ADragThatEndsNowhereChangesNothingAndHoldsNothingUp) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile().add({.caption = L"Probe", .path = probe, .y = 3600}),
        {{.name = L"Away",
          .shortcuts = {{.caption = L"Inside", .path = L"C:\\x", .y = 600}},
          .detached = detachedLines({})}});
  Bar bar = startBar();
  const DetachedWindow away(program(), events(), L"Away");
  away.waitUntilShown();
  bar.focus();
  const DataFiles before = folder().state();
  const POINT nowhere{toPixels(6500), toPixels(10'000)};
  mouse::drag(placeOf(bar, L"Probe"), nowhere);
  mouse::drag(centreOf(away.accessible().waitFor(L"Inside").rect), nowhere);
  bar.leave();
  bar.expand();
  mouse::moveTo(placeOf(bar, L"Probe"));
  mouse::press();
  mouse::moveTo({bar.rect().right - 60, bar.rect().bottom - 200});
  keyboard::press(VK_ESCAPE);
  mouse::release();
  EXPECT_FALSE(launched(probe));
  keyboard::press(VK_RETURN);
  waitForLaunch(probe);
  EXPECT_EQ(folder().state(), before);
}

SettingsFile threeShortcuts() {
  SettingsFile settings;
  for (int i = 0; i < 3; ++i)
    settings.add({.caption = std::wstring(1, static_cast<wchar_t>(L'A' + i)),
                  .path = L"C:\\none.exe",
                  .x = 360,
                  .y = 360 + 1200 * i});
  return settings;
}

TEST_F(ShortcutsTest, DeletingAsksOnceForAll) {
  write(threeShortcuts());
  Bar bar = startBar();
  bar.focus();
  const DataFiles before = folder().state();
  keyboard::chord({VK_CONTROL, 'A'});
  keyboard::press(VK_DELETE);
  const DialogWindow question = message();
  EXPECT_EQ(
      question.text(),
      L"Remove Selected Shortcuts?\r\n\r\nA\r\nB\r\nC\r\n\r\n3 shortcuts. No file is deleted.");
  question.press(IDNO);
  EXPECT_EQ(folder().state(), before);

  bar.focus();
  keyboard::chord({VK_CONTROL, 'A'});
  keyboard::press(VK_DELETE);
  expectSaved([&] { message().press(IDYES); });
  EXPECT_EQ(countSavedShortcuts(recovery()), 0U);
}

TEST_F(ShortcutsTest, LockedNothingIsMovedDeletedOrAdded) {
  write(threeShortcuts().set("[LOCKED]", "1"));
  Bar bar = startBar();
  const DataFiles before = folder().state();
  const auto answerMessage = [&] {
    const DialogWindow told = message();
    EXPECT_EQ(told.text(), L"Editing is locked. Unlock it (Ctrl+L) to change the workspace.");
    told.press(IDOK);
  };
  bar.focus();
  keyboard::chord({VK_CONTROL, 'W'});
  answerMessage();
  bar.focus();
  keyboard::press(VK_TAB);
  keyboard::chord({VK_CONTROL, 'A'});
  keyboard::press(VK_DELETE);
  answerMessage();
  for (int tabs = 0; tabs < 20 && !focused(bar, L"A"); ++tabs) keyboard::press(VK_TAB);
  keyboard::press(VK_F2);
  answerMessage();
  bar.focus();
  putOnClipboard(offerText(L"http://example.org/"));
  keyboard::chord({VK_CONTROL, 'V'});
  answerMessage();
  bar.focus();
  const POINT from = placeOf(bar, L"C");
  mouse::drag(from, {from.x, from.y + 120});
  EXPECT_EQ(folder().state(), before);
  bar.leave();
  closeProgram();
  EXPECT_EQ(folder().state(), before);
}

TEST_F(MainShortcuts, ThePropertiesAreWritten) {
  using Id = frmShortcutProperties::Id;
  write(SettingsFile().add({.caption = L"Old", .path = L"C:\\none.exe"}));
  Bar bar = startBar();
  bar.focus();
  keyboard::chord({VK_CONTROL, 'A'});
  keyboard::press(VK_F2);
  const DialogWindow properties = dialog(L"Shortcut properties");
  const std::wstring path = textOf(GetDlgItem(properties.handle(), Id::kPath));
  EXPECT_EQ(path, L"C:\\none.exe");
  enter(properties, Id::kCaption, L"New name");
  enter(properties, Id::kPath, L"C:\\other.exe");
  expectSaved([&] { properties.press(IDOK); });
  EXPECT_EQ(savedShortcut(recovery(), "New name")["[LinkPath]"], "C:\\other.exe");
  EXPECT_EQ(countSavedShortcuts(recovery()), 1U);
}

TEST_F(MainShortcuts, AWebAddressIsTypedAndFindsAFreePlace) {
  write(SettingsFile().add({.caption = L"First", .path = L"C:\\none.exe", .x = 120, .y = 120}));
  Bar bar = startBar();
  bar.focus();
  keyboard::chord({VK_CONTROL, 'W'});
  const DialogWindow asked = dialog(L"Web URL");
  require(L"the dialog to take the keys", [&] { return GetForegroundWindow() == asked.handle(); });
  keyboard::type(L"example.org/page");
  expectSaved([] { keyboard::press(VK_RETURN); });
  EXPECT_FALSE(asked.open());
  Record added = savedShortcut(recovery(), "example.org");
  EXPECT_EQ(added["[LinkType]"], " 1");
  EXPECT_EQ(added["[LinkPath]"], "http://example.org/page");
  const RECT first = bar.accessible().waitFor(L"First").rect;
  const RECT second = bar.accessible().waitFor(L"example.org").rect;
  RECT common{};
  EXPECT_FALSE(IntersectRect(&common, &first, &second)) << first << " and " << second;
}

using KeyboardTest = ShortcutsTest;

TEST_F(KeyboardTest, ReachesStartsAndEditsAShortcutInAContainer) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile(),
        {{.name = L"Tools",
          .shortcuts = {{.caption = L"Upper", .path = L"C:\\none.exe", .x = 120, .y = 480},
                        {.caption = L"Lower", .path = probe, .x = 120, .y = 1560}}}});
  Bar bar = startBar();
  bar.focus();
  for (int tabs = 0; tabs < 40 && !focused(bar, L"Upper"); ++tabs) keyboard::press(VK_TAB);
  require(L"the focus on the upper shortcut", [&] { return focused(bar, L"Upper"); });
  keyboard::press(VK_DOWN);
  require(L"the focus on the lower shortcut", [&] { return focused(bar, L"Lower"); });
  EXPECT_FALSE(focused(bar, L"Upper"));
  events().expect(kEventMenuOpened, L"menu opened", [] { keyboard::press(VK_APPS); });
  require(L"the menu's window", [] { return FindWindowW(L"#32768", nullptr) != nullptr; });
  keyboard::type(L"p");
  dialog(L"Shortcut properties").press(IDCANCEL);
  bar.waitUntilInFront();
  keyboard::press(VK_RETURN);
  waitForLaunch(probe);
}

}  // namespace
}  // namespace varnowick::e2e
