#include <gtest/gtest.h>

#include "tests/grid/bridge/bridge_desk.h"

namespace {

using Cell = CBCGPGridItemID;
using TrueDbInput = lorv_test::BridgeDesk;
using lorv_test::Notes;

}  // namespace

TEST_F(TrueDbInput, ClickIsDownUpAndClick) {
  Fill(3, 2);
  sheet->OnlyHear({-605, -607, -600, 4});
  const CPoint at = grid->GetItemRect({1, 1}).CenterPoint();
  const std::string place = std::to_string(at.x) + "," + std::to_string(at.y);
  Click(Centre(1, 1));
  EXPECT_EQ(sheet->Taken(),
            (Notes{"OnMouseDownTdbgrid 1,0," + place, "OnMouseUpGrid 0,0," + place, "OnClick"}));
}

TEST_F(TrueDbInput, MouseFlagsBecomeTwoNumbers) {
  Fill(3, 2);
  sheet->OnlyHear({-605, -606, -607});
  const CPoint at = grid->GetItemRect({1, 1}).CenterPoint();
  const auto l = static_cast<LPARAM>(at.y << 16 | at.x);
  const std::string place = "," + std::to_string(at.x) + "," + std::to_string(at.y);
  grid->SendMessage(WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, l);
  grid->SendMessage(WM_RBUTTONUP, MK_CONTROL, l);
  grid->SendMessage(WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON | 32, l);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnMouseDownTdbgrid 2,1" + place, "OnMouseUpGrid 0,2" + place,
                                   "OnMouseMove 3,4" + place}));
}

TEST_F(TrueDbInput, BoxIsSavedBetweenUpAndClick) {
  Fill(2, 2);
  grid->ReplaceItem(1, 1, new CBCGPGridCheckItem(false), FALSE);
  Choose(0, 0);
  sheet->OnlyHear({-605, -607, -600, 4, 1});
  Click(Centre(1, 1));
  const Notes notes = sheet->Taken();
  ASSERT_EQ(notes.size(), 5U);
  EXPECT_EQ(notes[0], "OnAfterColUpdate 1");
  EXPECT_EQ(notes[3], "OnAfterUpdate");
  EXPECT_EQ(notes[4], "OnClick");
}

TEST_F(TrueDbInput, MouseDoesNotReachAColumnThatIsMasked) {
  Fill(3, 2);
  Choose(0, 0);
  grid->SetAllowFocus(1, false);
  sheet->OnlyHear({-605, -607, -600});
  Click(Centre(1, 1));
  EXPECT_EQ(sheet->Taken(), Notes{});
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
}

TEST_F(TrueDbInput, KeysAreReportedAroundTheirSteps) {
  Fill(3, 2);
  Choose(0, 0);
  sheet->OnlyHear({-602, -604, 15});
  Key(VK_DOWN);
  EXPECT_EQ(sheet->Taken(),
            (Notes{"OnKeyDownTdbgrid 40,0", "OnSelChangeGrid", "OnSelChangeGrid", "OnKeyUpTdbgrid 40,0"}));
  desktop.KeyDown(VK_SHIFT);
  desktop.KeyDown(VK_CONTROL);
  Run();
  sheet->Taken();
  Key(VK_F5);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnKeyDownTdbgrid 116,3", "OnKeyUpTdbgrid 116,3"}));
}

TEST_F(TrueDbInput, CharacterIsReportedWhenTheEditorIsOpen) {
  Fill(3, 2);
  Choose(0, 0);
  sheet->OnlyHear({-603});
  bool open = false;
  sheet->on = [&](int event) { open = open || (event == -603 && grid->GetEditingItem() != nullptr); };
  grid->SendMessage(WM_CHAR, 'x', 1);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnKeyPress 120"}));
  EXPECT_TRUE(open);
}

TEST_F(TrueDbInput, SelectionIsLeftAndThenChosen) {
  Fill(4, 3);
  Choose(0, 0);
  grid->SetCurSel(Cell(2, 1));
  EXPECT_EQ(sheet->Taken(),
            (Notes{"OnBeforeRowColChange", "OnSelChangeGrid", "OnRowColChange 0,0", "OnSelChangeGrid"}));
  grid->SetCurSel(Cell(2, 1));
  EXPECT_EQ(sheet->Taken(), Notes{});
}

TEST_F(TrueDbInput, CellIsReportedOnlyWhereItChanges) {
  Fill(4, 3);
  Choose(2, 0);
  // The whole row: the current cell stays.
  grid->SetCurSel(grid->GetRow(2), TRUE);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnBeforeRowColChange", "OnSelChangeGrid", "OnSelChangeGrid"}));
  grid->SetCurSel(Cell(2, 0));
  EXPECT_EQ(sheet->Taken(), (Notes{"OnSelChangeGrid", "OnSelChangeGrid"}));
}

TEST_F(TrueDbInput, CancelsOfTheSelectionAreNotRead) {
  Fill(4, 3);
  Choose(0, 0);
  sheet->cancelled = {15, 63};
  grid->SetCurSel(Cell(2, 1));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
}

TEST_F(TrueDbInput, HeaderIsReported) {
  Fill(4, 3);
  sheet->OnlyHear({10});
  const CPoint cell = grid->GetItemRect({0, 2}).CenterPoint();
  Click(On(*grid, static_cast<int>(cell.x), 4));
  EXPECT_EQ(sheet->Taken(), (Notes{"OnHeadClickGrid 2"}));
}

TEST_F(TrueDbInput, ColumnCannotBeMadeNarrowerButWider) {
  Fill(2, 2);
  sheet->OnlyHear({9});
  grid->SetColsWidth(_T("80,80"));
  EXPECT_EQ(grid->SetHeaderItemWidth(1, 90), TRUE);
  sheet->cancelled = {9};
  EXPECT_EQ(grid->SetHeaderItemWidth(1, 50), FALSE);
  EXPECT_EQ(grid->SetHeaderItemWidth(1, 90), FALSE);
  EXPECT_EQ(grid->GetColumnWidth(1), 90);
  EXPECT_EQ(grid->SetHeaderItemWidth(1, 100), TRUE);
  EXPECT_EQ(grid->GetColumnWidth(1), 100);
  EXPECT_EQ(sheet->Taken().back(), "OnColResizeTable 1");
}

TEST_F(TrueDbInput, DragBeginsOnTheFrameOfTheSelection) {
  Fill(4, 3);
  Choose(1, 1);
  sheet->OnlyHear({32});
  const CRect cell = grid->GetItemRect({1, 1});
  const auto drag = [&](CPoint from) {
    desktop.MoveMouse(On(*grid, static_cast<int>(from.x), static_cast<int>(from.y)));
    desktop.MouseDown();
    desktop.MoveMouse(On(*grid, static_cast<int>(from.x) + 30, static_cast<int>(from.y) + 20));
    desktop.MouseUp();
    Run();
  };
  drag(CPoint(cell.left + 1, cell.CenterPoint().y));
  EXPECT_EQ(sheet->Taken(), (Notes{"OnDragCell 0,1,1"}));
  grid->EndEditItem(FALSE);
  Choose(1, 1);
  drag(cell.CenterPoint());
  EXPECT_EQ(sheet->Taken(), Notes{});
}

TEST_F(TrueDbInput, CodeComesBackWhenTheHandlerHasEnded) {
  sheet->OnlyHear({40});
  grid->PostMsg(12);
  EXPECT_EQ(sheet->Taken(), Notes{});
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnPostEvent 12"}));
}

TEST_F(TrueDbInput, TipIsAskedForOnCellsOnly) {
  Fill(2, 2);
  sheet->OnlyHear({49});
  grid->TrackToolTip(grid->GetItemRect({1, 1}).CenterPoint());
  EXPECT_EQ(sheet->Taken(), (Notes{"OnFetchCellTipsGrid 0,1,1,0"}));
  grid->TrackToolTip(CPoint(3, 3));
  EXPECT_EQ(sheet->Taken(), Notes{});
}

TEST_F(TrueDbInput, ScrollingIsReportedWhereTheFirstRowOrColumnChanges) {
  Fill(100, 12);
  Choose(0, 0);
  sheet->OnlyHear({28, 29});
  grid->SetFirstRow(40);
  const int first = grid->GetFirstRow();
  EXPECT_EQ(sheet->Taken().back(), "OnFirstRowChange " + std::to_string(first));
  grid->SendMessage(WM_HSCROLL, SB_LINEDOWN, 0);
  EXPECT_EQ(sheet->Taken(), Notes{});
  for (int i = 0; i < 4; ++i) grid->SendMessage(WM_HSCROLL, SB_LINEDOWN, 0);
  EXPECT_EQ(sheet->Taken(), (Notes{"OnLeftColChange 1"}));
}

TEST_F(TrueDbInput, RowsAndMarkedColumnsAskForTheirStyle) {
  Fill(2, 3);
  sheet->OnlyHear({36, 38, 51});
  grid->SetFetchColumnsStyle(std::vector<int>{0, 2}, true);
  grid->SetFetchColumnStyle(2, false);
  grid->SetFetchRowStyle(true);
  grid->Invalidate();
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnFetchCellStyle 0,0,0,0", "OnFetchRowStyle 0,0",
                                   "OnFetchCellStyle 0,0,1,0", "OnFetchRowStyle 0,1", "OnPaintGrid"}));
  grid->SetFetchStyle(false);
  grid->SetFetchRowStyle(false);
  grid->Invalidate();
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnPaintGrid"}));
}

TEST_F(TrueDbInput, ColumnThirtyOneNeverAsks) {
  Fill(1, 34);
  sheet->OnlyHear({36});
  grid->SetFetchStyle(true);
  grid->Invalidate();
  Run();
  const Notes notes = sheet->Taken();
  EXPECT_EQ(notes.size(), 33U);
  EXPECT_EQ(std::count(notes.begin(), notes.end(), "OnFetchCellStyle 0,0,0,31"), 0);
}

TEST_F(TrueDbInput, RowHeightIsReportedOnceAndMayBeKept) {
  Fill(3, 2);
  sheet->OnlyHear({13});
  grid->SetRowHeight(40);
  grid->AdjustLayout();
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnRowResize"}));
  grid->Invalidate();
  Run();
  EXPECT_EQ(sheet->Taken(), Notes{});
  sheet->cancelled = {13};
  grid->SetRowHeight(30);
  grid->AdjustLayout();
  Run();
  EXPECT_EQ(sheet->Taken(), (Notes{"OnRowResize"}));
  // What was kept shows with the next layout.
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetRowHeight(), 40);
}

TEST_F(TrueDbInput, EventsThatNothingRaisesAreNeverHeard) {
  Fill(3, 2);
  sheet->OnlyHear({16, 30, 55, 57, 58});
  Type(_T("x"));
  Key(VK_RETURN);
  Click(Centre(1, 1));
  EXPECT_EQ(sheet->Taken(), Notes{});
}
