#include <gtest/gtest.h>

#include "framework/objects/exceptions.h"
#include "framework/values/com_error.h"
#include "tests/grid/bridge/bridge_desk.h"

namespace {

using Cell = CBCGPGridItemID;
using lorv_test::Notes;

constexpr int kKeyF2 = VK_F2;

class TrueDbEditing : public lorv_test::BridgeDesk {
 protected:
  TrueDbEditing() { sheet->OnlyHear({1, 4, 5, 8, 25}); }
  void Edit(int row, int column, LPCTSTR text) {
    Choose(row, column);
    Type(text);
    Key(VK_RETURN);
  }
};

}  // namespace

TEST_F(TrueDbEditing, SavingIsReportedInItsOrder) {
  Fill(3, 2);
  Edit(0, 1, _T("x"));
  EXPECT_EQ(sheet->Taken(), (Notes{"OnBeforeColUpdate 1 \"1\"", "OnBeforeUpdateGrid", "OnAfterColUpdate 1",
                                   "OnAfterColEdit 1", "OnAfterUpdate"}));
  EXPECT_EQ(Text(0, 1), _T("x"));
}

TEST_F(TrueDbEditing, UnchangedTextIsNotSaved) {
  Fill(3, 2);
  Choose(0, 1);
  Key(kKeyF2);
  Key(VK_RETURN);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnAfterUpdate"}));
}

TEST_F(TrueDbEditing, CancelBeforeColumnBringsTheOldTextBack) {
  Fill(3, 2);
  sheet->cancelled = {5};
  Edit(0, 1, _T("x"));
  EXPECT_EQ(sheet->Taken(), (Notes{"OnBeforeColUpdate 1 \"1\"", "OnBeforeUpdateGrid", "OnAfterColUpdate 1",
                                   "OnAfterColEdit 1", "OnAfterUpdate"}));
  EXPECT_EQ(Text(0, 1), _T("1"));
}

TEST_F(TrueDbEditing, CancelBeforeColumnLeavesAnEmptyCellEmpty) {
  Fill(3, 2);
  grid->SetValue(0, 1, _variant_t());
  sheet->cancelled = {5};
  Edit(0, 1, _T("x"));
  EXPECT_EQ(grid->GetValue(0, 1).vt, VT_EMPTY);
}

TEST_F(TrueDbEditing, WhatTheHandlerWritesCountsForItsCancelOnly) {
  Fill(3, 2);
  sheet->on_old = [](VARIANT& old) { static_cast<_variant_t&>(old) = _variant_t(_T("mine")); };
  sheet->cancelled = {5};
  Edit(0, 1, _T("x"));
  EXPECT_EQ(Text(0, 1), _T("mine"));
  sheet->cancelled = {8};
  Edit(1, 1, _T("x"));
  EXPECT_EQ(Text(1, 1), _T("11"));
  sheet->cancelled.clear();
  Edit(2, 1, _T("x"));
  EXPECT_EQ(Text(2, 1), _T("x"));
}

TEST_F(TrueDbEditing, WhatIsNoValueCountsForNothing) {
  Fill(3, 2);
  _variant_t mine(short{5});
  sheet->cancelled = {5};
  sheet->on_old = [&](VARIANT& old) {
    VariantClear(&old);
    old.vt = VT_BYREF | VT_VARIANT;
    old.pvarVal = &mine;
  };
  Edit(0, 1, _T("x"));
  EXPECT_EQ(grid->GetValue(0, 1), mine);
  sheet->on_old = [](VARIANT& old) {
    VariantClear(&old);
    old.vt = 0x0FFF;
  };
  Edit(1, 1, _T("x"));
  EXPECT_EQ(Text(1, 1), _T("11"));
}

TEST_F(TrueDbEditing, CancelBeforeUpdateRestoresWhatIsNotEmpty) {
  Fill(3, 2);
  grid->SetValue(1, 1, _variant_t());
  sheet->cancelled = {8};
  Edit(0, 1, _T("x"));
  EXPECT_EQ(Text(0, 1), _T("1"));
  Edit(1, 1, _T("x"));
  EXPECT_EQ(Text(1, 1), _T("x"));
}

TEST_F(TrueDbEditing, WithoutUpdatesEachEditIsReportedAndTakenBack) {
  Fill(3, 2);
  grid->SetValue(1, 1, _variant_t());
  grid->SetValue(2, 1, _variant_t(12.5));
  grid->SetAllowUpdate(false);
  Edit(0, 1, _T("x"));
  EXPECT_EQ(sheet->Taken().size(), 5U);
  EXPECT_EQ(Text(0, 1), _T("1"));
  Edit(1, 1, _T("x"));
  EXPECT_EQ(grid->GetValue(1, 1).vt, VT_EMPTY);
  Edit(2, 1, _T("7"));
  EXPECT_EQ(grid->GetValue(2, 1).vt, VT_R8);
  EXPECT_EQ(Text(2, 1), _T("12.5"));
  grid->SetAllowUpdate(true);
  Edit(0, 1, _T("y"));
  EXPECT_EQ(Text(0, 1), _T("y"));
}

TEST_F(TrueDbEditing, HandlerThatRemovesAllRowsEndsTheStep) {
  Fill(3, 2);
  sheet->on = [&](int event) {
    if (event == 1) grid->RemoveAll();
  };
  Choose(1, 0);
  Type(_T("x"));
  Key(VK_RETURN);
  EXPECT_EQ(sheet->Taken(),
            (Notes{"OnBeforeColUpdate 0 \"10\"", "OnBeforeUpdateGrid", "OnAfterColUpdate 0"}));
}

TEST_F(TrueDbEditing, NothingIsReportedWithoutACurrentCell) {
  Fill(2, 2);
  CBCGPGridItem* const item = grid->GetItem(0, 0);
  grid->SetCurSel(Cell(), lorv::kSelectClear);
  sheet->Taken();
  grid->OnItemChanged(item, 0, 0);
  grid->OnItemChanged(nullptr, 0, 0);
  EXPECT_EQ(grid->EndEditItem(TRUE), FALSE);
  EXPECT_EQ(sheet->Taken(), Notes{});
}

TEST_F(TrueDbEditing, EndOfAnEditIsReportedWithACurrentCellAndSaving) {
  Fill(2, 2);
  Choose(0, 0);
  EXPECT_EQ(grid->EndEditItem(FALSE), FALSE);
  EXPECT_EQ(sheet->Taken(), Notes{});
  EXPECT_EQ(grid->EndEditItem(TRUE), TRUE);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnAfterUpdate"}));
}

TEST_F(TrueDbEditing, OldValueIsThatOfBecomingCurrent) {
  Fill(2, 2);
  Choose(1, 0);
  grid->SetValue(1, 0, _variant_t(_T("set meanwhile")));
  Type(_T("x"));
  Key(VK_RETURN);
  EXPECT_EQ(sheet->Taken().front(), "OnBeforeColUpdate 0 \"10\"");
}

TEST_F(TrueDbEditing, WhateverAHandlerRaisesIsDropped) {
  Fill(6, 2);
  const std::function<void()> raised[] = {[] { throw new CInvalidArgException; },
                                          [] { throw _com_error(E_FAIL); },
                                          [] {
                                            static _com_error failure(E_FAIL);
                                            throw &failure;
                                          },
                                          [] { throw static_cast<LPCTSTR>(_T("text")); }, [] { throw 7; }};
  int row = 0;
  for (const auto& raise : raised) {
    sheet->on = [&](int event) {
      if (event != 26 && event != -602) raise();
    };
    Edit(row, 1, _T("x"));
    EXPECT_EQ(sheet->Taken().size(), 5U) << row;
    EXPECT_EQ(Text(row, 1), _T("x"));
    ++row;
  }
}

TEST_F(TrueDbEditing, EachKeyOfAnEditorIsReportedTwice) {
  Fill(3, 2);
  Choose(0, 1);
  Key(kKeyF2);
  sheet->OnlyHear({-602, 26});
  Key('A');
  EXPECT_EQ(sheet->Taken(), (Notes{"OnKeyDownTdbgrid 65,0", "OnBeforeColEdit 1,65"}));
}

TEST_F(TrueDbEditing, ReturnWhileEditingIsReportedAsDownWithStyleTwo) {
  Fill(3, 2);
  sheet->OnlyHear({-602, 26});
  for (const auto& [style, reported] : {std::pair{emReturnDown, "OnKeyDownTdbgrid 40,0"},
                                        std::pair{emReturnRight, "OnKeyDownTdbgrid 13,0"}}) {
    grid->SetReturnToLeft(style);
    Choose(0, 0);
    Key(kKeyF2);
    sheet->Taken();
    Key(VK_RETURN);
    EXPECT_EQ(sheet->Taken().front(), reported);
  }
}

TEST_F(TrueDbEditing, HandlerCannotChangeAKeyOfAnEditorButOneOfTheGrid) {
  Fill(4, 2);
  sheet->OnlyHear({});
  sheet->on_key = [](short& key) { key = VK_DOWN; };
  Choose(0, 0);
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 0));
  sheet->on_key = nullptr;
  Key(kKeyF2);
  ASSERT_NE(Editor(), nullptr);
  Editor()->SetSel(0, 0);
  sheet->on_key = [](short& key) { key = VK_DOWN; };
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 0));
  EXPECT_EQ(Editor()->GetSel() & 0xFFFFU, 1U);
}

TEST_F(TrueDbEditing, KeysCanBeHeldButForTabReturnAndArrows) {
  Fill(4, 3);
  sheet->OnlyHear({});
  sheet->cancelled = {26};
  Choose(1, 1);
  Key(kKeyF2);
  Type(_T("a"));
  Key(VK_DELETE);
  EXPECT_EQ(TextOf(*Editor()), _T("11"));
  Key(VK_ESCAPE);
  EXPECT_NE(Editor(), nullptr);
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
  Editor()->SetSel(2, 2);
  Key(VK_TAB);
  EXPECT_NE(grid->GetCurSelItemID(), Cell(2, 1));
}

TEST_F(TrueDbEditing, DoubleClickIsReportedWithItsEdit) {
  Fill(3, 2);
  sheet->OnlyHear({-601});
  // The first click opens what can be edited, and its editor has the second one.
  grid->GetItem(1, 1)->SetReadOnly(TRUE);
  desktop.DoubleClick(Centre(1, 1));
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnDblClick"}));
  Key(VK_ESCAPE);
  Key(kKeyF2);
  EXPECT_EQ(sheet->Taken(), Notes{});
  EXPECT_EQ(grid->EditItem(nullptr), FALSE);
}

TEST_F(TrueDbEditing, ButtonAndListAreReportedByTheCurrentColumn) {
  Fill(3, 3);
  sheet->OnlyHear({33, 34});
  Choose(0, 2);
  grid->OnClickButton(CPoint(0, 0));
  grid->OnComboItemSelect();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnButtonClickGrid 2", "OnComboSelect 2"}));
  grid->SetCurSel(Cell(), lorv::kSelectClear);
  grid->OnClickButton(CPoint(0, 0));
  grid->OnComboItemSelect();
  EXPECT_EQ(sheet->Taken(), Notes{});
}

TEST_F(TrueDbEditing, FilterIsReported) {
  sheet->OnlyHear({75});
  grid->OnFilterBarChanged();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnFilterChange"}));
}

TEST_F(TrueDbEditing, WithoutAParentEventsVanish) {
  CBcgTrueDbGridCtrl alone;
  alone.Create(WS_POPUP | WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 0);
  alone.ReDim(2, 2);
  alone.SetCurSel(Cell(1, 1));
  EXPECT_EQ(alone.EndEditItem(TRUE), TRUE);
}
