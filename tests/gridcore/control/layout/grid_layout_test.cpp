#include <gtest/gtest.h>

#include <limits>

#include "framework/drawing/device_context.h"
#include "tests/gridcore/control/grid_desk.h"

namespace {

using GridLayout = lorv_test::GridDesk;
using lorv_test::Notes;
using Cell = CBCGPGridItemID;

}  // namespace

TEST_F(GridLayout, AreasLieBesideEachOther) {
  grid->EnableRowHeader(TRUE, -1, 30);
  Fill(3, 2);
  EXPECT_EQ(grid->GetHeaderRect().left, 30);
  EXPECT_EQ(grid->GetRowHeaderRect().right, 30);
  EXPECT_EQ(grid->GetRowHeaderRect().top, grid->GetHeaderRect().bottom);
  EXPECT_EQ(grid->GetListRect().TopLeft(), CPoint(30, grid->GetHeaderRect().bottom));
  EXPECT_EQ(grid->GetItemRect({0, 1}).left, 110);
  grid->EnableHeader(FALSE);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetListRect().top, 0);
}

TEST_F(GridLayout, FindsCellsUnderPoints) {
  grid->EnableRowHeader(TRUE);
  Fill(3, 2);
  const CRect cell = grid->GetItemRect({2, 1});
  Cell id;
  CRect rect;
  EXPECT_TRUE(grid->HitTest(cell.TopLeft(), id, rect));
  EXPECT_EQ(id, Cell(2, 1));
  EXPECT_EQ(rect, cell);
  EXPECT_FALSE(grid->HitTest(cell.BottomRight(), id, rect));
  EXPECT_FALSE(grid->HitTest(CPoint(-1, -1), id, rect));
  EXPECT_EQ(grid->HitTestRowHeader(CPoint(5, static_cast<int>(cell.top)), rect), 2);
  EXPECT_EQ(rect.Width(), 30);
  EXPECT_EQ(grid->HitTestRowHeader(cell.TopLeft(), rect), -1);
  EXPECT_EQ(grid->HitTestHeader(CPoint(static_cast<int>(cell.left), 1)), 1);
  EXPECT_EQ(grid->HitTestHeader(CPoint(5, 1)), -1);
  EXPECT_EQ(grid->HitTestArea(cell.CenterPoint()), CBCGPGridCtrl::clickValue);
  EXPECT_EQ(grid->HitTestArea(CPoint(0, 0)), CBCGPGridCtrl::clickNothing);
}

TEST_F(GridLayout, ScrollsToWhatIsAskedFor) {
  Fill(100, 10);
  EXPECT_EQ(grid->GetVertScrollOffset(), 0);
  grid->EnsureVisible(Cell(99, 9));
  const CRect cell = grid->GetItemRect({99, 9});
  EXPECT_EQ(cell.bottom, grid->GetListRect().bottom);
  EXPECT_EQ(cell.right, grid->GetListRect().right);
  grid->EnsureVisible(grid->GetRow(10));
  EXPECT_EQ(grid->GetRowRect(10).top, grid->GetListRect().top);
  grid->EnsureVisible(static_cast<CBCGPGridRow*>(nullptr));
}

TEST_F(GridLayout, ScrollOffsetFollowsTheTable) {
  Fill(100, 2);
  grid->EnsureVisible(Cell(99, 0));
  EXPECT_GT(grid->GetVertScrollOffset(), 0);
  for (int row = 0; row < 98; ++row) grid->RemoveRow(0, FALSE);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetVertScrollOffset(), 0);
}

TEST_F(GridLayout, BarsAndTheWheelScroll) {
  Fill(100, 2);
  const int height = grid->GetRowHeight();
  desktop.ScrollBar(grid->m_hWnd, SB_VERT, SB_LINEDOWN);
  Run();
  EXPECT_EQ(grid->GetVertScrollOffset(), height);
  desktop.ScrollBar(grid->m_hWnd, SB_VERT, SB_THUMBTRACK, 5 * height);
  Run();
  EXPECT_EQ(grid->GetVertScrollOffset(), 5 * height);
  grid->SetFocus();
  desktop.MoveMouse(Centre(6, 0));
  desktop.Wheel(120);
  Run();
  EXPECT_EQ(grid->GetVertScrollOffset(), 2 * height);
  desktop.ScrollBar(grid->m_hWnd, SB_VERT, SB_TOP);
  Run();
  EXPECT_EQ(grid->GetVertScrollOffset(), 0);
}

TEST_F(GridLayout, OneAutoSizeColumnFillsTheGrid) {
  Fill(2, 3);
  grid->GetColumnsInfo().SetColumnWidthAutoSize(1, TRUE);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetColumnWidth(1), 400 - 160);
  grid->EnableColumnAutoSize();
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetColumnsInfo().GetTotalWidth(), 400);
}

TEST_F(GridLayout, DividerFollowsTheMouse) {
  Fill(2, 3);
  const CPoint divider = On(*grid, 79, 5);
  desktop.MoveMouse(divider);
  desktop.MouseDown();
  desktop.MoveMouse(divider + CPoint(41, 0));
  Run();
  EXPECT_EQ(grid->GetColumnWidth(0), 120);
  desktop.MouseUp();
  Run();
  EXPECT_EQ(grid->GetColumnWidth(0), 120);
  EXPECT_EQ(grid->Taken(), (Notes{"resized"}));
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(GridLayout, HeaderClickSelectsTheColumnWhereItIsAllowed) {
  Fill(2, 3);
  desktop.Click(On(*grid, 40, 5));
  Run();
  EXPECT_EQ(grid->Taken(), (Notes{"header 0"}));
  grid->EnableHeader(TRUE, lorv::kHeaderSelects);
  desktop.Click(On(*grid, 120, 5));
  Run();
  EXPECT_TRUE(grid->IsColumnSelected(1));
}

TEST_F(GridLayout, RowHeaderSelectsRowsAndTheCornerAll) {
  grid->EnableRowHeader(TRUE);
  Fill(4, 3);
  desktop.Click(On(*grid, 5, static_cast<int>(grid->GetRowRect(1).CenterPoint().y)));
  Run();
  EXPECT_TRUE(grid->IsRowSelected(1, TRUE));
  desktop.KeyDown(VK_SHIFT);
  desktop.Click(On(*grid, 5, static_cast<int>(grid->GetRowRect(3).CenterPoint().y)));
  desktop.KeyUp(VK_SHIFT);
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<CBCGPGridRange>{{0, 1, 2, 3}}));
  desktop.Click(On(*grid, 5, 5));
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<CBCGPGridRange>{{0, 0, 2, 3}}));
}

TEST_F(GridLayout, PaintsTheVisibleCellsOnly) {
  grid->EnableRowHeader(TRUE);
  grid->EnableLineNumbers();
  Fill(1000, 3);
  grid->UpdateWindow();
  std::string seen;
  for (const auto& drawn : desktop.Seen(grid->m_hWnd)) seen += drawn.text.ToUtf8() + " ";
  EXPECT_NE(seen.find(" 21 "), std::string::npos);
  EXPECT_EQ(seen.find("9000"), std::string::npos);
  EXPECT_NE(seen.find(" c "), std::string::npos);
}

TEST_F(GridLayout, SurvivesWindowsOfEverySize) {
  Fill(50, 20);
  grid->EnableRowHeader(TRUE);
  for (const CRect& place : {CRect(0, 0, 0, 0), CRect(0, 0, 1, 1), CRect(0, 0, 10, 500), CRect(0, 0, 500, 10),
                             CRect(-50, -50, 400, 300)}) {
    grid->MoveWindow(&place);
    Run();
    grid->UpdateWindow();
    EXPECT_GE(grid->GetListRect().Width(), 0);
    EXPECT_GE(grid->GetListRect().Height(), 0);
  }
}

TEST_F(GridLayout, ManyRowsKeepTheirPlaces) {
  grid->InsertColumn(0, _T("a"), 80);
  for (int row = 0; row < 20000; ++row) grid->AddRow(FALSE);
  grid->AdjustLayout();
  const int height = grid->GetRowHeight();
  EXPECT_EQ(grid->GetVertScrollTotal(), 20000 * height);
  grid->EnsureVisible(Cell(19999, 0));
  EXPECT_EQ(grid->GetRowRect(19999).bottom, grid->GetListRect().bottom);
}

TEST_F(GridLayout, AnotherScreenScalesWidthsAndRowsFollowTheFont) {
  grid->EnableRowHeader(TRUE, -1, 30);
  Fill(3, 3);
  grid->SetColumnWidth(1, 33);
  grid->GetColumnsInfo().SetMinWidth(1, 10);
  grid->SetColumnVisible(2, FALSE);
  grid->AdjustLayout();
  const int height = grid->GetRowHeight();
  LOGFONT face = grid->GetFont()->Face();
  const LONG usual = face.lfHeight;
  for (const int dots : {120, 96, 144, 96, 192, 96}) {
    SCOPED_TRACE(dots);
    desktop.SetDpi(dots);
    face.lfHeight = usual * dots / 96;
    CFont font;
    font.CreateFontIndirect(&face);
    grid->SetFont(&font, FALSE);
    grid->AdjustLayout();
    Run();
    EXPECT_EQ(grid->GetFont()->Face().lfHeight, face.lfHeight) << "set for the screen, it stays";
    EXPECT_EQ(grid->GetColumnWidth(0), 80 * dots / 96);
    EXPECT_EQ(grid->GetColumnWidth(1), (33 * dots + 48) / 96);
    EXPECT_EQ(grid->GetColumnsInfo().GetMinWidth(1), (10 * dots + 48) / 96);
    EXPECT_FALSE(grid->GetColumnVisible(2));
    EXPECT_EQ(grid->GetRowHeaderRect().Width(), (30 * dots + 48) / 96);
    CClientDC dc(grid.get());
    dc.SelectObject(grid->GetFont());
    TEXTMETRIC metrics = {};
    ASSERT_TRUE(dc.GetTextMetrics(&metrics));
    // The text and its lines above and below, and no more lines than a pixel.
    EXPECT_EQ(grid->GetRowHeight(), metrics.tmHeight + (4 * dots + 48) / 96);
    EXPECT_EQ(grid->GetItemRect({1, 0}).bottom, grid->GetItemRect({2, 0}).top);
  }
  EXPECT_EQ(grid->GetRowHeight(), height);
  grid->SetColumnVisible(2, TRUE);
  EXPECT_EQ(grid->GetColumnWidth(2), 80);
}
