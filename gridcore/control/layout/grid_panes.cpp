#include "gridcore/control/layout/grid_panes.h"
#include "gridcore/painting/open_ink.h"

#include <algorithm>

#include "framework/drawing/device_context.h"

// Frozen columns: which part of the grid a place of the screen belongs to, and how both are drawn. The room
// before the cells is frozen along with them.

lorv::ColumnPanes CBCGPGridCtrl::Panes() const {
  lorv::ColumnPanes panes{static_cast<int>(m_rectList.left), 0, m_nHorzScrollOffset, frozen_.drawn};
  if (frozen_.columns == 0) return panes;
  const int room = RoomBeforeCells();
  const int width = GetColumnsInfo().GetWidthOfFirst(frozen_.columns, MostFrozenWidth() - room);
  if (width > 0) panes.frozen = room + width;
  return panes;
}

int CBCGPGridCtrl::MostFrozenWidth() const {
  return m_rectList.Width() - Scaled(lorv::kLeastScrollingWidth);
}

void CBCGPGridCtrl::SetFrozenColumns(int count) {
  count = std::max(0, count);
  if (count == frozen_.columns) return;
  frozen_.columns = count;
  AdjustLayout();
}

int CBCGPGridCtrl::ColumnAt(int x) const {
  return GetColumnsInfo().HitTestColumn(Panes().PlaceAt(x) - RoomBeforeCells());
}

int CBCGPGridCtrl::DividerAt(int x) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const lorv::ColumnPanes panes = Panes();
  const int room = RoomBeforeCells();
  const int found = info.HitTestDivider(panes.PlaceAt(x) - room, Scaled(lorv::kDividerReach));
  if (!panes.AreSplit()) return found;
  // An edge counts where it is seen: those of the frozen part up to its end, the others behind it.
  const int end = found < 0 ? 0 : room + info.GetColumnLeft(found) + info.GetColumnWidth(found);
  const bool within = x < panes.Edge();
  if (found >= 0 && (within ? end <= panes.frozen : panes.left + end - panes.scrolled > panes.Edge()))
    return found;
  if (std::abs(x - panes.Edge()) > Scaled(lorv::kDividerReach)) return -1;
  return info.HitTestDivider(panes.frozen - room, 0);
}

// Of a selection that is dragged from what scrolls over the frozen part: the column that has to come into
// sight before any frozen one can be reached. -1: none.
int CBCGPGridCtrl::HiddenBeforeEdge(int x) const {
  const lorv::ColumnPanes panes = Panes();
  if (!panes.AreSplit() || panes.scrolled <= 0 || x >= panes.Edge()) return -1;
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  if (panes.Stays(RoomBeforeCells() + info.GetColumnLeft(anchor_.m_nColumn))) return -1;
  const int first = ColumnAt(panes.Edge());
  const bool cut = first >= 0 && panes.ScreenAt(RoomBeforeCells() + info.GetColumnLeft(first)) < panes.Edge();
  return cut ? first : info.GetNextVisibleColumn(first, FALSE);
}

CRect CBCGPGridCtrl::GetColumnRect(int column) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int left = RoomBeforeCells() + info.GetColumnLeft(column);
  const lorv::PixelStretch seen = Panes().OnScreen(left, left + info.GetColumnWidth(column));
  return seen.IsEmpty() ? CRect() : CRect(seen.from, m_rectHeader.top, seen.to, m_rectList.bottom);
}

void CBCGPGridCtrl::DrawFrozenEdge(CDC* dc) const {
  const lorv::ColumnPanes panes = Panes();
  if (!panes.AreSplit()) return;
  const int height = static_cast<int>(m_rectList.bottom - m_rectHeader.top);
  dc->FillSolidRect(panes.Edge() - 1, m_rectHeader.top, 1, height,
                    lorv::InkOver(GetBkColor(), COLOR_WINDOWTEXT));
}

void CBCGPGridCtrl::PaneTurn::Split() {
  const lorv::ColumnPanes panes = grid_.Panes();
  split_ = panes.AreSplit();
  edge_ = panes.Edge();
  if (split_) life_ = grid_.Watch();
}

bool CBCGPGridCtrl::PaneTurn::Begin(lorv::ColumnPane pane) {
  CRect part(grid_.m_rectList.left, grid_.m_rectHeader.top, grid_.m_rectList.right, grid_.m_rectList.bottom);
  (pane == lorv::ColumnPane::kFrozen ? part.right : part.left) = edge_;
  saved_ = dc_->SaveDC();
  dc_->IntersectClipRect(&part);
  grid_.frozen_.drawn = pane;
  drawing_ = true;
  CRect seen;
  dc_->GetClipBox(&seen);
  return seen.IsRectEmpty() == FALSE;
}

// False: the grid has ended, and the drawing with it.
bool CBCGPGridCtrl::PaneTurn::End() {
  if (life_.expired()) return false;
  if (!std::exchange(drawing_, false)) return true;
  grid_.frozen_.drawn = lorv::ColumnPane::kBoth;
  dc_->RestoreDC(saved_);
  return true;
}
