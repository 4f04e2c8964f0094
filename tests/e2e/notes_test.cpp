// Notes and pictures on the bar: written, read again, opened, added; and the colours of
// containers.
#include "platform/win32/handles.h"
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"
#include "ui/win/dialogs/frm_con_colors.h"
#include "ui/win/dialogs/frm_picture_properties.h"

namespace varnowick::e2e {
namespace {

// What opens web pages, while this object lives. Nothing is changed where that is not
// allowed.
class PageOpener {
 public:
  explicit PageOpener(const std::wstring& program) {
    const std::wstring command = L"\"" + program + L"\" \"%1\"";
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                        key_.put(), nullptr) != ERROR_SUCCESS)
      return;
    DWORD size = sizeof former_;
    had_ = RegQueryValueExW(key_.get(), nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(former_),
                            &size) == ERROR_SUCCESS;
    set_ = RegSetValueExW(
               key_.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(command.c_str()),
               static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
  }
  ~PageOpener() {
    if (!set_) return;
    if (had_)
      RegSetValueExW(key_.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(former_),
                     static_cast<DWORD>((wcslen(former_) + 1) * sizeof(wchar_t)));
    else
      RegDeleteValueW(key_.get(), nullptr);
  }
  bool set() const { return set_; }

 private:
  static constexpr const wchar_t* kKey = L"Software\\Classes\\http\\shell\\open\\command";
  KeyHandle key_;
  wchar_t former_[1024] = {};
  bool had_ = false;
  bool set_ = false;
};

class NotesTest : public ProgramTest {
 protected:
  void writeNote(const std::string& note) {
    write(SettingsFile(),
          {{.name = L"Memo", .x = 120, .y = 600, .width = 2500, .height = 3000, .note = note}});
  }
  RECT noteRect(const Bar& bar, const std::wstring& container) {
    return bar.accessible().waitFor(L"Note of " + container).rect;
  }
  // The text control in which a note is being edited.
  HWND editor(const Bar& bar) { return editor(bar.window()); }
  HWND editor(HWND window) {
    HWND found = nullptr;
    require(L"the editor of the note", [&] {
      for (HWND child = FindWindowExW(window, nullptr, L"VarnowickEditOverlay", nullptr);
           child != nullptr && found == nullptr;
           child = FindWindowExW(window, child, L"VarnowickEditOverlay", nullptr))
        if (IsWindowVisible(child)) found = FindWindowExW(child, nullptr, L"EDIT", nullptr);
      return found != nullptr;
    });
    return found;
  }
  void endEditing(const Bar& bar) {
    const HWND control = editor(bar);
    expectSaved([] { keyboard::press(VK_ESCAPE); });
    require(L"the editor to go", [&] { return !IsWindowVisible(GetParent(control)); });
  }
  // The note's lines in the file, as UTF-8.
  std::string savedNote() {
    const std::string all = file(0);
    const std::string start = "[START Note]\r\n";
    const std::size_t from = all.find(start) + start.size();
    return all.substr(from, all.find("\r\n[END Note]\r\n", from) - from);
  }
};
using MainNotes = NotesTest;

TEST_F(MainNotes, ANewOneIsTypedInAndReadAgain) {
  write(SettingsFile());
  Bar bar = startBar();
  bar.focus();
  expectSaved([] { keyboard::chord({VK_CONTROL, 'N'}); });
  const HWND control = editor(bar);
  keyboard::type(L"bread and milk");
  keyboard::press(VK_RETURN);
  putOnClipboard(offerText(L"\x65E5\x672C \x042F\xD83D\xDE00\r\n[END Note]\r\nlast"));
  keyboard::chord({VK_CONTROL, 'V'});
  require(L"the text", [&] { return textOf(control).ends_with(L"last"); });
  endEditing(bar);
  EXPECT_EQ(savedValue(file(0), "[NOTE ON]"), "1");
  EXPECT_EQ(savedNote(), "bread and milk\r\n" + toUtf8(L"\x65E5\x672C \x042F\xD83D\xDE00") +
                             "\r\n[END Note] \r\nlast")
      << "a line that would end the note has a blank";
  closeProgram();
  const std::string before = file(0);
  Bar again = startBar();
  if (!again.isOut()) again.expand();
  mouse::click(centreOf(noteRect(again, L"Note")));
  EXPECT_NE(textOf(editor(again)).find(L"\x65E5\x672C"), std::wstring::npos);
  keyboard::press(VK_ESCAPE);
  closeProgram();
  EXPECT_EQ(file(0), before);
}

TEST_F(MainNotes, ALinkIsOpenedAndAClickBesideItEdits) {
  const std::wstring browser = folder().addLaunchProbe();
  const PageOpener opener(browser);
  if (!opener.set()) GTEST_SKIP() << "what opens pages cannot be set here";
  writeNote("http://example.org/page\r\n");
  Bar bar = startBar();
  bar.expand();
  const RECT note = noteRect(bar, L"Memo");
  mouse::click({note.left + 30, note.top + 8});
  EXPECT_TRUE(waitForLaunch(browser).commandLine.ends_with(L"\"http://example.org/page\""));
  // The caret goes to the end of the line that was clicked, past the link.
  mouse::click({note.right - 12, note.top + 8});
  editor(bar);
  keyboard::type(L" read");
  endEditing(bar);
  EXPECT_EQ(savedNote(), "http://example.org/page read");
}

TEST_F(NotesTest, WhatWasTypedGoesWithItsContainerAndNotToTheNext) {
  writeNote("old words\r\n");
  write(SettingsFile().set("[ConfirmDelete]", "0"));
  Bar bar = startBar();
  bar.expand();
  mouse::click(centreOf(noteRect(bar, L"Memo")));
  const HWND control = editor(bar);
  keyboard::type(L"new words");
  const RECT box = bar.accessible().waitFor(L"Memo", ROLE_SYSTEM_GROUPING).rect;
  openMenuAt({box.left + toPixels(300), box.top + toPixels(175)});
  bar.choose(L"r");
  require(L"the container to go", [&] { return !folder().exists(L"Containers\\0.con"); });
  require(L"the editor to go", [&] { return !IsWindowVisible(GetParent(control)); });
  bar.focus();
  expectSaved([] { keyboard::chord({VK_CONTROL, 'N'}); });
  editor(bar);
  closeProgram();
  EXPECT_EQ(savedValue(file(0), "[Name]"), "Note");
  EXPECT_EQ(file(0).find("words"), std::string::npos);
}

TEST_F(NotesTest, FiveMegabytesAreShownEditedAndScrolled) {
  std::string note;
  while (note.size() < 3'000'000) note += "A line of a note that has grown too long.\r\n";
  note += std::string(2'000'000, 'x') + "\r\n";
  writeNote(note);
  Bar bar = startBar();
  bar.expand();
  const POINT middle = centreOf(noteRect(bar, L"Memo"));
  mouse::wheel(middle, -3);
  mouse::click(middle);
  editor(bar);
  keyboard::press(VK_HOME);
  keyboard::type(L"now ");
  // All of it is selected, replaced, and comes back.
  keyboard::chord({VK_CONTROL, 'A'});
  putOnClipboard(offerText(std::wstring(15'000, L'y')));
  expectSaved([] { keyboard::chord({VK_CONTROL, 'V'}); });
  EXPECT_EQ(savedNote(), std::string(15'000, 'y'));
  keyboard::chord({VK_CONTROL, 'Z'});
  endEditing(bar);
  const std::string all = file(0);
  EXPECT_NE(all.find("now "), std::string::npos);
  EXPECT_GT(all.size(), note.size());
  closeProgram();
}

TEST_F(NotesTest, TheMenuEditsAndTheBarStaysMeanwhile) {
  writeNote("one two\r\n");
  Bar bar = startBar();
  bar.expand();
  const RECT note = noteRect(bar, L"Memo");
  mouse::click(centreOf(note));
  const HWND control = editor(bar);
  const auto choose = [&](const wchar_t* mnemonic) {
    openMenuAt(centreOf(note));
    events().expect(kEventMenuClosed, L"menu closed", [&] { bar.choose(mnemonic); });
  };
  events().expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(centreOf(note)); });
  mouse::moveAwayFrom(bar.rect());
  letTimePass(1500);  // longer than the bar takes to go when nothing holds it
  EXPECT_TRUE(bar.isOut());
  events().expect(kEventMenuClosed, L"menu closed", [] { keyboard::press(VK_ESCAPE); });
  choose(L"a");
  choose(L"t");
  require(L"the text to go", [&] { return textOf(control).empty(); });
  choose(L"u");
  require(L"the text to come back", [&] { return textOf(control) == L"one two"; });
  keyboard::press(VK_ESCAPE);
  closeProgram();
  EXPECT_EQ(savedNote(), "one two");
}

// What cannot be saved is told of in a box, in which the session then ends.
TEST_F(NotesTest, TheSessionMayEndWhileWhatWasTypedInAWindowIsSaved) {
  write(SettingsFile());
  for (int i = 0; i < 2; ++i)
    folder().write(L"Containers\\" + std::to_wstring(i) + L".con",
                   containerFile({.name = i == 0 ? L"Memo" : L"Other",
                                  .note = "old\r\n",
                                  .detached = detachedLines({.x = 4000 + 5000 * i, .y = 3000})}));
  Bar bar = startBar();
  const DetachedWindow memo(program(), events(), L"Memo");
  mouse::click(centreOf(memo.accessible().waitFor(L"Note of Memo").rect));
  editor(memo.window());
  keyboard::type(L" new");
  ASSERT_TRUE(CreateDirectoryW(folder().file(L"Varnowick.REC").c_str(), nullptr));
  waitForDialog(program().process(), L"");
  DWORD_PTR ignored = 0;
  SendMessageTimeoutW(bar.window(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, kPatience, &ignored);
  EXPECT_EQ(program().waitForExit(), 0U);
  EXPECT_EQ(savedNote(), "old new");
}

TEST_F(MainNotes, APictureIsAddedAndWhatIsNoneIsRefused) {
  const std::wstring picture = folder().path() + L"\\Images\\picture-64.png";
  write(SettingsFile());
  folder().write(L"text.png", "This is no picture at all, whatever its name says.");
  Bar bar = startBar();
  const auto choose = [&](const std::wstring& path) {
    bar.focus();
    keyboard::chord({VK_CONTROL, 'P'});
    const DialogWindow open = waitForDialog(program().process(), L"The picture to show");
    putOnClipboard(offerText(path));
    keyboard::chord({VK_CONTROL, 'V'});
    keyboard::press(VK_RETURN);
    require(L"the dialog to close", [&] { return !open.open(); });
  };
  choose(folder().file(L"text.png"));
  const DialogWindow refusal = waitForDialog(program().process(), kTitle);
  EXPECT_TRUE(refusal.text().starts_with(L"This file is no picture that can be shown:"));
  refusal.press(IDOK);
  expectSaved([&] { choose(picture); });
  EXPECT_EQ(savedValue(folder().read(L"Varnowick.REC"), "[PicPath]"), ansi(picture));
  bar.accessible().waitFor(L"picture-64.png", ROLE_SYSTEM_GRAPHIC);
  closeProgram();
}

// Its place is kept; opening it leads to its properties, where it can be mended.
TEST_F(MainNotes, APictureThatHasGoneKeepsItsPlaceAndCanBeMended) {
  using Id = frmPictureProperties::Id;
  const std::string record =
      "[Picture]\r\n[Locked]\r\n0\r\n[PicX]\r\n 300\r\n[PicY]\r\n 300\r\n[PicW]\r\n 1800\r\n"
      "[PicH]\r\n 1500\r\n[PicPath]\r\nC:\\gone\\away.png\r\nTEMP\r\nTEMP\r\nTEMP\r\nTEMP\r\n";
  folder().write(L"Varnowick.ini", SettingsFile().bytes() + record);
  Bar bar = startBar();
  bar.expand();
  const AccessibleItem gone = bar.accessible().waitFor(L"away.png", ROLE_SYSTEM_GRAPHIC);
  EXPECT_EQ(bar.accessible().defaultAction(gone), L"Open");
  bar.accessible().doDefaultAction(gone);
  DialogWindow properties = waitForDialog(program().process(), L"Picture properties");
  EXPECT_NE(properties.text().find(L"Error: "), std::wstring::npos);
  properties.press(IDCANCEL);
  bar.focus();
  const POINT on = centreOf(bar.accessible().waitFor(L"away.png", ROLE_SYSTEM_GRAPHIC).rect);
  mouse::click(on);
  keyboard::press(VK_F2);
  waitForDialog(program().process(), L"Picture properties").press(IDCANCEL);
  bar.focus();
  events().expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(on); });
  bar.choose(L"p");
  properties = waitForDialog(program().process(), L"Picture properties");
  const auto field = [&](int id) { return GetDlgItem(properties.handle(), id); };
  EXPECT_EQ(textOf(field(Id::kWidth)) + L" x " + textOf(field(Id::kHeight)), L"112 x 92");
  RECT width{};
  GetWindowRect(field(Id::kWidth), &width);
  mouse::doubleClick(centreOf(width));
  keyboard::type(L"224");
  require(L"the height to follow", [&] { return textOf(field(Id::kHeight)) == L"184"; });
  expectSaved([&] { properties.press(IDOK); });
  EXPECT_EQ(savedValue(folder().read(L"Varnowick.REC"), "[PicW]"), number(224 * 15 + 120));
  EXPECT_EQ(savedValue(folder().read(L"Varnowick.REC"), "[PicH]"), number(184 * 15 + 120));
  closeProgram();
  EXPECT_EQ(savedValue(folder().read(L"Varnowick.ini"), "[PicPath]"), "C:\\gone\\away.png");
}

TEST_F(MainNotes, ColoursAreChosenAndReset) {
  writeNote("");
  Bar bar = startBar();
  const auto openColours = [&] {
    if (!bar.isOut()) bar.expand();
    const RECT box = bar.accessible().waitFor(L"Memo", ROLE_SYSTEM_GROUPING).rect;
    events().expect(kEventMenuOpened, L"menu opened", [&] {
      mouse::rightClick({box.left + 30, box.top + 10});
    });
    bar.choose(L"L");
    return waitForDialog(program().process(), L"Container colours");
  };
  DialogWindow colours = openColours();
  RECT r{};
  GetWindowRect(GetDlgItem(colours.handle(), frmConColors::kLighterBack), &r);
  mouse::click(centreOf(r));
  expectSaved([&] { colours.press(IDOK); });
  const std::string lighter = savedValue(file(0), "[Backcolor]");
  EXPECT_NE(lighter, savedValue(file(0), "[Forecolor]"));

  colours = openColours();
  GetWindowRect(GetDlgItem(colours.handle(), frmConColors::kReset), &r);
  mouse::click(centreOf(r));
  const DialogWindow question = waitForDialog(program().process(), kTitle);
  EXPECT_EQ(question.text(), L"Reset Container's colors to defualt values?");
  question.press(IDYES);
  expectSaved([&] { colours.press(IDOK); });
  EXPECT_EQ(savedValue(file(0), "[Backcolor]"), savedValue(file(0), "[Forecolor]"));
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
