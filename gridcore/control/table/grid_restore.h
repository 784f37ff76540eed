#pragma once

#include <memory>
#include <vector>

#include "gridcore/control/grid_observer.h"

class CBCGPGridCtrl;

namespace lorv {

// Takes changes of a grid's table back that an observer has heard of.
//
// Edges: an index beyond the table counts as its end. False, and nothing changes: no such row in the table, a
//   row that stands in a table already, an arrangement of other rows, a virtual table.
// Nothing is laid out: the caller does that once all is back. No handler runs but FilterItem, where no editor
// is open. Observers are notified, as of every change.
// One thread: that of the user interface.
class COMM_LORV_API GridRestore {
 public:
  explicit GridRestore(CBCGPGridCtrl& grid) : grid_(grid) {}

  bool PutRow(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row);
  bool TakeRow(CBCGPGridRow& row);
  RowArrangement Arrangement();
  bool Arrange(const RowArrangement& order);
  std::vector<CBCGPGridRange> Merged() const;
  void SetMerged(const std::vector<CBCGPGridRange>& blocks);
  bool MoveColumn(int from, int to);

 private:
  CBCGPGridCtrl& grid_;
};

}  // namespace lorv
