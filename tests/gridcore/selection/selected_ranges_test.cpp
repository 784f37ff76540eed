#include "gridcore/selection/selected_ranges.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

#include "tests/support/whole_number_limits.h"

namespace {

using lorv::LineSpan;
using lorv::SelectedRanges;
using Range = CBCGPGridRange;
using Cell = CBCGPGridItemID;
using Spans = std::vector<LineSpan>;

// A table of marks, the plainest selection there is.
class Marks {
 public:
  static constexpr int kSide = 12;

  void Set(const Range& range, bool on) {
    for (int row = 0; row < kSide; ++row)
      for (int column = 0; column < kSide; ++column)
        if (range.IsInRange(Cell(row, column))) marks_[row][column] = on;
  }
  bool Holds(const Cell& cell) const { return marks_[cell.m_nRow][cell.m_nColumn]; }
  int Count() const {
    int count = 0;
    for (const auto& row : marks_)
      for (const bool mark : row) count += mark ? 1 : 0;
    return count;
  }

 private:
  bool marks_[kSide][kSide] = {};
};

Range RandomRange(std::mt19937& random) {
  const auto line = [&] { return static_cast<int>(random() % Marks::kSide); };
  return {Cell(line(), line()), Cell(line(), line())};
}

}  // namespace

TEST(SelectedRanges, HeaderExample) {
  SelectedRanges selection;
  selection.Add({0, 0, 2, 2});
  selection.Remove({1, 1, 1, 1});
  EXPECT_EQ(selection.CellCount(), 8);
  EXPECT_FALSE(selection.Holds({1, 1}));
}

TEST(SelectedRanges, TheLastRangeStaysWhole) {
  SelectedRanges selection;
  selection.Add({0, 0, 4, 4});
  selection.Add({3, 3, 6, 6});
  EXPECT_EQ(selection.Ranges().back(), Range(3, 3, 6, 6));
  EXPECT_EQ(selection.CellCount(), 25 + 16 - 4);
  selection.Add({0, 0, 9, 9});
  EXPECT_EQ(selection.Ranges().size(), 1U);
}

TEST(SelectedRanges, InvalidRangesAreIgnored) {
  SelectedRanges selection;
  selection.Add({});
  selection.Add({3, 3, 1, 1});
  EXPECT_TRUE(selection.IsEmpty());
  selection.Add({0, 0, 1, 1});
  selection.Remove({});
  selection.Remove({-1, -1, 5, 5});
  EXPECT_EQ(selection.CellCount(), 4);
  EXPECT_FALSE(selection.HoldsAll({}));
}

TEST(SelectedRanges, RowsAndColumnsAscendWithoutRepeats) {
  SelectedRanges selection;
  selection.Add({0, 5, 3, 5});
  selection.Add({0, 2, 3, 2});
  selection.Add({0, 2, 3, 2});
  EXPECT_EQ(selection.Rows(), (Spans{{2, 2}, {5, 5}}));
  EXPECT_EQ(selection.Columns(), (Spans{{0, 3}}));
}

TEST(SelectedRanges, HoldsAllAcrossRanges) {
  SelectedRanges selection;
  selection.Add({0, 0, 1, 9});
  selection.Add({2, 0, 3, 9});
  EXPECT_TRUE(selection.HoldsAll({0, 4, 3, 4}));
  EXPECT_FALSE(selection.HoldsAll({0, 4, 4, 4}));
}

TEST(SelectedRanges, ChosenCellsGoWithTheirLines) {
  SelectedRanges selection;
  selection.Add({1, 3, 2, 4});
  selection.InsertRows(0, 10);
  selection.InsertColumns(2, 1);
  EXPECT_EQ(selection.Ranges().front(), Range(1, 13, 3, 14));
  selection.RemoveRows(14, 5);
  selection.RemoveColumns(0, 1);
  EXPECT_EQ(selection.Ranges().front(), Range(0, 13, 2, 13));
  selection.RemoveRows(13, 1);
  EXPECT_TRUE(selection.IsEmpty());
}

TEST(SelectedRanges, WholeTableOfTheLargestSize) {
  SelectedRanges selection;
  selection.Add({0, 0, kMost, kMost});
  selection.Remove({kMost, kMost, kMost, kMost});
  EXPECT_EQ(selection.CellCount(), (std::int64_t{1} << 62) - 1);
  selection.InsertRows(5, 3);
  EXPECT_TRUE(selection.Holds({kMost, 0}));
}

TEST(SelectedRanges, AnyChoicesGiveWhatMarksGive) {
  for (unsigned seed = 1; seed <= 50; ++seed) {
    std::mt19937 random(seed);
    SelectedRanges selection;
    Marks marks;
    for (int step = 0; step < 60; ++step) {
      const Range range = RandomRange(random);
      const bool add = random() % 3 != 0;
      if (add)
        selection.Add(range);
      else
        selection.Remove(range);
      marks.Set(range, add);
      ASSERT_EQ(selection.CellCount(), marks.Count()) << "seed " << seed << ", step " << step;
      if (add) {
        ASSERT_EQ(selection.Ranges().back(), range);
      }
      for (int row = 0; row < Marks::kSide; ++row)
        for (int column = 0; column < Marks::kSide; ++column)
          ASSERT_EQ(selection.Holds({row, column}), marks.Holds({row, column})) << "seed " << seed;
    }
  }
}
