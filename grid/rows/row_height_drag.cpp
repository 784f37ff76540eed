#include "grid/rows/row_height_drag.h"

#include <algorithm>
#include <cstdint>
#include <limits>

// Where the line between two rows can be taken hold of, and what height a drag gives. Numbers only; heights
// stay within an int however far the mouse goes.

namespace lorv {

int DividedRow(const CRect& cell, int row, CPoint point, int band) {
  if (!cell.PtInRect(point)) return -1;
  const int divided = point.y < cell.top + cell.Height() / 2 ? row - 1 : row;
  const bool in_band = point.y < cell.top + band || point.y >= cell.bottom - band;
  return in_band ? std::max(divided, -1) : -1;
}

int DraggedRowHeight(int height, int bottom, int y, int least) {
  if (y <= 0) return height;
  const std::int64_t dragged = std::int64_t{height} + y - bottom;
  return static_cast<int>(std::clamp<std::int64_t>(dragged, least, std::numeric_limits<int>::max()));
}

}  // namespace lorv
