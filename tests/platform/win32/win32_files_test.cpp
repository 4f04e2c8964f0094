#include "platform/win32/win32_files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "platform/win32/handles.h"
#include "tests/support/temp_folder.h"

namespace varnowick {
namespace {

using Kind = FileStatus::Kind;

TEST(Win32Files, WritesWhatItReadsWhateverWasThereBefore) {
  const TempFolder folder;
  Win32Files files;
  const std::wstring path = folder / L"a \u00e9\u4e16.con";
  std::string large(3'000'001, 'x');
  large[1'500'000] = '\0';
  const std::string contents[] = {"short\r\n", large, "", std::string("\0\x1A\xFF", 3)};
  for (const std::string& bytes : contents) {
    ASSERT_TRUE(files.write(path, bytes));
    const FileBytes read = files.read(path);
    ASSERT_TRUE(read.status);
    EXPECT_TRUE(read.bytes == bytes) << bytes.size() << " bytes";
  }
}

TEST(Win32Files, WritesOverHiddenFilesAndKeepsThemHidden) {
  const TempFolder folder;
  Win32Files files;
  const std::wstring path = folder / L"hidden.ini";
  ASSERT_TRUE(files.write(path, "old"));
  ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM));
  EXPECT_TRUE(files.write(path, "new"));
  EXPECT_EQ(files.read(path).bytes, "new");
  EXPECT_TRUE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN);
}

TEST(Win32Files, FailuresSayWhyAndChangeNothing) {
  const TempFolder folder;
  Win32Files files;
  const std::wstring path = folder / L"kept.ini";
  ASSERT_TRUE(files.write(path, "kept"));
  const auto expectFailure = [](const FileStatus& status, Kind kind, const char* what) {
    EXPECT_EQ(status.kind, kind) << what;
    EXPECT_FALSE(status.reason.empty()) << what;
    EXPECT_EQ(status.reason.find_first_of(L"\r\n"), std::wstring::npos) << what;
  };
  expectFailure(files.read(folder / L"none").status, Kind::NotFound, "read a missing file");
  expectFailure(files.read(folder / L"none\\none").status, Kind::NotFound, "in a missing folder");
  expectFailure(files.read(folder.path()).status, Kind::Denied, "read a folder");
  expectFailure(files.write(folder / L"none\\a", "x"), Kind::NotFound, "write, missing folder");
  expectFailure(files.rename(folder / L"none", path), Kind::NotFound, "rename a missing file");
  expectFailure(files.createFolder(path + L"\\below"), Kind::Other, "a folder below a file");
  {
    const FileHandle open(
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(open);
    expectFailure(files.write(path, "x"), Kind::Denied, "write what another holds open");
    expectFailure(files.read(path).status, Kind::Denied, "read what another holds open");
    expectFailure(files.remove(path), Kind::Denied, "remove what another holds open");
  }
  EXPECT_EQ(files.read(path).bytes, "kept");
}

TEST(Win32Files, RenameReplacesAndRemoveForgives) {
  const TempFolder folder;
  Win32Files files;
  ASSERT_TRUE(files.write(folder / L"new", "1"));
  ASSERT_TRUE(files.write(folder / L"old", "2"));
  EXPECT_TRUE(files.rename(folder / L"new", folder / L"old"));
  EXPECT_EQ(files.read(folder / L"old").bytes, "1");
  EXPECT_FALSE(files.exists(folder / L"new"));
  EXPECT_TRUE(files.remove(folder / L"old"));
  EXPECT_TRUE(files.remove(folder / L"old"));
  EXPECT_TRUE(files.remove(folder / L"no folder\\old"));
}

TEST(Win32Files, LongPathsWork) {
  const TempFolder folder;
  Win32Files files;
  std::wstring deep = folder.path();
  while (deep.size() < 400) deep += L"\\" + std::wstring(40, L'd');
  ASSERT_TRUE(files.createFolder(deep));
  EXPECT_TRUE(files.createFolder(deep)) << "it exists already";
  ASSERT_TRUE(files.write(deep + L"\\0.con", "deep"));
  EXPECT_TRUE(files.exists(deep + L"\\0.con"));
  EXPECT_EQ(files.read(deep + L"\\0.con").bytes, "deep");
  ASSERT_EQ(files.list(deep, L".con").size(), 1U);
  EXPECT_TRUE(files.rename(deep + L"\\0.con", deep + L"\\1.con"));
  EXPECT_TRUE(files.remove(deep + L"\\1.con"));
}

TEST(Win32Files, ListsByTheWholeExtension) {
  const TempFolder folder;
  Win32Files files;
  for (const wchar_t* name : {L"0.con", L"1.CON", L"2.conx", L"3.con.bak", L"4con"}) {
    ASSERT_TRUE(files.write(folder / name, "12345"));
  }
  ASSERT_TRUE(files.createFolder(folder / L"folder.con"));
  std::vector<std::wstring> names;
  for (const FileInfo& info : files.list(folder.path(), L".con")) {
    names.push_back(info.name);
    EXPECT_EQ(info.isFolder, info.name == L"folder.con");
    EXPECT_EQ(info.size, info.isFolder ? 0U : 5U);
    EXPECT_GT(info.modifiedTime, 125'000'000'000'000'000U);
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"0.con", L"1.CON", L"folder.con"}));
  EXPECT_EQ(files.list(folder.path(), L"").size(), 6U);
  EXPECT_TRUE(files.list(folder / L"none", L"").empty());
}

}  // namespace
}  // namespace varnowick
