#include "tools/lorv-desk/table/grid_exchange.h"

// Lends the suite's grid to the exchange with spreadsheets, which knows grids by this interface only.

namespace lorv::tool {

void GridExchange::LockRedraw() {
  // The exchange locks where it has locked already; the grid's switch does not count.
  if (locks_++ == 0) grid_.SetRedraw(FALSE);
}

void GridExchange::UnlockRedraw() {
  if (locks_ == 0 || --locks_ > 0) return;
  grid_.SetRedraw(TRUE);
  grid_.Invalidate(FALSE);
}

void GridExchange::UnionCells(CList<CBCGPGridRange>& ranges) {
  CList<CBCGPGridRange, const CBCGPGridRange&> merged;
  grid_.GetUnionCells(merged);
  for (POSITION at = merged.GetHeadPosition(); at != nullptr;) ranges.AddTail(merged.GetNext(at));
}

void GridExchange::AutoSizeLastColumn() {
  // The last one takes what room is left beside the others.
  const int last = grid_.GetColumnsInfo().GetLastVisibleColumn();
  if (last >= 0) grid_.GetColumnsInfo().SetColumnWidthAutoSize(last, TRUE);
}

}  // namespace lorv::tool
