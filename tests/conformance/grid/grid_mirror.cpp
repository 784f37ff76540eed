#include "tests/conformance/grid/grid_mirror.h"

#include <gtest/gtest.h>

namespace lorv_test {

GridMirror::Cell* GridMirror::At(int row, int column) {
  if (row < 0 || row >= static_cast<int>(rows.size())) return nullptr;
  Row& found = rows[static_cast<std::size_t>(row)];
  const bool there = column >= 0 && column < columns && column < static_cast<int>(found.size());
  return there ? &found[static_cast<std::size_t>(column)] : nullptr;
}

void GridMirror::InsertRow(int before, int cells) {
  rows.insert(rows.begin() + before, Row(static_cast<std::size_t>(cells)));
}

void GridMirror::Copy(const CBCGPBasicGridCtrl& grid) {
  columns = grid.GetColumnCount();
  rows.clear();
  for (int at = 0; at < grid.GetRowCount(); ++at) {
    const CBCGPGridRow* row = grid.GetRow(at);
    Row& copy = rows.emplace_back();
    for (int column = 0; column < row->GetItemCount(); ++column) {
      Cell& cell = copy.emplace_back(Cell{row->GetCellText(column)});
      // Asked for, the cell would be made.
      const CBCGPGridItem* const item = row->FindItem(column);
      if (item == nullptr) continue;
      cell.read_only = item->IsReadOnly() != FALSE;
      cell.allow_edit = item->IsAllowEdit() != FALSE;
    }
  }
}

void GridMirror::ExpectSame(const CBCGPBasicGridCtrl& grid) const {
  ASSERT_EQ(grid.GetRowCount(), static_cast<int>(rows.size()));
  ASSERT_EQ(grid.GetColumnCount(), columns);
  for (int at = 0; at < grid.GetRowCount(); ++at) {
    const CBCGPGridRow* row = grid.GetRow(at);
    const Row& kept = rows[static_cast<std::size_t>(at)];
    ASSERT_EQ(row->GetRowId(), at);
    ASSERT_EQ(row->GetItemCount(), static_cast<int>(kept.size())) << "row " << at;
    for (int column = 0; column < row->GetItemCount(); ++column) {
      const Cell& cell = kept[static_cast<std::size_t>(column)];
      ASSERT_EQ(row->GetCellText(column), cell.text) << at << "," << column;
      const CBCGPGridItem* item = row->FindItem(column);
      if (item == nullptr) {
        ASSERT_FALSE(cell.read_only || !cell.allow_edit) << at << "," << column;
        continue;
      }
      ASSERT_EQ(item->FormatItem(), cell.text) << at << "," << column;
      ASSERT_EQ(item->IsReadOnly() != FALSE, cell.read_only) << at << "," << column;
      ASSERT_EQ(item->IsAllowEdit() != FALSE, cell.allow_edit) << at << "," << column;
      ASSERT_EQ(item->GetColumnId(), column);
      ASSERT_EQ(item->GetParentRow(), row);
    }
  }
}

void ExpectSoundSelection(const CBCGPBasicGridCtrl& grid) {
  const CBCGPGridItemID at = grid.GetCurSelItemID();
  if (!at.IsNull()) {
    EXPECT_LT(at.m_nRow, grid.GetRowCount());
    EXPECT_GE(at.m_nColumn, 0);
    EXPECT_LT(at.m_nColumn, grid.GetColumnCount());
  }
  const std::vector<CBCGPGridRange>& ranges = grid.GetSelection();
  for (std::size_t i = 0; i < ranges.size(); ++i) {
    EXPECT_TRUE(ranges[i].IsValid());
    EXPECT_LT(ranges[i].m_nBottom, grid.GetRowCount());
    EXPECT_LT(ranges[i].m_nRight, grid.GetColumnCount());
    for (std::size_t k = 0; k < i; ++k) {
      const bool apart = ranges[k].m_nRight < ranges[i].m_nLeft || ranges[i].m_nRight < ranges[k].m_nLeft ||
                         ranges[k].m_nBottom < ranges[i].m_nTop || ranges[i].m_nBottom < ranges[k].m_nTop;
      EXPECT_TRUE(apart) << "ranges " << k << " and " << i;
    }
  }
  const CBCGPGridItem* editing = grid.GetEditingItem();
  if (editing == nullptr) {
    EXPECT_EQ(grid.GetInPlaceWnd(), nullptr);
    return;
  }
  EXPECT_EQ(grid.GetGridItem(editing->GetGridItemID()), editing);
}

}  // namespace lorv_test
