#include <algorithm>

#include "grid/basic/basic_grid.h"
#include "gridcore/control/scope_mark.h"

// The mouse over the suite's grid: which gesture takes a message, and what a plain click does. A gesture's
// step that answers true took the message; the grid may be gone then.

bool CBCGPBasicGridCtrl::CanMouseClick(CPoint point) const {
  CBCGPGridItemID id;
  CRect rect;
  return HitTest(point, id, rect) == FALSE || !click_mask_.Has(id.m_nColumn);
}

void CBCGPBasicGridCtrl::OnLButtonDown(UINT flags, CPoint point) {
  if (DragsRowOrFill() || !CanMouseClick(point)) return;
  if (OnLBtnDownAdjustRowHeight(flags, point) || OnLBtnDownDragCopyFill(flags, point)) return;
  const auto life = Watch();
  CBCGPGridCtrl::OnLButtonDown(flags, point);
  if (!life.expired()) DealWithTrackBestFitCol(true);
}

void CBCGPBasicGridCtrl::OnLButtonUp(UINT flags, CPoint point) {
  const bool drags_column = DragsColumn();
  if (!drags_column && !CanMouseClick(point)) {
    // Nothing follows a mouse whose button is up.
    CancelGestures();
    return;
  }
  if (OnLBtnUpAdjustRowHeight(flags, point) || OnLBtnUpDragCopyFill(flags, point)) return;
  const bool tracked = m_bTracking;
  const auto life = Watch();
  CBCGPGridCtrl::OnLButtonUp(flags, point);
  if (life.expired() || drags_column) return;
  if (tracked) {
    DealWithTrackBestFitCol(false);
    if (life.expired()) return;
    if (IsShowDragContext() == FALSE) PostMessage(BCGM_GRID_ADJUST_LAYOUT);
  }
  ScrollHomeIfAllFits();
  if (!life.expired()) OpenByClick(point);
}

void CBCGPBasicGridCtrl::ScrollHomeIfAllFits() {
  const int first = GetColumnsInfo().GetFirstVisibleColumn();
  // The bars take no part of the client area, so that the page is all the room there is.
  if (first < 0 || GetHorzScrollTotal() > m_nHorzScrollPage) return;
  const int left = GetListRect().left - GetHorzScrollOffset() + GetColumnsInfo().GetColumnLeft(first);
  const int home = GetListRect().left + GetHierarchyOffset() + GetExtraHierarchyOffset();
  if (left < home) OnHScroll(SB_LEFT, 0, nullptr);
}

void CBCGPBasicGridCtrl::OpenByClick(CPoint point) {
  const CBCGPGridItem* item = GetCurSelItem();
  if (item == nullptr || m_hWnd == nullptr || GetListRect().PtInRect(point) == FALSE) return;
  if (item->GetButtonRect().PtInRect(point) == FALSE) SendMessage(WM_KEYDOWN, VK_F2, 0);
}

bool CBCGPBasicGridCtrl::IsAmongSelected(int row, int column) const {
  if (row >= 0) return IsRowSelected(row) != FALSE;
  if (column < 0 || GetColumnsInfo().GetColumnVisible(column) == FALSE) return false;
  const std::vector<CBCGPGridRange>& ranges = GetSelection();
  return std::any_of(ranges.begin(), ranges.end(), [&](const CBCGPGridRange& range) {
    // A range of hidden rows alone has no cell that can be selected.
    return range.m_nLeft <= column && column <= range.m_nRight && GetRangeRect(range).IsRectEmpty() == FALSE;
  });
}

void CBCGPBasicGridCtrl::OnRButtonDown(UINT flags, CPoint point) {
  if (DragsRowOrFill() || !CanMouseClick(point)) return;
  CRect rect;
  const int row = HitTestRowHeader(point, rect);
  const int column = HitTestHeader(point);
  const bool keeps = IsAmongSelected(row, column);
  const auto life = Watch();
  {
    const lorv::ScopeMark selecting(m_bSelecting, Watch(), m_bSelecting || keeps);
    CBCGPGridCtrl::OnRButtonDown(flags, point);
  }
  if (life.expired() || keeps) return;
  if (row >= 0)
    SetCurSel(GetRow(row), TRUE);
  else if (column >= 0)
    SelectColumn(column, TRUE);
}

void CBCGPBasicGridCtrl::OnRButtonUp(UINT flags, CPoint point) {
  if (!DragsRowOrFill() && CanMouseClick(point)) CBCGPGridCtrl::OnRButtonUp(flags, point);
}

BOOL CBCGPBasicGridCtrl::OnSetCursor(CWnd* window, UINT hit, UINT message) {
  if (hit == HTCLIENT) {
    CPoint point(lorv::DesktopInForce().CursorPosition());
    ScreenToClient(&point);
    // The row that is being dragged stays the one, whatever divider the mouse passes.
    if (adjusting_row_height_ || IsInRowHeaderDivider(point)) {
      lorv::DesktopInForce().SetCursor(lorv::kCursorSizeDown);
      return TRUE;
    }
    if (drag_fill_ && IsInDragCopyFillStart(point)) {
      lorv::DesktopInForce().SetCursor(lorv::kCursorCross);
      return TRUE;
    }
    lorv::DesktopInForce().SetCursor(lorv::kCursorArrow);
  }
  return CBCGPGridCtrl::OnSetCursor(window, hit, message);
}

// The press may have come after its own release, through handlers that dispatched messages. Only a move of
// the real mouse shows it: messages that a program sends go on whatever the buttons do.
bool CBCGPBasicGridCtrl::MovesWithoutButton(UINT flags, CPoint point) const {
  if ((flags & MK_LBUTTON) != 0 || lorv::IsKeyDown(VK_LBUTTON)) return false;
  ClientToScreen(&point);
  return point == CPoint(lorv::DesktopInForce().CursorPosition());
}

void CBCGPBasicGridCtrl::OnMouseMove(UINT flags, CPoint point) {
  if (DragsRowOrFill() && MovesWithoutButton(flags, point)) {
    CancelGestures();
    return;
  }
  if (adjusting_row_height_) {
    MoveRowLine(static_cast<int>(point.y));
    return;
  }
  if (!DrawDragCopyFillFrame(flags, point)) CBCGPGridCtrl::OnMouseMove(flags, point);
}

void CBCGPBasicGridCtrl::CancelGestures() {
  EndRowLine();
  EndFill();
  // Before the base forgets the divider: the marks go back to where they were, the layout follows by itself.
  if (best_fit_column_ >= 0) {
    CBCGPGridColumnsInfo& info = GetColumnsInfo();
    info.SetColumnWidthAutoSize(info.GetLastVisibleColumn(), FALSE);
    info.SetColumnWidthAutoSize(best_fit_column_, TRUE);
    best_fit_column_ = -1;
  }
  CBCGPGridCtrl::CancelGestures();
}
