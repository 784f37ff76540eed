#pragma once

#include <vector>

#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"

// Where the lines of a text stand in a rectangle, by the DT_ flags.
//
// Units: pixels of the canvas.
// Flags: DT_LEFT, DT_CENTER, DT_RIGHT; DT_TOP, and DT_VCENTER, DT_BOTTOM with DT_SINGLELINE; DT_WORDBREAK (at
//   blanks, and between any two ideographs; a word wider than the rectangle stays whole, with DT_EDITCONTROL
//   it is broken); DT_EXPANDTABS; DT_END_ELLIPSIS, DT_WORD_ELLIPSIS, DT_PATH_ELLIPSIS (the last line cut with
//   "..."); DT_NOPREFIX, else "&" underlines the next character and "&&" is "&"; DT_HIDEPREFIX.
// Edges: CR LF, CR and LF each end a line, but with DT_SINGLELINE they are drawn as they are.
// Result: the lines with their places, and the rectangle that they take. Throws nothing but std::bad_alloc.
//
//   LayOutText(canvas, _T("ab\ncd"), {0, 0, 90, 90}, 0).bounds.bottom  gives twice the font's height
namespace lorv {

struct PlacedLine {
  CString text;
  POINT at = {0, 0};
  int mark = -1;  // position of the underlined character, -1 for none
};

struct PlacedText {
  std::vector<PlacedLine> lines;
  RECT bounds = {0, 0, 0, 0};
};

COMM_LORV_API PlacedText LayOutText(const Canvas& canvas, TextView text, const RECT& rect, UINT flags);

}  // namespace lorv
