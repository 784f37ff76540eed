#pragma once

#include <functional>

#include "gridcore/cell_range.h"
#include "gridcore/geometry/column_view.h"

namespace lorv {

// Which cell gives its value to which when a selection is filled into neighbouring cells: values are copied,
// the source repeats over the target, and no series is continued.
//
// `across`: source and target stand in the same rows, side by side; else in the same columns, one above the
// other. `forward`: the target stands to the right or below. Backwards both walks are mirrored, so that the
//   target cell nearest to the source gets the source's nearest value.
// Edges: a hidden target column gets nothing and uses up no source column; for a hidden source column its
//   next shown neighbour in the direction of the fill stands in, for that one copy. Hidden rows are filled.
//   A source cell may come out as the null id's column -1: there is no such neighbour.
// Result: false, with no call, if a range is not valid or the two do not stand in the same rows or columns.
// Calls `copy` for each pair in order: by rows of the target, and by columns within each. One that gives
// false is the last: what it copied for may be gone, the columns too. Throws what it throws.
//
//   FillPairs({0, 0, 0, 1}, {0, 2, 0, 4}, false, true, columns, copy)  pairs rows 2, 3, 4 with rows 0, 1, 0
using FillCopy = std::function<bool(const CBCGPGridItemID& from, const CBCGPGridItemID& to)>;
COMM_LORV_API bool FillPairs(const CBCGPGridRange& source, const CBCGPGridRange& target, bool across,
                             bool forward, const ColumnView& columns, const FillCopy& copy);

}  // namespace lorv
