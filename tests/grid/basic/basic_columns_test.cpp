#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/grid/basic/basic_desk.h"

namespace {

using BasicColumns = lorv_test::BasicDesk;

}  // namespace

TEST_F(BasicColumns, HeaderExample) {
  grid->InsertColumns(_T("梁,板"), _T("100"), 0);
  EXPECT_EQ(grid->AppendRows(2), 2);
  grid->SetValue(0, 1, _variant_t(_T("C30")), TRUE);
  EXPECT_EQ(grid->GetColsWidth(), _T("100,80"));
  EXPECT_EQ(Text(0, 1), _T("C30"));
  EXPECT_EQ(grid->GetColumnName(1), _T("板"));
}

TEST_F(BasicColumns, WidthZeroHidesTheColumnCountedInThisCall) {
  grid->InsertColumns(_T("a,b"), _T("50,60"), 0);
  grid->InsertColumns(_T("c,d"), _T("0,70"), 0);
  EXPECT_FALSE(grid->GetColumnVisible(0));
  EXPECT_TRUE(grid->GetColumnVisible(2));
  EXPECT_EQ(grid->GetColumnWidth(2), 80);
  EXPECT_EQ(grid->GetColsWidth(), _T("50,60,80,70"));
}

TEST_F(BasicColumns, WidthTextsComeAndGo) {
  grid->InsertColumns(_T("a,b,c"), _T("10,20,30"), 0);
  EXPECT_FALSE(grid->SetColsWidth(_T("")));
  EXPECT_EQ(grid->GetColsWidth(), _T("10,20,30"));
  EXPECT_TRUE(grid->SetColsWidth(_T("120,0,60,99")));
  EXPECT_EQ(grid->GetColsWidth(), _T("120,80,60"));
  EXPECT_TRUE(grid->SetColsWidth(_T("5")));
  EXPECT_EQ(grid->GetColsWidth(), _T("5,80,60"));
}

TEST_F(BasicColumns, HiddenOnesReportTheirWidthsAndStayHidden) {
  grid->InsertColumns(_T("a,b,c"), _T("10,20,30"), 0);
  grid->SetColumnVisible(1, FALSE);
  EXPECT_EQ(grid->GetColsWidth(), _T("10,20,30"));
  EXPECT_FALSE(grid->GetColumnVisible(1));
}

TEST_F(BasicColumns, RowsGetNoCellsFromInsertColumns) {
  grid->InsertColumns(_T("a"), _T(""), 0);
  grid->AppendRows(1);
  grid->InsertColumns(_T("b"), _T(""), 0);
  EXPECT_NE(grid->GetItem(0, 0), nullptr);
  EXPECT_EQ(grid->GetItem(0, 1), nullptr);
}

TEST_F(BasicColumns, AddedColumnGivesEachRowACell) {
  grid->InsertColumns(_T("a"), _T(""), 0);
  grid->AppendRows(2);
  EXPECT_EQ(grid->AddColumn(_T("b"), 33.9, nullptr), 1);
  EXPECT_EQ(grid->AddColumn(_T("c"), 40, RUNTIME_CLASS(CBCGPGridReadOnlyItem)), 1);
  EXPECT_EQ(grid->GetColumnWidth(1), 33);
  EXPECT_EQ(grid->GetValue(1, 1).vt, VT_EMPTY);
  EXPECT_TRUE(grid->GetItem(1, 2)->IsKindOf(RUNTIME_CLASS(CBCGPGridReadOnlyItem)));
  grid->AppendRows(1);
  EXPECT_TRUE(grid->GetItem(2, 2)->IsKindOf(RUNTIME_CLASS(CBCGPGridReadOnlyItem)));
  for (const double width : {-5.0, 1e300, std::numeric_limits<double>::infinity(), std::nan("")})
    EXPECT_EQ(grid->AddColumn(_T("x"), width, nullptr), 1) << width;
}

TEST_F(BasicColumns, DeletedColumnMovesSixAttributes) {
  grid->InsertColumns(_T("a,b,c"), _T(""), 0);
  grid->AppendRows(1);
  CBCGPGridItem* next = grid->GetItem(0, 1);
  next->SetValue(_variant_t(_T("B")));
  next->SetData(77);
  next->Enable(FALSE);
  next->SetReadOnly();
  next->AllowEdit(FALSE);
  next->SetImage(3);
  next->SetBackgroundColor(RGB(1, 2, 3));
  next->AddOption(_T("x"));
  grid->SetValue(0, 2, _variant_t(_T("C")), FALSE);
  EXPECT_TRUE(grid->DeleteColumn(0));
  const CBCGPGridItem* moved = grid->GetItem(0, 0);
  EXPECT_EQ(moved->FormatItem(), _T("B"));
  EXPECT_EQ(moved->GetData(), 77U);
  EXPECT_FALSE(moved->IsEnabled());
  EXPECT_TRUE(moved->IsReadOnly());
  EXPECT_FALSE(moved->IsAllowEdit());
  EXPECT_EQ(moved->GetImage(), 3);
  EXPECT_EQ(moved->GetBackgroundColor(), lorv::kNoColour);
  EXPECT_EQ(moved->GetOptionCount(), 0);
  EXPECT_EQ(Text(0, 1), _T("C"));
  // The last cell stays behind the last column, where a new column shows it.
  EXPECT_EQ(grid->GetRow(0)->GetItemCount(), 3);
  grid->InsertColumns(_T("d"), _T(""), 0);
  EXPECT_EQ(Text(0, 2), _T("C"));
  EXPECT_FALSE(grid->DeleteColumn(9));
  EXPECT_FALSE(grid->DeleteColumn(-1));
}

TEST_F(BasicColumns, HeaderItemsNeedTheHeaderOfSeveralLines) {
  grid->InsertColumns(_T("a,b"), _T(""), 0);
  CArray<int, int> columns;
  columns.Add(0);
  columns.Add(1);
  CArray<int, int> lines;
  lines.Add(0);
  grid->SetHeaderLineCount(2);
  EXPECT_EQ(grid->AddHeaderItem(&columns, &lines, nullptr, _T("ab"), 0, 0), nullptr);
  const int height = grid->GetHeaderRect().Height();
  grid->EnableMultiLineHeader();
  grid->SetHeaderLineCount(2);
  EXPECT_NE(grid->AddHeaderItem(&columns, &lines, nullptr, _T("ab"), 0, 0), nullptr);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetHeaderRect().Height(), 2 * height);
}

TEST_F(BasicColumns, KeepTheirProportionsWhenAsked) {
  grid->InsertColumns(_T("a,b"), _T("100,200"), 0);
  grid->SetAdjustColWidth(true);
  // Two pixels are the frame's, thirty the row header's.
  grid->MoveWindow(0, 0, 482, 300);
  Run();
  EXPECT_EQ(grid->GetColsWidth(), _T("150,300"));
  grid->MoveWindow(0, 0, 32 + 101, 300);
  Run();
  EXPECT_EQ(grid->GetColsWidth(), _T("33,68"));
}

TEST_F(BasicColumns, AreAsTheyWereWithoutThat) {
  grid->InsertColumns(_T("a,b"), _T("100,200"), 0);
  grid->MoveWindow(0, 0, 480, 300);
  Run();
  EXPECT_EQ(grid->GetColsWidth(), _T("100,200"));
}

TEST_F(BasicColumns, DoubleClickFitsTheWidestText) {
  Fill(2, 2);
  grid->SetValue(1, 0, _variant_t(_T("  abcdefghij  ")), FALSE);
  grid->OnHeaderDividerDblClick(0);
  EXPECT_EQ(grid->GetColumnWidth(0), 10 * 7 + 10);
  grid->SetColumnWidth(1, 55);
  grid->ClearAll();
  grid->SetColumnName(1, _T(""));
  grid->OnHeaderDividerDblClick(1);
  EXPECT_EQ(grid->GetColumnWidth(1), 55);
  grid->SetColumnName(1, _T(" name "));
  grid->OnHeaderDividerDblClick(1);
  EXPECT_EQ(grid->GetColumnWidth(1), 4 * 7 + 10);
  grid->OnHeaderDividerDblClick(-1);
  grid->OnHeaderDividerDblClick(99);
}
