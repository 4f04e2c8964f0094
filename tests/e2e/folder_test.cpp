// Folder containers: what is in the folder shows by itself, files are opened,
// renamed, deleted, copied and dragged from there, and nothing else happens to them.
#include <windows.h>
// These rely on it.
#include <shellapi.h>

#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/harness/other_program.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

constexpr const wchar_t* kQuestion =
    L"Delete Selected Files from disk and/or remove other selected shortcuts?";

long long filesInBin() {
  SHQUERYRBINFO about{};
  about.cbSize = sizeof about;
  return SUCCEEDED(SHQueryRecycleBinW(nullptr, &about)) ? about.i64NumItems : -1;
}

class FolderTest : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    CreateDirectoryW(path(L"").c_str(), nullptr);
  }
  std::wstring path(const std::wstring& name) {
    return folder().file(name.empty() ? L"Files" : L"Files\\" + name);
  }
  void put(const std::wstring& name) { writeFile(path(name), "x"); }

  Bar startWith(const std::wstring& shown, SettingsFile settings = SettingsFile()) {
    write(settings.set("[AutoExpand]", "0").set("[FoldOnClick]", "0").set("[Dbl-Click]", "1"),
          {{.name = L"Mine", .y = 600, .width = 2500, .height = 2400, .folder = shown}});
    Bar bar = startBar();
    bar.expand();
    return bar;
  }
  Bar startOpen(SettingsFile settings = SettingsFile()) { return startWith(path(L""), settings); }

  bool shows(const Bar& bar, const std::wstring& name) {
    return bar.accessible().find(name, ROLE_SYSTEM_LISTITEM).has_value();
  }
  void expectShown(const Bar& bar, const std::wstring& name) {
    bar.accessible().waitFor(name, ROLE_SYSTEM_LISTITEM);
  }
  void expectGone(const Bar& bar, const std::wstring& name) {
    require(name + L" to go", [&] { return !shows(bar, name); });
  }
  POINT onRow(const Bar& bar, const std::wstring& name) {
    return centreOf(bar.accessible().waitFor(name, ROLE_SYSTEM_LISTITEM).rect);
  }
  // By one click, as two are set to open.
  void select(Bar& bar, const std::wstring& name) {
    if (!bar.isOut()) bar.expand();
    mouse::click(onRow(bar, name));
    require(L"the row to be selected", [&] {
      const auto row = bar.accessible().find(name, ROLE_SYSTEM_LISTITEM);
      return row && (row->state & STATE_SYSTEM_SELECTED) != 0;
    });
    bar.waitUntilInFront();
  }
  // Again when the bar has gone back before the mouse was there; the source may have
  // deleted its file then.
  DWORD drop(Bar& bar, const std::wstring& file, const std::wstring& row,
             const Manners& manners = {}, const std::string& bytes = {}) {
    DWORD effect = DROPEFFECT_NONE;
    for (int i = 0; i < 3 && effect == DROPEFFECT_NONE; ++i) {
      if (!bytes.empty()) writeFile(file, bytes);
      DragSource source(offerFiles({file}), manners);
      if (!bar.isOut()) bar.expand();
      effect = source.dragTo(onRow(bar, row));
      if (manners.finishesLater) waitFor([&] { return source.toldOfEnd(); });
    }
    return effect;
  }
};
using MainFolder = FolderTest;

TEST_F(MainFolder, WhatHappensInTheFolderShowsByItself) {
  put(L"b & c.txt");
  CreateDirectoryW(path(L"Sub").c_str(), nullptr);
  Bar bar = startOpen();
  expectShown(bar, L"b & c.txt");
  EXPECT_LT(onRow(bar, L"Sub").y, onRow(bar, L"b & c.txt").y) << "folders come first";
  put(L"a.txt");
  expectShown(bar, L"a.txt");
  DeleteFileW(path(L"b & c.txt").c_str());
  expectGone(bar, L"b & c.txt");
  // The folder goes, and comes back.
  ASSERT_TRUE(MoveFileW(path(L"").c_str(), folder().file(L"Elsewhere").c_str()));
  expectGone(bar, L"a.txt");
  ASSERT_TRUE(MoveFileW(folder().file(L"Elsewhere").c_str(), path(L"").c_str()));
  expectShown(bar, L"a.txt");
  closeProgram();
}

TEST_F(MainFolder, DeletingAsksAndUsesTheBin) {
  for (const wchar_t* name : {L"one.txt", L"three.txt", L"two.txt"}) put(name);
  Bar bar = startOpen();
  select(bar, L"one.txt");
  keyboard::chord({VK_SHIFT, VK_DOWN});
  keyboard::press(VK_DELETE);
  const DialogWindow question = message();
  EXPECT_EQ(question.text(), std::wstring(kQuestion) +
                                 L"\r\n\r\none.txt\r\nthree.txt\r\n\r\n"
                                 L"To the Recycle Bin: 2 files.");
  question.press(IDNO);
  EXPECT_TRUE(fileExists(path(L"one.txt")));
  const long long before = filesInBin();
  bar.waitUntilInFront();
  keyboard::press(VK_DELETE);
  message().press(IDYES);
  expectGone(bar, L"one.txt");
  expectGone(bar, L"three.txt");
  EXPECT_TRUE(fileExists(path(L"two.txt")));
  EXPECT_EQ(filesInBin(), before + 2);
  closeProgram();
}

TEST_F(MainFolder, RemovingTheContainerLeavesTheFiles) {
  put(L"kept.txt");
  Bar bar = startOpen();
  // The list has the focus, and a file is selected in it.
  select(bar, L"kept.txt");
  mouse::click(bar.onTitle(L"Mine"));
  keyboard::press(VK_DELETE);
  expectSaved([&] { dialog(L"Remove Containers").press(IDYES); });
  expectGone(bar, L"kept.txt");
  EXPECT_TRUE(fileExists(path(L"kept.txt")));
  closeProgram();
}

TEST_F(MainFolder, DroppedFilesAreCopiedIntoIt) {
  put(L"here.txt");
  CreateDirectoryW(path(L"Sub").c_str(), nullptr);
  const std::wstring other = folder().file(L"Other.txt");
  writeFile(other, "other");
  Bar bar = startOpen();
  EXPECT_EQ(drop(bar, other, L"here.txt"), static_cast<DWORD>(DROPEFFECT_COPY));
  expectShown(bar, L"Other.txt");
  EXPECT_EQ(readFile(path(L"Other.txt")), "other");
  EXPECT_TRUE(fileExists(other)) << "the source allowed no move";
  // On a folder's row it goes into that folder.
  EXPECT_EQ(drop(bar, other, L"Sub"), static_cast<DWORD>(DROPEFFECT_COPY));
  EXPECT_EQ(readFile(path(L"Sub\\Other.txt")), "other");
  // What cannot be done is refused while it is dragged, and needs no message.
  EXPECT_EQ(drop(bar, path(L""), L"here.txt"), static_cast<DWORD>(DROPEFFECT_NONE));
  EXPECT_FALSE(anyDialog(program().process()).open());
  EXPECT_EQ(countSavedShortcuts(folder().read(L"Containers\\0.con")), 0U);
  closeProgram();
}

// Programs that unpack files for a drop delete them after it.
TEST_F(FolderTest, SourcesThatDeleteTheirFilesLoseNothing) {
  put(L"here.txt");
  Bar bar = startOpen();
  const std::string bytes(20'000'000, 'x');
  for (const bool later : {false, true}) {
    const std::wstring name = later ? L"Later.bin" : L"AtOnce.bin";
    const std::wstring unpacked = folder().file(name);
    const Manners manners{.temporary = {unpacked}, .finishesLater = later};
    EXPECT_EQ(drop(bar, unpacked, L"here.txt", manners, bytes),
              static_cast<DWORD>(DROPEFFECT_COPY));
    EXPECT_EQ(readFile(path(name)).size(), bytes.size());
    EXPECT_FALSE(fileExists(unpacked));
  }
  closeProgram();
}

TEST_F(FolderTest, ADragThatNeverEndsDoesNotHoldTheBar) {
  put(L"here.txt");
  Bar bar = startOpen();
  DragSource source(offerFiles({path(L"here.txt")}), {.hangs = true});
  source.dragTo(onRow(bar, L"here.txt"));
  bar.leave();
  bar.expand();
}

// Only what is seen is watched: however many there are, the one in sight is not kept
// waiting by the others.
TEST_F(FolderTest, FoldersOutOfSightKeepNobodyWaiting) {
  put(L"seen.txt");
  constexpr int kMany = 70;
  for (int i = 1; i < kMany; ++i) {
    const std::wstring name = L"Containers\\" + std::to_wstring(i) + L".con";
    const bool last = i + 1 == kMany;
    folder().write(name, containerFile({.name = L"Other",
                                        .y = last ? 3200 : 40000,
                                        .width = 2500,
                                        .height = 1500,
                                        .folder = last ? path(L"") : folder().file(L"")}));
  }
  Bar bar = startWith(folder().file(L""));
  expectShown(bar, L"seen.txt");
  closeProgram();
}

TEST_F(MainFolder, FilesOpenAndAreRenamedInPlace) {
  const std::wstring probe = folder().addLaunchProbe();
  Bar bar = startWith(probe.substr(0, probe.rfind(L'\\')));
  const std::wstring name = probe.substr(probe.rfind(L'\\') + 1);
  const std::wstring renamed = probe.substr(0, probe.rfind(L'\\') + 1) + L"Other name.exe";
  select(bar, name);
  keyboard::press(VK_F2);
  // The stem alone is selected.
  require(L"the edit box", [&] {
    GUITHREADINFO about{};
    about.cbSize = sizeof about;
    return GetGUIThreadInfo(GetWindowThreadProcessId(bar.window(), nullptr), &about) &&
           about.hwndFocus != bar.window() && about.hwndFocus != nullptr;
  });
  keyboard::type(L"Other name");
  keyboard::press(VK_RETURN);
  expectShown(bar, L"Other name.exe");
  EXPECT_TRUE(fileExists(renamed) && !fileExists(probe));
  events().expect(kEventLaunched, L"launched",
                  [&] { mouse::doubleClick(onRow(bar, L"Other name.exe")); });
  EXPECT_NE(waitForLaunch(renamed).commandLine.find(L"Other name.exe"), std::wstring::npos);
  closeProgram();
}

TEST_F(FolderTest, CutAndPasteMoveFilesFromOneFolderToAnother) {
  put(L"moves.txt");
  const std::wstring second = folder().file(L"Second");
  CreateDirectoryW(second.c_str(), nullptr);
  writeFile(second + L"\\there.txt", "y");
  folder().write(
      L"Containers\\1.con",
      containerFile(
          {.name = L"Second", .y = 3200, .width = 2500, .height = 1500, .folder = second}));
  Bar bar = startOpen();
  // A move that is refused takes nothing off the clipboard.
  Offer cut = offerFiles({path(L"")});
  cut.push_back({RegisterClipboardFormatW(L"Preferred DropEffect"), std::string("\2\0\0\0", 4)});
  putOnClipboard(cut);
  select(bar, L"moves.txt");
  keyboard::chord({VK_CONTROL, 'V'});
  message().press(IDOK);
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_HDROP));
  select(bar, L"moves.txt");
  keyboard::chord({VK_CONTROL, 'X'});
  select(bar, L"there.txt");
  keyboard::chord({VK_CONTROL, 'V'});
  require(L"the file to move",
          [&] { return fileExists(second + L"\\moves.txt") && !fileExists(path(L"moves.txt")); });
  require(L"the clipboard to be emptied", [] { return !IsClipboardFormatAvailable(CF_HDROP); });
  expectShown(bar, L"moves.txt");
  // And back again by the mouse: within a drive a drag moves.
  mouse::drag(onRow(bar, L"moves.txt"),
              centreOf(bar.accessible().waitFor(L"Folder of Mine", ROLE_SYSTEM_LIST).rect));
  require(L"the file to move back", [&] { return fileExists(path(L"moves.txt")); });
  EXPECT_FALSE(fileExists(second + L"\\moves.txt"));
  closeProgram();
}

// It asks in a thread and a window of its own; for the user that is a question of the bar.
TEST_F(MainFolder, WhatTheShellAsksHoldsTheBarAndComesForward) {
  put(L"same.txt");
  const std::wstring other = folder().file(L"same.txt");
  writeFile(other, "other");
  Bar bar = startOpen();
  select(bar, L"same.txt");
  putOnClipboard(offerFiles({other}));
  keyboard::chord({VK_CONTROL, 'V'});
  const DialogWindow question = dialog(L"");
  mouse::moveAwayFrom(bar.rect());
  letTimePass(2'500);
  EXPECT_TRUE(bar.isOut());
  {
    const OtherProgram inFront;
    const RunningProgram again(folder(), events());
    EXPECT_EQ(again.waitForExit(), 0U);
    require(L"the question in front", [&] { return GetForegroundWindow() == question.handle(); });
  }
  question.press(IDYES);
  require(L"the file to be replaced", [&] { return readFile(path(L"same.txt")) == "other"; });
  closeProgram();
}

}  // namespace
}  // namespace varnowick::e2e
