#include "grid/columns/column_mask.h"

#include <gtest/gtest.h>

#include <limits>

using lorv::ColumnMask;

TEST(ColumnMask, HeaderExample) {
  ColumnMask mask;
  mask.Set(33, true);
  EXPECT_TRUE(mask.Has(1));
  mask.SetAll(true);
  EXPECT_FALSE(mask.Has(31));
}

TEST(ColumnMask, EveryThirtySecondColumnHasNoSwitch) {
  ColumnMask mask;
  mask.SetAll(true);
  for (int column = 0; column < 200; ++column) EXPECT_EQ(mask.Has(column), column % 32 != 31) << column;
  for (const int column : {31, 63, 95}) {
    mask.SetAll(false);
    mask.Set(column, true);
    for (int other = 0; other < 200; ++other) EXPECT_FALSE(mask.Has(other)) << column << " and " << other;
  }
}

TEST(ColumnMask, OneSwitchForColumnsThirtyTwoApart) {
  ColumnMask mask;
  mask.Set(5, true);
  mask.Set(6, true);
  mask.Set(37, false);
  EXPECT_FALSE(mask.Has(5));
  EXPECT_TRUE(mask.Has(6));
  EXPECT_TRUE(mask.Has(70));
}

TEST(ColumnMask, NegativeColumnsHaveNone) {
  ColumnMask mask;
  mask.SetAll(true);
  mask.Set(-1, false);
  EXPECT_FALSE(mask.Has(-1));
  EXPECT_FALSE(mask.Has(std::numeric_limits<int>::min()));
  EXPECT_TRUE(mask.Has(0));
  EXPECT_TRUE(mask.Has(30));
}

TEST(ColumnMask, SwitchesGoWithAMovedColumn) {
  ColumnMask mask;
  mask.Set(1, true);
  mask.Set(4, true);
  mask.Move(1, 5);
  for (int column = 0; column < 31; ++column)
    EXPECT_EQ(mask.Has(column), column == 3 || column == 5) << column;
  // From a column that shares the switch of column 3.
  mask.Move(35, 0);
  for (int column = 0; column < 31; ++column)
    EXPECT_EQ(mask.Has(column), column == 0 || column == 4 || column == 6) << column;
}
