#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "framework/drawing/device_context.h"
#include "gridcore/accessibility/grid_cells.h"
#include "tests/gridcore/control/grid_desk.h"

namespace {

using Cell = CBCGPGridItemID;
using lorv_test::Notes;

// Ten columns of 80 pixels in a window of 400, no row header: columns 0 and 1 end at 160.
class GridPanes : public lorv_test::GridDesk {
 protected:
  void Freeze(int columns, int scrolled) {
    grid->SetFrozenColumns(columns);
    ScrollTo(scrolled);
  }
  void ScrollTo(int across) {
    grid->SendMessage(WM_HSCROLL, SB_LEFT, 0);
    for (int step = 0; step < 200 && grid->GetHorzScrollOffset() < across; ++step)
      grid->SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
    Run();
  }
  LONG Left(int column) const { return grid->GetItemRect({1, column}).left; }
  LONG Right(int column) const { return grid->GetItemRect({1, column}).right; }
  Cell Under(CPoint point) const {
    Cell id;
    CRect rect;
    return grid->HitTest(point, id, rect) != FALSE ? id : Cell();
  }
  std::vector<CString> SeenTexts() {
    grid->Invalidate(FALSE);
    grid->UpdateWindow();
    std::vector<CString> texts;
    for (const auto& drawn : desktop.Seen(grid->m_hWnd))
      if (!drawn.text.IsEmpty()) texts.push_back(drawn.text);
    return texts;
  }
  void Press(CPoint at) {
    desktop.MoveMouse(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
    desktop.MouseDown();
    Run();
  }
  void Move(CPoint at) {
    desktop.MoveMouse(On(*grid, static_cast<int>(at.x), static_cast<int>(at.y)));
    Run();
  }
  void Release() {
    desktop.MouseUp();
    Run();
  }
  LONG RowMiddle(int row) const { return grid->GetRowRect(row).CenterPoint().y; }
};

}  // namespace

TEST_F(GridPanes, FrozenColumnsStayAndTheOthersScrollBelowThem) {
  Fill(5, 10);
  Freeze(2, 100);
  ASSERT_EQ(grid->GetHorzScrollOffset(), 100);
  EXPECT_EQ(Left(0), 0);
  EXPECT_EQ(Right(1), 160);
  EXPECT_TRUE(grid->GetItemRect({1, 2}).IsRectEmpty()) << "below the frozen ones";
  EXPECT_EQ(grid->GetItemRect({1, 3}).left, 160) << "cut off at their edge";
  EXPECT_EQ(Right(3), 220);
  EXPECT_EQ(Left(4), 220);
  grid->SetFrozenColumns(0);
  EXPECT_EQ(Left(0), -100);
  EXPECT_EQ(Left(2), 60);
}

TEST_F(GridPanes, CountsOutsideAreCutToWhatThereIs) {
  Fill(2, 3, 60);
  grid->SetFrozenColumns(-5);
  EXPECT_EQ(grid->GetFrozenColumns(), 0);
  grid->SetFrozenColumns(1000);
  EXPECT_EQ(Right(2), 180);
  EXPECT_EQ(Under(CPoint(190, RowMiddle(0))), Cell());
}

TEST_F(GridPanes, AsManyStayAsLeaveRoomForTheOthers) {
  Fill(2, 10);
  Freeze(10, 200);
  EXPECT_EQ(Left(3), 240) << "four of them leave 80 pixels";
  EXPECT_EQ(Right(3), 320);
  EXPECT_TRUE(grid->GetItemRect({1, 5}).IsRectEmpty());
  grid->MoveWindow(0, 0, 100, 300);
  Run();
  EXPECT_EQ(Left(0), -grid->GetHorzScrollOffset()) << "no column leaves 48 pixels: all scroll";
}

TEST_F(GridPanes, PointsFindTheCellsThatAreSeen) {
  Fill(5, 10);
  Freeze(2, 100);
  const LONG y = RowMiddle(1);
  EXPECT_EQ(Under(CPoint(159, y)), Cell(1, 1));
  EXPECT_EQ(Under(CPoint(160, y)), Cell(1, 3));
  EXPECT_EQ(Under(CPoint(219, y)), Cell(1, 3));
  EXPECT_EQ(Under(CPoint(220, y)), Cell(1, 4));
  EXPECT_EQ(grid->HitTestHeader(CPoint(10, 3)), 0);
  EXPECT_EQ(grid->HitTestHeader(CPoint(165, 3)), 3);
}

TEST_F(GridPanes, DividersCountWhereTheyAreSeen) {
  Fill(5, 10);
  Freeze(2, 120);
  const auto drag = [&](LONG from, LONG to) {
    Press(CPoint(from, 3));
    Move(CPoint(to, 3));
    Release();
  };
  drag(80, 90);
  EXPECT_EQ(grid->GetColumnWidth(0), 90);
  drag(169, 180);
  EXPECT_EQ(grid->GetColumnWidth(1), 90) << "the frozen edge, pressed within";
  drag(182, 171);
  EXPECT_EQ(grid->GetColumnWidth(1), 81) << "and from behind it";
  for (int column = 2; column < 10; ++column) EXPECT_EQ(grid->GetColumnWidth(column), 80);
  const LONG right = Right(4);
  drag(right, right + 15);
  EXPECT_EQ(grid->GetColumnWidth(4), 95);
  drag(Right(3), Right(3) - 7);
  EXPECT_EQ(grid->GetColumnWidth(3), 73) << "its left part is below the frozen columns";
}

TEST_F(GridPanes, AFrozenColumnGrowsNoWiderThanLeavesItFrozen) {
  Fill(5, 10);
  Freeze(1, 100);
  Press(CPoint(80, 3));
  Move(CPoint(395, 3));
  Release();
  EXPECT_EQ(grid->GetColumnWidth(0), 352);
  EXPECT_EQ(Left(0), 0);
  EXPECT_EQ(grid->GetHorzScrollOffset(), 100);
}

TEST_F(GridPanes, KeysBringCellsOutFromBelow) {
  Fill(5, 10);
  Freeze(2, 0);
  Choose(1, 9);
  grid->EnsureVisible(Cell(1, 9));
  EXPECT_EQ(grid->GetHorzScrollOffset(), 400);
  for (int column = 8; column >= 2; --column) {
    Key(VK_LEFT);
    EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, column));
    EXPECT_EQ(grid->GetItemRect({1, column}).Width(), 80) << column;
    EXPECT_GE(Left(column), 160) << column;
  }
  EXPECT_EQ(grid->GetHorzScrollOffset(), 0);
  ScrollTo(200);
  Key(VK_LEFT);
  EXPECT_EQ(grid->GetHorzScrollOffset(), 200) << "a frozen cell is in sight already";
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetHorzScrollOffset(), 0) << "the one behind it lay below the edge";
  Key(VK_END);
  EXPECT_EQ(Right(9), 400);
  Key(VK_HOME);
  EXPECT_EQ(grid->GetHorzScrollOffset(), 400);
}

TEST_F(GridPanes, EditorsStandOverTheirCells) {
  Fill(5, 10);
  Freeze(2, 100);
  Choose(1, 1);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  CRect place;
  const auto editor = [&] {
    Editor()->GetWindowRect(&place);
    grid->ScreenToClient(&place);
    return place;
  };
  EXPECT_EQ(editor().left, grid->GetItemRect({1, 1}).left);
  ScrollTo(300);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(editor().left, 80) << "the frozen cell stays, and its editor";
  Key(VK_ESCAPE);
  Choose(1, 3);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(grid->GetItemRect({1, 3}).Width(), 80) << "it has come into sight";
  grid->SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
  EXPECT_EQ(editor().left, 160) << "no editor lies over frozen cells";
  EXPECT_LT(editor().Width(), 80);
}

TEST_F(GridPanes, ASelectionIsDraggedFromFrozenCellsToTheOthers) {
  Fill(5, 10);
  Freeze(2, 100);
  Press(CPoint(100, RowMiddle(0)));
  Move(CPoint(230, RowMiddle(2)));
  Release();
  EXPECT_EQ(grid->GetSelection(), std::vector<CBCGPGridRange>({{1, 0, 4, 2}}));
  EXPECT_EQ(grid->GetSelectionBorder().left, 80);
}

TEST_F(GridPanes, DraggedOverFrozenCellsItFirstScrollsBack) {
  Fill(5, 10);
  Freeze(2, 160);
  ASSERT_EQ(Left(4), 160);
  Press(CPoint(170, RowMiddle(0)));
  Move(CPoint(100, RowMiddle(1)));
  EXPECT_EQ(grid->GetSelection(), std::vector<CBCGPGridRange>({{3, 0, 4, 1}}));
  Move(CPoint(101, RowMiddle(1)));
  EXPECT_EQ(grid->GetSelection(), std::vector<CBCGPGridRange>({{2, 0, 4, 1}}));
  EXPECT_EQ(grid->GetHorzScrollOffset(), 0);
  Move(CPoint(100, RowMiddle(1)));
  EXPECT_EQ(grid->GetSelection(), std::vector<CBCGPGridRange>({{1, 0, 4, 1}}));
  Release();
}

TEST_F(GridPanes, TheFillHandleIsWhereTheCornerIsSeen) {
  Fill(5, 10);
  Freeze(2, 0);
  grid->SelectRange({1, 0, 2, 1});
  EXPECT_EQ(grid->GetSelectionBorder().right, 240);
  ScrollTo(40);
  EXPECT_EQ(grid->GetSelectionBorder().right, 200);
  ScrollTo(100);
  EXPECT_TRUE(grid->GetSelectionBorder().IsRectEmpty()) << "the corner is below the frozen columns";
  grid->SelectRange({0, 0, 1, 1});
  EXPECT_EQ(grid->GetSelectionBorder(), CRect(0, grid->GetRowRect(0).top, 160, grid->GetRowRect(1).bottom));
}

TEST_F(GridPanes, MergedCellsOverTheEdgeAreSeenInBothParts) {
  Fill(5, 10);
  ASSERT_TRUE(grid->MergeRange({1, 1, 3, 2}));
  Freeze(2, 100);
  const CRect block = grid->GetItemRect({2, 3});
  EXPECT_EQ(block.left, 80);
  EXPECT_EQ(block.right, 220);
  EXPECT_EQ(Under(CPoint(100, RowMiddle(1))), Cell(1, 1));
  EXPECT_EQ(Under(CPoint(170, RowMiddle(2))), Cell(1, 1));
  const auto texts = SeenTexts();
  EXPECT_GE(std::count(texts.begin(), texts.end(), CString(_T("11"))), 1);
  EXPECT_EQ(std::count(texts.begin(), texts.end(), CString(_T("12"))), 0);
  ScrollTo(300);
  EXPECT_EQ(grid->GetItemRect({1, 1}).right, 160);
}

TEST_F(GridPanes, TheLineOfAGroupIsOneLine) {
  Fill(4, 10);
  grid->SetFrozenColumns(2);
  grid->InsertGroupColumn(0, 5);
  grid->AdjustLayout();
  const int room = grid->GetHierarchyOffset();
  EXPECT_EQ(grid->GetItemRect({0, 0}).left, room);
  const CRect text = grid->GetGroupTextRect(*grid->GetGroupRow(0));
  ScrollTo(150);
  EXPECT_EQ(grid->GetItemRect({0, 0}).left, room) << "the room before the cells is frozen too";
  EXPECT_EQ(grid->GetGroupTextRect(*grid->GetGroupRow(0)), text);
  const CRect line = grid->GetRowRect(4);
  Press(CPoint(text.left - 8, line.CenterPoint().y));
  Release();
  EXPECT_FALSE(grid->GetGroupRow(0)->IsExpanded()) << "its box stands where it is seen";
}

TEST_F(GridPanes, TheFilterBarStaysAlong) {
  Fill(5, 10);
  grid->EnableFilterBar();
  Freeze(2, 100);
  const LONG y = grid->GetFilterBarRect().CenterPoint().y;
  Press(CPoint(165, y));
  Release();
  desktop.Type(_T("13"));
  Run();
  EXPECT_EQ(grid->GetFilterBarText(3), _T("13"));
}

TEST_F(GridPanes, ReadersFindCellsWhereTheyAreSeen) {
  Fill(5, 10);
  Freeze(2, 100);
  lorv::AccessibleCells* const cells = grid->GetAccessibleCells();
  EXPECT_EQ(CRect(cells->CellPlace({1, 1})), grid->GetItemRect({1, 1}));
  EXPECT_EQ(CRect(cells->CellPlace({-1, 3})).left, 160);
  EXPECT_EQ(CRect(cells->CellPlace({-1, 1})).right, 160);
  EXPECT_TRUE(CRect(cells->CellPlace({1, 2})).IsRectEmpty());
  EXPECT_EQ(cells->CellAt({161, RowMiddle(1)}), (lorv::CellAddress{1, 3}));
}

TEST_F(GridPanes, ALineDividesTheParts) {
  Fill(5, 10);
  Freeze(2, 100);
  grid->Invalidate(FALSE);
  grid->UpdateWindow();
  const CRect line(159, grid->GetHeaderRect().top, 160, grid->GetListRect().bottom);
  const auto seen = [&] {
    const auto& all = desktop.Seen(grid->m_hWnd);
    return std::any_of(all.begin(), all.end(), [&](const auto& drawn) { return drawn.bounds == line; });
  };
  EXPECT_TRUE(seen());
  grid->SetFrozenColumns(0);
  grid->UpdateWindow();
  EXPECT_FALSE(seen());
}

TEST_F(GridPanes, RangesOnPaperKnowNoFrozenColumns) {
  Fill(5, 10);
  const CRect plain = grid->GetRangePlace({1, 1, 3, 2});
  EXPECT_EQ(plain.left, 80);
  EXPECT_EQ(plain.right, 320);
  Freeze(2, 100);
  EXPECT_EQ(grid->GetRangePlace({1, 1, 3, 2}), plain);
}

namespace {

class CountedCell : public CBCGPGridItem {
 public:
  int draws = 0;
  void OnDrawValue(CDC* dc, CRect rect) override {
    ++draws;
    CBCGPGridItem::OnDrawValue(dc, rect);
  }
};

// Every cell is where it is painted, and painted once: columns of random widths, some hidden.
class RandomPanes : public GridPanes {
 protected:
  void FillCounted(int columns) {
    Fill(1, columns);
    auto row = std::make_unique<CBCGPGridRow>();
    for (int column = 0; column < columns; ++column) {
      cells_.push_back(new CountedCell);
      row->AddItem(cells_.back());
    }
    grid->AddRow(row.release(), TRUE);
  }
  void ExpectEachPaintedOnce() {
    for (CountedCell* cell : cells_) cell->draws = 0;
    grid->Invalidate(FALSE);
    grid->UpdateWindow();
    for (int column = 0; column < grid->GetColumnCount(); ++column) {
      const CRect seen = grid->GetItemRect({1, column}) & grid->GetListRect();
      EXPECT_EQ(cells_[static_cast<std::size_t>(column)]->draws, seen.IsRectEmpty() != FALSE ? 0 : 1)
          << column;
    }
  }
  void Shuffle(std::mt19937& random) {
    const auto upto = [&](unsigned most) { return static_cast<int>(random() % (most + 1)); };
    for (int column = 0; column < grid->GetColumnCount(); ++column) {
      grid->SetColumnWidth(column, 1 + upto(120));
      grid->SetColumnVisible(column, upto(4) == 0 ? FALSE : TRUE);
    }
    grid->SetFrozenColumns(upto(5));
    grid->AdjustLayout();
    ScrollTo(upto(500));
  }
  void ExpectEachCellWhereItIsSeen() {
    for (int column = 0; column < grid->GetColumnCount(); ++column) {
      const CRect seen = grid->GetItemRect({1, column}) & grid->GetListRect();
      if (seen.IsRectEmpty() != FALSE) continue;
      for (const CPoint& at : {seen.TopLeft(), seen.CenterPoint(), CPoint(seen.right - 1, seen.bottom - 1)})
        EXPECT_EQ(Under(at), Cell(1, column));
      EXPECT_EQ(grid->HitTestHeader(CPoint(seen.left, 1)), column);
    }
  }
  void ExpectEveryPixelOfOneCell() {
    std::vector<int> painted(static_cast<std::size_t>(grid->GetListRect().Width()));
    for (int column = 0; column < grid->GetColumnCount(); ++column) {
      const CRect seen = grid->GetItemRect({1, column}) & grid->GetListRect();
      for (LONG x = seen.left; x < seen.right; ++x) ++painted[static_cast<std::size_t>(x)];
    }
    for (std::size_t x = 0; x < painted.size(); ++x) {
      const bool cell = !Under(CPoint(static_cast<LONG>(x), RowMiddle(1))).IsNull();
      EXPECT_EQ(painted[x], cell ? 1 : 0) << x;
    }
  }

 private:
  std::vector<CountedCell*> cells_;  // of row 1
};

}  // namespace

TEST_F(RandomPanes, EachCellIsWhereItIsPaintedAndPaintedOnce) {
  FillCounted(9);
  std::mt19937 random(17);
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    Shuffle(random);
    ExpectEachCellWhereItIsSeen();
    ExpectEveryPixelOfOneCell();
    ExpectEachPaintedOnce();
  }
}

TEST_F(GridPanes, HandlersMayChangeTheCountOrEndTheGrid) {
  Fill(5, 10);
  Freeze(2, 160);
  Press(CPoint(170, RowMiddle(0)));
  int count = 0;
  grid->on = [&](const std::string&) { grid->SetFrozenColumns(count++ % 4); };
  for (const int x : {100, 300, 20, 390, 1}) Move(CPoint(x, RowMiddle(2)));
  Release();
  grid->on = {};
  Freeze(2, 160);
  Press(CPoint(80, 3));
  grid->on = [this](const std::string&) { grid.reset(); };
  Release();
  EXPECT_EQ(grid, nullptr) << "the divider went up";
}

TEST_F(GridPanes, TheCountMayChangeOrTheGridEndWhileItIsDrawn) {
  class Meddling : public CBCGPGridItem {
   public:
    std::function<void()> step;
    void OnFillBackground(CDC* /*dc*/, CRect /*rect*/) override {
      const auto copy = step;
      if (copy) copy();
    }
  };
  Fill(2, 10);
  Freeze(2, 100);
  auto* const cell = new Meddling;
  auto* const row = new CBCGPGridRow;
  row->AddItem(cell);
  grid->AddRow(row, TRUE);
  cell->step = [this] { grid->SetFrozenColumns(3); };
  grid->UpdateWindow();
  EXPECT_EQ(grid->GetFrozenColumns(), 3);
  EXPECT_EQ(Left(4), 240) << "and the drawing left nothing behind";
}
