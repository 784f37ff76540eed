#include <algorithm>

#include "grid/basic/basic_grid.h"
#include "grid/rows/listed_rows.h"

// Rows of the suite's grid. The virtual operations at the end are the only way from here to the library's row
// store, so that a descendant can hide a row from all the others.

long CBCGPBasicGridCtrl::AppendRows(int count) {
  const lorv::StepScope step(Changes());
  long done = 0;
  const auto life = Watch();
  for (int i = 0; i < count && !life.expired(); ++i) {
    // Filters are asked for all rows with the first and the last one: asked with each, the time would grow
    // with the square of their number.
    const auto trusted = TrustRowHeights(i > 0 && i < count - 1);
    if (AddRow(TRUE) != -1) ++done;
  }
  return done;
}

long CBCGPBasicGridCtrl::InsertRows(int position, int count) {
  const bool past_end = GetRowCount() <= position;
  const auto life = Watch();
  const lorv::StepScope step(Changes());
  // No range may grow with the rows that come into it.
  SetCurSel(CBCGPGridItemID(), lorv::kSelectClear, FALSE);
  if (life.expired()) return 0;
  long done = 0;
  for (int i = 0; i < count; ++i) {
    CBCGPGridRow* row = CreateRow(GetColumnCount());
    const int at = past_end ? InsertRowAfter(position, row, FALSE) : InsertRowBefore(position, row, FALSE);
    if (at == -1)
      delete row;
    else
      ++done;
  }
  AdjustLayout();
  return done;
}

long CBCGPBasicGridCtrl::DeleteRows(int position, int count) {
  long done = 0;
  // Nothing is left to delete once it has failed; a huge count does not run on.
  const auto life = Watch();
  const lorv::StepScope step(Changes());
  for (int i = 0; i < count && !life.expired() && RemoveRow(position, TRUE) > 0; ++i) ++done;
  if (!life.expired()) AdjustLayout();
  return done;
}

int CBCGPBasicGridCtrl::RemoveCurRow() {
  return RemoveRow(GetCurrentRow(), TRUE);
}

int CBCGPBasicGridCtrl::DeleteSelectedRows() {
  const std::vector<int> selected = SelectedRowIds();
  if (selected.empty()) return 0;
  // Gathered before the first goes: numbers move with each.
  lorv::ListedRows rows(*this);
  for (const int row : selected) rows.Add(row);
  const auto life = Watch();
  const lorv::StepScope step(Changes());
  const int done = rows.Remove();
  if (!life.expired()) AdjustLayout();
  return done;
}

void CBCGPBasicGridCtrl::SetRowVisible(int row, bool visible) {
  if (visible == !IsRowHidden(row)) return;
  // The list is the suite's field; the index beside it answers for each row without walking it.
  FilterChanged();
  if (visible) {
    hidden_rows_.RemoveAt(hidden_rows_.Find(row));
    hidden_index_.erase(row);
  } else {
    hidden_rows_.AddTail(row);
    hidden_index_.insert(row);
  }
}

BOOL CBCGPBasicGridCtrl::FilterItem(CBCGPGridRow* row) {
  if (CBCGPGridCtrl::FilterItem(row) != FALSE) return TRUE;
  return !hidden_index_.empty() && row != nullptr && IsRowHidden(row->GetRowId());
}

CBCGPGridRow* CBCGPBasicGridCtrl::GetRow(int row) const {
  return CBCGPGridCtrl::GetRow(row);
}

int CBCGPBasicGridCtrl::AddRow(CBCGPGridRow* row, int relayout) {
  return CBCGPGridCtrl::AddRow(row, relayout);
}

int CBCGPBasicGridCtrl::AddRow(int relayout) {
  return CBCGPGridCtrl::AddRow(relayout);
}

int CBCGPBasicGridCtrl::RemoveRow(int row, int relayout) {
  return CBCGPGridCtrl::RemoveRow(row, relayout);
}

void CBCGPBasicGridCtrl::RemoveAll() {
  CBCGPGridCtrl::RemoveAll(TRUE);
}

int CBCGPBasicGridCtrl::GetRowCount(int all) const {
  return CBCGPGridCtrl::GetRowCount(all);
}
