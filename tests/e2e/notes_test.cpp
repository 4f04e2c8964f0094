// Notes and pictures on the bar: written, read again, opened, added; and the colours of
// containers.
#include "tests/e2e/harness/detached.h"
#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"
#include "ui/win/dialogs/frm_con_colors.h"
#include "ui/win/dialogs/frm_picture_properties.h"

namespace varnowick::e2e {
namespace {

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
  writeNote("http://example.org/page\r\n");
  Bar bar = startBar();
  bar.expand();
  const RECT note = noteRect(bar, L"Memo");
  events().expect(kEventLaunched, L"opened", [&] { mouse::click({note.left + 30, note.top + 8}); });
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
  openMenuAt(bar.onTitle(L"Memo"));
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
  dialog(L"");
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
    const DialogWindow open = dialog(L"The picture to show");
    putOnClipboard(offerText(path));
    keyboard::chord({VK_CONTROL, 'V'});
    keyboard::press(VK_RETURN);
    require(L"the dialog to close", [&] { return !open.open(); });
  };
  choose(folder().file(L"text.png"));
  const DialogWindow refusal = message();
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
  DialogWindow properties = dialog(L"Picture properties");
  EXPECT_NE(properties.text().find(L"Error: "), std::wstring::npos);
  properties.press(IDCANCEL);
  bar.focus();
  const POINT on = centreOf(bar.accessible().waitFor(L"away.png", ROLE_SYSTEM_GRAPHIC).rect);
  events().expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(on); });
  bar.choose(L"p");
  properties = dialog(L"Picture properties");
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

TEST_F(MainNotes, ColoursAreChosen) {
  writeNote("");
  Bar bar = startBar();
  bar.expand();
  openMenuAt(bar.onTitle(L"Memo"));
  bar.choose(L"L");
  const DialogWindow colours = dialog(L"Container colours");
  RECT r{};
  GetWindowRect(GetDlgItem(colours.handle(), frmConColors::kLighterBack), &r);
  mouse::click(centreOf(r));
  expectSaved([&] { colours.press(IDOK); });
  EXPECT_NE(value(0, "[Backcolor]"), value(0, "[Forecolor]"));
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
