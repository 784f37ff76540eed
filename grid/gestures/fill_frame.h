#pragma once

#include <functional>
#include <optional>

#include "framework/drawing/geometry.h"
#include "gridcore/cell_range.h"
#include "gridcore/geometry/column_view.h"

namespace lorv {

// The geometry of filling cells by dragging the corner of a selection.
//
// Units: pixels of the grid's client area. `source` is the rectangle of the selected cells; `frame` the one
//   drawn while the mouse moves. Left and top edges of rectangles lie within, right and bottom edges do not.
// Pure functions; any thread.

// How far around the corner of the selection's border the handle reaches at 96 dots an inch.
constexpr int kFillHandleReach = 2;

// Whether the point is on the handle at the right bottom corner of the border.
//
//   OnFillHandle(CRect(0, 0, 50, 20), {48, 18})  gives true, {52, 18}  false
COMM_LORV_API bool OnFillHandle(const CRect& border, CPoint point, int reach = kFillHandleReach);

struct FillFrame {
  CRect frame;
  CPoint tip;  // where the tip stands that shows the last cell's value
};

// The frame for a pointer over a cell: the source, drawn out to the cell in one direction. Over the columns
// of the source that is up or down; else over its rows to the left or right; else the direction in which the
// pointer is farther from the centre, a tie being vertical.
//
//   FillFrameAt(CRect(0, 0, 50, 20), CRect(0, 40, 50, 60), {10, 45}).frame  gives CRect(0, 0, 50, 60)
COMM_LORV_API FillFrame FillFrameAt(const CRect& source, const CRect& cell, CPoint point);

// The frame to be drawn next, when `shown` is drawn now and the pointer asks for `wanted`. A pointer within
// the source or on its handle takes the frame back to the source first, and asks again with the next move.
COMM_LORV_API CRect NextFillFrame(const CRect& shown, const CRect& source, const CRect& wanted, bool home);

// What the frame asks for at the end of the drag.
struct FillTarget {
  CBCGPGridRange range;
  bool across = false;   // beside the source, else above or below
  bool forward = false;  // to the right or below
};
using CellAt = std::function<CBCGPGridItemID(CPoint)>;

// Nothing for a frame that is as large as the source or larger in both directions.
COMM_LORV_API std::optional<FillTarget> FillTargetOf(const CBCGPGridRange& selected, const CRect& source,
                                                     const CRect& frame, const CellAt& cell_at);

// The source cell whose value the outermost cell of the frame will receive; null where there is none to be
// shown.
COMM_LORV_API CBCGPGridItemID FillTipCell(const CBCGPGridRange& selected, const CRect& source,
                                          const CRect& frame, const ColumnView& columns,
                                          const CellAt& cell_at);

}  // namespace lorv
