#include <algorithm>
#include <cmath>

#include "framework/drawing/device_context.h"
#include "framework/values/variant_text.h"
#include "grid/basic/basic_grid.h"
#include "grid/columns/column_texts.h"
#include "grid/items/multi_line_row.h"

// The layout of the suite's grid: a current cell that is always there, columns that keep their proportions,
// rows that grow with their texts.

namespace {

constexpr int kSpareWidth = 40;  // pixels at 96 dots an inch

bool IsStretchCursor(int cursor) {
  return cursor == lorv::kCursorSizeAcross || cursor == lorv::kCursorSizeDown;
}

}  // namespace

void CBCGPBasicGridCtrl::AdjustLayout() {
  if (keep_selection_) {
    KeepSelectionOverLayout();
    return;
  }
  CBCGPGridItemID current = GetCurSelItemID();
  const auto life = Watch();
  CBCGPGridCtrl::AdjustLayout();
  if (life.expired()) return;
  // Dialogs count on a current cell wherever there is one.
  if (current.IsNull() && GetRowCount() > 0 && GetColumnCount() > 0) current = {0, 0};
  if (current.IsNull()) return;
  SetCurSel(current, lorv::kSelectOnly, TRUE);
  if (life.expired()) return;
  // A divider that is being dragged must not move away under the mouse.
  if (!IsStretchCursor(lorv::DesktopInForce().Cursor())) EnsureVisible(GetRow(current.m_nRow), FALSE);
}

void CBCGPBasicGridCtrl::KeepSelectionOverLayout() {
  std::vector<CBCGPGridItem*> items;
  GetSelectedItems(items);
  const int row = GetCurrentRow();
  const bool all_columns = static_cast<int>(items.size()) == GetColumnsInfo().GetVisibleColumnCount();
  // A selected row is selected anew as a row, so that columns which came meanwhile belong to it.
  const bool whole_row = items.empty() || (all_columns && IsRowSelected(row, TRUE) != FALSE);
  std::vector<CBCGPGridItemID> cells;
  for (const CBCGPGridItem* item : items)
    if (item->GetParentRow() != nullptr) cells.push_back(item->GetGridItemID());
  const auto life = Watch();
  CBCGPGridCtrl::AdjustLayout();
  if (life.expired()) return;
  if (whole_row) {
    SelectRow(row, FALSE);
    return;
  }
  for (const CBCGPGridItemID& cell : cells) {
    SetCurSel(cell, lorv::kSelectAdd, FALSE);
    if (life.expired()) return;
  }
}

int CBCGPBasicGridCtrl::GetExtraHierarchyOffset() const {
  const int offset = CBCGPGridCtrl::GetExtraHierarchyOffset();
  if (offset != 0) return offset;
  return tree_ && IsRowHeaderEnabled() != FALSE ? GetHierarchyLevelOffset() : 0;
}

int CBCGPBasicGridCtrl::OnGetColumnAutoSize(int column) {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  // Two columns that take the free room share it, which the base knows to do.
  if (info.GetAutoSizeCount() >= 2) return CBCGPGridCtrl::OnGetColumnAutoSize(column);
  const int others = info.GetTotalWidth() - info.GetColumnWidth(column);
  const int room = GetListRect().Width() - GetHierarchyOffset() - GetExtraHierarchyOffset() - others;
  if (GetVertScrollTotal() > m_nVertScrollPage) ShowVertScrollBar(TRUE);
  // The bars belong to the window and take no part of its client area.
  if (GetHorzScrollTotal() > GetListRect().Width()) {
    ShowHorzScrollBar(TRUE);
    return CBCGPGridCtrl::OnGetColumnAutoSize(column);
  }
  ShowHorzScrollBar(FALSE);
  return room > Scaled(kSpareWidth) ? room : CBCGPGridCtrl::OnGetColumnAutoSize(column);
}

void CBCGPBasicGridCtrl::OnSize(UINT type, int width, int height) {
  const auto life = Watch();
  if (!adjust_widths_) {
    CBCGPGridCtrl::OnSize(type, width, height);
    if (!life.expired()) PostMessage(BCGM_GRID_ADJUST_LAYOUT);
    return;
  }
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  std::vector<int> columns;
  std::vector<int> widths;
  std::vector<int> marked;
  int total = 0;
  for (int column = info.GetFirstVisibleColumn(); column >= 0;
       column = info.GetNextVisibleColumn(column, TRUE)) {
    columns.push_back(column);
    widths.push_back(info.GetColumnWidth(column));
    total += widths.back();
    if (info.GetColumnWidthAutoSize(column) == FALSE) continue;
    // Without their marks, so that the layout leaves the widths alone that are shared out below.
    marked.push_back(column);
    info.SetColumnWidthAutoSize(column, FALSE);
  }
  CBCGPGridCtrl::OnSize(type, width, height);
  if (life.expired()) return;
  const int new_total = width - GetRowHeaderRect().Width();
  const bool fits = IsColumnAutoSizeEnabled() != FALSE || new_total == total || new_total < 0;
  if (!fits) {
    const std::vector<int> shares = lorv::ProportionalWidths(widths, new_total);
    for (std::size_t i = 0; i < columns.size(); ++i) info.SetColumnWidth(columns[i], shares[i]);
  }
  for (const int column : marked) info.SetColumnWidthAutoSize(column, TRUE);
  if (!fits) AdjustLayout();
}

void CBCGPBasicGridCtrl::OnPosSizeChanged() {
  CBCGPGridCtrl::OnPosSizeChanged();
  columns_info_.ReposHeaderItems(m_nHeaderHeight);
}

void CBCGPBasicGridCtrl::OnDrawHeader(CDC* dc) {
  CFont* const old = bold_names_ ? dc->SelectObject(GetBoldFont()) : nullptr;
  CBCGPGridCtrl::OnDrawHeader(dc);
  if (old != nullptr) dc->SelectObject(old);
}

void CBCGPBasicGridCtrl::OnGetHeaderRect(CDC* dc, CRect& rect) {
  CBCGPGridCtrl::OnGetHeaderRect(dc, rect);
  if (multi_line_header_) rect.bottom = rect.top + rect.Height() * columns_info_.GetHeaderLineCount();
}

void CBCGPBasicGridCtrl::OnSelChanged(const CBCGPGridRange& range, BOOL selected) {
  // A range of many cells would colour rows that are not the current one.
  if (IsSelRowBKColorEnabled() && range.IsSingle()) {
    const auto by_selection = Changes().BySelection();
    SetRowBackgroundColor(range.m_nTop, selected != FALSE ? selected_row_colour_ : lorv::kNoColour, false);
    CRect row = GetRowRect(range.m_nTop);
    row |= PaintedRect({0, range.m_nTop, GetColumnCount() - 1, range.m_nTop});
    if (m_hWnd != nullptr && row.IsRectEmpty() == FALSE) InvalidateRect(&row, FALSE);
  }
  CBCGPGridCtrl::OnSelChanged(range, selected);
}

void CBCGPBasicGridCtrl::OnResizeColumns() {
  const auto life = Watch();
  CBCGPGridCtrl::OnResizeColumns();
  // The user drags a row: its height is his, not that of the texts.
  if (life.expired() || lorv::DesktopInForce().Cursor() == lorv::kCursorSizeDown) return;
  // The base's alone: this is a part of a layout already.
  if (RecountLines()) CBCGPGridCtrl::AdjustLayout();
}

bool CBCGPBasicGridCtrl::RecountLines() {
  // Rows that are made when they are shown have their lines from who fills them.
  if (IsVirtualMode() != FALSE) return false;
  bool changed = false;
  const int rows = GetRowCount();
  for (int at = 0; at < rows; ++at) {
    auto* row = dynamic_cast<CBCGPGridMultiLineRow*>(GetRow(at));
    if (row == nullptr) continue;
    const int before = row->GetLinesNumber();
    row->OnItemUpdate(FALSE);
    changed = changed || row->GetLinesNumber() != before;
  }
  return changed;
}

void CBCGPBasicGridCtrl::OnDotsChanged(int dots, int before) {
  CBCGPGridCtrl::OnDotsChanged(dots, before);
  adjusted_row_height_ = lorv::ForDots(adjusted_row_height_, dots, before);
}

CBCGPGridRow* CBCGPBasicGridCtrl::CreateMultiLineRow(int lines) {
  auto row = std::make_unique<CBCGPGridMultiLineRow>(GetRowBlockSize(), 0, 0);
  row->SetMaxLines(std::max(1, lines));
  SetupRow(row.get(), GetColumnCount());
  return row.release();
}

int CBCGPBasicGridCtrl::AddMultiLineRow(int max_lines, int min_lines) {
  CBCGPGridRow* row = CreateMultiLineRow(max_lines);
  if (auto* lines = dynamic_cast<CBCGPGridMultiLineRow*>(row)) {
    lines->SetMinLines(min_lines);
    lines->SetLinesNumber(min_lines, FALSE);
  }
  const int added = AddRow(row, FALSE);
  if (added < 0) delete row;
  return added;
}

void CBCGPBasicGridCtrl::OnItemUpdate() {
  auto* row = dynamic_cast<CBCGPGridMultiLineRow*>(GetCurSel());
  if (row != nullptr && GetCurSelItem() != nullptr) row->OnItemUpdate(TRUE);
}
