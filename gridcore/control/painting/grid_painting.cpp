#include <algorithm>

#include "framework/drawing/device_context.h"
#include "gridcore/columns/columns_info_ex.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/layout/grid_panes.h"
#include "gridcore/painting/open_ink.h"

// What a grid shows. Only rows and columns that meet the part that is out of date are looked at, so a page
// costs the same in a table of any size.

namespace {

constexpr COLORREF kUsualLine = RGB(208, 208, 208);
constexpr int kTextMargin = 3;

void FillRecord(CDC* dc, const CRect& rect, const BCGP_GRID_COLOR_DATA::ColorData& record, COLORREF usual) {
  const COLORREF first = record.m_clrBackground == lorv::kNoColour ? usual : record.m_clrBackground;
  if (record.m_clrGradient == lorv::kNoColour)
    dc->FillSolidRect(&rect, first);
  else
    dc->GradientRect(&rect, first, record.m_clrGradient, record.m_nGradientAngle == 90);
}

COLORREF InkOf(COLORREF own, COLORREF ground, int system) {
  return own == lorv::kNoColour ? lorv::InkOver(ground, system) : own;
}

// Far parts may be out of date, and nothing between them: the header and a row below, say.
bool ShowsLine(const CDC& dc, CRect line, const CRect& across) {
  line.left = across.left;
  line.right = across.right;
  return dc.RectVisible(&line) != FALSE;
}

}  // namespace

// A colour that the host left open follows the desktop, also when that turns dark.
COLORREF CBCGPGridCtrl::Themed(COLORREF colour, int system) const {
  return colour == lorv::kNoColour ? lorv::DesktopInForce().Colour(system) : colour;
}

COLORREF CBCGPGridCtrl::BackColourOf(const CBCGPGridItem& item) const {
  const CBCGPGridItemID id = item.GetGridItemID();
  // The current cell keeps its own colours within a frame, so that what is typed stands on its own ground.
  if (selection_.Holds(id) && id != current_)
    return Themed(theme_.m_SelColors.m_clrBackground, COLOR_HIGHLIGHT);
  if (item.GetBackgroundColor() != lorv::kNoColour) return item.GetBackgroundColor();
  const auto& record = id.m_nRow % 2 == 0 ? theme_.m_EvenColors : theme_.m_OddColors;
  return record.m_clrBackground != lorv::kNoColour ? record.m_clrBackground : GetBkColor();
}

COLORREF CBCGPGridCtrl::TextColourOf(const CBCGPGridItem& item) const {
  const CBCGPGridItemID id = item.GetGridItemID();
  // Grey before all else: a disabled cell shows that it is, selected too.
  if (item.IsEnabled() == FALSE) return lorv::DesktopInForce().Colour(COLOR_GRAYTEXT);
  if (selection_.Holds(id) && id != current_)
    return InkOf(theme_.m_SelColors.m_clrText, BackColourOf(item), COLOR_HIGHLIGHTTEXT);
  if (item.GetTextColor() != lorv::kNoColour) return item.GetTextColor();
  return InkOf(theme_.m_clrText, BackColourOf(item), COLOR_WINDOWTEXT);
}

int CBCGPGridCtrl::DoDrawText(CDC* dc, const CString& text, CRect rect, UINT flags) const {
  return dc->DrawText(text, rect, flags);
}

void CBCGPGridCtrl::OnPaint() {
  CPaintDC dc(this);
  OnDraw(&dc);
}

void CBCGPGridCtrl::OnDraw(CDC* dc) {
  CRect dirty;
  dc->GetClipBox(&dirty);
  CRect client;
  GetClientRect(&client);
  if (dirty.IsRectEmpty() != FALSE) dirty = client;
  CFont* const old = dc->SelectObject(GetFont());
  dc->SetBkMode(TRANSPARENT);
  CRect list;
  list.IntersectRect(&m_rectList, &dirty);
  const auto life = life_.Watch();
  if (list.IsRectEmpty() == FALSE) DrawRows(dc, list);
  // A handler asked for the looks of a row may have ended the grid.
  if (life.expired()) return;
  CRect beside;
  beside.IntersectRect(&m_rectRowHeader, &dirty);
  if (beside.IsRectEmpty() == FALSE) DrawRowHeader(dc, beside);
  if (life.expired()) return;
  CRect above = m_rectHeader;
  above.left = client.left;
  if (above.IsRectEmpty() == FALSE && above.top < dirty.bottom && dirty.top < above.bottom) OnDrawHeader(dc);
  if (life.expired()) return;
  DrawFilterBar(dc, dirty);
  DrawFrozenEdge(dc);
  DrawDragMarks(dc);
  dc->SelectObject(old);
}

// The rows of the part that are out of date, from above. Whoever draws one may end the grid.
void CBCGPGridCtrl::EachRowIn(const CDC& dc, const CRect& part,
                              const std::function<void(CBCGPGridRow&)>& draw) {
  const auto life = life_.Watch();
  int row = heights_.LineAt(std::int64_t{part.top} - m_rectList.top + m_nVertScrollOffset);
  for (; row >= 0; row = heights_.NextShown(row)) {
    const CRect line = GetRowRect(row);
    if (line.top >= part.bottom) break;
    if (!ShowsLine(dc, line, part)) continue;
    CBCGPGridRow* const shown = GetRow(row);
    if (shown == nullptr) break;
    const auto held = rows_.Hold(*shown);
    draw(*shown);
    // Before the next line is looked for in what may be gone.
    if (life.expired()) return;
  }
}

void CBCGPGridCtrl::DrawRows(CDC* dc, const CRect& dirty) {
  const int saved = dc->SaveDC();
  dc->IntersectClipRect(&dirty);
  dc->FillSolidRect(&dirty, GetBkColor());
  const auto life = life_.Watch();
  EachRowIn(*dc, dirty, [&](CBCGPGridRow& row) {
    if (row.IsGroup() != FALSE) return DrawGroupRow(dc, row);
    const int number = IndexOfRow(row);
    OnDrawItem(dc, &row);
    if (!life.expired() && GetRow(number) == &row) DrawBranch(dc, row);
  });
  if (life.expired()) return;
  for (PaneTurn turn(*this, dc); !merged_.IsEmpty() && turn.Next();) DrawMerged(dc, dirty);
  dc->RestoreDC(saved);
}

BOOL CBCGPGridCtrl::OnDrawItem(CDC* dc, CBCGPGridRow* row) {
  if (row == nullptr) return FALSE;
  for (PaneTurn turn(*this, dc); turn.Next();) DrawCells(dc, *row);
  return TRUE;
}

void CBCGPGridCtrl::DrawCells(CDC* dc, const CBCGPGridRow& row) {
  CRect area;
  dc->GetClipBox(&area);
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int id = IndexOfRow(row);
  const CRect rect = GetRowRect(id);
  const int origin = CellsLeft();
  int column = info.HitTestColumn(std::max(0, static_cast<int>(area.left) - origin));
  for (; column >= 0; column = info.GetNextVisibleColumn(column, TRUE)) {
    const int left = origin + info.GetColumnLeft(column);
    if (left >= area.right) break;
    CBCGPGridItem* item = row.GetItem(column);
    const bool own = merged_.IsEmpty() || !merged_.BlockAt({id, column}).IsValid();
    const CRect cell(left, rect.top, left + info.GetColumnWidth(column), rect.bottom);
    if (item != nullptr && own && dc->RectVisible(&cell) != FALSE) DrawCell(dc, *item, cell);
  }
}

// Over the rows that they span, whose cells there drew nothing.
void CBCGPGridCtrl::DrawMerged(CDC* dc, const CRect& dirty) {
  for (const CBCGPGridRange& block : merged_.Blocks()) {
    const CRect rect = GetRangeRect(block);
    CRect seen;
    seen.IntersectRect(&rect, &dirty);
    CBCGPGridItem* item = GetGridItem({block.m_nTop, block.m_nLeft});
    if (seen.IsRectEmpty() == FALSE && item != nullptr) DrawCell(dc, *item, rect);
  }
}

void CBCGPGridCtrl::DrawCell(CDC* dc, CBCGPGridItem& item, const CRect& cell) {
  CRect inner = cell;
  inner.right -= 1;
  inner.bottom -= 1;
  const bool current = item.GetGridItemID() == current_;
  item.OnFillBackground(dc, inner);
  dc->SetTextColor(TextColourOf(item));
  item.OnDrawValue(dc, inner);
  const CRect button = item.GetButtonRect();
  if (button.IsRectEmpty() == FALSE) item.OnDrawButton(dc, button);
  // The lines belong to the cell at their left and above, so that each is drawn once.
  const COLORREF across = theme_.m_clrHorzLine == lorv::kNoColour ? kUsualLine : theme_.m_clrHorzLine;
  const COLORREF down = theme_.m_clrVertLine == lorv::kNoColour ? kUsualLine : theme_.m_clrVertLine;
  dc->FillSolidRect(cell.left, cell.bottom - 1, cell.Width(), 1, across);
  dc->FillSolidRect(cell.right - 1, cell.top, 1, cell.Height(), down);
  if (!current) return;
  const COLORREF frame = Themed(theme_.m_SelColors.m_clrBackground, COLOR_HIGHLIGHT);
  dc->Draw3dRect(&inner, frame, frame);
}

void CBCGPGridCtrl::DrawRowHeader(CDC* dc, const CRect& dirty) {
  const int saved = dc->SaveDC();
  dc->IntersectClipRect(&dirty);
  dc->FillSolidRect(&dirty, lorv::DesktopInForce().Colour(COLOR_BTNFACE));
  const auto life = life_.Watch();
  EachRowIn(*dc, dirty, [this, dc](CBCGPGridRow& row) { OnDrawRowHeaderItem(dc, &row); });
  if (!life.expired()) dc->RestoreDC(saved);
}

void CBCGPGridCtrl::OnDrawRowHeaderItem(CDC* dc, CBCGPGridRow* row) {
  if (row == nullptr) return;
  const int id = IndexOfRow(*row);
  CRect rect = GetRowRect(id);
  rect.left = m_rectRowHeader.left;
  rect.right = m_rectRowHeader.right;
  CString text;
  if (switches_.line_numbers && row->IsGroup() == FALSE) text.Format(_T("%d"), id + 1);
  DrawHeaderCell(dc, rect, text, DT_CENTER, IsRowSelected(id) != FALSE);
}

void CBCGPGridCtrl::DrawHeaderCell(CDC* dc, const CRect& cell, const CString& text, int align,
                                   bool selected) {
  if (dc->RectVisible(&cell) == FALSE) return;
  const auto& record = selected ? theme_.m_HeaderSelColors : theme_.m_HeaderColors;
  FillRecord(dc, cell, record, lorv::DesktopInForce().Colour(COLOR_BTNFACE));
  const COLORREF border = Themed(record.m_clrBorder, COLOR_BTNSHADOW);
  dc->FillSolidRect(cell.left, cell.bottom - 1, cell.Width(), 1, border);
  dc->FillSolidRect(cell.right - 1, cell.top, 1, cell.Height(), border);
  dc->SetTextColor(InkOf(record.m_clrText, Themed(record.m_clrBackground, COLOR_BTNFACE), COLOR_BTNTEXT));
  CRect place = cell;
  place.DeflateRect(Scaled(kTextMargin), 0);
  const UINT aligned = align == DT_LEFT || align == DT_RIGHT ? static_cast<UINT>(align) : UINT{DT_CENTER};
  dc->DrawText(text, place, aligned | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void CBCGPGridCtrl::OnDrawHeader(CDC* dc) {
  const int saved = dc->SaveDC();
  CRect corner(m_rectRowHeader.left, m_rectHeader.top, m_rectHeader.left, m_rectHeader.bottom);
  if (corner.IsRectEmpty() == FALSE) DrawHeaderCell(dc, corner, CString(), DT_CENTER, false);
  dc->IntersectClipRect(&m_rectHeader);
  FillRecord(dc, m_rectHeader, theme_.m_HeaderColors, lorv::DesktopInForce().Colour(COLOR_BTNFACE));
  for (PaneTurn turn(*this, dc); turn.Next();) DrawHeaderCells(dc);
  dc->RestoreDC(saved);
}

void CBCGPGridCtrl::DrawHeaderCells(CDC* dc) {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const auto* lines = dynamic_cast<const CBCGPGridColumnsInfoEx*>(&info);
  const int line_count = lines == nullptr ? 1 : lines->GetHeaderLineCount();
  const int line = m_rectHeader.Height() / line_count;
  const int origin = CellsLeft();
  for (int column = info.HitTestColumn(std::max(0, static_cast<int>(m_rectHeader.left) - origin));
       column >= 0; column = info.GetNextVisibleColumn(column, TRUE)) {
    const int left = origin + info.GetColumnLeft(column);
    if (left >= m_rectHeader.right) break;
    int first = 0;
    int last = line_count - 1;
    if (lines != nullptr && !lines->GetOwnHeaderLines(column, first, last)) continue;
    const int top = static_cast<int>(m_rectHeader.top);
    const int end = last == line_count - 1 ? static_cast<int>(m_rectHeader.bottom) : top + (last + 1) * line;
    const CRect cell(left, top + first * line, left + info.GetColumnWidth(column), end);
    DrawHeaderCell(dc, cell, info.GetColumnName(column), info.GetColumnAlign(column),
                   IsColumnSelected(column) != FALSE);
  }
  for (int i = 0; lines != nullptr && i < lines->GetHeaderItemCount(); ++i) {
    const CBCGPGridHeaderItem* item = lines->GetHeaderItem(i);
    const CRect cell = item->rect + CPoint(origin, m_rectHeader.top);
    if (item->rect.IsRectEmpty() == FALSE) DrawHeaderCell(dc, cell, item->text, item->align, false);
  }
}
