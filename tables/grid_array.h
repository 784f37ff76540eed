#pragma once

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "containers/ox_array.h"
#include "framework/native/native_types.h"

// A table of cells in rows, held by value.
//
// Units: rows and columns count from 0.
// The declared width is what the table was last dimensioned to. AppendColumn and RemoveCol change the rows
//   and not the declared width; SetArray brings the two back together. New rows have the declared width, and
//   SetValueAt goes by it.
// Edges: an index outside the table is refused, or gives an empty cell where the result is a cell. A new cell
//   is T().
// Result: "refused" is 0 or false, and the cells are then as they were. SetArray that finds no memory is
//   refused too; elsewhere a lack of memory is std::bad_alloc. A cell whose copy fails raises what T raises.
// A reference to a cell is valid until rows or columns change. One thread at a time.
//
//   CGridArray<_variant_t> t(3, 2);  t.SetValueAt(2, 1, _T("墙"))  gives 1, t.SetValueAt(2, 2, 5L) gives 0
template <class T>
class CGridArray {
 public:
  explicit CGridArray(int rows = 0, int columns = 0) { SetArray(rows, columns); }
  CGridArray(const CGridArray&) = default;
  CGridArray(CGridArray&&) noexcept = default;
  CGridArray& operator=(const CGridArray&) = default;
  CGridArray& operator=(CGridArray&&) noexcept = default;
  virtual ~CGridArray() = default;

  // 1, or 0 unless there is at least one column and the rows are not negative; the declared width is stored
  // in any case. Cells inside the new bounds stay.
  int SetArray(__int64 rows, int columns);
  // Always true.
  bool SetAllVal(const T& value);

  // 1, or 0 outside the rows or the declared width.
  int SetValueAt(int row, int column, const T& value);
  // As above; the value is taken over.
  int SetValueAt(int row, int column, T&& value);
  // An empty cell outside the table. A column that AppendColumn added is inside.
  const T& GetValueAt(int row, int column) const;

  __int64 GetRowCount() const { return static_cast<__int64>(m_arrRows.size()); }
  int GetColCount() const { return m_nColCount; }

  // Puts a new row at the position, or behind it. The row count is a position too: the new row is the last.
  bool AppendRow(__int64 position, bool after);
  // Puts an empty cell into each row, at the position or behind it; the position must be inside the declared
  // width, which stays as it is.
  bool AppendColumn(int position, bool after);
  bool RemoveRow(int row);
  // The declared width stays as it is.
  bool RemoveCol(int column);

 protected:
  using Row = OxArray<T, OxVector<T>>;

  Row NewRow() const {
    Row row;
    row.resize(static_cast<std::size_t>(std::max(m_nColCount, 0)));
    return row;
  }
  bool IsRow(__int64 row) const { return row >= 0 && row < GetRowCount(); }
  bool IsDeclaredColumn(int column) const { return column >= 0 && column < m_nColCount; }
  auto RowAt(__int64 row) { return m_arrRows.begin() + static_cast<std::ptrdiff_t>(row); }
  // Takes up to `count` cells from each row; rows that are narrower lose what they have.
  void EraseColumns(int column, int count);

  OxArray<Row, OxVector<Row>> m_arrRows;
  int m_nColCount = 0;

 private:
  bool Resize(std::size_t rows, std::size_t columns);
  // Null outside the rows or the declared width.
  T* DeclaredCell(int row, int column);
  // Kept apart from GetValueAt, which every reading of a table goes through.
  [[gnu::noinline]] static const T& EmptyCell();
};

template <class T>
int CGridArray<T>::SetArray(__int64 rows, int columns) {
  m_nColCount = columns;
  if (columns < 1 || rows < 0) return 0;
  return Resize(static_cast<std::size_t>(rows), static_cast<std::size_t>(columns)) ? 1 : 0;
}

// All memory is taken before the first visible change, so that a lack of it leaves the table as it was.
template <class T>
bool CGridArray<T>::Resize(std::size_t rows, std::size_t columns) {
  const std::size_t kept = std::min(rows, m_arrRows.size());
  OxVector<Row> fresh;
  try {
    m_arrRows.reserve(rows);
    for (std::size_t i = 0; i < kept; ++i) m_arrRows[i].reserve(columns);
    fresh.resize(rows - kept);
    for (Row& row : fresh) row.resize(columns);
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
  m_arrRows.resize(kept);
  for (Row& row : m_arrRows) row.resize(columns);
  for (Row& row : fresh) m_arrRows.push_back(std::move(row));
  return true;
}

template <class T>
bool CGridArray<T>::SetAllVal(const T& value) {
  // The value may be a cell of this table, which must not change under the copying.
  const T copy(value);  // NOLINT(performance-unnecessary-copy-initialization)
  for (Row& row : m_arrRows) std::fill(row.begin(), row.end(), copy);
  return true;
}

template <class T>
int CGridArray<T>::SetValueAt(int row, int column, const T& value) {
  T* const cell = DeclaredCell(row, column);
  if (cell == nullptr) return 0;
  *cell = value;
  return 1;
}

template <class T>
int CGridArray<T>::SetValueAt(int row, int column, T&& value) {
  T* const cell = DeclaredCell(row, column);
  if (cell == nullptr) return 0;
  *cell = std::move(value);
  return 1;
}

template <class T>
T* CGridArray<T>::DeclaredCell(int row, int column) {
  // Negative indexes are huge ones here. A row that lost a column is narrower than declared.
  const auto at_row = static_cast<std::size_t>(row);
  const auto at = static_cast<std::size_t>(column);
  if (at_row >= m_arrRows.size() || column >= m_nColCount) return nullptr;
  Row& cells = m_arrRows[at_row];
  return at < cells.size() ? &cells[at] : nullptr;
}

template <class T>
const T& CGridArray<T>::GetValueAt(int row, int column) const {
  const auto at_row = static_cast<std::size_t>(row);
  const auto at = static_cast<std::size_t>(column);
  if (at_row >= m_arrRows.size() || at >= m_arrRows[at_row].size()) return EmptyCell();
  return m_arrRows[at_row][at];
}

template <class T>
const T& CGridArray<T>::EmptyCell() {
  static const T kEmpty{};
  return kEmpty;
}

template <class T>
bool CGridArray<T>::AppendRow(__int64 position, bool after) {
  if (position < 0 || position > GetRowCount()) return false;
  // Nothing stands behind the last position.
  if (after && position < GetRowCount()) ++position;
  m_arrRows.insert(RowAt(position), NewRow());
  return true;
}

template <class T>
bool CGridArray<T>::AppendColumn(int position, bool after) {
  if (!IsDeclaredColumn(position)) return false;
  const std::size_t wanted = static_cast<std::size_t>(position) + (after ? 1 : 0);
  for (Row& row : m_arrRows) {
    row.insert(row.begin() + static_cast<std::ptrdiff_t>(std::min(wanted, row.size())), T());
  }
  return true;
}

template <class T>
bool CGridArray<T>::RemoveRow(int row) {
  if (!IsRow(row)) return false;
  m_arrRows.erase(RowAt(row));
  return true;
}

template <class T>
bool CGridArray<T>::RemoveCol(int column) {
  if (!IsDeclaredColumn(column)) return false;
  EraseColumns(column, 1);
  return true;
}

template <class T>
void CGridArray<T>::EraseColumns(int column, int count) {
  for (Row& row : m_arrRows) {
    const auto width = static_cast<std::ptrdiff_t>(row.size());
    const auto first = std::min<std::ptrdiff_t>(column, width);
    const auto behind = std::min<std::ptrdiff_t>(first + count, width);
    row.erase(row.begin() + first, row.begin() + behind);
  }
}
