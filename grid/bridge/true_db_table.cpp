#include <algorithm>
#include <memory>

#include "grid/bridge/true_db_grid.h"
#include "grid/events/event_input.h"
#include "gridcore/geometry/line_span.h"
#include "tables/value_compare.h"

// The methods of the control over the grid's rows: sizes, bookmarks, searches and states of cells.

namespace {

constexpr int kRows = 1;
constexpr int kColumns = 2;
constexpr int kNewColumnWidth = 80;  // pixels at 96 dots an inch
constexpr int kExactCase[] = {10, 13};

}  // namespace

int CBcgTrueDbGridCtrl::GetCount(int dimension) const {
  if (dimension == kRows) return GetRowCount();
  return dimension == kColumns ? GetColumnCount() : 0;
}

void CBcgTrueDbGridCtrl::FitColumns(int columns) {
  const auto life = Watch();
  while (!life.expired() && GetColumnCount() < columns)
    if (GetColumnsInfo().InsertColumn(GetColumnCount(), _T(""), Scaled(kNewColumnWidth)) == FALSE) return;
  while (!life.expired() && GetColumnCount() > columns)
    if (DeleteColumn(columns) == FALSE) return;
}

void CBcgTrueDbGridCtrl::ReDim(int rows, int columns) {
  if (columns <= 0) return;
  const auto life = Watch();
  RemoveAll();
  if (life.expired()) return;
  FitColumns(columns);
  // Handlers of a layout may have made another table, which is left alone.
  for (int row = 0; row < rows && !life.expired() && GetColumnCount() == columns; ++row) {
    std::unique_ptr<CBCGPGridRow> fresh(CreateRow(columns));
    // As with AppendRows.
    const auto trusted = TrustRowHeights(row > 0 && row < rows - 1);
    if (AddRow(fresh.get(), TRUE) < 0) return;
    static_cast<void>(fresh.release());
  }
}

CBCGPGridRow* CBcgTrueDbGridCtrl::GetRow(int row) const {
  return CBCGPBasicGridCtrl::GetRow(row);
}

int CBcgTrueDbGridCtrl::GetRow() const {
  const int current = GetCurrentRow();
  const int first = GetFirstRow();
  if (current < 0 || first < 0 || current < first) return -1;
  CRect client;
  GetClientRect(&client);
  // A horizontal bar stands outside the client area: its top is the area's bottom.
  return GetRowRect(current).top > client.bottom ? -1 : current - first;
}

_variant_t CBcgTrueDbGridCtrl::GetBookmark() const {
  return static_cast<long>(GetCurrentRow());
}

void CBcgTrueDbGridCtrl::SetBookmark(const VARIANT& bookmark) {
  if (bookmark.vt != VT_I4 && bookmark.vt != VT_I2) return;
  const int row = bookmark.vt == VT_I4 ? static_cast<int>(bookmark.lVal) : bookmark.iVal;
  CBCGPGridRow* const found = GetRow(row);
  if (found == nullptr) return;
  const auto life = Watch();
  SetCurSel(found, TRUE);
  // The row may be another one by now, or gone.
  if (!life.expired()) EnsureVisible(GetRow(row), FALSE);
}

_variant_t CBcgTrueDbGridCtrl::RowBookmark(int row) {
  _variant_t bookmark(static_cast<long>(row));
  SetBookmark(bookmark);
  return bookmark;
}

std::vector<int> CBcgTrueDbGridCtrl::GetSelBookmarks() const {
  CArray<int, int> rows;
  GetSelectRows(rows);
  return {rows.GetData(), rows.GetData() + rows.GetSize()};
}

int CBcgTrueDbGridCtrl::PointAt(int x, int y) const {
  const CPoint point(x, y);
  CBCGPGridItemID id;
  CRect rect;
  if (HitTest(point, id, rect) != FALSE) return lorv::kPlaceCells;
  if (HitTestRowHeader(point, rect) >= 0) return lorv::kPlaceRowHeader;
  return HitTestHeader(point) >= 0 ? lorv::kPlaceColumnHeader : lorv::kPlaceNowhere;
}

bool CBcgTrueDbGridCtrl::ValueCompare(long comparison, bool match_case, const VARIANT& a, const VARIANT& b) {
  // A value without a text, such as an object, compares with nothing.
  try {
    return lorv::CompareValues(comparison, match_case, a, b);
  } catch (const _com_error&) {
    return false;
  }
}

int CBcgTrueDbGridCtrl::Find(int start, int column, const VARIANT& value, int direction, int comparison,
                             int flags) const {
  const int rows = GetRowCount();
  const bool match_case =
      std::find(std::begin(kExactCase), std::end(kExactCase), flags) != std::end(kExactCase);
  const auto fits = [&](int row) {
    const CBCGPGridItem* const item = GetItem(row, column);
    return item != nullptr && ValueCompare(comparison, match_case, value, item->GetValue());
  };
  if (direction == 0) {
    for (int row = std::max(0, start); row < rows; ++row)
      if (fits(row)) return row;
  } else if (direction == 1) {
    for (int row = std::min(start, rows - 1); row >= 0; --row)
      if (fits(row)) return row;
  }
  return -1;
}

int CBcgTrueDbGridCtrl::FindVal(int column, const VARIANT& value) const {
  if (GetRowCount() == 0 || column >= GetColumnCount()) return -1;
  return Find(0, column, value, 0, 1, 0);
}

void CBcgTrueDbGridCtrl::SetFetchColumnsStyle(const std::vector<int>& columns, bool on) {
  for (const int column : columns) SetFetchColumnStyle(column, on);
}

void CBcgTrueDbGridCtrl::SetFetchColumnsStyle(const CUIntArray& columns, bool on) {
  for (const UINT column : columns) SetFetchColumnStyle(static_cast<int>(column), on);
}

void CBcgTrueDbGridCtrl::SetLocked(int row, int column, bool locked) {
  if (CBCGPGridItem* const item = GetItem(row, column)) item->AllowEdit(locked ? FALSE : TRUE);
}

void CBcgTrueDbGridCtrl::SetDropDownList(int row, int column, bool read_only) {
  CBCGPGridItem* const item = GetItem(row, column);
  if (item != nullptr && (item->GetFlags() & lorv::kItemHasList) != 0)
    item->SetReadOnly(read_only ? TRUE : FALSE);
}

void CBcgTrueDbGridCtrl::ChangeValueItem(CString& text) const {
  text = lorv::CutDecimalZeros(text);
}

bool CBcgTrueDbGridCtrl::RowFlags(int row, long& flags) const {
  const CBCGPGridItem* const item = GetItem(row, GetColumnCount() - 1);
  _variant_t number;
  if (item == nullptr || FAILED(lorv::ChangeValueType(number, item->GetValue(), VT_I4))) return false;
  flags = static_cast<long>(number.lVal);
  return true;
}

void CBcgTrueDbGridCtrl::Change(int row) {
  long flags = 0;
  if (RowFlags(row, flags))
    SetValue(row, GetColumnCount() - 1, _variant_t(flags | long{lorv::kRowChanged}), TRUE);
}

bool CBcgTrueDbGridCtrl::IsDelete(int row) const {
  long flags = 0;
  return RowFlags(row, flags) && (flags & lorv::kRowDeleted) != 0;
}

void CBcgTrueDbGridCtrl::OnColumnMoved(int from, int to) {
  CBCGPBasicGridCtrl::OnColumnMoved(from, to);
  current_column_seen_ = lorv::LineAfterMove(current_column_seen_, from, to);
  fetch_columns_.Move(from, to);
}
