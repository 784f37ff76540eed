#pragma once

namespace lorv {

// Who moves columns of a grid that the mouse drags by their headers.
//
// Units: columns count from 0; `to` is the number that the column would have.
// Edges: both are called with columns that there are. They may end themselves and the grid.
// One thread: that of the user interface.
class ColumnTaker {
 public:
  virtual ~ColumnTaker() = default;
  // The mouse goes down on the header: whether the column can be dragged at all.
  virtual bool TakesColumn(int column) = 0;
  virtual void OnColumnDropped(int column, int to) = 0;
};

}  // namespace lorv
