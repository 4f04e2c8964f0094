#include "platform/win32/instance_guard.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace varnowick {
namespace {

TEST(InstanceGuard, SpellingsOfAFolderAreOneFolder) {
  const TempFolder folder;
  const std::wstring name = instanceName(folder.path());
  std::wstring upper = folder.path();
  CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
  wchar_t shortForm[MAX_PATH + 1] = {};
  GetShortPathNameW(folder.path().c_str(), shortForm, MAX_PATH);
  for (const std::wstring& spelling :
       {upper, folder.path() + L"\\", folder / L"x\\..", folder / L".", std::wstring(shortForm)}) {
    EXPECT_EQ(instanceName(spelling), name);
  }
  EXPECT_NE(instanceName(folder / L"x"), name);
  EXPECT_EQ(name.find_first_of(L"\\/"), std::wstring::npos);

  // The data folder is made after the first guard: its name must stay the same.
  const std::wstring later = folder / L"Made Later Than The Guard";
  const std::wstring before = instanceName(later);
  CreateDirectoryW(later.c_str(), nullptr);
  EXPECT_EQ(instanceName(later), before);
}

}  // namespace
}  // namespace varnowick
