#include "core/backup.h"

#include <gtest/gtest.h>

#include "tests/fakes/memory_files.h"

namespace varnowick {
namespace {

TEST(Backup, KeepsEveryContentOnce) {
  MemoryFiles files;
  const auto backUp = [&](const char* bytes) {
    files.contents[L"D:\\v.1\\name"] = bytes;
    return backUpFiles(files, L"D:\\v.1", {L"D:\\v.1\\name", L"D:\\v.1\\gone.con"}).written;
  };
  using Names = std::vector<std::wstring>;
  EXPECT_EQ(backUp("a"), Names{L"name"});
  EXPECT_EQ(backUp("b"), Names{L"name (2)"});
  EXPECT_EQ(backUp("a"), Names{});
  EXPECT_EQ(backUp("b"), Names{});
  EXPECT_EQ(backUp("c"), Names{L"name (3)"});
  EXPECT_EQ(files.contents[L"D:\\v.1\\Backup\\name (2)"], "b");
  EXPECT_EQ(files.contents[L"D:\\v.1\\name"], "c");
}

}  // namespace
}  // namespace varnowick
