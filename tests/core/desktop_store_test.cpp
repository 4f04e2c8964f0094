#include "core/desktop_store.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/container_files.h"
#include "core/settings_file.h"
#include "tests/core/reference_document.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_flusher.h"
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
                        renderContainerFiles(document.workspace, contents, codec)},
                       0);
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

// One run of the program on a disk. Each pause is counted, and another program can do
// something in it.
struct Session {
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeFlusher flusher;
  int pauses = 0;
  std::function<void(int)> meanwhile;
  DesktopStore store;
  Document document;
  LoadReport report;

  explicit Session(MemoryFiles& files, std::vector<MsgAnswer> answers = {},
                   std::function<void(int)> pausing = {})
      : flusher(files),
        meanwhile(std::move(pausing)),
        store({files, flusher,
               [this](unsigned) {
                 ++pauses;
                 if (meanwhile) meanwhile(pauses);
               }},
              codec, msgBox, kFolder) {
    msgBox.answers = std::move(answers);
    report = store.LoadSettings(document).value_or(LoadReport{});
  }
  std::string state() const { return stateOf(document); }
  SaveResult save(const Document& d, bool recovery = false) {
    return store.SaveDesktop(d, recovery);
  }
};

using States = std::vector<const Document*>;

void expectState(MemoryFiles files, const States& allowed, const std::string& where) {
  files.operationsUntilCut = -1;
  files.failure = nullptr;
  const std::string found = Session(files).state();
  EXPECT_TRUE(files.list(kFolder, L".discarded").empty()) << where;
  EXPECT_TRUE(std::any_of(allowed.begin(), allowed.end(), [&](const Document* d) {
    return found == stateOf(*d);
  })) << where;
}

MemoryFiles diskWith(const Document& document) {
  MemoryFiles files;
  Session session(files);
  EXPECT_TRUE(session.save(document) && session.store.finish(0));
  files.log.clear();
  return files;
}

TEST(DesktopStore, LoadsWhatItSavedAndLeavesNothingElseThere) {
  MemoryFiles files = diskWith(referenceDocument());
  Session session(files);
  EXPECT_TRUE(session.report.empty());
  EXPECT_EQ(session.state(), stateOf(referenceDocument()));

  const auto before = files.contents;
  EXPECT_TRUE(session.save(session.document, true));
  EXPECT_TRUE(files.contents.contains(at(L"\\Varnowick.REC")));
  EXPECT_TRUE(session.save(session.document) && session.store.finish(0));
  EXPECT_EQ(files.contents, before);
  EXPECT_TRUE(session.save(Document{}) && session.store.finish(0));
  EXPECT_EQ(files.contents.size(), 1U);
  EXPECT_TRUE(session.msgBox.shown.empty());
}

TEST(DesktopStore, ASaveWaitsForTheDiskOnce) {
  MemoryFiles files = diskWith(withContainers(L"before", 40));
  Session session(files);
  files.flushes = 0;
  for (int change = 1; change <= 3; ++change) {
    EXPECT_TRUE(session.save(withContainers(L"after", 40), true));
    EXPECT_EQ(files.flushes, change);
  }
}

// Two saves, with the flusher at work between them and after. The power goes out
// after every single operation, and again after every single operation of the start
// that follows; what was not flushed is lost in several ways.
TEST(DesktopStore, ACutLeavesTheStateBeforeOrAfter) {
  using Loss = MemoryFiles::Loss;
  const Document before = withContainers(L"before", 3);
  const Document first = withContainers(L"first", 2);
  const Document second = withContainers(L"second", 4);
  struct Run {
    bool recovery;
    int steps;  // of the flusher between the saves
    Loss loss;
  };
  std::vector<Run> runs;
  for (const Loss loss : {Loss::Nothing, Loss::All, Loss::Halves, Loss::EverySecond})
    for (const int steps : {0, 2, 9}) runs.push_back({steps != 2, steps, loss});
  const MemoryFiles initial = diskWith(before);
  for (const Run& run : runs) {
    bool finished = false;
    for (int cut = 0; !finished; ++cut) {
      MemoryFiles files = initial;
      Session session(files);
      files.operationsUntilCut = cut;
      States allowed{&before, &first};
      try {
        session.save(first, run.recovery);
        allowed = {&first};
        for (int i = 0; i < run.steps; ++i) session.flusher.step();
        session.store.flushed();
        allowed = {&first, &second};
        session.save(second, !run.recovery);
        allowed = {&second};
        finished = session.store.finish(0);
      } catch (const PowerCut&) {
      }
      files.losePower(run.loss);
      const std::string where = "loss " + std::to_string(static_cast<int>(run.loss)) + ", " +
                                std::to_string(run.steps) + " steps, cut " + std::to_string(cut);
      expectState(files, allowed, where);
      for (int again = 0; again >= 0 && run.loss != Loss::Nothing; ++again) {
        MemoryFiles disk = files;
        disk.operationsUntilCut = again;
        try {
          Session(disk).state();
          again = -2;
        } catch (const PowerCut&) {
        }
        disk.losePower(run.loss);
        expectState(disk, allowed, where + " and " + std::to_string(again));
      }
    }
  }
}

TEST(DesktopStore, ManySavesBeforeTheFlusherIsDoneLeaveTheLastOne) {
  for (int saves = 1; saves < 8; ++saves) {
    MemoryFiles files = diskWith(Document{});
    Session session(files);
    const Document last = withContainers(L"last", saves);
    for (int i = 1; i < saves; ++i) EXPECT_TRUE(session.save(withContainers(L"one", i)));
    EXPECT_TRUE(session.save(last));
    files.operationsUntilCut = 1;
    EXPECT_THROW(session.save(Document{}), PowerCut);
    files.losePower(MemoryFiles::Loss::All);
    expectState(files, {&last}, std::to_string(saves));
  }
}

TEST(DesktopStore, TheJournalStaysUntilEveryFileIsOnTheDisk) {
  const Document first = withContainers(L"first", 2);
  const Document second = withContainers(L"second", 2);
  MemoryFiles files = diskWith(Document{});
  Session session(files);
  EXPECT_TRUE(session.save(first));
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Flush ? kDiskFull : FileStatus{};
  };
  EXPECT_FALSE(session.store.finish(0));
  files.failure = nullptr;
  MemoryFiles disk = files;
  disk.losePower(MemoryFiles::Loss::All);
  expectState(disk, {&first}, "not flushed");

  // Nor does the flushing of one save end the journal of the next.
  EXPECT_TRUE(session.save(first));
  session.flusher.wait(0);
  files.openElsewhere(at(L"\\Containers\\1.con"), false);
  EXPECT_FALSE(session.save(second));
  session.store.flushed();
  files.losePower(MemoryFiles::Loss::Nothing);
  expectState(files, {&second}, "half written");
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
    const SaveResult result = session.save(after);
    if (failedPath.empty()) break;
    const std::string where = "operation " + std::to_string(failing);
    if (!result) {
      EXPECT_EQ(result.file, failedPath) << where;
      EXPECT_EQ(result.reason, kDiskFull.reason) << where;
    }
    expectState(files, result ? States{&after} : States{&before, &after}, where);

    // A next save that is cut off at any point does not lose that state either.
    files.failure = nullptr;
    bool finished = false;
    for (int cut = 0; !finished; ++cut) {
      MemoryFiles disk = files;
      Session next(disk);
      disk.operationsUntilCut = cut;
      try {
        finished = static_cast<bool>(next.save(later));
      } catch (const PowerCut&) {
      }
      expectState(disk, {&before, &after, &later}, where + ", cut " + std::to_string(cut));
    }
    EXPECT_TRUE(session.save(later));
    expectState(files, {&later}, where);
  }
}

// ---- Beside other programs

TEST(DesktopStore, FilesThatOthersHaveOpenNeitherStopASaveNorGoMissing) {
  const Document before = withContainers(L"before", 3);
  const Document fewer = withContainers(L"fewer", 2);
  const Document more = withContainers(L"more", 4);
  MemoryFiles files = diskWith(before);
  Session session(files);
  EXPECT_TRUE(session.save(before, true));
  for (const wchar_t* name : {L"\\Varnowick.ini", L"\\Varnowick.REC", L"\\Varnowick.journal",
                              L"\\Containers\\1.con", L"\\Containers\\2.con"})
    files.openElsewhere(at(name), true);
  EXPECT_TRUE(session.save(fewer));
  session.store.finish(0);
  EXPECT_TRUE(session.save(more));
  EXPECT_TRUE(session.store.finish(0));
  EXPECT_EQ(session.pauses, 0);
  files.closeElsewhere();
  EXPECT_EQ(files.contents.size(), 5U);
  expectState(files, {&more}, "closed");
}

TEST(DesktopStore, WaitsAMomentForAFileThatAnotherProgramHolds) {
  const Document before = withContainers(L"before", 2);
  const Document after = withContainers(L"after", 1);
  for (const wchar_t* name : {L"\\Varnowick.ini", L"\\Containers\\0.con", L"\\Containers\\1.con"}) {
    MemoryFiles files = diskWith(before);
    const auto closeSoon = [&](int pause) {
      if (pause % 3 == 0) files.closeElsewhere();
    };
    files.openElsewhere(at(name), false);
    Session session(files, {}, closeSoon);
    EXPECT_EQ(session.state(), stateOf(before));
    files.openElsewhere(at(name), false);
    EXPECT_TRUE(session.save(after));
    expectState(files, {&after}, "saved");
    session.save(before);
    files.openElsewhere(at(name), false);
    EXPECT_TRUE(session.save(after)) << "waits again";
    // One that stays closed to us is not waited for with every change.
    files.openElsewhere(at(name), false);
    session.meanwhile = nullptr;
    session.pauses = 0;
    EXPECT_FALSE(session.save(before));
    EXPECT_FALSE(session.save(before));
    EXPECT_EQ(session.pauses, 20);
    files.closeElsewhere();
    expectState(files, {&before}, "in the journal");
  }
}

TEST(DesktopStore, AJournalThatCannotGoIsNeverTheNewestAgain) {
  const Document first = withContainers(L"first", 1);
  const Document second = withContainers(L"second", 2);
  MemoryFiles files = diskWith(Document{});
  Session session(files);
  EXPECT_TRUE(session.save(first));
  files.openElsewhere(at(L"\\Varnowick.journal"), false);
  EXPECT_FALSE(session.store.finish(0));
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(session.save(second));
    EXPECT_FALSE(session.store.finish(0));
  }
  EXPECT_FALSE(session.store.giveUpRecentChanges());
  files.closeElsewhere();
  expectState(files, {&second}, "an old journal beside a newer one");

  // Numbers go on where the last program left them.
  files.failure = [](Operation operation, const std::wstring& path) {
    const bool held = path.find(L".journal") != std::wstring::npos;
    const bool removing = operation == Operation::Rename || operation == Operation::Remove;
    return held && removing ? kDiskFull : FileStatus{};
  };
  Session next(files);
  EXPECT_TRUE(next.save(first));
  expectState(files, {&first}, "a newer one beside those of the last program");
}

TEST(DesktopStore, ChangesThatAreGivenUpDoNotComeBack) {
  const Document saved = withContainers(L"saved", 1);
  MemoryFiles files = diskWith(saved);
  Session session(files);
  EXPECT_TRUE(session.save(withContainers(L"changed", 1), true));
  EXPECT_TRUE(session.store.giveUpRecentChanges());
  EXPECT_EQ(session.save(saved).outcome, SaveResult::Outcome::Suppressed);
  const Session next(files);
  EXPECT_TRUE(next.msgBox.shown.empty());
  EXPECT_EQ(next.document.settings.wallpaper, L"saved");

  { Session(files).save(withContainers(L"changed", 1), true); }
  { const Session no(files, {kMsgAnswerNo}); }
  EXPECT_TRUE(Session(files).msgBox.shown.empty());
}

TEST(DesktopStore, AFullDiskLeavesTheFilesUntouched) {
  MemoryFiles files = diskWith(withContainers(L"before", 2));
  Session session(files);
  const auto before = files.contents;
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Write ? kDiskFull : FileStatus{};
  };
  const SaveResult result = session.save(Document{});
  EXPECT_FALSE(result);
  EXPECT_EQ(files.contents, before);
  EXPECT_NE(saveFailureMessage(result).find(kDiskFull.reason), std::wstring::npos);
}

TEST(DesktopStore, AnUnfinishedSaveIsShownEvenIfItCannotBeFinishedYet) {
  const Document before = withContainers(L"before", 3);
  const Document after = withContainers(L"after", 2);
  MemoryFiles files = diskWith(before);
  {
    Session session(files);
    files.operationsUntilCut = 4;
    EXPECT_THROW(session.save(after), PowerCut);
  }
  files.operationsUntilCut = -1;
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Write ? kDiskFull : FileStatus{};
  };
  Session session(files);
  EXPECT_EQ(session.state(), stateOf(after));
  ASSERT_EQ(session.msgBox.shown.size(), 1U);
  EXPECT_NE(session.msgBox.shown[0].text.find(kDiskFull.reason), std::wstring::npos);
  EXPECT_FALSE(session.save(before));
  expectState(files, {&after}, "still in the journal");
}

TEST(DesktopStore, FinishingASaveKeepsWhatCameFromElsewhere) {
  MemoryFiles files = diskWith(withContainers(L"before", 1));
  {
    Session session(files);
    EXPECT_TRUE(session.save(withContainers(L"after", 1)));
  }
  files.contents[at(L"\\Varnowick.ini")] = "put here since";
  files.contents[at(L"\\Containers\\1.con")] = "this too";
  files.contents[at(L"\\Varnowick.REC")] = "and this";
  const Session session(files);
  EXPECT_EQ(session.document.settings.wallpaper, L"after");
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick.ini")], "put here since");
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], "this too");
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick.REC")], "and this");
  EXPECT_FALSE(files.contents.contains(at(L"\\Backup\\0.con")));
}

TEST(DesktopStore, SavesNothingWhileSuppressedOrLoading) {
  MemoryFiles files;
  Session session(files);
  files.contents[at(L"\\Varnowick.ini")] = "106\r\n";
  int calls = 0;
  session.store.LoadSettings(session.document, [&](const std::wstring&) {
    ++calls;
    EXPECT_EQ(session.save(session.document).outcome, SaveResult::Outcome::Suppressed);
  });
  EXPECT_EQ(calls, 1);
  session.store.suppressSaving(true);
  EXPECT_EQ(session.save(session.document).outcome, SaveResult::Outcome::Suppressed);
  EXPECT_TRUE(files.log.empty());
  session.store.suppressSaving(false);
  EXPECT_TRUE(session.save(session.document));
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
  left.save(left.document);
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
  EXPECT_TRUE(session.save(session.document, true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], container);
  EXPECT_TRUE(files.contents[at(L"\\Varnowick.ini")] == settings ||
              files.contents[at(L"\\Backup\\Varnowick.ini")] == settings);
}

TEST(DesktopStore, KeepsWhatItCouldNotReadAndTellsAtTheStart) {
  MemoryFiles files = diskWith(withContainers(L"c", 2));
  const std::string damaged = files.contents[at(L"\\Containers\\1.con")] + "[Future]\r\nvalue\r\n";
  files.contents[at(L"\\Containers\\1.con")] = damaged;
  files.contents[at(L"\\Containers\\3.con")] = "behind a gap";
  files.contents[at(L"\\Containers\\old.CON")] = "no number";
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], damaged);
  EXPECT_EQ(files.contents[at(L"\\Backup\\3.con")], "behind a gap");
  EXPECT_EQ(files.contents[at(L"\\Backup\\old.CON")], "no number");
  session.store.tellOfDamage();
  EXPECT_TRUE(session.save(session.document, true));
  ASSERT_EQ(session.msgBox.shown.size(), 1U);
  for (const wchar_t* named :
       {L"\\Backup", L"1.con", L"This line is not known", L"3.con", L"old.CON"})
    EXPECT_NE(session.msgBox.shown[0].text.find(named), std::wstring::npos);

  // What turns up later is not deleted or written over unread either.
  files.contents[at(L"\\Containers\\3.con")] = "something else";
  EXPECT_TRUE(session.save(session.document, true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\3 (2).con")], "something else");
  EXPECT_TRUE(session.save(withContainers(L"c", 1), true));
  EXPECT_EQ(session.msgBox.shown.size(), 2U);
  files.contents[at(L"\\Containers\\1.con")] = "where one has been";
  EXPECT_TRUE(session.save(withContainers(L"c", 1), true));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1 (2).con")], "where one has been");
}

TEST(DesktopStore, AMainFileThatTurnsUpIsCopiedOnce) {
  MemoryFiles files;
  Session session(files);
  files.contents[at(L"\\Varnowick.ini")] = "put here since";
  files.contents[at(L"\\Varnowick.REC")] = "this too";
  for (const bool recovery : {true, false, true, false})
    EXPECT_TRUE(session.save(session.document, recovery));
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick.ini")], "put here since");
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick.REC")], "this too");
  EXPECT_EQ(session.msgBox.shown.size(), 2U);
  files.contents[at(L"\\Varnowick.REC")] = "and again";
  EXPECT_TRUE(session.save(session.document));
  EXPECT_EQ(files.contents[at(L"\\Backup\\Varnowick (2).REC")], "and again");
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
    const SaveResult result = session.save(Document{});
    EXPECT_FALSE(result);
    EXPECT_EQ(result.file, at(L"\\Backup"));
    EXPECT_EQ(files.contents, before);
  }
  files.failure = nullptr;
  EXPECT_TRUE(session.save(Document{}));
  EXPECT_TRUE(files.contents.contains(at(L"\\Backup\\5.con")));
}

TEST(DesktopStore, AnUnreadableFileIsMovedAway) {
  MemoryFiles files = diskWith(withContainers(L"c", 3));
  const std::string locked = files.contents[at(L"\\Containers\\1.con")];
  files.unreadable.insert(at(L"\\Containers\\1.con"));
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_TRUE(session.save(session.document));
  EXPECT_EQ(files.contents[at(L"\\Backup\\1.con")], locked);
  files.unreadable.clear();
  EXPECT_EQ(Session(files).state(), session.state());
}

}  // namespace
}  // namespace varnowick
