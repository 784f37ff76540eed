#include "gridcore/cell_range.h"

#include <gtest/gtest.h>

#include "tests/support/whole_number_limits.h"

namespace {

using Range = CBCGPGridRange;
using Cell = CBCGPGridItemID;

}  // namespace

TEST(CellRange, HeaderExamples) {
  EXPECT_TRUE(Cell().IsNull());
  EXPECT_FALSE(Cell(2, 0).IsNull());
  EXPECT_EQ(Range(0, 0, 1, 2).CellCount(), 6);
}

TEST(CellRange, NullIdHasBothNumbersMissing) {
  EXPECT_FALSE(Cell(-1, 0).IsNull());
  EXPECT_FALSE(Cell(0, -1).IsNull());
  Cell cell(4, 5);
  cell.SetNull();
  EXPECT_EQ(cell, Cell());
}

TEST(CellRange, InvalidRangesHoldAndMeetNothing) {
  for (const Range& bad :
       {Range(), Range(1, 0, 0, 0), Range(0, 1, 0, 0), Range(-1, 0, 5, 5), Range(0, -3, 5, 5)}) {
    EXPECT_FALSE(bad.IsValid());
    EXPECT_FALSE(bad.IsSingle());
    EXPECT_EQ(bad.CellCount(), 0);
    EXPECT_FALSE(bad.IsInRange(Cell(0, 0)));
    EXPECT_FALSE(bad.Meets(Range(0, 0, 9, 9)));
    EXPECT_FALSE(bad.IsInside(Range(0, 0, 9, 9)));
    EXPECT_FALSE(Range(0, 0, 9, 9).IsInside(bad));
    EXPECT_EQ(bad.JoinWith(Range(1, 2, 3, 4)), Range(1, 2, 3, 4));
    EXPECT_EQ(Range(1, 2, 3, 4).JoinWith(bad), Range(1, 2, 3, 4));
  }
}

TEST(CellRange, EdgesLieWithin) {
  const Range range(1, 2, 3, 4);
  EXPECT_TRUE(range.IsInRange(Cell(2, 1)));
  EXPECT_TRUE(range.IsInRange(Cell(4, 3)));
  EXPECT_FALSE(range.IsInRange(Cell(1, 1)));
  EXPECT_FALSE(range.IsInRange(Cell(2, 4)));
  EXPECT_FALSE(range.IsInRange(Cell()));
}

TEST(CellRange, CornersComeInAnyOrder) {
  EXPECT_EQ(Range(Cell(7, 1), Cell(2, 5)), Range(1, 2, 5, 7));
  EXPECT_EQ(Range(Cell(2, 5)), Range(5, 2, 5, 2));
  EXPECT_TRUE(Range(Cell(2, 5)).IsSingle());
}

TEST(CellRange, CutAndJoin) {
  const Range a(0, 0, 3, 3);
  const Range b(2, 3, 5, 9);
  EXPECT_EQ(a.CutWith(b), Range(2, 3, 3, 3));
  EXPECT_EQ(a.JoinWith(b), Range(0, 0, 5, 9));
  EXPECT_EQ(a.CutWith(Range(4, 0, 5, 3)), Range());
  EXPECT_TRUE(Range(1, 1, 2, 2).IsInside(a));
  EXPECT_FALSE(b.IsInside(a));
}

TEST(CellRange, CountsCellsBeyond32Bits) {
  EXPECT_EQ(Range(0, 0, kMost, kMost).CellCount(), std::int64_t{1} << 62);
  EXPECT_EQ(Range(0, 0, kMost, 1).CellCount(), std::int64_t{1} << 32);
}
