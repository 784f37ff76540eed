#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// The address text under which the exchange names the corner of a merged range.
//
// Units: row and column count from 0; the row of the text counts from 1.
// Edges: the letters are the digits of the column to the base 26, the lowest first and "A" for 0. Up to
//   column 25 that is the address of the cell; behind it the text names another cell than a sheet's own
//   column names would, and documents of the suite rely on it.
// No shared state: any thread.
//
//   CornerAddress(4, 27)  gives _T("BB5")
COMM_LORV_API CString CornerAddress(int row, int column);

}  // namespace lorv
