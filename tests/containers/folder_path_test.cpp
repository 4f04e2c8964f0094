#include "containers/folder_path.h"

#include <gtest/gtest.h>

#include <cctype>

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
              {L"a\\b\\c", L""},
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
  for (const wchar_t drive : std::wstring(L"AZaz[`{/")) {
    const std::wstring path = std::wstring(1, drive) + L":\\x";
    EXPECT_EQ(folderPath(path, L"E:\\", {}), std::isalpha(drive) != 0 ? path : L"") << path;
  }
  for (const std::size_t length : {32'000U, 32'001U, 40'000U})
    EXPECT_EQ(folderPath(L"C:\\" + std::wstring(length - 3, L'x'), L"E:\\", {}).size(),
              length > 32'000 ? 0U : length);
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
  // Both ends of what turns the direction or breaks the line, and their neighbours.
  for (const wchar_t c : {L' ', L'\u200D', L'\u2010', L'\u2027', L'\u202F', L'\u2065', L'\u206A'})
    EXPECT_EQ(shownName({&c, 1})[0], c);
  for (const wchar_t c : {L'\x1F', L'\x7F', L'\u061C', L'\u200E', L'\u200F', L'\u2028', L'\u202E',
                          L'\u2066', L'\u2069'})
    EXPECT_EQ(shownName({&c, 1})[0], L'\uFFFD');
  EXPECT_EQ(shownName(L"\u05D0\u05D1.txt"), L"\u05D0\u05D1.txt") << "Hebrew may run as it does";
}

}  // namespace
}  // namespace varnowick
