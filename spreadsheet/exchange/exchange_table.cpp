#include <cstdint>

#include "framework/text/number_text.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/cells/cell_address.h"
#include "spreadsheet/cells/cell_number.h"
#include "spreadsheet/cells/cell_text.h"

// What an exchange holds, and the conversions of its cells.

void CAdExcel2GridEx::SetArray(const CXArrayDBToArray& array) {
  m_array = array;
  m_unread.reset();
}

void CAdExcel2GridEx::SetArray(lorv::ExchangeGrid& grid) {
  const long rows = grid.RowCount();
  // The grid is left as its user sees it, scrolled to where it was.
  const long first_visible = grid.FirstVisibleRow();
  const int columns = grid.ColumnCount();
  for (int column = 0; column < columns; ++column) {
    if (!grid.IsColumnVisible(column)) m_colInvisible.AddSorted(column);
  }
  const lorv::ExchangeRedrawLock lock(grid);
  // Columns first: a row that is appended has as many cells as there are then.
  CXArrayDBToArray& table = Table();
  table.SetArray(0, columns);
  for (long row = 0; row < rows; ++row) {
    table.AppendRow(table.GetRowCount(), false);
    for (int column = 0; column < columns; ++column) {
      table.SetValue(static_cast<int>(row), column, grid.Value(row, column));
    }
  }
  grid.SetFirstVisibleRow(first_visible);
  // The row behind the last, so that no cell stays marked as current. It is a number of 16 bits and wraps in
  // grids of more rows than that holds.
  grid.SetCurrentRow(static_cast<std::int16_t>(rows));
}

void CAdExcel2GridEx::SetColTitle(lorv::ExchangeGrid& grid) {
  CStringArray titles;
  for (int column = 0; column < grid.ColumnCount(); ++column) titles.Add(grid.ColumnName(column));
  m_colTitles = titles;
}

__int64 CAdExcel2GridEx::AddRange(long first_row, long first_column, long last_row, long last_column) {
  const __int64 rows = static_cast<__int64>(last_row) - first_row;
  const __int64 columns = static_cast<__int64>(last_column) - first_column;
  // A single cell is no merged area.
  if (rows >= 0 && columns >= 0 && rows + columns > 0) {
    m_ranges.AddTail(CBCGPGridRange(static_cast<int>(first_column), static_cast<int>(first_row),
                                    static_cast<int>(last_column), static_cast<int>(last_row)));
  }
  return m_ranges.GetCount();
}

void CAdExcel2GridEx::SetRangeData(const CList<CBCGPGridRange>& ranges) {
  // By way of a copy: a caller may hand in the list of this very object.
  m_ranges = CList<CBCGPGridRange>(ranges);
}

void CAdExcel2GridEx::MergeCell(lorv::ExchangeGrid& grid) {
  if (m_ranges.IsEmpty()) return;
  const lorv::ExchangeRedrawLock lock(grid);
  for (POSITION at = m_ranges.GetHeadPosition(); at != nullptr;) grid.MergeRange(m_ranges.GetNext(at));
}

int CAdExcel2GridEx::SetInVisibleCols(const lorv::ColumnList& columns) {
  m_colInvisible = columns;
  return m_colInvisible.empty() ? 0 : 1;
}

CString CAdExcel2GridEx::RowCol2XlsCell(const int& row, const int& column) const {
  return lorv::CornerAddress(row, column);
}

int CAdExcel2GridEx::IsNumeric(LPCTSTR text, __int64& decimals) const {
  return lorv::IsPlainNumber(text, decimals);
}

void CAdExcel2GridEx::ftoa(double value, int decimals, CString& out) const {
  out = lorv::FixedNumber(value, decimals);
}

CString CAdExcel2GridEx::GetFormatOfNumber(int decimals) {
  return lorv::NumberFormat(decimals);
}

CString CAdExcel2GridEx::Str2ExcelValueStyle(const CString& text, COleVariant& value) {
  const bool negative = text[0] == _T('-');
  __int64 decimals = 0;
  // The sign is taken off for the test only.
  if (IsNumeric(text.GetString() + (negative ? 1 : 0), decimals) == 1) {
    value = _variant_t(lorv::ReadReal(text.View()));
    return GetFormatOfNumber(static_cast<int>(decimals));
  }
  if (text.IsEmpty()) {
    value.Clear();
  } else {
    value = _variant_t(text);
  }
  // The format of texts: without it the program would read "007" or "3-4" as a number or a date.
  return _T("@");
}

CString CAdExcel2GridEx::ExcelCellValue2Str(const COleVariant& value, CString& format) const {
  return lorv::SheetCellText(value, format);
}
