#include "containers/folder_operations.h"

#include <gtest/gtest.h>

#include "shortcuts/selection.h"

namespace varnowick {
namespace {

using A = FileAction;
using Paths = std::vector<std::wstring>;

TEST(FolderOperations, KeysAndDrivesDecideWhatADropDoes) {
  const Paths same{L"c:\\x\\a"}, other{L"D:\\a"}, both{L"C:\\a", L"D:\\a"};
  const Paths share{L"\\\\srv\\pub\\a"};
  const struct {
    const char* what;
    const Paths& from;
    const wchar_t* folder;
    TransferWish wish;
    A action;
  } rows[] = {{"same drive", same, L"C:\\f", {}, A::Move},
              {"another drive", other, L"C:\\f", {}, A::Copy},
              {"from both", both, L"C:\\f", {}, A::Copy},
              {"same share", share, L"\\\\SRV\\pub\\f", {}, A::Move},
              {"another share", share, L"\\\\srv\\pub2\\f", {}, A::Copy},
              {"Ctrl", same, L"C:\\f", {.ctrl = true}, A::Copy},
              {"Shift", other, L"C:\\f", {.shift = true}, A::Move},
              {"a link", same, L"C:\\f", {.ctrl = true, .shift = true}, A::None},
              {"a link", same, L"C:\\f", {.alt = true}, A::None},
              {"copy only", same, L"C:\\f", {.moveAllowed = false}, A::Copy},
              {"copy only, Shift", same, L"C:\\f", {.moveAllowed = false, .shift = true}, A::None},
              {"move only, Ctrl", same, L"C:\\f", {.copyAllowed = false, .ctrl = true}, A::None},
              {"nothing", {}, L"C:\\f", {}, A::None}};
  for (const auto& row : rows)
    EXPECT_EQ(transferAction(row.from, row.folder, row.wish), row.action) << row.what;
}

TEST(FolderOperations, TransfersThatWouldHarmAreRefusedWhole) {
  const std::wstring longPath = L"C:\\" + std::wstring(300, L'x');
  const struct {
    const char* what;
    std::wstring from, folder;
  } rows[] = {{"into itself", L"C:\\f", L"C:\\F\\"},
              {"into a descendant", L"C:\\f", L"C:\\f\\g\\h"},
              {"a drive", L"C:\\", L"D:\\f"},
              {"wildcards", L"C:\\x\\*", L"C:\\f"},
              {"a way round", L"C:\\x\\..\\y", L"C:\\f"},
              {"a relative path", L"x.txt", L"C:\\f"},
              {"a stream", L"C:\\x:y", L"C:\\f"},
              {"too long", longPath, L"C:\\f"},
              {"too long a folder", L"C:\\x", longPath},
              {"a dot at the end", L"C:\\x.", L"C:\\f"},
              {"a blank at the end", L"C:\\x ", L"C:\\f"}};
  for (const auto& row : rows)
    for (const A action : {A::Copy, A::Move}) {
      const TransferPlan plan = planTransfer(action, {L"D:\\good", row.from}, row.folder, false);
      EXPECT_FALSE(plan.message.empty()) << row.what;
      EXPECT_TRUE(plan.operations.empty()) << row.what;
    }
  for (const std::size_t length : {259U, 260U})
    EXPECT_EQ(planTransfer(A::Copy, {L"D:\\" + std::wstring(length - 3, L'x')}, L"C:\\f", false)
                  .message.empty(),
              length == 259);
  EXPECT_EQ(planTransfer(A::Copy, {L"D:\\a"}, L"C:\\f", true).message, kLockedMessage);
  EXPECT_TRUE(planTransfer(A::Copy, {L"D:\\a"}, L"C:\\f", true).operations.empty());
  EXPECT_TRUE(planTransfer(A::None, {L"D:\\a"}, L"C:\\f", true).message.empty());
}

TEST(FolderOperations, WhatLiesThereAlreadyStaysOrIsCopiedBesideItself) {
  const Paths from{L"C:\\F\\mine", L"C:\\x\\new"};
  EXPECT_EQ(planTransfer(A::Move, from, L"C:\\f", false).operations,
            (std::vector<FileOperation>{{A::Move, {L"C:\\x\\new"}, L"C:\\f"}}));
  EXPECT_EQ(planTransfer(A::Copy, from, L"C:\\f", false).operations,
            (std::vector<FileOperation>{{A::Copy, {L"C:\\x\\new"}, L"C:\\f"},
                                        {A::Copy, {L"C:\\F\\mine"}, L"C:\\f", true}}));
  const TransferPlan nothing = planTransfer(A::Move, {L"C:\\f\\mine"}, L"C:\\f", false);
  EXPECT_TRUE(nothing.operations.empty());
  EXPECT_TRUE(nothing.message.empty());
  EXPECT_EQ(planTransfer(A::Move, {L"C:\\mine"}, L"C:\\", false).operations.size(), 0U) << "a root";
}

TEST(FolderOperations, NamesThatNoFileCanHave) {
  const wchar_t* bad[] = {L"",     L"a/b",       L"a\\b",   L"a:b",    L"a*",      L"a?",
                          L"a\"",  L"a<b",       L"a|b",    L"a\tb",   L"a\nb",    L".",
                          L"..",   L"a.",        L"a ",     L"CON",    L"nul.txt", L"Com1.a",
                          L"lpt9", L"COM\u00B2", L"AUX .x", L"conout$"};
  for (const wchar_t* name : bad) EXPECT_NE(nameFault(name), L"") << name;
  EXPECT_NE(nameFault(std::wstring(256, L'x')), L"");
  EXPECT_EQ(nameFault(std::wstring(255, L'x')), L"");
  const wchar_t* good[] = {L"a",     L"a & b",        L".hidden", L"console", L"COM0",  L"com10",
                           L"a.con", L"\u00E9\u4E16", L"a  b",    L"LPT",     L"%PATH%"};
  for (const wchar_t* name : good) EXPECT_EQ(nameFault(name), L"") << name;
}

TEST(FolderOperations, Renaming) {
  const std::wstring path = L"C:\\f\\Old.txt";
  EXPECT_EQ(planRename(path, L"  New.txt ", false).operation,
            (FileOperation{A::Rename, {path}, L"C:\\f\\New.txt"}));
  EXPECT_EQ(planRename(path, L"old.txt", false).operation->to, L"C:\\f\\old.txt") << "case alone";
  for (const wchar_t* same : {L"Old.txt", L" Old.txt ", L"", L"   "}) {
    EXPECT_FALSE(planRename(path, same, true).operation) << same;
    EXPECT_EQ(planRename(path, same, true).message, L"") << same;
  }
  EXPECT_EQ(planRename(path, L"x", true).message, kLockedMessage);
  EXPECT_FALSE(planRename(path, L"x", true).operation);
  EXPECT_FALSE(planRename(path, L"..\\x", false).operation);
  EXPECT_FALSE(planRename(L"C:\\", L"x", false).operation);
  const std::wstring deep = L"C:\\" + std::wstring(200, L'd') + L"\\" + std::wstring(200, L'n');
  EXPECT_TRUE(planRename(deep, L"x", false).operation) << "renaming works whatever the length";
}

TEST(FolderOperations, DeletingGoesToTheBinAndAsksWhenWanted) {
  Settings settings;
  settings.confirmDelete = true;
  RecyclePlan plan = planRecycle({L"C:\\f\\a", L"C:\\f\\b"}, settings);
  EXPECT_EQ(plan.operation, (FileOperation{A::Recycle, {L"C:\\f\\a", L"C:\\f\\b"}}));
  EXPECT_EQ(plan.question.find(kDeleteSelectedQuestion), 0U);
  EXPECT_NE(plan.question.find(L"To the Recycle Bin: "), std::wstring::npos);
  settings.confirmDelete = false;
  EXPECT_EQ(planRecycle({L"C:\\f\\a"}, settings).question, L"");
  EXPECT_FALSE(planRecycle({}, settings).operation);
  for (const wchar_t* path : {L"C:\\", L"C:\\f\\*.*", L"a", L"C:\\f\\a.", L"C:\\f\\..\\x"}) {
    plan = planRecycle({L"C:\\f\\a", path}, settings);
    EXPECT_FALSE(plan.operation) << path;
    EXPECT_NE(plan.message, L"") << path;
  }
  settings.locked = true;
  EXPECT_EQ(planRecycle({L"C:\\f\\a"}, settings).message, kLockedMessage);
}

TEST(FolderOperations, FailuresAreTold) {
  EXPECT_EQ(failureMessage({{A::Rename, {L"C:\\f\\a"}, L"C:\\f\\b"}, false, L"Access is denied."}),
            L"\"a\" cannot be renamed.\r\n\r\nAccess is denied.");
  EXPECT_EQ(failureMessage({{A::Recycle, {L"C:\\a", L"C:\\b"}}, false, L"No."}),
            L"Not all files could be deleted.\r\n\r\nNo.");
  EXPECT_EQ(failureMessage({{A::Copy, {L"C:\\a"}, L"D:\\"}, true, L"Cancelled"}), L"");
  EXPECT_EQ(failureMessage({{A::Copy, {L"C:\\a"}, L"D:\\"}}), L"");
}

}  // namespace
}  // namespace varnowick
