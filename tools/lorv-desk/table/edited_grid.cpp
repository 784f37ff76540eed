#include "tools/lorv-desk/table/edited_grid.h"

#include "tools/lorv-desk/table/grid_exchange.h"

// The grid in which a table is edited. It observes itself, so that it notices changes wherever they come
// from: typing, pasting, undoing, rows that come and go, a spreadsheet; a user who closes the window must be
// asked exactly when there is something to lose.

namespace lorv::tool {

void EditedGrid::InitGridSetting() {
  CBCGPBasicGridCtrl::InitGridSetting();
  // Keys as spreadsheets have them, as those who edit tables know no others.
  SetShortCut(true);
  SetReturnAddNewRow(true);
}

bool EditedGrid::ToExcel(int mode) {
  GridExchange exchange(*this);
  return GridToExcel(exchange, mode);
}

bool EditedGrid::FromExcel(int mode) {
  GridExchange exchange(*this);
  return GridFromExcel(exchange, mode);
}

}  // namespace lorv::tool
