#include "tools/lorv-desk/table/grid_exchange.h"

namespace lorv::tool {

void GridExchange::LockRedraw() {
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
  const int last = grid_.GetColumnsInfo().GetLastVisibleColumn();
  if (last >= 0) grid_.GetColumnsInfo().SetColumnWidthAutoSize(last, TRUE);
}

}  // namespace lorv::tool
