#pragma once

#include "framework/drawing/geometry.h"

namespace lorv {

// Where a dialog stands that belongs to a cell: below it, with its left edge one pixel inside, moved to the
// left or up as far as the screen asks. It keeps its size; on a screen too small for it, its right bottom
// corner stays in sight.
//
// Units: pixels of the screen, whose corner is (0, 0).
// Pure; any thread.
//
//   DialogPlaceAt(CRect(10, 40, 90, 60), {200, 100}, {1024, 768})  gives (11, 60)
COMM_LORV_API CPoint DialogPlaceAt(const CRect& cell, CSize dialog, CSize screen);

}  // namespace lorv
