#pragma once

#include <memory>

#include "framework/native/export.h"

class CBCGPGridCtrl;

namespace lorv {

class GridCommands;

// The first columns of a grid stay where they are while the others scroll sideways below their edge, which is
// drawn as a line. The row header and the room for groups and nested rows stay as ever.
//
// Units: columns as they stand from the left, hidden ones counted.
// Edges: a count below 0 counts as 0, none; one beyond the last column as all. Of frozen columns only as many
//   stay as leave lorv::kLeastScrollingWidth pixels of the grid to the others; the rest stays again when
//   there is room. A column that comes in front of the frozen ones takes its place among them. Merged cells
//   over the edge are seen in both parts. What is printed is the whole table, with nothing frozen.
// Freezing lays the grid out, which runs its handlers; these may end the grid and the object. With the end of
// the object nothing is frozen; of several on one grid the last call counts.
// The grid may end before the object and after it. One thread: that of the user interface.
//
//   GridFrozenColumns frozen(grid, 2);  frozen.Count()  gives 2
class COMM_LORV_API GridFrozenColumns {
 public:
  explicit GridFrozenColumns(CBCGPGridCtrl& grid, int count = 0);
  GridFrozenColumns(const GridFrozenColumns&) = delete;
  GridFrozenColumns& operator=(const GridFrozenColumns&) = delete;
  ~GridFrozenColumns();

  void SetCount(int count);
  int Count() const;  // 0 without the grid
  // The columns up to that of the current cell, it included. False: no cell is current.
  bool FreezeToCurrent();
  // The commands freeze_columns and unfreeze_columns. They end with the object or before it.
  void Bind(GridCommands& commands);

 private:
  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
};

}  // namespace lorv
