#include "ui/commands/commands.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace varnowick {
namespace {

TEST(ShownMenu, HoldsWhatIsBuiltAndNoEmptySubmenu) {
  for (const MenuId menu :
       {MenuId::Main, MenuId::Add, MenuId::Settings, MenuId::Shortcut, MenuId::Container}) {
    std::vector<Command> built, shown;
    for (const MenuRow& row : menuRows(menu))
      if (row.command != Command::None && commandRow(row.command).built)
        built.push_back(row.command);
    const std::vector<ShownMenuRow> rows = shownMenu(menu, {});
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].command != Command::None) shown.push_back(rows[i].command);
      const bool head = rows[i].command == Command::None && !rows[i].caption.empty();
      const bool opens = i + 1 < rows.size() && rows[i + 1].depth == rows[i].depth + 1;
      EXPECT_EQ(head, opens) << rows[i].caption.c_str();
    }
    EXPECT_EQ(shown, built);
    EXPECT_EQ(rows.front().depth, 0);
  }
}

}  // namespace
}  // namespace varnowick
