#pragma once

#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// Columns as the suite's tables declare and keep them: names and widths as texts, joined by commas.
//
// Units: widths are pixels.
// Edges: a name without a width, and a width of 0 or of no number, is kDefaultColumnWidth pixels. Pieces of
//   a text may be empty; an empty name is a column without a name.
// Pure; any thread.

constexpr int kDefaultColumnWidth = 80;

struct DeclaredColumn {
  CString name;
  int width = kDefaultColumnWidth;
  bool hidden = false;  // its width was given as 0
};

//   DeclaredColumns(_T("梁,板"), _T("100"))  gives widths 100 and 80
COMM_LORV_API std::vector<DeclaredColumn> DeclaredColumns(const CString& names, const CString& widths);

// No widths for an empty text.
//
//   WidthsFromText(_T("120,0,60"))  gives 120, 80, 60
COMM_LORV_API std::vector<int> WidthsFromText(const CString& text);

//   WidthsToText({120, 80})  gives "120,80"
COMM_LORV_API CString WidthsToText(const std::vector<int>& widths);

// Columns that keep their proportions in another room: each gets the whole pixels of its share and the last
// one the rest, so that the sum is the new total. As they are where the old total is 0.
//
//   ProportionalWidths({100, 200}, 450)  gives 150, 300
COMM_LORV_API std::vector<int> ProportionalWidths(std::vector<int> widths, int new_total);

}  // namespace lorv
