#pragma once

#include "framework/native/export.h"
#include "gridcore/geometry/column_view.h"

namespace lorv {

// A walk over hidden columns stops at a column number of this magnitude, whether that column is shown or not.
constexpr int kHiddenWalkLimit = 101;

// How many columns from `a` to `b`, both counted, are hidden. The two come in any order; 0 if one is
// negative. A column behind the last one counts as the last one.
//
//   With column 1 of 4 hidden, HiddenColumns(view, 3, 0)  gives 1
COMM_LORV_API int HiddenColumns(const ColumnView& columns, int a, int b);

// The column that lies `offset` shown columns from `column`, to the right for an offset above 0; -1 where the
// table has none. Before walking it asks whether the column's number may lie in the table at all, counting
// the hidden columns up to column + offset; so a column that only further hidden ones push outwards is found,
// one that those push out is not. With an offset of 0 the answer is the column itself.
//
//   With column 1 of 4 hidden, ShownColumnAt(view, 0, 1)  gives 2, ShownColumnAt(view, 0, 3)  gives -1
COMM_LORV_API int ShownColumnAt(const ColumnView& columns, int column, int offset);

}  // namespace lorv
