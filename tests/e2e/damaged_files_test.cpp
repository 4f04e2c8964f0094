// Files that are damaged, incomplete or hostile: the program starts with what it
// can read, tells the user once, and keeps what it could not read.
#include "platform/win32/handles.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainDamage = ProgramTest;
using HostileFiles = ProgramTest;

TEST_F(MainDamage, ADamagedContainerIsToldOnceAndKeptInBackup) {
  const std::string damaged = "106\r\n[Container]\r\n-1\r\n[Name]\r\nHalf\r\n[Backco";
  write(SettingsFile(), {{.name = L"First"}, {}, {.name = L"Third"}});
  folder().write(L"Containers\\1.con", damaged);
  const std::vector<std::wstring> told = startAnsweringDialogs();
  const Bar bar(program(), events());
  for (const wchar_t* name : {L"First", L"Half", L"Third"}) bar.accessible().waitFor(name);
  EXPECT_EQ(folder().read(L"Containers\\1.con"), damaged) << "reading changes nothing";
  closeProgram();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find(L"1.con"), std::wstring::npos) << toUtf8(told[0]);
  const DataFiles backups = folder().backups();
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_EQ(backups.begin()->second, damaged);
}

TEST_F(MainDamage, ASettingsFileThatCannotBeReadIsToldAndKeptInBackup) {
  const std::string settings = SettingsFile().set("[LOCKED]", "1").bytes();
  folder().write(L"Varnowick.ini", settings);
  {
    const FileHandle holder(CreateFileW(folder().file(L"Varnowick.ini").c_str(), GENERIC_READ, 0,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    const std::vector<std::wstring> told = startAnsweringDialogs();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find(L"Varnowick.ini"), std::wstring::npos) << toUtf8(told[0]);
  }
  closeAnsweringDialogs();
  EXPECT_EQ(folder().backups()[L"Varnowick.ini"], settings);
}

TEST_F(HostileFiles, TheProgramStartsAndEndsCleanlyWhateverItsFilesHold) {
  std::string everyByte = "106\r\n";
  for (int i = 0; i < 40'000; ++i) everyByte += static_cast<char>(i * 7919 % 256);
  const std::string nuls = "106\r\n" + std::string(1'000'000, '\0'),
                    box = containerFile({.name = L"Box"});
  const std::pair<std::string, std::string> files[] = {
      {"", ""},
      {nuls, nuls},
      {everyByte, everyByte},
      {SettingsFile().window(2'000'000'000, -2'000'000'000, 2'000'000'000, 1).bytes(), box},
      {"[1.01]" + SettingsFile().bytes().substr(3), "[1.01]" + box.substr(3)}};
  for (const auto& [settings, first] : files) {
    SCOPED_TRACE(settings.substr(0, 200));
    folder().remove(L"Backup");
    folder().write(L"Varnowick.ini", settings);
    folder().write(L"Containers\\0.con", first);
    const std::size_t atStart = startAnsweringDialogs().size();
    EXPECT_LE(atStart + closeAnsweringDialogs().size(), 1U) << "tells more than once";
    EXPECT_EQ(folder().read(L"Varnowick.ini").substr(0, 5), "106\r\n");
  }
}

}  // namespace
}  // namespace varnowick::e2e
