#pragma once

#include "framework/ports/accessible_port.h"

// The tree of a window whose class describes its cells (CWnd::GetAccessibleCells): a table with its headers
// and cells as children, line by line, the header line first; the first child of each line is the row's
// header, that of the header line the corner.
//
// Units, edges and thread as in accessible_port.h. A cell's name is what its headers say, its value its text.
namespace lorv {

// Null where the window's class describes none.
COMM_LORV_API std::shared_ptr<AccessibleObject> AccessibleTableOf(HWND window);

// The number of that cell's object, or of a header's; 0 where the window has none there.
//
//   A table of 3 columns: NumberOfCell(grid, {-1, -1}) gives 1, that of {0, 0} gives 6
COMM_LORV_API std::int64_t NumberOfCell(HWND window, CellAddress cell);

}  // namespace lorv
