#include "grid/view/grid_column_order.h"

#include <numeric>
#include <random>

#include "grid/clipboard/grid_clipboard.h"
#include "grid/commands/grid_commands.h"
#include "grid/export/text_export.h"
#include "grid/find/grid_find.h"
#include "grid/history/grid_history.h"
#include "grid/records/memory_records.h"
#include "grid/view/grid_frozen_columns.h"
#include "grid/view/grid_zoom.h"
#include "tests/grid/basic/gesture_desk.h"

namespace {

// A host that clears its columns when a value was typed.
class ClearingGrid : public CBCGPBasicGridCtrl {
 protected:
  void OnItemChanged(CBCGPGridItem* /*item*/, int /*row*/, int /*column*/) override {
    while (GetColumnCount() > 0) CBCGPGridCtrl::DeleteColumn(0);
  }
};

// Columns of 80 pixels behind a row header of 30, headers 20 high.
class GridColumnOrder : public lorv_test::GestureDesk {
 protected:
  void Start(int rows, int columns) {
    Fill(rows, columns);
    order = std::make_unique<lorv::GridColumnOrder>(*grid);
  }
  static CPoint Header(int column, int within = 40) { return CPoint(Left(column) + within, 10); }
  void DragHeader(int from, int to, int within) { Drag(Header(from), Header(to, within)); }
  std::string Row(int row = 0) const { return Across(row, 0, grid->GetColumnCount() - 1); }
  std::string Exported() {
    std::string text;
    lorv::ExportText(*grid, {',', false, true}, [&](std::string_view piece) { return text += piece, true; });
    return text;
  }

  std::unique_ptr<lorv::GridColumnOrder> order;
};

}  // namespace

TEST_F(GridColumnOrder, HeaderExample) {
  Start(1, 4);
  EXPECT_TRUE(order->Move(2, 0));
  EXPECT_EQ(order->PlaceOf(0), 1);
  EXPECT_EQ(order->NumberOf(0), 2);
  EXPECT_EQ(Row(), "2 0 1 3");
}

TEST_F(GridColumnOrder, AHeaderIsDraggedBeforeOrBehindAnother) {
  Start(2, 5);
  DragHeader(0, 2, 70);
  EXPECT_EQ(Row(1), "11 12 10 13 14");
  DragHeader(3, 1, 10);
  EXPECT_EQ(Row(1), "11 13 12 10 14");
  // Into its own place from either side, beside all columns, and in front of the first.
  DragHeader(1, 0, 70);
  DragHeader(1, 2, 10);
  EXPECT_EQ(Row(1), "11 13 12 10 14");
  Drag(Header(0), CPoint(429, 10));
  EXPECT_EQ(Row(1), "13 12 10 14 11");
  Drag(Header(4), CPoint(10, 10));
  EXPECT_EQ(Row(1), "11 13 12 10 14");
  EXPECT_TRUE(Idle());
}

TEST_F(GridColumnOrder, WithoutTheObjectNothingIsDragged) {
  Start(2, 3);
  order.reset();
  DragHeader(0, 2, 70);
  EXPECT_EQ(Row(), "0 1 2");
}

TEST_F(GridColumnOrder, AMarkShowsThePlaceAndEscapeEndsTheDrag) {
  Start(2, 4);
  Press(Header(0));
  Move(Header(0, 42));
  EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
  Move(Header(2, 70));
  EXPECT_EQ(grid->GetDragFrame().left, Left(3) - 2);
  EXPECT_EQ(grid->GetDragFrame().right, Left(3) + 2);
  Key(VK_ESCAPE);
  EXPECT_TRUE(grid->GetDragFrame().IsRectEmpty());
  EXPECT_TRUE(Idle());
  Release();
  EXPECT_EQ(Row(), "0 1 2 3");
}

TEST_F(GridColumnOrder, AClickCountsWhenTheButtonGoesUp) {
  Start(3, 4);
  grid->SetDefaultSel(true);
  grid->EnableHeader(TRUE, lorv::kHeaderSelects);
  Press(Header(2));
  EXPECT_FALSE(grid->IsColumnSelected(2));
  Release();
  EXPECT_TRUE(grid->IsColumnSelected(2));
  grid->EnableHeader(TRUE, lorv::kHeaderSorts);
  DragHeader(2, 0, 10);
  EXPECT_TRUE(grid->IsColumnSelected(0));
  EXPECT_FALSE(grid->IsColumnSelected(2));
  EXPECT_EQ(grid->GetSortColumn(), -1) << "a drag sorts nothing";
  EXPECT_EQ(Row(), "2 0 1 3");
  Click(Header(0));
  EXPECT_EQ(grid->GetSortColumn(), 0);
  EXPECT_TRUE(order->Move(0, 1));
  EXPECT_EQ(grid->GetSortColumn(), 1);
  EXPECT_TRUE(order->Move(1, 0));
  grid->Sort(1);
  // No editor opens where a drag ends over cells.
  Drag(Header(0), Middle(1, 2));
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
  EXPECT_EQ(Row(), "0 1 2 3");
}

TEST_F(GridColumnOrder, WhatBelongsToTheColumnGoesAlong) {
  Start(3, 5);
  grid->SetAllowFocus(0, false);
  grid->SetColumnName(0, _T("first"));
  grid->SetColumnWidth(0, 50);
  grid->SetColumnVisible(3, FALSE);
  grid->SetFilterBarText(1, _T("1"));
  grid->InsertGroupColumn(0, 4);
  Choose(1, 0);
  EXPECT_TRUE(order->Move(0, 4));
  EXPECT_EQ(grid->GetColumnName(4), CString(_T("first")));
  EXPECT_EQ(grid->GetColumnWidth(4), 50);
  EXPECT_FALSE(grid->GetColumnVisible(2));
  EXPECT_EQ(grid->GetFilterBarText(0), CString(_T("1")));
  EXPECT_EQ(grid->GetGroupColumn(0), 3);
  EXPECT_EQ(grid->GetCol(), 4);
  EXPECT_FALSE(grid->CanMouseClick(grid->GetItemRect({1, 4}).CenterPoint()));
  EXPECT_TRUE(grid->CanMouseClick(grid->GetItemRect({1, 0}).CenterPoint()));
  EXPECT_EQ(grid->GetItem(1, 4)->GetColumnId(), 4);
}

TEST_F(GridColumnOrder, ASelectionThatAColumnLeavesIsInPieces) {
  Start(3, 5);
  grid->SetDefaultSel(true);
  Select({1, 0, 3, 2});
  EXPECT_TRUE(order->Move(2, 0));
  EXPECT_EQ(Selected(), "0,0-0,2 2,0-3,2");
  EXPECT_TRUE(order->Move(0, 2));
  EXPECT_EQ(Row(), "0 1 2 3 4");
}

TEST_F(GridColumnOrder, MergedCellsAreNotTorn) {
  Start(3, 5);
  ASSERT_TRUE(grid->MergeRange({1, 0, 2, 1}));
  ASSERT_TRUE(grid->MergeRange({4, 0, 4, 2}));
  EXPECT_FALSE(order->Move(1, 0));
  EXPECT_FALSE(order->Move(2, 1));
  EXPECT_FALSE(order->Move(0, 1));
  EXPECT_FALSE(order->Move(3, 2));
  EXPECT_EQ(Row(), "0 1 2 3 4");
  EXPECT_TRUE(order->Move(0, 2));
  EXPECT_EQ(grid->GetMergedRange({1, 1}), CBCGPGridRange(0, 0, 1, 1));
  EXPECT_TRUE(order->Move(4, 0));
  EXPECT_EQ(grid->GetMergedRange({2, 0}), CBCGPGridRange(0, 0, 0, 2));
  EXPECT_EQ(grid->GetMergedRange({1, 1}), CBCGPGridRange(1, 0, 2, 1));
}

TEST_F(GridColumnOrder, CellsOfTheHeaderAreNotTorn) {
  Start(2, 4);
  grid->EnableMultiLineHeader();
  grid->SetHeaderLineCount(2);
  CArray<int, int> columns;
  columns.Add(1);
  columns.Add(2);
  CArray<int, int> lines;
  lines.Add(0);
  const CBCGPGridHeaderItem* const item = grid->AddHeaderItem(&columns, &lines, nullptr, _T("both"), 0, 0);
  ASSERT_NE(item, nullptr);
  EXPECT_FALSE(order->Move(1, 3));
  EXPECT_FALSE(order->Move(0, 1));
  EXPECT_TRUE(order->Move(0, 2));
  EXPECT_EQ(item->columns, (std::vector<int>{0, 1}));
}

TEST_F(GridColumnOrder, FrozenStayAsManyAsBefore) {
  Start(2, 8);
  lorv::GridFrozenColumns frozen(*grid, 2);
  grid->SendMessage(WM_HSCROLL, SB_RIGHT, 0);
  Run();
  const int last = 7;
  const CPoint at(grid->GetItemRect({0, last}).CenterPoint().x, 10);
  Drag(at, Header(0, 10));
  EXPECT_EQ(Row(), "7 0 1 2 3 4 5 6");
  EXPECT_EQ(frozen.Count(), 2);
  EXPECT_EQ(grid->GetItemRect({0, 1}).left, Left(1));
}

TEST_F(GridColumnOrder, HiddenColumnsBehindTheLastStayThere) {
  Start(2, 5);
  grid->SetColumnVisible(4, FALSE);
  grid->AdjustLayout();
  Drag(Header(0), CPoint(420, 10));
  EXPECT_EQ(Row(), "1 2 3 0 4");
}

TEST_F(GridColumnOrder, MovesAreStepsOfTheHistory) {
  Start(3, 4);
  lorv::GridHistory history(*grid);
  const auto set = [&](int row, int column, LPCTSTR text) {
    const lorv::HistoryStep step(history);
    grid->SetValue(row, column, _variant_t(text));
  };
  set(1, 0, _T("before"));
  DragHeader(0, 2, 70);
  set(1, 0, _T("behind"));
  grid->DeleteRows(2, 1);
  EXPECT_TRUE(order->Move(3, 0));
  const std::string last = Row(1);
  EXPECT_EQ(history.UndoCount(), 5U);
  while (history.Undo()) {
  }
  EXPECT_EQ(Row(1), "10 11 12 13");
  EXPECT_EQ(Row(2), "20 21 22 23");
  EXPECT_FALSE(grid->GetColumnsInfo().AreColumnsMoved());
  while (history.Redo()) {
  }
  EXPECT_EQ(Row(1), last);
  EXPECT_EQ(grid->GetRowCount(), 2);
}

TEST_F(GridColumnOrder, AStepOfMovesAndMoreIsOneStep) {
  Start(3, 4);
  lorv::GridHistory history(*grid);
  {
    const lorv::HistoryStep step(history);
    grid->SetValue(0, 0, _variant_t(_T("a")));
    grid->SetValue(2, 0, _variant_t(_T("goes")));
    EXPECT_TRUE(order->Move(0, 2));
    grid->SetValue(0, 2, _variant_t(_T("b")));
    grid->SetValue(1, 2, _variant_t(_T("c")));
    grid->DeleteRows(2, 1);
    EXPECT_TRUE(order->Move(3, 0));
    grid->GetItem(1, 3)->SetBackgroundColor(RGB(1, 2, 3));
    // The columns that stand beside each other now did not before, and no move could tear the block.
    EXPECT_TRUE(grid->MergeRange({2, 0, 3, 0}));
  }
  const std::string last = Row(1);
  EXPECT_EQ(history.UndoCount(), 1U);
  for (int turn = 0; turn < 2; ++turn) {
    ASSERT_TRUE(history.Undo());
    EXPECT_EQ(Row(0), "0 1 2 3");
    EXPECT_EQ(Row(1), "10 11 12 13");
    EXPECT_EQ(Row(2), "20 21 22 23");
    EXPECT_EQ(grid->GetItem(1, 0)->GetBackgroundColor(), lorv::kNoColour);
    EXPECT_FALSE(grid->GetMergedRange({0, 2}).IsValid());
    EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(0, 0)) << "the user is led to what changed";
    ASSERT_TRUE(history.Redo());
    EXPECT_EQ(Row(1), last);
    EXPECT_EQ(grid->GetItem(0, 3)->FormatItem(), _T("b"));
    EXPECT_EQ(grid->GetItem(1, 3)->GetBackgroundColor(), RGB(1, 2, 3));
    EXPECT_EQ(grid->GetMergedRange({0, 2}), CBCGPGridRange(2, 0, 3, 0));
    EXPECT_EQ(grid->GetRowCount(), 2);
  }
  EXPECT_EQ(history.LostSteps(), 0U);
}

TEST_F(GridColumnOrder, AnOrderComesBackWholeOrNotAtAll) {
  Start(2, 4);
  lorv::GridHistory history(*grid);
  EXPECT_TRUE(order->SetOrder({3, 1, 0, 2}));
  EXPECT_EQ(Row(), "3 1 0 2");
  EXPECT_EQ(order->Order(), (std::vector<int>{3, 1, 0, 2}));
  EXPECT_EQ(history.UndoCount(), 1U);
  order->SetQuestion([](int place, int /*to*/) { return place != 3; });
  EXPECT_FALSE(order->SetOrder({0, 1, 2, 3}));
  EXPECT_EQ(Row(), "3 1 0 2");
  EXPECT_EQ(history.UndoCount(), 1U);
  for (const std::vector<int>& none : {std::vector<int>{0, 1, 2}, {0, 1, 2, 2}, {0, 1, 2, 4}})
    EXPECT_FALSE(order->SetOrder(none));
  EXPECT_TRUE(history.Undo());
  EXPECT_EQ(Row(), "0 1 2 3");
}

TEST_F(GridColumnOrder, CommandsMoveTheCurrentColumn) {
  Start(2, 4);
  grid->SetColumnVisible(2, FALSE);
  lorv::GridCommands commands(*grid);
  order->Bind(commands);
  Choose(0, 1);
  EXPECT_FALSE(commands.IsEnabled(_T("restore_columns")));
  EXPECT_TRUE(commands.Run(_T("move_column_right")));
  EXPECT_EQ(Row(), "0 2 3 1");
  EXPECT_FALSE(commands.Run(_T("move_column_right")));
  EXPECT_TRUE(commands.Run(_T("move_column_left")));
  EXPECT_EQ(Row(), "0 2 1 3");
  EXPECT_TRUE(commands.Run(_T("restore_columns")));
  EXPECT_EQ(Row(), "0 1 2 3");
}

TEST_F(GridColumnOrder, VirtualTablesAndRecordsComeByNumber) {
  Start(0, 4);
  EXPECT_TRUE(order->Move(3, 0));
  lorv::MemoryRecords records({_T("a"), _T("b"), _T("c"), _T("d")});
  records.Add({_variant_t(0), _variant_t(1), _variant_t(2), _variant_t(3)});
  CBcgTrueDbGridCtrl bound;
  for (int column = 0; column < 4; ++column) bound.InsertColumn(column, _T("c"), 80);
  ASSERT_TRUE(bound.MoveColumn(3, 0));
  bound.SetDataSource(&records);
  EXPECT_EQ(bound.GetValue(0, 0), _variant_t(3));
  EXPECT_EQ(bound.GetValue(0, 1), _variant_t(0));
  grid->EnableVirtualMode([](CBCGPGridRow& row, int index) {
    for (int column = 0; column < row.GetItemCount(); ++column)
      row.GetItem(column)->SetValue(_variant_t(10 * index + column), FALSE);
  });
  grid->SetVirtualRows(10);
  EXPECT_EQ(Row(2), "23 20 21 22");
  EXPECT_TRUE(order->Move(0, 2));
  EXPECT_EQ(Row(2), "20 21 23 22");
  EXPECT_EQ(grid->CBCGPGridCtrl::GetRow(2)->GetItem(2)->GetColumnId(), 2);
}

TEST_F(GridColumnOrder, AZoomComesBackToThePixel) {
  Start(2, 4);
  for (int column = 0; column < 4; ++column) grid->SetColumnWidth(column, 31 + 14 * column);
  lorv::GridZoom zoom(*grid);
  zoom.SetZoom(90);
  EXPECT_TRUE(order->Move(0, 3));
  zoom.SetZoom(75);
  EXPECT_TRUE(order->Move(1, 2));
  zoom.SetZoom(100);
  EXPECT_EQ(grid->GetColsWidth(), CString(_T("45,73,59,31")));
}

// Beside a plain list that is reordered in the same way.
TEST_F(GridColumnOrder, RandomOrdersAreThoseOfAPlainList) {
  Start(4, 7);
  lorv::GridClipboard clipboard(*grid);
  lorv::GridFind find(*grid);
  std::vector<int> plain(7);
  std::iota(plain.begin(), plain.end(), 0);
  std::mt19937 random(20260722);
  const auto below = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
  for (int round = 0; round < 200; ++round) {
    const int from = below(7);
    const int to = below(7);
    EXPECT_EQ(order->Move(from, to), from != to);
    const int moved = plain[static_cast<std::size_t>(from)];
    plain.erase(plain.begin() + from);
    plain.insert(plain.begin() + to, moved);
    std::string line;
    std::string tabs;
    for (const int number : plain) {
      line += (line.empty() ? "" : ",") + std::to_string(10 + number);
      tabs += (tabs.empty() ? "" : "\t") + std::to_string(10 + number);
    }
    ASSERT_EQ(order->Order(), plain);
    ASSERT_NE(Exported().find("\r\n" + line + "\r\n"), std::string::npos);
    grid->SelectRange({0, 1, 6, 1});
    ASSERT_TRUE(clipboard.Copy());
    ASSERT_EQ(desktop.ClipboardText().ToUtf8(), tabs + "\r\n");
    // "2" stands in a cell of each row, and in all of the third: found as one reads.
    lorv::FindOptions options;
    options.text = _T("12");
    find.SetOptions(options);
    const auto place = std::find(plain.begin(), plain.end(), 2) - plain.begin();
    ASSERT_EQ(find.FindFrom({}, false), CBCGPGridItemID(1, static_cast<int>(place)));
  }
}

TEST_F(GridColumnOrder, HandlersMayEndEverything) {
  for (int what = 0; what < 6; ++what) {
    SCOPED_TRACE(what);
    grid = std::make_unique<lorv_test::GestureGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 432, 302), &top, 7);
    Start(3, 4);
    Press(Header(0));
    Move(Header(2, 70));
    const auto end_grid = [this] { grid.reset(); };
    const auto end_order = [this] { order.reset(); };
    switch (what) {
      case 0:
        order->SetQuestion([=](int, int) { return end_grid(), true; });
        break;
      case 1:
        order->SetQuestion([=](int, int) { return end_order(), true; });
        break;
      case 2:
        order->SetListener([=](int, int) { end_grid(), end_order(); });
        break;
      case 3:
        end_grid();
        break;
      case 4:
        end_order();
        EXPECT_TRUE(Idle());
        break;
      default:
        while (grid->GetColumnCount() > 0) static_cast<CBCGPGridCtrl&>(*grid).DeleteColumn(0);
    }
    desktop.MouseUp(VK_LBUTTON);
    Run();
    order.reset();
  }
}

TEST_F(GridColumnOrder, AHandlerOfTheEditorsEndThatClearsTheColumnsStopsTheMove) {
  ClearingGrid clearing;
  clearing.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 432, 302), &top, 8);
  clearing.InsertColumns(Names(4), _T(""), 0);
  clearing.AppendRows(2);
  Run();
  clearing.SetFocus();
  clearing.SetCurSel(CBCGPGridItemID(1, 1));
  Type(_T("x"));
  ASSERT_NE(clearing.GetInPlaceWnd(), nullptr);
  lorv::GridColumnOrder own(clearing);
  EXPECT_FALSE(own.Move(0, 2));
  EXPECT_EQ(clearing.GetColumnCount(), 0);
}
