#include "gridcore/control/table/grid_restore.h"

#include <algorithm>

#include "gridcore/control/grid_control.h"

// A table brought back into a state that it was in. Rows go in and out as they are, with their cells.

namespace lorv {

bool GridRestore::PutRow(const RowPlace& place, std::unique_ptr<CBCGPGridRow>& row) {
  CBCGPGridRow* const parent = place.parent;
  if (row == nullptr || row->owner_ != nullptr || row->parent_ != nullptr || grid_.rows_.IsVirtual())
    return false;
  if (parent != nullptr && (parent->owner_ != &grid_ || !parent->TakesSubItem(row.get()))) return false;
  const int index = std::clamp(place.index, 0, grid_.rows_.Size());
  if (parent != nullptr) parent->Nest(*row, std::clamp(place.place, 0, parent->GetSubItemsCount()));
  CBCGPGridRow& put = *row.release();
  grid_.PutAndReport(index, put);
  return true;
}

bool GridRestore::TakeRow(CBCGPGridRow& row) {
  const int index = grid_.rows_.IsVirtual() ? -1 : grid_.rows_.IndexOf(row);
  return index >= 0 && grid_.CBCGPGridCtrl::RemoveRow(index, FALSE) > 0;
}

RowArrangement GridRestore::Arrangement() {
  return grid_.Arrangement();
}

bool GridRestore::Arrange(const RowArrangement& order) {
  const auto stands_here = [this](CBCGPGridRow* row) { return grid_.rows_.IndexOf(*row) >= 0; };
  if (grid_.rows_.IsVirtual() || static_cast<int>(order.rows.size()) != grid_.rows_.Size()) return false;
  if (!std::all_of(order.rows.begin(), order.rows.end(), stands_here)) return false;
  if (grid_.changes_.AreWatched()) grid_.changes_.ReportMoving(grid_.Arrangement());
  const CBCGPGridRow* const current = grid_.CBCGPGridCtrl::GetRow(grid_.current_.m_nRow);
  for (CBCGPGridRow* row : order.rows)
    if (row->HasSubItems() != FALSE) row->sub_->rows.clear();
  for (CBCGPGridRow* row : order.rows)
    if (row->parent_ != nullptr) row->parent_->sub_->rows.push_back(row);
  grid_.rows_.Arrange(order.rows);
  grid_.sort_.column = order.sort_column;
  grid_.sort_.ascending = order.ascending;
  grid_.regroup_wanted_ =
      grid_.regroup_wanted_ || !order.group_columns.empty() || !grid_.group_columns_.empty();
  grid_.group_columns_ = order.group_columns;
  grid_.FollowRow(current);
  return true;
}

std::vector<CBCGPGridRange> GridRestore::Merged() const {
  return grid_.merged_.Blocks();
}

bool GridRestore::MoveColumn(int from, int to) {
  if (!grid_.CanMoveColumn(from, to)) return false;
  grid_.ShiftColumn(from, to);
  return true;
}

void GridRestore::SetMerged(const std::vector<CBCGPGridRange>& blocks) {
  if (blocks == grid_.merged_.Blocks()) return;
  grid_.changes_.ReportMerging(grid_.merged_.Blocks());
  grid_.merged_.Assign(blocks);
}

}  // namespace lorv
