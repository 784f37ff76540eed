#include "grid/dialog_place.h"

// Where a dialog goes that belongs to a cell: below it, moved back onto the screen.

namespace lorv {
namespace {

// What stays free at the right and at the bottom of the screen; below, that is about a task bar's edge.
constexpr int kFreeAtRight = 1;
constexpr int kFreeAtBottom = 20;

}  // namespace

CPoint DialogPlaceAt(const CRect& cell, CSize dialog, CSize screen) {
  int x = cell.left;
  int y = cell.bottom;
  if (x + dialog.cx + kFreeAtRight > screen.cx) x = screen.cx - kFreeAtRight - dialog.cx;
  if (y + dialog.cy + kFreeAtBottom > screen.cy) y = screen.cy - kFreeAtBottom - dialog.cy;
  return {x + 1, y};
}

}  // namespace lorv
