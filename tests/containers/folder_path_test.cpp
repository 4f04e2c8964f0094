#include "containers/folder_path.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(FolderPath, TextsOfRecordsBecomeFullPathsOrNothing) {
  const auto expand = [](const std::wstring& text) {
    return text == L"%HOME%\\Docs" ? std::wstring(L"C:\\Users\\me\\Docs") : text;
  };
  const struct {
    const wchar_t* text;
    const wchar_t* path;
  } rows[] = {{L"C:\\Docs", L"C:\\Docs"},
              {L"C:\\Docs\\\\", L"C:\\Docs"},
              {L"c:", L"c:\\"},
              {L"C:\\", L"C:\\"},
              {L"  \"C:\\My Docs\\\"  ", L"C:\\My Docs"},
              {L"C:/Docs/x", L"C:\\Docs\\x"},
              {L"@:\\Docs", L"E:\\Docs"},
              {L"%HOME%\\Docs", L"C:\\Users\\me\\Docs"},
              {L"%NONE%\\Docs", L""},
              {L"\\\\server\\share", L"\\\\server\\share"},
              {L"\\\\server\\share\\a\\", L"\\\\server\\share\\a"},
              {L"\\\\server", L""},
              {L"\\\\", L""},
              {L"Docs", L""},
              {L"..\\Docs", L""},
              {L"C:Docs", L""},
              {L"C:\\a\\..\\b", L""},
              {L"C:\\a\\*", L""},
              {L"C:\\a\tb", L""},
              {L"C:\\a:stream", L""},
              {L"\\\\.\\PhysicalDrive0", L""},
              {L"\\\\?\\C:\\x", L""},
              {L"http://example.org/", L""},
              {L"C:\\a & b\\\u202Egpj", L"C:\\a & b\\\u202Egpj"},
              {L"@", L""},
              {L"", L""}};
  for (const auto& row : rows)
    EXPECT_EQ(folderPath(row.text, L"E:\\Varnowick", expand), row.path) << row.text;
  EXPECT_EQ(folderPath(L"C:\\" + std::wstring(40'000, L'x'), L"E:\\", expand), L"");
  EXPECT_EQ(folderPath(L"C:\\" + std::wstring(30'000, L'x'), L"E:\\", {}).size(), 30'003U);
}

TEST(FolderPath, ParentsNamesAndVolumes) {
  const struct {
    const wchar_t *path, *parent, *name, *volume;
  } rows[] = {{L"C:\\a\\b", L"C:\\a", L"b", L"C:"},
              {L"C:\\a\\", L"C:\\", L"a", L"C:"},
              {L"C:\\", L"", L"C:", L"C:"},
              {L"\\\\s\\h\\a", L"\\\\s\\h", L"a", L"\\\\s\\h"},
              {L"\\\\s\\h", L"", L"h", L"\\\\s\\h"}};
  for (const auto& row : rows) {
    EXPECT_EQ(parentOf(row.path), row.parent) << row.path;
    EXPECT_EQ(nameOf(row.path), row.name) << row.path;
    EXPECT_EQ(volumeOf(row.path), row.volume) << row.path;
  }
  EXPECT_EQ(pathIn(L"C:\\", L"a"), L"C:\\a");
  EXPECT_EQ(pathIn(L"C:\\b", L"a"), L"C:\\b\\a");
}

TEST(FolderPath, BelowMeansWholeNames) {
  EXPECT_TRUE(isInOrBelow(L"C:\\A\\b", L"c:\\a\\"));
  EXPECT_TRUE(isInOrBelow(L"C:\\a", L"C:\\a"));
  EXPECT_TRUE(isInOrBelow(L"C:\\a", L"C:\\"));
  EXPECT_FALSE(isInOrBelow(L"C:\\ab", L"C:\\a"));
  EXPECT_FALSE(isInOrBelow(L"C:\\a", L""));
}

TEST(FolderPath, NamesAreShownWithoutTricks) {
  EXPECT_EQ(shownName(L"a&b.txt"), L"a&b.txt");
  EXPECT_EQ(shownName(L"a\u202Etxt.exe\t"), L"a\uFFFDtxt.exe\uFFFD");
  EXPECT_EQ(shownName(L"\u05D0\u05D1.txt"), L"\u05D0\u05D1.txt") << "Hebrew may run as it does";
}

}  // namespace
}  // namespace varnowick
