#include "grid/gestures/fill_frame.h"

#include <gtest/gtest.h>

#include "tests/grid/gestures/columns.h"

namespace {

using lorv_test::Columns;
using Range = CBCGPGridRange;
using Cell = CBCGPGridItemID;

constexpr int kWide = 50;
constexpr int kHigh = 20;

// A table of equal cells, the first one in the corner.
CRect Cells(int left, int top, int right, int bottom) {
  return {left * kWide, top * kHigh, (right + 1) * kWide, (bottom + 1) * kHigh};
}

Cell CellUnder(CPoint point) {
  return {point.y / kHigh, point.x / kWide};
}

lorv::FillTarget Target(const Range& selected, const CRect& frame) {
  const CRect source = Cells(selected.m_nLeft, selected.m_nTop, selected.m_nRight, selected.m_nBottom);
  return lorv::FillTargetOf(selected, source, frame, CellUnder).value_or(lorv::FillTarget());
}

Cell Tip(const Range& selected, const CRect& frame, const lorv::ColumnView& columns) {
  const CRect source = Cells(selected.m_nLeft, selected.m_nTop, selected.m_nRight, selected.m_nBottom);
  return lorv::FillTipCell(selected, source, frame, columns, CellUnder);
}

}  // namespace

TEST(FillFrame, HeaderExamples) {
  EXPECT_TRUE(lorv::OnFillHandle(CRect(0, 0, 50, 20), {48, 18}));
  EXPECT_FALSE(lorv::OnFillHandle(CRect(0, 0, 50, 20), {52, 18}));
  EXPECT_EQ(lorv::FillFrameAt(CRect(0, 0, 50, 20), CRect(0, 40, 50, 60), {10, 45}).frame,
            CRect(0, 0, 50, 60));
}

TEST(FillFrame, HandleReachesTwoPixelsAroundTheCorner) {
  const CRect border(10, 10, 60, 30);
  EXPECT_TRUE(lorv::OnFillHandle(border, {58, 28}));
  EXPECT_TRUE(lorv::OnFillHandle(border, {61, 31}));
  EXPECT_FALSE(lorv::OnFillHandle(border, {57, 28}));
  EXPECT_FALSE(lorv::OnFillHandle(border, {58, 27}));
  EXPECT_FALSE(lorv::OnFillHandle(border, {61, 32}));
}

TEST(FillFrame, OverTheColumnsOfTheSourceItIsVerticalHoweverFar) {
  const CRect source = Cells(2, 2, 3, 2);
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(2, 9, 2, 9), {source.left, 185}).frame, Cells(2, 2, 3, 9));
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(3, 0, 3, 0), {source.right - 1, 5}).frame, Cells(2, 0, 3, 2));
}

TEST(FillFrame, OverTheRowsOfTheSourceItIsHorizontal) {
  const CRect source = Cells(2, 2, 3, 4);
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(5, 2, 5, 2), {source.right, source.top}).frame,
            Cells(2, 2, 5, 4));
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(0, 4, 0, 4), {5, source.bottom - 1}).frame, Cells(0, 2, 3, 4));
}

TEST(FillFrame, BesideBothTheFartherDirectionCountsAndATieIsVertical) {
  const CRect source(100, 100, 150, 120);  // its centre is (125, 110)
  const CRect cell(200, 160, 250, 180);
  EXPECT_EQ(lorv::FillFrameAt(source, cell, {201, 165}).frame, CRect(100, 100, 250, 120));
  EXPECT_EQ(lorv::FillFrameAt(source, CRect(150, 200, 200, 220), {180, 210}).frame,
            CRect(100, 100, 150, 220));
  EXPECT_EQ(lorv::FillFrameAt(source, CRect(150, 160, 200, 180), {180, 165}).frame,
            CRect(100, 100, 150, 180));
  EXPECT_EQ(lorv::FillFrameAt(source, CRect(0, 40, 50, 60), {20, 50}).frame, CRect(0, 100, 150, 120));
}

TEST(FillFrame, TipStandsInsideTheMovedEdge) {
  const CRect source = Cells(2, 2, 2, 2);
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(2, 5, 2, 5), {110, 105}).tip, CPoint(102, 118));
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(2, 0, 2, 0), {110, 5}).tip, CPoint(102, 2));
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(5, 2, 5, 2), {260, 45}).tip, CPoint(298, 58));
  EXPECT_EQ(lorv::FillFrameAt(source, Cells(0, 2, 0, 2), {5, 45}).tip, CPoint(2, 58));
}

TEST(FillFrame, AtHomeTheFrameAlternatesBetweenSourceAndCell) {
  const CRect source = Cells(2, 2, 2, 4);
  const CRect wanted = Cells(2, 2, 2, 3);
  CRect shown = Cells(2, 2, 2, 9);
  shown = lorv::NextFillFrame(shown, source, wanted, true);
  EXPECT_EQ(shown, source);
  shown = lorv::NextFillFrame(shown, source, wanted, true);
  EXPECT_EQ(shown, wanted);
  shown = lorv::NextFillFrame(shown, source, wanted, true);
  EXPECT_EQ(shown, source);
  EXPECT_EQ(lorv::NextFillFrame(Cells(2, 2, 2, 9), source, wanted, false), wanted);
}

TEST(FillFrame, TargetsBeginBesideTheSource) {
  const Range selected(2, 2, 3, 4);
  const auto down = Target(selected, Cells(2, 2, 3, 7));
  EXPECT_EQ(down.range, Range(2, 5, 3, 7));
  EXPECT_TRUE(down.forward && !down.across);
  const auto up = Target(selected, Cells(2, 0, 3, 4));
  EXPECT_EQ(up.range, Range(2, 0, 3, 1));
  EXPECT_FALSE(up.forward || up.across);
  const auto right = Target(selected, Cells(2, 2, 6, 4));
  EXPECT_EQ(right.range, Range(4, 2, 6, 4));
  EXPECT_TRUE(right.forward && right.across);
  const auto left = Target(selected, Cells(1, 2, 3, 4));
  EXPECT_EQ(left.range, Range(1, 2, 1, 4));
  EXPECT_TRUE(!left.forward && left.across);
}

TEST(FillFrame, AFrameThatDidNotLeaveTheSourceHasNoTarget) {
  const Range selected(2, 2, 3, 4);
  const CRect source = Cells(2, 2, 3, 4);
  EXPECT_FALSE(lorv::FillTargetOf(selected, source, source, CellUnder).has_value());
  EXPECT_FALSE(lorv::FillTargetOf(selected, source, Cells(2, 2, 4, 5), CellUnder).has_value());
  EXPECT_TRUE(Tip(selected, source, Columns(9, {})).IsNull());
  EXPECT_TRUE(Tip({}, Cells(2, 2, 3, 7), Columns(9, {})).IsNull());
}

TEST(FillFrame, TipNamesWhatTheFarthestCellReceives) {
  const auto all = Columns(20, {});
  const Range rows(0, 5, 0, 7);
  EXPECT_EQ(Tip(rows, Cells(0, 5, 0, 14), all), Cell(5, 0)) << "seven rows down: the first value again";
  EXPECT_EQ(Tip(rows, Cells(0, 3, 0, 7), all), Cell(6, 0)) << "two rows up: the second value";
  const Range across(5, 1, 7, 1);
  EXPECT_EQ(Tip(across, Cells(5, 1, 11, 1), all), Cell(1, 5));
  EXPECT_EQ(Tip(across, Cells(3, 1, 7, 1), all), Cell(1, 6));
}

TEST(FillFrame, TipLeavesHiddenColumnsOut) {
  const Range across(1, 0, 2, 0);
  EXPECT_EQ(Tip(across, Cells(1, 0, 5, 0), Columns(9, {4})), Cell(0, 2)) << "two shown columns to the right";
  EXPECT_EQ(Tip(across, Cells(1, 0, 5, 0), Columns(9, {})), Cell(0, 1)) << "three";
}
