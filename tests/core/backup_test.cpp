// What the store keeps of files that it cannot read, or that others have put there.
#include "core/backup.h"

#include "tests/core/store_world.h"

namespace varnowick {
namespace {

std::string mainFile(const wchar_t* wallpaper) {
  FakeCodec codec;
  Document d;
  d.settings.wallpaper = wallpaper;
  return renderSettingsFile(d.settings, {}, codec);
}
MemoryFiles diskWithRecoveryCopy() {
  MemoryFiles disk;
  disk.contents[kMain] = mainFile(L"saved");
  disk.contents[kCopy] = mainFile(L"newer");
  return disk;
}

TEST(Backup, ARecoveryCopyIsAskedAbout) {
  MemoryFiles files = diskWithRecoveryCopy();
  const Session no(files, {kMsgAnswerNo});
  const std::vector<FakeMsgBox::Shown> question{
      {L"RECOVERY: Varnowick was not closed properly. Load the newer backed-up recovery file?"
       L"\r\n\r\nThe file name is Varnowick.REC",
       kMsgYesNo | kMsgExclamation | kMsgSystemModal | kMsgMustAnswer,
       L"Varnowick - Recover Last Session"}};
  EXPECT_EQ(no.msgBox.shown, question);
  EXPECT_EQ(no.document.settings.wallpaper, L"saved");
  EXPECT_FALSE(files.contents.contains(kCopy));

  files = diskWithRecoveryCopy();
  Session left(files, {MsgAnswer::None});
  left.save(left.document);
  EXPECT_EQ(files.contents, diskWithRecoveryCopy().contents);

  for (const bool settingsFileExists : {true, false}) {
    files = diskWithRecoveryCopy();
    if (!settingsFileExists) files.contents.erase(kMain);
    const Session yes(files, {kMsgAnswerYes});
    EXPECT_EQ(yes.document.settings.wallpaper, L"newer");
    EXPECT_EQ(files.contents.size(), 1U);
    EXPECT_EQ(files.contents[kMain], mainFile(L"newer"));
  }
}

TEST(Backup, ARecoveryThatFailsDeletesNothing) {
  MemoryFiles files = diskWithRecoveryCopy();
  files.failure = [](Operation operation, const std::wstring&) {
    return operation == Operation::Rename ? kDiskFull : FileStatus{};
  };
  const Session stuck(files);
  EXPECT_EQ(stuck.msgBox.shown.size(), 2U);
  EXPECT_EQ(stuck.document.settings.wallpaper, L"newer");
  EXPECT_EQ(files.contents, diskWithRecoveryCopy().contents);

  files = diskWithRecoveryCopy();
  files.unreadable.insert(kCopy);
  EXPECT_EQ(Session(files).document.settings.wallpaper, L"saved");
  EXPECT_EQ(files.contents, diskWithRecoveryCopy().contents);

  // A damaged copy takes the place of the settings file, but not its life.
  files = diskWithRecoveryCopy();
  files.contents[kCopy] = "";
  const Session damaged(files);
  EXPECT_EQ(files.contents[kBackup + L"Varnowick.ini"], mainFile(L"saved"));
}

TEST(Backup, ADriveThatHasGoneEndsTheLoadingAndNothingIsWrittenOverItsFiles) {
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
  const auto before = files.contents;
  Session session(files);
  EXPECT_FALSE(session.report.empty());
  files.gone = false;
  EXPECT_TRUE(session.save(session.document, true));
  EXPECT_EQ(files.contents[kBackup + L"1.con"], before.at(container(1)));
  EXPECT_TRUE(files.contents[kMain] == before.at(kMain) ||
              files.contents[kBackup + L"Varnowick.ini"] == before.at(kMain));
}

TEST(Backup, WhatCouldNotBeReadIsKeptAndToldOfAtTheStart) {
  MemoryFiles files = diskWith(withContainers(L"c", 2));
  const std::string damaged = files.contents[container(1)] + "[Future]\r\nvalue\r\n";
  files.contents[container(1)] = damaged;
  files.contents[container(3)] = "behind a gap";
  files.contents[kFolder + L"\\Containers\\old.CON"] = "no number";
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_EQ(files.contents[kBackup + L"1.con"], damaged);
  EXPECT_EQ(files.contents[kBackup + L"3.con"], "behind a gap");
  EXPECT_EQ(files.contents[kBackup + L"old.CON"], "no number");
  session.store.tellOfDamage();
  EXPECT_TRUE(session.save(session.document, true));
  ASSERT_EQ(session.msgBox.shown.size(), 1U);
  for (const wchar_t* named :
       {L"\\Backup", L"1.con, line ", L": This line is not known", L"3.con", L"\r\nold.CON"})
    EXPECT_NE(session.msgBox.shown[0].text.find(named), std::wstring::npos) << named;
}

TEST(Backup, WhatTurnsUpLaterIsCopiedOnceBeforeItIsWrittenOver) {
  MemoryFiles files;
  Session session(files);
  const auto turnsUp = [&](const std::wstring& path, const char* bytes, const wchar_t* kept) {
    files.contents[path] = bytes;
    for (const bool recovery : {true, false, true, false})
      EXPECT_TRUE(session.save(session.document, recovery));
    EXPECT_EQ(files.contents[kBackup + kept], bytes);
  };
  files.contents[kMain] = "put here since";
  turnsUp(kCopy, "this too", L"Varnowick.REC");
  EXPECT_EQ(files.contents[kBackup + L"Varnowick.ini"], "put here since");
  EXPECT_EQ(session.msgBox.shown.size(), 2U);
  turnsUp(kCopy, "and again", L"Varnowick (2).REC");
  turnsUp(kCopy, "this too", L"Varnowick.REC");
  turnsUp(kCopy, "a third", L"Varnowick (3).REC");
  turnsUp(container(0), "where none is", L"0.con");
  turnsUp(container(0), "where one has been", L"0 (2).con");
  EXPECT_EQ(files.list(kBackup.substr(0, kBackup.size() - 1), L"").size(), 6U);
  EXPECT_EQ(session.msgBox.shown.size(), 6U);
}

TEST(Backup, FinishingASaveKeepsWhatCameFromElsewhere) {
  for (const bool atOnce : {true, false}) {
    MemoryFiles files = diskWith(withContainers(L"before", 1));
    {
      Session session(files);
      EXPECT_TRUE(session.save(withContainers(L"after", 1)));
    }
    for (const std::wstring& path : {kMain, container(1), kCopy}) files.contents[path] = "put here";
    if (!atOnce)
      files.failure = [](Operation, const std::wstring& path) {
        return path.find(L"Backup") != std::wstring::npos ? kDiskFull : FileStatus{};
      };
    Session session(files);
    EXPECT_EQ(session.document.settings.wallpaper, L"after");
    files.failure = nullptr;
    if (!atOnce) {
      EXPECT_TRUE(session.save(session.document));
    }
    for (const wchar_t* name : {L"Varnowick.ini", L"1.con", L"Varnowick.REC"})
      EXPECT_EQ(files.contents[kBackup + name], "put here");
    EXPECT_FALSE(files.contents.contains(kBackup + L"0.con"));
  }
}

TEST(Backup, OneThatFailsStopsTheSave) {
  MemoryFiles files = diskWith(withContainers(L"c", 1));
  files.contents[container(5)] = "behind a gap";
  const auto before = files.contents;
  files.failure = [](Operation, const std::wstring& path) {
    return path.find(L"Backup") != std::wstring::npos ? kDiskFull : FileStatus{};
  };
  Session session(files);
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_EQ(session.save(Document{}).file, kFolder + L"\\Backup");
    EXPECT_EQ(files.contents, before);
  }
  files.failure = nullptr;
  EXPECT_TRUE(session.save(Document{}));
  EXPECT_TRUE(files.contents.contains(kBackup + L"5.con"));
}

TEST(Backup, AnUnreadableFileIsMovedAway) {
  MemoryFiles files = diskWith(withContainers(L"c", 3));
  const std::string locked = files.contents[container(1)];
  files.unreadable.insert(container(1));
  Session session(files);
  EXPECT_EQ(session.document.workspace.containers.count(), 2U);
  EXPECT_TRUE(session.save(session.document));
  EXPECT_EQ(files.contents[kBackup + L"1.con"], locked);
  files.unreadable.clear();
  EXPECT_EQ(Session(files).state(), session.state());
}

}  // namespace
}  // namespace varnowick
