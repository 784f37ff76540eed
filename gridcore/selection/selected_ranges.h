#pragma once

#include <cstdint>
#include <vector>

#include "gridcore/cell_range.h"
#include "gridcore/geometry/line_span.h"

namespace lorv {

// Which cells of a table are selected: a list of ranges in the order in which the user chose them. The last
// one is the source of a fill; so a range that is added stays whole, and the older ones give up the cells
// they share with it.
//
// Units: rows and columns count from 0, both edges of a range within it.
// Edges: ranges that are not valid are ignored. No two ranges share a cell.
// Cost: that of the ranges, not of their cells: a whole column of a million rows is one range.
// One thread at a time.
//
//   SelectedRanges s;  s.Add({0, 0, 2, 2});  s.Remove({1, 1, 1, 1});
//   s.CellCount()  gives 8, s.Holds({1, 1})  false
class COMM_LORV_API SelectedRanges {
 public:
  const std::vector<CBCGPGridRange>& Ranges() const { return ranges_; }
  bool IsEmpty() const { return ranges_.empty(); }
  bool Holds(const CBCGPGridItemID& cell) const;
  // Every cell of the range; false for one that is not valid.
  bool HoldsAll(const CBCGPGridRange& range) const;
  std::int64_t CellCount() const;
  // The rows and the columns that have a selected cell, ascending.
  std::vector<LineSpan> Rows() const;
  std::vector<LineSpan> Columns() const;

  void Clear() { ranges_.clear(); }
  void Add(const CBCGPGridRange& range);
  void Remove(const CBCGPGridRange& range);

  // The selected cells go with their lines.
  void InsertRows(int before, int count);
  void RemoveRows(int first, int count);
  void InsertColumns(int before, int count);
  void RemoveColumns(int first, int count);
  // A range that a column leaves, or comes into, becomes several.
  void MoveColumn(int from, int to);

 private:
  std::vector<CBCGPGridRange> ranges_;
};

}  // namespace lorv
