#include "core/desktop_store.h"

#include "tests/core/reference_document.h"
#include "tests/core/store_world.h"

namespace varnowick {
namespace {

TEST(DesktopStore, LoadsWhatItSavedAndLeavesNothingElseThere) {
  MemoryFiles files = diskWith(referenceDocument());
  Session session(files);
  EXPECT_TRUE(session.report.empty());
  EXPECT_EQ(session.state(), stateOf(referenceDocument()));

  const auto before = files.contents;
  for (int change = 1; change <= 3; ++change) {
    files.flushes = 0;
    EXPECT_TRUE(session.save(session.document, true));
    EXPECT_EQ(files.flushes, 1) << "a save waits for the disk once";
  }
  EXPECT_TRUE(files.contents.contains(kCopy));
  EXPECT_TRUE(session.save(session.document) && session.store.finish(0));
  EXPECT_EQ(files.contents, before);
  EXPECT_TRUE(session.save(Document{}) && session.store.finish(0));
  EXPECT_EQ(files.contents.size(), 1U);
  EXPECT_TRUE(session.msgBox.shown.empty());
}

// Three saves, with the flusher at work between them and after. The power goes out
// after every single operation, and again after every single operation of the start
// that follows; what was not flushed is lost in several ways.
TEST(DesktopStore, ACutLeavesTheStateBeforeOrAfter) {
  const Document before = withContainers(L"before", 3);
  const Document saves[] = {withContainers(L"first", 2), withContainers(L"second", 4),
                            withContainers(L"third", 1)};
  const MemoryFiles initial = diskWith(before);
  for (const Loss loss : {Loss::Nothing, Loss::All, Loss::Halves, Loss::EverySecond})
    for (const int steps : {0, 2, 9}) {
      bool finished = false;
      for (int cut = 0; !finished; ++cut) {
        MemoryFiles files = initial;
        Session session(files);
        files.operationsUntilCut = cut;
        States allowed{&before};
        bool recovery = steps != 2;
        try {
          for (const Document& save : saves) {
            allowed.push_back(&save);
            session.save(save, recovery);
            allowed = {&save};
            for (int i = 0; i < steps; ++i) session.flusher.step();
            session.store.flushed();
            recovery = !recovery;
          }
          finished = session.store.finish(0);
        } catch (const PowerCut&) {
        }
        files.losePower(loss);
        const std::string where = "loss " + std::to_string(static_cast<int>(loss)) + ", " +
                                  std::to_string(steps) + " steps, cut " + std::to_string(cut);
        expectState(files, allowed, where);
        for (int again = 0; again >= 0 && loss != Loss::Nothing; ++again) {
          MemoryFiles disk = files;
          disk.operationsUntilCut = again;
          try {
            Session(disk).state();
            again = -2;
          } catch (const PowerCut&) {
          }
          disk.losePower(loss);
          expectState(disk, allowed, where + " and " + std::to_string(again));
        }
      }
    }
}

TEST(DesktopStore, AFailureIsReportedAndLeavesAWholeState) {
  const Document before = withContainers(L"before", 3);
  const Document after = withContainers(L"after", 2);
  const Document later = withContainers(L"later", 4);
  for (const bool forGood : {false, true})
    for (int failing = 0;; ++failing) {
      MemoryFiles files = diskWith(before);
      Session session(files);
      int count = 0;
      std::wstring failedPath;
      files.failure = [&](Operation, const std::wstring& path) {
        const int at = count++;
        if (at == failing) failedPath = path;
        return at == failing || (forGood && at > failing) ? kDiskFull : FileStatus{};
      };
      const SaveResult result = session.save(after);
      if (!result) {
        EXPECT_EQ(result.file, failedPath) << failing;
        EXPECT_NE(saveFailureMessage(result).find(kDiskFull.reason), std::wstring::npos);
      }
      session.store.finish(0);
      if (failedPath.empty()) break;
      const std::string where = "operation " + std::to_string(failing);
      const States allowed = result ? States{&after} : States{&before, &after};
      expectState(files, allowed, where);
      MemoryFiles lost = files;
      lost.losePower(Loss::All);
      expectState(lost, allowed, where + ", nothing flushed");

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

TEST(DesktopStore, TheFlushingOfOneSaveDoesNotEndTheJournalOfTheNext) {
  const Document second = withContainers(L"second", 2);
  MemoryFiles files = diskWith(Document{});
  Session session(files);
  EXPECT_TRUE(session.save(withContainers(L"first", 2)));
  session.flusher.wait(0);
  files.openElsewhere(container(1), false);
  EXPECT_FALSE(session.save(second));
  session.store.flushed();
  files.losePower(Loss::Nothing);
  expectState(files, {&second}, "half written");
}

TEST(DesktopStore, AJournalThatCannotGoIsNeverTheNewestAgain) {
  const Document first = withContainers(L"first", 1);
  const Document second = withContainers(L"second", 2);
  MemoryFiles files = diskWith(Document{});
  Session session(files);
  EXPECT_TRUE(session.save(first));
  files.openElsewhere(kFolder + L"\\Varnowick.journal", false);
  EXPECT_FALSE(session.store.finish(0));
  for (int i = 0; i < 7; ++i) {
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

TEST(DesktopStore, ChangesThatAreGivenUpDoNotComeBack) {
  const Document saved = withContainers(L"saved", 1);
  MemoryFiles files = diskWith(saved);
  Session session(files);
  EXPECT_TRUE(session.save(withContainers(L"changed", 1), true));
  // What could not be flushed the first time is tried again.
  files.openElsewhere(container(0), false);
  EXPECT_FALSE(session.store.giveUpRecentChanges());
  files.closeElsewhere();
  EXPECT_TRUE(session.store.giveUpRecentChanges());
  EXPECT_EQ(session.save(saved).outcome, SaveResult::Outcome::Suppressed);
  const Session next(files);
  EXPECT_TRUE(next.msgBox.shown.empty());
  EXPECT_EQ(next.document.settings.wallpaper, L"saved");
}

TEST(DesktopStore, SavesNothingWhileSuppressedOrLoading) {
  MemoryFiles files;
  Session session(files);
  files.contents[kMain] = "106\r\n";
  const auto refuses = [&] {
    return session.save(session.document).outcome == SaveResult::Outcome::Suppressed;
  };
  int calls = 0;
  session.store.LoadSettings(session.document, [&](const std::wstring&) {
    ++calls;
    EXPECT_TRUE(refuses());
  });
  EXPECT_EQ(calls, 1);
  session.store.suppressSaving(true);
  EXPECT_TRUE(refuses() && files.log.empty());
  session.store.suppressSaving(false);
  EXPECT_TRUE(session.save(session.document));
  EXPECT_TRUE(files.folders.contains(kFolder));
}

}  // namespace
}  // namespace varnowick
