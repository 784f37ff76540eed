#include <algorithm>

#include "framework/drawing/device_context.h"
#include "grid/basic/basic_grid.h"
#include "grid/gestures/cell_tip.h"

// Tips of cells whose text does not fit, and of what a fill will give. While one is shown the mouse is the
// grid's, so that the tip goes when the mouse does.

namespace {

// Of longer texts the beginning is shown: each move of the mouse measures it.
constexpr int kMostTipUnits = 4096;
constexpr int kGroupValue = -1;
constexpr int kRowName = -2;

}  // namespace

// What a tip is for, in the grid's client area.
struct CBCGPBasicGridCtrl::TipSubject {
  CBCGPGridItemID cell;
  CString text;
  CRect place;
  int column_width = 0;
};

void CBCGPBasicGridCtrl::TrackToolTip(CPoint point) {
  ShowCellToolTips(point, CString());
}

bool CBCGPBasicGridCtrl::ShowCellToolTips(CPoint point, const CString& text) {
  if (m_hWnd == nullptr || m_bTracking || m_bSelecting || lorv::DesktopInForce().MenuUp()) return false;
  const auto life = Watch();
  const bool settled = TipAt(point, text);
  if (life.expired()) return settled;
  // Held over the whole of it: giving the mouse back and taking it again is a move of the mouse on some
  // systems, which would lead here without end.
  if (IsToolTipShown() || InGesture())
    HoldMouse();
  else
    FreeMouse();
  return settled;
}

bool CBCGPBasicGridCtrl::TipAt(CPoint point, const CString& text) {
  CPoint screen = point;
  ClientToScreen(&screen);
  const CRect last = LastToolTipRect();
  TipSubject subject;
  const bool off = IsToolTipsEnabled() == FALSE || last.PtInRect(screen) != FALSE;
  if (off || !FindTipSubject(point, subject)) {
    CloseToolTip();
    return false;
  }
  const bool within = subject.place.PtInRect(point) != FALSE;
  if (IsToolTipShown() && within && subject.cell == tip_cell_) return false;
  return ShowTip(subject, text);
}

bool CBCGPBasicGridCtrl::FindTipSubject(CPoint point, TipSubject& subject) const {
  const int number = GetListRect().PtInRect(point) != FALSE ? HitTestRow(point) : -1;
  const CBCGPGridRow* row = GetRow(number);
  if (row == nullptr) return false;
  subject.column_width = GetListRect().Width();
  if (HitTestArea(point) == clickName) {
    subject.cell = {number, kRowName};
    subject.place = row->GetNameTooltipRect();
    if (point.x >= subject.place.left) subject.text = row->GetNameTooltip();
    return true;
  }
  if ((row->GetFlags() & lorv::kGroupRow) != 0) {
    subject.cell = {number, kGroupValue};
    subject.place = row->GetTooltipRect();
    subject.column_width = subject.place.Width();
    subject.text = row->GetValueTooltip();
    return true;
  }
  CRect rect;
  if (HitTest(point, subject.cell, rect) == FALSE) return false;
  const CBCGPGridItem* item = GetGridItem(subject.cell);
  if (item == nullptr || item->IsInPlaceEditing() != FALSE) return false;
  // Merged cells are as wide as their block.
  subject.column_width = rect.Width();
  subject.place = item->GetTooltipRect();
  subject.text = item->GetValueTooltip();
  return true;
}

bool CBCGPBasicGridCtrl::ShowTip(const TipSubject& subject, const CString& text) {
  const CString own = subject.text.Left(kMostTipUnits);
  lorv::CellTip tip;
  {
    CClientDC dc(this);
    dc.SelectObject(GetFont());
    TEXTMETRIC metrics = {};
    dc.GetTextMetrics(&metrics);
    tip = lorv::PlanCellTip(own, text.Left(kMostTipUnits), subject.place, subject.column_width,
                            static_cast<int>(dc.GetTextExtent(own).cx), static_cast<int>(metrics.tmHeight),
                            Dots());
  }
  CBCGPInplaceToolTipCtrl* const window = tip.text.IsEmpty() ? nullptr : ToolTip();
  if (window == nullptr) {
    CloseToolTip();
    return true;
  }
  ClientToScreen(&tip.rect);
  if (IsToolTipShown() && tip.rect.TopLeft() == LastToolTipRect().TopLeft()) return false;
  tip_cell_ = subject.cell;
  window->SetTextMargin(Scaled(lorv::kTipTextMargin));
  window->SetFont(GetFont());
  window->SetMultiline(tip.multiline ? TRUE : FALSE);
  window->Track(tip.rect, tip.text);
  return true;
}
