#include "tools/lorv-desk/table/edited_grid.h"

#include "tools/lorv-desk/table/grid_exchange.h"

// The grid in which a table is edited. It notices changes wherever they come from: typing, pasting, rows that
// come and go, a spreadsheet; who closes the window must be asked exactly when there is something to lose.

namespace lorv::tool {

void EditedGrid::InitGridSetting() {
  CBCGPBasicGridCtrl::InitGridSetting();
  // Keys as spreadsheets have them, as those who edit tables know no others.
  SetShortCut(true);
  SetReturnAddNewRow(true);
}

void EditedGrid::SetValue(int row, int column, const _variant_t& value, BOOL redraw) {
  CBCGPBasicGridCtrl::SetValue(row, column, value, redraw);
  changed_ = true;
}

int EditedGrid::AddRow(CBCGPGridRow* row, int relayout) {
  changed_ = true;
  return CBCGPBasicGridCtrl::AddRow(row, relayout);
}

int EditedGrid::AddRow(int relayout) {
  changed_ = true;
  return CBCGPBasicGridCtrl::AddRow(relayout);
}

int EditedGrid::RemoveRow(int row, int relayout) {
  changed_ = true;
  return CBCGPBasicGridCtrl::RemoveRow(row, relayout);
}

void EditedGrid::OnItemChanged(CBCGPGridItem* item, int row, int column) {
  changed_ = true;
  CBCGPBasicGridCtrl::OnItemChanged(item, row, column);
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
