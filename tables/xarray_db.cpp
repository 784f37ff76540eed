#include "tables/xarray_db.h"

#include "tables/value_compare.h"

// The table that is bound to a grid: rows inserted, removed and searched on top of the plain table. Numbers
// that lie outside are answered and never used; a failed call leaves the table as it was.

namespace {

constexpr long kForward = 0;
constexpr long kBackward = 1;
constexpr long kEqual = 1;
constexpr long kWithoutCase = 0;

// The value types of the bound grid's array that ask for exact letter case.
bool IsExactCase(long value_type) {
  return value_type == 10 || value_type == 13;
}

}  // namespace

int CXArrayDBToArray::ReDim(__int64 rows, int columns) {
  SetAllVal(_variant_t());
  return SetArray(rows, columns);
}

__int64 CXArrayDBToArray::GetCount(short dimension) const {
  if (dimension == 1) return GetRowCount();
  return dimension == 2 ? GetColCount() : 0;
}

long CXArrayDBToArray::AppendRows(long count) {
  if (count <= 0) return 0;
  const std::size_t wanted = m_arrRows.size() + static_cast<std::size_t>(count);
  try {
    // Half the capacity on top, so that many small calls stay cheap.
    const std::size_t capacity = m_arrRows.capacity();
    if (wanted > capacity) m_arrRows.reserve(std::max(wanted, capacity + capacity / 2));
  } catch (const std::bad_alloc&) {
    return 0;
  } catch (const std::length_error&) {
    return 0;
  }
  for (long i = 0; i < count; ++i) AppendRow(GetRowCount(), false);
  return count;
}

long CXArrayDBToArray::InsertRows(long row, long count) {
  const auto at = std::clamp<__int64>(row, 0, GetRowCount());
  // Outside counts as the nearer end, so appending by inserting works.
  if (count > 0) m_arrRows.insert(RowAt(at), static_cast<std::size_t>(count), NewRow());
  return count;
}

long CXArrayDBToArray::DeleteRows(long row, long count) {
  if (!IsRow(row) || count <= 0) return 0;
  const auto removed = std::min<__int64>(count, GetRowCount() - row);
  m_arrRows.erase(RowAt(row), RowAt(row + removed));
  return static_cast<long>(removed);
}

int CXArrayDBToArray::DeleteColumns(int column, int count) {
  if (IsDeclaredColumn(column) && count > 0) EraseColumns(column, count);
  return 1;
}

long CXArrayDBToArray::Find(long start_row, long column, const VARIANT& value, long direction,
                            long comparison, long value_type) const {
  if ((direction != kForward && direction != kBackward) || column < 0) return -1;
  const bool exact_case = IsExactCase(value_type);
  const lorv::SoughtText sought(value, exact_case);
  const bool is_text_sought = comparison == kEqual && value.vt == VT_BSTR;
  const auto last = static_cast<long>(GetRowCount()) - 1;
  const auto at = static_cast<std::size_t>(column);
  const auto is_hit = [&](long row) {
    const Row& cells = m_arrRows[static_cast<std::size_t>(row)];
    // A row may have fewer cells than the table has columns.
    return at < cells.size() &&
           (is_text_sought ? sought.Is(cells[at])
                           : ValueCompare(comparison, exact_case, value, cells[at]) != 0);
  };
  if (direction == kForward) {
    for (long row = std::max(start_row, 0L); row <= last; ++row) {
      if (is_hit(row)) return row;
    }
    return -1;
  }
  for (long row = std::min(start_row, last); row >= 0; --row) {
    if (is_hit(row)) return row;
  }
  return -1;
}

int CXArrayDBToArray::FindVal(int column, const _variant_t& value) const {
  if (GetRowCount() == 0 || !IsDeclaredColumn(column)) return -1;
  return static_cast<int>(Find(0, column, value, kForward, kEqual, kWithoutCase));
}

void CXArrayDBToArray::Clear() {
  const __int64 rows = GetRowCount();
  const int columns = GetColCount();
  m_arrRows.clear();
  // Emptied and made anew: cells of rows that were longer go, too.
  ReDim(rows, columns);
  SetAllVal(_variant_t(0L));
}

int CXArrayDBToArray::ValueCompare(long comparison, bool exact_case, const VARIANT& value,
                                   const VARIANT& cell) {
  return lorv::CompareValues(comparison, exact_case, value, cell) ? 1 : 0;
}
