#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/grid/basic/gesture_desk.h"

namespace {

class BasicFill : public lorv_test::GestureDesk {
 protected:
  void Table(int rows, int columns) {
    Fill(rows, columns);
    grid->SetDragCopyFill(true);
  }
  void Numbers(int column, int first, int count) {
    for (int i = 0; i < count; ++i) Put(first + i, column, i + 1);
  }
};

// The private operations by the names that the suite knows them by. An explicit instantiation may name them.
template <class Tag, auto member>
struct Opens {
  friend auto MemberOf(Tag /*tag*/) { return member; }
};

}  // namespace

#define LORV_OPEN(name)                                         \
  namespace {                                                   \
  struct Tag_##name {                                           \
    friend auto MemberOf(Tag_##name tag);                       \
  };                                                            \
  template struct Opens<Tag_##name, &CBCGPBasicGridCtrl::name>; \
  }

LORV_OPEN(IsInRowHeaderDivider)
LORV_OPEN(OnLBtnDownAdjustRowHeight)
LORV_OPEN(OnLBtnUpAdjustRowHeight)
LORV_OPEN(TrackRowHeader)
LORV_OPEN(DrawAdjustingRowRefLn)
LORV_OPEN(DealWithTrackBestFitCol)
LORV_OPEN(OnLBtnDownDragCopyFill)
LORV_OPEN(OnLBtnUpDragCopyFill)
LORV_OPEN(DrawDragCopyFillFrame)
LORV_OPEN(IsInDragCopyFillStart)
LORV_OPEN(CopyRangeValue)
LORV_OPEN(GetDragCopyFillTips)
LORV_OPEN(GetInVisibleColCount)
LORV_OPEN(GetOffsetVisibleCol)
LORV_OPEN(adjusted_row_height_)

TEST_F(BasicFill, DownwardsTheSourceRepeats) {
  Table(12, 3);
  Numbers(1, 0, 3);
  Select({1, 0, 1, 2});
  Press(Handle());
  EXPECT_TRUE(grid->InGesture());
  Move(Middle(9, 1));
  EXPECT_EQ(grid->GetDragFrame(), CRect(Left(1), Top(0), Left(2), Top(10)));
  EXPECT_EQ(Tip(), "1");
  Release();
  EXPECT_EQ(Down(1, 0, 10), "1 2 3 1 2 3 1 2 3 1 101");
  EXPECT_EQ(Selected(), "1,0-1,9");
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(0, 1));
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr) << "the library saw no button";
  EXPECT_TRUE(Idle());
  EXPECT_EQ(Tip(), "none");
  EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
}

TEST_F(BasicFill, PressAfterItsOwnReleaseEndsWithTheNextMove) {
  Table(6, 3);
  Select({1, 0, 1, 1});
  const CPoint handle = Handle();
  const auto send = [&](UINT message, CPoint at) { grid->SendMessage(message, 0, MAKELPARAM(at.x, at.y)); };
  Move(Middle(5, 2));
  send(WM_LBUTTONDOWN, handle);
  EXPECT_TRUE(grid->InGesture());
  send(WM_MOUSEMOVE, Middle(3, 1));
  EXPECT_EQ(grid->GetDragFrame(), CRect(Left(1), Top(0), Left(2), Top(4))) << "a program that moves goes on";
  Move(Middle(4, 1));
  EXPECT_TRUE(Idle()) << "the user's mouse has no button down";
  EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
  EXPECT_EQ(Down(1, 2, 4), "21 31 41");
}

TEST_F(BasicFill, UpwardsTheNearestGetsTheNearest) {
  Table(8, 3);
  Numbers(1, 4, 3);
  Select({1, 4, 1, 6});
  Press(Handle());
  Move(Middle(2, 1));
  EXPECT_EQ(Tip(), "2");
  Release();
  EXPECT_EQ(Down(1, 1, 7), "11 2 3 1 2 3 71");
  EXPECT_EQ(Selected(), "1,2-1,6");
}

TEST_F(BasicFill, ToTheRightAndToTheLeft) {
  Table(4, 5);
  Select({1, 1, 2, 2});
  DragFill(Middle(1, 4));
  EXPECT_EQ(Across(1, 0, 4), "10 11 12 11 12");
  EXPECT_EQ(Across(2, 0, 4), "20 21 22 21 22");
  EXPECT_EQ(Selected(), "1,1-4,2");
  Select({3, 0, 4, 0});
  Press(Handle());
  Move(Middle(0, 0));
  EXPECT_EQ(Tip(), "4");
  Release();
  EXPECT_EQ(Across(0, 0, 4), "4 3 4 3 4");
  EXPECT_EQ(Selected(), "0,0-4,0");
}

TEST_F(BasicFill, NoSeriesIsContinued) {
  Table(6, 2);
  grid->GetItem(0, 0)->SetValue(_variant_t(1), FALSE);
  grid->GetItem(1, 0)->SetValue(_variant_t(2), FALSE);
  Select({0, 0, 0, 1});
  DragFill(Middle(3, 0));
  EXPECT_EQ(Down(0, 0, 3), "1 2 1 2");
  EXPECT_EQ(grid->GetItem(3, 0)->GetValue().vt, VT_I4) << "values with their kinds";
}

TEST_F(BasicFill, AFrameThatDidNotLeaveTheSourceChangesNothing) {
  Table(5, 3);
  Select({1, 1, 1, 2});
  grid->quiet_selection = false;
  Click(Handle());
  EXPECT_EQ(Down(1, 0, 4), "1 11 21 31 41");
  EXPECT_EQ(Selected(), "1,1-1,2");
  Press(Handle());
  Move(Middle(4, 1));
  Move(Middle(1, 1));
  EXPECT_EQ(grid->GetDragFrame(), CRect(Left(1), Top(1), Left(2), Top(3)));
  EXPECT_EQ(Tip(), "none");
  Release();
  EXPECT_EQ(Down(1, 0, 4), "1 11 21 31 41");
  EXPECT_EQ(Selected(), "1,1-1,2");
  EXPECT_TRUE(grid->Taken().empty());
}

TEST_F(BasicFill, LockedCellsKeepTheirValuesAndTheWalkGoesOn) {
  Table(8, 2);
  Numbers(0, 0, 2);
  grid->SetItemReadOnly(3, 0, true);
  grid->GetItem(4, 0)->SetReadOnly(TRUE);
  Select({0, 0, 0, 1});
  DragFill(Middle(6, 0));
  EXPECT_EQ(Down(0, 0, 7), "1 2 1 30 40 2 1 70");
}

TEST_F(BasicFill, AHiddenColumnGetsNothingAndUsesUpNoSource) {
  Table(3, 6);
  grid->SetColumnVisible(3, FALSE);
  grid->AdjustLayout();
  Select({0, 0, 1, 0});
  Press(Handle());
  Move(Middle(0, 4));
  EXPECT_EQ(grid->GetDragFrame().right, Left(5));
  EXPECT_EQ(Tip(), "0");
  Release();
  EXPECT_EQ(Across(0, 0, 5), "0 1 0 3 1 0");
}

TEST_F(BasicFill, HiddenRowsAreFilled) {
  Table(6, 2);
  grid->SetRowVisible(2, false);
  grid->AdjustLayout();
  Select({0, 0, 0, 0});
  DragFill(Middle(3, 0));
  EXPECT_EQ(Down(0, 0, 5), "0 0 0 0 0 50") << "the fourth row shown is row 4";
}

TEST_F(BasicFill, OnlyWhenEnabledAndOnlyOnTheHandle) {
  Fill(5, 3);
  Select({1, 1, 1, 1});
  DragFill(Middle(3, 1));
  EXPECT_EQ(Down(1, 0, 4), "1 11 21 31 41");
  grid->SetDragCopyFill(true);
  Select({1, 1, 1, 1});
  Drag(CPoint(Handle() - CSize(3, 3)), Middle(3, 1));
  EXPECT_EQ(Down(1, 0, 4), "1 11 21 31 41");
  Select({1, 1, 1, 1});
  Drag(CPoint(Handle() + CSize(3, 2)), Middle(3, 1));
  EXPECT_EQ(Down(1, 0, 4), "1 11 21 31 41");
  Select({1, 1, 1, 1});
  Drag(CPoint(Handle() + CSize(2, 2)), Middle(3, 1));
  EXPECT_EQ(Down(1, 0, 4), "1 11 11 11 41") << "a pixel beside the corner belongs to it";
}

TEST_F(BasicFill, TheFrameCountsNotWhereTheButtonGoesUp) {
  Table(8, 3);
  Select({1, 0, 1, 0});
  Press(Handle());
  Move(Middle(3, 1));
  Move({Left(1) + 20, Top(11)});
  EXPECT_EQ(grid->GetDragFrame().bottom, Top(4)) << "below the last row there is no cell";
  EXPECT_EQ(Tip(), "1");
  Move({-50, 600});
  Release();
  EXPECT_EQ(Down(1, 0, 4), "1 1 1 1 41");
  EXPECT_TRUE(Idle());
}

TEST_F(BasicFill, TheFrameGoesWithTheCellsThatScroll) {
  Table(60, 3);
  Select({1, 0, 1, 1});
  Press(Handle());
  Move(Middle(6, 1));
  desktop.Wheel(-120);
  Run();
  EXPECT_GT(grid->GetVertScrollOffset(), 0);
  EXPECT_EQ(grid->GetDragFrame().bottom, Top(7) - grid->GetVertScrollOffset());
  Release();
  EXPECT_EQ(Down(1, 0, 7), "1 11 1 11 1 11 1 71");
}

TEST_F(BasicFill, CellsAreSetWithoutRedrawAndShownOnce) {
  Table(12, 4);
  Select({0, 0, 3, 1});
  Press(Handle());
  Move(Middle(9, 0));
  int sets = 0;
  int redraws = 0;
  CRect dirty;
  grid->on_set = [&](int, int, BOOL redraw) {
    ++sets;
    redraws += redraw != FALSE ? 1 : 0;
    if (sets == 1) grid->ValidateRect(nullptr);
    grid->GetUpdateRect(&dirty);
    EXPECT_TRUE(dirty.IsRectEmpty());
  };
  grid->paints = 0;
  Release();
  EXPECT_EQ(sets, 8 * 4);
  EXPECT_EQ(redraws, 0);
  EXPECT_EQ(grid->paints, 1);
}

TEST_F(BasicFill, OtherButtonsAreNotSeenWhileItRuns) {
  Table(6, 3);
  Select({1, 0, 1, 0});
  Press(Handle());
  Move(Middle(3, 1));
  desktop.MouseDown(VK_RBUTTON), desktop.MouseUp(VK_RBUTTON), desktop.MouseDown();
  Run();
  EXPECT_EQ(Selected(), "1,0-1,0");
  EXPECT_TRUE(grid->InGesture());
  Release();
  EXPECT_EQ(Down(1, 0, 4), "1 1 1 1 41");
  EXPECT_TRUE(Idle());
}

TEST_F(BasicFill, WithoutASelectionAtTheEndItRaises) {
  Table(5, 3);
  Select({1, 1, 1, 1});
  Press(Handle());
  grid->SetCurSel(CBCGPGridItemID(), lorv::kSelectClear);
  CInvalidArgException* raised = nullptr;
  try {
    Release();
  } catch (CInvalidArgException* failure) {
    raised = failure;
  }
  ASSERT_NE(raised, nullptr);
  raised->Delete();
  EXPECT_TRUE(Idle());
}

TEST_F(BasicFill, ATableEmptiedUnderTheMouseEndsIt) {
  Table(5, 3);
  Select({1, 1, 1, 1});
  Press(Handle());
  Move(Middle(3, 1));
  grid->RemoveAll();
  Move(Middle(4, 1));
  EXPECT_TRUE(Idle());
  Release();
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(BasicFill, LosingTheMouseFillsNothing) {
  Table(6, 3);
  Select({1, 1, 1, 1});
  for (const bool cancelled : {false, true}) {
    Press(Handle());
    Move(Middle(4, 1));
    if (cancelled)
      grid->SendMessage(WM_CANCELMODE, 0, 0);
    else
      desktop.SetCapture(top.m_hWnd);
    EXPECT_FALSE(grid->InGesture());
    EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
    EXPECT_EQ(Tip(), "none");
    desktop.SetCapture(nullptr);
    desktop.MouseUp();
    Run();
    grid->EndEditItem(FALSE);
    EXPECT_EQ(Down(1, 0, 5), "1 11 21 31 41 51");
  }
}

TEST_F(BasicFill, AHandlerMayEndTheGrid) {
  Table(30, 3);
  Select({0, 0, 2, 0});
  int sets = 0;
  grid->on_set = [&](int, int, BOOL) {
    if (++sets == 5) grid.reset();
  };
  DragFill(Middle(9, 0));
  EXPECT_EQ(sets, 5);
  EXPECT_EQ(desktop.Capture(), nullptr);
}

TEST_F(BasicFill, AHandlerMayEmptyTheTableOrTakeColumns) {
  Table(30, 3);
  Select({0, 0, 2, 0});
  int sets = 0;
  grid->on_set = [&](int, int, BOOL) {
    if (++sets == 5) grid->RemoveAll();
  };
  DragFill(Middle(9, 0));
  EXPECT_EQ(sets, 5);
  EXPECT_TRUE(Idle());
  grid->on_set = nullptr;
  grid->AppendRows(9);
  Select({0, 0, 2, 1});
  grid->on_set = [&](int, int, BOOL) {
    if (grid->GetColumnCount() > 1) grid->DeleteColumn(0);
  };
  DragFill(Middle(5, 0));
  EXPECT_EQ(grid->GetColumnCount(), 1);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicFill, WhatAHandlerThrowsGoesOnAndTheGridIsIdle) {
  Table(9, 3);
  Select({1, 0, 1, 0});
  int sets = 0;
  grid->on_set = [&](int, int, BOOL) {
    if (++sets == 3) throw std::runtime_error("refused");
  };
  EXPECT_THROW(DragFill(Middle(6, 1)), std::runtime_error);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(Down(1, 0, 3), "1 1 1 31");
  EXPECT_EQ(Selected(), "1,0-1,0");
}

TEST_F(BasicFill, OperationsByTheirNames) {
  Table(6, 4);
  grid->SetColumnVisible(2, FALSE);
  grid->AdjustLayout();
  const CBCGPBasicGridCtrl& plain = *grid;
  EXPECT_EQ((plain.*MemberOf(Tag_GetInVisibleColCount{}))(0, 99), 1);
  EXPECT_EQ((plain.*MemberOf(Tag_GetInVisibleColCount{}))(-1, 3), 0);
  EXPECT_EQ((plain.*MemberOf(Tag_GetOffsetVisibleCol{}))(1, 1), 3);
  EXPECT_EQ((plain.*MemberOf(Tag_GetOffsetVisibleCol{}))(3, 1), -1);
  CBCGPBasicGridCtrl& open = *grid;
  const auto copy = [&](const CBCGPGridRange& from, const CBCGPGridRange& to, bool across) {
    return (open.*MemberOf(Tag_CopyRangeValue{}))(from, to, across, true);
  };
  EXPECT_FALSE(copy({0, 0, 0, 0}, {0, 1, 1, 2}, false));
  EXPECT_FALSE(copy({}, {0, 1, 0, 2}, false));
  EXPECT_EQ(Down(0, 0, 3), "0 10 20 30");
  EXPECT_TRUE(copy({0, 0, 0, 0}, {0, 1, 0, 2}, false));
  EXPECT_EQ(Down(0, 0, 3), "0 0 0 30");
  Select({1, 1, 1, 1});
  EXPECT_TRUE((plain.*MemberOf(Tag_IsInDragCopyFillStart{}))(Handle()));
  EXPECT_FALSE((plain.*MemberOf(Tag_IsInDragCopyFillStart{}))(Middle(1, 1)));
  const CRect source = grid->GetRangeRect({1, 1, 1, 1});
  const auto tip = MemberOf(Tag_GetDragCopyFillTips{});
  EXPECT_EQ((plain.*tip)({1, 1, 1, 1}, source, CRect(source.left, source.top, source.right, Top(4))),
            _T("11"));
  EXPECT_TRUE((plain.*tip)({1, 1, 1, 1}, source, source).IsEmpty());
  EXPECT_TRUE((plain.*tip)({}, source, CRect(source.left, source.top, source.right, Top(4))).IsEmpty());
  EXPECT_TRUE((open.*MemberOf(Tag_DealWithTrackBestFitCol{}))(true)) << "without a divider";
  EXPECT_FALSE((open.*MemberOf(Tag_OnLBtnUpAdjustRowHeight{}))(0, Middle(0, 0)));
  EXPECT_FALSE((open.*MemberOf(Tag_OnLBtnUpDragCopyFill{}))(0, Middle(0, 0)));
  EXPECT_FALSE((open.*MemberOf(Tag_DrawDragCopyFillFrame{}))(0, Middle(0, 0)));
  EXPECT_FALSE((open.*MemberOf(Tag_OnLBtnDownAdjustRowHeight{}))(0, Middle(0, 0)));
  EXPECT_FALSE((open.*MemberOf(Tag_OnLBtnDownDragCopyFill{}))(0, Middle(0, 0)));
}

TEST_F(BasicFill, RowStepsByTheirNames) {
  Table(6, 4);
  CBCGPBasicGridCtrl& open = *grid;
  EXPECT_TRUE((open.*MemberOf(Tag_IsInRowHeaderDivider{}))({5, Top(2) - 1}));
  EXPECT_EQ(grid->m_nTrackRow, 1);
  const auto track = MemberOf(Tag_TrackRowHeader{});
  int& height = open.*MemberOf(Tag_adjusted_row_height_{});
  (open.*track)(Top(2) + 5);
  EXPECT_EQ(height, 25);
  (open.*track)(0);
  EXPECT_EQ(height, 25);
  height = 0;
  (open.*track)(Top(2));
  EXPECT_EQ(height, 18);
  height = 10;
  (open.*track)(Top(2) + 20);
  EXPECT_EQ(height, 30);
  (open.*track)(1);
  EXPECT_EQ(height, 18);
  (open.*MemberOf(Tag_DrawAdjustingRowRefLn{}))();
}
