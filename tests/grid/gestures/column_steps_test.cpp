#include "grid/gestures/column_steps.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/grid/gestures/columns.h"
#include "tests/support/whole_number_limits.h"

namespace {

using lorv::HiddenColumns;
using lorv::ShownColumnAt;
using lorv_test::Columns;

}  // namespace

TEST(ColumnSteps, HeaderExamples) {
  EXPECT_EQ(HiddenColumns(Columns(4, {1}), 3, 0), 1);
  EXPECT_EQ(ShownColumnAt(Columns(4, {1}), 0, 1), 2);
  EXPECT_EQ(ShownColumnAt(Columns(4, {1}), 0, 3), -1);
}

TEST(ColumnSteps, HiddenColumnsAreCountedWithBothEnds) {
  const auto view = Columns(6, {1, 4});
  EXPECT_EQ(HiddenColumns(view, 1, 4), 2);
  EXPECT_EQ(HiddenColumns(view, 4, 1), 2);
  EXPECT_EQ(HiddenColumns(view, 2, 3), 0);
  EXPECT_EQ(HiddenColumns(view, 1, 1), 1);
}

TEST(ColumnSteps, NegativeColumnsCountNothing) {
  const auto view = Columns(6, {0, 1});
  EXPECT_EQ(HiddenColumns(view, -1, 5), 0);
  EXPECT_EQ(HiddenColumns(view, 5, kLeast), 0);
}

TEST(ColumnSteps, ColumnsBehindTheLastCountAsTheLast) {
  EXPECT_EQ(HiddenColumns(Columns(3, {2}), 0, kMost), 1);
  EXPECT_EQ(HiddenColumns(Columns(3, {2}), kMost, kMost), 0);
}

TEST(ColumnSteps, StepsPassOverHiddenColumnsOnBothSides) {
  const auto view = Columns(8, {2, 3, 5});
  EXPECT_EQ(ShownColumnAt(view, 1, 1), 4);
  EXPECT_EQ(ShownColumnAt(view, 1, 2), 6);
  EXPECT_EQ(ShownColumnAt(view, 6, -1), 4);
  EXPECT_EQ(ShownColumnAt(view, 6, -2), 1);
  EXPECT_EQ(ShownColumnAt(view, 6, 0), 6);
}

TEST(ColumnSteps, ColumnsOutsideTheTableGiveNone) {
  const auto view = Columns(3, {});
  EXPECT_EQ(ShownColumnAt(view, 2, 1), -1);
  EXPECT_EQ(ShownColumnAt(view, 0, -1), -1);
  EXPECT_EQ(ShownColumnAt(view, 0, kMost), -1);
  EXPECT_EQ(ShownColumnAt(view, 0, kLeast), -1);
  EXPECT_EQ(ShownColumnAt(view, kMost, kMost), -1);
  EXPECT_EQ(ShownColumnAt(Columns(0, {}), 0, 1), -1);
}

TEST(ColumnSteps, TheEstimateIsAskedBeforeTheWalk) {
  // Two columns to the left of column 3: one of the four is hidden, so the estimate is column 0, which is
  // right.
  EXPECT_EQ(ShownColumnAt(Columns(4, {2}), 3, -2), 0);
  // One column to the left: the estimate counts column 2 alone, the walk passes over column 1 as well.
  EXPECT_EQ(ShownColumnAt(Columns(4, {1, 2}), 3, -1), 0);
  // One column to the right of column 0, if there were one: the estimate lies outside, so nothing is walked.
  EXPECT_EQ(ShownColumnAt(Columns(3, {1, 2}), 0, 2), -1);
}

TEST(ColumnSteps, WalksStopAtTheLimitEvenOnAHiddenColumn) {
  std::set<int> hidden;
  for (int column = 1; column < 150; ++column) hidden.insert(column);
  EXPECT_EQ(ShownColumnAt(Columns(200, hidden), 0, 1), lorv::kHiddenWalkLimit);
}
