#include <algorithm>

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// A piece of the table on paper. It is drawn by the same steps as the window, which see other areas and
// offsets for the while: headers, groups, merged cells and what descendants draw are there as on the screen.

int CBCGPGridCtrl::LineEdgeAt(int place) const {
  const int line = heights_.LineAt(place);
  const std::int64_t edge = line < 0 ? heights_.Total() : heights_.OffsetOf(line);
  return static_cast<int>(std::min<std::int64_t>(edge, m_nVertScrollTotal));
}

CRect CBCGPGridCtrl::GetRangePlace(const CBCGPGridRange& range) const {
  const CRect rect = RectIn({m_rectList.left, 0, m_nHorzScrollOffset}, range);
  return rect - CPoint(m_rectList.left - m_nHorzScrollOffset, m_rectList.top - m_nVertScrollOffset);
}

bool CBCGPGridCtrl::DrawPiece(CDC* dc, CSize size, CPoint from) {
  const auto life = life_.Watch();
  const int left = m_rectRowHeader.Width();
  const int top = m_rectHeader.Height();
  const CRect list(left, top, left + static_cast<int>(size.cx), top + static_cast<int>(size.cy));
  const CRect beside(0, top, left, static_cast<int>(list.bottom));
  const lorv::ScopeMark cells(m_rectList, life, list);
  const lorv::ScopeMark header(m_rectHeader, life, CRect(left, 0, static_cast<int>(list.right), top));
  const lorv::ScopeMark row_header(m_rectRowHeader, life, beside);
  const lorv::ScopeMark across(m_nHorzScrollOffset, life, static_cast<int>(from.x));
  const lorv::ScopeMark down(m_nVertScrollOffset, life, static_cast<int>(from.y));
  const lorv::ScopeMark none_frozen(frozen_.columns, life, 0);
  // Paper has no selection.
  const lorv::ScopeMark none_selected(selection_, life, lorv::SelectedRanges());
  const lorv::ScopeMark none_current(current_, life, CBCGPGridItemID());
  CFont* const old = dc->SelectObject(GetFont());
  dc->SetBkMode(TRANSPARENT);
  DrawRows(dc, list);
  if (life.expired()) return false;
  if (beside.IsRectEmpty() == FALSE) DrawRowHeader(dc, beside);
  if (life.expired()) return false;
  if (top > 0) OnDrawHeader(dc);
  if (life.expired()) return false;
  dc->SelectObject(old);
  return true;
}
