#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/values/variant_text.h"
#include "grid/basic/basic_grid.h"
#include "grid/rows/row_height_drag.h"

// Dividers that the user drags: that of a row changes the height of all rows, that of a column its width, and
// the double click on it fits the column to its texts.

namespace {

// Pixels at 96 dots an inch.
constexpr int kUsualWidth = 80;
constexpr int kSpareWidth = 40;
constexpr int kDividerMargin = 10;

}  // namespace

bool CBCGPBasicGridCtrl::IsInRowHeaderDivider(CPoint point) {
  CRect rect;
  const int row = HitTestRowHeader(point, rect);
  if (row < 0) return false;
  const int divided = lorv::DividedRow(rect, row, point, Scaled(lorv::kRowDividerBand));
  if (divided < 0) return false;
  m_nTrackRow = divided;
  return true;
}

bool CBCGPBasicGridCtrl::OnLBtnDownAdjustRowHeight(UINT /*flags*/, CPoint point) {
  if (!IsInRowHeaderDivider(point)) return false;
  // A press that comes late, after its button went up again, must not begin what only the button's way up
  // ends.
  if (!lorv::IsKeyDown(VK_LBUTTON)) return true;
  const auto life = Watch();
  CloseToolTip();
  if (life.expired()) return true;
  HoldMouse();
  if (life.expired() || m_hWnd == nullptr || lorv::DesktopInForce().Capture() != m_hWnd) return true;
  ForgetFollowed();
  adjusting_row_height_ = true;
  DrawAdjustingRowRefLn();
  return true;
}

void CBCGPBasicGridCtrl::DrawAdjustingRowRefLn() {
  if (m_hWnd == nullptr) return;
  const int bottom = GetRowBottom(m_nTrackRow);
  const int left = GetListRect().left;
  CRect line(left, bottom - 1, left + GetColumnsInfo().GetTotalWidth(), bottom);
  InvalidateRect(&line, FALSE);
}

void CBCGPBasicGridCtrl::MoveRowLine(int y) {
  DrawAdjustingRowRefLn();
  if (m_rectTrackRow.IsRectEmpty() == FALSE) InvalidateRect(&m_rectTrackRow, FALSE);
  const int left = GetListRect().left;
  m_rectTrackRow = CRect(left, y, left + GetColumnsInfo().GetTotalWidth(), y + 1);
  InvalidateRect(&m_rectTrackRow, FALSE);
}

void CBCGPBasicGridCtrl::EndRowLine() {
  if (!std::exchange(adjusting_row_height_, false)) return;
  DrawAdjustingRowRefLn();
  if (m_hWnd != nullptr && m_rectTrackRow.IsRectEmpty() == FALSE) InvalidateRect(&m_rectTrackRow, FALSE);
  m_rectTrackRow.SetRectEmpty();
  m_nTrackRow = -1;
}

bool CBCGPBasicGridCtrl::OnLBtnUpAdjustRowHeight(UINT /*flags*/, CPoint point) {
  if (!adjusting_row_height_) return false;
  TrackRowHeader(static_cast<int>(point.y));
  EndRowLine();
  const auto life = Watch();
  FreeMouse();
  if (!life.expired()) AdjustLayout();
  return true;
}

void CBCGPBasicGridCtrl::TrackRowHeader(int y) {
  // The row may have gone while it was dragged.
  if (GetRow(m_nTrackRow) == nullptr) return;
  adjusted_row_height_ = lorv::DraggedRowHeight(adjusted_row_height_, GetRowBottom(m_nTrackRow), y,
                                                Scaled(lorv::kLeastRowHeight));
}

bool CBCGPBasicGridCtrl::DealWithTrackBestFitCol(bool down) {
  if (down) return !m_bTracking || LendBestFit();
  return best_fit_column_ < 0 ? SettleLastColumn() : ReturnBestFit();
}

bool CBCGPBasicGridCtrl::LendBestFit() {
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int last = info.GetLastVisibleColumn();
  int marked = 0;
  best_fit_column_ = -1;
  for (int column = 0; column <= last; ++column) {
    if (info.GetColumnWidthAutoSize(column) == FALSE) continue;
    ++marked;
    best_fit_column_ = static_cast<short>(column);
  }
  if (marked != 1 || best_fit_column_ == last) {
    best_fit_column_ = -1;
    return false;
  }
  // Without the mark it keeps the width that it has.
  info.SetColumnWidthAutoSize(best_fit_column_, FALSE);
  info.SetColumnWidthAutoSize(last, TRUE);
  return true;
}

bool CBCGPBasicGridCtrl::SettleLastColumn() {
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int last = info.GetLastVisibleColumn();
  const auto life = Watch();
  if (info.GetColumnWidthAutoSize(last) != FALSE) {
    const int room = OnGetColumnAutoSize(last);
    if (life.expired()) return false;
    if (room < 1 && (GetStyle() & WS_HSCROLL) == 0) {
      info.SetColumnWidth(last, Scaled(kUsualWidth));
      SetHorzScrollTotal(info.GetTotalWidth() + Scaled(kSpareWidth));
      if (life.expired()) return false;
    }
  }
  AdjustLayout();
  return true;
}

bool CBCGPBasicGridCtrl::ReturnBestFit() {
  const auto life = Watch();
  AdjustLayout();
  if (life.expired()) return true;
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int last = info.GetLastVisibleColumn();
  const int room = OnGetColumnAutoSize(last);
  if (life.expired()) return true;
  const bool bar = (GetStyle() & WS_HSCROLL) != 0;
  if (room >= 1)
    info.SetColumnWidth(last, room);
  else if (!bar)
    info.SetColumnWidth(last, Scaled(kUsualWidth));
  const int spare = room < 1 && !bar ? Scaled(kSpareWidth) : 0;
  info.SetColumnWidthAutoSize(last, FALSE);
  info.SetColumnWidthAutoSize(best_fit_column_, TRUE);
  best_fit_column_ = -1;
  SetHorzScrollTotal(info.GetTotalWidth() + spare);
  return true;
}

int CBCGPBasicGridCtrl::WidestText(int column) {
  CClientDC dc(this);
  dc.SelectObject(GetFont());
  int widest = 0;
  const auto measure = [&](CString text) {
    if (!text.Trim().IsEmpty()) widest = std::max(widest, static_cast<int>(dc.GetTextExtent(text).cx));
  };
  const int rows = GetRowCount();
  for (int row = 0; row < rows; ++row) {
    try {
      measure(ValueText(row, column));
    } catch (const _com_error&) {
      // A value that has no text shows none either.
    }
  }
  if (bold_names_) dc.SelectObject(GetBoldFont());
  measure(GetColumnName(column));
  return widest;
}

void CBCGPBasicGridCtrl::OnHeaderDividerDblClick(int column) {
  const auto life = Watch();
  CBCGPGridCtrl::OnHeaderDividerDblClick(column);
  if (life.expired() || m_hWnd == nullptr) return;
  const int widest = WidestText(column);
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  if (widest <= info.GetMinWidth(column)) return;
  info.SetColumnWidth(column, widest + Scaled(kDividerMargin));
  info.Resize(GetListRect().Width(), FALSE);
  SetScrollSizes();
  if (!life.expired()) AdjustLayout();
}
