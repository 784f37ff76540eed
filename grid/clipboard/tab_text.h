#pragma once

#include <algorithm>
#include <deque>
#include <optional>
#include <vector>

#include "framework/text/cstring.h"
#include "gridcore/items/grid_item.h"

namespace lorv {

// Cells of a table in HTML that stand for several, or have colours.
struct CellExtent {
  int row = 0;
  int column = 0;
  int rows = 1;
  int columns = 1;
  COLORREF back = kNoColour;
  COLORREF text = kNoColour;
};

// A table of texts that came from a clipboard. Its views lead into the text that was read, or into its own
// store, so it is moved and never copied.
//
// Edges: rows may be of different lengths; At gives nothing for a cell that its row lacks.
struct TextTable {
  TextTable() = default;
  TextTable(TextTable&&) = default;
  TextTable& operator=(TextTable&&) = default;

  std::vector<TextView> cells;
  std::vector<std::size_t> row_ends;  // in `cells`
  std::deque<std::basic_string<TCHAR>> store;
  std::vector<CellExtent> extents;
  int columns = 0;  // of the longest row

  int Rows() const { return static_cast<int>(row_ends.size()); }
  std::optional<TextView> At(int row, int column) const {
    const auto at = static_cast<std::size_t>(row);
    const std::size_t first = at == 0 ? 0 : row_ends[at - 1];
    const std::size_t place = first + static_cast<std::size_t>(column);
    return place < row_ends[at] ? std::optional(cells[place]) : std::nullopt;
  }
  void EndRow() {
    const std::size_t first = row_ends.empty() ? 0 : row_ends.back();
    row_ends.push_back(cells.size());
    columns = std::max(columns, static_cast<int>(cells.size() - first));
  }
};

// Text as spreadsheets put it on the clipboard: tabs between cells, line breaks behind rows. A cell that
// holds a tab, a line break, or a quote in front stands in quotes, its own quotes twice.
//
// Units: lines end with CR LF, with LF or with CR; one at the end of the text begins no row.
// Edges: a quote in front that is not closed before a tab or the end of a line is a character like any other.
//   An empty text is no table.
//
//   ReadTabText(_T("a\t\"b\r\nc\"\r\n")).At(0, 1)  gives the two lines "b" and "c"
COMM_LORV_API TextTable ReadTabText(TextView text);
// Puts the cell behind what there is, in quotes where it needs them; line breaks within it are LF, as those
// of spreadsheets.
COMM_LORV_API void AppendTabCell(std::basic_string<TCHAR>& text, TextView cell);

}  // namespace lorv
