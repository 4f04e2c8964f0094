#include "platform/win32/win32_system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/win32/handles.h"
#include "platform/win32/win32_screen.h"
#include "platform/win32/win32_shell.h"
#include "tests/support/temp_folder.h"

namespace varnowick {
namespace {

TEST(Win32System, FoldersAreFullPathsThatExist) {
  Win32System system;
  for (const std::wstring& folder :
       {system.programFolder(), system.applicationDataFolder(), system.systemFolder()}) {
    ASSERT_GT(folder.size(), 2U);
    EXPECT_EQ(folder[1], L':');
    EXPECT_TRUE(folder.size() == 3 || folder.back() != L'\\');
    EXPECT_TRUE(GetFileAttributesW(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY);
  }
  EXPECT_GE(system.majorVersion(), 5);
}

TEST(Win32Monitors, PrimaryComesFirstAndAllLieInTheVirtualScreen) {
  Win32Monitors monitors;
  const std::vector<Monitor> all = monitors.all();
  ASSERT_FALSE(all.empty());
  EXPECT_TRUE(all.front().primary);
  EXPECT_EQ(all.front().bounds.topLeft(), (Point<Pixels>{}));
  const PixelRect screen = monitors.virtualScreen();
  for (const Monitor& monitor : all) {
    EXPECT_EQ(monitor.bounds.intersect(screen), monitor.bounds);
    EXPECT_EQ(monitor.work.intersect(monitor.bounds), monitor.work);
    EXPECT_FALSE(monitor.work.empty());
  }
  EXPECT_GE(monitors.density().dpi, 48);
}

TEST(Win32Shell, ReportsFailuresAsDocumented) {
  const TempFolder folder;
  Win32Shell shell;
  const int missing = shell.execute({}, L"", folder / L"none.exe", L"", L"");
  EXPECT_TRUE(missing == 2 || missing == 3) << missing;
  EXPECT_FALSE(shell.run(L"\"" + (folder / L"none.exe") + L"\" x"));
  EXPECT_FALSE(shell.run(L""));
}

TEST(SystemLibrary, LoadsFromTheSystemFolderOnly) {
  EXPECT_TRUE(SystemLibrary(L"user32.dll"));
  EXPECT_FALSE(SystemLibrary(L"no such library.dll"));
  const SystemLibrary none(L"no such library.dll");
  int (*function)() = [] { return 0; };
  EXPECT_FALSE(none.bind("f", function));
  EXPECT_EQ(function, nullptr);

  // A library of that name in the current folder is not taken.
  const TempFolder folder;
  wchar_t before[MAX_PATH + 1] = {};
  GetCurrentDirectoryW(MAX_PATH, before);
  wchar_t source[MAX_PATH + 1] = {};
  GetSystemDirectoryW(source, MAX_PATH);
  ASSERT_TRUE(CopyFileW((std::wstring(source) + L"\\version.dll").c_str(),
                        (folder / L"vwplanted.dll").c_str(), TRUE));
  SetCurrentDirectoryW(folder.path().c_str());
  EXPECT_FALSE(SystemLibrary(L"vwplanted.dll"));
  SetCurrentDirectoryW(before);
}

}  // namespace
}  // namespace varnowick
