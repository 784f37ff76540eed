#include <gtest/gtest.h>

#include "tests/grid/basic/basic_desk.h"
#include "tests/support/whole_number_limits.h"

namespace {

using BasicCells = lorv_test::BasicDesk;
using Cell = CBCGPGridItemID;

}  // namespace

TEST_F(BasicCells, ValuesOutsideAreEmpty) {
  Fill(2, 2);
  for (const int bad : {-1, 2, 99, kMost, kLeast}) {
    EXPECT_EQ(grid->GetValue(bad, 0).vt, VT_EMPTY) << bad;
    EXPECT_EQ(grid->GetValue(0, bad).vt, VT_EMPTY) << bad;
    EXPECT_EQ(grid->GetItem(bad, 0), nullptr);
    grid->SetValue(bad, 0, _variant_t(5));
    grid->SetValue(0, bad, _variant_t(5));
    grid->SetColumnReadOnly(bad, true);
    grid->SetRowReadOnly(bad, true);
    grid->SetItemReadOnly(bad, bad, true);
    grid->SetColumnColor(bad, 0);
    grid->SetRowBackgroundColor(bad, 0, true);
    grid->SetRowTextColor(bad, 0);
    grid->SetBoldItem(bad, bad, true);
    grid->SetRowBoldText(bad, true);
    EXPECT_FALSE(grid->SetButton(bad, 0, true));
    EXPECT_FALSE(grid->SetButton(0, bad, true));
  }
  EXPECT_EQ(Text(1, 1), _T("11"));
}

TEST_F(BasicCells, CurrentRowsValueIsZeroWithoutOne) {
  Fill(2, 2);
  Choose(1, 0);
  EXPECT_EQ(grid->GetValue(1), _variant_t(_T("11")));
  EXPECT_EQ(grid->GetValue(9), _variant_t(0L));
  grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE);
  EXPECT_EQ(grid->GetValue(1), _variant_t(0L));
  EXPECT_EQ(grid->GetValue(1).vt, VT_I4);
}

TEST_F(BasicCells, TextOfTheCurrentCell) {
  Fill(2, 2);
  Choose(1, 1);
  EXPECT_EQ(grid->GetText(), _T("11"));
  EXPECT_EQ(grid->SetText(_T("C30")), 1);
  EXPECT_EQ(Text(1, 1), _T("C30"));
  grid->SetValue(1, 1, _variant_t(45000.0, VT_DATE));
  EXPECT_EQ(grid->GetText(), _T("2023-03-15"));
  grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE);
  EXPECT_EQ(grid->GetText(), _T(""));
  EXPECT_EQ(grid->SetText(_T("x")), 0);
}

TEST_F(BasicCells, SettingAValueEndsTheEditWithoutSaving) {
  Fill(2, 2);
  Choose(0, 0);
  Type(_T("typed"));
  ASSERT_NE(Editor(), nullptr);
  grid->SetValue(0, 0, _variant_t(5));
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(grid->GetValue(0, 0), _variant_t(5));
  EXPECT_EQ(grid->Taken(), lorv_test::Notes{});
}

TEST_F(BasicCells, ClearAllLeavesARowsAndColumns) {
  EXPECT_EQ(grid->ClearAll(), 0);
  Fill(2, 2);
  grid->GetItem(0, 0)->SetReadOnly();
  EXPECT_NE(grid->ClearAll(), 0);
  EXPECT_EQ(grid->GetRowCount(), 2);
  EXPECT_EQ(Text(0, 0), _T(""));
  EXPECT_EQ(grid->GetValue(1, 1).vt, VT_EMPTY);
}

TEST_F(BasicCells, ReplacedCellMayKeepTheValue) {
  Fill(2, 2);
  auto* kept = new CBCGPGridItem(_variant_t(1));
  EXPECT_EQ(grid->ReplaceItem(0, 1, kept, TRUE), 1);
  EXPECT_EQ(Text(0, 1), _T("1"));
  EXPECT_EQ(grid->GetItem(0, 1), kept);
  EXPECT_EQ(grid->ReplaceItem(1, 1, new CBCGPGridItem(_variant_t(_T("new"))), FALSE), 1);
  EXPECT_EQ(Text(1, 1), _T("new"));
  CBCGPGridItem outside{_variant_t()};
  for (const int bad : {-1, 2, 3, kMost, kLeast}) {
    EXPECT_EQ(grid->ReplaceItem(bad, 0, &outside, TRUE), 0) << bad;
    EXPECT_EQ(grid->ReplaceItem(0, bad, &outside, TRUE), 0) << bad;
  }
  EXPECT_EQ(grid->ReplaceItem(0, 0, nullptr, TRUE), 0);
}

TEST_F(BasicCells, ListsAreFilledAnew) {
  Fill(1, 1);
  CBCGPGridItem* item = grid->GetItem(0, 0);
  const CString options[] = {_T("a"), _T("b")};
  EXPECT_EQ(grid->AddStringToList(nullptr, options, 2), 0);
  EXPECT_EQ(grid->AddStringToList(item, options, 2), 1);
  EXPECT_EQ(item->GetOptionCount(), 2);
  CStringArray array;
  array.Add(_T("c"));
  EXPECT_EQ(grid->AddStringToList(item, array), 1);
  EXPECT_EQ(item->GetOptionCount(), 1);
  EXPECT_EQ(CString(item->GetOption(0)), _T("c"));
  EXPECT_EQ(grid->AddStringToList(item, options, -1), 1);
  EXPECT_EQ(item->GetOptionCount(), 0);
}

TEST_F(BasicCells, ReadOnlyCellKeepsItsGrey) {
  Fill(2, 2);
  CBCGPGridItem* item = grid->GetItem(0, 0);
  grid->SetItemReadOnly(0, 0, true);
  EXPECT_FALSE(item->IsAllowEdit());
  EXPECT_FALSE(item->IsReadOnly());
  EXPECT_EQ(item->GetBackgroundColor(), RGB(210, 210, 210));
  grid->SetItemReadOnly(0, 0, false);
  EXPECT_TRUE(item->IsAllowEdit());
  EXPECT_EQ(item->GetBackgroundColor(), RGB(210, 210, 210));
  item->SetBackgroundColor(RGB(234, 234, 234));
  grid->SetItemReadOnly(0, 0, false);
  EXPECT_EQ(item->GetBackgroundColor(), RGB(255, 255, 255));
  grid->SetColumnReadOnly(1, true);
  EXPECT_FALSE(grid->GetItem(1, 1)->IsAllowEdit());
}

TEST_F(BasicCells, ReadOnlyRowIsGreyAndThenWhite) {
  Fill(2, 2);
  grid->SetRowReadOnly(1, true);
  EXPECT_TRUE(grid->GetItem(1, 0)->IsReadOnly());
  EXPECT_EQ(grid->GetItem(1, 0)->GetBackgroundColor(), RGB(234, 234, 234));
  grid->SetRowReadOnly(1, false);
  EXPECT_FALSE(grid->GetItem(1, 0)->IsReadOnly());
  EXPECT_EQ(grid->GetItem(1, 0)->GetBackgroundColor(), RGB(255, 255, 255));
}

TEST_F(BasicCells, ReadOnlyColumnGivesNewRowsItsClass) {
  Fill(1, 2);
  grid->SetColReadOnly(1, true);
  EXPECT_TRUE(grid->GetItem(0, 1)->IsReadOnly());
  grid->AppendRows(1);
  EXPECT_TRUE(grid->GetItem(1, 1)->IsKindOf(RUNTIME_CLASS(CBCGPGridReadOnlyItem)));
  grid->SetColReadOnly(1, false);
  EXPECT_FALSE(grid->GetItem(0, 1)->IsReadOnly());
  EXPECT_EQ(grid->GetItemRTC(1), nullptr);
}

TEST_F(BasicCells, ColouredRowLeavesCellsWithAColourOfTheirOwn) {
  Fill(2, 3);
  grid->SetCurSel(Cell(1, 0));
  grid->GetItem(0, 0)->SetBackgroundColor(RGB(1, 1, 1));
  grid->GetItem(0, 1)->SetBackgroundColor(RGB(200, 230, 230));
  grid->SetRowBackgroundColor(0, RGB(9, 9, 9), false);
  EXPECT_EQ(grid->GetItem(0, 0)->GetBackgroundColor(), RGB(1, 1, 1));
  EXPECT_EQ(grid->GetItem(0, 1)->GetBackgroundColor(), RGB(9, 9, 9));
  EXPECT_EQ(grid->GetItem(0, 2)->GetBackgroundColor(), RGB(9, 9, 9));
  grid->SetRowBackgroundColor(0, RGB(8, 8, 8), true);
  EXPECT_EQ(grid->GetItem(0, 0)->GetBackgroundColor(), RGB(8, 8, 8));
  grid->SetRowTextColor(0, RGB(7, 7, 7));
  EXPECT_EQ(grid->GetItem(0, 2)->GetTextColor(), RGB(7, 7, 7));
  grid->SetColumnColor(2, RGB(6, 6, 6));
  EXPECT_EQ(grid->GetItem(1, 2)->GetBackgroundColor(), RGB(6, 6, 6));
}

TEST_F(BasicCells, SelectedRowIsColoured) {
  Fill(3, 2);
  EXPECT_TRUE(grid->IsSelRowBKColorEnabled());
  Choose(1, 0);
  EXPECT_EQ(grid->GetItem(1, 1)->GetBackgroundColor(), RGB(200, 230, 230));
  Choose(2, 0);
  EXPECT_EQ(grid->GetItem(1, 1)->GetBackgroundColor(), lorv::kNoColour);
  EXPECT_EQ(grid->GetItem(2, 1)->GetBackgroundColor(), RGB(200, 230, 230));
  grid->SelectRow(0);
  EXPECT_EQ(grid->GetItem(0, 1)->GetBackgroundColor(), lorv::kNoColour);
  grid->SetSelRowBKColor(lorv::kNoColour);
  EXPECT_FALSE(grid->IsSelRowBKColorEnabled());
  Choose(1, 0);
  EXPECT_EQ(grid->GetItem(1, 1)->GetBackgroundColor(), lorv::kNoColour);
}

TEST_F(BasicCells, BoldTakesOnlyTextCellsOfTheSuite) {
  Fill(1, 2);
  auto* text = new CBCGPGridPresentationItem(_variant_t(_T("x")));
  grid->ReplaceItem(0, 1, text, FALSE);
  grid->SetRowBoldText(0, true);
  EXPECT_EQ(text->IsBold(), 1);
  grid->SetBoldItem(0, 1, false);
  EXPECT_EQ(text->IsBold(), 0);
}

TEST_F(BasicCells, ButtonTakesTheContentsOver) {
  Fill(2, 2);
  grid->GetItem(0, 0)->SetTextColor(RGB(1, 2, 3));
  EXPECT_TRUE(grid->SetButton(0, 0, true));
  EXPECT_TRUE(grid->GetItem(0, 0)->IsKindOf(RUNTIME_CLASS(CBCGPGridButtonItem)));
  EXPECT_EQ(grid->GetItem(0, 0)->GetFlags(), 2U);
  EXPECT_EQ(Text(0, 0), _T("0"));
  EXPECT_EQ(grid->GetItem(0, 0)->GetTextColor(), RGB(1, 2, 3));
  EXPECT_FALSE(grid->SetButton(0, 0, true));
  EXPECT_FALSE(grid->SetButton(0, 0, false));
  CBCGPGridItem* plain = grid->GetItem(1, 1);
  EXPECT_FALSE(grid->SetButton(1, 1, false));
  EXPECT_EQ(grid->GetItem(1, 1), plain);
  plain->SetValue(_variant_t());
  EXPECT_TRUE(grid->SetButton(1, 1, true));
  EXPECT_EQ(grid->GetValue(1, 1), _variant_t(_T("")));
}

TEST_F(BasicCells, ButtonColumnIsForNewRows) {
  Fill(1, 1);
  grid->SetColumnButton(0, true);
  grid->AppendRows(1);
  EXPECT_TRUE(grid->GetItem(1, 0)->IsKindOf(RUNTIME_CLASS(CBCGPGridButtonItem)));
  EXPECT_EQ(grid->GetItem(1, 0)->GetFlags(), 2U);
  grid->SetColumnButton(0, false);
  EXPECT_EQ(grid->GetItemRTC(0), RUNTIME_CLASS(CBCGPGridItem));
}

TEST_F(BasicCells, ThemeIsTheSuites) {
  const BCGP_GRID_COLOR_DATA& theme = grid->GetColorTheme();
  EXPECT_EQ(theme.m_clrBackground, RGB(255, 255, 255));
  EXPECT_EQ(theme.m_clrHorzLine, RGB(128, 128, 128));
  EXPECT_EQ(theme.m_clrVertLine, RGB(128, 128, 128));
  EXPECT_EQ(theme.m_SelColors.m_clrBackground, RGB(49, 106, 197));
  EXPECT_EQ(theme.m_SelColors.m_clrText, RGB(255, 255, 255));
  EXPECT_EQ(theme.m_HeaderColors.m_clrGradient, RGB(244, 245, 248));
  EXPECT_EQ(theme.m_HeaderSelColors.m_clrBackground, RGB(251, 157, 105));
  EXPECT_EQ(theme.m_HeaderSelColors.m_clrBorder, RGB(173, 183, 205));
  grid->SetReadOnly();
  EXPECT_TRUE(grid->SetReadOnlyColor());
  EXPECT_EQ(grid->GetColorTheme().m_clrBackground, RGB(234, 234, 234));
  grid->SetReadOnly(FALSE);
  EXPECT_TRUE(grid->SetReadOnlyColor());
  EXPECT_EQ(grid->GetBkColor(), RGB(255, 255, 255));
}
