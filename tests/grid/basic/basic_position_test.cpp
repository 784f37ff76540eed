#include <gtest/gtest.h>

#include "tests/grid/basic/basic_desk.h"
#include "tests/support/whole_number_limits.h"

namespace {

using BasicPosition = lorv_test::BasicDesk;
using Cell = CBCGPGridItemID;

}  // namespace

TEST_F(BasicPosition, SomethingIsCurrentInATableThatIsNotEmpty) {
  EXPECT_EQ(grid->GetCurrentRow(), -1);
  EXPECT_EQ(grid->GetCol(), -1);
  grid->InsertColumns(_T("a,b"), _T("0,80"), 0);
  EXPECT_EQ(grid->GetCurrentRow(), -1);
  grid->AppendRows(1);
  // Hidden or not, it is the first cell.
  EXPECT_EQ(Current(), Cell(0, 0));
  EXPECT_FALSE(grid->GetColumnVisible(0));
}

TEST_F(BasicPosition, RowsAndColumnsAreChosenByNumber) {
  Fill(4, 3);
  grid->SetRow(2);
  EXPECT_EQ(grid->GetCurrentRow(), 2);
  EXPECT_EQ(grid->GetCurRowIndex(), 2);
  EXPECT_TRUE(grid->IsRowSelected(2, TRUE));
  grid->SetCol(1);
  EXPECT_EQ(Current(), Cell(2, 1));
  EXPECT_FALSE(grid->IsRowSelected(2, TRUE));
  int row = 5;
  int column = 5;
  grid->GetCurSelItemIndex(row, column);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(column, 1);
  for (const int bad : {-1, 4, kMost, kLeast}) {
    grid->SetRow(bad);
    EXPECT_EQ(grid->GetCurrentRow(), -1) << bad;
    grid->SetCol(0);
    EXPECT_EQ(grid->GetCurrentRow(), -1) << bad;
  }
  grid->GetCurSelItemIndex(row, column);
  EXPECT_EQ(row, -1);
  EXPECT_EQ(column, -1);
}

TEST_F(BasicPosition, StepsGoToTheFirstVisibleColumn) {
  Fill(3, 3);
  grid->SetColumnVisible(0, FALSE);
  grid->MoveLast();
  EXPECT_EQ(Current(), Cell(2, 1));
  Choose(2, 2);
  grid->MoveNext();
  EXPECT_EQ(Current(), Cell(2, 1));
  grid->MovePrevious();
  EXPECT_EQ(Current(), Cell(1, 1));
  grid->MoveFirst();
  EXPECT_EQ(Current(), Cell(0, 1));
  grid->MovePrevious();
  EXPECT_EQ(Current(), Cell(0, 1));
  grid->MoveNext();
  EXPECT_EQ(Current(), Cell(1, 1));
  grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE);
  grid->MoveNext();
  EXPECT_EQ(Current(), Cell(0, 1));
  grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE);
  grid->MovePrevious();
  EXPECT_EQ(Current(), Cell(0, 1));
}

TEST_F(BasicPosition, StepsInAnEmptyTableDoNothing) {
  grid->MoveFirst();
  grid->MoveLast();
  grid->MoveNext();
  grid->MovePrevious();
  EXPECT_EQ(grid->GetCurrentRow(), -1);
  EXPECT_EQ(grid->GetFirstRow(), -1);
  EXPECT_EQ(grid->GetVisibleRows(), 0);
}

TEST_F(BasicPosition, FirstRowComesToTheTop) {
  Fill(100, 2);
  EXPECT_EQ(grid->GetFirstRow(), 0);
  grid->SetFirstRow(50);
  EXPECT_EQ(grid->GetFirstRow(), 50);
  EXPECT_EQ(grid->GetRowRect(50).top, grid->GetListRect().top);
  grid->SetFirstRow(10);
  EXPECT_EQ(grid->GetFirstRow(), 10);
  for (const int bad : {-1, 100, kMost, kLeast}) grid->SetFirstRow(bad);
  EXPECT_EQ(grid->GetFirstRow(), 10);
  const int height = grid->GetRowHeight();
  const int room = grid->GetListRect().Height();
  EXPECT_EQ(grid->GetVisibleRows(), room / height + (room % height != 0 ? 1 : 0));
}

TEST_F(BasicPosition, AllRowsAreVisibleWhereNothingScrolls) {
  Fill(3, 2);
  EXPECT_EQ(grid->GetVisibleRows(), 3);
}

TEST_F(BasicPosition, CellsUnderPoints) {
  Fill(3, 2);
  const CRect cell = grid->GetItemRect({2, 1});
  int row = 9;
  int column = 9;
  EXPECT_NE(grid->CellContaining(cell.CenterPoint(), row, column), 0);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(column, 1);
  EXPECT_NE(grid->CellContaining(static_cast<int>(cell.right) + 5, static_cast<int>(cell.top), row, column),
            0);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(column, -1);
  EXPECT_EQ(grid->CellContaining(kMost, kLeast, row, column), 0);
  EXPECT_EQ(row, -1);
  EXPECT_EQ(column, -1);
}

TEST_F(BasicPosition, LayoutKeepsTheSelectionWhenAsked) {
  Fill(4, 3);
  Choose(0, 0);
  grid->SetCurSel(Cell(2, 1), lorv::kSelectAdd, FALSE);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetSelection().size(), 1U);
  EXPECT_EQ(Current(), Cell(2, 1));
  grid->SetDefaultSel(true);
  grid->SetCurSel(Cell(0, 0), lorv::kSelectAdd, FALSE);
  grid->AdjustLayout();
  EXPECT_TRUE(grid->IsItemSelected({0, 0}));
  EXPECT_TRUE(grid->IsItemSelected({2, 1}));
  grid->SelectRow(3);
  grid->AdjustLayout();
  EXPECT_TRUE(grid->IsRowSelected(3, TRUE));
  EXPECT_EQ(Current(), Cell(3, 0));
}

TEST_F(BasicPosition, LayoutDoesNotScrollUnderADividerThatIsDragged) {
  Fill(100, 2);
  Choose(0, 0);
  grid->SetFirstRow(50);
  desktop.SetCursor(lorv::kCursorSizeAcross);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetFirstRow(), 50);
  desktop.SetCursor(lorv::kCursorArrow);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetFirstRow(), 0);
}

TEST_F(BasicPosition, MergedCellsAreListed) {
  Fill(4, 4);
  grid->MergeRange({0, 0, 1, 1});
  grid->MergeRange({2, 2, 3, 3});
  CList<CBCGPGridRange, const CBCGPGridRange&> blocks;
  EXPECT_EQ(grid->GetUnionCells(blocks), 2);
  EXPECT_EQ(blocks.GetHead(), CBCGPGridRange(0, 0, 1, 1));
  grid->RemoveAll();
  EXPECT_EQ(grid->GetUnionCells(blocks), 0);
}

TEST_F(BasicPosition, TreeHasAnOffset) {
  EXPECT_EQ(grid->GetExtraHierarchyOffset(), 0);
  grid->SetTreeGrid(true);
  EXPECT_EQ(grid->GetExtraHierarchyOffset(), grid->GetRowHeight());
  EXPECT_EQ(grid->GetLeftMarginWidth(), grid->GetRowHeight());
  EXPECT_EQ(grid->GetHierarchyLevelOffset(), grid->GetRowHeight());
  grid->EnableRowHeader(FALSE);
  EXPECT_EQ(grid->GetExtraHierarchyOffset(), 0);
}

TEST_F(BasicPosition, DialogStandsAtTheCurrentCell) {
  Fill(3, 2);
  Choose(1, 1);
  CWnd dialog;
  dialog.Create(nullptr, _T("d"), WS_POPUP, CRect(0, 0, 60, 40), &top, 0);
  grid->ShowDlg(&dialog);
  EXPECT_TRUE(dialog.IsWindowVisible());
  CRect place;
  dialog.GetWindowRect(&place);
  CRect cell = grid->GetItemRect({1, 1});
  grid->ClientToScreen(static_cast<LPRECT>(cell));
  EXPECT_EQ(place.TopLeft(), CPoint(static_cast<int>(cell.left) + 1, static_cast<int>(cell.bottom)));
  EXPECT_EQ(place.Size(), CSize(60, 40));
  grid->ShowDlg(nullptr);
}
