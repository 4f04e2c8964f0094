#include "core/settings_file.h"

#include <gtest/gtest.h>

#include "core/settings_table.h"
#include "tests/core/reference_document.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"

namespace varnowick {
namespace {

struct Read {
  Document document;
  LoadReport report;
  FakeMsgBox msgBox;
  std::vector<std::wstring> progress;

  explicit Read(std::string_view bytes) {
    setBuiltInSettings(document.settings);
    InitDefaultSettings(document.settings);
    FakeCodec codec;
    readSettingsFile(
        bytes, L"x.ini", codec, msgBox,
        [this](const std::wstring& text) { progress.push_back(text); }, document, report);
  }
};

std::string render(const Document& document) {
  FakeCodec codec;
  return renderSettingsFile(document.settings, ContentsByPanel(document.workspace).of(picBack),
                            codec);
}
std::string render(const Settings& settings) { return render(Document{settings, {}}); }

Settings defaults() {
  Settings s;
  setBuiltInSettings(s);
  InitDefaultSettings(s);
  return s;
}

// The value line after the key, in a rendered file.
std::string valueIn(const std::string& file, std::string_view key) {
  const std::size_t start = file.find(std::string(key) + "\r\n") + key.size() + 2;
  return file.substr(start, file.find("\r\n", start) - start);
}

TEST(SettingsFile, ReferenceSurvives) {
  const std::string reference = render(referenceDocument());
  const Read read(reference);
  EXPECT_TRUE(read.report.empty());
  EXPECT_EQ(render(read.document), reference);
  EXPECT_EQ(read.document.workspace.shortcuts.count(), 2U);
  EXPECT_EQ(render(Read(goldenSettingsFile()).document), goldenSettingsFile());
  EXPECT_EQ(read.progress,
            (std::vector<std::wstring>{L"Loading Settings...", L"Loading Pictures..."}));
  // Every row is seen to survive, because none has its default there.
  for (const SettingRow& row : settingsTable()) {
    const std::string value = valueIn(reference, row.field.key);
    EXPECT_EQ(value == valueIn(render(defaults()), row.field.key), row.writeOnly())
        << row.field.key;
    EXPECT_EQ(value == row.field.constant, row.writeOnly());
  }
}

TEST(SettingsFile, DefaultsResetOnlyWhatHasADefault) {
  Settings s = referenceDocument().settings;
  InitDefaultSettings(s);
  EXPECT_TRUE(s.checkForUpdatesOnStartup && s.confirmDelete && s.globalHotkey && s.animate);
  EXPECT_FALSE(s.translucent || s.showTime || s.doubleClick || s.autoShrink);
  EXPECT_EQ(s.globalHotkeyChar + std::to_wstring(s.globalHotkeyMod), L"S8");
  EXPECT_EQ(s.autoExpandDelay, 1);
  EXPECT_EQ(s.rssUseProxy, L"0");
  EXPECT_TRUE(s.undockImmediately && s.stretch && s.locked && s.fontName == L"Courier New");
  setBuiltInSettings(s);
  EXPECT_EQ(s.fontName + L" " + s.buttons, L"Verdana Vista");
  EXPECT_EQ(s.fontSize, 10);
  EXPECT_EQ(s.largeIconSize, 32);
}

TEST(SettingsFile, AChangeAffectsWhatItsRowsSay) {
  const Settings before;
  Settings after;
  EXPECT_EQ(affected(before, after), kAffectsNothing);
  after.confirmDelete = !after.confirmDelete;
  EXPECT_EQ(affected(before, after), kAffectsNothing) << "read where it is used";
  after.foreground = rgb(1, 2, 3);
  after.translucent = true;
  EXPECT_EQ(affected(before, after), kAffectsPalette | kAffectsOpacity);
  after = before;
  after.globalHotkeyChar = L"T";
  EXPECT_EQ(affected(after, before), kAffectsHotkey);
}

TEST(SettingsFile, TakesWhatItKnowsInAnyOrder) {
  const Read read(
      "106\r\n[LOCKED]\r\n True \r\n[Nonsense]\r\nvalue\r\n[X]\r\n 75\r\n"
      "[Align]\r\nFalse\r\n[RSS Search1]\r\nb\r\n[RSS Search0]\r\na\r\n[Locked]\r\n0\r\n[Y]\r\n9");
  EXPECT_TRUE(read.document.settings.locked);
  EXPECT_FALSE(read.document.settings.align);
  EXPECT_EQ(read.document.settings.window.left, 75_tw);
  EXPECT_EQ(read.document.settings.window.top, 9_tw);
  EXPECT_EQ(read.document.settings.recentSearches, (std::vector<std::wstring>{L"a", L"b"}));
  ASSERT_EQ(read.report.count(), 4U);
  EXPECT_EQ(read.report.problems()[0].line, 4U);
  EXPECT_EQ(read.report.filesNotReadWhole(), std::vector<std::wstring>{L"x.ini"});
}

TEST(SettingsFile, BadValuesKeepThePreviousOnes) {
  const Read read(
      "106\r\n[Animate]\r\nmaybe\r\n[X]\r\n10000000\r\n[W]\r\n-5\r\n[Font Size]\r\n12pt\r\n"
      "[Background]\r\n99999999999\r\n[AutoShrink]\r\n1\r\n[Font Name]");
  Settings expected = defaults();
  expected.autoShrink = true;
  EXPECT_EQ(render(read.document), render(expected));
  EXPECT_EQ(read.report.count(), 6U);
}

TEST(SettingsFile, RaisesNoFalseAlarm) {
  EXPECT_TRUE(Read("106\r\n[Taskbar]\r\n[LOCKED]\r\n1\r\n").document.settings.locked);
  std::string file = render(referenceDocument());
  file.replace(file.find("[Taskbar]\r\n0"), 12, "[Taskbar]\r\n 1");
  std::erase(file, '\r');
  const Read read(file);
  EXPECT_TRUE(read.report.empty());
  EXPECT_EQ(render(read.document), render(referenceDocument()));
}

TEST(SettingsFile, SearchesFormARunOfAtMostTen) {
  Settings s = defaults();
  s.recentSearches = {L"[No recent search]"};
  EXPECT_EQ(render(s).find("[RSS Search"), std::string::npos);
  s.recentSearches.assign(12, L"x");
  EXPECT_NE(render(s).find("[RSS Search9]\r\nx\r\n"), std::string::npos);
  EXPECT_EQ(Read(render(s)).document.settings.recentSearches.size(), 10U);
  EXPECT_EQ(Read("106\r\n[RSS Search7]\r\nlate").document.settings.recentSearches,
            std::vector<std::wstring>{L"late"});
}

TEST(SettingsFile, ABlankHotkeyIsTheUsualOne) {
  const Settings s =
      Read("106\r\n[GlobalHotkeyChar]\r\nQ\r\n[GlobalHotkeyChar]\r\n \r\n").document.settings;
  EXPECT_EQ(s.globalHotkeyChar, L"S");
}

TEST(SettingsFile, TellsOfNestedContainersOnce) {
  EXPECT_TRUE(Read("[1.04]\r\n[Capture]\r\n0\r\n").msgBox.shown.empty());
  const Read read("[1.04]\r\n[Capture]\r\n 1 \r\n[LOCKED]\r\n1\r\n[Capture]\r\n1\r\n");
  EXPECT_TRUE(read.document.settings.locked && read.report.empty());
  ASSERT_EQ(read.msgBox.shown.size(), 1U);
  EXPECT_EQ(read.msgBox.shown[0].caption, L"Nested Containers");
  EXPECT_EQ(read.msgBox.shown[0].style, 48U + 4096U);
}

}  // namespace
}  // namespace varnowick
