#pragma once

#include <vector>

#include "gridcore/cell_range.h"

namespace lorv {

// The merged cells of a table: rectangles of cells that are shown and edited as one, by way of their top left
// cell.
//
// Units: rows and columns count from 0.
// Edges: a block has two cells or more, and no two blocks meet. Lines put in inside a block make it larger;
//   a block that loses lines until one cell is left is gone.
// Cost: a look-up is a search in a list that is sorted by top rows.
// One thread at a time.
//
//   MergedCells m;  m.Add({0, 0, 1, 1});  m.BlockAt({1, 1})  gives {0, 0, 1, 1}
class COMM_LORV_API MergedCells {
 public:
  bool IsEmpty() const { return blocks_.empty(); }
  // In the order of their top rows, from the left within one row.
  const std::vector<CBCGPGridRange>& Blocks() const { return blocks_; }
  // The block that the cell belongs to, null if to none.
  CBCGPGridRange BlockAt(const CBCGPGridItemID& cell) const;
  // Those that meet the range, in the order of Blocks.
  std::vector<CBCGPGridRange> BlocksMeeting(const CBCGPGridRange& range) const;

  bool CanAdd(const CBCGPGridRange& block) const {
    return block.CellCount() >= 2 && BlocksMeeting(block).empty();
  }
  // False, and nothing changes, for a range of fewer than two cells and one that meets a block.
  bool Add(const CBCGPGridRange& block);
  // Takes away the block that the cell belongs to; false if there is none.
  bool RemoveAt(const CBCGPGridItemID& cell);
  void Clear();
  // Blocks as Blocks gave them.
  void Assign(const std::vector<CBCGPGridRange>& blocks);

  void InsertRows(int before, int count);
  void RemoveRows(int first, int count);
  void InsertColumns(int before, int count);
  void RemoveColumns(int first, int count);
  // A block of several columns that one leaves or comes into would be torn.
  bool CanMoveColumn(int from, int to) const;
  void MoveColumn(int from, int to);

 private:
  template <class Move>
  void MoveBlocks(Move move);
  void Index();

  std::vector<CBCGPGridRange> blocks_;
  // The lowest bottom row among the block of the same number and those before it: where a look-up may stop.
  std::vector<int> reach_;
};

}  // namespace lorv
