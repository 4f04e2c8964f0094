#include "sidebar/commands.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace varnowick {
namespace {

TEST(Commands, KeysReadAsPeopleWriteThem) {
  EXPECT_EQ(keyText(commandRow(Command::mnuNewFolderLink).key), L"Ctrl+K");
  EXPECT_EQ(keyText(commandRow(Command::mnuExitMainWin).key), L"Alt+F4");
  EXPECT_EQ(keyText(commandRow(Command::mnuRSSViewer).key), L"F12");
  EXPECT_EQ(keyText(commandRow(Command::mnuDeleteSelected).key), L"Del");
  EXPECT_EQ(keyText({}), L"");
}

TEST(Commands, MenusShowWhatIsBuiltWithoutEmptyHeadsOrStraySeparators) {
  for (const MenuId menu :
       {MenuId::Main, MenuId::Add, MenuId::Settings, MenuId::Shortcut, MenuId::Container}) {
    const auto shown = shownMenu(menu, {});
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const ShownMenuRow& r = shown[i];
      const bool separator = r.command == Command::None && r.caption.empty();
      const bool lastOfItsMenu = i + 1 == shown.size() || shown[i + 1].depth < r.depth;
      const bool firstOfItsMenu = i == 0 || shown[i - 1].depth < r.depth;
      if (separator) {
        EXPECT_FALSE(lastOfItsMenu || firstOfItsMenu || shown[i + 1].caption.empty()) << i;
      } else if (r.command == Command::None) {
        EXPECT_TRUE(i + 1 < shown.size() && shown[i + 1].depth == r.depth + 1) << i;
      } else {
        EXPECT_TRUE(commandRow(r.command).built);
      }
    }
    for (const MenuRow& r : menuRows(menu)) {
      if (r.command == Command::None || !commandRow(r.command).built) continue;
      EXPECT_TRUE(std::any_of(shown.begin(), shown.end(), [&](const ShownMenuRow& s) {
        return s.command == r.command;
      })) << commandRow(r.command).name;
    }
  }
}

TEST(Commands, CheckItemsFollowTheState) {
  const auto isChecked = [](Command command, const CommandState& state) {
    for (const ShownMenuRow& r : shownMenu(MenuId::Main, state))
      if (r.command == command) return r.checked;
    return false;
  };
  EXPECT_FALSE(isChecked(Command::mnuSuspendSlideOut, {}));
  EXPECT_TRUE(isChecked(Command::mnuSuspendSlideOut, {.suspended = true}));
  EXPECT_TRUE(isChecked(Command::mnuLock, {.locked = true}));
  EXPECT_FALSE(isChecked(Command::mnuLock, {.suspended = true}));
}

TEST(Commands, EveryCommandThatIsBuiltCanBeReached) {
  for (const CommandRow& c : commandRows()) {
    if (!c.built) continue;
    bool reachable = c.key.code != 0;
    for (const MenuId menu : {MenuId::Main, MenuId::Shortcut, MenuId::Container})
      for (const MenuRow& r : menuRows(menu)) reachable = reachable || r.command == c.id;
    EXPECT_TRUE(reachable) << c.name;
  }
}

}  // namespace
}  // namespace varnowick
