#pragma once

#include "grid/CBcgTrueDbGridCtrl.h"

// Where the parts of a grid stand on the screen, for the mouse of a script.
namespace lorv_test {

// The text of each cell is its row's letter and its column's number.
void FillByPlace(CBCGPBasicGridCtrl& grid, int rows, int columns);

POINT PointIn(const CBCGPBasicGridCtrl& grid, const CPoint& client);
POINT CellPoint(const CBCGPBasicGridCtrl& grid, int row, int column);
POINT ButtonPoint(const CBCGPBasicGridCtrl& grid, int row, int column);
POINT HeaderPoint(const CBCGPBasicGridCtrl& grid, int column);
POINT RowHeaderPoint(const CBCGPBasicGridCtrl& grid, int row);
// The right edge of a column.
POINT DividerPoint(const CBCGPBasicGridCtrl& grid, int column);

}  // namespace lorv_test
