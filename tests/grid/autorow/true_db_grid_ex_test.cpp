#include "grid/autorow/true_db_grid_ex.h"

#include "tests/grid/autorow/auto_row_desk.h"

// The rules of the prepare row in a plain table.

namespace {

using AutoRow = lorv_test::AutoRowDesk;

}  // namespace

TEST_F(AutoRow, HeaderExample) {
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->Listed(), 1);
  EXPECT_EQ(grid->GetPrepareRow()->GetRowId(), 0);
}

TEST_F(AutoRow, OffItIsAnOrdinaryGrid) {
  EXPECT_EQ(grid->GetPrepareRow(), nullptr);
  EXPECT_EQ(grid->AddRow(TRUE), 0);
  EXPECT_EQ(grid->GetRowCount(), 1);
  EXPECT_NE(grid->GetRow(0), nullptr);
  EXPECT_EQ(grid->GetPrepareRow(), grid->GetRow(0));
  Choose(0, 0);
  Type(_T("x"));
  EXPECT_EQ(grid->Listed(), 1);
  grid->RemoveAll();
  EXPECT_EQ(grid->Listed(), 0);
  grid->ReDim(2, 2);
  EXPECT_EQ(grid->Listed(), 2);
}

TEST_F(AutoRow, SwitchedOnItNeedsAnEmptyRowAtTheEnd) {
  grid->AddRow(TRUE);
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->Listed(), 1);
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->Listed(), 1);
  grid->SetAutoAddRow(false);
  grid->SetValue(0, 1, _variant_t(_T("x")));
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->Listed(), 2);
  EXPECT_EQ(grid->GetRowCount(), 1);
}

TEST_F(AutoRow, SwitchedOffThePrepareRowIsAnOrdinaryOne) {
  Fill(2);
  EXPECT_EQ(grid->GetRowCount(), 2);
  grid->SetAutoAddRow(false);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(grid->Listed(), 3);
  EXPECT_NE(grid->GetRow(2), nullptr);
}

TEST_F(AutoRow, ThePrepareRowIsNotSeen) {
  Fill(2);
  EXPECT_EQ(grid->GetRow(2), nullptr);
  EXPECT_EQ(grid->GetRow(3), nullptr);
  EXPECT_EQ(grid->GetRow(-1), nullptr);
  EXPECT_EQ(grid->GetRow(1)->GetRowId(), 1);
  EXPECT_EQ(grid->GetPrepareRow(), grid->At(2));
  EXPECT_EQ(grid->GetPrepareRow()->GetRowId(), grid->GetRowCount());
  EXPECT_EQ(grid->GetItem(2, 0), nullptr);
  grid->SetValue(2, 0, _variant_t(_T("x")));
  EXPECT_EQ(grid->At(2)->GetItem(0)->FormatItem(), CString());
  EXPECT_EQ(grid->GetRowCount(TRUE), 2);
  EXPECT_EQ(grid->GetCount(1), 2);
}

TEST_F(AutoRow, ACharacterMakesItARow) {
  grid->SetAutoAddRow(true);
  Choose(0, 0);
  CBCGPGridRow* const row = grid->GetPrepareRow();
  Type(_T("x"));
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->GetRowCount(), 1);
  EXPECT_EQ(grid->Listed(), 2);
  EXPECT_EQ(grid->GetRow(0), row);
  Type(_T("yz"));
  EXPECT_EQ(grid->Listed(), 2);
  EXPECT_EQ(TextOf(*Editor()), CString(_T("xyz")));
  Key(VK_BACK);
  Key(VK_BACK);
  EXPECT_EQ(grid->GetRowCount(), 1);
  Key(VK_BACK);
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->Listed(), 1);
  EXPECT_EQ(grid->GetPrepareRow(), row);
  EXPECT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(0, 0));
}

TEST_F(AutoRow, TheKeyOfEditingMakesNoRow) {
  grid->SetAutoAddRow(true);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->Listed(), 1);
  Type(_T("x"));
  EXPECT_EQ(grid->Listed(), 2);
}

TEST_F(AutoRow, TheRowUnderTheCaretStays) {
  Fill(1);
  Choose(1, 0);
  Type(_T("x"));
  grid->EndEditItem(TRUE);
  ASSERT_EQ(grid->GetRowCount(), 2);
  // The last row is emptied, and the caret comes into the prepare row.
  grid->SetValue(1, 0, _variant_t());
  Choose(2, 0);
  CBCGPGridRow* const caret = grid->At(2);
  Key(VK_F2);
  Type(_T("y"));
  Key(VK_BACK);
  EXPECT_EQ(grid->GetRowCount(), 1);
  EXPECT_EQ(grid->GetPrepareRow(), caret);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 0));
  EXPECT_NE(Editor(), nullptr);
}

TEST_F(AutoRow, WithTheCaretElsewhereThePrepareRowGoes) {
  Fill(3);
  grid->SetValue(2, 0, _variant_t());
  CBCGPGridRow* const last = grid->At(2);
  Choose(0, 0);
  Type(_T("x"));
  EXPECT_EQ(grid->Listed(), 3);
  EXPECT_EQ(grid->GetPrepareRow(), last);
  EXPECT_EQ(grid->GetRowCount(), 2);
}

TEST_F(AutoRow, OneEmptyRowChangesNothing) {
  Fill(2);
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 3);
  Choose(1, 1);
  Type(_T("x"));
  EXPECT_EQ(grid->Listed(), 3);
  grid->SetAutoAddRow(false);
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 3);
}

TEST_F(AutoRow, HiddenColumnsDoNotCount) {
  Fill(1);
  grid->SetColumnVisible(2, FALSE);
  grid->AdjustLayout();
  grid->At(1)->GetItem(2)->SetValue(_variant_t(_T("hidden")));
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 2);
  grid->SetColumnVisible(2, TRUE);
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 3);
}

TEST_F(AutoRow, ValuesCountByTheirText) {
  Fill(1);
  for (const _variant_t& value : {_variant_t(), _variant_t(_T(""))}) {
    grid->At(1)->GetItem(0)->SetValue(value);
    grid->OnChangeItemValue();
    EXPECT_EQ(grid->Listed(), 2);
  }
  grid->At(1)->GetItem(0)->SetValue(_variant_t(0));
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 3);
}

TEST_F(AutoRow, WithSame2014AnOpenEditorDoesNotCount) {
  grid->SetIsSame2014(true);
  grid->SetAutoAddRow(true);
  Choose(0, 0);
  Type(_T("xy"));
  EXPECT_EQ(grid->Listed(), 1);
  grid->EndEditItem(TRUE);
  EXPECT_EQ(grid->Listed(), 1);
  Key(VK_F2);
  Type(_T("z"));
  EXPECT_EQ(grid->GetRowCount(), 1);
}

TEST_F(AutoRow, ASavedTextCountsThoughTheEditorIsEmpty) {
  Fill(1);
  Choose(0, 0);
  Key(VK_F2);
  Key(VK_BACK);
  EXPECT_EQ(TextOf(*Editor()), CString());
  EXPECT_EQ(grid->Listed(), 2);
}

TEST_F(AutoRow, ThePrepareRowIsNotRemovedBelowATable) {
  Fill(2);
  EXPECT_EQ(grid->RemoveRow(grid->GetRowCount(), TRUE), 0);
  EXPECT_EQ(grid->RemoveRow(7, TRUE), 0);
  EXPECT_EQ(grid->Listed(), 3);
  grid->SetValue(1, 0, _variant_t());
  EXPECT_EQ(grid->RemoveRow(grid->GetRowCount(), TRUE), 1);
  EXPECT_EQ(grid->Listed(), 2);
  EXPECT_EQ(grid->RemoveRow(0, TRUE), 1);
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->RemoveRow(0, TRUE), 0);
  EXPECT_EQ(grid->Listed(), 1);
}

TEST_F(AutoRow, SelectedRowsAreDeletedWithoutIt) {
  Fill(3);
  grid->SelectAll();
  EXPECT_EQ(grid->DeleteSelectedRows(), 3);
  EXPECT_EQ(grid->Listed(), 1);
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(AutoRow, RemoveAllMakesAFreshOne) {
  Fill(3);
  grid->RemoveAll();
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->Listed(), 1);
  EXPECT_EQ(grid->GetPrepareRow()->GetItemCount(), 3);
}

TEST_F(AutoRow, ReDimMakesATableAndAPrepareRow) {
  grid->SetAutoAddRow(true);
  grid->ReDim(3, 2);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(grid->Listed(), 4);
  EXPECT_EQ(grid->GetColumnCount(), 2);
  grid->ReDim(3, 4);
  for (int row = 0; row < 3; ++row) EXPECT_NE(grid->GetItem(row, 3), nullptr) << row;
  grid->ReDim(0, 5);
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->Listed(), 1);
  for (int column = 0; column < 5; ++column) EXPECT_NE(grid->GetPrepareRow()->GetItem(column), nullptr);
  grid->ReDim(-1, 2);
  EXPECT_EQ(grid->GetRowCount(), 0);
  // Without columns nothing is made anew.
  grid->ReDim(4, 2);
  grid->ReDim(9, 0);
  EXPECT_EQ(grid->GetRowCount(), 4);
}

TEST_F(AutoRow, ColumnsThatComeLaterReachThePrepareRow) {
  grid->SetAutoAddRow(true);
  grid->AddColumn(_T("d"), 80, nullptr);
  grid->AdjustLayout();
  Choose(0, 3);
  Type(_T("x"));
  EXPECT_EQ(grid->GetRowCount(), 1);
  EXPECT_EQ(grid->GetPrepareRow()->GetItemCount(), 4);
}

TEST_F(AutoRow, NewRowsInheritTheListsAbove) {
  Fill(5);
  CBCGPGridItem* const above = grid->GetPrepareRow()->GetItem(1);
  above->AddOption(_T("C30"));
  above->AddOption(_T("C35"));
  EXPECT_EQ(grid->AddRow(TRUE), 6);
  const CBCGPGridItem* below = grid->At(6)->GetItem(1);
  ASSERT_EQ(below->GetOptionCount(), 2);
  EXPECT_EQ(CString(below->GetOption(1)), CString(_T("C35")));
  EXPECT_NE(below->GetFlags() & lorv::kItemHasList, 0U);
  EXPECT_EQ(grid->At(6)->GetItem(0)->GetOptionCount(), 0);
  // Options that are there stay, and those of the row above come behind them.
  CBCGPGridRow* row = grid->CreateRow(3);
  row->GetItem(1)->AddOption(_T("own"));
  const int answer = grid->AddRow(row, TRUE);
  EXPECT_EQ(answer, grid->GetRowCount() - 1);
  ASSERT_EQ(row->GetItem(1)->GetOptionCount(), 3);
  EXPECT_EQ(CString(row->GetItem(1)->GetOption(0)), CString(_T("own")));
}

TEST_F(AutoRow, ListsWithoutTheFlagAreNotInherited) {
  Fill(1);
  CBCGPGridItem* const above = grid->GetPrepareRow()->GetItem(1);
  above->AddOption(_T("C30"));
  above->SetFlags();
  grid->AddRow(TRUE);
  EXPECT_EQ(grid->GetPrepareRow()->GetItem(1)->GetOptionCount(), 0);
}

TEST_F(AutoRow, ListsPassOnWithEachRowThatIsTyped) {
  grid->SetAutoAddRow(true);
  grid->GetPrepareRow()->GetItem(1)->AddOption(_T("C30"));
  for (int row = 0; row < 3; ++row) {
    Choose(row, 0);
    Type(_T("x"));
    EXPECT_EQ(grid->GetPrepareRow()->GetItem(1)->GetOptionCount(), 1);
  }
}

TEST_F(AutoRow, AddingARowGivesTheCountLessOne) {
  grid->AddRow(FALSE);
  CBCGPGridRow* row = grid->CreateRow(3);
  EXPECT_EQ(grid->AddRow(row, TRUE), 1);
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->Listed(), 2);
  EXPECT_EQ(grid->AddRow(grid->CreateRow(3), TRUE), 1);
  EXPECT_EQ(grid->AddRow(TRUE), 3);
  EXPECT_EQ(grid->AddRow(static_cast<CBCGPGridRow*>(nullptr), TRUE), -1);
  EXPECT_EQ(grid->AddRow(row, TRUE), -1);
}

TEST_F(AutoRow, TypingInALongTableAsksForNoOtherRow) {
  // The filter is asked for each row that is measured.
  class Counting : public lorv_test::AutoRowGrid {
   public:
    int asked = 0;

   protected:
    BOOL FilterItem(CBCGPGridRow* row) override {
      ++asked;
      return CBcgTrueDbGridCtrlEx::FilterItem(row);
    }
  };
  Counting counting;
  counting.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 8);
  counting.InsertColumns(_T("a,b"), _T(""), 0);
  for (int row = 0; row < 500; ++row) {
    counting.AddRow(FALSE);
    counting.SetValue(row, 0, _variant_t(row), FALSE);
  }
  counting.AdjustLayout();
  counting.SetAutoAddRow(true);
  counting.SetCurSel({500, 0});
  counting.SetFocus();
  Run();
  counting.asked = 0;
  Type(_T("x"));
  EXPECT_EQ(counting.Listed(), 502);
  EXPECT_LE(counting.asked, 2);
  // A row that was hidden meanwhile goes with the next row that comes.
  counting.SetRowVisible(499, false);
  Key(VK_BACK);
  EXPECT_EQ(counting.Listed(), 501);
  EXPECT_GT(counting.asked, 400);
  EXPECT_TRUE(counting.GetRowRect(499).IsRectEmpty());
}
