#include "platform/win32/win32_folder_source.h"

#include <dbt.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "platform/win32/handles.h"
#include "tests/support/temp_folder.h"

namespace varnowick {
namespace {

constexpr UINT kNews = WM_APP + 7;
constexpr DWORD kLongest = 20'000;  // milliseconds that a loaded machine may take

void put(const std::wstring& path) {
  const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(file) << GetLastError();
}

void byName(std::vector<FolderEntry>& entries) {
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
}

std::wstring describe(const FolderListing& listing) {
  switch (listing.state) {
    case FolderState::Loading:
      return L"(loading)";
    case FolderState::Missing:
      return L"(missing)";
    case FolderState::Denied:
      return L"(denied)";
    case FolderState::NotAFolder:
      return L"(not a folder)";
    case FolderState::Ready:
      break;
  }
  std::wstring all;
  for (const FolderEntry& entry : listing.entries)
    all += (all.empty() ? L"" : L" ") + entry.name + (entry.isFolder ? L"\\" : L"");
  return all;
}

// A source that tells a window of this test's thread.
class Watching {
 public:
  Watching()
      : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                nullptr)),
        source(std::make_unique<Win32FolderSource>(window_, kNews, byName)) {}
  ~Watching() {
    source.reset();
    DestroyWindow(window_);
  }
  // Takes news whenever they are announced, until the folder is as expected.
  bool waitFor(int id, const std::wstring& expected) {
    const DWORD start = GetTickCount();
    while (shown[id] != expected && GetTickCount() - start < kLongest) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 500, QS_ALLINPUT);
      MSG message;
      while (PeekMessageW(&message, window_, 0, 0, PM_REMOVE)) {
        if (message.message != kNews) continue;
        for (const FolderNews& news : source->take()) shown[news.id] = describe(news.listing);
      }
    }
    EXPECT_EQ(shown[id], expected);
    return shown[id] == expected;
  }

 private:
  HWND window_;

 public:
  std::unique_ptr<Win32FolderSource> source;
  std::map<int, std::wstring> shown;
};

TEST(Win32FolderSource, FollowsWhatHappensInTheFolder) {
  const TempFolder folder;
  CreateDirectoryW((folder / L"sub").c_str(), nullptr);
  put(folder / L"b & c \u00e9\u4e16.txt");
  put(folder / L"hidden");
  SetFileAttributesW((folder / L"hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
  Watching watching;
  watching.source->watch(3, folder.path());
  ASSERT_TRUE(watching.waitFor(3, L"b & c \u00e9\u4e16.txt sub\\"));
  put(folder / L"a");
  ASSERT_TRUE(watching.waitFor(3, L"a b & c \u00e9\u4e16.txt sub\\"));
  MoveFileW((folder / L"a").c_str(), (folder / L"z").c_str());
  DeleteFileW((folder / L"b & c \u00e9\u4e16.txt").c_str());
  ASSERT_TRUE(watching.waitFor(3, L"sub\\ z"));
  for (int i = 0; i < 50; ++i) put(folder / (L"n" + std::to_wstring(i)));
  for (int i = 0; i < 50; ++i) DeleteFileW((folder / (L"n" + std::to_wstring(i))).c_str());
  RemoveDirectoryW((folder / L"sub").c_str());
  EXPECT_TRUE(watching.waitFor(3, L"z")) << "a burst ends in what is there";
}

TEST(Win32FolderSource, AFolderThatGoesIsMissedAndComesBack) {
  const TempFolder around;
  const std::wstring path = around / L"f";
  Watching watching;
  watching.source->watch(1, path);
  ASSERT_TRUE(watching.waitFor(1, L"(missing)"));
  CreateDirectoryW(path.c_str(), nullptr);
  ASSERT_TRUE(watching.waitFor(1, L""));
  put(path + L"\\a");
  ASSERT_TRUE(watching.waitFor(1, L"a"));
  ASSERT_TRUE(MoveFileW(path.c_str(), (around / L"g").c_str())) << "watching holds nothing fast";
  ASSERT_TRUE(watching.waitFor(1, L"(missing)"));
  // Another folder in its place is followed as well.
  CreateDirectoryW(path.c_str(), nullptr);
  ASSERT_TRUE(watching.waitFor(1, L""));
  put(path + L"\\new");
  ASSERT_TRUE(watching.waitFor(1, L"new"));
  DeleteFileW((path + L"\\new").c_str());
  ASSERT_TRUE(RemoveDirectoryW(path.c_str()));
  ASSERT_TRUE(watching.waitFor(1, L"(missing)"));
  put(path);
  EXPECT_TRUE(watching.waitFor(1, L"(not a folder)"));
}

// Here no drive goes: what the system would send is sent by the test.
TEST(Win32FolderSource, ADriveThatIsToBeRemovedIsLetGoAndTakenUpAgain) {
  const TempFolder folder;
  Watching watching;
  watching.source->watch(1, folder.path());
  ASSERT_TRUE(watching.waitFor(1, L""));
  DEV_BROADCAST_HANDLE about{};
  about.dbch_size = sizeof about;
  about.dbch_devicetype = DBT_DEVTYP_HANDLE;
  // The folder is listed before it is watched.
  const auto held = [&] {
    const DWORD start = GetTickCount();
    while (watching.source->heldFor(1) == INVALID_HANDLE_VALUE && GetTickCount() - start < kLongest)
      Sleep(1);
    return watching.source->heldFor(1);
  };
  about.dbch_handle = held();
  ASSERT_NE(about.dbch_handle, INVALID_HANDLE_VALUE);
  const auto tell = [&](WPARAM event) {
    return watching.source->deviceChanged(event, reinterpret_cast<LPARAM>(&about));
  };
  EXPECT_TRUE(tell(DBT_DEVICEQUERYREMOVE));
  EXPECT_EQ(watching.source->heldFor(1), INVALID_HANDLE_VALUE) << "before the answer";
  put(folder / L"a");
  EXPECT_TRUE(tell(DBT_DEVICEQUERYREMOVEFAILED));
  ASSERT_TRUE(watching.waitFor(1, L"a"));
  EXPECT_NE(held(), INVALID_HANDLE_VALUE);
}

TEST(Win32FolderSource, PathsThatCannotBeListed) {
  const TempFolder folder;
  put(folder / L"file");
  const struct {
    std::wstring path;
    FolderState state;
  } rows[] = {{folder / L"none", FolderState::Missing},
              {folder / L"none\\below", FolderState::Missing},
              {folder / L"file", FolderState::NotAFolder},
              {folder / L"file\\below", FolderState::Missing},
              {L"Q:\\", FolderState::Missing},
              {L"C:\\" + std::wstring(32'000, L'x'), FolderState::Missing},
              {folder / L"a<b", FolderState::Missing},
              {folder.path(), FolderState::Ready},
              {L"C:\\", FolderState::Ready}};
  for (const auto& row : rows)
    EXPECT_EQ(listFolder(row.path).state, row.state) << row.path.substr(0, 80);
}

TEST(Win32FolderSource, DeepFoldersAreListed) {
  const TempFolder folder;
  std::wstring deep = L"\\\\?\\" + folder.path();
  while (deep.size() < 600) {
    deep += L"\\" + std::wstring(60, L'd');
    ASSERT_TRUE(CreateDirectoryW(deep.c_str(), nullptr));
  }
  put(deep + L"\\a");
  Watching watching;
  watching.source->watch(1, deep.substr(4));
  EXPECT_TRUE(watching.waitFor(1, L"a"));
}

TEST(Win32FolderSource, WatchesComeAndGoWithoutThreadsPilingUp) {
  const TempFolder folder;
  put(folder / L"a");
  Watching watching;
  for (int round = 0; round < 100; ++round) {
    watching.source->watch(1, folder.path());
    watching.source->watch(2, folder / L"none");
    watching.source->unwatch(1);
    watching.source->unwatch(2);
    watching.source->unwatch(99);
  }
  EXPECT_LE(watching.source->threads(), 4U);
  watching.source->watch(1, folder.path());
  EXPECT_TRUE(watching.waitFor(1, L"a")) << "also out of a thread that was ending";
  // More than there are threads for: those that wait get theirs when others go.
  for (int id = 10; id < 110; ++id) watching.source->watch(id, folder.path());
  EXPECT_LE(watching.source->threads(), 64U);
  for (int id = 10; id < 109; ++id) watching.source->unwatch(id);
  EXPECT_TRUE(watching.waitFor(109, L"a"));
}

}  // namespace
}  // namespace varnowick
