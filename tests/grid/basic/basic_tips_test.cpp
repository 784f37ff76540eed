#include <gtest/gtest.h>

#include "tests/grid/basic/gesture_desk.h"

namespace {

class BasicTips : public lorv_test::GestureDesk {
 protected:
  // A unit is 7 pixels wide, a column 80: 12 units stick out.
  void Table() {
    Fill(8, 4);
    Put(1, 1, kLong);
    Put(2, 1, kLonger);
    Put(1, 2, _T("also too long"));
  }
  static constexpr const TCHAR* kLong = _T("twelve units");
  static constexpr const TCHAR* kLonger = _T("thirty units, which do not fit");
};

}  // namespace

TEST_F(BasicTips, ATextThatDoesNotFitIsShownBesideItsCell) {
  Table();
  Move(Middle(1, 1));
  EXPECT_EQ(Tip(), "twelve units");
  EXPECT_EQ(desktop.Capture(), grid->m_hWnd);
  EXPECT_EQ(grid->LastToolTipRect().TopLeft(), On(*grid, Left(1) + 5, Top(1) + 25));
  EXPECT_GE(grid->LastToolTipRect().Width(), 84 + 10);
  EXPECT_EQ(grid->LastToolTipRect().Height(), 16 + 6);
  EXPECT_FALSE(grid->ToolTip()->IsMultiline());
  EXPECT_EQ(desktop.Focus(), grid->m_hWnd);
}

TEST_F(BasicTips, ACellThatIsWideEnoughNeedsNone) {
  Table();
  Move(Middle(1, 1));
  Move(Middle(3, 1));
  EXPECT_EQ(Tip(), "none");
  EXPECT_EQ(desktop.Capture(), nullptr);
  grid->SetColumnWidth(1, 84);
  grid->AdjustLayout();
  Move(Middle(1, 1));
  EXPECT_EQ(Tip(), "twelve units") << "as wide as its text";
  Move(Middle(0, 0));
  grid->SetColumnWidth(1, 85);
  grid->AdjustLayout();
  Move(Middle(1, 1));
  EXPECT_EQ(Tip(), "none");
}

TEST_F(BasicTips, ANarrowColumnBreaksItIntoLines) {
  Table();
  Move(Middle(2, 1));
  EXPECT_TRUE(grid->ToolTip()->IsMultiline()) << "210 pixels less 20 are more than 80";
  EXPECT_EQ(grid->LastToolTipRect().Width(), 80 * 2 / 3);
}

TEST_F(BasicTips, TipsFollowThePointerFromCellToCell) {
  Table();
  Move(Middle(1, 1));
  const CRect first = grid->LastToolTipRect();
  Move(Middle(1, 1) + CSize(20, 2));
  EXPECT_EQ(grid->LastToolTipRect(), first);
  EXPECT_EQ(desktop.Capture(), grid->m_hWnd) << "while it is shown";
  Move(Middle(1, 2));
  EXPECT_EQ(Tip(), "also too long");
}

TEST_F(BasicTips, OverTheTipItselfItCloses) {
  Table();
  Move(Middle(1, 1));
  Move(Middle(2, 1));
  EXPECT_EQ(Tip(), "none") << "the tip of the cell above lay there";
  EXPECT_EQ(desktop.Capture(), nullptr);
  Move(Middle(2, 1));
  EXPECT_EQ(Tip(), "thirty units, which do not fit");
}

TEST_F(BasicTips, OutsideTheRowsItCloses) {
  Table();
  for (const CPoint beside : {CPoint(Left(1), Top(12)), CPoint(10, Top(1) + 10), CPoint(Left(1), 10),
                              CPoint(-20, 50), CPoint(Left(4) + 60, Top(1) + 10)}) {
    Move(Middle(1, 1));
    EXPECT_EQ(Tip(), "twelve units");
    Move(beside);
    EXPECT_EQ(Tip(), "none") << beside.x << "," << beside.y;
    EXPECT_EQ(desktop.Capture(), nullptr);
  }
}

TEST_F(BasicTips, ACellThatIsEditedHasNone) {
  Table();
  grid->SetCurEditingItem(1, 1);
  Run();
  grid->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(Middle(1, 1).x, Middle(1, 1).y));
  EXPECT_EQ(Tip(), "none");
  EXPECT_FALSE(grid->ShowCellToolTips(Middle(1, 1), _T("given")));
}

TEST_F(BasicTips, AGivenTextIsShownInAWideCellToo) {
  Table();
  EXPECT_TRUE(grid->ShowCellToolTips(Middle(3, 3), _T("given")));
  EXPECT_EQ(Tip(), "given");
  EXPECT_TRUE(grid->ShowCellToolTips(Middle(1, 1), _T("in its place")));
  EXPECT_EQ(Tip(), "in its place");
  EXPECT_TRUE(grid->ShowCellToolTips(Middle(5, 0), CString()));
  EXPECT_EQ(Tip(), "none");
}

TEST_F(BasicTips, NoneWhileSomethingFollowsTheMouse) {
  Table();
  Press(Middle(4, 1));
  EXPECT_FALSE(grid->ShowCellToolTips(Middle(1, 1), CString()));
  EXPECT_EQ(desktop.Capture(), grid->m_hWnd);
  Release();
  grid->EndEditItem(FALSE);
  Press({Left(1) - 1, 10});
  EXPECT_FALSE(grid->ShowCellToolTips(Middle(1, 1), CString()));
  Release();
  bool asked = false;
  desktop.WhenMenu([&] { asked = !grid->ShowCellToolTips(Middle(1, 1), CString()); });
  auto* list = new CBCGPGridPresentationItem(_variant_t(_T("o")));
  list->SetPresentationStyle(1);
  list->AddOption(_T("o"));
  list->AddOption(_T("p"));
  grid->ReplaceItem(0, 0, list, FALSE);
  grid->SetDropdownShowOffset(true);
  grid->ShowItemStringList(Middle(0, 0));
  EXPECT_TRUE(asked);
  EXPECT_EQ(Tip(), "none");
}

TEST_F(BasicTips, SwitchedOffThereAreNone) {
  Table();
  Move(Middle(1, 1));
  grid->EnableToolTips(FALSE);
  EXPECT_EQ(Tip(), "none");
  EXPECT_EQ(desktop.Capture(), nullptr);
  Move(Middle(1, 2));
  EXPECT_EQ(Tip(), "none");
  EXPECT_FALSE(grid->ShowCellToolTips(Middle(1, 1), _T("given")));
}

TEST_F(BasicTips, APressScrollingAndLosingTheMouseCloseIt) {
  Fill(60, 4);
  Put(1, 1, kLong);
  Move(Middle(1, 1));
  desktop.Wheel(-120);
  Run();
  EXPECT_EQ(Tip(), "none");
  EXPECT_EQ(desktop.Capture(), nullptr);
  desktop.Wheel(120);
  Run();
  Move(Middle(3, 3));
  Move(Middle(1, 1));
  EXPECT_NE(Tip(), "none");
  desktop.SetCapture(top.m_hWnd);
  EXPECT_EQ(Tip(), "none");
  desktop.SetCapture(nullptr);
  Move(Middle(3, 3));
  Move(Middle(1, 1));
  EXPECT_NE(Tip(), "none");
  Click(Middle(1, 1));
  EXPECT_EQ(Tip(), "none");
  EXPECT_EQ(desktop.Capture(), nullptr);
}

TEST_F(BasicTips, MergedCellsShowTheirFirstTextBesideTheBlock) {
  Table();
  Put(4, 0, kLonger);
  grid->MergeRange({0, 4, 1, 5});
  Move(Middle(5, 1));
  EXPECT_EQ(Tip(), "thirty units, which do not fit");
  EXPECT_EQ(grid->LastToolTipRect().TopLeft(), On(*grid, Left(0) + 5, Top(4) + 45));
  Move(Middle(4, 0));
  EXPECT_EQ(Tip(), "thirty units, which do not fit") << "one cell";
}

TEST_F(BasicTips, AGroupShowsItsLineWhereThatIsCut) {
  Table();
  for (const int row : {0, 1, 2}) Put(row, 3, kLonger);
  grid->SetColumnWidth(3, 20);
  grid->InsertGroupColumn(0, 3);
  Run();
  const CRect line = grid->GetGroupTextRect(*grid->GetGroupRow(0));
  Move(line.CenterPoint());
  EXPECT_EQ(Tip(), "none") << "it fits";
  CString text(_T('x'), 60);
  for (const int row : {0, 1, 2}) Put(row, 3, text);
  grid->Regroup();
  Run();
  Move(Middle(6, 0));
  const CRect longer = grid->GetGroupTextRect(*grid->GetGroupRow(grid->GetGroupRowCount() - 1));
  Move(longer.CenterPoint());
  EXPECT_EQ(Tip(), "c: " + std::string(60, 'x') + " (3)");
}

TEST_F(BasicTips, AVeryLongTextIsCut) {
  Table();
  Put(1, 1, CString(_T('x'), 100000));
  Move(Middle(1, 1));
  EXPECT_EQ(grid->ToolTip()->GetText().GetLength(), 4096);
}

TEST_F(BasicTips, TheTipGoesWithTheWindow) {
  Table();
  Move(Middle(1, 1));
  EXPECT_NE(Tip(), "none");
  grid->DestroyWindow();
  EXPECT_FALSE(grid->IsToolTipShown());
  EXPECT_EQ(desktop.Capture(), nullptr);
  EXPECT_EQ(desktop.Windows().size(), 1U);
  EXPECT_FALSE(grid->ShowCellToolTips(Middle(1, 1), _T("given")));
}
