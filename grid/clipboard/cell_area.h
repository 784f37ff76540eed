#pragma once

#include <vector>

#include "gridcore/cell_range.h"

class CBCGPBasicGridCtrl;
class CBCGPGridItem;

namespace lorv {

// The rows and columns of a selection that are shown, in order.
struct CellArea {
  std::vector<int> rows;
  std::vector<int> columns;

  bool IsEmpty() const { return rows.empty() || columns.empty(); }
};

// Of the whole selection; empty where its ranges have neither their rows nor their columns in common.
CellArea ShownSelection(const CBCGPBasicGridCtrl& grid);
CellArea ShownCells(const CBCGPBasicGridCtrl& grid, const CBCGPGridRange& range);
// Neither the user nor a paste changes it.
bool IsLocked(const CBCGPGridItem& item);

}  // namespace lorv
