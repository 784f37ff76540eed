#include <gtest/gtest.h>

#include <utility>

#include "tests/grid/basic/gesture_desk.h"

namespace {

class BasicDividers : public lorv_test::GestureDesk {
 protected:
  void DragRow(int row, int y) { Drag({10, Top(row + 1) - 1}, {10, y}); }
  int Width(int column) const { return grid->GetColumnWidth(column); }
  bool Marked(int column) const { return grid->GetColumnsInfo().GetColumnWidthAutoSize(column) != FALSE; }
  void Mark(int column) {
    grid->GetColumnsInfo().SetColumnWidthAutoSize(column, TRUE);
    grid->AdjustLayout();
  }
  CPoint Divider(int column) const {
    const CRect cell = grid->GetItemRect({0, column});
    return CPoint(cell.right - 1, 10);
  }
};

}  // namespace

TEST_F(BasicDividers, OneRowsDividerSetsTheHeightOfAll) {
  Fill(5, 3);
  DragRow(1, Top(2) + 9);
  EXPECT_EQ(grid->GetRowHeight(), 29);
  EXPECT_EQ(grid->GetRowRect(0).Height(), 29);
  EXPECT_EQ(grid->GetRowRect(4).Height(), 29);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(grid->m_nTrackRow, -1);
  EXPECT_TRUE(grid->m_rectTrackRow.IsRectEmpty());
}

TEST_F(BasicDividers, HeightStopsAtItsLeast) {
  Fill(5, 3);
  DragRow(3, 5);
  EXPECT_EQ(grid->GetRowHeight(), 20) << "18 asked for, and the text's own height";
  // From 18 on it grows.
  Drag({10, Top(1) - 1}, {10, Top(1) + 10});
  EXPECT_EQ(grid->GetRowHeight(), 28);
}

TEST_F(BasicDividers, AboveTheGridTheMouseChangesNothing) {
  Fill(5, 3);
  DragRow(1, 0);
  EXPECT_EQ(grid->GetRowHeight(), 20);
  DragRow(1, -40);
  EXPECT_EQ(grid->GetRowHeight(), 20);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicDividers, OnlyTheBandsAtBothEndsAreDividers) {
  Fill(3, 3);
  const auto starts = [&](int y) {
    Press({10, y});
    const bool started = grid->InGesture() && grid->m_nTrackRow >= 0;
    const int row = started ? grid->m_nTrackRow : -1;
    grid->SendMessage(WM_CANCELMODE, 0, 0);
    Release();
    return row;
  };
  EXPECT_EQ(starts(Top(1) - 1), 0);
  EXPECT_EQ(starts(Top(1) - 2), 0);
  EXPECT_EQ(starts(Top(1) - 3), -1);
  EXPECT_EQ(starts(Top(1)), 0);
  EXPECT_EQ(starts(Top(1) + 1), 0);
  EXPECT_EQ(starts(Top(1) + 2), -1);
  EXPECT_EQ(starts(Top(0) + 10), -1);
  EXPECT_EQ(starts(Top(0) + 1), -1) << "above the first row there is none";
}

TEST_F(BasicDividers, LineFollowsTheMouse) {
  Fill(5, 3);
  Press({10, Top(2) - 1});
  EXPECT_EQ(desktop.Capture(), grid->m_hWnd);
  Move({10, 77});
  EXPECT_EQ(grid->m_rectTrackRow, CRect(30, 77, 30 + 240, 78));
  Move({200, 91});
  EXPECT_EQ(grid->m_rectTrackRow, CRect(30, 91, 30 + 240, 92));
  EXPECT_EQ(grid->GetRowHeight(), 20) << "until the button goes up";
  EXPECT_EQ(grid->GetSelection().size(), 1U);
  Release();
  EXPECT_EQ(grid->GetRowHeight(), 20 + 91 - Top(2));
}

TEST_F(BasicDividers, APressWithoutAButtonStartsNothingAndIsTaken) {
  Fill(5, 3);
  grid->SetCurSel(CBCGPGridItemID(3, 2));
  grid->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(10, Top(2) - 1));
  EXPECT_TRUE(Idle());
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(3, 2)) << "the library did not see it";
}

TEST_F(BasicDividers, ADraggedRowMayGo) {
  Fill(5, 3);
  Press({10, Top(5) - 1});
  grid->RemoveRow(4, FALSE);
  Move({10, 200});
  Release();
  EXPECT_EQ(grid->GetRowHeight(), 20);
  EXPECT_TRUE(Idle());
  Press({10, Top(2) - 1});
  grid->RemoveAll();
  Release();
  EXPECT_TRUE(Idle());
}

TEST_F(BasicDividers, DraggingARowIsEndedByWhoTakesTheMouse) {
  Fill(5, 3);
  Press({10, Top(2) - 1});
  Move({10, 100});
  desktop.SetCapture(top.m_hWnd);
  desktop.SetCapture(nullptr);
  Release();
  EXPECT_EQ(grid->GetRowHeight(), 20);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicDividers, NothingFollowsTheMouseOfAGridThatEnded) {
  // It has the mouse, and ends the grid when that is taken from it.
  class Jealous : public CWnd {
   public:
    CWnd* victim = nullptr;

   protected:
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message == WM_CAPTURECHANGED && victim != nullptr) std::exchange(victim, nullptr)->DestroyWindow();
      return CWnd::WindowProc(message, w, l);
    }
  };
  Fill(5, 3);
  Jealous other;
  other.Create(nullptr, nullptr, WS_CHILD, CRect(0, 400, 9, 409), &top, 9);
  Move({10, Top(2) - 1});
  other.victim = grid.get();
  other.SetCapture();
  desktop.MouseDown(VK_LBUTTON);
  Run();
  grid->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, Top(2) - 1));
  EXPECT_EQ(grid->m_hWnd, nullptr);
  EXPECT_TRUE(Idle());
  desktop.MouseUp(VK_LBUTTON);
}

TEST_F(BasicDividers, AReleaseOverAMaskedColumnChangesNoHeight) {
  Fill(5, 3);
  grid->SetAllowFocus(0, false);
  Drag({10, Top(2) - 1}, {Left(0) + 20, 100});
  EXPECT_EQ(grid->GetRowHeight(), 20);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicDividers, BelowAHiddenRowTheDividerIsThatOfTheHiddenOne) {
  Fill(5, 3);
  grid->SetRowVisible(1, false);
  grid->AdjustLayout();
  Press({10, Top(1) + 1});
  EXPECT_EQ(grid->m_nTrackRow, 1);
  Move({10, Top(1) + 7});
  Release();
  EXPECT_EQ(grid->GetRowHeight(), 27);
}

TEST_F(BasicDividers, WhileADividerMovesTheLastColumnTakesTheRoom) {
  Fill(3, 4);
  Mark(1);
  EXPECT_EQ(Width(1), 400 - 240);
  Press(Divider(0));
  EXPECT_FALSE(Marked(1));
  EXPECT_TRUE(Marked(3));
  Move({Left(0) + 100, 10});
  EXPECT_EQ(Width(1), 160) << "it keeps its width";
  Release();
  EXPECT_TRUE(Marked(1));
  EXPECT_FALSE(Marked(3));
  EXPECT_TRUE(Idle());
  int total = 0;
  for (int column = 0; column < 4; ++column) total += Width(column);
  EXPECT_EQ(total, 400);
}

TEST_F(BasicDividers, WithTheLastColumnMarkedOrTwoOfThemNothingIsLent) {
  Fill(3, 4);
  Mark(3);
  Press(Divider(0));
  EXPECT_TRUE(Marked(3));
  Move({Left(0) + 100, 10});
  Release();
  EXPECT_EQ(Width(3), 140);
  Mark(1);
  Press(Divider(0));
  EXPECT_TRUE(Marked(1) && Marked(3));
  Release();
}

TEST_F(BasicDividers, MarksComeBackWhereTheMouseIsLost) {
  Fill(3, 4);
  Mark(1);
  Press(Divider(0));
  desktop.SetCapture(top.m_hWnd);
  desktop.SetCapture(nullptr);
  EXPECT_TRUE(Marked(1));
  EXPECT_FALSE(Marked(3));
  Release();
}

TEST_F(BasicDividers, ALastColumnWithoutRoomGetsTheUsualWidth) {
  Fill(3, 4);
  Mark(1);
  Press(Divider(0));
  Move({Left(0) + 260, 10});
  Release();
  EXPECT_TRUE(Marked(1));
  EXPECT_EQ(Width(3), 80);
}

TEST_F(BasicDividers, ADoubleClickFitsTheColumnToItsTexts) {
  Fill(4, 3);
  Put(2, 1, _T("  twenty units of text  "));
  desktop.DoubleClick(On(*grid, Left(2) - 1, 10));
  Run();
  EXPECT_EQ(Width(1), 7 * 20 + 10);
  EXPECT_TRUE(Idle());
}

TEST_F(BasicDividers, WithoutTextsTheTitleDecides) {
  Fill(4, 3);
  for (int row = 0; row < 4; ++row) Put(row, 1, _T("   "));
  grid->SetColumnName(1, _T(""));
  grid->OnHeaderDividerDblClick(1);
  EXPECT_EQ(Width(1), 80);
  grid->GetColumnsInfo().SetMinWidth(1, 70);
  grid->SetColumnName(1, _T("ten units "));
  grid->OnHeaderDividerDblClick(1);
  EXPECT_EQ(Width(1), 80) << "a title no wider than the least width";
  grid->GetColumnsInfo().SetMinWidth(1, 30);
  grid->OnHeaderDividerDblClick(1);
  EXPECT_EQ(Width(1), 63 + 10) << "nine units";
  grid->OnHeaderDividerDblClick(99);
}
