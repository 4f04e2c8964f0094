#include "containers/detached_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/fakes/fake_msg_box.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum DetachedItem;

// The captions, a separator as "-", deeper rows indented, check marks as "*",
// disabled rows in brackets.
std::vector<std::wstring> menuOf(const clsContainer& c, const DetachedMenuState& state) {
  std::vector<std::wstring> rows;
  for (const ShownDetachedRow& row : shownDetachedMenu(c, state)) {
    std::wstring text = row.caption.empty() ? L"-" : row.caption;
    if (row.checked) text += L"*";
    if (!row.enabled) text = L"[" + text + L"]";
    rows.push_back(std::wstring(static_cast<std::size_t>(row.depth), L' ') + text);
  }
  return rows;
}

TEST(DetachedMenu, ShowsTheRecordsFlags) {
  clsContainer c;
  c.DetachedUseTab = c.DetachedAutoHide = true;
  c.DetachedTabDockedWhere = 2;
  EXPECT_THAT(
      menuOf(c, {}),
      ElementsAre(L"[Sta&rt selected]", L"&Tag start", L"Show and Hide", L" Use &Tab*",
                  L" &Toggle both", L" Auto &show", L" Auto &hide*", L" Enable &fade-out",
                  L" &Hide on click", L"-", L"Hide no&w", L"Tab ed&ge", L" &Left", L" &Right*",
                  L" &Top", L" &Bottom", L"&Attach to Workspace", L"-", L"Close && &Delete"));
  EXPECT_EQ(menuOf(c, {.locked = true}).back(), L"[Close && &Delete]");
  c.DetachedUseTab = false;
  const std::vector<std::wstring> tabs = menuOf(c, {.shortcutSelected = true, .shown = false});
  EXPECT_EQ(tabs.front(), L"Sta&rt selected");
  EXPECT_THAT(std::vector(tabs.begin() + 10, tabs.end()),
              ElementsAre(L"&Attach to Workspace", L"-", L"Close && &Delete"));
}

TEST(DetachedMenu, EveryItemButTheHeadsAndActionsChangesTheRecord) {
  FakeMsgBox msgBox;
  Settings settings;
  for (const DetachedMenuRow& row : detachedMenuRows()) {
    if (row.checked == nullptr) continue;
    SCOPED_TRACE(testing::Message() << static_cast<int>(row.item));
    clsContainer c;
    EXPECT_EQ(changeDetached(row.item, c, settings, msgBox), DetachedChange::Record);
    EXPECT_TRUE(c.*row.checked);
    changeDetached(row.item, c, settings, msgBox);
    EXPECT_FALSE(c.*row.checked);
  }
  clsContainer c;
  c.detachedLabelRect = {{10}, {20}, {30}, {40}};
  EXPECT_EQ(changeDetached(mnuTabTop, c, settings, msgBox), DetachedChange::Record);
  EXPECT_EQ(c.DetachedTabDockedWhere, 3);
  EXPECT_EQ(c.detachedLabelRect, TwipsRect{});
  for (const DetachedItem item : {None, mnuAttach, mnuShowAndHide, mnuTabEdge, mnuCloseAndDelete})
    EXPECT_EQ(changeDetached(item, c, settings, msgBox), DetachedChange::None);
  EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST(DetachedMenu, ToggleBothGoesByAutoHide) {
  FakeMsgBox msgBox;
  Settings settings;
  for (const bool hide : {false, true})
    for (const bool show : {false, true}) {
      clsContainer c;
      c.DetachedAutoHide = hide;
      c.DetachedAutoShow = show;
      changeDetached(mnuToggleAutoShowHide, c, settings, msgBox);
      EXPECT_TRUE(c.DetachedAutoHide == !hide && c.DetachedAutoShow == !hide);
    }
}

TEST(DetachedMenu, WhatIsAskedIsDoneOnlyAfterAYes) {
  using Shown = FakeMsgBox::Shown;
  for (const MsgAnswer answer : {kMsgAnswerYes, kMsgAnswerNo, MsgAnswer::None}) {
    const bool yes = answer == kMsgAnswerYes;
    FakeMsgBox msgBox;
    msgBox.answers = {answer, answer};
    Settings settings;
    settings.animate = false;
    clsContainer c;
    EXPECT_EQ(changeDetached(mnuEnableFadeOut, c, settings, msgBox),
              yes ? DetachedChange::Settings : DetachedChange::None);
    EXPECT_EQ(c.DetachedFadeOut, yes);
    EXPECT_EQ(confirmCloseAndDelete(settings, msgBox), yes);
    EXPECT_THAT(
        msgBox.shown,
        ElementsAre(Shown{L"Do you want to enable special effects?", kMsgYesNo | kMsgQuestion,
                          kProgramTitle},
                    Shown{L"Close detached container and delete it from the workspace?",
                          kMsgYesNo | kMsgExclamation | kMsgSystemModal, L"Close & Delete"}));
  }
  FakeMsgBox msgBox;
  Settings settings;
  settings.animate = settings.confirmDelete = false;
  clsContainer c;
  c.DetachedFadeOut = true;
  changeDetached(mnuEnableFadeOut, c, settings, msgBox);
  EXPECT_FALSE(c.DetachedFadeOut);
  EXPECT_FALSE(confirmCloseAndDelete(settings, msgBox));
  EXPECT_THAT(msgBox.shown, IsEmpty()) << "neither unchecking nor the setting asks";
}

TEST(DetachedMenu, DetachTakesTheContainersAndRefusesPictures) {
  Workspace w;
  const ContainerSlot a = w.containers.add({});
  const ContainerSlot detached = w.containers.add({});
  w.containers[detached].Detached = true;
  const ContainerSlot b = w.containers.add({});
  const PictureSlot picture = w.pictures.add({});
  const ShortcutSlot shortcut = w.shortcuts.add({});
  Selection selection;
  EXPECT_THAT(detachable(w, selection).containers, IsEmpty());
  for (const ObjectId id : {ObjectId(shortcut), ObjectId(b), ObjectId(detached), ObjectId(a),
                            ObjectId(ContainerSlot{77})})
    selection.select(id);
  EXPECT_THAT(detachable(w, selection).containers, ElementsAre(a, b));
  EXPECT_EQ(detachable(w, selection).refusal, nullptr);
  selection.select(picture);
  EXPECT_THAT(detachable(w, selection).containers, ElementsAre(a, b));
  EXPECT_STREQ(detachable(w, selection).refusal,
               L"The option to detach picture containers is currently not available");
}

TEST(DetachedMenu, TheNoteStaysInSightAndCanBeHiddenForGood) {
  clsContainer c;
  c.noteVisible = true;
  markDetached(c);
  EXPECT_TRUE(c.Detached && c.Detached_Note_Visible);
  c.Detached_Note_Visible = false;
  markDetached(c);
  EXPECT_FALSE(c.Detached_Note_Visible || c.noteVisible) << "the other flag would be saved as on";
  c.Detached_Note_Visible = true;
  markAttached(c);
  EXPECT_TRUE(c.noteVisible);
  EXPECT_FALSE(c.Detached || c.Detached_Note_Visible);
}

}  // namespace
}  // namespace varnowick
