#include "grid/gestures/fill_rule.h"

#include "grid/gestures/column_steps.h"
#include "gridcore/geometry/range_lines.h"

// Which cell gives its value to which when a selection is filled out: sources repeat, from the near end,
// and hidden columns neither give nor take. The copying itself is the caller's and may stop the fill.

namespace lorv {
namespace {

int Count(LineSpan lines) {
  return lines.last - lines.first + 1;
}

// The line with that number in the order of the fill, which begins at the far end when it goes backwards.
int LineInOrder(LineSpan lines, int number, bool forward) {
  return forward ? lines.first + number : lines.last - number;
}

void FillDown(const CBCGPGridRange& source, const CBCGPGridRange& target, bool forward,
              const ColumnView& columns, const FillCopy& copy) {
  const LineSpan from = RowsOf(source);
  const LineSpan to = RowsOf(target);
  for (int walk = 0; walk < Count(to); ++walk) {
    const int row = LineInOrder(to, walk, forward);
    const int given = LineInOrder(from, walk % Count(from), forward);
    for (int column = target.m_nLeft; column <= target.m_nRight && column < columns.count; ++column)
      if (columns.Shows(column) && !copy({given, column}, {row, column})) return;
  }
}

bool FillRowAcross(int row, LineSpan from, LineSpan to, bool forward, const ColumnView& columns,
                   const FillCopy& copy) {
  int used = 0;
  for (int walk = 0; walk < Count(to); ++walk) {
    const int column = LineInOrder(to, walk, forward);
    if (!columns.Shows(column)) continue;
    int given = LineInOrder(from, used, forward);
    // Hidden columns neither give nor take.
    if (!columns.Shows(given)) given = ShownColumnAt(columns, given, forward ? 1 : -1);
    if (!copy({row, given}, {row, column})) return false;
    used = (used + 1) % Count(from);
  }
  return true;
}

}  // namespace

bool FillPairs(const CBCGPGridRange& source, const CBCGPGridRange& target, bool across, bool forward,
               const ColumnView& columns, const FillCopy& copy) {
  if (!source.IsValid() || !target.IsValid()) return false;
  const bool aligned = across ? RowsOf(source) == RowsOf(target) : ColumnsOf(source) == ColumnsOf(target);
  if (!aligned) return false;
  if (!across) {
    FillDown(source, target, forward, columns, copy);
    return true;
  }
  for (int row = target.m_nTop; row <= target.m_nBottom; ++row)
    if (!FillRowAcross(row, ColumnsOf(source), ColumnsOf(target), forward, columns, copy)) break;
  return true;
}

}  // namespace lorv
