#include "ui/scene/list_model.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(ListModel, RowsOfDifferentHeightsScrollWholeAndTallOnesInParts) {
  ListModel list;
  list.replace(5, {});
  list.setRoom(500_tw, 100_tw);
  EXPECT_FALSE(list.scrolls());
  list.setHeights({100_tw, 900_tw, 100_tw, 300_tw, 100_tw});
  EXPECT_EQ(list.bottom(), 2);
  EXPECT_TRUE(list.scrollBy(1));
  EXPECT_EQ(list.offsetOf(1), 0_tw);
  EXPECT_TRUE(list.scrollBy(1));
  EXPECT_EQ(list.offsetOf(1), Twips{-400}) << "a part of what is higher than the list";
  EXPECT_EQ(list.rowAt(499_tw), 1);
  EXPECT_TRUE(list.scrollBy(1));
  EXPECT_EQ(list.offsetOf(2), 0_tw);
  EXPECT_FALSE(list.scrollBy(1)) << "the end";
  EXPECT_EQ(list.rowAt(150_tw), 3);
  list.scrollBy(-1);
  EXPECT_EQ(list.offsetOf(2), 400_tw) << "and back through it";
  list.show(0);
  EXPECT_EQ(list.top(), 0);

  // Measured anew, what stood at the edge stands there.
  list.scrollBy(1);
  list.setHeights({200_tw, 900_tw, 100_tw, 300_tw, 100_tw});
  EXPECT_EQ(list.offsetOf(1), 0_tw);
  list.setHeights({100_tw});
  EXPECT_EQ(list.heightOf(0), 200_tw) << "of another number of rows";
  list.move(ListMove::Home, {});
  list.move(ListMove::PageDown, {});
  EXPECT_EQ(list.current(), 1) << "always on";
  list.move(ListMove::End, {});
  list.move(ListMove::PageUp, {});
  EXPECT_EQ(list.current(), 2);
}

}  // namespace
}  // namespace varnowick
