// Typing on the bar finds shortcuts, containers and files wherever they lie.
#include "tests/e2e/program_test.h"
#include "ui/win/dialogs/frm_shortcut_properties.h"

namespace varnowick::e2e {
namespace {

BOOL CALLBACK collectChild(HWND window, LPARAM into) {
  reinterpret_cast<std::vector<HWND>*>(into)->push_back(window);
  return TRUE;
}

class JumpBoxTest : public ProgramTest {
 protected:
  // The field or the list of the box while it is shown; else nullptr.
  HWND control(const Bar& bar, const wchar_t* className) {
    std::vector<HWND> all;
    EnumChildWindows(bar.window(), &collectChild, reinterpret_cast<LPARAM>(&all));
    for (const HWND child : all)
      if (IsWindowVisible(child) && lstrcmpiW(classOf(child).c_str(), className) == 0) return child;
    return nullptr;
  }
  HWND field(const Bar& bar) { return control(bar, L"Edit"); }
  LRESULT matches(const Bar& bar) {
    const HWND list = control(bar, L"ListBox");
    return list == nullptr ? -1 : SendMessageW(list, LB_GETCOUNT, 0, 0);
  }
  void type(const Bar& bar, const std::wstring& letters) {
    keyboard::type(letters);
    require(L"the field to hold " + letters,
            [&] { return field(bar) != nullptr && textOf(field(bar)) == letters; });
  }
  Bar startFocused(const std::wstring& probe) {
    write(
        SettingsFile().add({.caption = L"Other", .path = L"C:\\none.exe", .y = 3600}),
        {{.name = L"Tools",
          .shortcuts = {{.caption = L"Zebra one", .path = probe, .x = 120, .y = 480},
                        {.caption = L"Zebra two", .path = L"C:\\none.exe", .x = 120, .y = 1560}}}});
    Bar bar = startBar();
    bar.focus();
    return bar;
  }
  bool selected(const Bar& bar, const std::wstring& name) {
    const auto item = bar.accessible().find(name, ROLE_SYSTEM_LINK);
    return item && (item->state & STATE_SYSTEM_SELECTED) != 0;
  }
};
using MainJumpBox = JumpBoxTest;

TEST_F(MainJumpBox, FindsAShortcutInAContainerAndStartsIt) {
  const std::wstring probe = folder().addLaunchProbe();
  Bar bar = startFocused(probe);
  type(bar, L"zebra");
  EXPECT_EQ(matches(bar), 2);
  // The blank steps through what was found, it is not typed.
  keyboard::press(VK_SPACE);
  require(L"the first match to be shown", [&] { return selected(bar, L"Zebra one"); });
  keyboard::press(VK_SPACE);
  require(L"the second match to be shown", [&] { return selected(bar, L"Zebra two"); });
  EXPECT_FALSE(selected(bar, L"Zebra one"));
  EXPECT_EQ(textOf(field(bar)), L"zebra");
  keyboard::chord({VK_SHIFT, VK_SPACE});
  keyboard::type(L"one");
  require(L"one match", [&] { return matches(bar) == 1; });
  keyboard::press(VK_RETURN);
  waitForLaunch(probe);
  EXPECT_EQ(field(bar), nullptr) << "the box has done its work";
}

TEST_F(MainJumpBox, OpensContainersAndFilesOfFolders) {
  const std::wstring probe = folder().addLaunchProbe();
  write(SettingsFile(), {{.name = L"Zebras", .folded = true},
                         {.name = L"Mine",
                          .y = 3000,
                          .height = 1800,
                          .folder = probe.substr(0, probe.find_last_of(L'\\'))}});
  Bar bar = startBar();
  bar.focus();
  bar.accessible().waitFor(L"launch_probe.exe", ROLE_SYSTEM_LISTITEM);
  type(bar, L"zeb");
  EXPECT_EQ(matches(bar), 1);
  keyboard::press(VK_RETURN);
  bar.accessible().waitFor(L"Fold Zebras", ROLE_SYSTEM_PUSHBUTTON);
  EXPECT_EQ(field(bar), nullptr);
  type(bar, L"probe");
  keyboard::press(VK_RETURN);
  waitForLaunch(probe);
}

TEST_F(JumpBoxTest, F2IsAboutTheMatchAndNotTheSelection) {
  Bar bar = startFocused(L"C:\\none.exe");
  type(bar, L"oth");
  keyboard::press(VK_SPACE);
  require(L"the other one to be selected", [&] { return selected(bar, L"Other"); });
  keyboard::press(VK_ESCAPE);
  type(bar, L"two");
  keyboard::press(VK_F2);
  const DialogWindow properties = dialog(L"Shortcut properties");
  EXPECT_EQ(textOf(GetDlgItem(properties.handle(), frmShortcutProperties::kCaption)), L"Zebra two");
  properties.press(IDCANCEL);
}

TEST_F(JumpBoxTest, EscapeClearsThenClosesThenCollapses) {
  Bar bar = startFocused(L"C:\\none.exe");
  type(bar, L"ze");
  keyboard::press(VK_ESCAPE);
  require(L"the field to be empty", [&] { return textOf(field(bar)).empty(); });
  EXPECT_NE(field(bar), nullptr);
  EXPECT_TRUE(bar.isOut());
  keyboard::press(VK_ESCAPE);
  require(L"the box to close", [&] { return field(bar) == nullptr; });
  EXPECT_TRUE(bar.isOut());
  events().expect(kEventCollapsed, L"collapsed", [] { keyboard::press(VK_ESCAPE); });
}

TEST_F(JumpBoxTest, TheBarStaysOpenWhileItIsTypedOn) {
  Bar bar = startFocused(L"C:\\none.exe");
  type(bar, L"ot");
  mouse::moveAwayFrom(bar.rect());
  letTimePass(2'500);
  EXPECT_TRUE(bar.isOut());
  EXPECT_EQ(matches(bar), 1);
}

}  // namespace
}  // namespace varnowick::e2e
