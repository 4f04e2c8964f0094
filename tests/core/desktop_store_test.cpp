#include "core/desktop_store.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/container_files.h"
#include "core/settings_file.h"
#include "tests/core/reference_document.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {
namespace {

using Operation = MemoryFiles::Operation;
const std::wstring kFolder = L"C:\\Data\\Varnowick";
const FileStatus kDiskFull{FileStatus::Kind::DiskFull, L"There is not enough space on the disk."};

std::wstring at(const wchar_t* name) { return kFolder + name; }

// Everything that is saved of a document, in one comparable text.
std::string stateOf(const Document& document) {
  FakeCodec codec;
  const ContentsByPanel contents(document.workspace);
  return renderJournal({false, renderSettingsFile(document.settings, contents.of(picBack), codec),
                        renderContainerFiles(document.workspace, contents, codec)});
}

Document withContainers(const wchar_t* name, int containers) {
  Document d;
  d.settings.wallpaper = name;
  for (int i = 0; i < containers; ++i) {
    clsContainer c;
    c.name = name + std::to_wstring(i);
    d.workspace.containers.add(c);
  }
  return d;
}

// One run of the program on a disk.
struct Session {
  FakeCodec codec;
  FakeMsgBox msgBox;
  DesktopStore store;
  Document document;
  LoadReport report;

  explicit Session(MemoryFiles& files, std::vector<MsgAnswer> answers = {})
      : store(files, codec, msgBox, kFolder) {
    msgBox.answers = std::move(answers);
    report = store.LoadSettings(document).value_or(LoadReport{});
  }
  std::string state() const { return stateOf(document); }
};

void expectState(MemoryFiles files, std::initializer_list<const Document*> allowed,
                 const std::string& where) {
  files.operationsUntilCut = -1;
  files.failure = nullptr;
  const std::string found = Session(files).state();
  EXPECT_TRUE(std::any_of(allowed.begin(), allowed.end(), [&](const Document* d) {
    return found == stateOf(*d);
  })) << where;
}

MemoryFiles diskWith(const Document& document) {
  MemoryFiles files;
  Session session(files);
  EXPECT_TRUE(session.store.SaveDesktop(document, false));
  files.log.clear();
  return files;
}

TEST(DesktopStore, SavesInTheFixedOrderAndLoadsTheSame) {
  MemoryFiles files = diskWith(referenceDocument());
  Session session(files);
  EXPECT_TRUE(session.report.empty());
  EXPECT_EQ(session.state(), stateOf(referenceDocument()));

  const auto before = files.contents;
  EXPECT_TRUE(session.store.SaveDesktop(session.document, false));
  EXPECT_EQ(files.contents, before);

  session.store.SaveDesktop(session.document, true);
  EXPECT_TRUE(files.contents.contains(at(L"\\Varnowick.REC")));
  files.log.clear();
  session.store.SaveDesktop(withContainers(L"x", 1), false);
  const std::vector<std::wstring> expected{
      L"write " + at(L"\\Varnowick.journal"),  L"remove " + at(L"\\Varnowick.REC"),
      L"write " + at(L"\\Varnowick.ini"),      L"remove " + at(L"\\Containers\\0.con"),
      L"remove " + at(L"\\Containers\\1.con"), L"remove " + at(L"\\Containers\\2.con"),
      L"write " + at(L"\\Containers\\0.con"),  L"remove " + at(L"\\Varnowick.journal")};
  EXPECT_EQ(files.log, expected);
  session.store.SaveDesktop(Document{}, false);
  EXPECT_EQ(files.list(at(L"\\Containers"), L"").size(), 0U);
  EXPECT_TRUE(session.msgBox.shown.empty());
}

// The power goes out after every single operation of the save, and again after
// every single operation of the start that follows.
TEST(DesktopStore, ACutLeavesTheStateBeforeOrAfter) {
  const Document before = withContainers(L"before", 3);
  const Document after = withContainers(L"after", 2);
  for (const bool recovery : {false, true}) {
    bool finished = false;
    for (int cut = 0; !finished; ++cut) {
      MemoryFiles files = diskWith(before);
      Session session(files);
      files.operationsUntilCut = cut;
      try {
        session.store.SaveDesktop(after, recovery);
        finished = true;
      } catch (const PowerCut&) {
      }
      const std::string where = "cut " + std::to_string(cut);
      expectState(files, {&before, &after}, where);
      for (int second = 0, again = true; again; ++second) {
        MemoryFiles disk = files;
        disk.operationsUntilCut = second;
        try {
          Session(disk).state();
          again = false;
        } catch (const PowerCut&) {
        }
        expectState(disk, {&before, &after}, where + " and " + std::to_string(second));
      }
    }
  }
}

TEST(DesktopStore, AFailureIsReportedAndLeavesAWholeState) {
  const Document before = withContainers(L"before", 3);
  const Document after = withContainers(L"after", 2);
  const Document later = withContainers(L"later", 4);
  for (int failing = 0;; ++failing) {
    MemoryFiles files = diskWith(before);
    Session session(files);
    int count = 0;
    std::wstring failedPath;
    files.failure = [&](Operation, const std::wstring& path) {
      if (count++ != failing) return FileStatus{};
      failedPath = path;
      return kDiskFull;
    };
    const SaveResult result = session.store.SaveDesktop(after, false);
    if (failedPath.empty()) break;
    const std::string where = "operation " + std::to_string(failing);
    // What is left over of a journal that has done its work does no harm.
    EXPECT_EQ(static_cast<bool>(result),
              files.log.back() == L"remove " + at(L"\\Varnowick.journal") && count > 2)
        << where;
    if (!result) {
      EXPECT_EQ(result.file, failedPath) << where;
      EXPECT_EQ(result.reason, kDiskFull.reason) << where;
    }
    expectState(files, {&before, &after}, where);

    // A next save that is cut off at any point does not lose that state either.
    files.failure = nullptr;
    bool finished = false;
    for (int cut = 0; !finished; ++cut) {
      MemoryFiles disk = files;
      FakeCodec codec;
      FakeMsgBox msgBox;
      disk.operationsUntilCut = cut;
      DesktopStore store(disk, codec, msgBox, kFolder);
      try {
        // The numbers that the session knew are of no use to a bare store, so
        // what stands there may be backed up as well.
        EXPECT_TRUE(store.SaveDesktop(later, false));
        finished = true;
      } catch (const PowerCut&) {
      }
      expectState(disk, {&before, &after, &later}, where + ", cut " + std::to_string(cut));
    }
    EXPECT_TRUE(session.store.SaveDesktop(later, false));
    expectState(files, {&later}, where);
  }
}

TEST(DesktopStore, AFullDiskLeavesTheFilesUntouched) {
  MemoryFiles files = diskWith(withContainers(L"before", 2));
  Session session(files);
  const auto before = files.contents;
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Write ? kDiskFull : FileStatus{};
  };
  const SaveResult result = session.store.SaveDesktop(Document{}, false);
  EXPECT_FALSE(result);
  EXPECT_EQ(files.contents, before);
  EXPECT_NE(saveFailureMessage(result).find(kDiskFull.reason), std::wstring::npos);
}

TEST(DesktopStore, AnUnfinishedSaveIsShownEvenIfItCannotBeFinishedYet) {
  const Document before = withContainers(L"before", 3);
  const Document after = withContainers(L"after", 2);
  MemoryFiles files = diskWith(before);
  files.operationsUntilCut = 4;
  {
    FakeCodec codec;
    FakeMsgBox msgBox;
    DesktopStore store(files, codec, msgBox, kFolder);
    Document loaded;
    store.LoadSettings(loaded);
    EXPECT_THROW(store.SaveDesktop(after, false), PowerCut);
  }
  files.operationsUntilCut = -1;
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Write ? kDiskFull : FileStatus{};
  };
  Session session(files);
  EXPECT_EQ(session.state(), stateOf(after));
  ASSERT_EQ(session.msgBox.shown.size(), 1U);
  EXPECT_NE(session.msgBox.shown[0].text.find(kDiskFull.reason), std::wstring::npos);
  EXPECT_FALSE(session.store.SaveDesktop(before, false));
  expectState(files, {&after}, "still in the journal");
}

TEST(DesktopStore, SavesNothingWhileSuppressedOrLoading) {
  MemoryFiles files;
  FakeCodec codec;
  FakeMsgBox msgBox;
  DesktopStore store(files, codec, msgBox, kFolder);
  files.contents[at(L"\\Varnowick.ini")] = "106\r\n";
  Document document;
  int calls = 0;
  store.LoadSettings(document, [&](const std::wstring&) {
    ++calls;
    EXPECT_EQ(store.SaveDesktop(document, true).outcome, SaveResult::Outcome::Suppressed);
  });
  EXPECT_EQ(calls, 1);
  store.suppressSaving(true);
  EXPECT_EQ(store.SaveDesktop(document, false).outcome, SaveResult::Outcome::Suppressed);
  EXPECT_TRUE(files.log.empty());
  store.suppressSaving(false);
  EXPECT_TRUE(store.SaveDesktop(document, true));
  EXPECT_TRUE(files.folders.contains(kFolder));
}

// ---- Recovery

std::string mainFile(const wchar_t* wallpaper) {
  FakeCodec codec;
  Document d;
  d.settings.wallpaper = wallpaper;
  return renderSettingsFile(d.settings, {}, codec);
}

TEST(DesktopStore, AsksAboutARecoveryCopy) {
  MemoryFiles disk;
  disk.contents[at(L"\\Varnowick.ini")] = mainFile(L"saved");
  disk.contents[at(L"\\Varnowick.REC")] = mainFile(L"newer");

  MemoryFiles files = disk;
  const Session no(files, {kMsgAnswerNo});
  const std::vector<FakeMsgBox::Shown> question{
      {L"RECOVERY: Varnowick was not closed properly. Load the newer backed-up recovery file?"
       L"\r\n\r\nThe file name is Varnowick.REC",
       4 + 48 + 4096, L"Varnowick - Recover Last Session"}};
  EXPECT_EQ(no.msgBox.shown, question);
  EXPECT_EQ(no.document.settings.wallpaper, L"saved");
  EXPECT_FALSE(files.contents.contains(at(L"\\Varnowick.REC")));

  files = disk;
  Session left(files, {MsgAnswer::None});
  left.store.SaveDesktop(left.document, false);
  EXPECT_EQ(files.contents, disk.contents);

  for (const bool settingsFileExists : {true, false}) {
    files = disk;
    if (!settingsFileExists) files.contents.erase(at(L"\\Varnowick.ini"));
    const Session yes(files, {kMsgAnswerYes});
    EXPECT_EQ(yes.document.settings.wallpaper, L"newer");
    EXPECT_EQ(files.contents.size(), 1U);
    EXPECT_EQ(files.contents[at(L"\\Varnowick.ini")], mainFile(L"newer"));
  }
}

TEST(DesktopStore, ARecoveryThatFailsDeletesNothing) {
  MemoryFiles disk;
  disk.contents[at(L"\\Varnowick.ini")] = mainFile(L"saved");
  disk.contents[at(L"\\Varnowick.REC")] = mainFile(L"newer");

  MemoryFiles files = disk;
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Rename ? kDiskFull : FileStatus{};
  };
  const Session stuck(files);
  EXPECT_EQ(stuck.msgBox.shown.size(), 2U);
  EXPECT_EQ(stuck.document.settings.wallpaper, L"newer");
  EXPECT_EQ(files.contents, disk.contents);

  files = disk;
  files.unreadable.insert(at(L"\\Varnowick.REC"));
  const Session unreadable(files);
  EXPECT_EQ(unreadable.document.settings.wallpaper, L"saved");
  EXPECT_EQ(files.contents, disk.contents);

  // A damaged copy takes the place of the settings file, but not its life.
  files = disk;
  files.contents[at(L"\\Varnowick.REC")] = "";
  const Session damaged(files);
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick.ini")], mainFile(L"saved"));
}

// ---- Backups

TEST(DesktopStore, ADriveThatHasGoneEndsTheLoadingAndNothingIsWrittenOverItsFiles) {
  struct GoneDrive : MemoryFiles {
    bool gone = true;
    FileBytes read(const std::wstring& path) override {
      if (gone) return {{FileStatus::Kind::Other, L"The device is not ready."}, {}};
      return MemoryFiles::read(path);
    }
    std::vector<FileInfo> list(const std::wstring& folder, std::wstring_view extension) override {
      return gone ? std::vector<FileInfo>{} : MemoryFiles::list(folder, extension);
    }
  } files;
  static_cast<MemoryFiles&>(files) = diskWith(withContainers(L"kept", 2));
  const std::string settings = files.contents[at(L"\\Varnowick.ini")];
  const std::string container = files.contents[at(L"\\Containers\\1.con")];
  Session session(files);
  EXPECT_FALSE(session.report.empty());
  files.gone = false;
  EXPECT_TRUE(session.store.SaveDesktop(session.document, true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], container);
  EXPECT_TRUE(files.contents[at(L"\\Varnowick.ini")] == settings ||
              files.contents[at(L"\\Backup\\Varnowick.ini")] == settings);
}

TEST(DesktopStore, KeepsWhatItCouldNotReadAndTellsOnce) {
  MemoryFiles files = diskWith(withContainers(L"c", 2));
  const std::string damaged = files.contents[at(L"\\Containers\\1.con")] + "[Future]\r\nvalue\r\n";
  files.contents[at(L"\\Containers\\1.con")] = damaged;
  files.contents[at(L"\\Containers\\3.con")] = "behind a gap";
  files.contents[at(L"\\Containers\\old.CON")] = "no number";
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_EQ(session.report.filesNotReadWhole().size(), 3U);
  EXPECT_TRUE(session.store.SaveDesktop(session.document, true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], damaged);
  EXPECT_EQ(files.contents[at(L"\\Backup\\3.con")], "behind a gap");
  EXPECT_EQ(files.contents[at(L"\\Backup\\old.CON")], "no number");
  ASSERT_EQ(session.msgBox.shown.size(), 1U);
  for (const wchar_t* named : {L"\\Backup", L"1.con", L"3.con", L"old.CON"})
    EXPECT_NE(session.msgBox.shown[0].text.find(named), std::wstring::npos);

  // What turns up in the folder later is not deleted unread either.
  files.contents[at(L"\\Containers\\1.con")] = damaged;
  files.contents[at(L"\\Containers\\3.con")] = "something else";
  EXPECT_TRUE(session.store.SaveDesktop(session.document, true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\3 (2).con")], "something else");
  EXPECT_TRUE(session.store.SaveDesktop(session.document, true));
  EXPECT_EQ(session.msgBox.shown.size(), 2U);
}

TEST(DesktopStore, AFailedBackupStopsTheSave) {
  MemoryFiles files = diskWith(withContainers(L"c", 1));
  files.contents[at(L"\\Containers\\5.con")] = "behind a gap";
  const auto before = files.contents;
  files.failure = [](Operation, const std::wstring& path) {
    return path.find(L"Backup") != std::wstring::npos ? kDiskFull : FileStatus{};
  };
  Session session(files);
  for (int attempt = 0; attempt < 2; ++attempt) {
    const SaveResult result = session.store.SaveDesktop(Document{}, false);
    EXPECT_FALSE(result);
    EXPECT_EQ(result.file, at(L"\\Containers\\5.con"));
    EXPECT_EQ(files.contents, before);
  }
  files.failure = nullptr;
  EXPECT_TRUE(session.store.SaveDesktop(Document{}, false));
  EXPECT_TRUE(files.contents.contains(at(L"\\Backup\\5.con")));
}

TEST(DesktopStore, AnUnreadableFileIsMovedAway) {
  MemoryFiles files = diskWith(withContainers(L"c", 3));
  const std::string locked = files.contents[at(L"\\Containers\\1.con")];
  files.unreadable.insert(at(L"\\Containers\\1.con"));
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_TRUE(session.store.SaveDesktop(session.document, false));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], locked);
  files.unreadable.clear();
  EXPECT_EQ(Session(files).state(), session.state());
}

}  // namespace
}  // namespace varnowick
