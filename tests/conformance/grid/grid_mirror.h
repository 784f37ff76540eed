#pragma once

#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"

namespace lorv_test {

// The table of a grid as it should be: plain rows of plain cells, without anything that a grid has beside.
class GridMirror {
 public:
  struct Cell {
    CString text;
    bool read_only = false;
    bool allow_edit = true;
  };
  using Row = std::vector<Cell>;

  std::vector<Row> rows;
  int columns = 0;

  Cell* At(int row, int column);
  void InsertRow(int before, int cells);
  // What the grid has now: after work whose steps the mirror cannot follow.
  void Copy(const CBCGPBasicGridCtrl& grid);
  void ExpectSame(const CBCGPBasicGridCtrl& grid) const;
};

// What holds of every selection, whatever was done: it lies in the table, no cell is in it twice, and the
// cell that is edited belongs to the table.
void ExpectSoundSelection(const CBCGPBasicGridCtrl& grid);

}  // namespace lorv_test
