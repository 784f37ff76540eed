#include <gtest/gtest.h>

#include <climits>

#include "tests/grid/basic/basic_desk.h"

// Numbers, texts and sizes that no table has: the answers are those for what is not there, nothing outside
// the table is touched, and painting costs what is visible.

namespace {

using BasicLimits = lorv_test::BasicDesk;
using Cell = CBCGPGridItemID;

constexpr int kNumbers[] = {INT_MIN, INT_MIN + 1, -32768, -2, -1, 3, 4, 32768, INT_MAX - 1, INT_MAX};

CString Long(int length) {
  CString text;
  for (int i = 0; i < 16; ++i) text += _T("梁C30*");
  while (text.GetLength() < length) text += text;
  return text.Left(length);
}

}  // namespace

TEST_F(BasicLimits, CellsThatAreNotThereAreNull) {
  Fill(3, 3);
  for (const int number : kNumbers) {
    EXPECT_EQ(grid->GetItem(number, 0), nullptr);
    EXPECT_EQ(grid->GetItem(0, number), nullptr);
    EXPECT_EQ(grid->GetItem(number, number), nullptr);
    EXPECT_EQ(grid->GetRow(number), nullptr);
    EXPECT_EQ(grid->GetValue(number, 0).vt, VT_EMPTY);
    EXPECT_EQ(grid->GetValue(0, number).vt, VT_EMPTY);
    EXPECT_EQ(grid->GetValue(number).vt, VT_I4);
    EXPECT_TRUE(grid->GetItemRect({number, 0}).IsRectEmpty());
    EXPECT_TRUE(grid->GetItemRect({0, number}).IsRectEmpty());
    EXPECT_TRUE(grid->GetRowRect(number).IsRectEmpty());
    EXPECT_EQ(grid->GetColumnWidth(number), 0);
    EXPECT_FALSE(grid->GetColumnVisible(number));
    EXPECT_FALSE(grid->IsRowSelected(number));
    EXPECT_FALSE(grid->IsColumnSelected(number));
  }
}

TEST_F(BasicLimits, SettersPassThemOver) {
  Fill(3, 3);
  for (const int number : kNumbers) {
    grid->SetValue(number, number, _variant_t(7), TRUE);
    grid->SetItemReadOnly(number, 0, true);
    grid->SetItemReadOnly(0, number, true);
    grid->SetRowReadOnly(number, true);
    grid->SetColumnReadOnly(number, true);
    grid->SetColReadOnly(number, true);
    grid->SetColumnColor(number, 5);
    grid->SetRowBackgroundColor(number, 5, true);
    grid->SetRowTextColor(number, 5);
    grid->SetBoldItem(number, number, true);
    grid->SetRowBoldText(number, true);
    grid->SetMultiLineItem(number, number, number);
    grid->SetColumnButton(number, true);
    grid->SetColumnWidth(number, 50);
    grid->SetColumnVisible(number, FALSE);
    grid->SetAllowFocus(number, false);
    EXPECT_FALSE(grid->SetButton(number, 0, true));
    EXPECT_FALSE(grid->SetButton(0, number, true));
    std::unique_ptr<CBCGPGridItem> refused(new CBCGPGridItem(_variant_t(1)));
    EXPECT_EQ(grid->ReplaceItem(number, 0, refused.get(), TRUE), 0);
    EXPECT_EQ(grid->ReplaceItem(0, number, refused.get(), TRUE), 0);
    EXPECT_EQ(grid->DeleteColumn(number), 0);
  }
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) {
      const CBCGPGridItem* item = grid->GetItem(row, column);
      CString text;
      text.Format(_T("%d"), 10 * row + column);
      EXPECT_EQ(Text(row, column), text);
      EXPECT_TRUE(item->IsAllowEdit());
      EXPECT_FALSE(item->IsReadOnly());
    }
  EXPECT_EQ(grid->GetColsWidth(), _T("80,80,80"));
}

TEST_F(BasicLimits, RowsOfAnyNumber) {
  Fill(3, 2);
  EXPECT_EQ(grid->AppendRows(INT_MIN), 0);
  EXPECT_EQ(grid->AppendRows(-1), 0);
  EXPECT_EQ(grid->InsertRows(INT_MIN, 2), 0);
  EXPECT_EQ(grid->InsertRows(-1, 2), 0);
  EXPECT_EQ(grid->InsertRows(INT_MAX, 2), 2);
  EXPECT_EQ(grid->InsertRows(0, INT_MIN), 0);
  EXPECT_EQ(grid->GetRowCount(), 5);
  EXPECT_EQ(grid->DeleteRows(INT_MIN, 1), 0);
  EXPECT_EQ(grid->DeleteRows(INT_MAX, INT_MAX), 0);
  EXPECT_EQ(grid->DeleteRows(0, INT_MIN), 0);
  EXPECT_EQ(grid->RemoveRow(INT_MIN, TRUE), 0);
  EXPECT_EQ(grid->DeleteRows(1, INT_MAX), 4);
  EXPECT_EQ(grid->GetRowCount(), 1);
}

TEST_F(BasicLimits, PlacesOfAnyNumber) {
  Fill(3, 3);
  for (const int number : kNumbers) {
    Choose(1, 1);
    grid->SetFirstRow(number);
    grid->SetCol(number);
    EXPECT_EQ(Current(), Cell(1, 1));
    grid->SetCurEditingItem(number, 0);
    EXPECT_EQ(Editor(), nullptr);
    EXPECT_FALSE(grid->SetCurSel(Cell(number, 1), lorv::kSelectAdd));
    EXPECT_FALSE(grid->SelectRow(number));
    EXPECT_FALSE(grid->SelectColumn(number));
    EXPECT_FALSE(grid->SelectRange({0, 0, number, number}));
    EXPECT_FALSE(grid->MergeRange({0, 0, number, number}));
    EXPECT_EQ(Current(), Cell(1, 1));
    int row = 0;
    int column = 0;
    EXPECT_EQ(grid->CellContaining(number, number > 4 || number < 0 ? number : -1, row, column), 0);
    grid->SetRow(number);
    EXPECT_TRUE(Current().IsNull());
  }
}

TEST_F(BasicLimits, HiddenRowsOfAnyNumberAreOnlyNumbers) {
  Fill(3, 2);
  for (const int number : kNumbers) {
    grid->SetRowVisible(number, false);
    EXPECT_TRUE(grid->IsRowHidden(number));
  }
  grid->AdjustLayout();
  EXPECT_FALSE(grid->GetRowRect(2).IsRectEmpty());
  for (const int number : kNumbers) {
    grid->SetRowVisible(number, true);
    EXPECT_FALSE(grid->IsRowHidden(number));
  }
}

TEST_F(BasicLimits, LinesOfAnyNumber) {
  Fill(2, 2);
  grid->EnableMultiLineHeader();
  for (const int number : kNumbers) {
    grid->SetHeaderLineCount(number);
    grid->AdjustLayout();
    EXPECT_GE(grid->GetHeaderRect().Height(), grid->GetRowHeight());
  }
  grid->SetHeaderLineCount(1);
  EXPECT_EQ(grid->AddMultiLineRow(INT_MAX, INT_MAX), 2);
  EXPECT_EQ(grid->AddMultiLineRow(INT_MIN, INT_MIN), 3);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetRow(2)->GetLinesNumber(), INT_MAX);
  EXPECT_EQ(grid->GetRow(3)->GetLinesNumber(), 1);
  // Coordinates of what is far down stop somewhere, and what lies behind is reached all the same.
  grid->SetRow(3);
  EXPECT_EQ(Current().m_nRow, 3);
  Run();
  EXPECT_LT(desktop.Seen(grid->m_hWnd).size(), 200u);
}

TEST_F(BasicLimits, RowHeightsOfAnyNumber) {
  Fill(3, 2);
  for (const int height : {INT_MIN, -1, 1, 19, 100000, INT_MAX}) {
    grid->SetRowHeight(height);
    grid->AdjustLayout();
    EXPECT_GE(grid->GetRowHeight(), 20);
    grid->SetRow(2);
    Key(VK_UP);
    EXPECT_EQ(Current().m_nRow, 1) << height;
  }
}

TEST_F(BasicLimits, WidthsOfAnyNumber) {
  Fill(2, 3);
  for (const int width : {INT_MIN, -1, 0}) {
    grid->SetColumnWidth(1, width);
    EXPECT_EQ(grid->GetColumnWidth(1), 0);
    grid->AdjustLayout();
    Choose(0, 0);
    Key(VK_RIGHT);
    EXPECT_EQ(Current(), Cell(0, 1));
  }
  grid->SetColumnWidth(1, INT_MAX);
  EXPECT_EQ(grid->GetColumnWidth(1), lorv::kMaxColumnWidth);
  grid->AdjustLayout();
  Choose(0, 2);
  Key(VK_LEFT);
  EXPECT_EQ(Current(), Cell(0, 1));
  EXPECT_TRUE(grid->SetColsWidth(_T("-5,99999999999,x")));
  EXPECT_EQ(grid->GetColumnWidth(0), 0);
  EXPECT_EQ(grid->AddColumn(_T("n"), -1e308, nullptr), 1);
  EXPECT_EQ(grid->AddColumn(_T("n"), 1e308, nullptr), 1);
  EXPECT_EQ(grid->GetColumnWidth(4), lorv::kMaxColumnWidth);
  Run();
}

TEST_F(BasicLimits, TextsOfAnyLength) {
  Fill(2, 2);
  constexpr int kHuge = 5'000'000;  // units: ten million bytes
  const CString text = Long(kHuge);
  grid->SetValue(0, 0, _variant_t(text), TRUE);
  EXPECT_EQ(Text(0, 0).GetLength(), kHuge);
  Run();
  EXPECT_LT(desktop.Seen(grid->m_hWnd).size(), 100u);
  Choose(0, 0);
  EXPECT_EQ(grid->GetText().GetLength(), kHuge);
  grid->SetValue(0, 1, _variant_t(CString()), TRUE);
  EXPECT_EQ(Text(0, 1), CString());
  grid->Sort(0, TRUE);
  EXPECT_EQ(Text(0, 0), _T("10"));
}

TEST_F(BasicLimits, HugeTextIsEditedWhole) {
  Fill(2, 2);
  constexpr int kLarge = 200'000;
  const CString text = Long(kLarge);
  grid->SetValue(0, 0, _variant_t(text), FALSE);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(TextOf(*Editor()).GetLength(), kLarge);
  Key(VK_RETURN);
  EXPECT_EQ(Text(0, 0), text);
  EXPECT_EQ(grid->Taken(), lorv_test::Notes{});
}

TEST_F(BasicLimits, TextThatNoEditorHoldsAsItIsStaysWhereNothingIsTyped) {
  Fill(1, 2);
  const TCHAR lone[] = {_T('a'), 0xD800, _T('b'), 0xDC00, 0};
  const TCHAR controls[] = {1, _T('\t'), 27, 127, _T('x'), 0};
  for (const CString& text :
       {CString(lone), CString(controls), CString(_T("a\r\nb\nc\rd")), CString(_T("梁\u2028柱"))}) {
    grid->SetValue(0, 0, _variant_t(text), TRUE);
    Run();
    Choose(0, 0);
    Key(VK_F2);
    ASSERT_NE(Editor(), nullptr);
    Key(VK_RETURN);
    Key(VK_ESCAPE);
    EXPECT_EQ(Text(0, 0), text);
    EXPECT_EQ(grid->Taken(), lorv_test::Notes{});
  }
}

TEST_F(BasicLimits, TenThousandColumns) {
  constexpr int kColumns = 10'000;
  for (int column = 0; column < kColumns; ++column) grid->InsertColumn(column, _T("c"), 60, -1, FALSE);
  grid->AppendRows(3);
  Run();
  grid->SetFocus();
  Choose(0, 0);
  Key(VK_END);
  EXPECT_EQ(Current(), Cell(0, kColumns - 1));
  EXPECT_EQ(grid->GetHorzScrollTotal(), 60 * kColumns);
  EXPECT_FALSE(grid->GetItemRect(Current()).IsRectEmpty());
  EXPECT_LE(grid->GetItemRect(Current()).right, grid->GetListRect().right);
  Run();
  EXPECT_LT(desktop.Seen(grid->m_hWnd).size(), 300u);
  // All of them as wide as can be: places far to the right stop short of the largest number.
  for (int column = 0; column < kColumns; ++column) grid->SetColumnWidth(column, INT_MAX);
  grid->AdjustLayout();
  EXPECT_GT(grid->GetHorzScrollTotal(), 0);
  Key(VK_HOME);
  EXPECT_EQ(Current(), Cell(0, 0));
  Key(VK_END);
  Run();
  EXPECT_EQ(Current(), Cell(0, kColumns - 1));
}

TEST_F(BasicLimits, WindowsOfNoSize) {
  Fill(4, 3);
  for (const CRect& place :
       {CRect(0, 0, 0, 0), CRect(0, 0, 1, 1), CRect(0, 0, 31, 21), CRect(0, 0, 400, 0)}) {
    grid->MoveWindow(&place);
    Run();
    Choose(0, 0);
    Key(VK_DOWN);
    Key(VK_END);
    Key(VK_NEXT);
    Type(_T("x"));
    Key(VK_ESCAPE);
    grid->SetFirstRow(2);
    grid->AdjustLayout();
    EXPECT_GE(grid->GetVisibleRows(), 0);
    EXPECT_GE(grid->GetFirstRow(), 0);
    EXPECT_FALSE(Current().IsNull());
  }
  EXPECT_EQ(Text(0, 0), _T("0"));
}

TEST_F(BasicLimits, ListsOfAHundredThousandOptions) {
  constexpr int kOptions = 100'000;
  Fill(1, 1);
  auto* item = new CBCGPGridPresentationItem(_variant_t(_T("o7")));
  item->SetPresentationStyle(lorv::kListCell);
  CString option;
  for (int i = 0; i < kOptions; ++i) {
    option.Format(_T("o%d"), i);
    item->AddOption(option);
  }
  grid->ReplaceItem(0, 0, item, FALSE);
  Choose(0, 0);
  Key(VK_F2);
  ASSERT_NE(grid->GetRow(0)->GetComboWnd(), nullptr);
  EXPECT_EQ(grid->GetRow(0)->GetComboWnd()->GetCount(), kOptions);
  EXPECT_EQ(grid->GetRow(0)->GetComboWnd()->GetCurSel(), 7);
  desktop.AnswerMenu(57665 + 99'998);
  EXPECT_TRUE(grid->ShowItemStringList(grid->GetItemRect({0, 0}).CenterPoint()));
  EXPECT_EQ(TextOf(*Editor()), _T("o99998"));
}
