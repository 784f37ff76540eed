#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/support/member_signatures.h"

// The names that the suite's dialogs call, one by one: what changes a signature, or the order of what they
// replace, does not compile or fails here.

namespace {

using lorv_test::ExpectAscending;
using lorv_test::Has;
using lorv_test::Is;
using lorv_test::SlotOf;

using Grid = CBCGPBasicGridCtrl;
using Row = CBCGPGridRow;
using Item = CBCGPGridItem;

// What descendants see.
class Opened : public Grid {
 public:
  using Grid::CanEndInplaceEditOnChar;
  using Grid::CanMouseClick;
  using Grid::FilterItem;
  using Grid::GetThisMessageMap;
  using Grid::OnAfterInplaceEditCreated;
  using Grid::OnDrawHeader;
  using Grid::OnEndInplaceEdit;
  using Grid::OnEndLabelEdit;
  using Grid::OnGetHeaderRect;
  using Grid::OnHeaderDividerDblClick;
  using Grid::OnInplaceEditKeyDown;
  using Grid::OnInplaceEditSetSel;
  using Grid::OnNavigateItem;
  using Grid::OnPosSizeChanged;
  using Grid::OnResizeColumns;
  using Grid::OnSelChanged;
  using Grid::OnTrackHeader;
  using Grid::PreSubclassWindow;
  using Grid::PreTranslateMessage;
  using Grid::TrackToolTip;
};

class OpenedLibrary : public CBCGPGridCtrl {
 public:
  using CBCGPGridCtrl::OnDraw;
  using CBCGPGridCtrl::OnDrawItem;
  using CBCGPGridCtrl::OnDrawRowHeaderItem;
  using CBCGPGridCtrl::OnHeaderColumnClick;
  using CBCGPGridCtrl::OnSelChanging;
  using CBCGPGridCtrl::OnUpdateHScrollPos;
  using CBCGPGridCtrl::OnUpdateVScrollPos;
  using CBCGPGridCtrl::SetHeaderItemWidth;
};

}  // namespace

TEST(BasicSignatures, Columns) {
  static_assert(Is<void (Grid::*)(const CString&, const CString&, int)>(&Grid::InsertColumns));
  static_assert(Is<int (Grid::*)(LPCTSTR, double, const CRuntimeClass*)>(&Grid::AddColumn));
  static_assert(Is<int (Grid::*)(int)>(&Grid::DeleteColumn));
  static_assert(Is<bool (Grid::*)(const CString&)>(&Grid::SetColsWidth));
  static_assert(Is<CString (Grid::*)()>(&Grid::GetColsWidth));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetColumnReadOnly));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetColReadOnly));
  static_assert(Is<void (Grid::*)(int, COLORREF)>(&Grid::SetColumnColor));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetColumnButton));
  static_assert(Is<void (Grid::*)()>(&Grid::EnableMultiLineHeader));
  static_assert(Is<void (Grid::*)(int)>(&Grid::SetHeaderLineCount));
  static_assert(
      Is<CBCGPGridHeaderItem* (Grid::*)(const CArray<int, int>*, const CArray<int, int>*,
                                        CBCGPGridHeaderItem*, LPCTSTR, int, int)>(&Grid::AddHeaderItem));
  static_assert(Has<const CBCGPGridColumnsInfo& (Grid::*)() const>(&Grid::GetColumnsInfo));
  static_assert(Has<CBCGPGridColumnsInfo& (Grid::*)()>(&Grid::GetColumnsInfo));
}

TEST(BasicSignatures, Rows) {
  static_assert(Is<long (Grid::*)(int)>(&Grid::AppendRows));
  static_assert(Is<long (Grid::*)(int, int)>(&Grid::InsertRows));
  static_assert(Is<long (Grid::*)(int, int)>(&Grid::DeleteRows));
  static_assert(Is<int (Grid::*)()>(&Grid::RemoveCurRow));
  static_assert(Is<int (Grid::*)()>(&Grid::DeleteSelectedRows));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetRowVisible));
  static_assert(Is<bool (Grid::*)(int) const>(&Grid::IsRowHidden));
  static_assert(Has<void (Grid::*)(int)>(&Grid::SetRowHeight));
  static_assert(Has<void (Grid::*)()>(&Grid::SetRowHeight));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetRowReadOnly));
  static_assert(Is<void (Grid::*)(int, COLORREF, bool)>(&Grid::SetRowBackgroundColor));
  static_assert(Is<void (Grid::*)(int, COLORREF)>(&Grid::SetRowTextColor));
  static_assert(Is<void (Grid::*)(int, bool)>(&Grid::SetRowBoldText));
  static_assert(Is<Row* (Grid::*)(int)>(&Grid::CreateMultiLineRow));
  static_assert(Is<int (Grid::*)(int, int)>(&Grid::AddMultiLineRow));
  static_assert(Is<void (Grid::*)(int, int, int)>(&Grid::SetMultiLineItem));
}

TEST(BasicSignatures, Cells) {
  static_assert(Is<Item* (Grid::*)(int, int) const>(&Grid::GetItem));
  static_assert(Is<int (Grid::*)(int, int, Item*, BOOL)>(&Grid::ReplaceItem));
  static_assert(Is<void (Grid::*)(int, int, const _variant_t&, BOOL)>(&Grid::SetValue));
  static_assert(Has<_variant_t (Grid::*)(int, int) const>(&Grid::GetValue));
  static_assert(Has<_variant_t (Grid::*)(int) const>(&Grid::GetValue));
  static_assert(Is<int (Grid::*)(const CString&)>(&Grid::SetText));
  static_assert(Is<CString (Grid::*)() const>(&Grid::GetText));
  static_assert(Is<int (Grid::*)()>(&Grid::ClearAll));
  static_assert(Has<int (Grid::*)(Item*, const CString*, int)>(&Grid::AddStringToList));
  static_assert(Has<int (Grid::*)(Item*, const CStringArray&)>(&Grid::AddStringToList));
  static_assert(Is<void (Grid::*)(int, int, bool)>(&Grid::SetItemReadOnly));
  static_assert(Is<void (Grid::*)(int, int, bool)>(&Grid::SetBoldItem));
  static_assert(Is<bool (Grid::*)(int, int, bool)>(&Grid::SetButton));
}

TEST(BasicSignatures, Position) {
  static_assert(Is<void (Grid::*)(int)>(&Grid::SetRow));
  static_assert(Is<void (Grid::*)(int)>(&Grid::SetCol));
  static_assert(Is<void (Grid::*)(int)>(&Grid::SetFirstRow));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetFirstRow));
  static_assert(Is<short (Grid::*)() const>(&Grid::GetVisibleRows));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetCurrentRow));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetCurRowIndex));
  static_assert(Is<int (Grid::*)() const>(&Grid::GetCol));
  static_assert(Is<void (Grid::*)(int&, int&) const>(&Grid::GetCurSelItemIndex));
  static_assert(Is<void (Grid::*)()>(&Grid::MoveFirst));
  static_assert(Is<void (Grid::*)()>(&Grid::MoveLast));
  static_assert(Is<void (Grid::*)()>(&Grid::MoveNext));
  static_assert(Is<void (Grid::*)()>(&Grid::MovePrevious));
  static_assert(Has<int (Grid::*)(int, int, int&, int&) const>(&Grid::CellContaining));
  static_assert(Has<int (Grid::*)(CPoint, int&, int&) const>(&Grid::CellContaining));
  static_assert(Has<long long (Grid::*)(CArray<int, int>&) const>(&Grid::GetSelectRows));
  static_assert(Has<long long (Grid::*)(CArray<int, int>&) const>(&Grid::GetSelectColumns));
  static_assert(
      Is<long long (Grid::*)(CList<CBCGPGridRange, const CBCGPGridRange&>&) const>(&Grid::GetUnionCells));
  static_assert(Is<void (Grid::*)(CWnd*)>(&Grid::ShowDlg));
}

TEST(BasicSignatures, LooksAndSwitches) {
  static_assert(Is<bool (Grid::*)()>(&Grid::SetOddEvenColor));
  static_assert(Is<bool (Grid::*)()>(&Grid::SetReadOnlyColor));
  static_assert(Is<void (Grid::*)(COLORREF)>(&Grid::SetSelRowBKColor));
  static_assert(Is<bool (Grid::*)() const>(&Grid::IsSelRowBKColorEnabled));
  static_assert(Is<void (Grid::*)()>(&Grid::InitHeaderColor));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetShortCut));
  static_assert(Is<void (Grid::*)(const CUIntArray&)>(&Grid::SetNotShortCutCol));
  static_assert(Is<void (Grid::*)(emReturnStyle)>(&Grid::SetReturnToLeft));
  static_assert(Is<emReturnStyle (Grid::*)() const>(&Grid::GetReturnStyle));
  static_assert(Is<void (Grid::*)(emReturnStyle)>(&Grid::SetTabToLeft));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetReturnAddNewRow));
  static_assert(Is<bool (Grid::*)() const>(&Grid::GetReturnAddNewRow));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetDefaultSel));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetBoldColName));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetTreeGrid));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetAdjustColWidth));
  static_assert(Is<void (Grid::*)(bool)>(&Grid::SetDropdownShowOffset));
  static_assert(Has<void (Grid::*)(bool)>(&Grid::SetAllowFocus));
  static_assert(Has<void (Grid::*)(int, bool)>(&Grid::SetAllowFocus));
  static_assert(Is<void (Grid::*)(int, int)>(&Grid::SetCurEditingItem));
  static_assert(Is<bool (Grid::*)(CPoint)>(&Grid::ShowItemStringList));
  static_assert(Is<bool (Grid::*)(CPoint) const>(&Opened::CanMouseClick));
  static_assert(Is<LRESULT (Grid::*)(WPARAM, LPARAM)>(&Opened::OnEndLabelEdit));
  static_assert(Is<LRESULT (Grid::*)(WPARAM, LPARAM)>(&Opened::OnNavigateItem));
}

TEST(BasicSignatures, StylesOfKeysHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(emReturnAsIs), 0);
  EXPECT_EQ(static_cast<int>(emReturnRight), 1);
  EXPECT_EQ(static_cast<int>(emReturnDown), 2);
}

TEST(BasicSignatures, CellsAndRowsOfTheSuite) {
  using Text = CBCGPGridPresentationItem;
  using Button = CBCGPGridButtonItem;
  using Lines = CBCGPGridMultiLineRow;
  static_assert(std::is_base_of_v<Item, Text> && std::is_base_of_v<Text, Button>);
  static_assert(std::is_base_of_v<Item, CBCGPGridReadOnlyItem>);
  static_assert(std::is_base_of_v<CBCGPGridColorItem, CBCGPGridColorItemEx>);
  static_assert(std::is_base_of_v<CBCGPGridCheckItem, CBCGPGridCheckItemEx>);
  static_assert(std::is_base_of_v<Row, Lines>);
  static_assert(std::is_constructible_v<Text, const _variant_t&> && !std::is_default_constructible_v<Text>);
  static_assert(std::is_constructible_v<Button, const _variant_t&, int>);
  static_assert(!std::is_default_constructible_v<Button>);
  static_assert(std::is_constructible_v<CBCGPGridReadOnlyItem, const _variant_t&>);
  static_assert(std::is_constructible_v<CBCGPGridColorItemEx, COLORREF, CPalette*, DWORD_PTR>);
  static_assert(std::is_constructible_v<CBCGPGridCheckItemEx, bool, DWORD_PTR>);
  static_assert(std::is_constructible_v<Lines, int, DWORD_PTR, int>);
  static_assert(Is<void (Text::*)(int)>(&Text::SetBold));
  static_assert(Is<void (Text::*)(int)>(&Text::SetMultiLineItem));
  static_assert(Is<void (Text::*)(int)>(&Text::SetPresentationStyle));
  static_assert(Is<void (Button::*)(bool)>(&Button::EnableButton));
  static_assert(Is<void (Button::*)(bool)>(&Button::SetButtonItem));
  static_assert(Is<void (Button::*)(LPCTSTR)>(&Button::AppendButton));
  static_assert(Has<CStringArray& (Button::*)()>(&Button::GetBtnNames));
  static_assert(Is<void (CBCGPGridCheckItemEx::*)(bool)>(&CBCGPGridCheckItemEx::EnableNotAllSelIcon));
  static_assert(Is<void (Lines::*)(int)>(&Lines::SetMaxLines));
  static_assert(Is<void (Lines::*)(int)>(&Lines::SetMinLines));
  static_assert(Is<void (Lines::*)(int)>(&Lines::OnItemUpdate));
  static_assert(Is<Item* (Lines::*)(int, int)>(&Lines::CreateItem));
}

TEST(BasicSignatures, ClassesMakeObjectsOfThemselves) {
  for (const CRuntimeClass* made :
       {RUNTIME_CLASS(CBCGPGridPresentationItem), RUNTIME_CLASS(CBCGPGridButtonItem),
        RUNTIME_CLASS(CBCGPGridReadOnlyItem), RUNTIME_CLASS(CBCGPGridColorItemEx),
        RUNTIME_CLASS(CBCGPGridCheckItemEx), RUNTIME_CLASS(CBCGPGridMultiLineRow),
        RUNTIME_CLASS(CBCGPBasicGridCtrl)}) {
    const std::unique_ptr<CObject> object(made->CreateObject());
    ASSERT_NE(object, nullptr) << made->m_lpszClassName;
    EXPECT_EQ(object->GetRuntimeClass(), made);
  }
  EXPECT_NE(RUNTIME_CLASS(CBCGPBasicGridCtrl)->IsDerivedFrom(RUNTIME_CLASS(CBCGPGridCtrl)), FALSE);
  EXPECT_NE(RUNTIME_CLASS(CBCGPGridCtrl)->IsDerivedFrom(RUNTIME_CLASS(CBCGPWnd)), FALSE);
  EXPECT_NE(RUNTIME_CLASS(CBCGPWnd)->IsDerivedFrom(RUNTIME_CLASS(CWnd)), FALSE);
  EXPECT_NE(RUNTIME_CLASS(CWnd)->IsDerivedFrom(RUNTIME_CLASS(CCmdTarget)), FALSE);
}

TEST(BasicSignatures, ReplacedOperationsKeepTheOrderOfTheirSlots) {
  ExpectAscending({SlotOf(static_cast<const CBCGPGridColumnsInfo& (Grid::*)() const>(&Grid::GetColumnsInfo)),
                   SlotOf(static_cast<CBCGPGridColumnsInfo& (Grid::*)()>(&Grid::GetColumnsInfo)),
                   SlotOf(&Grid::CreateMultiLineRow),
                   SlotOf(&Opened::OnPosSizeChanged),
                   SlotOf(&Grid::OnClickButton),
                   SlotOf(&Grid::EndEditItem),
                   SlotOf(&Grid::AdjustLayout),
                   SlotOf(&Grid::GetExtraHierarchyOffset),
                   SlotOf(&Grid::GetHierarchyLevelOffset),
                   SlotOf(&Grid::GetLeftMarginWidth),
                   SlotOf(static_cast<void (Grid::*)()>(&Grid::SetRowHeight)),
                   SlotOf(&Opened::OnDrawHeader),
                   SlotOf(&Opened::OnGetHeaderRect),
                   SlotOf(&Opened::OnTrackHeader),
                   SlotOf(&Opened::OnHeaderDividerDblClick),
                   SlotOf(&Opened::FilterItem),
                   SlotOf(&Opened::OnEndInplaceEdit),
                   SlotOf(&Opened::OnAfterInplaceEditCreated),
                   SlotOf(&Opened::CanEndInplaceEditOnChar),
                   SlotOf(&Opened::OnInplaceEditKeyDown),
                   SlotOf(&Opened::OnInplaceEditSetSel),
                   SlotOf(&Opened::OnSelChanged),
                   SlotOf(&Opened::OnResizeColumns),
                   SlotOf(&Grid::OnGetColumnAutoSize),
                   SlotOf(&Opened::TrackToolTip)});
}

TEST(BasicSignatures, OperationsOfTheLibraryKeepTheirOrder) {
  ExpectAscending({SlotOf(&Grid::OnItemChanged), SlotOf(&Grid::EditItem), SlotOf(&Grid::OnClickButton),
                   SlotOf(&Grid::EndEditItem), SlotOf(&OpenedLibrary::OnDrawItem),
                   SlotOf(&OpenedLibrary::OnDraw), SlotOf(&OpenedLibrary::OnDrawRowHeaderItem),
                   SlotOf(&OpenedLibrary::OnHeaderColumnClick), SlotOf(&OpenedLibrary::OnUpdateVScrollPos),
                   SlotOf(&OpenedLibrary::OnUpdateHScrollPos), SlotOf(&Opened::OnInplaceEditKeyDown),
                   SlotOf(&OpenedLibrary::OnSelChanging), SlotOf(&Opened::OnSelChanged),
                   SlotOf(&OpenedLibrary::SetHeaderItemWidth), SlotOf(&Opened::TrackToolTip)});
}

TEST(BasicSignatures, NewVirtualOperationsFollowThoseOfTheLibrary) {
  ExpectAscending({SlotOf(&Grid::CreateRow), SlotOf(&Grid::SetValue), SlotOf(&Grid::ToExcel),
                   SlotOf(&Grid::FromExcel), SlotOf(&Grid::GetRow),
                   SlotOf(static_cast<int (Grid::*)(Row*, int)>(&Grid::AddRow)),
                   SlotOf(static_cast<int (Grid::*)(int)>(&Grid::AddRow)), SlotOf(&Grid::RemoveRow),
                   SlotOf(&Grid::RemoveAll), SlotOf(&Grid::GetRowCount), SlotOf(&Grid::OnComboItemSelect),
                   SlotOf(&Grid::OnItemUpdate), SlotOf(&Grid::InitGridSetting)});
}

TEST(BasicSignatures, OperationsOfCellsKeepTheirOrder) {
  using Text = CBCGPGridPresentationItem;
  using Button = CBCGPGridButtonItem;
  using Colour = CBCGPGridColorItemEx;
  ExpectAscending({SlotOf(&Text::OnDrawValue), SlotOf(&Text::OnDrawButton), SlotOf(&Text::OnUpdateValue),
                   SlotOf(&Text::SetItemChanged), SlotOf(&Text::SetInPlaceEditFont),
                   SlotOf(&Text::DoClickButton), SlotOf(&Text::OnClickButton),
                   SlotOf(&Text::AdjustButtonRect), SlotOf(&Text::NewInPlaceEdit)});
  ExpectAscending({SlotOf(&Button::OnDrawValue), SlotOf(&Button::OnClickButton),
                   SlotOf(&Button::OnClickValue), SlotOf(&Button::OnSetCursor),
                   SlotOf(&Button::CreateInPlaceEdit)});
  ExpectAscending({SlotOf(&Colour::OnDrawValue), SlotOf(&Colour::OnUpdateValue), SlotOf(&Colour::OnEdit)});
}

TEST(BasicSignatures, MessageTableHasTheRowsInTheirOrder) {
  const std::vector<std::array<UINT, 3>> expected = {
      {WM_CREATE, 0, 0},    {WM_DESTROY, 0, 0},     {WM_RBUTTONUP, 0, 0}, {WM_RBUTTONDOWN, 0, 0},
      {WM_LBUTTONUP, 0, 0}, {WM_LBUTTONDOWN, 0, 0}, {WM_SETCURSOR, 0, 0}, {WM_MOUSEMOVE, 0, 0},
      {WM_SIZE, 0, 0},      {0xC000, 0, 0},         {1025, 0, 0},         {WM_COMMAND, 1024, 1},
      {WM_COMMAND, 9, 1}};
  std::vector<std::array<UINT, 3>> rows;
  for (const AFX_MSGMAP_ENTRY* row = Opened::GetThisMessageMap()->entries; row->handler != nullptr; ++row) {
    // The number of a registered message is known once the system has given it.
    const UINT number = row->registered == &BCGM_GRID_ITEM_ENDINPLACEEDIT ? 0xC000 : row->nMessage;
    rows.push_back({number, row->nCode, row->nID});
  }
  EXPECT_EQ(rows, expected);
}
