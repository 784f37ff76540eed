#include <algorithm>

#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/exchange_grid.h"

// Export and import as the menu of a grid offers them. They know grids by ExchangeGrid alone, so that the
// exchange does not depend on the grids' own classes.

namespace lorv {

bool GridToExcel(ExchangeGrid& grid, int mode) {
  CAdExcel2GridEx exchange(mode);
  exchange.SetArray(grid);
  exchange.SetColTitle(grid);
  CList<CBCGPGridRange> merged;
  grid.UnionCells(merged);
  for (POSITION at = merged.GetHeadPosition(); at != nullptr;) {
    CBCGPGridRange& range = merged.GetNext(at);
    // The titles take the first row of the sheet.
    ++range.m_nTop;
    ++range.m_nBottom;
  }
  exchange.SetRangeData(merged);
  return exchange.ToExcel();
}

bool GridFromExcel(ExchangeGrid& grid, int mode) {
  constexpr int kNewColumnWidth = 80;
  CAdExcel2GridEx exchange(mode);
  if (!exchange.FromExcel()) return false;
  const CXArrayDBToArray table = exchange.GetArray();
  const auto rows = static_cast<long>(table.GetRowCount());
  const int columns = table.GetColCount();
  // Before anything is removed: a grid must not lose its rows to an empty selection.
  if (columns < 1) return false;
  grid.RemoveAll();
  // A grid with columns keeps them, and takes as many of the sheet as it has.
  if (grid.ColumnCount() == 0) {
    for (int i = 0; i < columns; ++i) grid.AddColumn(kNewColumnWidth);
    grid.AutoSizeLastColumn();
  }
  for (long row = 0; row < rows; ++row) grid.AddRow();
  const int taken = std::min(columns + mode, grid.ColumnCount());
  for (long row = 0; row < rows; ++row) {
    for (int column = 0; column < taken; ++column) {
      // Beyond the table's width its cells are empty.
      grid.SetValue(row, column, table.GetValue(static_cast<int>(row), column));
    }
  }
  return true;
}

}  // namespace lorv
