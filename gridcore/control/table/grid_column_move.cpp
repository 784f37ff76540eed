#include <algorithm>

#include "gridcore/control/column_taker.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/geometry/moved_element.h"

// Columns that change their places. A column takes its number along: its cells, and whatever else the grid
// keeps by number, go with it, so that nothing else needs to know of an order on the screen. The mouse drags
// a column by its header where somebody takes it.

bool CBCGPGridCtrl::CanMoveColumn(int column, int to) const {
  if (!GetColumnsInfo().CanMoveColumn(column, to) || !merged_.CanMoveColumn(column, to)) return false;
  // Who fills a row of a virtual table counts its cells.
  return !rows_.IsVirtual() || !rows_.Virtual()->IsMaking();
}

BOOL CBCGPGridCtrl::MoveColumn(int column, int to) {
  if (!CanMoveColumn(column, to)) return FALSE;
  if (column == to) return TRUE;
  const auto life = life_.Watch();
  EndEditItem(TRUE);
  if (life.expired() || !CloseEditors()) return FALSE;
  CloseFilterEditor();
  // What the handlers left of the table decides.
  if (life.expired() || editing_ != nullptr || !CanMoveColumn(column, to)) return FALSE;
  ShiftColumn(column, to);
  AdjustLayout();
  return TRUE;
}

void CBCGPGridCtrl::ShiftColumn(int column, int to) {
  if (column == to) return;
  changes_.ReportColumnMoving(column, to);
  GetColumnsInfo().MoveColumn(column, to);
  if (rows_.IsVirtual())
    rows_.Virtual()->Forget();
  else
    rows_.ForEach([=](CBCGPGridRow& row) { row.MoveItem(column, to); });
  selection_.MoveColumn(column, to);
  merged_.MoveColumn(column, to);
  const auto follow = [=](int& number) { number = lorv::LineAfterMove(number, column, to); };
  for (int* number : {&current_.m_nColumn, &anchor_.m_nColumn, &sort_.column}) follow(*number);
  std::for_each(group_columns_.begin(), group_columns_.end(), follow);
  if (!filter_.texts.empty()) {
    filter_.texts.resize(static_cast<std::size_t>(GetColumnCount()));
    lorv::MoveElement(filter_.texts, column, to);
  }
  OnColumnMoved(column, to);
}

void CBCGPGridCtrl::SetColumnTaker(lorv::ColumnTaker* taker) {
  header_press_.taker = taker;
  if (header_press_.on) CancelGestures();
}

// The number of the column in front of which one that is let go there would come, and where the mark of that
// stands; the first or the last place beside all columns, behind the last one that is seen. -1: none is seen.
int CBCGPGridCtrl::DropPlaceAt(CPoint point, int& mark) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int x =
      std::clamp(static_cast<int>(point.x), static_cast<int>(m_rectList.left),
                 std::max(static_cast<int>(m_rectList.left), static_cast<int>(m_rectList.right) - 1));
  int column = ColumnAt(x);
  const bool beside = column < 0;
  const bool first = beside && Panes().PlaceAt(x) < RoomBeforeCells();
  if (beside) column = first ? info.GetFirstVisibleColumn() : info.GetLastVisibleColumn();
  const CRect rect = GetColumnRect(column);
  if (column < 0 || rect.IsRectEmpty() != FALSE) return -1;
  const bool before = beside ? first : x < (rect.left + rect.right) / 2;
  mark = static_cast<int>(before ? rect.left : rect.right);
  return before ? column : column + 1;
}

void CBCGPGridCtrl::DragColumn(CPoint point) {
  const auto trembles = [this](LONG from, LONG to) { return std::abs(to - from) < Scaled(lorv::kDragStart); };
  if (!header_press_.moves && trembles(header_press_.at.x, point.x) && trembles(header_press_.at.y, point.y))
    return;
  header_press_.moves = true;
  const auto life = life_.Watch();
  // Beside the grid it scrolls to what is out of sight.
  const int step =
      point.x >= m_rectList.right ? m_nLargeRowHeight : (point.x < m_rectList.left ? -m_nLargeRowHeight : 0);
  if (step != 0) ScrollTo(m_nHorzScrollOffset + step, m_nVertScrollOffset);
  // Handlers of the scrolling may have ended the drag.
  if (life.expired() || !DragsColumn()) return;
  HideDragFrame();
  int mark = 0;
  const int half = Scaled(lorv::kDropMarkWidth);
  if (DropPlaceAt(point, mark) >= 0)
    m_rectDragFrame = CRect(mark - half, m_rectList.top, mark + half, m_rectList.bottom);
  CBCGPGridCtrl::OnDrawDragFrame();
}

// Nothing of the press follows the mouse any more.
void CBCGPGridCtrl::DropColumn(const lorv::HeaderPress& press, CPoint point) {
  const int column = press.column;
  if (header_press_.taker == nullptr || !GetColumnsInfo().HasColumn(column)) return;
  if (!press.moves) {
    ClickHeader(press.flags, column);
    return;
  }
  int mark = 0;
  const int before = DropPlaceAt(point, mark);
  const int to = before > column ? before - 1 : before;
  if (to >= 0 && to != column) header_press_.taker->OnColumnDropped(column, to);
}
