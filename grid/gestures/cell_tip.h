#pragma once

#include "framework/drawing/dots.h"
#include "framework/drawing/geometry.h"
#include "framework/text/cstring.h"

namespace lorv {

// Whether a cell gets a tip, and where it stands.
//
// Units: pixels; `place` and the result's rectangle are in the same coordinates, whichever they are.
// Pure; any thread.

// How far a tip stands to the right of its cell's left edge and below its bottom, and the room around its
// text; at 96 dots an inch.
constexpr int kTipDistance = 5;
constexpr int kTipTextMargin = 5;

struct CellTip {
  CString text;  // empty: no tip
  CRect rect;
  bool multiline = false;
};

// `own` is the cell's text, `text_width` and `font_height` its measures; `given`, where not empty, is shown
// in its place, and whether or not the cell is wide enough for its own. `column_width` below the text's width
// less 20 breaks the tip into lines, within two thirds of the column. Distances of its own are for 96 dots an
// inch, and scaled for others.
//
//   With a text of 100 pixels at 16: PlanCellTip(own, {}, CRect(0, 0, 70, 20), 70, 100, 16)  gives a tip in
//   CRect(5, 25, 51, 47) of several lines;  CRect(0, 0, 101, 20)  gives none
COMM_LORV_API CellTip PlanCellTip(const CString& own, const CString& given, const CRect& place,
                                  int column_width, int text_width, int font_height, int dots = kUsualDpi);

}  // namespace lorv
