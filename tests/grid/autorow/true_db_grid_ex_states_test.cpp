#include "tests/grid/autorow/auto_row_desk.h"

// The prepare row of a table that is sorted, grouped, nested, virtual or filtered.

namespace {

class AutoRowStates : public lorv_test::AutoRowDesk {
 protected:
  void TypeIntoPrepareRow() {
    Choose(grid->GetRowCount(), 0);
    Type(_T("x"));
  }
  void ExpectPlainNumbers() const {
    const int count = grid->GetRowCount();
    EXPECT_EQ(grid->Listed(), count + 1);
    for (int row = 0; row < count; ++row) {
      ASSERT_NE(grid->GetRow(row), nullptr) << row;
      EXPECT_EQ(grid->GetRow(row)->GetRowId(), row);
    }
    EXPECT_EQ(grid->GetRow(-1), nullptr);
    EXPECT_EQ(grid->GetPrepareRow()->GetRowId(), count);
  }
};

}  // namespace

TEST_F(AutoRowStates, SortedThePrepareRowStaysTheLast) {
  Fill(3);
  CBCGPGridRow* const prepare = grid->GetPrepareRow();
  for (const BOOL up : {FALSE, TRUE}) {
    grid->Sort(0, up);
    EXPECT_EQ(grid->GetPrepareRow(), prepare);
    EXPECT_EQ(Text(0, 0), up != FALSE ? "r0" : "r2");
    EXPECT_EQ(grid->GetRow(3), nullptr);
    ExpectPlainNumbers();
  }
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_EQ(grid->GetRow(3), prepare);
  EXPECT_EQ(grid->GetRow(4), nullptr);
  ExpectPlainNumbers();
  Key(VK_BACK);
  EXPECT_EQ(grid->GetRowCount(), 3);
}

TEST_F(AutoRowStates, GroupedTheGroupsComeBehindTheRows) {
  Fill(4);
  for (const int row : {0, 2}) grid->SetValue(row, 1, _variant_t(_T("odd")), FALSE);
  grid->InsertGroupColumn(0, 1);
  ASSERT_EQ(grid->GetGroupRowCount(), 2);
  ExpectPlainNumbers();
  EXPECT_EQ(grid->GetRow(4), grid->GetGroupRow(0));
  EXPECT_EQ(grid->GetRow(5), grid->GetGroupRow(1));
  EXPECT_EQ(grid->GetRow(6), nullptr);
  EXPECT_EQ(grid->GetRowsOfGroup(*grid->GetGroupRow(1)).end, 4);
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->GetRowCount(), 5);
  ExpectPlainNumbers();
  EXPECT_EQ(grid->GetRow(5), grid->GetGroupRow(0));
  Key(VK_BACK);
  EXPECT_EQ(grid->GetRowCount(), 4);
  grid->EndEditItem(FALSE);
  grid->RemoveGroupColumn(0);
  EXPECT_EQ(grid->GetRow(4), nullptr);
}

TEST_F(AutoRowStates, GroupedAndEmptyThereIsNoGroup) {
  grid->SetAutoAddRow(true);
  grid->InsertGroupColumn(0, 0);
  EXPECT_EQ(grid->GetGroupRowCount(), 0);
  for (const int row : {-1, 0, 1}) EXPECT_EQ(grid->GetRow(row), nullptr);
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->GetRowCount(), 1);
}

TEST_F(AutoRowStates, NestedRowsAreFoundByTheirNumbers) {
  Fill(2);
  CBCGPGridRow* const nested = grid->CreateRow(3);
  ASSERT_EQ(grid->GetRow(0)->AddSubItem(nested), 0);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(grid->GetRow(1), nested);
  EXPECT_EQ(grid->GetRow(0)->FindSubItemById(1), nested);
  EXPECT_EQ(Text(2, 0), "r1");
  ExpectPlainNumbers();
  grid->GetRow(0)->Expand(FALSE);
  EXPECT_EQ(grid->GetRow(1), nested);
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->GetRowCount(), 4);
  ExpectPlainNumbers();
}

TEST_F(AutoRowStates, ANestedRowIsNotInTheMainList) {
  Fill(1);
  ASSERT_EQ(grid->GetRow(0)->AddSubItem(grid->CreateRow(3)), 0);
  // The last row is nested and never counts as empty, though it is.
  EXPECT_EQ(grid->RemoveRow(grid->GetRowCount(), TRUE), 0);
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 3);
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->Listed(), 4);
  // Nor does a list in it pass on.
  grid->EndEditItem(FALSE);
  grid->GetRow(0)->GetSubItem(0)->GetItem(1)->AddOption(_T("C30"));
  grid->RemoveRow(2, TRUE);
  EXPECT_EQ(grid->At(2)->GetItem(1)->GetOptionCount(), 0);
}

TEST_F(AutoRowStates, VirtualRowsAreGivenAsTheyAre) {
  ASSERT_TRUE(grid->EnableVirtualMode(
      [](CBCGPGridRow& row, int index) { row.GetItem(0)->SetValue(_variant_t(index), FALSE); }));
  grid->SetVirtualRows(1000000);
  grid->SetAutoAddRow(true);
  EXPECT_EQ(grid->Listed(), 1000000);
  EXPECT_EQ(grid->GetRowCount(), 999999);
  EXPECT_EQ(grid->GetRow(999999), grid->GetVirtualRow(999999));
  EXPECT_NE(grid->GetRow(999999), nullptr);
  EXPECT_EQ(grid->GetRow(1000000), nullptr);
  EXPECT_EQ(grid->AddRow(TRUE), -1);
  grid->OnChangeItemValue();
  EXPECT_EQ(grid->Listed(), 1000000);
  Choose(5, 0);
  Type(_T("x"));
  EXPECT_EQ(grid->Listed(), 1000000);
}

TEST_F(AutoRowStates, HiddenRowsKeepTheirNumbers) {
  Fill(3);
  grid->SetRowVisible(1, false);
  grid->AdjustLayout();
  EXPECT_TRUE(grid->GetRowRect(1).IsRectEmpty());
  EXPECT_EQ(Text(1, 0), "r1");
  TypeIntoPrepareRow();
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_TRUE(grid->GetRowRect(1).IsRectEmpty());
  EXPECT_FALSE(grid->GetRowRect(4).IsRectEmpty());
  ExpectPlainNumbers();
}
