// Files that are damaged, incomplete or hostile: the program starts with what it
// can read, tells the user once, and keeps what it could not read.
#include "platform/win32/handles.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using MainDamage = ProgramTest;
using HostileFiles = ProgramTest;

std::string container(const wchar_t* name) { return containerFile({.name = name}); }

TEST_F(MainDamage, ADamagedContainerIsToldOnceAndKeptInBackup) {
  const std::string damaged = "106\r\n[Container]\r\n-1\r\n[Name]\r\nHalf\r\n[Backco";
  write(SettingsFile());
  folder().write(L"Containers\\0.con", container(L"First"));
  folder().write(L"Containers\\1.con", damaged);
  folder().write(L"Containers\\2.con", container(L"Third"));
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

TEST_F(MainDamage, FilesBehindAGapInTheNumberingAreKeptInBackup) {
  write(SettingsFile());
  folder().write(L"Containers\\0.con", container(L"First"));
  folder().write(L"Containers\\2.con", container(L"Behind the gap"));
  folder().write(L"Containers\\notes.con", container(L"Not numbered"));
  startAnsweringDialogs();
  const Bar bar(program(), events());
  bar.accessible().waitFor(L"First");
  EXPECT_FALSE(bar.accessible().find(L"Behind the gap").has_value());
  closeAnsweringDialogs();
  EXPECT_FALSE(folder().exists(L"Containers\\2.con"));
  std::vector<std::string> kept;
  for (const auto& [name, bytes] : folder().backups()) kept.push_back(bytes);
  std::sort(kept.begin(), kept.end());
  std::vector<std::string> expected{container(L"Behind the gap"), container(L"Not numbered")};
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(kept, expected);
}

TEST_F(MainDamage, TextOutsideTheCodePageSurvives) {
  // Japanese, Cyrillic, a Latin letter with an accent, and one beyond 16 bits.
  const std::string name = "\xE6\x97\xA5\xE6\x9C\xAC \xD0\x96 \xC3\xA9 \xF0\x9D\x84\x9E";
  std::string file = container(L"NAME");
  file.replace(file.find("NAME"), 4, name);
  write(SettingsFile());
  folder().write(L"Containers\\0.con", file);
  const DataFiles before = folder().state();
  const Bar bar = startBar();
  bar.accessible().waitFor(fromUtf8(name));
  closeProgram();
  EXPECT_EQ(folder().state(), before);
}

struct HostileCase {
  std::string name;
  std::string settings;
  std::string container;
};

std::vector<HostileCase> hostileCases() {
  const std::string settings = SettingsFile().bytes();
  const std::string box = container(L"Box");
  const auto version = [](const std::string& bytes, const std::string& v) {
    return v + bytes.substr(3);
  };
  std::string everyByte = "106\r\n";
  for (int i = 0; i < 40'000; ++i) everyByte += static_cast<char>(i * 7919 % 256);
  std::string enormous =
      SettingsFile().window(2'000'000'000, -2'000'000'000, 2'000'000'000, 1).bytes();
  std::string utf16 = "\xFF\xFE";
  for (const char c : settings) utf16 += {c, '\0'};
  const std::string nuls(1'000'000, '\0');
  return {{"empty", "", ""},
          {"version line only", "106", "106\r\n"},
          {"NULs", nuls, nuls},
          {"NULs behind a version line", "106\r\n" + nuls, "106\r\n" + nuls},
          {"every byte", everyByte, everyByte},
          {"UTF-16", utf16, utf16},
          {"numbers out of all bounds", enormous, box},
          {"version [1.01]", version(settings, "[1.01]"), version(box, "[1.01]")},
          {"version [1.04]", version(settings, "[1.04]"), version(box, "[1.04]")},
          {"version [1.05]", version(settings, "[1.05]"), version(box, "[1.05]")},
          {"unknown version", version(settings, "107"), version(box, "107")},
          {"lone line feeds", "106\n[X]\n 0\n[W]\n 3000", "106\n[Container]\n-1\n[Name]\nBox"}};
}

TEST_F(HostileFiles, TheProgramStartsAndEndsCleanlyWhateverItsFilesHold) {
  for (const HostileCase& c : hostileCases()) {
    SCOPED_TRACE(c.name);
    folder().remove(L"Backup");
    folder().write(L"Varnowick.ini", c.settings);
    folder().write(L"Containers\\0.con", c.container);
    const std::size_t atStart = startAnsweringDialogs().size();
    EXPECT_LE(atStart + closeAnsweringDialogs().size(), 1U) << "tells more than once";
    EXPECT_EQ(folder().read(L"Varnowick.ini").substr(0, 5), "106\r\n");
  }
}

TEST_F(HostileFiles, ALineOfFiftyMegabytesDoesNoHarm) {
  folder().write(L"Varnowick.ini", "106\r\n[Font Name]\r\n" + std::string(50'000'000, 'x'));
  startAnsweringDialogs();
  closeAnsweringDialogs();
}

}  // namespace
}  // namespace varnowick::e2e
