#include "containers/folder_sight.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(FolderSight, WhatIsOutOfSightIsLetGoAfterAWhileAndAtOnceWhenFolded) {
  const struct {
    std::uint64_t after;
    Sight sight;
    bool watched;
  } rows[] = {{0, Sight::Hidden, false},      {100, Sight::Seen, true},
              {9'000, Sight::Hidden, true},   {500, Sight::Seen, true},
              {9'999, Sight::Hidden, true},   {1, Sight::Hidden, false},
              {60'000, Sight::Hidden, false}, {1, Sight::Seen, true},
              {1, Sight::None, false},        {1, Sight::Hidden, false}};
  FolderSight sight;
  std::uint64_t now = 5;
  for (const auto& row : rows)
    EXPECT_EQ(sight.watch(row.sight, now += row.after), row.watched) << &row - rows;
}

}  // namespace
}  // namespace varnowick
