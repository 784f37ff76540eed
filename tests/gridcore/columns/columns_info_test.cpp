#include "gridcore/columns/columns_info.h"

#include <gtest/gtest.h>

#include "gridcore/items/grid_item.h"
#include "tests/support/whole_number_limits.h"

namespace {

CBCGPGridColumnsInfo& Filled(CBCGPGridColumnsInfo& info, std::initializer_list<int> widths) {
  for (const int width : widths) info.InsertColumn(info.GetColumnCount(), _T("c"), width);
  return info;
}

}  // namespace

TEST(ColumnsInfo, HeaderExample) {
  CBCGPGridColumnsInfo info;
  info.InsertColumn(0, _T("梁"), 80);
  info.InsertColumn(1, _T("板"), 50);
  EXPECT_EQ(info.HitTestColumn(80), 1);
  EXPECT_EQ(info.GetTotalWidth(), 130);
  EXPECT_EQ(info.GetColumnName(0), _T("梁"));
}

TEST(ColumnsInfo, RefusesPlacesOutside) {
  CBCGPGridColumnsInfo info;
  for (const int at : {-1, 1, kMost, kLeast}) EXPECT_FALSE(info.InsertColumn(at, _T("x"), 10)) << at;
  EXPECT_TRUE(info.InsertColumn(0, nullptr, 10));
  EXPECT_EQ(info.GetColumnName(0), _T(""));
  for (const int at : {-1, 1, kMost, kLeast}) EXPECT_FALSE(info.DeleteColumn(at)) << at;
}

TEST(ColumnsInfo, AnswersForColumnsThatDoNotExist) {
  CBCGPGridColumnsInfo info;
  for (const int at : {-1, 0, kMost, kLeast}) {
    EXPECT_EQ(info.GetColumnName(at), _T(""));
    EXPECT_EQ(info.GetColumnWidth(at), 0);
    EXPECT_EQ(info.GetColumnAlign(at), -1);
    EXPECT_EQ(info.GetMinWidth(at), 0);
    EXPECT_FALSE(info.GetColumnVisible(at));
    EXPECT_FALSE(info.GetColumnWidthAutoSize(at));
    EXPECT_EQ(info.GetItemRTC(at), nullptr);
    info.SetColumnWidth(at, 5);
    info.SetColumnVisible(at, TRUE);
    info.SetItemRTC(at, RUNTIME_CLASS(CBCGPGridItem));
  }
  EXPECT_EQ(info.GetFirstVisibleColumn(), -1);
  EXPECT_EQ(info.GetLastVisibleColumn(), -1);
  EXPECT_EQ(info.HitTestColumn(0), -1);
}

TEST(ColumnsInfo, HiddenColumnKeepsItsWidthForLater) {
  CBCGPGridColumnsInfo info;
  Filled(info, {30, 40, 50});
  info.SetColumnVisible(1, FALSE);
  EXPECT_EQ(info.GetColumnWidth(1), 0);
  EXPECT_EQ(info.GetTotalWidth(), 80);
  info.SetColumnWidth(1, 70);
  EXPECT_EQ(info.GetTotalWidth(), 80);
  EXPECT_EQ(info.HitTestColumn(30), 2);
  info.SetColumnVisible(1, TRUE);
  EXPECT_EQ(info.GetColumnWidth(1), 70);
  EXPECT_EQ(info.GetColumnLeft(2), 100);
}

TEST(ColumnsInfo, WalksVisibleColumns) {
  CBCGPGridColumnsInfo info;
  Filled(info, {10, 10, 10, 10});
  info.SetColumnVisible(0, FALSE);
  info.SetColumnVisible(3, FALSE);
  EXPECT_EQ(info.GetFirstVisibleColumn(), 1);
  EXPECT_EQ(info.GetLastVisibleColumn(), 2);
  EXPECT_EQ(info.GetVisibleColumnCount(), 2);
  EXPECT_EQ(info.GetNextVisibleColumn(2, TRUE), -1);
  EXPECT_EQ(info.GetNextVisibleColumn(kLeast, TRUE), 1);
  EXPECT_EQ(info.GetNextVisibleColumn(kMost, FALSE), 2);
}

TEST(ColumnsInfo, WidthsAreCutToWhatAScreenCanHold) {
  CBCGPGridColumnsInfo info;
  Filled(info, {-5, kMost, lorv::kMaxColumnWidth - 1, lorv::kMaxColumnWidth, lorv::kMaxColumnWidth + 1});
  EXPECT_EQ(info.GetColumnWidth(0), 0);
  EXPECT_EQ(info.GetColumnWidth(1), lorv::kMaxColumnWidth);
  EXPECT_EQ(info.GetColumnWidth(2), lorv::kMaxColumnWidth - 1);
  EXPECT_EQ(info.GetColumnWidth(3), lorv::kMaxColumnWidth);
  EXPECT_EQ(info.GetColumnWidth(4), lorv::kMaxColumnWidth);
}

TEST(ColumnsInfo, TenThousandOfTheWidestStayWithinThirtyTwoBits) {
  CBCGPGridColumnsInfo info;
  EXPECT_EQ(info.InsertColumns(0, 10000, kMost), 10000);
  EXPECT_EQ(info.GetTotalWidth(), 1000000000);
  EXPECT_EQ(info.HitTestColumn(999999999), 9999);
}

TEST(ColumnsInfo, FindsTheDividerNearAPlace) {
  CBCGPGridColumnsInfo info;
  Filled(info, {50, 0, 60});
  EXPECT_EQ(info.HitTestDivider(45, 4), -1);
  EXPECT_EQ(info.HitTestDivider(46, 4), 1);
  EXPECT_EQ(info.HitTestDivider(54, 4), 1);
  EXPECT_EQ(info.HitTestDivider(55, 4), -1);
  EXPECT_EQ(info.HitTestDivider(110, 4), 2);
  EXPECT_EQ(info.HitTestDivider(kMost, 4), -1);
  EXPECT_EQ(info.HitTestDivider(kLeast, 4), -1);
}

TEST(ColumnsInfo, AutoSizeColumnsShareWhatTheOthersLeave) {
  CBCGPGridColumnsInfo info;
  Filled(info, {100, 100, 200});
  info.SetColumnWidthAutoSize(1, TRUE);
  info.SetColumnWidthAutoSize(2, TRUE);
  EXPECT_EQ(info.GetAutoSizeCount(), 2);
  info.Resize(700, FALSE);
  EXPECT_EQ(info.GetColumnWidth(0), 100);
  EXPECT_EQ(info.GetColumnWidth(1), 200);
  EXPECT_EQ(info.GetColumnWidth(2), 400);
  info.Resize(50, FALSE);
  EXPECT_EQ(info.GetColumnWidth(2), 400);
}

TEST(ColumnsInfo, SpreadColumnsLoseNoPixel) {
  CBCGPGridColumnsInfo info;
  Filled(info, {1, 1, 1});
  info.Resize(100, TRUE);
  EXPECT_EQ(info.GetTotalWidth(), 100);
  CBCGPGridColumnsInfo nothing;
  Filled(nothing, {0, 0});
  nothing.Resize(101, TRUE);
  EXPECT_EQ(nothing.GetTotalWidth(), 101);
}

TEST(ColumnsInfo, TheFirstColumnsAreAsManyAsFit) {
  CBCGPGridColumnsInfo info;
  EXPECT_EQ(info.GetWidthOfFirst(3, 100), 0);
  Filled(info, {80, 50, 0, 70});
  EXPECT_EQ(info.GetWidthOfFirst(2, 130), 130);
  EXPECT_EQ(info.GetWidthOfFirst(2, 129), 80);
  EXPECT_EQ(info.GetWidthOfFirst(2, 79), 0);
  EXPECT_EQ(info.GetWidthOfFirst(kMost, kMost), 200);
  EXPECT_EQ(info.GetWidthOfFirst(kMost, 199), 130);
  for (const int none : {0, -1, kLeast}) {
    EXPECT_EQ(info.GetWidthOfFirst(none, 100), 0);
    EXPECT_EQ(info.GetWidthOfFirst(2, none), 0);
  }
  info.SetColumnVisible(0, FALSE);
  EXPECT_EQ(info.GetWidthOfFirst(2, 60), 50);
}

TEST(ColumnsInfo, MovedColumnsKnowTheirNumbers) {
  CBCGPGridColumnsInfo info;
  for (int column = 0; column < 4; ++column) info.InsertColumn(column, _T("c"), 10 * (column + 1));
  EXPECT_FALSE(info.MoveColumn(0, 4));
  EXPECT_FALSE(info.MoveColumn(-1, 0));
  EXPECT_TRUE(info.MoveColumn(3, 1));
  EXPECT_EQ(info.GetColumnLeft(2), 50);
  EXPECT_EQ(info.HitTestColumn(49), 1);
  EXPECT_EQ(info.GetUnmovedColumn(1), 3);
  EXPECT_EQ(info.FindUnmovedColumn(1), 2);
  // In front of the one that is number 3: the new one is that, and the other number 4.
  EXPECT_TRUE(info.InsertColumn(1, _T("new"), 5));
  EXPECT_EQ(info.GetUnmovedColumn(1), 3);
  EXPECT_EQ(info.GetUnmovedColumn(2), 4);
  EXPECT_TRUE(info.DeleteColumn(0));
  EXPECT_EQ(info.FindUnmovedColumn(0), 2);
  EXPECT_EQ(info.FindUnmovedColumn(4), -1);
  EXPECT_EQ(info.GetUnmovedColumn(9), -1);
  EXPECT_TRUE(info.AreColumnsMoved());
  info.DeleteAllColumns();
  EXPECT_FALSE(info.AreColumnsMoved());
}
