#pragma once

#include <vector>

#include "gridcore/control/grid_control.h"

namespace lorv {

// Rows that go together, listed by their numbers from 0 while none has gone.
//
// Edges: a row that is listed twice goes once; a number without a row, and the row that waits to be typed
// into,
//   are passed over. PrepareRemoveRow looks for a row in the list that it is given: with one list for all the
//   time would grow with the square of them, so each has its own here.
// Removing gives how many went. The lists are empty then.
// The grid outlives the object, but for handlers that end it while rows are removed: then 0, and nothing is
//   touched any more. One thread: the grid's.
//
//   ListedRows rows(grid);  rows.Add(1);  rows.Add(3);  rows.Add(3);  rows.Remove();   // 2
class ListedRows {
 public:
  explicit ListedRows(CBCGPGridCtrl& grid) : grid_(grid) {}

  void Add(int row) {
    one_.clear();
    grid_.PrepareRemoveRow(row, items_, one_);
    rows_.insert(rows_.end(), one_.begin(), one_.end());
  }
  int Remove() { return grid_.DoRemoveRows(items_, rows_); }

 private:
  CBCGPGridCtrl& grid_;
  std::vector<CBCGPGridItem*> items_;
  std::vector<CBCGPGridRow*> rows_;
  std::vector<CBCGPGridRow*> one_;
};

}  // namespace lorv
