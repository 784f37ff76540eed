#pragma once

#include "framework/text/cstring.h"
#include "spreadsheet/servers/engine/areas/merge_list.h"

// Places within a range, as the programs count them. What lies outside a sheet raises the failure of the
// programs for the user.
namespace lorv::engine {

// What the Count of a range counts.
enum class RangePart { kCells, kRows, kColumns };

// The cell at a row and column of a range, counted from 1; it may lie outside the range.
Area ItemOf(const Area& range, long row, long column);
// The area between two addresses, which count from the range's own corner.
Area CornersOf(const Area& range, const CString& first, const CString& last);
// At most what 32 bits hold; a whole sheet has more cells.
long CountOf(const Area& range, RangePart part);
// The width itself, if columns can have it.
double CheckedWidth(double width);
// Refuses an area with more cells than a value may be put into at once.
void CheckCells(const Area& area);

// Calls `change(row, column)` for each cell of an area.
template <class Change>
void ForEachCell(const Area& area, const Change& change) {
  CheckCells(area);
  for (long row = area.top; row <= area.bottom; ++row) {
    for (long column = area.left; column <= area.right; ++column) change(row, column);
  }
}

}  // namespace lorv::engine
