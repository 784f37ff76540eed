#include <gtest/gtest.h>

#include <functional>

#include "tests/grid/bridge/bridge_desk.h"

namespace {

using TrueDbTable = lorv_test::BridgeDesk;
using Cell = CBCGPGridItemID;

_variant_t Of(LPCTSTR text) {
  return _variant_t(text);
}

constexpr long kEqual = 1;

}  // namespace

TEST_F(TrueDbTable, HeaderExample) {
  grid->InsertColumns(_T("name,qty"), _T(""), 0);
  grid->ReDim(3, 2);
  EXPECT_EQ(grid->GetUpperBound(1), 2);
  EXPECT_EQ(grid->Find(0, 0, Of(_T("x")), 0, 1, 0), -1);
}

TEST_F(TrueDbTable, SizesByDimension) {
  Fill(3, 4);
  EXPECT_EQ(grid->GetCount(1), 3);
  EXPECT_EQ(grid->GetCount(2), 4);
  EXPECT_EQ(grid->GetUpperBound(1), 2);
  EXPECT_EQ(grid->GetUpperBound(2), 3);
  for (const int other : {0, 3, -1}) {
    EXPECT_EQ(grid->GetCount(other), 0);
    EXPECT_EQ(grid->GetUpperBound(other), -1);
  }
  EXPECT_EQ(grid->GetColCount(), 4);
}

TEST_F(TrueDbTable, ReDimWithoutColumnsDoesNothing) {
  Fill(2, 2);
  grid->ReDim(3, 0);
  grid->ReDim(3, -1);
  EXPECT_EQ(grid->GetCount(1), 2);
  EXPECT_EQ(Text(1, 1), _T("11"));
}

TEST_F(TrueDbTable, ReDimWithNegativeRowsLeavesColumnsAlone) {
  Fill(2, 4);
  grid->SetColsWidth(_T("30,40,50,60"));
  grid->ReDim(-1, 2);
  EXPECT_EQ(grid->GetCount(1), 0);
  EXPECT_EQ(grid->GetCount(2), 2);
  EXPECT_EQ(grid->GetColsWidth(), _T("30,40"));
}

TEST_F(TrueDbTable, ReDimAddsColumnsOfEightyAndEmptyRows) {
  Fill(2, 1);
  grid->SetColsWidth(_T("30"));
  grid->ReDim(500, 3);
  EXPECT_EQ(grid->GetCount(1), 500);
  EXPECT_EQ(grid->GetColsWidth(), _T("30,80,80"));
  EXPECT_EQ(Text(499, 2), _T(""));
  EXPECT_EQ(grid->GetRowRect(499).Height(), grid->GetRowHeight());
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
}

TEST_F(TrueDbTable, AppendGivesTheNewRow) {
  Fill(2, 1);
  EXPECT_EQ(grid->Append(), 2);
  EXPECT_EQ(grid->Append(), 3);
}

TEST_F(TrueDbTable, ReBindLaysOutAndRefreshDoesNothing) {
  Fill(2, 1);
  grid->SetRowVisible(1, false);
  grid->Refresh();
  grid->Update();
  EXPECT_NE(grid->GetRowRect(1).IsRectEmpty(), TRUE);
  grid->ReBind();
  EXPECT_EQ(grid->GetRowRect(1).IsRectEmpty(), TRUE);
  grid->SetRowVisible(1, true);
  grid->ReBindAndRestoreGridState(1);
  EXPECT_EQ(grid->GetRowRect(1).IsRectEmpty(), FALSE);
}

TEST_F(TrueDbTable, BookmarkIsTheRowAsALongNumber) {
  Fill(3, 2);
  Choose(2, 1);
  EXPECT_EQ(grid->GetBookmark().vt, VT_I4);
  EXPECT_EQ(grid->GetBookmark().lVal, 2);
  EXPECT_EQ(grid->GetCurEditRow(), 2);
  grid->SetCurSel(Cell(), lorv::kSelectClear);
  EXPECT_EQ(grid->GetBookmark().lVal, -1);
}

TEST_F(TrueDbTable, BookmarkSelectsItsRowByTwoKindsOnly) {
  Fill(60, 2);
  grid->SetBookmark(_variant_t(50L));
  EXPECT_EQ(grid->GetCurrentRow(), 50);
  EXPECT_TRUE(grid->IsRowSelected(50, TRUE));
  EXPECT_GE(grid->GetRow(), 0);
  grid->SetBookmark(_variant_t(short{3}));
  EXPECT_EQ(grid->GetCurrentRow(), 3);
  for (const _variant_t& other :
       {_variant_t(4.0), Of(_T("4")), _variant_t(), _variant_t(99L), _variant_t(-1L)})
    grid->SetBookmark(other);
  EXPECT_EQ(grid->GetCurrentRow(), 3);
}

TEST_F(TrueDbTable, AskingForABookmarkMovesTheSelection) {
  Fill(5, 2);
  const _variant_t bookmark = grid->RowBookmark(4);
  EXPECT_EQ(bookmark.vt, VT_I4);
  EXPECT_EQ(bookmark.lVal, 4);
  EXPECT_EQ(grid->GetCurrentRow(), 4);
  EXPECT_EQ(grid->RowBookmark(77).lVal, 77);
  EXPECT_EQ(grid->GetCurrentRow(), 4);
}

TEST_F(TrueDbTable, SelectedBookmarksAscend) {
  Fill(6, 2);
  grid->SetCurSel(Cell(5, 0));
  grid->SetCurSel(Cell(2, 1), lorv::kSelectAdd);
  grid->SetCurSel(Cell(2, 0), lorv::kSelectAdd);
  EXPECT_EQ(grid->GetSelBookmarks(), (std::vector<int>{2, 5}));
}

TEST_F(TrueDbTable, RowOnTheScreenCountsFromTheFirstShown) {
  Fill(100, 1);
  Choose(0, 0);
  EXPECT_EQ(grid->GetRow(), 0);
  Choose(3, 0);
  EXPECT_EQ(grid->GetRow(), 3);
  grid->SetFirstRow(40);
  EXPECT_EQ(grid->GetRow(), -1);
  Choose(42, 0);
  EXPECT_EQ(grid->GetRow(), 42 - grid->GetFirstRow());
  grid->SetFirstRow(0);
  EXPECT_EQ(grid->GetRow(), -1);
  grid->SetCurSel(Cell(), lorv::kSelectClear);
  EXPECT_EQ(grid->GetRow(), -1);
}

TEST_F(TrueDbTable, RowWhoseTopIsTheClientsBottomStillCounts) {
  Fill(100, 1);
  CRect client;
  grid->GetClientRect(&client);
  const int height = grid->GetRowHeight();
  const int below = (client.Height() - static_cast<int>(grid->GetListRect().top) + height - 1) / height;
  const int taller = static_cast<int>(grid->GetListRect().top) + below * height;
  grid->MoveWindow(0, 0, 430, taller + 430 - client.Width());
  Run();
  grid->GetClientRect(&client);
  grid->MoveWindow(0, 0, 430, taller + (taller + 430 - client.Width()) - client.Height());
  Run();
  // Chosen without being scrolled to.
  grid->SetCurSel(Cell(below, 0));
  ASSERT_EQ(grid->GetFirstRow(), 0);
  grid->GetClientRect(&client);
  ASSERT_EQ(grid->GetRowRect(below).top, client.bottom);
  EXPECT_EQ(grid->GetRow(), below);
  grid->SetCurSel(Cell(below + 1, 0));
  EXPECT_EQ(grid->GetRow(), -1);
}

TEST_F(TrueDbTable, FindsTextsWithoutLetterCaseUnlessAsked) {
  Fill(4, 2);
  grid->SetValue(2, 1, Of(_T("ABC")));
  EXPECT_EQ(grid->Find(0, 1, Of(_T("abc")), 0, kEqual, 0), 2);
  EXPECT_EQ(grid->Find(0, 1, Of(_T("abc")), 0, kEqual, 10), -1);
  EXPECT_EQ(grid->Find(0, 1, Of(_T("abc")), 0, kEqual, 13), -1);
  EXPECT_EQ(grid->Find(0, 1, Of(_T("abc")), 0, kEqual, 11), 2);
  EXPECT_EQ(grid->Find(0, 1, Of(_T("ABC")), 0, kEqual, 10), 2);
}

TEST_F(TrueDbTable, FindsInTheDirectionAskedFor) {
  Fill(5, 1);
  for (const int row : {1, 3}) grid->SetValue(row, 0, Of(_T("x")));
  EXPECT_EQ(grid->Find(0, 0, Of(_T("x")), 0, kEqual, 0), 1);
  EXPECT_EQ(grid->Find(2, 0, Of(_T("x")), 0, kEqual, 0), 3);
  EXPECT_EQ(grid->Find(4, 0, Of(_T("x")), 0, kEqual, 0), -1);
  EXPECT_EQ(grid->Find(4, 0, Of(_T("x")), 1, kEqual, 0), 3);
  EXPECT_EQ(grid->Find(2, 0, Of(_T("x")), 1, kEqual, 0), 1);
  EXPECT_EQ(grid->Find(99, 0, Of(_T("x")), 1, kEqual, 0), 3);
  EXPECT_EQ(grid->Find(-9, 0, Of(_T("x")), 0, kEqual, 0), 1);
  EXPECT_EQ(grid->Find(0, 0, Of(_T("x")), 2, kEqual, 0), -1);
  EXPECT_EQ(grid->Find(0, 0, Of(_T("x")), -1, kEqual, 0), -1);
  EXPECT_EQ(grid->Find(0, 9, Of(_T("x")), 0, kEqual, 0), -1);
  EXPECT_EQ(grid->Find(0, -1, Of(_T("x")), 0, kEqual, 0), -1);
}

TEST_F(TrueDbTable, ComparesTheValueWithTheCellAsTexts) {
  Fill(1, 1);
  grid->SetValue(0, 0, _variant_t(9));
  const auto holds = [&](int comparison) { return grid->Find(0, 0, _variant_t(10), 0, comparison, 0) == 0; };
  // "10" stands before "9".
  EXPECT_FALSE(holds(1));
  EXPECT_FALSE(holds(2));
  EXPECT_FALSE(holds(3));
  EXPECT_TRUE(holds(4));
  EXPECT_TRUE(holds(5));
  EXPECT_TRUE(holds(6));
  EXPECT_FALSE(holds(0));
  EXPECT_FALSE(holds(7));
}

TEST_F(TrueDbTable, KindsMustBeTheSame) {
  Fill(3, 1);
  EXPECT_EQ(grid->FindVal(0, _variant_t(10)), -1);
  EXPECT_EQ(grid->FindVal(0, Of(_T("10"))), 1);
  EXPECT_EQ(grid->Find(0, 0, _variant_t(10), 0, 6, 0), -1);
  EXPECT_EQ(grid->FindVal(1, Of(_T("10"))), -1);
  EXPECT_EQ(grid->FindVal(-1, Of(_T("10"))), -1);
  grid->RemoveAll();
  EXPECT_EQ(grid->FindVal(0, Of(_T("10"))), -1);
}

TEST_F(TrueDbTable, ValuesWithoutATextAreNotFound) {
  Fill(1, 1);
  grid->SetValue(0, 0, _variant_t(static_cast<IUnknown*>(nullptr)));
  EXPECT_EQ(grid->FindVal(0, _variant_t(static_cast<IUnknown*>(nullptr))), -1);
}

TEST_F(TrueDbTable, PlacesOfAPoint) {
  Fill(3, 2);
  const CRect cell = grid->GetItemRect({1, 1});
  const auto at = [&](CPoint point) {
    return grid->PointAt(static_cast<int>(point.x), static_cast<int>(point.y));
  };
  EXPECT_EQ(at(cell.CenterPoint()), 9);
  EXPECT_EQ(at(CPoint(5, cell.CenterPoint().y)), 4);
  EXPECT_EQ(at(CPoint(cell.CenterPoint().x, 3)), 6);
  EXPECT_EQ(at(CPoint(5, 3)), 0);
  EXPECT_EQ(at(CPoint(5, 250)), 0);
  EXPECT_EQ(at(CPoint(cell.CenterPoint().x, 250)), 0);
  EXPECT_EQ(at(CPoint(cell.right + 20, cell.CenterPoint().y)), 0);
  EXPECT_EQ(at(CPoint(-5, -5)), 0);
}

TEST_F(TrueDbTable, LockedCellDoesNotAllowEditing) {
  Fill(2, 2);
  grid->SetLocked(1, 1, true);
  EXPECT_FALSE(grid->GetItem(1, 1)->IsAllowEdit());
  grid->SetLocked(1, 1, false);
  EXPECT_TRUE(grid->GetItem(1, 1)->IsAllowEdit());
  grid->SetLocked(9, 9, true);
}

TEST_F(TrueDbTable, DropDownListIsReadOnlyOnCellsWithAListOnly) {
  Fill(2, 2);
  grid->GetItem(0, 0)->AddOption(_T("a"));
  for (const int column : {0, 1}) grid->SetDropDownList(0, column, true);
  EXPECT_TRUE(grid->GetItem(0, 0)->IsReadOnly());
  EXPECT_FALSE(grid->GetItem(0, 1)->IsReadOnly());
  grid->SetDropDownList(0, 0, false);
  EXPECT_FALSE(grid->GetItem(0, 0)->IsReadOnly());
  grid->SetDropDownList(9, 9, true);
}

TEST_F(TrueDbTable, CutsZerosOfDecimals) {
  const std::pair<LPCTSTR, LPCTSTR> rows[] = {{_T("12.500"), _T("12.5")}, {_T("12.000"), _T("12")},
                                              {_T("1200"), _T("1200")},   {_T("a.0"), _T("a.0")},
                                              {_T(".500"), _T(".500")},   {_T("-0.10"), _T("-0.1")},
                                              {_T(""), _T("")},           {_T("1.2.00"), _T("1.2")}};
  for (const auto& [text, cut] : rows) {
    CString changed = text;
    grid->ChangeValueItem(changed);
    EXPECT_EQ(changed, cut) << CString(text).ToUtf8();
  }
}

TEST_F(TrueDbTable, FlagsOfARowStandInItsLastColumn) {
  Fill(4, 2);
  grid->SetValue(0, 1, _variant_t(2));
  grid->SetValue(1, 1, _variant_t(9));
  grid->SetValue(2, 1, _variant_t());
  grid->SetValue(3, 1, Of(_T("text")));
  EXPECT_TRUE(grid->IsDelete(0));
  EXPECT_FALSE(grid->IsDelete(1));
  for (int row = 0; row < 5; ++row) grid->Change(row);
  EXPECT_EQ(static_cast<int>(grid->GetValue(0, 1)), 6);
  EXPECT_EQ(static_cast<int>(grid->GetValue(1, 1)), 13);
  EXPECT_EQ(static_cast<int>(grid->GetValue(2, 1)), 4);
  EXPECT_EQ(Text(3, 1), _T("text"));
  EXPECT_TRUE(grid->IsDelete(0));
  for (const int row : {1, 2, 3, 4, -1}) EXPECT_FALSE(grid->IsDelete(row)) << row;
}

TEST_F(TrueDbTable, BackColourIsTheGrids) {
  EXPECT_EQ(grid->GetBackColor(), grid->GetBkColor());
  EXPECT_EQ(grid->GetBackColor(), lorv::kWhite);
}

TEST_F(TrueDbTable, WorksWithoutAWindow) {
  CBcgTrueDbGridCtrl alone;
  alone.ReDim(2, 2);
  EXPECT_EQ(alone.GetCount(1), 2);
  alone.SetBookmark(_variant_t(1L));
  EXPECT_EQ(alone.GetBookmark().lVal, 1);
  EXPECT_EQ(alone.Append(), 2);
  alone.PostMsg(3);
}

TEST_F(TrueDbTable, SelectionMayMakeAnotherTableWhileOneIsMade) {
  const std::function<void()> deeds[] = {
      [this] { grid->RemoveAll(); },     [this] { grid->ReDim(1, 3); }, [this] { grid->DeleteColumn(0); },
      [this] { grid->DestroyWindow(); }, [this] { grid.reset(); },      [this] { sheet->DestroyWindow(); }};
  for (const auto& deed : deeds) {
    grid.reset();
    MakeSheet();
    MakeGrid();
    Fill(3, 2);
    int left = 1;
    sheet->on = [&](int event) {
      if (event == 15 && left-- > 0) deed();
    };
    grid->ReDim(4, 2);
    if (grid == nullptr) continue;
    sheet->on = nullptr;
    EXPECT_GE(grid->GetCount(1), 0);
    EXPECT_EQ(grid->GetCurSelItemID().m_nRow < grid->GetRowCount(), true);
  }
}
