#include "grid/view/grid_frozen_columns.h"

#include "grid/commands/grid_commands.h"
#include "grid/printing/grid_printing.h"
#include "grid/view/grid_zoom.h"
#include "platform/headless/services/headless_printing.h"
#include "tests/grid/basic/gesture_desk.h"

namespace {

// Columns of 80 pixels behind a row header of 30 in a window of 430: columns 0 and 1 end at 190.
class GridFrozenColumns : public lorv_test::GestureDesk {
 protected:
  void Start(int columns, int scrolled) {
    Fill(8, 10);
    grid->SetDragCopyFill(true);
    frozen = std::make_unique<lorv::GridFrozenColumns>(*grid, columns);
    ScrollTo(scrolled);
  }
  void ScrollTo(int across) {
    grid->SendMessage(WM_HSCROLL, SB_LEFT, 0);
    while (grid->GetHorzScrollOffset() < across) grid->SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
    Run();
    ASSERT_EQ(grid->GetHorzScrollOffset(), across);
  }
  LONG LeftOf(int column) const { return grid->GetItemRect({1, column}).left; }
  CPoint MiddleOf(int row, int column) const { return grid->GetItemRect({row, column}).CenterPoint(); }

  std::unique_ptr<lorv::GridFrozenColumns> frozen;
};

}  // namespace

TEST_F(GridFrozenColumns, TheFirstColumnsStay) {
  Start(2, 160);
  EXPECT_EQ(frozen->Count(), 2);
  EXPECT_EQ(LeftOf(1), 110);
  EXPECT_EQ(LeftOf(4), 190);
  EXPECT_TRUE(grid->GetItemRect({1, 3}).IsRectEmpty());
  frozen->SetCount(0);
  EXPECT_EQ(LeftOf(1), -50);
}

TEST_F(GridFrozenColumns, WithTheEndOfTheObjectNothingIsFrozen) {
  Start(2, 160);
  frozen.reset();
  EXPECT_EQ(grid->GetFrozenColumns(), 0);
  EXPECT_EQ(LeftOf(1), -50);
}

TEST_F(GridFrozenColumns, CommandsFreezeUpToTheCurrentCell) {
  Start(0, 0);
  lorv::GridCommands commands(*grid);
  frozen->Bind(commands);
  Choose(1, 2);
  EXPECT_TRUE(commands.Run(_T("freeze_columns")));
  EXPECT_EQ(frozen->Count(), 3);
  EXPECT_TRUE(commands.Run(_T("unfreeze_columns")));
  EXPECT_EQ(frozen->Count(), 0);
  grid->SetCurSel(CBCGPGridItemID(), lorv::kSelectClear);
  EXPECT_FALSE(frozen->FreezeToCurrent());
}

TEST_F(GridFrozenColumns, AFillGoesFromFrozenCellsToTheOthers) {
  Start(2, 160);
  Select({1, 1, 1, 1});
  DragFill(MiddleOf(1, 5));
  EXPECT_EQ(Across(1, 1, 6), "11 11 11 11 11 16") << "also the cells below the edge";
}

TEST_F(GridFrozenColumns, AFillGoesDownAndBack) {
  Start(2, 160);
  Select({4, 1, 5, 1});
  DragFill(MiddleOf(3, 4));
  EXPECT_EQ(Down(4, 1, 4), "14 14 14 44");
  EXPECT_EQ(Down(5, 1, 4), "15 15 15 45");
  Select({5, 5, 5, 5});
  DragFill(MiddleOf(5, 0));
  EXPECT_EQ(Across(5, 0, 5), "55 55 55 55 55 55");
}

TEST_F(GridFrozenColumns, ScrolledInTheMiddleOfAFillTheFrameWaitsForTheMouse) {
  Start(2, 160);
  Select({1, 1, 1, 1});
  Press(Handle());
  Move(MiddleOf(1, 5));
  ASSERT_FALSE(grid->GetDragFrame().IsRectEmpty());
  ScrollTo(240);
  EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
  Release();
  EXPECT_EQ(Across(1, 1, 5), "11 12 13 14 15");
  EXPECT_TRUE(Idle());
}

TEST_F(GridFrozenColumns, ZoomKeepsThem) {
  Start(2, 160);
  lorv::GridZoom zoom(*grid);
  zoom.SetZoom(125);
  const LONG left = grid->GetListRect().left;
  EXPECT_EQ(LeftOf(0), left);
  EXPECT_EQ(grid->GetItemRect({1, 1}).right, left + 200);
  EXPECT_TRUE(grid->GetItemRect({1, 2}).IsRectEmpty());
  zoom.SetZoom(100);
  EXPECT_EQ(LeftOf(4), 190);
}

TEST_F(GridFrozenColumns, PaperKnowsNothingOfThem) {
  Fill(8, 6);
  grid->MergeRange({1, 1, 3, 2});
  lorv::HeadlessPrinting printer;
  const auto print = [&] {
    lorv::GridPrinting printing(*grid);
    const auto job = printer.Ask(grid->m_hWnd, lorv::kPrintNoSelection);
    EXPECT_TRUE(printing.Print(*job));
    return printer.pages.back()->List();
  };
  const auto plain = print();
  frozen = std::make_unique<lorv::GridFrozenColumns>(*grid, 2);
  ScrollTo(80);
  EXPECT_EQ(print(), plain);
}

TEST_F(GridFrozenColumns, TheHeaderOfSeveralLinesIsSeenInBothParts) {
  Fill(8, 10);
  grid->EnableMultiLineHeader();
  auto& info = dynamic_cast<CBCGPGridColumnsInfoEx&>(grid->GetColumnsInfo());
  info.SetHeaderLineCount(2);
  CArray<int, int> columns, lines;
  for (const int column : {1, 2, 3}) columns.Add(column);
  lines.Add(0);
  info.AddHeaderItem(&columns, &lines, nullptr, _T("wide"), DT_LEFT, 0);
  grid->AdjustLayout();
  frozen = std::make_unique<lorv::GridFrozenColumns>(*grid, 2);
  ScrollTo(80);
  grid->Invalidate(FALSE);
  grid->UpdateWindow();
  std::vector<LONG> fills;
  for (const auto& drawn : desktop.Seen(grid->m_hWnd))
    if (drawn.text == _T("wide")) fills.push_back(drawn.bounds.left);
  ASSERT_FALSE(fills.empty());
  EXPECT_GE(fills.front(), 110);
  EXPECT_EQ(grid->HitTestHeader(CPoint(200, 5)), 3);
}

TEST_F(GridFrozenColumns, TheGridMayEndBeforeItAndWithinIt) {
  Start(2, 0);
  grid.reset();
  frozen->SetCount(3);
  EXPECT_EQ(frozen->Count(), 0);
  EXPECT_FALSE(frozen->FreezeToCurrent());
  frozen.reset();
  for (const bool both : {false, true}) {
    auto ended = std::make_unique<lorv_test::LaidOut>();
    ended->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &top, 8);
    ended->InsertColumn(0, _T("a"), 30);
    frozen = std::make_unique<lorv::GridFrozenColumns>(*ended);
    ended->on = [&] {
      if (both) frozen.reset();
      ended.reset();
    };
    frozen->SetCount(1);
    EXPECT_EQ(ended, nullptr);
    EXPECT_EQ(frozen == nullptr, both);
  }
}
