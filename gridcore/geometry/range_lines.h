#pragma once

#include <vector>

#include "gridcore/cell_range.h"
#include "gridcore/geometry/line_span.h"

namespace lorv {

// Ranges of cells as spans of rows and columns: how a range moves when lines come and go.
//
// Edges: a range that loses its last row or column becomes null.

inline LineSpan RowsOf(const CBCGPGridRange& range) {
  return {range.m_nTop, range.m_nBottom};
}

inline LineSpan ColumnsOf(const CBCGPGridRange& range) {
  return {range.m_nLeft, range.m_nRight};
}

inline CBCGPGridRange RangeOf(LineSpan rows, LineSpan columns) {
  if (rows.IsEmpty() || columns.IsEmpty()) return {};
  return {columns.first, rows.first, columns.last, rows.last};
}

inline void RowsInserted(CBCGPGridRange& range, int before, int count) {
  range = RangeOf(SpanAfterInsert(RowsOf(range), before, count), ColumnsOf(range));
}

inline void RowsRemoved(CBCGPGridRange& range, int first, int count) {
  range = RangeOf(SpanAfterRemove(RowsOf(range), first, count), ColumnsOf(range));
}

inline void ColumnsInserted(CBCGPGridRange& range, int before, int count) {
  range = RangeOf(RowsOf(range), SpanAfterInsert(ColumnsOf(range), before, count));
}

inline void ColumnsRemoved(CBCGPGridRange& range, int first, int count) {
  range = RangeOf(RowsOf(range), SpanAfterRemove(ColumnsOf(range), first, count));
}

// Moves each range; those that have become null are dropped.
template <class Move>
void MoveRanges(std::vector<CBCGPGridRange>& ranges, Move move) {
  for (CBCGPGridRange& range : ranges) move(range);
  std::erase_if(ranges, [](const CBCGPGridRange& range) { return !range.IsValid(); });
}

}  // namespace lorv
