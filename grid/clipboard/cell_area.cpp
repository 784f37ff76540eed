#include "grid/clipboard/cell_area.h"

#include <algorithm>

#include "grid/basic/basic_grid.h"

// Which cells a selection means: those that the user sees in it.

namespace lorv {
namespace {

template <class Same>
bool AllAlike(const std::vector<CBCGPGridRange>& ranges, Same same) {
  return std::all_of(ranges.begin(), ranges.end(), [&](const auto& range) { return same(range, ranges[0]); });
}

void Put(std::vector<int>& numbers, const std::vector<int>& more) {
  numbers.insert(numbers.end(), more.begin(), more.end());
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

}  // namespace

CellArea ShownCells(const CBCGPBasicGridCtrl& grid, const CBCGPGridRange& range) {
  CellArea area;
  if (!range.IsValid()) return area;
  const int last_row = std::min(range.m_nBottom, grid.CBCGPGridCtrl::GetRowCount() - 1);
  for (int row = range.m_nTop; row <= last_row; ++row)
    if (grid.IsRowShown(row)) area.rows.push_back(row);
  const int last_column = std::min(range.m_nRight, grid.GetColumnCount() - 1);
  for (int column = range.m_nLeft; column <= last_column; ++column)
    if (grid.GetColumnVisible(column) != FALSE) area.columns.push_back(column);
  return area;
}

CellArea ShownSelection(const CBCGPBasicGridCtrl& grid) {
  const std::vector<CBCGPGridRange>& ranges = grid.GetSelection();
  if (ranges.empty()) return {};
  const bool same_columns = AllAlike(ranges, [](const auto& a, const auto& b) {
    return a.m_nLeft == b.m_nLeft && a.m_nRight == b.m_nRight;
  });
  const bool same_rows = AllAlike(ranges, [](const auto& a, const auto& b) {
    return a.m_nTop == b.m_nTop && a.m_nBottom == b.m_nBottom;
  });
  // Ranges that make no rectangle cannot be one on the clipboard; spreadsheets refuse them too.
  if (!same_columns && !same_rows) return {};
  CellArea area = ShownCells(grid, ranges.front());
  for (std::size_t i = 1; i < ranges.size(); ++i) {
    const CellArea more = ShownCells(grid, ranges[i]);
    Put(area.rows, more.rows);
    Put(area.columns, more.columns);
  }
  return area;
}

bool IsLocked(const CBCGPGridItem& item) {
  return item.IsReadOnly() != FALSE || item.IsAllowEdit() == FALSE || item.IsEnabled() == FALSE;
}

}  // namespace lorv
