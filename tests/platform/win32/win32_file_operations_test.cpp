#include "platform/win32/win32_file_operations.h"

#include <gtest/gtest.h>
#include <shellapi.h>

#include "platform/win32/handles.h"
#include "platform/win32/win32_files.h"
#include "tests/support/run_messages.h"
#include "tests/support/temp_folder.h"

namespace varnowick {
namespace {

using A = FileAction;

class FileOperationsTest : public testing::Test {
 protected:
  void put(const std::wstring& name, const std::string& bytes = "x") {
    ASSERT_TRUE(files.write(folder / name, bytes));
  }
  bool there(const std::wstring& name) { return files.exists(folder / name); }
  FileOperationResult run(FileOperation operation) { return carryOut(operation, nullptr); }
  TempFolder folder;
  Win32Files files;
};

long long inBin() {
  SHQUERYRBINFO about{};
  about.cbSize = sizeof about;
  return SUCCEEDED(SHQueryRecycleBinW(nullptr, &about)) ? about.i64NumItems : -1;
}

TEST_F(FileOperationsTest, CopiesMovesAndRenames) {
  files.createFolder(folder / L"into");
  files.createFolder(folder / L"tree\\below");
  put(L"a & b.txt", "one");
  put(L"two");
  put(L"tree\\below\\leaf");
  EXPECT_EQ(run({A::Copy, {folder / L"a & b.txt", folder / L"tree"}, folder / L"into"}).error, L"");
  EXPECT_EQ(files.read(folder / L"into\\a & b.txt").bytes, "one");
  EXPECT_TRUE(there(L"into\\tree\\below\\leaf") && there(L"a & b.txt"));
  EXPECT_EQ(run({A::Move, {folder / L"two"}, folder / L"into"}).error, L"");
  EXPECT_TRUE(there(L"into\\two") && !there(L"two"));
  EXPECT_EQ(run({A::Rename, {folder / L"into\\two"}, folder / L"into\\TWO \u4e16"}).error, L"");
  EXPECT_TRUE(there(L"into\\TWO \u4e16"));
}

TEST_F(FileOperationsTest, RecyclingGoesToTheBin) {
  put(L"gone");
  const long long before = inBin();
  const FileOperationResult result = run({A::Recycle, {folder / L"gone"}});
  EXPECT_EQ(result.error, L"");
  EXPECT_FALSE(there(L"gone"));
  EXPECT_EQ(inBin(), before + 1);
}

TEST_F(FileOperationsTest, FailuresSayWhyAndChangeNothing) {
  put(L"a", "a");
  put(L"b", "b");
  const std::wstring longName = folder / std::wstring(300, L'x');
  const struct {
    const char* what;
    FileOperation operation;
  } rows[] = {{"rename a missing one", {A::Rename, {folder / L"none"}, folder / L"c"}},
              {"rename over another", {A::Rename, {folder / L"a"}, folder / L"b"}},
              {"recycle a missing one", {A::Recycle, {folder / L"none"}}},
              {"copy a missing one", {A::Copy, {folder / L"none"}, folder.path()}},
              {"copy into a missing folder", {A::Copy, {folder / L"a"}, folder / L"none"}},
              {"move into a file", {A::Move, {folder / L"a"}, folder / L"b"}},
              {"recycle by wildcard", {A::Recycle, {folder / L"*"}}},
              {"recycle a long path", {A::Recycle, {longName}}},
              {"a path with an end in it", {A::Recycle, {folder / std::wstring(L"a\0b", 3)}}},
              {"recycle a relative path", {A::Recycle, {L"a"}}}};
  for (const auto& row : rows) {
    const FileOperationResult result = run(row.operation);
    EXPECT_NE(result.error, L"") << row.what;
    EXPECT_FALSE(result.cancelled) << row.what;
    EXPECT_EQ(result.operation, row.operation) << row.what;
  }
  EXPECT_EQ(files.read(folder / L"a").bytes, "a");
  EXPECT_EQ(files.read(folder / L"b").bytes, "b");
}

TEST_F(FileOperationsTest, WhatHasGoneMeanwhileDoesNotKeepTheOthers) {
  put(L"a");
  const FileOperationResult result =
      run({A::Recycle, {folder / L"none", folder / L"a", folder / L"none either"}});
  EXPECT_NE(result.error, L"");
  EXPECT_FALSE(there(L"a"));
}

TEST_F(FileOperationsTest, RenamingLongPathsWorks) {
  std::wstring deep = folder.path();
  while (deep.size() < 400) deep += L"\\" + std::wstring(40, L'd');
  ASSERT_TRUE(files.createFolder(deep));
  ASSERT_TRUE(files.write(deep + L"\\a", "x"));
  EXPECT_EQ(run({A::Rename, {deep + L"\\a"}, deep + L"\\b"}).error, L"");
  EXPECT_TRUE(files.exists(deep + L"\\b"));
}

TEST_F(FileOperationsTest, TheEndIsAnnouncedAndTaken) {
  put(L"a");
  files.createFolder(folder / L"into");
  Doorbell doorbell;
  std::vector<FileOperationResult> results;
  std::unique_ptr<Win32FileOperations> operations;
  operations = std::make_unique<Win32FileOperations>(doorbell, nullptr, [&] {
    for (FileOperationResult& result : operations->take()) results.push_back(result);
  });
  EXPECT_EQ(operations->start({A::None}), 0);
  EXPECT_FALSE(operations->busy());
  const int copy = operations->start({A::Copy, {folder / L"a"}, folder / L"into"});
  const int rename = operations->start({A::Rename, {folder / L"none"}, folder / L"x"});
  ASSERT_TRUE(runMessagesUntil([&] { return results.size() == 2; }));
  EXPECT_EQ(results[0].number + results[1].number, copy + rename);
  EXPECT_FALSE(operations->busy());
  EXPECT_TRUE(there(L"into\\a"));
  // Left behind while it may still be under way.
  operations->start({A::Move, {folder / L"a"}, folder / L"into\\none\\none"});
}

}  // namespace
}  // namespace varnowick
