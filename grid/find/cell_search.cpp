#include "grid/find/cell_search.h"

#include <algorithm>

#include "gridcore/control/grid_control.h"

// Cells are asked for their texts one after the other; what can be known of a whole row or column beforehand
// is.

namespace lorv {

CellSearch::CellSearch(const CBCGPGridCtrl& grid, const FindOptions& options,
                       const std::vector<CBCGPGridRange>& scope)
    : grid_(grid),
      options_(options),
      scope_(scope),
      matcher_(options.pattern ? TextMatcher::ForPattern(options.text, options.match_case, options.whole_cell)
                               : TextMatcher(options.text, options.match_case, options.whole_cell)),
      last_row_(grid.GetRowCount() - 1) {
  if (!scope.empty()) {
    int top = last_row_ + 1;
    int bottom = -1;
    for (const CBCGPGridRange& range : scope) {
      top = std::min(top, range.m_nTop);
      bottom = std::max(bottom, range.m_nBottom);
    }
    first_row_ = top;
    last_row_ = std::min(last_row_, bottom);
  }
  // Beside the ranges no cell is compared: a column is searched at the cost of one.
  const auto in_ranges = [&](int column) {
    return scope.empty() || std::any_of(scope.begin(), scope.end(), [&](const CBCGPGridRange& range) {
             return column >= range.m_nLeft && column <= range.m_nRight;
           });
  };
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    // A column of no width is hidden, whatever made it so.
    if ((options.hidden_cells || grid.GetColumnWidth(column) > 0) && in_ranges(column))
      columns_.push_back(column);
}

bool CellSearch::InScope(const CBCGPGridItemID& cell) const {
  return scope_.empty() || std::any_of(scope_.begin(), scope_.end(), [&](const CBCGPGridRange& range) {
           return cell.m_nRow >= range.m_nTop && cell.m_nRow <= range.m_nBottom &&
                  cell.m_nColumn >= range.m_nLeft && cell.m_nColumn <= range.m_nRight;
         });
}

bool CellSearch::IsRowSearched(int row) const {
  return row >= first_row_ && row <= last_row_ && (options_.hidden_cells || grid_.IsRowShown(row));
}

bool CellSearch::IsHiddenByMerge(const CBCGPGridItemID& cell) const {
  const CBCGPGridRange block = grid_.GetMergedRange(cell);
  return block.IsValid() && CBCGPGridItemID(block.m_nTop, block.m_nLeft) != cell;
}

bool CellSearch::Matches(const CBCGPGridItemID& cell) const {
  if (!IsRowSearched(cell.m_nRow) || !InScope(cell)) return false;
  if (!std::binary_search(columns_.begin(), columns_.end(), cell.m_nColumn)) return false;
  const CBCGPGridRow* const cells = grid_.CBCGPGridCtrl::GetRow(cell.m_nRow);
  CString room;
  return cells != nullptr && cells->HasItem(cell.m_nColumn) &&
         matcher_.Matches(cells->ShownText(cell.m_nColumn, room)) && !IsHiddenByMerge(cell);
}

int CellSearch::InRow(int row, int column, bool backwards) const {
  const CBCGPGridRow* const cells = grid_.GetRow(row);
  const int count = static_cast<int>(columns_.size());
  for (int i = backwards ? count - 1 : 0; i >= 0 && i < count; i += backwards ? -1 : 1) {
    const int at = columns_[static_cast<std::size_t>(i)];
    if (backwards ? at > column : at < column) continue;
    CString room;
    if (cells == nullptr || !cells->HasItem(at) || !matcher_.Matches(cells->ShownText(at, room))) continue;
    // Last, as they cost more than nearly every text that does not match.
    if (InScope({row, at}) && !IsHiddenByMerge({row, at})) return at;
  }
  return -1;
}

CBCGPGridItemID CellSearch::Start(bool backwards) const {
  return {backwards ? last_row_ : first_row_, backwards ? grid_.GetColumnCount() - 1 : 0};
}

CBCGPGridItemID CellSearch::Behind(const CBCGPGridItemID& cell, bool backwards) const {
  return {cell.m_nRow, cell.m_nColumn + (backwards ? -1 : 1)};
}

CBCGPGridItemID CellSearch::First(CBCGPGridItemID from, bool backwards) const {
  const int step = backwards ? -1 : 1;
  const CBCGPGridItemID start = Start(backwards);
  if (options_.text.IsEmpty()) return {};
  if (backwards ? from.m_nRow > start.m_nRow : from.m_nRow < start.m_nRow) from = start;
  for (int row = from.m_nRow; row >= first_row_ && row <= last_row_; row += step) {
    if (!options_.hidden_cells && !grid_.IsRowShown(row)) continue;
    const int column = InRow(row, row == from.m_nRow ? from.m_nColumn : start.m_nColumn, backwards);
    if (column >= 0) return {row, column};
  }
  return {};
}

}  // namespace lorv
