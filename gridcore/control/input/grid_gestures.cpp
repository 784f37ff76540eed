#include <algorithm>

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"
#include "gridcore/painting/open_ink.h"

// What gestures of the mouse share: whose the mouse is, the frame and the line that follow it, the tip beside
// a cell, and how everything ends when the mouse is taken away.

namespace {

constexpr int kFrameWidth = 2;  // pixels at 96 dots an inch

}  // namespace

void CBCGPGridCtrl::HoldMouse() {
  if (m_hWnd != nullptr && lorv::DesktopInForce().Capture() != m_hWnd) SetCapture();
}

void CBCGPGridCtrl::FreeMouse() {
  const auto life = life_.Watch();
  // A tip without the mouse would stay when the mouse goes.
  if (IsToolTipShown()) tip_->Deactivate();
  if (life.expired()) return;
  if (m_hWnd == nullptr || lorv::DesktopInForce().Capture() != m_hWnd) return;
  const lorv::ScopeMark freeing(press_.freeing, life_.Watch());
  lorv::DesktopInForce().SetCapture(nullptr);
}

void CBCGPGridCtrl::OnCaptureChanged(CWnd* next) {
  // Handlers may have taken the mouse again and lost it before this.
  const bool own = std::exchange(press_.freeing, false) || (next != nullptr && next->m_hWnd == m_hWnd);
  const auto life = life_.Watch();
  if (!own) CancelGestures();
  if (!life.expired()) Default();
}

void CBCGPGridCtrl::OnCancelMode() {
  const auto life = life_.Watch();
  CancelGestures();
  if (!life.expired()) Default();
}

void CBCGPGridCtrl::CancelGestures() {
  ++press_.releases;
  const bool tracked = m_bTracking;
  ForgetFollowed();
  // A dragged column stays where the mouse left it.
  if (tracked && m_hWnd != nullptr) PostMessage(BCGM_GRID_ADJUST_LAYOUT);
  const auto life = life_.Watch();
  CloseToolTip();
  if (!life.expired()) FreeMouse();
}

void CBCGPGridCtrl::EnableToolTips(BOOL on) {
  switches_.tips = on != FALSE;
  if (!switches_.tips) CloseToolTip();
}

CBCGPInplaceToolTipCtrl* CBCGPGridCtrl::ToolTip() {
  if (m_hWnd == nullptr) return nullptr;
  if (tip_ == nullptr) tip_ = std::make_unique<CBCGPInplaceToolTipCtrl>();
  // It goes with the window that it was made for.
  if (tip_->m_hWnd == nullptr) {
    tip_->Deactivate();
    if (tip_->Create(this) == FALSE) return nullptr;
  }
  return tip_.get();
}

bool CBCGPGridCtrl::IsToolTipShown() const {
  return tip_ != nullptr && tip_->m_hWnd != nullptr && LastToolTipRect().IsRectEmpty() == FALSE;
}

CRect CBCGPGridCtrl::LastToolTipRect() const {
  CRect rect;
  if (tip_ != nullptr) tip_->GetLastRect(rect);
  return rect;
}

void CBCGPGridCtrl::CloseToolTip() {
  if (!IsToolTipShown()) return;
  const auto life = life_.Watch();
  tip_->Deactivate();
  if (!life.expired() && !InGesture()) FreeMouse();
}

CRect CBCGPGridCtrl::GetSelectionBorder() const {
  if (selection_.IsEmpty()) return {};
  const CBCGPGridRange& range = selection_.Ranges().back();
  const CRect border = GetRangeRect(range);
  const CPoint corner(border.right - 1, border.bottom - 1);
  if (border.IsRectEmpty() != FALSE || m_rectList.PtInRect(corner) == FALSE) return {};
  // Its last columns may have scrolled below the frozen ones, and the corner with them.
  const lorv::ColumnPanes panes = Panes();
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int last = std::min(range.m_nRight, info.GetColumnCount() - 1);
  const int end = RoomBeforeCells() + info.GetColumnLeft(last) + info.GetColumnWidth(last);
  return end > panes.frozen && panes.OnScreen(panes.frozen, end).IsEmpty() && panes.AreSplit() ? CRect()
                                                                                               : border;
}

CBCGPGridItemID CBCGPGridCtrl::CellAtPlace(CPoint point) const {
  const int row = heights_.LineAt(std::int64_t{point.y} - m_rectList.top + m_nVertScrollOffset);
  const int column = ColumnAt(static_cast<int>(point.x));
  // Behind the rows stand the lines of groups.
  return row < 0 || row >= rows_.Size() || column < 0 ? CBCGPGridItemID() : MainCell({row, column});
}

int CBCGPGridCtrl::GetRowBottom(int row) const {
  const std::int64_t bottom =
      std::int64_t{m_rectList.top} - m_nVertScrollOffset + heights_.OffsetOf(row) + heights_.SizeOf(row);
  return static_cast<int>(std::clamp<std::int64_t>(bottom, -(1 << 28), 1 << 28));
}

void CBCGPGridCtrl::SetHorzScrollTotal(int total) {
  m_nHorzScrollTotal = total;
  SetBars();
}

void CBCGPGridCtrl::OnDrawDragFrame() {
  if (m_hWnd == nullptr || m_rectDragFrame.IsRectEmpty() != FALSE) return;
  const CRect& frame = m_rectDragFrame;
  const int width = Scaled(kFrameWidth);
  // Its edges alone: what lies within may be all of the screen.
  for (const CRect& edge : {CRect(frame.left, frame.top, frame.right, frame.top + width),
                            CRect(frame.left, frame.bottom - width, frame.right, frame.bottom),
                            CRect(frame.left, frame.top, frame.left + width, frame.bottom),
                            CRect(frame.right - width, frame.top, frame.right, frame.bottom)})
    InvalidateRect(&edge, FALSE);
}

void CBCGPGridCtrl::HideDragFrame() {
  CBCGPGridCtrl::OnDrawDragFrame();
  m_rectDragFrame.SetRectEmpty();
}

void CBCGPGridCtrl::DrawDragMarks(CDC* dc) {
  if (m_rectDragFrame.IsRectEmpty() != FALSE && m_rectTrackRow.IsRectEmpty() != FALSE) return;
  const int saved = dc->SaveDC();
  dc->IntersectClipRect(&m_rectList);
  const COLORREF ink = lorv::InkOver(GetBkColor(), COLOR_WINDOWTEXT);
  if (m_rectDragFrame.IsRectEmpty() == FALSE) {
    CRect frame = m_rectDragFrame;
    for (int line = Scaled(kFrameWidth); line > 0; --line) {
      dc->Draw3dRect(&frame, ink, ink);
      frame.DeflateRect(1, 1);
    }
  }
  if (m_rectTrackRow.IsRectEmpty() == FALSE) {
    CRect row_end = m_rectTrackRow;
    row_end.top = GetRowBottom(m_nTrackRow) - 1;
    row_end.bottom = row_end.top + 1;
    dc->FillSolidRect(&row_end, ink);
    dc->FillSolidRect(&m_rectTrackRow, ink);
  }
  dc->RestoreDC(saved);
}
