#include <algorithm>
#include <utility>

#include "framework/objects/exceptions.h"
#include "framework/values/variant_text.h"
#include "grid/basic/basic_grid.h"
#include "grid/gestures/column_steps.h"
#include "grid/gestures/fill_frame.h"
#include "grid/gestures/fill_rule.h"

// Filling: the corner of a selection is dragged over the cells beside it, which get its values. What the
// values are set by runs handlers, which may end the grid in the middle of it.

lorv::ColumnView CBCGPBasicGridCtrl::ColumnsShown() const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  return {info.GetColumnCount(), [&info](int column) { return info.GetColumnVisible(column) != FALSE; }};
}

int CBCGPBasicGridCtrl::GetInVisibleColCount(int first, int last) const {
  return lorv::HiddenColumns(ColumnsShown(), first, last);
}

int CBCGPBasicGridCtrl::GetOffsetVisibleCol(int column, int offset) const {
  return lorv::ShownColumnAt(ColumnsShown(), column, offset);
}

bool CBCGPBasicGridCtrl::IsInDragCopyFillStart(CPoint point) const {
  const CRect border = GetSelectionBorder();
  return border.IsRectEmpty() == FALSE && lorv::OnFillHandle(border, point, Scaled(lorv::kFillHandleReach));
}

bool CBCGPBasicGridCtrl::OnLBtnDownDragCopyFill(UINT /*flags*/, CPoint point) {
  if (!drag_fill_ || !IsInDragCopyFillStart(point)) return false;
  const auto life = Watch();
  CloseToolTip();
  if (life.expired() || m_hWnd == nullptr) return true;
  m_rectDragFrame.SetRectEmpty();
  ForgetFollowed();
  drag_fill_running_ = true;
  // A release beside the window ends the fill as well.
  HoldMouse();
  return true;
}

bool CBCGPBasicGridCtrl::EndFill() {
  if (!std::exchange(drag_fill_running_, false)) return false;
  HideDragFrame();
  return true;
}

bool CBCGPBasicGridCtrl::DrawDragCopyFillFrame(UINT /*flags*/, CPoint point) {
  if (!drag_fill_running_) return false;
  if (GetSelection().empty()) {
    // The table was emptied under the mouse.
    CancelGestures();
    return true;
  }
  const CBCGPGridRange source = GetSelection().back();
  const CRect source_rect = GetRangeRect(source);
  CBCGPGridItemID cell;
  CRect cell_rect;
  const bool over_cell = HitTest(point, cell, cell_rect) != FALSE;
  const bool home = source_rect.PtInRect(point) != FALSE || IsInDragCopyFillStart(point);
  if (!over_cell && (!home || m_rectDragFrame == source_rect)) return true;
  const lorv::FillFrame wanted = lorv::FillFrameAt(source_rect, over_cell ? cell_rect : source_rect, point);
  const CRect next = lorv::NextFillFrame(m_rectDragFrame, source_rect, wanted.frame, home);
  if (m_rectDragFrame != next) {
    HideDragFrame();
    m_rectDragFrame = next;
  }
  OnDrawDragFrame();
  ShowFillTip(source, source_rect, wanted.tip);
  return true;
}

void CBCGPBasicGridCtrl::ShowFillTip(const CBCGPGridRange& source, const CRect& source_rect, CPoint tip) {
  const auto life = Watch();
  if (m_rectDragFrame == source_rect)
    CloseToolTip();
  else
    ShowCellToolTips(tip, GetDragCopyFillTips(source, source_rect, m_rectDragFrame));
  if (!life.expired() && drag_fill_running_) HoldMouse();
}

CString CBCGPBasicGridCtrl::GetDragCopyFillTips(const CBCGPGridRange& source, const CRect& source_rect,
                                                const CRect& frame_rect) const {
  const auto cell_at = [this](CPoint point) { return CellAtPlace(point); };
  const CBCGPGridItemID cell = lorv::FillTipCell(source, source_rect, frame_rect, ColumnsShown(), cell_at);
  const CBCGPGridItem* item = GetItem(cell.m_nRow, cell.m_nColumn);
  return item == nullptr ? CString() : item->CBCGPGridItem::FormatItem();
}

bool CBCGPBasicGridCtrl::OnLBtnUpDragCopyFill(UINT /*flags*/, CPoint /*point*/) {
  if (!drag_fill_running_) return false;
  // The frame decides what is filled, wherever the button went up.
  const CRect frame = m_rectDragFrame;
  const auto life = Watch();
  EndFill();
  CloseToolTip();
  if (life.expired()) return true;
  FreeMouse();
  if (life.expired()) return true;
  if (GetSelection().empty()) AfxThrowInvalidArgException();
  const CBCGPGridRange source = GetSelection().back();
  const auto cell_at = [this](CPoint point) { return CellAtPlace(point); };
  const auto target = lorv::FillTargetOf(source, GetRangeRect(source), frame, cell_at);
  if (!target.has_value()) return true;
  const CBCGPGridRange filled = source.JoinWith(target->range);
  const lorv::StepScope step(Changes());
  try {
    CopyRangeValue(source, target->range, target->across, target->forward);
  } catch (...) {
    // What was filled so far is there, and not drawn yet.
    if (!life.expired()) Invalidate(FALSE);
    throw;
  }
  if (!life.expired()) SelectFilled(source, filled);
  return true;
}

void CBCGPBasicGridCtrl::SelectFilled(const CBCGPGridRange& source, const CBCGPGridRange& filled) {
  const auto life = Watch();
  if (filled != source) {
    SetCurSel(CBCGPGridItemID(filled.m_nTop, filled.m_nLeft), lorv::kSelectFirstCorner, FALSE);
    if (life.expired()) return;
    SetCurSel(CBCGPGridItemID(filled.m_nBottom, filled.m_nRight), lorv::kSelectOppositeCorner, FALSE);
    if (life.expired()) return;
  }
  CRect rect = GetRangeRect(filled);
  if (rect.IsRectEmpty() != FALSE || m_hWnd == nullptr) return;
  rect.InflateRect(2, 1, 2, 2);
  // The headers show which rows and columns are selected now.
  if (filled != source) {
    rect.left = std::min(rect.left, GetRowHeaderRect().left);
    rect.top = std::min(rect.top, GetHeaderRect().top);
  }
  InvalidateRect(&rect, FALSE);
}

bool CBCGPBasicGridCtrl::CopyCellValue(const CBCGPGridItemID& from, const CBCGPGridItemID& to) {
  const CBCGPGridItem* given = GetItem(from.m_nRow, from.m_nColumn);
  const CBCGPGridItem* taker = GetItem(to.m_nRow, to.m_nColumn);
  if (given == nullptr || taker == nullptr) return true;
  if (taker->IsReadOnly() != FALSE || taker->IsAllowEdit() == FALSE) return true;
  // A copy: whoever sets the value may take the cell away that gave it.
  const _variant_t value = given->GetValue();
  const auto life = Watch();
  const auto by_user = Changes().ByUser();
  SetValue(to.m_nRow, to.m_nColumn, value, FALSE);
  return !life.expired();
}

bool CBCGPBasicGridCtrl::CopyRangeValue(const CBCGPGridRange& source, const CBCGPGridRange& target,
                                        bool by_column, bool forward) {
  const auto copy = [this](const CBCGPGridItemID& from, const CBCGPGridItemID& to) {
    return CopyCellValue(from, to);
  };
  return lorv::FillPairs(source, target, by_column, forward, ColumnsShown(), copy);
}
