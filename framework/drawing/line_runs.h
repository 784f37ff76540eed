#pragma once

#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/canvas_port.h"

// A line as the rectangles that it fills, for canvases that draw lines themselves.
//
// Units: pixels. A step is a square of the stroke's width, its left top corner on the line; the last point is
//   left out. Dots are every second step, dashes four of six.
// Edges: what lies outside `area` is not given, so the time depends on the area and not on the line's
//   length. A straight solid line is one rectangle.
//
//   LineRuns({1, 0}, {4, 0}, Stroke(), CRect(0, 0, 9, 9))  gives {(1, 0, 4, 1)}
namespace lorv {

COMM_LORV_API std::vector<CRect> LineRuns(POINT from, POINT to, const Stroke& stroke, const CRect& area);

}  // namespace lorv
