#pragma once

#include <functional>

#include "framework/text/cstring.h"

namespace lorv {

// How many lines the texts of a row need.
//
// Units: pixels; `measure` gives the width of a piece of text on one line.
// Pure but for `measure`; any thread that may call it.

using TextWidth = std::function<int(const CString&)>;

// The lines that a text needs in a cell of that width. Its breaks are the two characters "\" and "n", as the
// suite's data marks them; a real line feed does not break it. Pieces without a width need no line, so that
// an empty text counts 0; a cell without a width counts 1.
//
//   A text of 500 pixels in a cell of 100  gives 5
COMM_LORV_API int CellLines(const CString& text, int width, const TextWidth& measure);

// The lines of a row whose highest cell needs `needed`: at most `most`, but never fewer than `least`, which
// counts for more, nor than 1.
//
//   RowLines(5, 3, 1)  gives 3,  RowLines(1, 2, 4)  gives 4
COMM_LORV_API int RowLines(int needed, int most, int least);

}  // namespace lorv
