#pragma once

#include "framework/drawing/geometry.h"

namespace lorv {

// How the height of all rows follows the mouse that drags a divider between two row headers.
//
// Units: pixels of the grid's client area.
// Pure; any thread.

// At 96 dots an inch: what a grid on another screen gives instead of them. How far inside the edges of a row
// header its dividers reach.
constexpr int kRowDividerBand = 2;
constexpr int kLeastRowHeight = 18;

// The row whose lower divider is under the point, when the point lies in the header `cell` of `row`: the row
// itself in the lower half, the one above in the upper half; -1 in the middle, and above the first row.
//
//   DividedRow(CRect(0, 20, 30, 40), 1, {5, 39})  gives 1, {5, 21}  gives 0, {5, 30}  gives -1
COMM_LORV_API int DividedRow(const CRect& cell, int row, CPoint point, int band = kRowDividerBand);

// The height of all rows after the divider at `bottom` was dragged to `y`: it grows by the way the mouse
// made, and is at least `least`. A mouse at or above the grid's upper edge changes nothing.
//
//   DraggedRowHeight(20, 40, 55)  gives 35,  DraggedRowHeight(20, 40, 5)  gives 18
COMM_LORV_API int DraggedRowHeight(int height, int bottom, int y, int least = kLeastRowHeight);

}  // namespace lorv
