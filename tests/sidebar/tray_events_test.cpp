#include "sidebar/tray_events.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnowick {
namespace {

TEST(TrayEvents, EveryActionCountsOnce) {
  using Actions = std::vector<TrayAction>;
  struct Row {
    const char* what;
    bool version3;
    std::vector<unsigned> events;
    Actions expected;
  };
  constexpr TrayAction kClick = TrayAction::Click, kAtCursor = TrayAction::MenuAtCursor,
                       kAtIcon = TrayAction::MenuAtIcon, kGone = TrayAction::BalloonGone;
  const Row rows[] = {
      {"click", true, {0x200, 0x201, 0x202, 0x400}, {kClick}},
      {"click, old shell", false, {0x201, 0x202}, {kClick}},
      {"two", true, {0x201, 0x202, 0x400, 0x203, 0x202, 0x201, 0x202, 0x400}, {kClick, kClick}},
      {"double click", true, {0x201, 0x202, 0x400, 0x203, 0x202, 0x400}, {kClick}},
      {"double click, old shell", false, {0x201, 0x202, 0x203, 0x202}, {kClick}},
      {"Enter, sent twice", true, {0x401, 0x401}, {kClick}},
      {"right click, then menu key", true, {0x204, 0x205, 0x7B, 0x7B}, {kAtCursor, kAtIcon}},
      {"right click, old shell", false, {0x204, 0x205, 0x7B}, {kAtCursor}},
      {"let go elsewhere", true, {0x205, 0x204, 0x7B}, {kAtIcon}},
      {"balloon", true, {0x402, 0x405}, {TrayAction::BalloonClick}},
      {"balloon closed", true, {0x402, 0x404, 0x403}, {kGone, kGone}},
  };
  for (const Row& row : rows) {
    TrayEvents events;
    events.setVersion3(row.version3);
    Actions got;
    for (const unsigned event : row.events)
      if (const TrayAction action = events.decide(event, 1000); action != TrayAction::None)
        got.push_back(action);
    EXPECT_EQ(got, row.expected) << row.what;
  }
}

TEST(TrayEvents, EnterAgainLaterIsAnotherClick) {
  TrayEvents events;
  EXPECT_EQ(events.decide(0x401, 0xFFFFFFF0U), TrayAction::Click);
  EXPECT_EQ(events.decide(0x401, 0x00000010U), TrayAction::None) << "the clock has wrapped round";
  EXPECT_EQ(events.decide(0x401, 0x00002000U), TrayAction::Click);
}

}  // namespace
}  // namespace varnowick
