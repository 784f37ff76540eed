#pragma once

#include <cstdint>

#include "framework/native/export.h"

// A cell by its row and column.
//
// Units: rows and columns count from 0; (-1, -1) is the null id, no cell at all.
// A plain value; any thread.
//
//   CBCGPGridItemID().IsNull()  gives true, CBCGPGridItemID(2, 0).IsNull()  false
struct CBCGPGridItemID {
  int m_nRow = -1;
  int m_nColumn = -1;

  CBCGPGridItemID() = default;
  CBCGPGridItemID(int row, int column) : m_nRow(row), m_nColumn(column) {}

  bool IsNull() const { return m_nRow == -1 && m_nColumn == -1; }
  void SetNull() { *this = CBCGPGridItemID(); }

  friend bool operator==(const CBCGPGridItemID&, const CBCGPGridItemID&) = default;
};

// A rectangle of cells, its four edges within it.
//
// Units: rows and columns count from 0. The null range has -1 four times.
// Edges: a range with a negative edge, or whose edges stand the wrong way round, is not valid: it holds no
//   cell and meets no range.
// A plain value; any thread.
//
//   CBCGPGridRange(0, 0, 1, 2).CellCount()  gives 6: columns 0 and 1, rows 0 to 2
struct COMM_LORV_API CBCGPGridRange {
  int m_nLeft = -1;
  int m_nTop = -1;
  int m_nRight = -1;
  int m_nBottom = -1;

  CBCGPGridRange() = default;
  CBCGPGridRange(int left, int top, int right, int bottom)
      : m_nLeft(left), m_nTop(top), m_nRight(right), m_nBottom(bottom) {}
  explicit CBCGPGridRange(const CBCGPGridItemID& cell)
      : CBCGPGridRange(cell.m_nColumn, cell.m_nRow, cell.m_nColumn, cell.m_nRow) {}
  // Of two opposite corners, in any order.
  CBCGPGridRange(const CBCGPGridItemID& a, const CBCGPGridItemID& b);

  bool IsValid() const { return m_nLeft >= 0 && m_nTop >= 0 && m_nLeft <= m_nRight && m_nTop <= m_nBottom; }
  void SetNull() { *this = CBCGPGridRange(); }
  bool IsSingle() const { return IsValid() && m_nLeft == m_nRight && m_nTop == m_nBottom; }
  bool IsInRange(const CBCGPGridItemID& cell) const;
  // A range that is not valid lies in none and holds none.
  bool IsInside(const CBCGPGridRange& outer) const;
  bool Meets(const CBCGPGridRange& other) const;
  CBCGPGridRange CutWith(const CBCGPGridRange& other) const;   // null where they do not meet
  CBCGPGridRange JoinWith(const CBCGPGridRange& other) const;  // the smallest that holds both
  std::int64_t CellCount() const;

  friend bool operator==(const CBCGPGridRange&, const CBCGPGridRange&) = default;
};
