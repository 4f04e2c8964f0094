// The store beside other programs that have its files open.
#include "core/patient_files.h"

#include "tests/core/store_world.h"

namespace varnowick {
namespace {

TEST(PatientFiles, SharedOnesNeitherStopASaveNorGoMissing) {
  const Document before = withContainers(L"before", 3);
  const Document more = withContainers(L"more", 4);
  MemoryFiles files = diskWith(before);
  Session session(files);
  EXPECT_TRUE(session.save(before, true));
  for (const std::wstring& path :
       {kMain, kCopy, kFolder + L"\\Varnowick.journal", container(1), container(2)})
    files.openElsewhere(path, true);
  EXPECT_TRUE(session.save(withContainers(L"fewer", 2)));
  session.store.finish(0);
  EXPECT_TRUE(session.save(more));
  EXPECT_TRUE(session.store.finish(0));
  EXPECT_EQ(session.pauses, 0);
  files.closeElsewhere();
  EXPECT_EQ(files.contents.size(), 5U);
  expectState(files, {&more}, "closed");
}

TEST(PatientFiles, WaitAMomentForAFileThatAnotherProgramHolds) {
  const Document before = withContainers(L"before", 2);
  const Document after = withContainers(L"after", 1);
  for (const std::wstring& held : {kMain, container(0), container(1)}) {
    MemoryFiles files = diskWith(before);
    files.openElsewhere(held, false);
    Session session(files, {}, [&](int pause) {
      if (pause % 3 == 0) files.closeElsewhere();
    });
    EXPECT_EQ(session.state(), stateOf(before));
    for (int i = 0; i < 2; ++i) {
      files.openElsewhere(held, false);
      EXPECT_TRUE(session.save(after)) << "waits again";
      expectState(files, {&after}, "saved");
      session.save(before);
    }
    // One that stays closed to us is not waited for with every change.
    files.openElsewhere(held, false);
    session.meanwhile = nullptr;
    session.pauses = 0;
    EXPECT_FALSE(session.save(after));
    EXPECT_FALSE(session.save(after));
    EXPECT_EQ(session.pauses, 20);
    files.closeElsewhere();
    expectState(files, {&after}, "in the journal");
  }
}

}  // namespace
}  // namespace varnowick
