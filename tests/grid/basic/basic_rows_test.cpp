#include <gtest/gtest.h>

#include "tests/grid/basic/basic_desk.h"
#include "tests/support/whole_number_limits.h"

namespace {

using BasicRows = lorv_test::BasicDesk;
using Cell = CBCGPGridItemID;

// A grid that keeps its last row to itself.
class OneLess : public CBCGPBasicGridCtrl {
 public:
  int GetRowCount(int all) const override { return std::max(0, CBCGPBasicGridCtrl::GetRowCount(all) - 1); }
  CBCGPGridRow* GetRow(int row) const override {
    return row < GetRowCount(FALSE) ? CBCGPBasicGridCtrl::GetRow(row) : nullptr;
  }
};

}  // namespace

TEST_F(BasicRows, ComeAndGo) {
  Fill(3, 2);
  EXPECT_EQ(grid->AppendRows(2), 2);
  EXPECT_EQ(grid->AppendRows(-1), 0);
  EXPECT_EQ(grid->GetRowCount(), 5);
  EXPECT_EQ(grid->InsertRows(1, 2), 2);
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_EQ(Text(1, 0), _T(""));
  EXPECT_EQ(Text(3, 0), _T("10"));
  EXPECT_EQ(Current(), Cell(0, 0));
  EXPECT_EQ(grid->InsertRows(99, 1), 1);
  EXPECT_EQ(grid->InsertRows(-1, 1), 0);
  EXPECT_EQ(grid->GetRowCount(), 8);
  EXPECT_EQ(grid->DeleteRows(1, 2), 2);
  EXPECT_EQ(Text(1, 0), _T("10"));
  EXPECT_EQ(grid->DeleteRows(4, kMost), 2);
  EXPECT_EQ(grid->DeleteRows(9, 1), 0);
  EXPECT_EQ(grid->DeleteRows(kLeast, 1), 0);
  grid->RemoveAll();
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->InsertRows(0, 2), 2);
}

TEST_F(BasicRows, SelectedOnesGoTogether) {
  Fill(6, 2);
  EXPECT_EQ(grid->RemoveCurRow(), 1);
  grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE);
  EXPECT_EQ(grid->RemoveCurRow(), 0);
  EXPECT_EQ(grid->DeleteSelectedRows(), 0);
  Choose(1, 0);
  grid->SetCurSel(Cell(3, 1), lorv::kSelectAdd, FALSE);
  EXPECT_EQ(grid->DeleteSelectedRows(), 2);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(Text(1, 0), _T("30"));
}

TEST_F(BasicRows, SelectedRowsAscendWithoutRepeats) {
  Fill(7, 3);
  Choose(5, 0);
  for (const Cell& cell : {Cell(2, 1), Cell(2, 2)}) grid->SetCurSel(cell, lorv::kSelectAdd, FALSE);
  CArray<int, int> rows;
  EXPECT_EQ(grid->GetSelectRows(rows), 2);
  EXPECT_EQ(rows[0], 2);
  EXPECT_EQ(rows[1], 5);
  CUIntArray columns;
  EXPECT_EQ(grid->GetSelectColumns(columns), 3);
  EXPECT_EQ(columns[2], 2U);
}

TEST_F(BasicRows, HiddenOnesAreFilteredOutAtTheNextLayout) {
  Fill(4, 1);
  grid->SetRowVisible(1, false);
  grid->SetRowVisible(1, false);
  EXPECT_TRUE(grid->IsRowHidden(1));
  EXPECT_FALSE(grid->GetRowRect(1).IsRectEmpty());
  grid->AdjustLayout();
  EXPECT_TRUE(grid->GetRowRect(1).IsRectEmpty());
  EXPECT_TRUE(grid->FilterItem(grid->GetRow(1)));
  // The numbers stay when rows come or go.
  grid->DeleteRows(0, 1);
  EXPECT_TRUE(grid->IsRowHidden(1));
  grid->SetRowVisible(1, true);
  grid->AdjustLayout();
  EXPECT_FALSE(grid->GetRowRect(1).IsRectEmpty());
  EXPECT_FALSE(grid->IsRowHidden(-1));
}

TEST_F(BasicRows, OneHeightForAll) {
  Fill(3, 1);
  EXPECT_GE(grid->GetRowHeight(), 20);
  grid->SetRowHeight(40);
  EXPECT_NE(grid->GetRowHeight(), 40);
  grid->SetRowHeight();
  EXPECT_EQ(grid->GetRowHeight(), 40);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetRowRect(2).Height(), 40);
  grid->SetRowHeight(1);
  grid->SetRowHeight();
  EXPECT_GE(grid->GetRowHeight(), 16);
  grid->InsertColumns(_T("x"), _T(""), 33);
  grid->SetRowHeight();
  EXPECT_EQ(grid->GetRowHeight(), 33);
}

TEST_F(BasicRows, EverythingAsksTheVirtualOperations) {
  OneLess less;
  less.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &top, 8);
  less.InsertColumns(_T("a"), _T(""), 0);
  less.AppendRows(3);
  EXPECT_EQ(less.GetRowCount(FALSE), 2);
  EXPECT_EQ(less.GetItem(2, 0), nullptr);
  less.SetValue(2, 0, _variant_t(5));
  EXPECT_EQ(less.GetValue(2, 0).vt, VT_EMPTY);
  less.MoveLast();
  EXPECT_EQ(less.GetCurrentRow(), 1);
  less.SetRowReadOnly(2, true);
  EXPECT_FALSE(less.CBCGPGridCtrl::GetRow(2)->GetItem(0)->IsReadOnly());
}

TEST_F(BasicRows, OfSeveralLines) {
  Fill(1, 2);
  EXPECT_EQ(grid->AddMultiLineRow(3, 2), 1);
  auto* row = dynamic_cast<CBCGPGridMultiLineRow*>(grid->GetRow(1));
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->GetLinesNumber(), 2);
  EXPECT_EQ(row->GetMaxLines(), 3);
  EXPECT_EQ(row->GetMinLines(), 2);
  EXPECT_TRUE(grid->GetItem(1, 0)->IsMultiline());
}

TEST_F(BasicRows, CellOfSeveralLines) {
  Fill(1, 2);
  grid->SetMultiLineItem(0, 0, 3);
  auto* cell = dynamic_cast<CBCGPGridPresentationItem*>(grid->GetItem(0, 0));
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->IsMultiLineItem(), 1);
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_EQ(grid->GetRow(0)->GetLinesNumber(), 3);
  grid->SetMultiLineItem(0, 0, 2);
  EXPECT_EQ(grid->GetItem(0, 0), cell);
  EXPECT_EQ(grid->GetRow(0)->GetLinesNumber(), 2);
  grid->SetMultiLineItem(9, 0, 2);
}
