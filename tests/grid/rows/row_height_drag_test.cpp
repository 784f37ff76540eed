#include "grid/rows/row_height_drag.h"

#include <gtest/gtest.h>

#include "tests/support/whole_number_limits.h"

using lorv::DividedRow;
using lorv::DraggedRowHeight;

namespace {

const CRect kSecond(0, 20, 30, 40);

}  // namespace

TEST(RowHeightDrag, HeaderExamples) {
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 39}), 1);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 21}), 0);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 30}), -1);
  EXPECT_EQ(DraggedRowHeight(20, 40, 55), 35);
  EXPECT_EQ(DraggedRowHeight(20, 40, 5), 18);
}

TEST(RowHeightDrag, DividersReachTwoPixelsIn) {
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 20}), 0);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 22}), -1);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 37}), -1);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 38}), 1);
}

TEST(RowHeightDrag, AboveTheFirstRowIsNoDivider) {
  const CRect first(0, 0, 30, 20);
  EXPECT_EQ(DividedRow(first, 0, {5, 1}), -1);
  EXPECT_EQ(DividedRow(first, 0, {5, 19}), 0);
}

TEST(RowHeightDrag, PointsOutsideTheCellAreOnNone) {
  EXPECT_EQ(DividedRow(kSecond, 1, {30, 39}), -1);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 40}), -1);
  EXPECT_EQ(DividedRow(kSecond, 1, {5, 19}), -1);
}

TEST(RowHeightDrag, RowsTooLowForAMiddleAreDividersAllOver) {
  const CRect low(0, 20, 30, 23);
  EXPECT_EQ(DividedRow(low, 4, {5, 20}), 3);
  EXPECT_EQ(DividedRow(low, 4, {5, 21}), 4);
  EXPECT_EQ(DividedRow(low, 4, {5, 22}), 4);
}

TEST(RowHeightDrag, NoRowGetsLowerThanTheLeast) {
  EXPECT_EQ(DraggedRowHeight(20, 40, 38), 18);
  EXPECT_EQ(DraggedRowHeight(20, 40, 37), 18);
  EXPECT_EQ(DraggedRowHeight(20, 40, 39), 19);
  EXPECT_EQ(DraggedRowHeight(10, 40, 40), 18) << "a lower height is raised";
  EXPECT_EQ(DraggedRowHeight(0, 40, 45), 18) << "the way is added first";
  EXPECT_EQ(DraggedRowHeight(10, 40, 60), 30);
}

TEST(RowHeightDrag, AMouseAboveTheGridChangesNothing) {
  EXPECT_EQ(DraggedRowHeight(20, 40, 0), 20);
  EXPECT_EQ(DraggedRowHeight(5, 40, -7), 5);
  EXPECT_EQ(DraggedRowHeight(20, 40, 1), 18);
}

TEST(RowHeightDrag, HeightsStayWithinTheNumbersOfAnInt) {
  EXPECT_EQ(DraggedRowHeight(kMost, -kMost, kMost), kMost);
}
