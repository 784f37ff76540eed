#include <algorithm>

#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/editing/grid_composition.h"
#include "gridcore/control/grid_control.h"

// What is selected. A change reports the old selection as left and then the new one as chosen; each report
// runs handlers that may do anything, so the cell is looked up anew in between.

void CBCGPGridCtrl::OnSelChanging(const CBCGPGridRange& /*range*/, BOOL /*selected*/) {}

void CBCGPGridCtrl::OnSelChanged(const CBCGPGridRange& /*range*/, BOOL /*selected*/) {}

CBCGPGridItemID CBCGPGridCtrl::GetCurSelItemID() const {
  return current_.m_nRow >= 0 && current_.m_nRow < rows_.Size() ? current_ : CBCGPGridItemID();
}

CBCGPGridRow* CBCGPGridCtrl::GetCurSel() const {
  return rows_.At(current_.m_nRow);
}

CBCGPGridItem* CBCGPGridCtrl::GetCurSelItem(CBCGPGridRow* row) const {
  return row != nullptr && row == GetCurSel() ? GetCurSelItem() : nullptr;
}

// Nothing of a cell is drawn beside it, but a merged one reaches beyond the range that its main cell is in.
CRect CBCGPGridCtrl::PaintedRect(const CBCGPGridRange& range) const {
  CRect rect = GetRangeRect(range);
  for (const CBCGPGridRange& block : merged_.Blocks())
    if (range.IsInRange({block.m_nTop, block.m_nLeft})) rect |= GetRangeRect(block);
  return rect;
}

void CBCGPGridCtrl::InvalidateRange(const CBCGPGridRange& range) {
  if (m_hWnd == nullptr) return;
  const CRect rect = PaintedRect(range);
  // The headers show which rows and columns are selected, also while the cells are scrolled below frozen
  // ones.
  CRect beside = GetRangeRect({0, range.m_nTop, GetColumnCount() - 1, range.m_nBottom});
  CRect above = GetRangeRect({range.m_nLeft, 0, range.m_nRight, rows_.Size() - 1});
  beside |= rect;
  above |= rect;
  beside.left = m_rectRowHeader.left;
  beside.right = m_rectRowHeader.right;
  above.top = m_rectHeader.top;
  above.bottom = m_rectHeader.bottom;
  for (const CRect& part : {rect, beside, above})
    if (part.IsRectEmpty() == FALSE) InvalidateRect(&part, FALSE);
}

void CBCGPGridCtrl::InvalidateSelection() {
  for (const CBCGPGridRange& range : selection_.Ranges()) InvalidateRange(range);
}

// Descendants may draw what is selected another way without the focus. An editor has it for its grid, and
// lies over the cell: between the two nothing is to be drawn.
void CBCGPGridCtrl::OnSetFocus(CWnd* former) {
  if (former == nullptr || IsChild(former) == FALSE) InvalidateSelection();
  lorv::SettleComposition(*this);
  if (cells_ != nullptr) cells_->FocusCame();
}

void CBCGPGridCtrl::OnKillFocus(CWnd* next) {
  if (next == nullptr || IsChild(next) == FALSE) InvalidateSelection();
}

// Nearly all cells that a program sets stand above or below what is seen; the whole rectangle of one takes as
// long to find as its value to set.
bool CBCGPGridCtrl::IsBeyondView(const CBCGPGridRow& row) const {
  if (m_hWnd == nullptr) return true;
  // The cells merged with those of the row may be seen.
  const int index = merged_.IsEmpty() ? rows_.IndexOf(row) : -1;
  if (index < 0) return false;
  const std::int64_t top = std::int64_t{m_rectList.top} - m_nVertScrollOffset + heights_.OffsetOf(index);
  return top >= m_rectList.bottom || top + heights_.SizeOf(index) <= m_rectList.top;
}

void CBCGPGridCtrl::InvalidateItem(const CBCGPGridItem* item) {
  if (m_hWnd == nullptr || item == nullptr) return;
  if (item->GetOwnerList() == this && IsBeyondView(*item->GetParentRow())) return;
  CRect rect;
  rect.IntersectRect(item->GetRect(), m_rectList);
  if (rect.IsRectEmpty() != FALSE) return;
  InvalidateRect(&rect, FALSE);
  if (cells_ != nullptr) cells_->CellRedrawn(*item);
}

bool CBCGPGridCtrl::ReportLeft() {
  const auto life = life_.Watch();
  const std::vector<CBCGPGridRange> left = selection_.Ranges();
  for (const CBCGPGridRange& range : left) {
    OnSelChanging(range, FALSE);
    if (life.expired()) return false;
    OnSelChanged(range, FALSE);
    if (life.expired()) return false;
  }
  return true;
}

bool CBCGPGridCtrl::Choose(const CBCGPGridRange& range, const CBCGPGridItemID& current, bool add,
                           BOOL redraw) {
  const bool alone = selection_.Ranges().size() == 1 && selection_.Ranges().front() == range;
  if (alone && current_ == current && !add) return true;
  const auto life = life_.Watch();
  if (redraw != FALSE) InvalidateSelection();
  if (!add && !ReportLeft()) return false;
  // What the handlers left of the table decides.
  const auto there = [&] { return range.m_nBottom < rows_.Size() && range.m_nRight < GetColumnCount(); };
  if (!there()) return false;
  OnSelChanging(range, TRUE);
  if (life.expired() || !there()) return false;
  if (!add) selection_.Clear();
  // A cell that is selected already need not be cut out of its range and put in again.
  if (!add || !selection_.HoldsAll(range)) selection_.Add(range);
  current_ = current;
  if (redraw != FALSE) InvalidateRange(range);
  OnSelChanged(range, TRUE);
  if (life.expired()) return false;
  lorv::SettleComposition(*this);
  if (cells_ != nullptr) cells_->ChosenChanged();
  return true;
}

BOOL CBCGPGridCtrl::SetCurSel(const CBCGPGridItemID& id, UINT mode, BOOL redraw) {
  if (id.IsNull() || mode == lorv::kSelectClear) {
    if (redraw != FALSE) InvalidateSelection();
    if (!ReportLeft()) return FALSE;
    selection_.Clear();
    current_.SetNull();
    anchor_.SetNull();
    if (cells_ != nullptr) cells_->ChosenChanged();
    return TRUE;
  }
  if (GetGridItem(id) == nullptr) return FALSE;
  const auto life = life_.Watch();
  if (editing_ != nullptr && editing_->GetGridItemID() != id) EndEditItem(TRUE);
  if (life.expired() || rows_.At(id.m_nRow) == nullptr) return FALSE;
  if (mode == lorv::kSelectOppositeCorner) {
    const CBCGPGridItemID from = GetGridItem(anchor_) == nullptr ? id : anchor_;
    const CBCGPGridRange range(from, id);
    return Choose(range, {range.m_nTop, range.m_nLeft}, false, redraw);
  }
  anchor_ = id;
  return Choose(CBCGPGridRange(id), id, mode == lorv::kSelectAdd, redraw);
}

BOOL CBCGPGridCtrl::SetCurSel(CBCGPGridRow* row, BOOL redraw) {
  if (row == nullptr || row->GetOwnerList() != this)
    return SetCurSel(CBCGPGridItemID(), lorv::kSelectClear, redraw);
  return SelectRow(IndexOfRow(*row), redraw);
}

BOOL CBCGPGridCtrl::SelectRange(const CBCGPGridRange& range, BOOL redraw) {
  if (!range.IsValid() || rows_.At(range.m_nBottom) == nullptr || !GetColumnsInfo().HasColumn(range.m_nRight))
    return FALSE;
  anchor_ = {range.m_nTop, range.m_nLeft};
  return Choose(range, anchor_, false, redraw);
}

BOOL CBCGPGridCtrl::SelectRow(int row, BOOL redraw) {
  const int columns = GetColumnCount();
  if (rows_.At(row) == nullptr || columns == 0) return FALSE;
  const auto life = life_.Watch();
  if (editing_ != nullptr) EndEditItem(TRUE);
  if (life.expired() || rows_.At(row) == nullptr) return FALSE;
  const int first = std::max(0, GetColumnsInfo().GetFirstVisibleColumn());
  anchor_ = {row, first};
  return Choose({0, row, columns - 1, row}, anchor_, false, redraw);
}

BOOL CBCGPGridCtrl::SelectColumn(int column, BOOL redraw) {
  if (!GetColumnsInfo().HasColumn(column) || rows_.Size() == 0) return FALSE;
  const auto life = life_.Watch();
  if (editing_ != nullptr) EndEditItem(TRUE);
  if (life.expired() || rows_.Size() == 0) return FALSE;
  anchor_ = {0, column};
  return Choose({column, 0, column, rows_.Size() - 1}, anchor_, false, redraw);
}

BOOL CBCGPGridCtrl::SelectAll() {
  return SelectRange({0, 0, GetColumnCount() - 1, rows_.Size() - 1});
}

int CBCGPGridCtrl::GetSelectedItems(std::vector<CBCGPGridItem*>& items) const {
  items.clear();
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  // More rows of a virtual table would not stay until they are all found.
  int room = rows_.IsVirtual() ? static_cast<int>(lorv::kMostVirtualRows / 2) : rows_.Size();
  for (const CBCGPGridRange& range : selection_.Ranges())
    for (int row = range.m_nTop; row <= std::min(range.m_nBottom, rows_.Size() - 1); ++row) {
      if (heights_.SizeOf(row) == 0) continue;
      if (rows_.IsVirtual() && room-- <= 0) return static_cast<int>(items.size());
      for (int column = info.GetNextVisibleColumn(range.m_nLeft - 1, TRUE);
           column >= 0 && column <= range.m_nRight; column = info.GetNextVisibleColumn(column, TRUE))
        if (CBCGPGridItem* item = GetGridItem({row, column})) items.push_back(item);
    }
  return static_cast<int>(items.size());
}

BOOL CBCGPGridCtrl::IsRowSelected(int row, BOOL whole) const {
  if (rows_.At(row) == nullptr) return FALSE;
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  bool any = false;
  for (int column = info.GetFirstVisibleColumn(); column >= 0;
       column = info.GetNextVisibleColumn(column, TRUE)) {
    const bool held = selection_.Holds({row, column});
    if (whole != FALSE && !held) return FALSE;
    any = any || held;
  }
  return any;
}

BOOL CBCGPGridCtrl::IsColumnSelected(int column) const {
  return rows_.Size() > 0 && selection_.HoldsAll({column, 0, column, rows_.Size() - 1});
}
