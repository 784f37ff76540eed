#include <gtest/gtest.h>

#include "tests/grid/basic/gesture_desk.h"

namespace {

using BasicMouse = lorv_test::GestureDesk;
using Cell = CBCGPGridItemID;

}  // namespace

TEST_F(BasicMouse, ASingleClickOpensTheEditor) {
  Fill(5, 4);
  Click(Middle(2, 1));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
  ASSERT_NE(grid->GetInPlaceWnd(), nullptr);
  EXPECT_EQ(TextOf(*grid->GetInPlaceWnd()), _T("21"));
  EXPECT_TRUE(Idle());
}

TEST_F(BasicMouse, OnItsButtonAClickOpensNothing) {
  Fill(3, 3);
  auto* cell = new CBCGPGridPresentationItem(_variant_t(_T("x")));
  cell->SetPresentationStyle(2);
  grid->ReplaceItem(1, 1, cell, FALSE);
  Click(cell->GetButtonRect().CenterPoint());
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
  EXPECT_EQ(grid->Taken(), (lorv_test::Notes{"button"}));
  Click(Middle(1, 1));
  EXPECT_NE(grid->GetInPlaceWnd(), nullptr);
}

TEST_F(BasicMouse, OutsideTheListAClickOpensNothing) {
  Fill(3, 3);
  Click({Left(1) + 40, 10});
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
  Click({10, Top(1) + 10});
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
}

TEST_F(BasicMouse, BesideAllCellsTheCurrentOneIsOpened) {
  Fill(3, 3);
  grid->SetCurSel(Cell(1, 1));
  Click({Left(4), Top(10)});
  EXPECT_EQ(grid->GetEditingItem(), grid->GetItem(1, 1));
}

TEST_F(BasicMouse, LockedCellsStayClosed) {
  Fill(3, 3);
  grid->SetItemReadOnly(0, 0, true);
  Click(Middle(0, 0));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
}

TEST_F(BasicMouse, MaskedColumnsTakeNoClick) {
  Fill(4, 4);
  grid->SetAllowFocus(1, false);
  EXPECT_FALSE(grid->CanMouseClick(Middle(0, 1)));
  EXPECT_TRUE(grid->CanMouseClick(Middle(0, 2)));
  EXPECT_TRUE(grid->CanMouseClick({Left(1) + 40, 10})) << "its header is no cell";
  Click(Middle(2, 1));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
  Click(Middle(2, 1), VK_RBUTTON);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
  grid->SetAllowFocus(1, true);
  Click(Middle(2, 1));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
}

TEST_F(BasicMouse, Column31HasNoSwitch) {
  Fill(2, 33);
  for (int column = 0; column < 31; ++column) grid->SetColumnVisible(column, FALSE);
  grid->AdjustLayout();
  grid->SetAllowFocus(31, false);
  EXPECT_TRUE(grid->CanMouseClick(Middle(0, 0)));
  grid->SetAllowFocus(false);
  EXPECT_TRUE(grid->CanMouseClick(Middle(0, 0))) << "column 31";
  EXPECT_FALSE(grid->CanMouseClick(Middle(0, 1))) << "column 32";
  grid->SetAllowFocus(true);
  EXPECT_TRUE(grid->CanMouseClick(Middle(0, 1)));
}

TEST_F(BasicMouse, AReleaseOverAMaskedColumnDoesNothingButEndTheGesture) {
  Fill(4, 4);
  grid->SetAllowFocus(2, false);
  Drag(Middle(1, 0), Middle(1, 2));
  EXPECT_EQ(Selected(), "0,1-2,1");
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicMouse, DraggingSelectsAndThenOpensTheFirstCell) {
  Fill(4, 4);
  Drag(Middle(1, 1), Middle(2, 2));
  EXPECT_EQ(Selected(), "1,1-2,2");
  EXPECT_EQ(grid->GetEditingItem(), grid->GetItem(1, 1));
}

TEST_F(BasicMouse, CursorShowsWhatAPressWouldDo) {
  Fill(4, 4);
  const auto over = [&](CPoint at) {
    Move(at);
    return desktop.Cursor();
  };
  EXPECT_EQ(over({10, Top(1) - 1}), lorv::kCursorSizeDown);
  EXPECT_EQ(over({10, Top(1) + 10}), lorv::kCursorArrow);
  EXPECT_EQ(over({Left(1) - 1, 10}), lorv::kCursorSizeAcross) << "the library's own step";
  Select({0, 0, 0, 0});
  EXPECT_EQ(over(Handle()), lorv::kCursorArrow) << "without filling the corner is a cell";
  grid->SetDragCopyFill(true);
  EXPECT_EQ(over(Handle()), lorv::kCursorCross);
  EXPECT_EQ(grid->OnSetCursor(grid.get(), HTCLIENT, WM_MOUSEMOVE), TRUE);
}

TEST_F(BasicMouse, ARightPressOnASelectedHeaderKeepsTheSelection) {
  Fill(5, 4);
  Select({0, 1, 3, 3});
  Click({10, Top(2) + 10}, VK_RBUTTON);
  EXPECT_EQ(Selected(), "0,1-3,3");
  Select({1, 0, 2, 4});
  Click({Left(2) + 10, 10}, VK_RBUTTON);
  EXPECT_EQ(Selected(), "1,0-2,4");
  EXPECT_FALSE(grid->InGesture());
}

TEST_F(BasicMouse, ARightPressOnAnotherHeaderSelectsIt) {
  Fill(5, 4);
  Select({0, 1, 3, 3});
  Click({10, Top(4) + 10}, VK_RBUTTON);
  EXPECT_EQ(Selected(), "0,4-3,4");
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(4, 0));
  Select({0, 0, 1, 0});
  Click({Left(2) + 10, 10}, VK_RBUTTON);
  EXPECT_EQ(Selected(), "2,0-2,4");
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 2));
}

TEST_F(BasicMouse, ARightPressInACellKeepsASelectionThatHoldsIt) {
  Fill(5, 4);
  Select({0, 1, 3, 3});
  Click(Middle(2, 2), VK_RBUTTON);
  EXPECT_EQ(Selected(), "0,1-3,3");
  Click(Middle(4, 2), VK_RBUTTON);
  EXPECT_EQ(Selected(), "2,4-2,4");
}

TEST_F(BasicMouse, ColumnsThatFitAgainComeHome) {
  Fill(3, 6);
  grid->SetColumnWidth(5, 70);
  grid->AdjustLayout();
  Click(Middle(0, 0));
  grid->EndEditItem(FALSE);
  Move({Left(1) - 1, 10});
  desktop.ScrollBar(grid->m_hWnd, SB_HORZ, SB_THUMBTRACK, 60);
  Run();
  EXPECT_EQ(grid->GetHorzScrollOffset(), 60);
  Drag({Left(3) - 61, 10}, {Left(1), 10});
  EXPECT_EQ(grid->GetHorzScrollOffset(), 0);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicMouse, LosingTheMouseEndsWhatFollowsIt) {
  Fill(5, 4);
  Press(Middle(1, 1));
  EXPECT_TRUE(grid->InGesture());
  EXPECT_EQ(desktop.Capture(), grid->m_hWnd);
  desktop.SetCapture(top.m_hWnd);
  EXPECT_FALSE(grid->InGesture());
  desktop.SetCapture(nullptr);
  Press({Left(1) - 1, 10});
  EXPECT_TRUE(grid->InGesture());
  grid->SendMessage(WM_CANCELMODE, 0, 0);
  EXPECT_TRUE(Idle());
  Press(Middle(2, 2));
  EXPECT_TRUE(grid->InGesture());
  grid->DestroyWindow();
  EXPECT_TRUE(Idle());
}

TEST_F(BasicMouse, APressWhoseHandlersWorkItsReleaseStartsNothing) {
  Fill(5, 4);
  grid->quiet_selection = false;
  grid->on = [&](const std::string& what) {
    if (what == "chosen 2,2") Run();
  };
  Click(Middle(2, 2));
  desktop.Click(On(*grid, Left(3) + 40, Top(3) + 10));
  Run();
  grid->on = [&](const std::string& what) {
    if (what == "chosen 2,2") Run();
  };
  desktop.Click(On(*grid, Left(2) + 40, Top(2) + 10));
  Run();
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 2));
  EXPECT_TRUE(Idle());
}
