#include <algorithm>
#include <set>

#include "grid/basic/basic_grid.h"
#include "grid/dialog_place.h"

// Where the user is in the suite's grid, and what is selected.

namespace {

template <class Array>
long long FillArray(Array& array, const std::vector<int>& numbers) {
  array.RemoveAll();
  for (const int number : numbers) array.Add(static_cast<std::remove_cvref_t<decltype(array[0])>>(number));
  return array.GetSize();
}

}  // namespace

std::vector<int> CBCGPBasicGridCtrl::SelectedRowIds() const {
  // Those of a virtual table are too many to be asked for one by one.
  if (IsVirtualMode() != FALSE) {
    std::set<int> numbers;
    for (const CBCGPGridRange& range : GetSelection())
      for (int row = range.m_nTop; row <= std::min(range.m_nBottom, GetRowCount() - 1); ++row)
        if (IsRowShown(row)) numbers.insert(numbers.end(), row);
    return {numbers.begin(), numbers.end()};
  }
  std::vector<CBCGPGridItem*> items;
  GetSelectedItems(items);
  // In their order and each once, however the ranges were chosen.
  std::set<int> rows;
  for (const CBCGPGridItem* item : items)
    if (item->GetParentRow() != nullptr) rows.insert(item->GetParentRow()->GetRowId());
  return {rows.begin(), rows.end()};
}

std::vector<int> CBCGPBasicGridCtrl::SelectedColumnIds() const {
  std::vector<CBCGPGridItem*> items;
  GetSelectedItems(items);
  std::set<int> columns;
  for (const CBCGPGridItem* item : items) columns.insert(item->GetColumnId());
  return {columns.begin(), columns.end()};
}

long long CBCGPBasicGridCtrl::GetSelectRows(CArray<int, int>& rows) const {
  return FillArray(rows, SelectedRowIds());
}

long long CBCGPBasicGridCtrl::GetSelectRows(CUIntArray& rows) const {
  return FillArray(rows, SelectedRowIds());
}

long long CBCGPBasicGridCtrl::GetSelectColumns(CArray<int, int>& columns) const {
  return FillArray(columns, SelectedColumnIds());
}

long long CBCGPBasicGridCtrl::GetSelectColumns(CUIntArray& columns) const {
  return FillArray(columns, SelectedColumnIds());
}

long long CBCGPBasicGridCtrl::GetUnionCells(CList<CBCGPGridRange, const CBCGPGridRange&>& blocks) const {
  blocks.RemoveAll();
  std::vector<CBCGPGridRange> found;
  const CBCGPGridRange all(0, 0, GetColumnCount() - 1, GetRowCount() - 1);
  GetMergedItemsInRange(all, found);
  for (const CBCGPGridRange& block : found) blocks.AddTail(block);
  return blocks.GetCount();
}

void CBCGPBasicGridCtrl::SetRow(int row) {
  const auto life = Watch();
  SetCurSel(GetRow(row), TRUE);
  if (life.expired()) return;
  if (CBCGPGridRow* found = GetRow(row)) EnsureVisible(found, FALSE);
}

void CBCGPBasicGridCtrl::SetCol(int column) {
  const int row = GetCurrentRow();
  if (row < 0) return;
  const auto life = Watch();
  SetCurSel(CBCGPGridItemID(row, column), lorv::kSelectOnly, TRUE);
  if (!life.expired()) EnsureVisible(GetRow(row), FALSE);
}

void CBCGPBasicGridCtrl::MoveTo(int row) {
  if (row < 0 || row >= GetRowCount()) return;
  const int column = GetColumnsInfo().GetFirstVisibleColumn();
  const auto life = Watch();
  SetCurSel(CBCGPGridItemID(row, column), lorv::kSelectOnly, TRUE);
  if (!life.expired()) EnsureVisible(GetRow(row), FALSE);
}

void CBCGPBasicGridCtrl::MoveFirst() {
  MoveTo(0);
}

void CBCGPBasicGridCtrl::MoveLast() {
  MoveTo(GetRowCount() - 1);
}

void CBCGPBasicGridCtrl::MoveNext() {
  MoveTo(std::min(GetCurrentRow() + 1, GetRowCount() - 1));
}

void CBCGPBasicGridCtrl::MovePrevious() {
  MoveTo(std::max(GetCurrentRow() - 1, 0));
}

int CBCGPBasicGridCtrl::GetFirstRow() const {
  const int height = GetRowHeight();
  if (GetRowCount() == 0 || height <= 0) return -1;
  // A row that is cut off by more than half does not count as the first.
  return (GetVertScrollOffset() + height / 2) / height;
}

short CBCGPBasicGridCtrl::GetVisibleRows() const {
  constexpr int kMost = 0x7FFF;
  const int height = std::max(1, GetRowHeight());
  const int room = GetListRect().Height();
  // Nothing to scroll: all rows are seen.
  if (GetVertScrollTotal() <= room) return static_cast<short>(std::min(GetRowCount(), kMost));
  return static_cast<short>(std::min(room / height + (room % height != 0 ? 1 : 0), kMost));
}

void CBCGPBasicGridCtrl::SetFirstRow(int row) {
  if (row < 0 || row >= GetRowCount()) return;
  // Coming from below, the row ends up at the top.
  const auto life = Watch();
  if (GetFirstRow() < row) EnsureVisible(GetRow(GetRowCount() - 1), FALSE);
  if (!life.expired()) EnsureVisible(GetRow(row), FALSE);
}

void CBCGPBasicGridCtrl::GetCurSelItemIndex(int& row, int& column) const {
  row = GetCurrentRow();
  column = GetCol();
}

int CBCGPBasicGridCtrl::CellContaining(int x, int y, int& row, int& column) const {
  row = -1;
  column = -1;
  const CPoint point(x, y);
  CBCGPGridItemID id;
  CRect rect;
  if (HitTest(point, id, rect) != FALSE) {
    row = id.m_nRow;
    column = id.m_nColumn;
    return 1;
  }
  // Beside the last column the row still counts.
  row = HitTestRow(point);
  return row >= 0 ? 1 : 0;
}

void CBCGPBasicGridCtrl::ShowDlg(CWnd* window) {
  const CBCGPGridItem* item = GetCurSelItem();
  if (item == nullptr || window == nullptr) return;
  CRect cell = item->GetRect();
  ClientToScreen(static_cast<LPRECT>(cell));
  CRect place;
  window->GetWindowRect(&place);
  const CRect screen = lorv::DesktopInForce().Screen();
  const CPoint at = lorv::DialogPlaceAt(cell, place.Size(), screen.Size());
  window->MoveWindow(static_cast<int>(at.x), static_cast<int>(at.y), place.Width(), place.Height());
  window->ShowWindow(SW_SHOW);
}
