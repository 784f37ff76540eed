#pragma once

#include "framework/text/cstring.h"

class CBCGPGridCtrl;

namespace lorv {

class GridCommands;

// The widths of a grid's columns as a text, as the suite keeps them, on the clipboard and from there.
//
// Units: pixels at 96 dots an inch and the grid's present zoom, joined by commas, so that a text is right on
//   every screen; a hidden column has the width it shows with.
// Edges: what is no list of numbers changes nothing; columns without a number keep their widths, numbers
//   without a column are passed over. A width of 0 counts as the usual one.
// One thread: that of the user interface.
//
//   ColumnWidthsOf(grid)  gives "120,80"
COMM_LORV_API CString ColumnWidthsOf(CBCGPGridCtrl& grid);
// False: the clipboard would not take it.
COMM_LORV_API bool CopyColumnWidths(CBCGPGridCtrl& grid);
// False: the clipboard holds no widths.
COMM_LORV_API bool PasteColumnWidths(CBCGPGridCtrl& grid);
// The command copy_widths.
COMM_LORV_API void BindColumnWidths(GridCommands& commands);

}  // namespace lorv
