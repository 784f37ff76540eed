#include "gridcore/table/merged_cells.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using lorv::MergedCells;
using Range = CBCGPGridRange;
using Ranges = std::vector<CBCGPGridRange>;
using Cell = CBCGPGridItemID;

Ranges PlainMeeting(const Ranges& blocks, const Range& range) {
  Ranges found;
  for (const Range& block : blocks)
    if (block.Meets(range)) found.push_back(block);
  return found;
}

}  // namespace

TEST(MergedCells, HeaderExample) {
  MergedCells merged;
  merged.Add({0, 0, 1, 1});
  EXPECT_EQ(merged.BlockAt({1, 1}), Range(0, 0, 1, 1));
}

TEST(MergedCells, RefusesSingleCellsAndWhatMeets) {
  MergedCells merged;
  EXPECT_FALSE(merged.Add({2, 2, 2, 2}));
  EXPECT_FALSE(merged.Add({}));
  EXPECT_TRUE(merged.Add({2, 2, 3, 2}));
  EXPECT_FALSE(merged.Add({3, 0, 3, 5}));
  EXPECT_FALSE(merged.Add({2, 2, 3, 2}));
  EXPECT_TRUE(merged.Add({4, 2, 5, 2}));
  EXPECT_EQ(merged.Blocks().size(), 2U);
}

TEST(MergedCells, CellsOutsideHaveNoBlock) {
  MergedCells merged;
  merged.Add({1, 1, 2, 5});
  EXPECT_EQ(merged.BlockAt({0, 1}), Range());
  EXPECT_EQ(merged.BlockAt({6, 1}), Range());
  EXPECT_EQ(merged.BlockAt({3, 3}), Range());
  EXPECT_EQ(merged.BlockAt({-1, -1}), Range());
}

TEST(MergedCells, RemovedByAnyOfItsCells) {
  MergedCells merged;
  merged.Add({1, 1, 2, 5});
  EXPECT_FALSE(merged.RemoveAt({0, 0}));
  EXPECT_TRUE(merged.RemoveAt({5, 2}));
  EXPECT_TRUE(merged.IsEmpty());
  EXPECT_EQ(merged.BlockAt({1, 1}), Range());
}

TEST(MergedCells, BlocksGrowAndShrinkWithTheirLines) {
  MergedCells merged;
  merged.Add({1, 1, 2, 3});
  merged.InsertRows(2, 4);
  EXPECT_EQ(merged.Blocks().front(), Range(1, 1, 2, 7));
  merged.InsertRows(1, 1);
  EXPECT_EQ(merged.Blocks().front(), Range(1, 2, 2, 8));
  merged.RemoveColumns(1, 1);
  EXPECT_EQ(merged.Blocks().front(), Range(1, 2, 1, 8));
  merged.RemoveRows(2, 6);
  EXPECT_TRUE(merged.IsEmpty()) << "one cell is no block";
}

TEST(MergedCells, OrderHoldsWhenFirstLinesGo) {
  MergedCells merged;
  merged.Add({5, 0, 6, 4});
  merged.Add({0, 1, 1, 4});
  merged.RemoveRows(0, 2);
  EXPECT_EQ(merged.Blocks(), (Ranges{{0, 0, 1, 2}, {5, 0, 6, 2}}));
  EXPECT_EQ(merged.BlockAt({2, 6}), Range(5, 0, 6, 2));
}

TEST(MergedCells, AnyChangesGiveWhatAPlainListGives) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::mt19937 random(seed);
    const auto line = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
    MergedCells merged;
    for (int step = 0; step < 200; ++step) {
      const int row = line(60);
      const int column = line(12);
      const Range range(column, row, column + line(3), row + (random() % 9 == 0 ? line(40) : line(3)));
      const bool meets = !PlainMeeting(merged.Blocks(), range).empty();
      switch (random() % 6) {
        case 0:
          merged.InsertRows(row, line(3));
          break;
        case 1:
          merged.RemoveRows(row, line(3));
          break;
        default:
          EXPECT_EQ(merged.Add(range), !meets && range.CellCount() > 1);
      }
      EXPECT_EQ(merged.BlocksMeeting(range), PlainMeeting(merged.Blocks(), range)) << "seed " << seed;
      for (const Range& block : merged.Blocks()) {
        EXPECT_GT(block.CellCount(), 1);
        EXPECT_EQ(PlainMeeting(merged.Blocks(), block).size(), 1U) << "blocks meet, seed " << seed;
      }
    }
  }
}
